// Errors as the Facebook SDK makes them: no localized description, the English reason under
// FBSDKErrorDeveloperMessageKey. For the stand-ins' own use; any thread.
#pragma once

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {

// Autoreleased. A nil message leaves its key out of the user info.
NSError* MakeSDKError(NSString* domain, NSInteger code, NSString* developerMessage);

} // namespace Tarvik::Vorn::Host
