// FBSDKCoreKit, the part written in Swift (FBSDKApplicationDelegate since 15.0.0, FBSDKSettings since 15.1.0), as far as
// it is used here. Like the header that the Swift compiler writes it imports nothing where modules are off: Foundation,
// UIKit, SafariServices, AuthenticationServices and FBSDKCoreKit.h come before it.
#pragma once

NS_ASSUME_NONNULL_BEGIN

__attribute__((objc_subclassing_restricted))
@interface FBSDKSettings : NSObject

@property(class, nonatomic, readonly, strong) FBSDKSettings* sharedSettings;

@property(nonatomic, readonly, copy) NSString* sdkVersion;

@property(nullable, nonatomic, copy) NSString* appID;
@property(nullable, nonatomic, copy) NSString* displayName;
@property(nullable, nonatomic, copy) NSString* clientToken;
@property(nullable, nonatomic, copy) NSString* appURLSchemeSuffix;
@property(nullable, nonatomic, copy) NSString* facebookDomainPart;

@end

// The app's delegate passes on what the system tells it: main thread.
__attribute__((objc_subclassing_restricted))
@interface FBSDKApplicationDelegate : NSObject

@property(class, nonatomic, readonly, strong) FBSDKApplicationDelegate* sharedInstance;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

// Starts the SDK, at the first call. YES only when an observer registered with the SDK says so.
- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(nullable NSDictionary<UIApplicationLaunchOptionsKey, id>*)launchOptions;

// YES when a login or a dialog was waiting for the URL.
- (BOOL)application:(UIApplication*)application
            openURL:(NSURL*)url
            options:(NSDictionary<UIApplicationOpenURLOptionsKey, id>*)options;
- (BOOL)application:(UIApplication*)application
              openURL:(NSURL*)url
    sourceApplication:(nullable NSString*)sourceApplication
           annotation:(nullable id)annotation;

@end

NS_ASSUME_NONNULL_END
