// Spans of time as worlds write them.

#include "World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::HasSubstr;
using ::testing::Pair;

// The shortest and the longest span that a "wait" with this value stands for; -1 when it is refused.
std::pair<Milliseconds, Milliseconds> Span(const std::string& value) {
    LocatedError error;
    const auto world = ParseWorld(R"({"question": "q", "steps": [{"wait": )" + value + "}]}", "t.world.json", error);
    if (!world) {
        return {-1, -1};
    }
    const Duration duration = std::get<WaitStep>(world->steps.front().action).duration;
    return {duration.least, duration.most};
}

std::string Refusal(const std::string& value) {
    LocatedError error;
    const auto world = ParseWorld(R"({"question": "q", "steps": [{"wait": )" + value + "}]}", "t.world.json", error);
    return world ? "accepted" : error.text();
}

TEST(DurationTest, ANumberHasOneOfThreeUnits) {
    EXPECT_THAT(Span(R"("250 ms")"), Pair(250, 250));
    EXPECT_THAT(Span(R"("30 s")"), Pair(30'000, 30'000));
    EXPECT_THAT(Span(R"("2 min")"), Pair(120'000, 120'000));
    EXPECT_THAT(Span(R"("0 s")"), Pair(0, 0));
}

TEST(DurationTest, AYearIsTheLongestInEveryUnit) {
    constexpr Milliseconds kYear = 31'536'000'000;

    EXPECT_THAT(Span(R"("31536000000 ms")"), Pair(kYear, kYear));
    EXPECT_THAT(Span(R"("31536000 s")"), Pair(kYear, kYear));
    EXPECT_THAT(Span(R"("525600 min")"), Pair(kYear, kYear));
    EXPECT_THAT(Span(R"("31536000001 ms")"), Pair(-1, -1));
    EXPECT_THAT(Span(R"("31536001 s")"), Pair(-1, -1));
    EXPECT_THAT(Span(R"("525601 min")"), Pair(-1, -1));
}

TEST(DurationTest, WhatDoesNotFitIntoANumberIsRefused) {
    EXPECT_THAT(Span(R"("9223372036854775807 min")"), Pair(-1, -1));
    EXPECT_THAT(Span(R"("9223372036854775808 ms")"), Pair(-1, -1));
    EXPECT_THAT(Span(R"("99999999999999999999999 s")"), Pair(-1, -1));
}

TEST(DurationTest, ASignIsRefused) {
    EXPECT_THAT(Span(R"("-1 s")"), Pair(-1, -1));
    EXPECT_THAT(Span(R"("-0 s")"), Pair(-1, -1));
    EXPECT_THAT(Span(R"("+1 s")"), Pair(-1, -1));
}

TEST(DurationTest, OtherTextsAreRefused) {
    for (const char* const text : {"", "s", " s", "1", "1s", "1  s", " 1 s", "1 s ", "1.5 s", "1e3 s", "1 h", "1 S",
                                   "one s", "1 sec", "0x1 s", "1 mi"}) {
        EXPECT_THAT(Span("\"" + std::string(text) + "\""), Pair(-1, -1)) << text;
    }
}

TEST(DurationTest, WhatIsNoTextIsRefused) {
    for (const char* const value : {"1", "null", "true", R"(["1 s"])", "{}", R"({"least": "1 s"})"}) {
        EXPECT_THAT(Span(value), Pair(-1, -1)) << value;
    }
}

TEST(DurationTest, ARefusalNamesThePlaceAndWhatToWrite) {
    EXPECT_EQ(Refusal(R"("soon")"),
              "t.world.json:1:38: steps[0].wait: \"wait\" is no span of time; write \"250 ms\", \"30 s\", \"2 min\" or "
              "{\"between\": [\"1 s\", \"5 s\"]}, a year at the most");
}

TEST(DurationTest, ASpanMayLieBetweenTwo) {
    EXPECT_THAT(Span(R"({"between": ["250 ms", "2 min"]})"), Pair(250, 120'000));
    EXPECT_THAT(Span(R"({"between": ["2 s", "2 s"]})"), Pair(2000, 2000));
}

TEST(DurationTest, TheShorterTimeStandsFirst) {
    EXPECT_THAT(Refusal(R"({"between": ["1 s", "999 ms"]})"), HasSubstr("\"between\" ends before it begins; "));
}

TEST(DurationTest, BetweenNeedsExactlyTwoTimesAndNoOtherKey) {
    for (const char* const value :
         {R"({"between": []})", R"({"between": ["1 s"]})", R"({"between": "1 s"})",
          R"({"between": ["1 s", "2 s", "3 s"]})", R"({"between": ["1 s", 2]})", R"({"between": ["1 s", "2 h"]})",
          R"({"between": ["1 s", "2 s"], "x": 1})", R"({"between": ["1 s", {"between": ["1 s", "2 s"]}]})"}) {
        EXPECT_THAT(Span(value), Pair(-1, -1)) << value;
    }
}

TEST(DurationTest, ABadTimeOfAPairIsShownAtItsOwnPlace) {
    EXPECT_THAT(Refusal(R"({"between": ["1 s", "2 h"]})"), HasSubstr(":1:58: steps[0].wait.between[1]: "));
}

} // namespace
} // namespace Tarvik::Vorn::Test
