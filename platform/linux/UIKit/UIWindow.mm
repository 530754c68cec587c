#include "StandInState.h"
#include "UIKit/ViewState.h"

#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct WindowState : ViewState {
    RetainPtr<UIViewController*> rootViewController;
};

} // namespace

@implementation UIWindow

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<WindowState>(self, zone);
}

- (UIViewController*)rootViewController {
    RetainPtr<UIViewController*> controller;
    {
        const std::lock_guard lock(ViewMutex());
        controller = StateOf<WindowState>(self).rootViewController;
    }
    return [[controller.get() retain] autorelease];
}

- (void)setRootViewController:(UIViewController*)rootViewController {
    RetainPtr<UIViewController*> former(rootViewController); // Released behind the lock.
    const std::lock_guard lock(ViewMutex());
    std::swap(StateOf<WindowState>(self).rootViewController, former);
}

@end
