#include "UIKit/UIApplication+Control.h"

VORN_HOST_EXPORT NSNotificationName const UIApplicationDidBecomeActiveNotification =
    @"UIApplicationDidBecomeActiveNotification";
VORN_HOST_EXPORT UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsURLKey =
    @"UIApplicationLaunchOptionsURLKey";
VORN_HOST_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsSourceApplicationKey =
    @"UIApplicationOpenURLOptionsSourceApplicationKey";
VORN_HOST_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsAnnotationKey =
    @"UIApplicationOpenURLOptionsAnnotationKey";

@implementation UIApplication

+ (UIApplication*)sharedApplication {
    static UIApplication* const shared = [[UIApplication alloc] init];
    return shared;
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
