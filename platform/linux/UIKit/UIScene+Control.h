// What a test or the simulator makes in the system's place: the arguments of a scene delegate's methods. All autoreleased;
// any thread.
#pragma once

#include "HostExport.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

// A URL to open; nil for a source or an annotation that there is not.
VORN_HOST_EXPORT UIOpenURLContext* MakeOpenURLContext(NSURL* url, NSString* sourceApplication, id annotation);

VORN_HOST_EXPORT UISceneConnectionOptions* MakeConnectionOptions(NSSet<UIOpenURLContext*>* contexts);

} // namespace Tarvik::Vorn::Host
