// UIKit, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface UIResponder : NSObject
@end

#pragma mark - Images and colours

@interface UIImage : NSObject

// Nil when the bytes are no image that the system can decode. Any thread.
+ (nullable UIImage*)imageWithData:(NSData*)data;

@property(nonatomic, readonly) CGSize size; // In points.

@end

@interface UIColor : NSObject

// Components from 0 to 1. Any thread.
+ (UIColor*)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;

@end

#pragma mark - Views; main thread

@interface UIView : UIResponder

@property(nonatomic) CGRect frame;
@property(nonatomic, getter=isHidden) BOOL hidden;
@property(nullable, nonatomic, readonly) UIView* superview;
@property(nonatomic, readonly, copy) NSArray<UIView*>* subviews; // The last is in front.

- (instancetype)initWithFrame:(CGRect)frame NS_DESIGNATED_INITIALIZER;

// The subview is retained.
- (void)addSubview:(UIView*)view;
- (void)bringSubviewToFront:(UIView*)view;
- (void)removeFromSuperview;

@end

typedef NS_ENUM(NSInteger, UIProgressViewStyle) {
    UIProgressViewStyleDefault = 0,
    UIProgressViewStyleBar = 1,
};

@interface UIProgressView : UIView

@property(nonatomic) UIProgressViewStyle progressViewStyle;
@property(nonatomic) float progress; // From 0 to 1.
@property(nullable, nonatomic, strong) UIColor* progressTintColor;
@property(nullable, nonatomic, strong) UIColor* trackTintColor;

- (instancetype)initWithProgressViewStyle:(UIProgressViewStyle)style;

@end

@interface UIViewController : UIResponder

@property(null_resettable, nonatomic, strong) UIView* view;

@end

@interface UIWindow : UIView

@property(nullable, nonatomic, strong) UIViewController* rootViewController;

@end

#pragma mark - The application

typedef NSString* UIApplicationLaunchOptionsKey;
typedef NSString* UIApplicationOpenURLOptionsKey;

// Posted each time the app has become active, on the main thread; the object is the shared application.
FOUNDATION_EXPORT NSNotificationName const UIApplicationDidBecomeActiveNotification;

// The URL for which the app was launched: an NSURL.
FOUNDATION_EXPORT UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsURLKey;

// The bundle ID of the app that asked to open the URL: an NSString.
FOUNDATION_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsSourceApplicationKey;
// What that app passed along: a property list.
FOUNDATION_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsAnnotationKey;

@protocol UIApplicationDelegate;

@interface UIApplication : UIResponder

@property(class, nonatomic, readonly) UIApplication* sharedApplication;

// Not retained.
@property(nullable, nonatomic, assign) id<UIApplicationDelegate> delegate;

// The window that gets the user's input; nil before the app has shown one.
@property(nullable, nonatomic, readonly) UIWindow* keyWindow;

// Whether an app is installed that opens the URL. NO, too, when LSApplicationQueriesSchemes in the Info.plist does not
// list the URL's scheme.
- (BOOL)canOpenURL:(NSURL*)url;

@end

// What the system tells the app's delegate, on the main thread.
@protocol UIApplicationDelegate <NSObject>
@optional

- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(nullable NSDictionary<UIApplicationLaunchOptionsKey, id>*)launchOptions;

- (BOOL)application:(UIApplication*)application
            openURL:(NSURL*)url
            options:(NSDictionary<UIApplicationOpenURLOptionsKey, id>*)options;

// Replaced by application:openURL:options: since iOS 9, and called only where that is not implemented.
- (BOOL)application:(UIApplication*)application
              openURL:(NSURL*)url
    sourceApplication:(nullable NSString*)sourceApplication
           annotation:(id)annotation;

@end

#pragma mark - Scenes

@interface UIScene : UIResponder
@end

@interface UISceneSession : NSObject
@end

@interface UISceneOpenURLOptions : NSObject

@property(nullable, nonatomic, readonly) NSString* sourceApplication;
@property(nullable, nonatomic, readonly) id annotation;

@end

// A URL that the system opens in a scene, and who asked for it.
@interface UIOpenURLContext : NSObject

@property(nonatomic, readonly, copy) NSURL* URL;
@property(nonatomic, readonly, strong) UISceneOpenURLOptions* options;

@end

// Why a scene is made; holds the URLs for which the app was launched.
@interface UISceneConnectionOptions : NSObject

@property(nonatomic, readonly, copy) NSSet<UIOpenURLContext*>* URLContexts;

@end

// What the system tells a scene's delegate, on the main thread. In an app with scenes it opens URLs here, and not through
// the application delegate.
@protocol UISceneDelegate <NSObject>
@optional

- (void)scene:(UIScene*)scene
    willConnectToSession:(UISceneSession*)session
                 options:(UISceneConnectionOptions*)connectionOptions;

- (void)scene:(UIScene*)scene openURLContexts:(NSSet<UIOpenURLContext*>*)URLContexts;

@end

NS_ASSUME_NONNULL_END
