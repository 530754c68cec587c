// What the game does in the core's application delegate: the delegate's own methods, behind whatever hooks the channels
// have put in front of them. Main thread.
#pragma once

#include "VornExport.h"

#import <Foundation/Foundation.h>

#include <functional>

namespace Tarvik::Vorn {

struct VornApplicationHandlers {
    // application:didFinishLaunchingWithOptions:. Without a function the answer is YES.
    std::function<bool(NSDictionary* options)> launch;

    // application:openURL:options: and application:openURL:sourceApplication:annotation:. Without a function the answer
    // is NO: the game has no use for the URL.
    std::function<bool(NSURL* url, NSDictionary* options)> openURL;
    std::function<bool(NSURL* url, NSString* sourceApplication, id annotation)> openURLFromApplication;
};

// Replaces all three; an empty value brings the answers above back.
VORN_API void SetApplicationHandlers(VornApplicationHandlers handlers);

} // namespace Tarvik::Vorn
