// FBSDKShareKit, the part written in Objective-C, as far as it is used here (SDK 15.0.0 to 18.1.0). The classes are
// declared in FBSDKShareKit-Swift.h.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

FOUNDATION_EXPORT NSString* const FBSDKShareErrorDomain;

// Codes in FBSDKShareErrorDomain. Invalid and missing arguments have FBSDKErrorInvalidArgument's number there, 2.
typedef NS_ENUM(NSInteger, FBSDKShareError) {
    FBSDKShareErrorReserved = 200,
    FBSDKShareErrorOpenGraph = 201,
    FBSDKShareErrorDialogNotAvailable = 202,
    FBSDKShareErrorUnknown = 203,
};

// What a way of sharing can carry; content is validated against it.
typedef NS_OPTIONS(NSUInteger, FBSDKShareBridgeOptions) {
    FBSDKShareBridgeOptionsDefault = 0,
    FBSDKShareBridgeOptionsPhotoAsset = 1 << 0,
    FBSDKShareBridgeOptionsPhotoImageURL = 1 << 1,
    FBSDKShareBridgeOptionsVideoAsset = 1 << 2,
    FBSDKShareBridgeOptionsVideoData = 1 << 3,
    FBSDKShareBridgeOptionsWebHashtag = 1 << 4,
};

NS_ASSUME_NONNULL_END
