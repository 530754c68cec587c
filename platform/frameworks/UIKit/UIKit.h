// UIKit, as far as the plugin calls it. A declaration is added when a call to it is.
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface UIResponder : NSObject
@end

@interface UIViewController : UIResponder
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

@interface UIApplication : UIResponder

@property(class, nonatomic, readonly) UIApplication* sharedApplication;

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

NS_ASSUME_NONNULL_END
