#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"

#include "CallText.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "InfoDictionary.h"
#include "PlatformCalls.h"

#include <mutex>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "FBSDKApplicationDelegate";

struct LaunchState {
    bool started = false;
    bool launchAnswer = false;
    URLDecision decision;
};

struct Launch {
    std::mutex mutex;
    LaunchState current;
};

// Never destroyed: activations may come until the process ends.
Launch& TheLaunch() {
    static auto& launch = *new Launch;
    return launch;
}

// Schemes that belong to Facebook's own apps: an app may ask for them, and must not claim them.
void RefuseReservedURLSchemes() {
    for (NSString* scheme in @[ @"fbapi", @"fb-messenger-share-api" ]) {
        if (IsURLSchemeClaimed(scheme)) {
            [NSException raise:@"InvalidOperationException"
                        format:@"%@ is listed under CFBundleURLSchemes in your Info.plist. "
                               @"Please move it to LSApplicationQueriesSchemes",
                               scheme];
        }
    }
}

bool LogsActivations() {
    const id value = InfoValue(@"FacebookAutoLogAppEventsEnabled");
    const bool isAnswer = [value isKindOfClass:[NSNumber class]] || [value isKindOfClass:[NSString class]];
    return !isAnswer || [value boolValue];
}

bool IsAwaitedByLogin(NSURL* url) {
    NSString* const scheme = [FBSDKLoginManager pendingScheme];
    return scheme != nil && [[[url scheme] lowercaseString] isEqualToString:scheme];
}

BOOL TakeURL(NSURL* url, NSString* sourceApplication, id annotation) {
    // The SDK's methods are Swift: a nil URL traps there.
    if (url == nil) {
        [NSException raise:NSInvalidArgumentException format:@"application:openURL: got a nil URL"];
    }
    URLDecision decision;
    {
        Launch& launch = TheLaunch();
        const std::lock_guard lock(launch.mutex);
        decision = launch.current.decision;
    }
    return (decision ? decision(url, sourceApplication, annotation) : IsAwaitedByLogin(url)) ? YES : NO;
}

} // namespace

@interface FBSDKApplicationDelegate ()
- (void)applicationDidBecomeActive:(NSNotification*)notification;
@end

@implementation FBSDKApplicationDelegate

+ (FBSDKApplicationDelegate*)sharedInstance {
    static FBSDKApplicationDelegate* const shared = [[FBSDKApplicationDelegate alloc] init];
    return shared;
}

- (instancetype)init {
    return [super init];
}

- (BOOL)application:(UIApplication*)application
    didFinishLaunchingWithOptions:(NSDictionary<UIApplicationLaunchOptionsKey, id>*)launchOptions {
    PlatformCalls::Record(kClassName, "application:didFinishLaunchingWithOptions:",
                          JoinArguments({ObjectText(application), DictionaryText(launchOptions)}));
    bool answer = false;
    {
        Launch& launch = TheLaunch();
        const std::lock_guard lock(launch.mutex);
        if (std::exchange(launch.current.started, true)) {
            return NO;
        }
        answer = launch.current.launchAnswer;
    }
    RefuseReservedURLSchemes();
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(applicationDidBecomeActive:)
                                                 name:UIApplicationDidBecomeActiveNotification
                                               object:nil];
    return answer ? YES : NO;
}

- (BOOL)application:(UIApplication*)application
            openURL:(NSURL*)url
            options:(NSDictionary<UIApplicationOpenURLOptionsKey, id>*)options {
    PlatformCalls::Record(
        kClassName, "application:openURL:options:",
        JoinArguments({ObjectText(application), QuotedText([url absoluteString]), DictionaryText(options)}));
    return TakeURL(url, [options objectForKey:UIApplicationOpenURLOptionsSourceApplicationKey],
                   [options objectForKey:UIApplicationOpenURLOptionsAnnotationKey]);
}

- (BOOL)application:(UIApplication*)application
              openURL:(NSURL*)url
    sourceApplication:(NSString*)sourceApplication
           annotation:(id)annotation {
    PlatformCalls::Record(kClassName, "application:openURL:sourceApplication:annotation:",
                          JoinArguments({ObjectText(application), QuotedText([url absoluteString]),
                                         QuotedText(sourceApplication), ObjectText(annotation)}));
    return TakeURL(url, sourceApplication, annotation);
}

- (void)applicationDidBecomeActive:(NSNotification*)notification {
    if (LogsActivations()) {
        ActivateApp();
    }
}

#pragma mark - Control

+ (void)setLaunchAnswer:(BOOL)answer {
    Launch& launch = TheLaunch();
    const std::lock_guard lock(launch.mutex);
    launch.current.launchAnswer = answer != NO;
}

+ (void)setURLDecision:(URLDecision)decision {
    Launch& launch = TheLaunch();
    const std::lock_guard lock(launch.mutex);
    std::swap(launch.current.decision, decision);
    // The former decision ends after the lock.
}

+ (void)reset {
    [[NSNotificationCenter defaultCenter] removeObserver:[FBSDKApplicationDelegate sharedInstance]];
    LaunchState first;
    Launch& launch = TheLaunch();
    const std::lock_guard lock(launch.mutex);
    std::swap(launch.current, first);
}

@end
