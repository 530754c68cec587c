// Errors as the Facebook SDK makes them: no localized description, the English reason under
// FBSDKErrorDeveloperMessageKey. For the stand-ins' own use; any thread.
#pragma once

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {

// Autoreleased. A nil message leaves its key out of the user info.
NSError* MakeSDKError(NSString* domain, NSInteger code, NSString* developerMessage);

// What a Graph request fails with when the server finds that the access token has expired. Autoreleased.
NSError* MakeExpiredTokenError();

// What the SDK does at the start of a Graph request: raises InvalidOperationException when FBSDKSettings has no client
// token (nil; an empty one counts as one).
void RequireClientToken();

} // namespace Tarvik::Vorn::Host
