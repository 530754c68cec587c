#include "VornApplicationDelegate+Facebook.h"

#include "VornDefine.h"
#include "VornFacebookSDK.h"

#include <dispatch/dispatch.h>

using namespace Tarvik::Vorn;

namespace {

constexpr const char* kAppIDKey = "FACEBOOK_APP_ID";
constexpr const char* kDisplayNameKey = "FACEBOOK_DISPLAYNAME";

constexpr const char* kPluginName = "VornFacebook";
constexpr const char* kPluginVersion = "5.30.001.7206";
constexpr const char* kChannelName = "Facebook";
constexpr const char* kVersionTag = "TARVIK_VERSION_VORN_FACEBOOK_5.30.001";

// A method of the delegate and the one that takes its place.
struct Hook {
    NSString* original;
    NSString* replacement;
};

NSString* ConfiguredText(const char* key) {
    return MakeNSString(VornSingleton<VornConfigManager>::GetInstance()->Get(key, ""));
}

} // namespace

@implementation VornApplicationDelegate (Facebook)

#pragma mark - Installation

// Runs before the C++ initialisers of this library on a device: nothing here may need one.
+ (void)load {
    static dispatch_once_t onceToken;
    const dispatch_block_t install = ^{
        const Hook hooks[] = {
            {@"application:didFinishLaunchingWithOptions:", @"fb_application:options:"},
            {@"application:openURL:sourceApplication:annotation:",
             @"fb_application:openURL:sourceApplication:annotation:"},
            {@"application:openURL:options:", @"fb_application:openURL:options:"},
        };
        for (const Hook& hook : hooks) {
            [VornUtilsIOS swizzlingOriginalClass:NSClassFromString(@"VornApplicationDelegate")
                                   swizzledClass:[self class]
                                     originalSEL:NSSelectorFromString(hook.original)
                                     swizzledSEL:NSSelectorFromString(hook.replacement)];
        }
    };
    dispatch_once(&onceToken, install);
}

#pragma mark - Hooks

- (BOOL)fb_application:(UIApplication*)application options:(NSDictionary*)options {
    // Kept: the SDK is started before it is given the app ID and the name; it starts with those of the Info.plist.
    [[FBSDKApplicationDelegate sharedInstance] application:application didFinishLaunchingWithOptions:options];

    NSString* const appID = ConfiguredText(kAppIDKey);
    NSString* const displayName = ConfiguredText(kDisplayNameKey);
    VORN_LOG_DEBUG("%s : %s, %s : %s version is:%s, TarvikVersion: %s", kAppIDKey, CStr(appID), kDisplayNameKey,
                   CStr(displayName), CStr([[FBSDKSettings sharedSettings] sdkVersion]), kVersionTag);
    // Kept: empty texts are set too, and hide what the Info.plist says.
    [[FBSDKSettings sharedSettings] setAppID:appID];
    [[FBSDKSettings sharedSettings] setDisplayName:displayName];
    [[FBSDKAppEvents shared] activateApp];
    VORN_TRACE("", "").tracePlugin(kPluginName, kPluginVersion, kChannelName,
                                   CStr([[FBSDKSettings sharedSettings] sdkVersion]));
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(handleBecomeActive:)
                                                 name:UIApplicationDidBecomeActiveNotification
                                               object:nil];
    return [self fb_application:application options:options]; // The delegate's own.
}

// Kept: whether Facebook took a URL does not matter to the answer; the delegate's own method gives it.
- (BOOL)fb_application:(UIApplication*)application
               openURL:(NSURL*)url
     sourceApplication:(NSString*)sourceApplication
            annotation:(id)annotation {
    [[FBSDKApplicationDelegate sharedInstance] application:application
                                                   openURL:url
                                         sourceApplication:sourceApplication
                                                annotation:annotation];
    return [self fb_application:application openURL:url sourceApplication:sourceApplication annotation:annotation];
}

- (BOOL)fb_application:(UIApplication*)application openURL:(NSURL*)url options:(NSDictionary*)options {
    [[FBSDKApplicationDelegate sharedInstance] application:application openURL:url options:options];
    return [self fb_application:application openURL:url options:options];
}

- (void)handleBecomeActive:(NSNotification*)notification {
    [[FBSDKAppEvents shared] activateApp];
}

#pragma mark - Lifetime

// Takes the place of any dealloc of the delegate class itself.
- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

@end
