// For the stand-ins' own use.
#pragma once

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

// Autoreleased; nil for a source or an annotation that there is not.
UISceneOpenURLOptions* MakeSceneOpenURLOptions(NSString* sourceApplication, id annotation);

} // namespace Tarvik::Vorn::Host
