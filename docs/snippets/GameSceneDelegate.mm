#import "GameSceneDelegate.h"

@implementation GameSceneDelegate

// The app was launched for a URL: it is here, not in the launch options.
- (void)scene:(UIScene*)scene
    willConnectToSession:(UISceneSession*)session
                 options:(UISceneConnectionOptions*)connectionOptions {
    [self forward:connectionOptions.URLContexts];
}

// A URL was opened while the app was running.
- (void)scene:(UIScene*)scene openURLContexts:(NSSet<UIOpenURLContext*>*)URLContexts {
    [self forward:URLContexts];
}

- (void)forward:(NSSet<UIOpenURLContext*>*)contexts {
    UIApplication* application = UIApplication.sharedApplication;
    for (UIOpenURLContext* context in contexts) {
        NSMutableDictionary* options = [NSMutableDictionary dictionary];
        [options setValue:context.options.sourceApplication forKey:UIApplicationOpenURLOptionsSourceApplicationKey];
        [options setValue:context.options.annotation forKey:UIApplicationOpenURLOptionsAnnotationKey];
        [application.delegate application:application openURL:context.URL options:options];
    }
}

@end
