// FBSDKShareKit, the part written in Swift, as far as it is used here. Like the header that the Swift compiler writes it
// imports nothing where modules are off: Foundation, UIKit, SafariServices, AuthenticationServices, FBSDKCoreKit.h,
// FBSDKCoreKit-Swift.h and FBSDKShareKit.h come before it.
//
// A method written in Swift takes nil for an argument that is not nullable badly: a text becomes empty, an array too, a
// URL ends the process.
#pragma once

@class UIImage;
@class UIViewController;

NS_ASSUME_NONNULL_BEGIN

#pragma mark - Content

@protocol FBSDKSharingValidatable

- (BOOL)validateWithOptions:(FBSDKShareBridgeOptions)bridgeOptions error:(NSError* _Nullable* _Nullable)errorRef;

@end

// What can be shared.
@protocol FBSDKSharingContent <NSObject, FBSDKSharingValidatable>

@property(nullable, nonatomic, copy) NSURL* contentURL;

// Facebook user IDs of the people to tag. Empty at first.
@property(nonatomic, copy) NSArray<NSString*>* peopleIDs;

@property(nullable, nonatomic, copy) NSString* placeID;
@property(nullable, nonatomic, copy) NSString* ref;
@property(nullable, nonatomic, copy) NSString* pageID;
@property(nullable, nonatomic, readonly, copy) NSString* shareUUID;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKShareLinkContent : NSObject<FBSDKSharingContent>

@property(nullable, nonatomic, copy) NSURL* contentURL;
@property(nonatomic, copy) NSArray<NSString*>* peopleIDs;
@property(nullable, nonatomic, copy) NSString* placeID;
@property(nullable, nonatomic, copy) NSString* ref;
@property(nullable, nonatomic, copy) NSString* pageID;
@property(nullable, nonatomic, readonly, copy) NSString* shareUUID;
@property(nullable, nonatomic, copy) NSString* quote;

- (instancetype)init NS_DESIGNATED_INITIALIZER;

@end

// One photo, from one source: setting a source clears the others.
__attribute__((objc_subclassing_restricted))
@interface FBSDKSharePhoto : NSObject

@property(nullable, nonatomic, strong) UIImage* image;
@property(nullable, nonatomic, copy) NSURL* imageURL;
@property(nullable, nonatomic, copy) NSString* caption;
@property(nonatomic) BOOL isUserGenerated;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithImage:(UIImage*)image isUserGenerated:(BOOL)isUserGenerated;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKSharePhotoContent : NSObject<FBSDKSharingContent>

@property(nullable, nonatomic, copy) NSURL* contentURL;
@property(nonatomic, copy) NSArray<NSString*>* peopleIDs;
@property(nullable, nonatomic, copy) NSString* placeID;
@property(nullable, nonatomic, copy) NSString* ref;
@property(nullable, nonatomic, copy) NSString* pageID;
@property(nullable, nonatomic, readonly, copy) NSString* shareUUID;
@property(nonatomic, copy) NSArray<FBSDKSharePhoto*>* photos;

- (instancetype)init NS_DESIGNATED_INITIALIZER;

@end

// One video, from one source: setting a source clears the others, and the preview.
__attribute__((objc_subclassing_restricted))
@interface FBSDKShareVideo : NSObject

@property(nullable, nonatomic, copy) NSData* data;
@property(nullable, nonatomic, copy) NSURL* videoURL;
@property(nullable, nonatomic, strong) FBSDKSharePhoto* previewPhoto;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

// Ends the process when `videoURL` is nil.
- (instancetype)initWithVideoURL:(NSURL*)videoURL previewPhoto:(nullable FBSDKSharePhoto*)previewPhoto;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKShareVideoContent : NSObject<FBSDKSharingContent>

@property(nullable, nonatomic, copy) NSURL* contentURL;
@property(nonatomic, copy) NSArray<NSString*>* peopleIDs;
@property(nullable, nonatomic, copy) NSString* placeID;
@property(nullable, nonatomic, copy) NSString* ref;
@property(nullable, nonatomic, copy) NSString* pageID;
@property(nullable, nonatomic, readonly, copy) NSString* shareUUID;
@property(nonatomic, strong) FBSDKShareVideo* video; // One without a source at first.

- (instancetype)init NS_DESIGNATED_INITIALIZER;

@end

#pragma mark - Dialogs

@protocol FBSDKSharingDelegate;

@protocol FBSDKSharing

@property(nullable, nonatomic, weak) id<FBSDKSharingDelegate> delegate;
@property(nullable, nonatomic, strong) id<FBSDKSharingContent> shareContent;
@property(nonatomic) BOOL shouldFailOnDataError;

- (BOOL)validateWithError:(NSError* _Nullable* _Nullable)errorRef;

@end

@protocol FBSDKSharingDialog <FBSDKSharing>

@property(nonatomic, readonly) BOOL canShow;

// NO when the content cannot be shared; the delegate has got the error by then. The SDK keeps an open dialog.
- (BOOL)show;

@end

// The outcome of a dialog; main thread.
@protocol FBSDKSharingDelegate

- (void)sharer:(id<FBSDKSharing>)sharer didCompleteWithResults:(NSDictionary<NSString*, id>*)results;
- (void)sharer:(id<FBSDKSharing>)sharer didFailWithError:(NSError*)error;
- (void)sharerDidCancel:(id<FBSDKSharing>)sharer;

@end

// How a share dialog shows.
typedef NS_ENUM(NSUInteger, FBSDKShareDialogMode) {
    FBSDKShareDialogModeAutomatic = 0,
    FBSDKShareDialogModeNative = 1, // In the Facebook app.
    FBSDKShareDialogModeShareSheet = 2,
    FBSDKShareDialogModeBrowser = 3,
    FBSDKShareDialogModeWeb = 4,
    FBSDKShareDialogModeFeedBrowser = 5,
    FBSDKShareDialogModeFeedWeb = 6,
};

@interface FBSDKShareDialog : NSObject <FBSDKSharingDialog>

@property(nullable, nonatomic, weak) id<FBSDKSharingDelegate> delegate;
@property(nullable, nonatomic, strong) id<FBSDKSharingContent> shareContent;
@property(nonatomic) BOOL shouldFailOnDataError;
@property(nullable, nonatomic, weak) UIViewController* fromViewController;
@property(nonatomic) FBSDKShareDialogMode mode;
@property(nonatomic, readonly) BOOL canShow;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithViewController:(nullable UIViewController*)viewController
                               content:(nullable id<FBSDKSharingContent>)content
                              delegate:(nullable id<FBSDKSharingDelegate>)delegate NS_DESIGNATED_INITIALIZER;

- (BOOL)validateWithError:(NSError* _Nullable* _Nullable)errorRef;
- (BOOL)show;

@end

// Sends through Messenger.
@interface FBSDKMessageDialog : NSObject <FBSDKSharingDialog>

@property(nullable, nonatomic, weak) id<FBSDKSharingDelegate> delegate;
@property(nullable, nonatomic, strong) id<FBSDKSharingContent> shareContent;
@property(nonatomic) BOOL shouldFailOnDataError;
@property(nonatomic, readonly) BOOL canShow;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithContent:(nullable id<FBSDKSharingContent>)content
                       delegate:(nullable id<FBSDKSharingDelegate>)delegate NS_DESIGNATED_INITIALIZER;

- (BOOL)validateWithError:(NSError* _Nullable* _Nullable)errorRef;
- (BOOL)show;

@end

NS_ASSUME_NONNULL_END
