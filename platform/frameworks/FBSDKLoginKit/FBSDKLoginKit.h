// FBSDKLoginKit, the part written in Objective-C, as far as it is used here (SDK 15.0.0 to 18.1.0). The classes are
// declared in FBSDKLoginKit-Swift.h.
#pragma once

#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <Foundation/Foundation.h>

@class FBSDKLoginManagerLoginResult;

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT NSString* const FBSDKLoginErrorDomain;

// Codes in FBSDKLoginErrorDomain.
typedef NS_ENUM(NSInteger, FBSDKLoginError) {
    FBSDKLoginErrorReserved = 300,
    FBSDKLoginErrorUnknown = 301,
    FBSDKLoginErrorPasswordChanged = 302,
    FBSDKLoginErrorUserCheckpointed = 303,
    FBSDKLoginErrorUserMismatch = 304,
    FBSDKLoginErrorUnconfirmedUser = 305,
    FBSDKLoginErrorSystemAccountAppDisabled = 306,
    FBSDKLoginErrorSystemAccountUnavailable = 307,
    FBSDKLoginErrorBadChallengeString = 308,
    FBSDKLoginErrorInvalidIDToken = 309,
    FBSDKLoginErrorMissingAccessToken = 310,
};

// Called once. The SDK passes either a result or an error.
typedef void (^FBSDKLoginManagerLoginResultBlock)(FBSDKLoginManagerLoginResult* _Nullable result,
                                                  NSError* _Nullable error);

NS_ASSUME_NONNULL_END
