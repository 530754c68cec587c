// The log and trace statements: what they take from the place at which they are written.

#include "VornLog.h"

#include "LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;

TEST(VornLog, FileNameIsWhatFollowsTheLastSlash) {
    EXPECT_STREQ(FileNameOf("/src/plugin/VornReportFacebook.mm"), "VornReportFacebook.mm");
    EXPECT_STREQ(FileNameOf("VornFacebook/VornReportFacebook.mm"), "VornReportFacebook.mm");
    EXPECT_STREQ(FileNameOf("/src/"), "");
}

TEST(VornLog, FileNameIsWhatFollowsTheLastBackslashWhereThereIsNoSlash) {
    EXPECT_STREQ(FileNameOf("C:\\src\\VornDefine.h"), "VornDefine.h");
}

TEST(VornLog, ASlashWinsOverABackslashBehindIt) {
    EXPECT_STREQ(FileNameOf("src/odd\\name.mm"), "odd\\name.mm");
}

TEST(VornLog, FileNameIsTheWholePathWithoutSeparators) {
    EXPECT_STREQ(FileNameOf("VornDefine.h"), "VornDefine.h");
    EXPECT_STREQ(FileNameOf(""), "");
}

void WriteOneOfEach() {
    VORN_LOG_DEBUG("[ %s ] count = %d", "s1", 3);
    VORN_LOG_ERROR("plain");
    VORN_TRACE("s1", "{\"method\":\"logOut\"}").traceLog("FacebookLogin");
}

TEST(VornLog, LinesCarryLevelFileAndFunctionOfTheirStatement) {
    const LogRecorder log;

    WriteOneOfEach();

    EXPECT_THAT(log.Lines(), ElementsAre(Debug("VornLogTest.cc", "WriteOneOfEach", "[ s1 ] count = 3"),
                                         Error("VornLogTest.cc", "WriteOneOfEach", "plain")));
}

TEST(VornLog, TracesCarryFileAndFunctionOfTheirStatement) {
    const LogRecorder log;

    WriteOneOfEach();

    EXPECT_THAT(log.Traces(), ElementsAre(TraceLine{"VornLogTest.cc", "WriteOneOfEach", "s1", "{\"method\":\"logOut\"}",
                                                    "FacebookLogin"}));
}

TEST(VornLog, PercentSignsInArgumentsAreTextAndNotFormat) {
    const LogRecorder log;

    VORN_LOG_DEBUG("[ %s ] done", "100%s%n");

    EXPECT_EQ(log.Lines().at(0).text, "[ 100%s%n ] done");
}

} // namespace
} // namespace Tarvik::Vorn::Test
