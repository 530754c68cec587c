// FBSDKCoreKit, the part written in Objective-C, as far as it is used here (SDK 15.0.0 to 18.1.0). FBSDKSettings and
// FBSDKApplicationDelegate are declared in FBSDKCoreKit-Swift.h.
#pragma once

#import <FBSDKCoreKit_Basics/FBSDKCoreKit_Basics.h>
#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>

NS_ASSUME_NONNULL_BEGIN

#pragma mark - Errors

FOUNDATION_EXPORT NSString* const FBSDKErrorDomain;

// Codes in FBSDKErrorDomain.
typedef NS_ENUM(NSInteger, FBSDKCoreError) {
    FBSDKErrorReserved = 0,
    FBSDKErrorEncryption = 1,
    FBSDKErrorInvalidArgument = 2,
    FBSDKErrorUnknown = 3,
    FBSDKErrorNetwork = 4,
    FBSDKErrorAppEventsFlush = 5,
    FBSDKErrorGraphRequestNonTextMimeTypeReturned = 6,
    FBSDKErrorGraphRequestProtocolMismatch = 7,
    FBSDKErrorGraphRequestGraphAPI = 8,
    FBSDKErrorDialogUnavailable = 9,
    FBSDKErrorAccessTokenRequired = 10,
    FBSDKErrorAppVersionUnsupported = 11,
    FBSDKErrorBrowserUnavailable = 12,
    FBSDKErrorBridgeAPIInterruption = 13,
    FBSDKErrorBridgeAPIResponse = 14,
};

// Keys of the user info of the SDK's errors. Texts for the user are not among them: the SDK sets no localized
// description.
FOUNDATION_EXPORT NSString* const FBSDKErrorDeveloperMessageKey;
FOUNDATION_EXPORT NSString* const FBSDKErrorArgumentNameKey;
FOUNDATION_EXPORT NSString* const FBSDKErrorArgumentValueKey;

#pragma mark - Tokens

// Posted when the current access token has been replaced by another or by none.
FOUNDATION_EXPORT NSNotificationName const FBSDKAccessTokenDidChangeNotification;

@interface FBSDKAccessToken : NSObject <NSCopying, NSSecureCoding>

@property(class, nullable, nonatomic, copy) FBSDKAccessToken* currentAccessToken;

@property(nonatomic, readonly, copy) NSString* tokenString;
@property(nonatomic, readonly, copy) NSString* userID;
@property(nonatomic, readonly, copy) NSString* appID;
@property(nonatomic, readonly, copy) NSSet<NSString*>* permissions;
@property(nonatomic, readonly, copy) NSSet<NSString*>* declinedPermissions;
@property(nonatomic, readonly, copy) NSSet<NSString*>* expiredPermissions;
@property(nonatomic, readonly, copy) NSDate* expirationDate;
@property(nonatomic, readonly, copy) NSDate* refreshDate;
@property(nonatomic, readonly, copy) NSDate* dataAccessExpirationDate;
@property(nonatomic, readonly, getter=isExpired) BOOL expired;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

// Absent dates: expiration and data access expiration never come, the refresh was now.
- (instancetype)initWithTokenString:(NSString*)tokenString
                        permissions:(NSArray<NSString*>*)permissions
                declinedPermissions:(NSArray<NSString*>*)declinedPermissions
                 expiredPermissions:(NSArray<NSString*>*)expiredPermissions
                              appID:(NSString*)appID
                             userID:(NSString*)userID
                     expirationDate:(nullable NSDate*)expirationDate
                        refreshDate:(nullable NSDate*)refreshDate
           dataAccessExpirationDate:(nullable NSDate*)dataAccessExpirationDate NS_DESIGNATED_INITIALIZER;

@end

@interface FBSDKAuthenticationToken : NSObject <NSCopying, NSSecureCoding>

@property(class, nullable, nonatomic, copy) FBSDKAuthenticationToken* currentAuthenticationToken;

@property(nonatomic, readonly, copy) NSString* tokenString;
@property(nonatomic, readonly, copy) NSString* nonce;
@property(nonatomic, readonly, copy) NSString* graphDomain;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithTokenString:(NSString*)tokenString nonce:(NSString*)nonce graphDomain:(NSString*)graphDomain;

@end

#pragma mark - App events

typedef NSString* FBSDKAppEventName;
typedef NSString* FBSDKAppEventParameterName;

// Posted when an event could not be logged or sent; the object is an NSError.
FOUNDATION_EXPORT NSNotificationName const FBSDKAppEventsLoggingResultNotification;

@interface FBSDKAppEvents : NSObject

@property(class, nonatomic, readonly, strong) FBSDKAppEvents* shared;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

// Queues an event; any thread. A name or a parameter that breaks a rule drops the whole event: the name and each key
// have 1 to 40 UTF-16 units and begin with a letter, a digit or "_", which "-" and " " may follow too; values are
// NSString or NSNumber.
- (void)logEvent:(FBSDKAppEventName)eventName;
- (void)logEvent:(FBSDKAppEventName)eventName
      parameters:(nullable NSDictionary<FBSDKAppEventParameterName, id>*)parameters;

// Tells that the app is in use; main thread. The SDK does it by itself at every activation of the app, unless the app's
// Info.plist says otherwise. Repeated calls are harmless.
- (void)activateApp;

@end

#pragma mark - Link words

FB_LINK_CATEGORY_INTERFACE(NSNotificationCenter, NotificationPosting)
FB_LINK_CATEGORY_INTERFACE(NSProcessInfo, MacCatalystDetermining)
FB_LINK_CATEGORY_INTERFACE(NSProcessInfo, OperatingSystemVersionComparing)

NS_ASSUME_NONNULL_END
