// FBSDKLoginKit, the part written in Swift, as far as it is used here. Like the header that the Swift compiler writes
// it imports nothing where modules are off: Foundation, UIKit, SafariServices, AuthenticationServices,
// FBSDKCoreKit.h, FBSDKCoreKit-Swift.h and FBSDKLoginKit.h come before it.
#pragma once

@class FBSDKAccessToken;
@class FBSDKAuthenticationToken;
@class UIViewController;

NS_ASSUME_NONNULL_BEGIN

// Who sees what the app posts for the user, unless the user chooses otherwise.
typedef NS_ENUM(NSUInteger, FBSDKDefaultAudience) {
    FBSDKDefaultAudienceFriends = 0,
    FBSDKDefaultAudienceOnlyMe = 1,
    FBSDKDefaultAudienceEveryone = 2,
};

__attribute__((objc_subclassing_restricted))
@interface FBSDKLoginManagerLoginResult : NSObject

@property(nullable, nonatomic, readonly, strong) FBSDKAccessToken* token;
@property(nullable, nonatomic, readonly, strong) FBSDKAuthenticationToken* authenticationToken;
@property(nonatomic, readonly) BOOL isCancelled;
@property(nonatomic, readonly, copy) NSSet<NSString*>* grantedPermissions;
@property(nonatomic, readonly, copy) NSSet<NSString*>* declinedPermissions;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithToken:(nullable FBSDKAccessToken*)token
          authenticationToken:(nullable FBSDKAuthenticationToken*)authenticationToken
                  isCancelled:(BOOL)isCancelled
           grantedPermissions:(NSSet<NSString*>*)grantedPermissions
          declinedPermissions:(NSSet<NSString*>*)declinedPermissions NS_DESIGNATED_INITIALIZER;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKLoginManager : NSObject

- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithDefaultAudience:(FBSDKDefaultAudience)defaultAudience;

// The SDK keeps the manager until it has called the handler. Without a view controller it finds one itself.
- (void)logInWithPermissions:(NSArray<NSString*>*)permissions
          fromViewController:(nullable UIViewController*)viewController
                     handler:(nullable FBSDKLoginManagerLoginResultBlock)handler;

- (void)logOut;

@end

NS_ASSUME_NONNULL_END
