// dispatch_once runs its block once in the life of the process, and everyone sees what it wrote.

#include "PoolTest.h"
#include "Witness.h"

#include <dispatch/dispatch.h>

#include <latch>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

class HostOnce : public Tarvik::Vorn::Test::PoolTest {};

void Increment(void* context) {
    ++*static_cast<int*>(context);
}

// The tokens have static duration, as the interface demands.
dispatch_once_t sRecursiveToken;

void RunRecursively() {
    dispatch_once(&sRecursiveToken, ^{
        RunRecursively();
    });
}

TEST_F(HostOnce, RunsTheBlockOnceForEachToken) {
    static dispatch_once_t firstToken;
    static dispatch_once_t secondToken;
    __block int runs = 0;

    for (int i = 0; i < 3; ++i) {
        dispatch_once(&firstToken, ^{
            runs += 1;
        });
        dispatch_once(&secondToken, ^{
            runs += 10;
        });
    }

    EXPECT_EQ(runs, 11);
}

TEST_F(HostOnce, RunsAFunctionOnceWithItsContext) {
    static dispatch_once_t token;
    int runs = 0;

    dispatch_once_f(&token, &runs, Increment);
    dispatch_once_f(&token, &runs, Increment);

    EXPECT_EQ(runs, 1);
}

TEST_F(HostOnce, ReleasesNothingThatTheBlockCaptured) {
    static dispatch_once_t token;
    HostWitness* witness = [[HostWitness alloc] init];

    dispatch_once(&token, ^{
        (void)[witness self];
    });

    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostOnce, ABlockMayUseAnotherToken) {
    static dispatch_once_t outerToken;
    static dispatch_once_t innerToken;
    __block int runs = 0;

    dispatch_once(&outerToken, ^{
        dispatch_once(&innerToken, ^{
            runs += 1;
        });
        runs += 10;
    });

    EXPECT_EQ(runs, 11);
}

TEST_F(HostOnce, ThreadsThatArriveMeanwhileWaitAndSeeTheResult) {
    constexpr int kThreads = 8;
    static dispatch_once_t token;
    static int value; // Plain on purpose: the token alone orders the accesses.
    std::latch start(kThreads);
    std::vector<int> seen(kThreads, 0);

    std::vector<std::thread> threads;
    for (size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&start, &seen, i] {
            start.arrive_and_wait();
            dispatch_once(&token, ^{
                for (int step = 0; step < 1000; ++step) {
                    ++value;
                    std::this_thread::yield();
                }
            });
            seen[i] = value;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(seen, std::vector<int>(kThreads, 1000));
}

TEST_F(HostOnce, ASlowBlockHoldsUpItsOwnTokenOnly) {
    static dispatch_once_t slowToken;
    static dispatch_once_t otherToken;
    std::latch slowBegan(1);
    std::latch otherDone(1);
    std::latch* began = &slowBegan;
    std::latch* done = &otherDone;
    std::thread slow([=] {
        dispatch_once(&slowToken, ^{
            began->count_down();
            done->wait();
        });
    });
    slowBegan.wait();
    __block int runs = 0;

    dispatch_once(&otherToken, ^{
        ++runs;
    });
    otherDone.count_down();
    slow.join();

    EXPECT_EQ(runs, 1);
}

TEST_F(HostOnce, ComingBackToTheSameTokenEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_DEATH(RunRecursively(), "dispatch_once was called again with the same token");
}

TEST_F(HostOnce, AnExceptionThatLeavesTheBlockEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    static dispatch_once_t token;

    EXPECT_DEATH(dispatch_once(&token,
                               ^{
                                   throw std::runtime_error("half done");
                               }),
                 "std::runtime_error: half done");
    EXPECT_DEATH(dispatch_once(&token,
                               ^{
                                   [NSException raise:NSGenericException format:@"half done"];
                               }),
                 "uncaught exception 'NSGenericException', reason: 'half done'");
}

} // namespace
