// What a world expects, compared with what a run has shown.

#include "Expectations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::IsEmpty;
using ::testing::SizeIs;

ResultFacts Result(const std::string& seqID, int64_t retCode, unsigned observer = 31) {
    return {"InnerBaseRet", observer, seqID, {{"retCode", retCode}, {"retMsg", "text"}}};
}

Entry Delivered(Milliseconds time, const ResultFacts& result, EntryKind kind = EntryKind::kDelivered) {
    Entry entry;
    entry.time = time;
    entry.kind = kind;
    entry.result = result;
    return entry;
}

Entry Line(const std::string& text) {
    Entry entry;
    entry.kind = EntryKind::kLog;
    entry.text = text;
    return entry;
}

ExpectedResult Wanted(const std::string& seqID, size_t line = 1) {
    ExpectedResult result;
    result.seqID = seqID;
    result.location = {line, 5};
    return result;
}

Expectations Results(std::vector<ExpectedResult> results) {
    Expectations expectations;
    expectations.results = std::move(results);
    expectations.location = {90, 3};
    return expectations;
}

std::vector<Mismatch> Compare(const Expectations& expectations, const std::vector<Entry>& entries) {
    ExpectationCheck check(expectations);
    for (const Entry& entry : entries) {
        check.See(entry);
    }
    return check.Finish({}, {}, {});
}

// What one mismatch says was found, for a single result that is expected.
std::string Found(const ExpectedResult& wanted, const Entry& entry) {
    const std::vector<Mismatch> mismatches = Compare(Results({wanted}), {entry});
    return mismatches.empty() ? "" : mismatches.front().found;
}

TEST(ExpectationsTest, NothingExpectedAlwaysHolds) {
    EXPECT_THAT(Compare(Expectations(), {Delivered(0, Result("a", 0)), Line("x")}), IsEmpty());
}

TEST(ExpectationsTest, ResultsThatComeAsExpectedHold) {
    EXPECT_THAT(
        Compare(Results({Wanted("a"), Wanted("b")}), {Delivered(0, Result("a", 0)), Delivered(9, Result("b", 1))}),
        IsEmpty());
}

TEST(ExpectationsTest, ACollectedResultIsDeliveredToo) {
    EXPECT_THAT(Compare(Results({Wanted("a")}), {Delivered(0, Result("a", 0), EntryKind::kCollected)}), IsEmpty());
}

TEST(ExpectationsTest, ACachedOrRecordedResultIsNotDelivered) {
    EXPECT_THAT(Compare(Results({}), {Delivered(0, Result("a", 0), EntryKind::kCached),
                                      Delivered(0, Result("a", 0), EntryKind::kRecord)}),
                IsEmpty());
}

TEST(ExpectationsTest, EveryPartIsCompared) {
    const Entry entry = Delivered(2000, Result("a", 2));
    ExpectedResult record;
    record.record = "InnerFriendRet";
    ExpectedResult observer;
    observer.observerID = 30;
    ExpectedResult time;
    time.time = 1999;
    ExpectedResult number;
    number.fields = {{"retCode", int64_t{0}}};
    ExpectedResult text;
    text.fields = {{"retMsg", "other"}};
    ExpectedResult missing;
    missing.fields = {{"channelID", int64_t{4}}};

    EXPECT_EQ(Found(record, entry), "the nearest is result 1, whose record is InnerBaseRet instead of InnerFriendRet");
    EXPECT_EQ(Found(observer, entry), "the nearest is result 1, whose observer is 31 instead of 30");
    EXPECT_EQ(Found(Wanted("b"), entry), "the nearest is result 1, whose seqID is \"a\" instead of \"b\"");
    EXPECT_EQ(Found(time, entry), "the nearest is result 1, whose at is 2.000 s instead of 1.999 s");
    EXPECT_EQ(Found(number, entry), "the nearest is result 1, whose retCode is 2 instead of 0");
    EXPECT_EQ(Found(text, entry), "the nearest is result 1, whose retMsg is \"text\" instead of \"other\"");
    EXPECT_EQ(Found(missing, entry), "the nearest is result 1, whose channelID is no such member instead of 4");
}

TEST(ExpectationsTest, EveryPartMayHold) {
    ExpectedResult wanted = Wanted("a");
    wanted.record = "InnerBaseRet";
    wanted.observerID = 31;
    wanted.time = 2000;
    wanted.fields = {{"retCode", int64_t{2}}, {"retMsg", "text"}};

    EXPECT_EQ(Found(wanted, Delivered(2000, Result("a", 2))), "");
}

TEST(ExpectationsTest, ANumberIsNoText) {
    ExpectedResult wanted;
    wanted.fields = {{"retCode", "2"}};

    EXPECT_EQ(Found(wanted, Delivered(0, Result("a", 2))),
              "the nearest is result 1, whose retCode is 2 instead of \"2\"");
}

TEST(ExpectationsTest, AMismatchTellsWhatIsExpectedAndWhere) {
    ExpectedResult wanted = Wanted("b", 7);
    wanted.observerID = 31;

    const std::vector<Mismatch> mismatches = Compare(Results({wanted}), {Delivered(0, Result("a", 0))});

    ASSERT_THAT(mismatches, SizeIs(1));
    EXPECT_EQ(mismatches[0].expected, "result 1: a result with observer 31, seqID \"b\"");
    EXPECT_EQ(mismatches[0].line, 7u);
    EXPECT_EQ(mismatches[0].column, 5u);
}

TEST(ExpectationsTest, TheNearestResultIsTheOneThatDiffersLeast) {
    ExpectedResult wanted = Wanted("c");
    wanted.observerID = 31;
    wanted.time = 5;

    const std::vector<Mismatch> mismatches =
        Compare(Results({Wanted("a"), Wanted("b"), wanted}),
                {Delivered(0, Result("a", 0)), Delivered(1, Result("b", 0)), Delivered(6, Result("c", 0))});

    ASSERT_THAT(mismatches, SizeIs(1));
    EXPECT_EQ(mismatches[0].found, "the nearest is result 3, whose at is 0.006 s instead of 0.005 s");
}

TEST(ExpectationsTest, TheOrderCounts) {
    const std::vector<Mismatch> mismatches =
        Compare(Results({Wanted("a"), Wanted("b")}), {Delivered(0, Result("b", 0)), Delivered(0, Result("a", 0))});

    ASSERT_THAT(mismatches, SizeIs(2));
    EXPECT_EQ(mismatches[0].found, "it came as result 2");
    EXPECT_EQ(mismatches[1].found, "it came as result 1");
}

TEST(ExpectationsTest, ResultsThatDoNotComeAreMissed) {
    const std::vector<Mismatch> mismatches = Compare(Results({Wanted("a"), ExpectedResult()}), {});

    ASSERT_THAT(mismatches, SizeIs(2));
    EXPECT_EQ(mismatches[0].found, "no result at all");
    EXPECT_EQ(mismatches[1].expected, "result 2: any result");
}

TEST(ExpectationsTest, OneResultTooFewIsMissed) {
    EXPECT_THAT(Compare(Results({Wanted("a"), Wanted("a")}), {Delivered(0, Result("a", 0))}), SizeIs(1));
}

TEST(ExpectationsTest, EveryResultTooManyIsTold) {
    const std::vector<Mismatch> mismatches =
        Compare(Results({Wanted("a")}),
                {Delivered(0, Result("a", 0)), Delivered(1, Result("b", 2)), Delivered(1, Result("c", 3))});

    ASSERT_THAT(mismatches, SizeIs(2));
    EXPECT_EQ(mismatches[0].expected, "1 results");
    EXPECT_EQ(mismatches[0].found, "one more: InnerBaseRet for observer 31 under \"b\", retCode 2, retMsg \"text\"");
    EXPECT_EQ(mismatches[1].found, "one more: InnerBaseRet for observer 31 under \"c\", retCode 3, retMsg \"text\"");
    EXPECT_EQ(mismatches[0].line, 90u);
}

TEST(ExpectationsTest, AnEmptyListOfResultsAllowsNone) {
    EXPECT_THAT(Compare(Results({}), {}), IsEmpty());
    EXPECT_THAT(Compare(Results({}), {Delivered(0, Result("a", 0))}), SizeIs(1));
}

TEST(ExpectationsTest, ListsAreComparedWithoutTheirOrder) {
    Expectations expectations;
    expectations.unanswered = {"b", "a"};
    expectations.cached = {"d", "c"};
    expectations.audit = {"lost", "exception"};
    const ExpectationCheck check(expectations);

    EXPECT_THAT(check.Finish({"a", "b"}, {"c", "d"}, {{"exception", "", 0}, {"lost", "", 0}}), IsEmpty());
}

TEST(ExpectationsTest, EachListSaysWhatItMisses) {
    Expectations expectations;
    expectations.unanswered = {"a"};
    expectations.cached = std::vector<std::string>{};
    expectations.audit = {"lost"};
    expectations.location = {4, 2};
    const ExpectationCheck check(expectations);

    const std::vector<Mismatch> mismatches = check.Finish({}, {"d", "c"}, {{"lost", "", 0}, {"lost", "", 1}});

    ASSERT_THAT(mismatches, SizeIs(3));
    EXPECT_EQ(mismatches[0].expected, "unanswered: \"a\"");
    EXPECT_EQ(mismatches[0].found, "unanswered: none");
    EXPECT_EQ(mismatches[1].expected, "cached: none");
    EXPECT_EQ(mismatches[1].found, "cached: \"c\", \"d\"");
    EXPECT_EQ(mismatches[2].expected, "audit: \"lost\"");
    EXPECT_EQ(mismatches[2].found, "audit: \"lost\", \"lost\"");
    EXPECT_EQ(mismatches[2].line, 4u);
}

TEST(ExpectationsTest, AListThatIsNotExpectedIsNotLookedAt) {
    Expectations expectations;
    expectations.lines.push_back({"x", {}});
    ExpectationCheck check(expectations);
    check.See(Line("x"));

    EXPECT_THAT(check.Finish({"a"}, {"b"}, {{"lost", "", 0}}), IsEmpty());
}

TEST(ExpectationsTest, ALineIsAPartOfSomeEntry) {
    Expectations expectations;
    expectations.lines = {{"bcd", {3, 4}}, {"de", {5, 6}}, {"ef", {7, 8}}};

    const std::vector<Mismatch> mismatches = Compare(expectations, {Line("abcd"), Line("efgh")});

    ASSERT_THAT(mismatches, SizeIs(1));
    EXPECT_EQ(mismatches[0].expected, "a line with \"de\"");
    EXPECT_EQ(mismatches[0].found, "no such line");
    EXPECT_EQ(mismatches[0].line, 5u);
    EXPECT_EQ(mismatches[0].column, 6u);
}

TEST(ExpectationsTest, LinesAreMissedWhenNothingHappens) {
    Expectations expectations;
    expectations.lines = {{"x", {}}};

    EXPECT_THAT(Compare(expectations, {}), SizeIs(1));
}

} // namespace
} // namespace Tarvik::Vorn::Test
