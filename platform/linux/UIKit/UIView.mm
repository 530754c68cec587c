#include "CallText.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "UIKit/ViewState.h"

#include <algorithm>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

using Subviews = std::vector<RetainPtr<UIView*>>;

Subviews::iterator Find(Subviews& subviews, UIView* view) {
    return std::find_if(subviews.begin(), subviews.end(), [view](const auto& each) { return each.get() == view; });
}

// REQUIRES: the caller holds ViewMutex() and a reference to `view`, which the superview gives up here: the result.
RetainPtr<UIView*> TakeFromSuperview(UIView* view) {
    UIView* const superview = std::exchange(StateOf<ViewState>(view).superview, nil);
    if (superview == nil) {
        return {};
    }
    Subviews& subviews = StateOf<ViewState>(superview).subviews;
    const auto place = Find(subviews, view);
    RetainPtr<UIView*> taken = std::move(*place);
    subviews.erase(place);
    return taken;
}

// REQUIRES: the caller holds ViewMutex().
bool StandsAbove(UIView* view, UIView* other) {
    while (other != nil && other != view) {
        other = StateOf<ViewState>(other).superview;
    }
    return other == view;
}

} // namespace

@implementation UIView

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ViewState>(self, zone);
}

- (instancetype)init {
    return [self initWithFrame:NSZeroRect];
}

- (instancetype)initWithFrame:(CGRect)frame {
    self = [super init];
    if (self != nil) {
        StateOf<ViewState>(self).frame = frame;
    }
    return self;
}

- (void)dealloc {
    Subviews orphans;
    {
        const std::lock_guard lock(ViewMutex());
        orphans = std::exchange(StateOf<ViewState>(self).subviews, {});
        for (const auto& orphan : orphans) {
            StateOf<ViewState>(orphan.get()).superview = nil;
        }
    }
    DestroyState<ViewState>(self);
    [super dealloc];
}

- (CGRect)frame {
    const std::lock_guard lock(ViewMutex());
    return StateOf<ViewState>(self).frame;
}

- (void)setFrame:(CGRect)frame {
    const std::lock_guard lock(ViewMutex());
    StateOf<ViewState>(self).frame = frame;
}

- (BOOL)isHidden {
    const std::lock_guard lock(ViewMutex());
    return StateOf<ViewState>(self).hidden;
}

- (void)setHidden:(BOOL)hidden {
    const std::lock_guard lock(ViewMutex());
    StateOf<ViewState>(self).hidden = hidden;
}

// The caller sees to it that the superview lives meanwhile, as on the device.
- (UIView*)superview {
    RetainPtr<UIView*> superview;
    {
        const std::lock_guard lock(ViewMutex());
        superview = RetainPtr(StateOf<ViewState>(self).superview);
    }
    return [[superview.get() retain] autorelease];
}

- (NSArray<UIView*>*)subviews {
    Subviews subviews;
    {
        const std::lock_guard lock(ViewMutex());
        subviews = StateOf<ViewState>(self).subviews;
    }
    NSMutableArray<UIView*>* const array = [NSMutableArray arrayWithCapacity:subviews.size()];
    for (const auto& subview : subviews) {
        [array addObject:subview.get()];
    }
    return array;
}

- (void)addSubview:(UIView*)view {
    PlatformCalls::Record("UIView", "addSubview:", ObjectText(view));
    if (view == nil) {
        return;
    }
    RetainPtr<UIView*> kept(view);
    RetainPtr<UIView*> taken; // Given up behind the lock.
    bool isCircle = false;
    {
        const std::lock_guard lock(ViewMutex());
        isCircle = StandsAbove(view, self);
        if (!isCircle) {
            taken = TakeFromSuperview(view);
            StateOf<ViewState>(self).subviews.push_back(std::move(kept));
            StateOf<ViewState>(view).superview = self;
        }
    }
    if (isCircle) {
        [NSException raise:NSInvalidArgumentException format:@"A view cannot be a subview of itself."];
    }
}

- (void)bringSubviewToFront:(UIView*)view {
    PlatformCalls::Record("UIView", "bringSubviewToFront:", ObjectText(view));
    const std::lock_guard lock(ViewMutex());
    Subviews& subviews = StateOf<ViewState>(self).subviews;
    const auto place = Find(subviews, view);
    if (place != subviews.end()) {
        std::rotate(place, place + 1, subviews.end());
    }
}

- (void)removeFromSuperview {
    RetainPtr<UIView*> taken;
    const std::lock_guard lock(ViewMutex());
    taken = TakeFromSuperview(self);
}

@end

namespace Tarvik::Vorn::Host {

std::mutex& ViewMutex() {
    static auto& mutex = *new std::mutex; // Never destroyed: views may outlive main.
    return mutex;
}

} // namespace Tarvik::Vorn::Host
