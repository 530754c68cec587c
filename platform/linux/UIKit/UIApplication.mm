#include "UIKit/UIApplication+Control.h"

VORN_HOST_EXPORT NSNotificationName const UIApplicationDidBecomeActiveNotification =
    @"UIApplicationDidBecomeActiveNotification";
VORN_HOST_EXPORT UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsURLKey =
    @"UIApplicationLaunchOptionsURLKey";
VORN_HOST_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsSourceApplicationKey =
    @"UIApplicationOpenURLOptionsSourceApplicationKey";
VORN_HOST_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsAnnotationKey =
    @"UIApplicationOpenURLOptionsAnnotationKey";

namespace {

id<UIApplicationDelegate> sDelegate = nil; // Of the one application; not retained. Main thread.

} // namespace

@implementation UIApplication

+ (UIApplication*)sharedApplication {
    static UIApplication* const shared = [[UIApplication alloc] init];
    return shared;
}

- (id<UIApplicationDelegate>)delegate {
    return sDelegate;
}

- (void)setDelegate:(id<UIApplicationDelegate>)delegate {
    sDelegate = delegate;
}

@end

namespace Tarvik::Vorn::Host {

void BecomeActive() {
    @autoreleasepool {
        [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidBecomeActiveNotification
                                                            object:[UIApplication sharedApplication]];
    }
}

} // namespace Tarvik::Vorn::Host
