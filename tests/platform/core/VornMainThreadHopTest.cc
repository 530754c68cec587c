// The hop to the main thread: called once, later, there, with the integer 0 and the argument, in order.

#include "VornServices.h"

#include "MainQueue+Control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <latch>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;

struct Call {
    int number;
    int integer;
    std::thread::id thread;
};

// What a hop is given: its number, and where it notes that it was called.
struct Ticket {
    int number;
    std::vector<Call>* calls;
};

void Note(int integer, void* opaque) {
    const auto* const ticket = static_cast<Ticket*>(opaque);
    ticket->calls->push_back({ticket->number, integer, std::this_thread::get_id()});
}

std::vector<int> NumbersOf(const std::vector<Call>& calls) {
    std::vector<int> numbers;
    numbers.reserve(calls.size());
    for (const Call& call : calls) {
        numbers.push_back(call.number);
    }
    return numbers;
}

TEST(MainThreadHop, CallsLaterWithZeroAndTheArgument) {
    std::vector<Call> calls;
    Ticket ticket{1, &calls};

    VornInnerObserverHolderDispatch(&Note, &ticket);
    const size_t callsAtOnce = calls.size();
    Host::DrainMainQueue();

    EXPECT_EQ(callsAtOnce, 0u);
    ASSERT_THAT(NumbersOf(calls), ElementsAre(1));
    EXPECT_EQ(calls[0].integer, 0);
}

TEST(MainThreadHop, CallsOnce) {
    std::vector<Call> calls;
    Ticket ticket{1, &calls};

    VornInnerObserverHolderDispatch(&Note, &ticket);
    Host::DrainMainQueue();
    Host::DrainMainQueue();

    EXPECT_EQ(calls.size(), 1u);
}

TEST(MainThreadHop, CallsInTheOrderOfTheHops) {
    std::vector<Call> calls;
    Ticket first{1, &calls};
    Ticket second{2, &calls};

    VornInnerObserverHolderDispatch(&Note, &first);
    VornInnerObserverHolderDispatch(&Note, &second);
    Host::DrainMainQueue();

    EXPECT_THAT(NumbersOf(calls), ElementsAre(1, 2));
}

TEST(MainThreadHop, CallsOnTheMainThreadFromEveryThread) {
    constexpr int kThreads = 4;
    constexpr int kHops = 200;
    std::vector<Call> calls; // Unlocked: only the main thread may touch it.
    std::vector<std::vector<Ticket>> tickets(kThreads, std::vector<Ticket>(kHops));
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);

    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            for (int hop = 0; hop < kHops; ++hop) {
                Ticket& ticket = tickets[static_cast<size_t>(i)][static_cast<size_t>(hop)];
                ticket = {i, &calls};
                VornInnerObserverHolderDispatch(&Note, &ticket);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    Host::DrainMainQueueUntilEmpty();

    std::vector<int> counts(kThreads);
    for (const Call& call : calls) {
        counts[static_cast<size_t>(call.number)] += 1;
        EXPECT_EQ(call.thread, std::this_thread::get_id());
    }
    EXPECT_THAT(counts, ElementsAre(kHops, kHops, kHops, kHops));
}

TEST(MainThreadHop, NullIsAnArgumentLikeAnyOther) {
    static bool sWasNull;
    sWasNull = false;

    VornInnerObserverHolderDispatch([](int, void* arg) { sWasNull = arg == nullptr; }, nullptr);
    Host::DrainMainQueue();

    EXPECT_TRUE(sWasNull);
}

} // namespace
} // namespace Tarvik::Vorn::Test
