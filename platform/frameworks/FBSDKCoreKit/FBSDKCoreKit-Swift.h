// FBSDKCoreKit, the part written in Swift (FBSDKSettings since 15.1.0), as far as it is used here. Like the header that
// the Swift compiler writes it imports nothing where modules are off: Foundation, UIKit, SafariServices,
// AuthenticationServices and FBSDKCoreKit.h come before it.
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

NS_ASSUME_NONNULL_END
