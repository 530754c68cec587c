// Entries with their time, thread and cause.

#include "Timeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

RequestFacts Request(const std::string& seqID) {
    RequestFacts facts;
    facts.seqID = seqID;
    return facts;
}

TEST(TimelineTest, AnEntryHasTimeThreadAndCause) {
    Timeline timeline;
    timeline.SetTime(1500);
    const size_t request = timeline.BeginRequest(Request("a"));
    timeline.Add(EntryKind::kCall, "here");
    std::thread([&timeline] { timeline.Add(EntryKind::kLog, "there"); }).join();

    ASSERT_THAT(timeline.entries(), SizeIs(2));
    EXPECT_EQ(timeline.entries()[0].time, 1500);
    EXPECT_TRUE(timeline.entries()[0].onMainThread);
    EXPECT_EQ(timeline.entries()[0].request, request);
    EXPECT_FALSE(timeline.entries()[1].onMainThread);
    EXPECT_EQ(timeline.requests()[0].time, 1500);
}

TEST(TimelineTest, NothingIsTheCauseUntilARequestBeginsOrIsSet) {
    Timeline timeline;
    EXPECT_EQ(timeline.cause(), kNoRequest);
    const size_t first = timeline.BeginRequest(Request("a"));
    const size_t second = timeline.BeginRequest(Request("b"));

    EXPECT_EQ(timeline.cause(), second);

    timeline.SetCause(first);
    EXPECT_EQ(timeline.cause(), first);
}

TEST(TimelineTest, AddressesAreNumberedInTheOrderOfTheirAppearance) {
    Timeline timeline;
    timeline.Add(EntryKind::kLog, "<A: 0x55d0c0ffee12> and <B: 0x7fd0c0ffee12>");
    timeline.Add(EntryKind::kLog, "0x7fd0c0ffee12");

    EXPECT_EQ(timeline.entries()[0].text, "<A: #1> and <B: #2>");
    EXPECT_EQ(timeline.entries()[1].text, "#2");
}

TEST(TimelineTest, AddressesInResultsAreNumberedToo) {
    ResultFacts result;
    result.fields.push_back({"retMsg", std::string("value=<B: 0x7fd0c0ffee12>")});
    result.fields.push_back({"retCode", int64_t{2}});
    Timeline timeline;
    timeline.Add(EntryKind::kLog, "<A: 0x55d0c0ffee12>");
    timeline.Add(EntryKind::kRecord, "{retMsg: <B: 0x7fd0c0ffee12>}", result);

    EXPECT_EQ(timeline.entries()[1].text, "{retMsg: <B: #2>}");
    ASSERT_TRUE(timeline.entries()[1].result);
    EXPECT_EQ(timeline.entries()[1].result->Text("retMsg"), "value=<B: #2>");
    EXPECT_EQ(timeline.entries()[1].result->Number("retCode"), 2);
}

TEST(TimelineTest, OtherNumbersStay) {
    Timeline timeline;
    timeline.Add(EntryKind::kLog, "0x12 0x55d0c0ffee1 0x55d0c0ffee123 0x");

    EXPECT_EQ(timeline.entries()[0].text, "0x12 0x55d0c0ffee1 0x55d0c0ffee123 0x");
}

TEST(TimelineTest, AListenerHearsEveryEntry) {
    Timeline timeline;
    std::vector<std::string> heard;
    timeline.SetListener([&heard](const Entry& entry) { heard.push_back(entry.text); });
    timeline.Add(EntryKind::kLog, "a");
    timeline.Add(EntryKind::kRecord, "b", ResultFacts());

    EXPECT_THAT(heard, ElementsAre("a", "b"));
}

TEST(TimelineTest, WhatIsNotKeptIsHeardAndCounted) {
    Timeline timeline;
    size_t heard = 0;
    timeline.SetKept(false);
    timeline.SetListener([&heard](const Entry&) { heard += 1; });
    timeline.Add(EntryKind::kLog, "a");
    timeline.Add(EntryKind::kRecord, "b", ResultFacts());
    timeline.BeginRequest(Request("a"));

    EXPECT_EQ(timeline.BeginRequest(Request("b")), 1u);
    EXPECT_EQ(heard, 2u);
    EXPECT_THAT(timeline.entries(), IsEmpty());
    EXPECT_THAT(timeline.requests(), IsEmpty());
}

TEST(TimelineTest, TimesAreShownInSeconds) {
    EXPECT_EQ(TimeText(0), "0.000 s");
    EXPECT_EQ(TimeText(12'345), "12.345 s");
    EXPECT_EQ(TimeText(3'600'001), "3600.001 s");
}

} // namespace
} // namespace Tarvik::Vorn::Test
