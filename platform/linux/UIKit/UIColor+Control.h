// What a test reads of a UIColor. Any thread.
#pragma once

#include "HostExport.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

struct ColorComponents {
    CGFloat red = 0;
    CGFloat green = 0;
    CGFloat blue = 0;
    CGFloat alpha = 0;

    bool operator==(const ColorComponents&) const = default;
};

// As the colour was given them, beyond 0 and 1 too. REQUIRES: `color` is not nil.
VORN_HOST_EXPORT ColorComponents ComponentsOf(UIColor* color);

} // namespace Tarvik::Vorn::Host
