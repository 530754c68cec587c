#include "FBSDKCoreKit/SDKErrors.h"

#include "HostExport.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>

VORN_HOST_EXPORT NSString* const FBSDKErrorDomain = @"com.facebook.sdk.core";
VORN_HOST_EXPORT NSString* const FBSDKErrorDeveloperMessageKey = @"com.facebook.sdk:FBSDKErrorDeveloperMessageKey";
VORN_HOST_EXPORT NSString* const FBSDKErrorArgumentNameKey = @"com.facebook.sdk:FBSDKErrorArgumentNameKey";
VORN_HOST_EXPORT NSString* const FBSDKErrorArgumentValueKey = @"com.facebook.sdk:FBSDKErrorArgumentValueKey";

namespace Tarvik::Vorn::Host {

NSError* MakeSDKError(NSString* domain, NSInteger code, NSString* developerMessage) {
    NSDictionary* const userInfo = developerMessage == nil ? @{} : @{FBSDKErrorDeveloperMessageKey : developerMessage};
    return [NSError errorWithDomain:domain code:code userInfo:userInfo];
}

NSError* MakeExpiredTokenError() {
    return MakeSDKError(FBSDKErrorDomain, FBSDKErrorGraphRequestGraphAPI,
                        @"Error validating access token: Session has expired");
}

void RequireClientToken() {
    if ([[FBSDKSettings sharedSettings] clientToken] == nil) {
        [NSException raise:@"InvalidOperationException"
                    format:@"FacebookClientToken is required for Graph calls. Please add it in your Info.plist"];
    }
}

} // namespace Tarvik::Vorn::Host
