// What happens later, in its order, and what chance decides.

#include "Schedule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <random>
#include <set>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;

void RunAll(Schedule& schedule) {
    while (schedule.NextDue()) {
        schedule.TakeNext()();
    }
}

TEST(ScheduleTest, WhatIsDueFirstHappensFirst) {
    Schedule schedule;
    std::string order;
    schedule.Plan(30, [&] { order += "c"; });
    schedule.Plan(10, [&] { order += "a"; });
    schedule.Plan(20, [&] { order += "b"; });

    RunAll(schedule);

    EXPECT_EQ(order, "abc");
}

TEST(ScheduleTest, WhatIsDueAtTheSameTimeHappensInTheOrderOfPlanning) {
    Schedule schedule;
    std::string order;
    for (const char letter : std::string("abcdefghijkl")) {
        schedule.Plan(5, [&order, letter] { order += letter; });
    }

    RunAll(schedule);

    EXPECT_EQ(order, "abcdefghijkl");
}

TEST(ScheduleTest, WorkMayPlanWorkForTheSameMoment) {
    Schedule schedule;
    std::string order;
    schedule.Plan(5, [&] {
        order += "a";
        schedule.Plan(5, [&] { order += "c"; });
    });
    schedule.Plan(5, [&] { order += "b"; });

    RunAll(schedule);

    EXPECT_EQ(order, "abc");
}

TEST(ScheduleTest, TheNextMomentIsKnownUntilNothingIsPlanned) {
    Schedule schedule;
    EXPECT_EQ(schedule.NextDue(), std::nullopt);
    schedule.Plan(7, [] {});

    EXPECT_EQ(schedule.NextDue(), 7);

    schedule.TakeNext()();
    EXPECT_EQ(schedule.NextDue(), std::nullopt);
}

TEST(DiceTest, NumbersOfASeedAreTheSameOnEveryMachine) {
    Dice dice(1);

    EXPECT_EQ(dice.Below(1'000'000), 311528u);
    EXPECT_EQ(dice.Below(1'000'000), 432462u);
    EXPECT_EQ(dice.Below(1'000'000), 659930u);
    EXPECT_EQ(dice.Draw({1000, 5000}), 1355);
}

TEST(DiceTest, NumbersStayBelowTheirBound) {
    Dice dice(3);
    std::set<uint64_t> seen;

    for (int i = 0; i < 1000; ++i) {
        seen.insert(dice.Below(6));
    }

    EXPECT_THAT(seen, ::testing::ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(DiceTest, BelowOneThereIsNothingButZero) {
    Dice dice(3);

    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(dice.Below(1), 0u);
    }
}

// The first number of a seed that is greater than half of all, so that only one round fits.
struct GreatFirstNumber {
    uint64_t seed = 0;
    uint64_t number = 0;
};

GreatFirstNumber FindGreatFirstNumber() {
    for (uint64_t seed = 1;; ++seed) {
        std::mt19937_64 engine(seed);
        const uint64_t number = engine();
        if (number > uint64_t{1} << 63) {
            return {seed, number};
        }
    }
}

TEST(DiceTest, ANumberOfTheLastIncompleteRoundIsThrownAgain) {
    const GreatFirstNumber first = FindGreatFirstNumber();
    std::mt19937_64 engine(first.seed);
    uint64_t next = engine();
    while (next >= first.number) {
        next = engine();
    }

    EXPECT_EQ(Dice(first.seed).Below(first.number), next);
}

TEST(DiceTest, TheLastNumberOfACompleteRoundCounts) {
    const GreatFirstNumber first = FindGreatFirstNumber();

    EXPECT_EQ(Dice(first.seed).Below(first.number + 1), first.number);
}

TEST(DiceTest, TheGreatestBoundIsNoTrouble) {
    const uint64_t greatest = std::numeric_limits<uint64_t>::max();

    EXPECT_LT(Dice(1).Below(greatest), greatest);
}

TEST(DiceTest, ADrawReachesBothEndsAndNothingElse) {
    Dice dice(5);
    std::set<Milliseconds> seen;

    for (int i = 0; i < 200; ++i) {
        seen.insert(dice.Draw({1000, 1002}));
    }

    EXPECT_THAT(seen, ::testing::ElementsAre(1000, 1001, 1002));
}

TEST(DiceTest, ASpanWithoutChanceThrowsNoDice) {
    Dice one(9);
    Dice other(9);

    EXPECT_EQ(one.Draw({500, 500}), 500);

    EXPECT_EQ(one.Below(1'000'000), other.Below(1'000'000));
}

} // namespace
} // namespace Tarvik::Vorn::Test
