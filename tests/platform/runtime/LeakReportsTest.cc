// What the leak detector says of a program that uses the runtime: nothing of the runtime's tables, and everything that the
// program loses.

#include "RunProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using ::testing::HasSubstr;

namespace {

Tarvik::Vorn::Test::ProgramResult Lose(const std::string& what) {
    return Tarvik::Vorn::Test::RunProgram({VORN_LOSER, what});
}

TEST(LeakReports, NothingIsReportedOfAProgramThatLosesNothing) {
    const auto result = Lose("nothing");

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
}

TEST(LeakReports, MemoryThatIsLostIsReported) {
    EXPECT_THAT(Lose("memory").errors, HasSubstr("Direct leak of 24 byte(s) in 1 object(s)"));
}

TEST(LeakReports, AnObjectThatIsLostIsReported) {
    EXPECT_THAT(Lose("object").errors, HasSubstr("detected memory leaks"));
}

TEST(LeakReports, ACopyThatTheRuntimeMakesForTheProgramIsReported) {
    EXPECT_THAT(Lose("methods").errors, HasSubstr("in class_copyMethodList"));
}

// It reads the debug information of every library: that was most of what a short program took.
TEST(LeakReports, NoSymbolizerIsStartedForAProgramThatLosesNothing) {
    const auto result = Tarvik::Vorn::Test::RunProgram(
        {"/usr/bin/env", "ASAN_OPTIONS=external_symbolizer_path=" VORN_NO_SYMBOLIZER, VORN_LOSER, "nothing"});

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.errors, "");
}

TEST(LeakReports, ASymbolizerIsStartedForALeak) {
    const auto result = Tarvik::Vorn::Test::RunProgram(
        {"/usr/bin/env", "ASAN_OPTIONS=external_symbolizer_path=" VORN_NO_SYMBOLIZER, VORN_LOSER, "memory"});

    EXPECT_THAT(result.errors, HasSubstr("no symbolizer"));
}

} // namespace
