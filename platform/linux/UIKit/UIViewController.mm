#include "UIKit/UIViewController+Control.h"

#include "StandInState.h"
#include "UIKit/ViewState.h"

#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct ViewControllerState {
    RetainPtr<UIView*> view;
    bool isViewless = false;
};

} // namespace

@implementation UIViewController

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ViewControllerState>(self, zone);
}

- (void)dealloc {
    DestroyState<ViewControllerState>(self);
    [super dealloc];
}

- (UIView*)view {
    // Made in advance: no object is made behind the lock. Two threads that ask first get the same view.
    RetainPtr<UIView*> view = AdoptNS([[UIView alloc] init]);
    RetainPtr<UIView*> answer;
    {
        const std::lock_guard lock(ViewMutex());
        ViewControllerState& state = StateOf<ViewControllerState>(self);
        if (!state.isViewless) {
            if (!state.view) {
                std::swap(state.view, view);
            }
            answer = state.view;
        }
    }
    return [[answer.get() retain] autorelease];
}

- (void)setView:(UIView*)view {
    RetainPtr<UIView*> former(view); // Released behind the lock.
    const std::lock_guard lock(ViewMutex());
    std::swap(StateOf<ViewControllerState>(self).view, former);
}

@end

namespace Tarvik::Vorn::Host {

void SetViewless(UIViewController* controller, bool viewless) {
    const std::lock_guard lock(ViewMutex());
    StateOf<ViewControllerState>(controller).isViewless = viewless;
}

} // namespace Tarvik::Vorn::Host
