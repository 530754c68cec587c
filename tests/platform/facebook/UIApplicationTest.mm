// UIApplication: the shared application, what the system tells of it, and the texts that its delegate looks up.
#include "FacebookPlatformTest.h"

#include "UIKit/UIApplication+Control.h"

// Counts the activations as long as it lives, and keeps what the last one said.
@interface VornActivationWatcher : NSObject {
@public
    int posts;
    id object; // Not retained.
    std::thread::id thread;
}
@end

@implementation VornActivationWatcher

- (instancetype)init {
    self = [super init];
    if (self != nil) {
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(applicationDidBecomeActive:)
                                                     name:UIApplicationDidBecomeActiveNotification
                                                   object:nil];
    }
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)applicationDidBecomeActive:(NSNotification*)notification {
    ++posts;
    object = [notification object];
    thread = std::this_thread::get_id();
}

@end

namespace Tarvik::Vorn::Test {
namespace {

class SharedApplication : public FacebookPlatformTest {};

TEST_F(SharedApplication, IsOneObject) {
    EXPECT_NE([UIApplication sharedApplication], nil);
    EXPECT_EQ([UIApplication sharedApplication], [UIApplication sharedApplication]);
}

TEST_F(SharedApplication, IsAResponder) {
    EXPECT_TRUE([[UIApplication sharedApplication] isKindOfClass:[UIResponder class]]);
}

TEST_F(SharedApplication, TellsItsObserversThatItBecameActive) {
    const RetainPtr<VornActivationWatcher*> watcher = AdoptNS([[VornActivationWatcher alloc] init]);

    Host::BecomeActive();

    EXPECT_EQ(watcher.get()->posts, 1);
    EXPECT_EQ(watcher.get()->object, [UIApplication sharedApplication]);
}

TEST_F(SharedApplication, BecomesActiveOnTheCallingThread) {
    const RetainPtr<VornActivationWatcher*> watcher = AdoptNS([[VornActivationWatcher alloc] init]);
    std::thread::id caller;

    OnAnotherThread([&caller] {
        caller = std::this_thread::get_id();
        Host::BecomeActive();
    });

    EXPECT_EQ(watcher.get()->thread, caller);
}

TEST_F(SharedApplication, NamesWhatItTellsAsUIKitDoes) {
    EXPECT_EQ(Text(UIApplicationDidBecomeActiveNotification), "UIApplicationDidBecomeActiveNotification");
    EXPECT_EQ(Text(UIApplicationLaunchOptionsURLKey), "UIApplicationLaunchOptionsURLKey");
    EXPECT_EQ(Text(UIApplicationOpenURLOptionsSourceApplicationKey), "UIApplicationOpenURLOptionsSourceApplicationKey");
    EXPECT_EQ(Text(UIApplicationOpenURLOptionsAnnotationKey), "UIApplicationOpenURLOptionsAnnotationKey");
}

} // namespace
} // namespace Tarvik::Vorn::Test
