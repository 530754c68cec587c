#include "UIKit/UIColor+Control.h"

#include "StandInState.h"
#include "UIKit/ColorText.h"
#include "UIKit/NumberText.h"

using namespace Tarvik::Vorn::Host;

@implementation UIColor

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ColorComponents>(self, zone);
}

+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
    UIColor* const color = [[[self alloc] init] autorelease];
    StateOf<ColorComponents>(color) = {red, green, blue, alpha};
    return color;
}

- (void)dealloc {
    DestroyState<ColorComponents>(self);
    [super dealloc];
}

@end

namespace Tarvik::Vorn::Host {

ColorComponents ComponentsOf(UIColor* color) {
    return StateOf<ColorComponents>(color);
}

std::string ColorText(UIColor* color) {
    if (color == nil) {
        return "nil";
    }
    const ColorComponents components = ComponentsOf(color);
    return NumberList({components.red, components.green, components.blue, components.alpha});
}

} // namespace Tarvik::Vorn::Host
