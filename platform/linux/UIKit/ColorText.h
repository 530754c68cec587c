// For the stand-ins' own use.
#pragma once

#import <UIKit/UIKit.h>

#include <string>

namespace Tarvik::Vorn::Host {

// "[red,green,blue,alpha]", or nil.
std::string ColorText(UIColor* color);

} // namespace Tarvik::Vorn::Host
