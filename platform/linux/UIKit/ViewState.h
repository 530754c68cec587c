// What stands behind a view. For the stand-ins' own use.
#pragma once

#include "VornRetainPtr.h"

#import <UIKit/UIKit.h>

#include <mutex>
#include <vector>

namespace Tarvik::Vorn::Host {

// Guards the states of all views and view controllers: an SDK may touch a view on a thread of its own, and moving a
// view changes three states at once. Never held while an object is released or its methods are called.
std::mutex& ViewMutex();

struct ViewState {
    ViewState() = default;
    virtual ~ViewState() = default;
    ViewState(const ViewState&) = delete;
    ViewState& operator=(const ViewState&) = delete;

    CGRect frame = NSZeroRect;
    BOOL hidden = NO;
    UIView* superview = nil; // Not retained: it retains this view, and parts from it before it goes.
    std::vector<RetainPtr<UIView*>> subviews;
};

} // namespace Tarvik::Vorn::Host
