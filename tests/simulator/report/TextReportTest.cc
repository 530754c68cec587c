// The report as text: what stands where, in both orders, and that no text of a run changes the terminal.
#include "ReportTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Tarvik::Vorn::Simulator::Test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::string Text(const std::vector<RunReport>& runs, TextOrder order = TextOrder::kByRequest, bool color = false) {
    const TextStyle style{order, color};
    return Printed([&](std::FILE* out) { PrintText(runs, style, out); });
}

std::string ByTime(const RunReport& run) {
    return Text({run}, TextOrder::kByTime);
}

TEST(TextReportTest, NoRunsAreNoText) {
    EXPECT_EQ(Text({}), "");
}

TEST(TextReportTest, ARunInWhichNothingHappensSaysSo) {
    const std::string text = Text({EmptyRun()});

    EXPECT_EQ(text, "tour: What happens?\n"
                    "  tour.world.json, seed 7, Facebook SDK 18.1\n"
                    "\n"
                    "Nothing happened.\n"
                    "\n"
                    "audit: nothing to remark\n"
                    "expectations: none\n"
                    "tour holds: every step was played; nothing is expected of it\n");
}

TEST(TextReportTest, WhatARunDoesNotSayIsLeftOutOfItsHead) {
    RunReport run;
    run.name = "tour";

    EXPECT_THAT(Text({run}), testing::StartsWith("tour\n  seed 0\n\n"));
}

TEST(TextReportTest, EntriesAreGroupedByRequestInTheOrderOfFirstAppearance) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCall, "login:", 1, 5), MakeEntry(EntryKind::kCore, "registers", kNoRequest, 7),
                   MakeEntry(EntryKind::kCall, "share:", 0, 10), MakeEntry(EntryKind::kReturn, "login:", 1, 20)};

    const std::string text = Text({run});

    EXPECT_THAT(text, HasSubstr("\n\n"
                                "request \"s2\": login, method 111, no result\n"
                                "  0.005 s  call       login:\n"
                                "  0.020 s  return     login:\n"
                                "\n"
                                "the app\n"
                                "  0.007 s  core       registers\n"
                                "\n"
                                "request \"s1\": share of a link, method 211, observer 31\n"
                                "  0.010 s  call       share:\n"
                                "\n"
                                "audit"));
}

TEST(TextReportTest, AHeadingGoesWhereTheEntryBehindItGoes) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCore, "registers"), MakeEntry(EntryKind::kNote, "First"),
                   MakeEntry(EntryKind::kNote, "Second"), MakeEntry(EntryKind::kCall, "share:", 0),
                   MakeEntry(EntryKind::kNote, "Last")};

    const std::string text = Text({run});

    EXPECT_THAT(text, HasSubstr("the app\n"
                                "  0.000 s  core       registers\n"
                                "  == Last\n"
                                "\n"
                                "request \"s1\": share of a link, method 211, observer 31\n"
                                "  == First\n"
                                "  == Second\n"
                                "  0.000 s  call       share:\n"));
}

TEST(TextReportTest, AHeadingBehindEverythingStaysWithItsRequest) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCall, "share:", 0), MakeEntry(EntryKind::kCall, "login:", 1),
                   MakeEntry(EntryKind::kNote, "Last", 0)};

    EXPECT_THAT(Text({run}), HasSubstr("  0.000 s  call       share:\n  == Last\n"));
}

TEST(TextReportTest, ByTimeTheRequestsIDIsAColumn) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCore, "registers"), MakeEntry(EntryKind::kNote, "A share"),
                   MakeEntry(EntryKind::kCall, "share:", 0, 12345), MakeEntry(EntryKind::kCall, "login:", 1, 12345)};

    EXPECT_THAT(ByTime(run), HasSubstr("\n\n"
                                       "   0.000 s  the app  core       registers\n"
                                       "  == A share\n"
                                       "  12.345 s  s1       call       share:\n"
                                       "  12.345 s  s2       call       login:\n"
                                       "\n"
                                       "audit"));
}

TEST(TextReportTest, AnIDThatIsTooLongForItsColumnIsCut) {
    RunReport run = RunWithRequests();
    run.requests[0].seqID = "ééééééééééééééééééééé";
    run.entries = {MakeEntry(EntryKind::kCall, "share:", 0), MakeEntry(EntryKind::kCall, "login:", 1)};

    EXPECT_THAT(ByTime(run), HasSubstr("  0.000 s  ééééééééééééééééééé…  call       share:\n"
                                       "  0.000 s  s2                    call       login:\n"));
}

TEST(TextReportTest, AnIDThatFillsItsColumnIsNotCut) {
    RunReport run = RunWithRequests();
    run.requests[0].seqID = "12345678901234567890";
    run.entries = {MakeEntry(EntryKind::kCall, "share:", 0)};

    EXPECT_THAT(ByTime(run), HasSubstr("  0.000 s  12345678901234567890  call       share:\n"));
}

TEST(TextReportTest, OtherThreadsAreMarkedAndTheMarkIsExplained) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kAnswer, "Facebook ends the login"), MakeEntry(EntryKind::kLog, "line")};
    run.entries[0].onMainThread = false;

    const std::string text = Text({run});

    EXPECT_THAT(text, HasSubstr("18.1\n  \"bg\" marks what happens on another thread than the main thread.\n"));
    EXPECT_THAT(text, HasSubstr("  0.000 s  bg  answer     Facebook ends the login\n"
                                "  0.000 s      log        line\n"));
}

TEST(TextReportTest, FurtherLinesStandUnderTheFirst) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kLogError, "first\nsecond\n\nfourth", 0)};

    EXPECT_THAT(Text({run}), HasSubstr("  0.000 s  log error  first\n"
                                       "                      second\n"
                                       "\n"
                                       "                      fourth\n"));
    EXPECT_THAT(ByTime(run), HasSubstr("  0.000 s  s1       log error  first\n"
                                       "                               second\n"));
}

TEST(TextReportTest, FurtherLinesStandUnderTheFirstBehindAnIDOfOtherLettersThanAscii) {
    RunReport run = RunWithRequests();
    run.requests[0].seqID = "éé";
    run.entries = {MakeEntry(EntryKind::kLogError, "first\nsecond", 0)};

    EXPECT_THAT(ByTime(run), HasSubstr("  0.000 s  éé       log error  first\n"
                                       "                               second\n"));
}

TEST(TextReportTest, RemarksOfTheAuditNameTheirRequest) {
    RunReport run = RunWithRequests();
    run.audit = {{"unanswered", "It is open.\nStill.", 1}, {"order", "It is wrong.", kNoRequest}};

    EXPECT_THAT(Text({run}), HasSubstr("audit: 2 remarks\n"
                                       "  unanswered (request \"s2\"): It is open.\n"
                                       "    Still.\n"
                                       "  order: It is wrong.\n"));
}

TEST(TextReportTest, OneRemarkIsNotCountedAsSeveral) {
    RunReport run = EmptyRun();
    run.audit = {{"order", "It is wrong.", kNoRequest}};

    EXPECT_THAT(Text({run}), HasSubstr("audit: 1 remark\n"));
}

TEST(TextReportTest, WhatDoesNotHoldIsShownWithItsPlace) {
    RunReport run = EmptyRun();
    run.hasExpectations = true;
    run.mismatches = {{"retCode 0", "retCode 2", 12, 7}, {"", "a result", 0, 0}};

    EXPECT_THAT(Text({run}), EndsWith("expectations: 2 do not hold\n"
                                      "  tour.world.json:12:7\n"
                                      "    expected: retCode 0\n"
                                      "    found:    retCode 2\n"
                                      "  tour.world.json\n"
                                      "    expected: nothing\n"
                                      "    found:    a result\n"
                                      "tour does not hold: 2 expectations failed\n"));
}

TEST(TextReportTest, AWorldWithoutAFileIsNamedAsThePlace) {
    RunReport run = EmptyRun();
    run.path.clear();
    run.mismatches = {{"a", "b", 1, 2}};

    EXPECT_THAT(Text({run}), HasSubstr("expectations: 1 does not hold\n  tour:1:2\n"));
}

TEST(TextReportTest, ExpectationsThatHoldAreSaidToHold) {
    RunReport run = EmptyRun();
    run.hasExpectations = true;

    EXPECT_THAT(Text({run}), EndsWith("expectations: all hold\n"
                                      "tour holds: every step was played, and all that is expected came\n"));
}

TEST(TextReportTest, AStepThatCouldNotBePlayedIsTheLastWord) {
    RunReport run = EmptyRun();
    run.problem = "no login is under way";

    EXPECT_THAT(Text({run}), EndsWith("tour does not hold: a step could not be played: no login is under way\n"));
    run.mismatches = {{"a", "b", 1, 2}};
    EXPECT_THAT(
        Text({run}),
        EndsWith("tour does not hold: 1 expectation failed, and a step could not be played: no login is under way\n"));
}

TEST(TextReportTest, SeveralRunsStandApart) {
    EXPECT_THAT(Text({EmptyRun(), EmptyRun()}), HasSubstr("nothing is expected of it\n\n\ntour: What happens?\n"));
}

TEST(TextReportTest, ColoursTellKindsApartAndEndWithTheirLine) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCall, "share:", 0), MakeEntry(EntryKind::kLogError, "one\ntwo", 0),
                   MakeEntry(EntryKind::kNote, "A share", 0)};

    const std::string text = Text({run}, TextOrder::kByRequest, true);

    EXPECT_THAT(text, HasSubstr("  0.000 s  \x1b[34mcall       share:\x1b[0m\n"
                                "  0.000 s  \x1b[31mlog error  one\x1b[0m\n"
                                "                      \x1b[31mtwo\x1b[0m\n"
                                "  \x1b[1m== A share\x1b[0m\n"));
}

TEST(TextReportTest, NoTextOfARunReachesTheTerminalUnseen) {
    const RunReport run = RunFullOf("\x1b]0;owned\a\x9b\xc2\x9b\r\b");

    for (const TextOrder order : {TextOrder::kByRequest, TextOrder::kByTime}) {
        const std::string text = Text({run}, order);

        for (const char c : text) {
            EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~') || "…"[0] == c || "…"[1] == c || "…"[2] == c);
        }
        EXPECT_THAT(text, HasSubstr("\\x1b]0;owned\\x07\\x9b\\u009b\\r\\x08"));
    }
}

TEST(TextReportTest, InColourOnlyItsOwnEscapeSequencesAreWritten) {
    const std::string text = Text({RunFullOf("\x1b[5m")}, TextOrder::kByTime, true);

    EXPECT_THAT(text, Not(HasSubstr("\x1b[5m")));
    EXPECT_THAT(text, HasSubstr("\x1b[31m"));
}

TEST(TextReportTest, AnEntryOfARequestThatIsNotThereBelongsToTheApp) {
    RunReport run = EmptyRun();
    run.entries = {MakeEntry(EntryKind::kCall, "share:", 5)};

    EXPECT_THAT(Text({run}), HasSubstr("\nthe app\n  0.000 s  call       share:\n"));
}

} // namespace
} // namespace Tarvik::Vorn::Simulator::Test
