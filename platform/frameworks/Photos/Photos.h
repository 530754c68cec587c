// Photos, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, PHAuthorizationStatus) {
    PHAuthorizationStatusNotDetermined = 0, // The user has not been asked yet.
    PHAuthorizationStatusRestricted = 1,    // Not the user's to decide.
    PHAuthorizationStatusDenied = 2,
    PHAuthorizationStatusAuthorized = 3,
    PHAuthorizationStatusLimited = 4, // To some photos only.
};

@interface PHObject : NSObject

@property(nonatomic, copy, readonly) NSString* localIdentifier;

@end

// Stands for an object that a change block creates, and names it before the change is made.
@interface PHObjectPlaceholder : PHObject
@end

// Made within a change block.
@interface PHChangeRequest : NSObject
@end

@interface PHAssetChangeRequest : PHChangeRequest

@property(nonatomic, strong, readonly, nullable) PHObjectPlaceholder* placeholderForCreatedAsset;

+ (nullable instancetype)creationRequestForAssetFromVideoAtFileURL:(NSURL*)fileURL;

@end

@interface PHPhotoLibrary : NSObject

+ (PHPhotoLibrary*)sharedPhotoLibrary;

+ (PHAuthorizationStatus)authorizationStatus;

// Asks the user, unless they have decided. The handler runs on a thread of the system's choosing.
+ (void)requestAuthorization:(void (^)(PHAuthorizationStatus status))handler;

// Runs the block and then, once the change has been made or has failed, the handler, both on threads of the system's
// choosing. Does not wait.
- (void)performChanges:(dispatch_block_t)changeBlock
     completionHandler:(nullable void (^)(BOOL success, NSError* _Nullable error))completionHandler;

@end

NS_ASSUME_NONNULL_END
