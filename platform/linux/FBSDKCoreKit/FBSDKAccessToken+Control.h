// What a test, the simulator and the other stand-ins do with FBSDKAccessToken. The current token is held in memory only;
// at first there is none.
#pragma once

#include "HostExport.h"

#import <FBSDKCoreKit/FBSDKCoreKit.h>

@interface FBSDKAccessToken (Control)

// No current token; posts nothing.
+ (void)reset;

@end

namespace Tarvik::Vorn::Host {

// A token that never expires, without permissions that were declined or have expired. Autoreleased.
VORN_HOST_EXPORT FBSDKAccessToken* MakeAccessToken(NSString* tokenString, NSString* userID,
                                                   NSArray<NSString*>* permissions);

// The same, but it expired long ago. Autoreleased.
VORN_HOST_EXPORT FBSDKAccessToken* MakeExpiredAccessToken(NSString* tokenString, NSString* userID,
                                                          NSArray<NSString*>* permissions);

// What setCurrentAccessToken: does, but as the SDK itself does it: not entered in PlatformCalls. Posts
// FBSDKAccessTokenDidChangeNotification on this thread, before it returns, unless the token is the current one already.
VORN_HOST_EXPORT void ReplaceCurrentAccessToken(FBSDKAccessToken* token);

} // namespace Tarvik::Vorn::Host
