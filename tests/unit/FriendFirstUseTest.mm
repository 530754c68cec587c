// The friend plugin before anything else has used it. A program of its own: the instance lives for the process.

#include "FriendPlugin.h"
#include "PluginTest.h"

#import <objc/runtime.h>

#include <latch>
#include <set>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

class FriendFirstUseTest : public PluginTest {};

TEST_F(FriendFirstUseTest, ManyThreadsGetOneInstanceThatHasNothingParked) {
    constexpr int kThreads = 8;
    const Class cls = objc_lookUpClass("VornFriendFacebook");
    std::vector<id> seen(kThreads);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);

    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            @autoreleasepool {
                start.arrive_and_wait();
                seen[static_cast<size_t>(i)] = i % 2 == 0 ? [cls sharedInstance] : [[[cls alloc] init] autorelease];
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(std::set<id>(seen.begin(), seen.end()).size(), 1u);
    const FriendPlugin plugin = static_cast<FriendPlugin>(seen[0]);
    ASSERT_NE(plugin, nil);
    EXPECT_EQ([plugin methodNameID], -1);
    EXPECT_TRUE([[plugin seqID] isEqual:@""]);
    EXPECT_EQ([plugin observerID], 0u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
