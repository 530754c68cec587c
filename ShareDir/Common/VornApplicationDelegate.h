// The core's application delegate, which channels extend with categories and hook through VornUtilsIOS. Implemented by the
// core; a game uses it, or a subclass of it, as its app's delegate. Main thread.
#pragma once

#include "VornExport.h"

#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>

VORN_API
@interface VornApplicationDelegate : UIResponder <UIApplicationDelegate>
@end
