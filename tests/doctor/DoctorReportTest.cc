// The doctor's output as text and as JSON, and its exit statuses.

#include "Doctor.h"
#include "DoctorTest.h"
#include "FindingKinds.h"
#include "PlistMaker.h"
#include "DoctorReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator;
using namespace Simulator::Doctor;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

// What is written to a stream.
class Captured {
public:
    Captured() : mStream(open_memstream(&mText, &mSize)) {}
    ~Captured() {
        std::fclose(mStream);
        std::free(mText);
    }
    Captured(const Captured&) = delete;
    Captured& operator=(const Captured&) = delete;

    std::FILE* stream() const { return mStream; }
    std::string text() const {
        std::fflush(mStream);
        return std::string(mText, mSize);
    }

private:
    char* mText = nullptr;
    size_t mSize = 0;
    std::FILE* mStream;
};

class ReportTest : public DoctorTest {
protected:
    std::string Plist(const PlistMembers& members) const { return Write("Info.plist", XmlPlist(members)); }

    int Run(const std::string& path, DoctorFormat format = DoctorFormat::kText) const {
        return RunDoctor(path, format, false, mOut.stream(), mErr.stream());
    }

    Captured mOut;
    Captured mErr;
};

Examination ExaminationWith(Finding finding) {
    return Examination{"Info.plist", ExaminedKind::kInfoPlist, {std::move(finding)}};
}

TEST_F(ReportTest, AGameInOrderEndsWithStatusZero) {
    const std::string path = Plist(GoodMembers());

    EXPECT_EQ(Run(path), 0);
    EXPECT_EQ(mOut.text(), path + ": examined as a game's Info.plist\n\n0 errors, 0 warnings, 0 notes\n");
    EXPECT_THAT(mErr.text(), IsEmpty());
}

TEST_F(ReportTest, NotesAloneEndWithStatusZero) {
    EXPECT_EQ(Run(Plist(Without("NSUserTrackingUsageDescription"))), 0);
    EXPECT_THAT(mOut.text(), EndsWith("0 errors, 0 warnings, 1 note\n"));
}

TEST_F(ReportTest, AWarningEndsWithStatusOne) {
    EXPECT_EQ(Run(Plist(Without("FacebookDisplayName"))), 1);
    EXPECT_THAT(mOut.text(), EndsWith("0 errors, 1 warning, 0 notes\n"));
}

TEST_F(ReportTest, UnusableInputEndsWithStatusTwoAndAnErrorThatNamesIt) {
    const std::string path = Write("Info.plist", "<plist>");

    EXPECT_EQ(Run(path), 2);
    EXPECT_THAT(mErr.text(), StartsWith("vornsim: " + path + ":1:1: "));
    EXPECT_THAT(mOut.text(), IsEmpty());
}

TEST_F(ReportTest, AFindingIsABlockOfLabelledLines) {
    Finding finding{&KindOf("queries-scheme-fbapi-missing"),
                    "It is not there.",
                    "Info.plist",
                    "Key[0]",
                    "<string>fbapi</string>",
                    "queries-scheme-not-text"};

    EXPECT_EQ(TextReport(ExaminationWith(finding), false),
              "Info.plist: examined as a game's Info.plist\n"
              "\n"
              "error: queries-scheme-fbapi-missing\n"
              "  Cause:  It is not there.\n"
              "  Breaks: Share dialogs and invitations never use the Facebook app, even when it is installed.\n"
              "  Due to: queries-scheme-not-text; mend that first.\n"
              "  Where:  Info.plist, Key[0]\n"
              "  Paste:\n"
              "    <string>fbapi</string>\n"
              "  Read:   docs/INTEGRATION.md#infoplist\n"
              "\n"
              "1 error, 0 warnings, 0 notes\n");
}

TEST_F(ReportTest, LinesAreBrokenBetweenWords) {
    const std::string path = Plist({});
    Run(path);

    std::istringstream lines(mOut.text());
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(line.size() <= 96 || line.find(path) != std::string::npos) << line;
    }
}

TEST_F(ReportTest, ColorsAreThereOnlyWhenTheyAreAskedFor) {
    const Examination examination = ExaminationWith({&KindOf("app-id-missing"), "", "", "", "", ""});

    EXPECT_THAT(TextReport(examination, true), HasSubstr("\033[1;31merror\033[0m"));
    EXPECT_THAT(TextReport(examination, false), Not(HasSubstr("\033")));
}

TEST_F(ReportTest, ControlCharactersOfAFileDoNotReachTheTerminal) {
    const Examination examination =
        ExaminationWith({&KindOf("app-id-missing"), "\033[2J\xC2\x9B", "a\nb", "\x7F", "\033]0;x\a", ""});

    const std::string report = TextReport(examination, false);

    EXPECT_THAT(report, Not(HasSubstr("\033")));
    EXPECT_THAT(report, Not(HasSubstr("\x7F")));
    EXPECT_THAT(report, Not(HasSubstr("\xC2\x9B")));
    EXPECT_THAT(report, Not(HasSubstr("a\nb")));
}

TEST_F(ReportTest, JsonHoldsEveryFieldOfAFinding) {
    const std::string path = Plist(Without("FacebookAppID"));

    EXPECT_EQ(Run(path, DoctorFormat::kJson), 1);
    rapidjson::Document document;
    document.Parse(mOut.text().c_str());

    ASSERT_TRUE(document.IsObject()) << mOut.text();
    EXPECT_STREQ(document["examined"].GetString(), path.c_str());
    EXPECT_STREQ(document["kind"].GetString(), "info-plist");
    EXPECT_EQ(document["counts"]["errors"].GetUint(), 1U);
    EXPECT_EQ(document["counts"]["warnings"].GetUint(), 0U);
    EXPECT_EQ(document["counts"]["notes"].GetUint(), 1U);
    ASSERT_EQ(document["findings"].Size(), 2U);
    const rapidjson::Value& cause = document["findings"][0];
    EXPECT_STREQ(cause["id"].GetString(), "app-id-missing");
    EXPECT_STREQ(cause["severity"].GetString(), "error");
    EXPECT_STREQ(cause["cause"].GetString(), "FacebookAppID is missing.");
    EXPECT_THAT(cause["breaks"].GetString(), HasSubstr("no app ID at launch"));
    EXPECT_STREQ(cause["explainedBy"].GetString(), "");
    EXPECT_STREQ(cause["file"].GetString(), path.c_str());
    EXPECT_STREQ(cause["place"].GetString(), "FacebookAppID");
    EXPECT_STREQ(cause["paste"].GetString(), "<key>FacebookAppID</key>\n<string>123456</string>");
    EXPECT_STREQ(cause["page"].GetString(), "docs/INTEGRATION.md#infoplist");
    EXPECT_STREQ(document["findings"][1]["explainedBy"].GetString(), "app-id-missing");
}

TEST_F(ReportTest, JsonIsValidWhateverFilesHold) {
    const Examination examination =
        ExaminationWith({&KindOf("app-id-missing"), "\xFF\"\\\n\x01", "\xED\xA0\x80", "", "", ""});

    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>(JsonReport(examination).c_str());

    ASSERT_TRUE(document.IsObject());
    EXPECT_STREQ(document["findings"][0]["cause"].GetString(), "\xEF\xBF\xBD\"\\\n\x01");
    EXPECT_STREQ(document["findings"][0]["file"].GetString(), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

} // namespace
} // namespace Tarvik::Vorn::Test
