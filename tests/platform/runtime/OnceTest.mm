// dispatch_once runs its block once for a token, and everyone sees what it wrote. The tokens live on the stack here, so
// that the tests can be repeated in one process; programs give them static duration.

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

void RunRecursively(dispatch_once_t* token) {
    dispatch_once(token, ^{
        RunRecursively(token);
    });
}

TEST_F(HostOnce, RunsTheBlockOnceForEachToken) {
    dispatch_once_t firstToken = 0;
    dispatch_once_t secondToken = 0;
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
    dispatch_once_t token = 0;
    int runs = 0;

    dispatch_once_f(&token, &runs, Increment);
    dispatch_once_f(&token, &runs, Increment);

    EXPECT_EQ(runs, 1);
}

TEST_F(HostOnce, ReleasesNothingThatTheBlockCaptured) {
    dispatch_once_t token = 0;
    HostWitness* witness = [[HostWitness alloc] init];

    dispatch_once(&token, ^{
        (void)[witness self];
    });

    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostOnce, ABlockMayUseAnotherToken) {
    dispatch_once_t outerToken = 0;
    dispatch_once_t innerToken = 0;
    dispatch_once_t* const inner = &innerToken;
    __block int runs = 0;

    dispatch_once(&outerToken, ^{
        dispatch_once(inner, ^{
            runs += 1;
        });
        runs += 10;
    });

    EXPECT_EQ(runs, 11);
}

TEST_F(HostOnce, ThreadsThatArriveMeanwhileWaitAndSeeTheResult) {
    constexpr int kThreads = 8;
    dispatch_once_t token = 0;
    int value = 0; // Plain on purpose: the token alone orders the accesses.
    std::latch start(kThreads);
    std::vector<int> seen(kThreads, 0);

    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (size_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([&start, &seen, i, once = &token, shared = &value] {
            start.arrive_and_wait();
            dispatch_once(once, ^{
                for (int step = 0; step < 1000; ++step) {
                    ++*shared;
                    std::this_thread::yield();
                }
            });
            seen[i] = *shared;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(seen, std::vector<int>(kThreads, 1000));
}

TEST_F(HostOnce, ASlowBlockHoldsUpItsOwnTokenOnly) {
    dispatch_once_t slowToken = 0;
    dispatch_once_t otherToken = 0;
    std::latch slowBegan(1);
    std::latch otherDone(1);
    std::latch* began = &slowBegan;
    std::latch* done = &otherDone;
    std::thread slow([began, done, token = &slowToken] {
        dispatch_once(token, ^{
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
    dispatch_once_t token = 0;

    EXPECT_DEATH(RunRecursively(&token), "dispatch_once was called again with the same token");
}

TEST_F(HostOnce, AnExceptionThatLeavesTheBlockEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    dispatch_once_t token = 0;

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
