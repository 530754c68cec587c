// What a test, the simulator and the other stand-ins do with FBSDKAuthenticationToken. The current token is held in
// memory only; at first there is none.
#pragma once

#include "HostExport.h"

#import <FBSDKCoreKit/FBSDKCoreKit.h>

@interface FBSDKAuthenticationToken (Control)

// No current token.
+ (void)reset;

@end

namespace Tarvik::Vorn::Host {

// A token of the given graph domain: "gaming", "facebook" or "". Autoreleased.
VORN_HOST_EXPORT FBSDKAuthenticationToken* MakeAuthenticationToken(NSString* tokenString, NSString* graphDomain);

// What setCurrentAuthenticationToken: does, but as the SDK itself does it: not entered in PlatformCalls.
VORN_HOST_EXPORT void ReplaceCurrentAuthenticationToken(FBSDKAuthenticationToken* token);

} // namespace Tarvik::Vorn::Host
