// FBSDKGamingServicesKit, which is written in Swift only and has no header FBSDKGamingServicesKit.h, as far as it is used
// here (SDK 15.0.0 to 18.1.0). Like the header that the Swift compiler writes it imports nothing where modules are off:
// Foundation, UIKit, SafariServices, AuthenticationServices, FBSDKCoreKit.h, FBSDKCoreKit-Swift.h, FBSDKShareKit.h and
// FBSDKShareKit-Swift.h come before it.
#pragma once

@class UIImage;

NS_ASSUME_NONNULL_BEGIN

#pragma mark - Friend finder

__attribute__((objc_subclassing_restricted))
@interface FBSDKFriendFinderDialog : NSObject

- (instancetype)init NS_DESIGNATED_INITIALIZER;

// Opens Facebook's friend finder. The handler runs on the main thread; an error found beforehand is given to it on this
// thread, before the call returns.
+ (void)launchFriendFinderDialogWithCompletionHandler:(void (^)(BOOL success,
                                                                NSError* _Nullable error))completionHandler;

@end

#pragma mark - Game requests

typedef NS_ENUM(NSUInteger, FBSDKGameRequestActionType) {
    FBSDKGameRequestActionTypeNone = 0,
    FBSDKGameRequestActionTypeSend = 1,
    FBSDKGameRequestActionTypeAskFor = 2,
    FBSDKGameRequestActionTypeTurn = 3,
    FBSDKGameRequestActionTypeInvite = 4,
};

// Whom the dialog's friend picker offers.
typedef NS_ENUM(NSUInteger, FBSDKGameRequestFilter) {
    FBSDKGameRequestFilterNone = 0,
    FBSDKGameRequestFilterAppUsers = 1,
    FBSDKGameRequestFilterAppNonUsers = 2,
    FBSDKGameRequestFilterEverybody = 3,
};

__attribute__((objc_subclassing_restricted))
@interface FBSDKGameRequestContent : NSObject<NSSecureCoding, FBSDKSharingValidatable>

@property(nonatomic) FBSDKGameRequestActionType actionType;
@property(nullable, nonatomic, copy) NSString* data;
@property(nonatomic) FBSDKGameRequestFilter filters;
@property(nonatomic, copy) NSString* message;
@property(nonatomic, copy) NSString* objectID;
@property(nonatomic, copy) NSArray<NSString*>* recipients;
@property(nonatomic, copy) NSArray<NSString*>* recipientSuggestions;
@property(nonatomic, copy) NSString* title;
@property(nonatomic, copy) NSString* cta;

- (instancetype)init NS_DESIGNATED_INITIALIZER;

@end

@class FBSDKGameRequestDialog;

// The outcome of a game-request dialog; main thread, or inside show when the content is not valid.
@protocol FBSDKGameRequestDialogDelegate

- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog
    didCompleteWithResults:(NSDictionary<NSString*, id>*)results;
- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog didFailWithError:(NSError*)error;
- (void)gameRequestDialogDidCancel:(FBSDKGameRequestDialog*)gameRequestDialog;

@end

// The SDK keeps an open dialog. Main thread.
__attribute__((objc_subclassing_restricted))
@interface FBSDKGameRequestDialog : NSObject

@property(nullable, nonatomic, weak) id<FBSDKGameRequestDialogDelegate> delegate;
@property(nonatomic, strong) FBSDKGameRequestContent* content;
@property(nonatomic, readonly) BOOL canShow; // Always YES.

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithContent:(FBSDKGameRequestContent*)content
                       delegate:(nullable id<FBSDKGameRequestDialogDelegate>)delegate NS_DESIGNATED_INITIALIZER;

+ (FBSDKGameRequestDialog*)dialogWithContent:(FBSDKGameRequestContent*)content
                                    delegate:(nullable id<FBSDKGameRequestDialogDelegate>)delegate;

// Makes a dialog and shows it.
+ (FBSDKGameRequestDialog*)showWithContent:(FBSDKGameRequestContent*)content
                                  delegate:(nullable id<FBSDKGameRequestDialogDelegate>)delegate;

// NO when the content is not valid; the delegate has got the error by then.
- (BOOL)show;

@end

#pragma mark - Uploads

__attribute__((objc_subclassing_restricted))
@interface FBSDKGamingImageUploaderConfiguration : NSObject

@property(nonatomic, readonly, strong) UIImage* image;
@property(nullable, nonatomic, readonly, copy) NSString* caption;
@property(nonatomic, readonly) BOOL shouldLaunchMediaDialog;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

- (instancetype)initWithImage:(UIImage*)image
                      caption:(nullable NSString*)caption
      shouldLaunchMediaDialog:(BOOL)shouldLaunchMediaDialog NS_DESIGNATED_INITIALIZER;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKGamingImageUploader : NSObject

- (instancetype)init NS_DESIGNATED_INITIALIZER;

// The completion runs on the main thread; an error found beforehand is given to it on this thread, before the call
// returns.
+ (void)uploadImageWithConfiguration:(FBSDKGamingImageUploaderConfiguration*)configuration
                 andResultCompletion:(void (^)(BOOL success, NSDictionary<NSString*, id>* _Nullable result,
                                               NSError* _Nullable error))completion;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKGamingVideoUploaderConfiguration : NSObject

@property(nonatomic, readonly, copy) NSURL* videoURL;
@property(nullable, nonatomic, readonly, copy) NSString* caption;

- (instancetype)init __attribute__((unavailable));
+ (instancetype)new __attribute__((unavailable));

// Ends the process when `videoURL` is nil.
- (instancetype)initWithVideoURL:(NSURL*)videoURL caption:(nullable NSString*)caption NS_DESIGNATED_INITIALIZER;

@end

__attribute__((objc_subclassing_restricted))
@interface FBSDKGamingVideoUploader : NSObject

- (instancetype)init NS_DESIGNATED_INITIALIZER;

// The completion runs on the main thread, or where the error is found; the progress handler on a background thread for
// every chunk and on the main thread for the last call.
+ (void)uploadVideoWithConfiguration:(FBSDKGamingVideoUploaderConfiguration*)configuration
                          completion:(void (^)(BOOL success, NSDictionary<NSString*, id>* _Nullable result,
                                               NSError* _Nullable error))completion
                  andProgressHandler:(void (^_Nullable)(int64_t bytesSent, int64_t totalBytesSent,
                                                        int64_t totalBytesExpectedToSend))progressHandler;

@end

NS_ASSUME_NONNULL_END
