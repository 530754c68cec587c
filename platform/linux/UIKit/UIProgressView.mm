#include "CallText.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "UIKit/ColorText.h"
#include "UIKit/NumberText.h"
#include "UIKit/ViewState.h"

#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "UIProgressView";
const CGRect kFirstFrame = NSMakeRect(0, 0, 150, 4); // Since iOS 14.

struct ProgressViewState : ViewState {
    UIProgressViewStyle style = UIProgressViewStyleDefault;
    float progress = 0;
    RetainPtr<UIColor*> progressTintColor;
    RetainPtr<UIColor*> trackTintColor;
};

UIColor* ReadColor(const RetainPtr<UIColor*>& color) {
    RetainPtr<UIColor*> copy;
    {
        const std::lock_guard lock(ViewMutex());
        copy = color;
    }
    return [[copy.get() retain] autorelease];
}

void WriteColor(RetainPtr<UIColor*>& color, UIColor* value) {
    RetainPtr<UIColor*> former(value); // Released behind the lock.
    const std::lock_guard lock(ViewMutex());
    std::swap(color, former);
}

} // namespace

@implementation UIProgressView

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ProgressViewState>(self, zone);
}

- (instancetype)initWithProgressViewStyle:(UIProgressViewStyle)style {
    PlatformCalls::RecordInitializer(self, kClassName, "initWithProgressViewStyle:", std::to_string(style));
    self = [self initWithFrame:kFirstFrame];
    if (self != nil) {
        StateOf<ProgressViewState>(self).style = style;
    }
    return self;
}

- (void)setFrame:(CGRect)frame {
    PlatformCalls::Record(
        kClassName, "setFrame:", NumberList({frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}));
    [super setFrame:frame];
}

- (void)setHidden:(BOOL)hidden {
    PlatformCalls::Record(kClassName, "setHidden:", hidden ? "YES" : "NO");
    [super setHidden:hidden];
}

- (void)removeFromSuperview {
    PlatformCalls::Record(kClassName, "removeFromSuperview");
    [super removeFromSuperview];
}

- (UIProgressViewStyle)progressViewStyle {
    const std::lock_guard lock(ViewMutex());
    return StateOf<ProgressViewState>(self).style;
}

- (void)setProgressViewStyle:(UIProgressViewStyle)style {
    PlatformCalls::Record(kClassName, "setProgressViewStyle:", std::to_string(style));
    const std::lock_guard lock(ViewMutex());
    StateOf<ProgressViewState>(self).style = style;
}

- (float)progress {
    const std::lock_guard lock(ViewMutex());
    return StateOf<ProgressViewState>(self).progress;
}

// Not brought into 0 to 1, unlike on the device: a test sees what the caller passed.
- (void)setProgress:(float)progress {
    PlatformCalls::Record(kClassName, "setProgress:", NumberText(static_cast<double>(progress)));
    const std::lock_guard lock(ViewMutex());
    StateOf<ProgressViewState>(self).progress = progress;
}

- (UIColor*)progressTintColor {
    return ReadColor(StateOf<ProgressViewState>(self).progressTintColor);
}

- (void)setProgressTintColor:(UIColor*)color {
    PlatformCalls::Record(kClassName, "setProgressTintColor:", ColorText(color));
    WriteColor(StateOf<ProgressViewState>(self).progressTintColor, color);
}

- (UIColor*)trackTintColor {
    return ReadColor(StateOf<ProgressViewState>(self).trackTintColor);
}

- (void)setTrackTintColor:(UIColor*)color {
    PlatformCalls::Record(kClassName, "setTrackTintColor:", ColorText(color));
    WriteColor(StateOf<ProgressViewState>(self).trackTintColor, color);
}

@end
