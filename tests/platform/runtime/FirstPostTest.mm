// The first thing that happens in this program is that another thread posts to the main thread. A program of its own:
// any earlier use of the run loop would hide what is tested.

#include "MainQueue+Control.h"
#include "PoolTest.h"

#include <dispatch/dispatch.h>

#include <thread>

using namespace Tarvik::Vorn::Host;

// Tells on which thread it was performed.
@interface HostPerformer : NSObject {
    int _onMainThread;
    int _elsewhere;
}
- (void)perform;
- (int)onMainThread;
- (int)elsewhere;
@end

@implementation HostPerformer
- (void)perform {
    ++([NSThread isMainThread] ? _onMainThread : _elsewhere);
}
- (int)onMainThread {
    return _onMainThread;
}
- (int)elsewhere {
    return _elsewhere;
}
@end

namespace {

class HostFirstPost : public Tarvik::Vorn::Test::PoolTest {};

TEST_F(HostFirstPost, FromAThreadWaitsForTheMainThreadsRunLoop) {
    HostPerformer* posted = [[[HostPerformer alloc] init] autorelease];
    HostPerformer* performed = [[[HostPerformer alloc] init] autorelease];

    std::thread([=] {
        @autoreleasepool {
            dispatch_async(dispatch_get_main_queue(), ^{
                [posted perform];
            });
            [performed performSelectorOnMainThread:@selector(perform) withObject:nil waitUntilDone:NO];
        }
    }).join();
    EXPECT_EQ(MainQueueDepth(), 1U);
    EXPECT_EQ([performed onMainThread] + [performed elsewhere], 0);
    while ([posted onMainThread] == 0 || [performed onMainThread] == 0) {
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
    }

    EXPECT_EQ([posted elsewhere] + [performed elsewhere], 0);
}

} // namespace
