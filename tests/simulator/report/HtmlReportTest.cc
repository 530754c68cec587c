// The report as a page, read by an HTML parser: what stands on it, and that no text of a run becomes a part of it.
#include "ReportTest.h"

#include "RunProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

namespace Tarvik::Vorn::Simulator::Test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::string Page(const std::vector<RunReport>& runs) {
    return Printed([&](std::FILE* out) { PrintHtml(runs, out); });
}

// What the parser prints of the page.
std::string Read(const std::string& page, const std::vector<std::string>& options = {}) {
    const std::string path = testing::TempDir() + "report-" + std::to_string(getpid()) + ".html";
    std::ofstream(path) << page;
    std::vector<std::string> command = {"/usr/bin/env", "python3", VORN_PAGE_READER};
    command.insert(command.end(), options.begin(), options.end());
    command.push_back(path);
    const Vorn::Test::ProgramResult result = Vorn::Test::RunProgram(command);
    std::remove(path.c_str());
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result.output;
}

std::string ElementsOf(const std::vector<RunReport>& runs) {
    return Read(Page(runs));
}

std::string TextOf(const std::vector<RunReport>& runs) {
    return Read(Page(runs), {"--text"});
}

// Every match of the expression's first group.
std::vector<std::string> All(const std::string& text, const std::string& expression) {
    const std::regex regex(expression);
    std::vector<std::string> all;
    for (std::sregex_iterator i(text.begin(), text.end(), regex); i != std::sregex_iterator(); ++i) {
        all.push_back((*i)[1]);
    }
    return all;
}

// Texts that would become a part of a page that does not escape them.
std::vector<std::string> HostileTexts() {
    return {"<script>alert(1)</script>",
            "\"><img src=x onerror=alert(1)>",
            "' onmouseover='alert(1)",
            "&lt;b&gt;&amp;&#60;",
            "]]>",
            "-->",
            "<!--",
            "</style><style>*{display:none}",
            "</title></textarea></pre>",
            "javascript:alert(1)",
            "<![CDATA[",
            "<?php",
            "</li></ol></main>",
            std::string("<\0script>", 9),
            "\x1b[31m<\x01\x7f>",
            "\xff<\xc2<b>\xe2\x80\xa8",
            "+ADw-script+AD4-",
            "a\n\n<b>\r\n"};
}

TEST(HtmlReportTest, NoTextMakesAnElementOrAnAttribute) {
    std::vector<RunReport> hostile;
    for (const std::string& text : HostileTexts()) {
        hostile.push_back(RunFullOf(text));
    }
    const std::vector<RunReport> harmless(hostile.size(), RunFullOf("text"));

    EXPECT_EQ(ElementsOf(hostile), ElementsOf(harmless));
}

TEST(HtmlReportTest, NoTextOfASingleRunMakesAnElementOrAnAttribute) {
    std::string hostile; // It is in the page's title too.
    for (const std::string& text : HostileTexts()) {
        hostile += text;
    }

    EXPECT_EQ(ElementsOf({RunFullOf(hostile)}), ElementsOf({RunFullOf("text")}));
}

TEST(HtmlReportTest, HostileTextsAreReadAsTheyAre) {
    RunReport run = EmptyRun();
    run.entries = {MakeEntry(EntryKind::kLog, "<b>&lt; \"'\n--> ]]>")};

    EXPECT_THAT(TextOf({run}), HasSubstr("<b>&lt; \"'\n--> ]]>"));
}

TEST(HtmlReportTest, ControlCharactersAndBytesThatAreNoUtf8AreSpelledOut) {
    const std::string page = Page({RunFullOf("\x1b\xff\xe2\x80\xae\x01")});

    for (const char c : page) {
        EXPECT_TRUE(c == '\n' || static_cast<unsigned char>(c) >= ' ');
    }
    EXPECT_THAT(page, HasSubstr("\\x1b\\xff\\u202e\\x01"));
}

TEST(HtmlReportTest, ThePageNeedsNothingFromOutsideAndRunsNothing) {
    const std::string page = Page({RunFullOf("text")});
    const std::string elements = Read(page);

    EXPECT_THAT(elements, HasSubstr("content=\"default-src 'none'; style-src 'unsafe-inline'\""));
    EXPECT_THAT(elements, Not(HasSubstr("<script")));
    EXPECT_THAT(elements, Not(HasSubstr("<link")));
    EXPECT_THAT(elements, Not(HasSubstr(" src=")));
    EXPECT_THAT(page, Not(HasSubstr("url(")));
    EXPECT_THAT(page, Not(HasSubstr("@import")));
    for (const std::string& target : All(elements, "href='([^']*)'")) {
        EXPECT_EQ(target[0], '#');
    }
}

TEST(HtmlReportTest, ThePageSaysItsLanguageEncodingTitleAndWidth) {
    const std::string elements = ElementsOf({EmptyRun()});

    EXPECT_THAT(elements, HasSubstr("<html lang='en'>"));
    EXPECT_THAT(elements, HasSubstr("<meta charset='utf-8'>"));
    EXPECT_THAT(elements, HasSubstr("<meta name='viewport' content='width=device-width, initial-scale=1'>"));
    EXPECT_THAT(Page({EmptyRun()}), HasSubstr("<title>tour – vornsim</title>"));
    EXPECT_THAT(Page({EmptyRun(), EmptyRun()}), HasSubstr("<title>2 worlds – vornsim</title>"));
}

TEST(HtmlReportTest, ThePageWithoutRunsIsAPage) {
    EXPECT_THAT(TextOf({}), HasSubstr("0 worlds"));
}

TEST(HtmlReportTest, ARunInWhichNothingHappensSaysSo) {
    const std::string text = TextOf({EmptyRun()});

    EXPECT_THAT(text, HasSubstr("What happens?"));
    EXPECT_THAT(text, HasSubstr("tour.world.json, seed 7, Facebook SDK 18.1"));
    EXPECT_THAT(text, HasSubstr("Holds: every step was played; nothing is expected of it"));
    EXPECT_THAT(text, HasSubstr("Audit: nothing to remark."));
    EXPECT_THAT(text, HasSubstr("Nothing happened."));
    EXPECT_THAT(ElementsOf({EmptyRun()}), Not(HasSubstr("class='diagram'")));
}

TEST(HtmlReportTest, EveryLinkLeadsToOnePlace) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCall, "share:", 0), MakeEntry(EntryKind::kReturn, "share:", 0),
                   MakeEntry(EntryKind::kCall, "login:", 1)};

    const std::string elements = ElementsOf({run, run});

    EXPECT_THAT(All(elements, "href='#([^']*)'"), ElementsAre("run-1", "run-2", "run-1-request-1", "run-1-request-2",
                                                              "run-2-request-1", "run-2-request-2"));
    for (const std::string& target : All(elements, "href='#([^']*)'")) {
        EXPECT_EQ(All(elements, " id='(" + target + ")'").size(), 1U) << target;
    }
}

TEST(HtmlReportTest, ARequestWithoutEntriesIsNotALink) {
    const RunReport run = RunWithRequests();

    EXPECT_THAT(All(ElementsOf({run}), "href='#([^']*)'"), ElementsAre());
    EXPECT_THAT(TextOf({run}), HasSubstr("s2 login, method 111, no result"));
}

TEST(HtmlReportTest, ArrowsLeadFromLifelineToLifelineAndNotesStandOnOne) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kCall, "", 0), MakeEntry(EntryKind::kReturn, "", 0),
                   MakeEntry(EntryKind::kApple, "", 0), MakeEntry(EntryKind::kLog, "", 1),
                   MakeEntry(EntryKind::kLost, "")};

    EXPECT_THAT(All(ElementsOf({run}), "<li class='((?:arrow|note)[^']*)'"),
                ElementsAre("arrow right a1 b2 r0", "arrow left a1 b2 return r0", "arrow right a2 b4 ios r0",
                            "note n2 log r1", "arrow left a0 b1 bad lost"));
}

TEST(HtmlReportTest, AnEntrySaysTimeWayRequestThreadKindAndText) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kAnswer, "Facebook ends it", 0, 12345)};
    run.entries[0].onMainThread = false;

    EXPECT_THAT(TextOf({run}), HasSubstr("12.345 sFacebook → Plugin s1 background thread answer Facebook ends it"));
}

TEST(HtmlReportTest, TheMembersOfAResultCanBeOpened) {
    RunReport run = RunWithRequests();
    run.entries = {MakeEntry(EntryKind::kDelivered, "to the game", 0)};
    run.entries[0].result = ResultFacts{"InnerBaseRet", 31, "s1", {{"retCode", 2}, {"retMsg", "cancelled"}}};

    EXPECT_THAT(Page({run}), HasSubstr("<details><summary>members</summary><dl><dt>record</dt><dd>InnerBaseRet</dd>"
                                       "<dt>observer</dt><dd>31</dd><dt>seqID</dt><dd>s1</dd><dt>retCode</dt><dd>2</dd>"
                                       "<dt>retMsg</dt><dd>cancelled</dd></dl></details>"));
}

TEST(HtmlReportTest, HeadingsDivideTheTimeline) {
    RunReport run = EmptyRun();
    run.entries = {MakeEntry(EntryKind::kNote, "One"), MakeEntry(EntryKind::kLog, "a"),
                   MakeEntry(EntryKind::kNote, "Two"), MakeEntry(EntryKind::kNote, "Three"),
                   MakeEntry(EntryKind::kLog, "b"),    MakeEntry(EntryKind::kNote, "Four")};

    EXPECT_THAT(All(ElementsOf({run}), "<(h4|/?ol) ?"), ElementsAre("h4", "ol", "/ol", "h4", "h4", "ol", "/ol", "h4"));
}

TEST(HtmlReportTest, WhatDoesNotHoldAndRemarksStandInBoxes) {
    RunReport run = RunWithRequests();
    run.mismatches = {{"", "a result", 12, 7}};
    run.audit = {{"unanswered", "It is open.", 1}};

    const std::string text = TextOf({run});

    EXPECT_THAT(text, HasSubstr("Does not hold: 1 expectation failed"));
    EXPECT_THAT(text, HasSubstr("tour.world.json:12:7expectednothingfounda result"));
    EXPECT_THAT(text, HasSubstr("Audit: 1 remark\n\nunanswered s2 It is open."));
    EXPECT_THAT(All(ElementsOf({run}), "<section class='(box [a-z]*)'"), ElementsAre("box bad", "box waits"));
}

TEST(HtmlReportTest, APageOfALongRunGrowsWithItsLength) {
    RunReport run = RunWithRequests();
    run.entries.assign(100, MakeEntry(EntryKind::kLog, "line", 0));
    const size_t hundred = Page({run}).size();
    run.entries.assign(10000, MakeEntry(EntryKind::kLog, "line", 0));

    const size_t tenThousand = Page({run}).size();

    EXPECT_LT(tenThousand, 100 * hundred);
    EXPECT_LT(tenThousand, 10000U * 250U);
}

} // namespace
} // namespace Tarvik::Vorn::Simulator::Test
