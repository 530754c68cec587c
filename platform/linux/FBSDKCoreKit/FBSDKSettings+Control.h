// What a test or the simulator decides about FBSDKSettings.
//
// By default this is SDK 18.1.0, and nothing has been set: each value comes from the Info.plist (InfoDictionary.h).
// Writing a setting is entered in PlatformCalls; the client token is not shown there.
#pragma once

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <Foundation/Foundation.h>

@interface FBSDKSettings (Control)

// What sdkVersion answers; nil stands for an SDK that has no version. Default "18.1.0". It changes nothing else.
+ (void)setSDKVersion:(nullable NSString*)version;

// What setting nil means. YES, as in 15.0.0: the Info.plist counts again. NO, the default, as from 15.1.0 on: it stays
// nil.
+ (void)setFallsBackAfterNil:(BOOL)fallsBack;

// Back to the defaults. The shared object stays the same.
+ (void)reset;

@end
