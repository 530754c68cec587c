// The main queue runs what is posted from any thread on the main thread, first in, first out: in the run loop as in an
// app, or drained directly by a test.

#include "MainQueue+Control.h"
#include "PoolTest.h"
#include "Witness.h"

#include <dispatch/dispatch.h>

#include <gmock/gmock.h>

#include <latch>
#include <semaphore>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace Tarvik::Vorn::Host;
using Tarvik::Vorn::Test::PoolTest;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Notes, from inside the run loop, that the run loop ran.
@interface HostLoopObserver : NSObject {
    int _calls;
}
- (void)noteCall;
- (int)calls;
@end

@implementation HostLoopObserver
- (void)noteCall {
    ++_calls;
}
- (int)calls {
    return _calls;
}
@end

namespace {

class HostMainQueue : public PoolTest {
protected:
    void SetUp() override { ASSERT_EQ(MainQueueDepth(), 0U); }

    void TearDown() override {
        DiscardMainQueue();
        EXPECT_EQ([HostWitness living], 0);
    }

    void Post(int number) {
        std::vector<int>* ran = &mRan;
        dispatch_async(dispatch_get_main_queue(), ^{
            ran->push_back(number);
        });
    }

    std::vector<int> mRan;
};

class HostMainQueueDeath : public HostMainQueue {
protected:
    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        HostMainQueue::SetUp();
    }
};

void PushContext(void* context) {
    static_cast<std::vector<int>*>(context)->push_back(-1);
}

TEST_F(HostMainQueue, PostingOnTheMainThreadDoesNotRunAtOnce) {
    Post(1);

    EXPECT_THAT(mRan, IsEmpty());
    EXPECT_EQ(MainQueueDepth(), 1U);
}

TEST_F(HostMainQueue, DrainingRunsInTheOrderOfPosting) {
    Post(1);
    Post(2);
    dispatch_async_f(dispatch_get_main_queue(), &mRan, PushContext);
    Post(3);

    const size_t count = DrainMainQueue();

    EXPECT_EQ(count, 4U);
    EXPECT_THAT(mRan, ElementsAre(1, 2, -1, 3));
    EXPECT_EQ(MainQueueDepth(), 0U);
}

TEST_F(HostMainQueue, DrainingAnEmptyQueueRunsNothing) {
    const size_t once = DrainMainQueue();
    const size_t untilEmpty = DrainMainQueueUntilEmpty();

    EXPECT_EQ(once, 0U);
    EXPECT_EQ(untilEmpty, 0U);
}

TEST_F(HostMainQueue, WhatIsPostedWhileDrainingWaitsForTheNextPass) {
    std::vector<int>* ran = &mRan;
    dispatch_async(dispatch_get_main_queue(), ^{
        ran->push_back(1);
        dispatch_async(dispatch_get_main_queue(), ^{
            ran->push_back(3);
        });
    });
    Post(2);

    const size_t firstPass = DrainMainQueue();
    const size_t waiting = MainQueueDepth();
    const size_t secondPass = DrainMainQueue();

    EXPECT_EQ(firstPass, 2U);
    EXPECT_EQ(waiting, 1U);
    EXPECT_EQ(secondPass, 1U);
    EXPECT_THAT(mRan, ElementsAre(1, 2, 3));
}

TEST_F(HostMainQueue, DrainingUntilEmptyFollowsWhatIsPostedMeanwhile) {
    std::vector<int>* ran = &mRan;
    dispatch_async(dispatch_get_main_queue(), ^{
        dispatch_async(dispatch_get_main_queue(), ^{
            dispatch_async(dispatch_get_main_queue(), ^{
                ran->push_back(3);
            });
        });
    });

    const size_t count = DrainMainQueueUntilEmpty();

    EXPECT_EQ(count, 3U);
    EXPECT_THAT(mRan, ElementsAre(3));
}

TEST_F(HostMainQueue, DrainingInsideQueuedWorkDoesNothing) {
    std::vector<int>* ran = &mRan;
    dispatch_async(dispatch_get_main_queue(), ^{
        Post(3);
        ran->push_back(static_cast<int>(DrainMainQueue() + DrainMainQueueUntilEmpty()));
        ran->push_back(1);
    });
    Post(2);

    DrainMainQueueUntilEmpty();

    EXPECT_THAT(mRan, ElementsAre(0, 1, 2, 3));
}

TEST_F(HostMainQueue, EachPieceOfWorkHasItsOwnAutoreleasePool) {
    std::vector<int>* ran = &mRan;
    for (int i = 0; i < 2; ++i) {
        dispatch_async(dispatch_get_main_queue(), ^{
            ran->push_back([HostWitness living]);
            [[[HostWitness alloc] init] autorelease];
        });
    }

    DrainMainQueue();

    EXPECT_THAT(mRan, ElementsAre(0, 0));
    EXPECT_EQ([HostWitness living], 0);
}

TEST_F(HostMainQueue, ABlockIsKeptUntilItHasRunAndReleasedThen) {
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_async(dispatch_get_main_queue(), ^{
        (void)[witness self];
    });
    [witness release];
    EXPECT_EQ([HostWitness living], 1);

    DrainMainQueue();

    EXPECT_EQ([HostWitness living], 0);
}

TEST_F(HostMainQueue, DiscardingReleasesBlocksWithoutRunningThemAndLeavesContextsAlone) {
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_async(dispatch_get_main_queue(), ^{
        (void)[witness self];
    });
    dispatch_async_f(dispatch_get_main_queue(), &mRan, PushContext);
    Post(1);

    const size_t count = DiscardMainQueue();

    EXPECT_EQ(count, 3U);
    EXPECT_EQ(MainQueueDepth(), 0U);
    EXPECT_EQ(DrainMainQueue(), 0U);
    EXPECT_THAT(mRan, IsEmpty());
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostMainQueue, ThreadsPostAndEachKeepsItsOrder) {
    constexpr int kThreads = 4;
    constexpr int kPosts = 500;
    std::vector<int>* ran = &mRan;
    std::latch start(kThreads);

    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&start, ran, thread] {
            start.arrive_and_wait();
            for (int post = 0; post < kPosts; ++post) {
                dispatch_async(dispatch_get_main_queue(), ^{
                    ran->push_back([NSThread isMainThread] ? thread * kPosts + post : -1);
                });
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(MainQueueDepth(), static_cast<size_t>(kThreads * kPosts));
    DrainMainQueue();

    std::vector<int> next(kThreads, 0);
    ASSERT_EQ(mRan.size(), static_cast<size_t>(kThreads * kPosts));
    for (const int value : mRan) {
        ASSERT_GE(value, 0);
        const auto thread = static_cast<size_t>(value / kPosts);
        EXPECT_EQ(value % kPosts, next[thread]++);
    }
}

TEST_F(HostMainQueue, RunningTheLoopRunsTheQueueInOrderOnTheMainThread) {
    std::vector<int>* ran = &mRan;
    Post(1);
    std::thread([ran] {
        dispatch_async(dispatch_get_main_queue(), ^{
            ran->push_back([NSThread isMainThread] ? 2 : -2);
        });
    }).join();
    Post(3);

    RunMainLoopUntilIdle();

    EXPECT_THAT(mRan, ElementsAre(1, 2, 3));
    EXPECT_EQ(MainQueueDepth(), 0U);
}

TEST_F(HostMainQueue, RunningTheLoopRunsTheRunLoopAndDrainingDoesNot) {
    HostLoopObserver* observer = [[[HostLoopObserver alloc] init] autorelease];
    [[NSRunLoop currentRunLoop] performSelector:@selector(noteCall)
                                         target:observer
                                       argument:nil
                                          order:0
                                          modes:@[ NSDefaultRunLoopMode ]];
    Post(1);
    DrainMainQueue();
    EXPECT_EQ([observer calls], 0);

    Post(2);
    RunMainLoopUntilIdle();

    EXPECT_EQ([observer calls], 1);
    EXPECT_THAT(mRan, ElementsAre(1, 2));
}

TEST_F(HostMainQueue, RunningTheLoopFollowsWhatQueuedWorkPosts) {
    std::vector<int>* ran = &mRan;
    dispatch_async(dispatch_get_main_queue(), ^{
        ran->push_back(1);
        dispatch_async(dispatch_get_main_queue(), ^{
            ran->push_back(2);
        });
    });

    RunMainLoopUntilIdle();

    EXPECT_THAT(mRan, ElementsAre(1, 2));
}

TEST_F(HostMainQueue, RunningTheLoopWithNothingQueuedReturnsAtOnce) {
    RunMainLoopUntilIdle();

    EXPECT_EQ(MainQueueDepth(), 0U);
}

TEST_F(HostMainQueue, APostFromAThreadWakesTheWaitingRunLoop) {
    bool done = false; // Main thread only.
    std::thread poster([flag = &done] {
        dispatch_async(dispatch_get_main_queue(), ^{
            *flag = true;
        });
    });

    while (!done) {
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
    }

    poster.join();
    EXPECT_EQ(MainQueueDepth(), 0U);
}

TEST_F(HostMainQueue, AnIdleRunLoopSleepsUntilTheNextPostAndReturnsAfterIt) {
    constexpr int kRounds = 50;
    std::vector<int>* ran = &mRan;
    std::binary_semaphore mayPost(0);
    std::thread poster([&mayPost, ran] {
        for (int round = 0; round < kRounds; ++round) {
            mayPost.acquire();
            dispatch_async(dispatch_get_main_queue(), ^{
                ran->push_back(round);
            });
        }
    });

    int early = 0;
    for (size_t round = 1; round <= kRounds; ++round) {
        mayPost.release();
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
        early += mRan.size() < round ? 1 : 0;
        while (mRan.size() < round) {
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
        }
    }
    poster.join();

    EXPECT_EQ(early, 0);
}

TEST_F(HostMainQueue, ARunLoopNestedInQueuedWorkDoesNotRunTheQueue) {
    std::vector<int>* ran = &mRan;
    dispatch_async(dispatch_get_main_queue(), ^{
        Post(3);
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantPast]];
        ran->push_back(1);
    });
    Post(2);

    RunMainLoopUntilIdle();

    EXPECT_THAT(mRan, ElementsAre(1, 2, 3));
}

TEST_F(HostMainQueue, ACppExceptionComesOutOfDrainingAndTheRestStaysQueued) {
    HostWitness* witness = [[HostWitness alloc] init];
    Post(1);
    dispatch_async(dispatch_get_main_queue(), ^{
        Post(4);
        throw std::runtime_error([witness retainCount] == 2 ? "expected" : "wrong count");
    });
    Post(2);
    Post(3);

    EXPECT_THROW(DrainMainQueue(), std::runtime_error);

    EXPECT_THAT(mRan, ElementsAre(1));
    EXPECT_EQ(MainQueueDepth(), 3U);
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
    RunMainLoopUntilIdle();
    EXPECT_THAT(mRan, ElementsAre(1, 2, 3, 4));
}

TEST_F(HostMainQueue, AnObjectiveCExceptionComesOutOfDrainingAndTheRestStaysQueued) {
    NSString* reason = nil;
    dispatch_async(dispatch_get_main_queue(), ^{
        [NSException raise:NSInvalidArgumentException format:@"expected"];
    });
    Post(2);

    @try {
        DrainMainQueue();
    } @catch (NSException* exception) {
        reason = [exception reason];
    }

    EXPECT_TRUE([reason isEqualToString:@"expected"]);
    EXPECT_EQ(DrainMainQueue(), 1U);
    EXPECT_THAT(mRan, ElementsAre(2));
}

TEST_F(HostMainQueueDeath, AnObjectiveCExceptionInTheRunLoopEndsTheProcess) {
    dispatch_async(dispatch_get_main_queue(), ^{
        [NSException raise:NSGenericException format:@"from a block"];
    });

    EXPECT_EXIT(RunMainLoopUntilIdle(), ::testing::KilledBySignal(SIGABRT),
                "terminating due to uncaught exception 'NSGenericException', reason: 'from a block'");
}

TEST_F(HostMainQueueDeath, AThrownObjectThatIsNoExceptionInTheRunLoopEndsTheProcess) {
    dispatch_async(dispatch_get_main_queue(), ^{
        @throw @"just a text";
    });

    EXPECT_EXIT(RunMainLoopUntilIdle(), ::testing::KilledBySignal(SIGABRT),
                "terminating due to uncaught exception of class .*String: just a text");
}

TEST_F(HostMainQueueDeath, ACppExceptionInTheRunLoopEndsTheProcess) {
    dispatch_async(dispatch_get_main_queue(), ^{
        throw std::runtime_error("from a block");
    });

    EXPECT_EXIT(RunMainLoopUntilIdle(), ::testing::KilledBySignal(SIGABRT), "std::runtime_error: from a block");
}

TEST_F(HostMainQueueDeath, DrainingOnAnotherThreadEndsTheProcess) {
    EXPECT_DEATH(std::thread([] { DrainMainQueue(); }).join(), "DrainMainQueue is for the main thread only");
    EXPECT_DEATH(std::thread([] { RunMainLoopUntilIdle(); }).join(),
                 "RunMainLoopUntilIdle is for the main thread only");
    EXPECT_DEATH(std::thread([] { DiscardMainQueue(); }).join(), "DiscardMainQueue is for the main thread only");
}

TEST_F(HostMainQueueDeath, RunningTheLoopInsideQueuedWorkEndsTheProcess) {
    dispatch_async(dispatch_get_main_queue(), ^{
        RunMainLoopUntilIdle();
    });

    EXPECT_DEATH(DrainMainQueue(), "RunMainLoopUntilIdle was called by queued work");
}

TEST_F(HostMainQueueDeath, PostingNothingOrToAnotherQueueEndsTheProcess) {
    const dispatch_block_t nothing = nullptr;

    EXPECT_DEATH(dispatch_async(dispatch_get_main_queue(), nothing), "the work to post is NULL");
    EXPECT_DEATH(dispatch_async_f(dispatch_get_main_queue(), nullptr, nullptr), "the work to post is NULL");
    EXPECT_DEATH(dispatch_async_f(nullptr, nullptr, PushContext), "only the main queue exists");
}

} // namespace
