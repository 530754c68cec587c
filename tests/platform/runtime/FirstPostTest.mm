// The first thing that happens in this program is a post from another thread. A program of its own: any earlier use of
// the run loop would hide what is tested.

#include "MainQueue+Control.h"
#include "PoolTest.h"

#include <dispatch/dispatch.h>

#include <thread>

using namespace Tarvik::Vorn::Host;

namespace {

class HostFirstPost : public Tarvik::Vorn::Test::PoolTest {};

TEST_F(HostFirstPost, FromAThreadWaitsForTheMainThreadsRunLoop) {
    bool ranOnMainThread = false;

    std::thread([result = &ranOnMainThread] {
        dispatch_async(dispatch_get_main_queue(), ^{
            *result = [NSThread isMainThread];
        });
    }).join();

    EXPECT_EQ(MainQueueDepth(), 1U);
    RunMainLoopUntilIdle();
    EXPECT_TRUE(ranOnMainThread);
}

} // namespace
