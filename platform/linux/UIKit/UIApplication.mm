#include "UIKit/UIApplication+Control.h"

#include "CallText.h"
#include "InfoDictionary.h"
#include "PlatformCalls.h"
#include "VornRetainPtr.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

VORN_HOST_EXPORT NSNotificationName const UIApplicationDidBecomeActiveNotification =
    @"UIApplicationDidBecomeActiveNotification";
VORN_HOST_EXPORT UIApplicationLaunchOptionsKey const UIApplicationLaunchOptionsURLKey =
    @"UIApplicationLaunchOptionsURLKey";
VORN_HOST_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsSourceApplicationKey =
    @"UIApplicationOpenURLOptionsSourceApplicationKey";
VORN_HOST_EXPORT UIApplicationOpenURLOptionsKey const UIApplicationOpenURLOptionsAnnotationKey =
    @"UIApplicationOpenURLOptionsAnnotationKey";

namespace {

constexpr CGFloat kWindowWidth = 390;
constexpr CGFloat kWindowHeight = 844;

id<UIApplicationDelegate> sDelegate = nil; // Of the one application; not retained. Main thread.

// Schemes by their small letters.
const std::map<std::string, InstalledApp>& SchemesOfApps() {
    static const auto& schemes = *new std::map<std::string, InstalledApp>{
        {"fb", InstalledApp::kFacebook},
        {"fbapi", InstalledApp::kFacebook},
        {"fbauth", InstalledApp::kFacebook},
        {"fbauth2", InstalledApp::kFacebook},
        {"fb-messenger", InstalledApp::kMessenger},
        {"fb-messenger-share-api", InstalledApp::kMessenger},
    };
    return schemes;
}

struct Apps {
    std::mutex mutex;
    std::map<InstalledApp, bool> installed; // An app that is not in it is installed.
    std::map<std::string, bool> openable;   // What was decided about single schemes.
};

// Never destroyed: any thread may ask until the process ends.
Apps& TheApps() {
    static auto& apps = *new Apps;
    return apps;
}

// Main thread. Empty until somebody asks or decides; then it may hold nil. Never destroyed.
std::optional<RetainPtr<UIWindow*>>& TheKeyWindow() {
    static auto& window = *new std::optional<RetainPtr<UIWindow*>>;
    return window;
}

RetainPtr<UIWindow*> MakeWindow() {
    const CGRect frame = CGRectMake(0, 0, kWindowWidth, kWindowHeight);
    const RetainPtr<UIView*> view = AdoptNS([[UIView alloc] initWithFrame:frame]);
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    [controller.get() setView:view.get()];
    RetainPtr<UIWindow*> window = AdoptNS([[UIWindow alloc] initWithFrame:frame]);
    [window.get() setRootViewController:controller.get()];
    return window;
}

} // namespace

@implementation UIApplication

+ (UIApplication*)sharedApplication {
    static UIApplication* const shared = [[UIApplication alloc] init];
    return shared;
}

- (id<UIApplicationDelegate>)delegate {
    return sDelegate;
}

- (void)setDelegate:(id<UIApplicationDelegate>)delegate {
    sDelegate = delegate;
}

- (UIWindow*)keyWindow {
    std::optional<RetainPtr<UIWindow*>>& window = TheKeyWindow();
    if (!window) {
        window = MakeWindow();
    }
    return [[window->get() retain] autorelease];
}

- (BOOL)canOpenURL:(NSURL*)url {
    PlatformCalls::Record("UIApplication", "canOpenURL:", QuotedText([url absoluteString]));
    return CanOpenURL(url);
}

@end

namespace Tarvik::Vorn::Host {

void BecomeActive() {
    @autoreleasepool {
        [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidBecomeActiveNotification
                                                            object:[UIApplication sharedApplication]];
    }
}

void SetAppInstalled(InstalledApp app, bool installed) {
    Apps& apps = TheApps();
    const std::lock_guard lock(apps.mutex);
    apps.installed[app] = installed;
}

void SetSchemeOpenable(NSString* scheme, bool openable) {
    const std::string name = PlainText([scheme lowercaseString]);
    Apps& apps = TheApps();
    const std::lock_guard lock(apps.mutex);
    apps.openable[name] = openable;
}

bool IsSchemeOpenable(NSString* scheme) {
    const std::string name = PlainText([scheme lowercaseString]);
    Apps& apps = TheApps();
    const std::lock_guard lock(apps.mutex);
    if (const auto decided = apps.openable.find(name); decided != apps.openable.end()) {
        return decided->second;
    }
    const auto app = SchemesOfApps().find(name);
    if (app == SchemesOfApps().end()) {
        return false;
    }
    const auto installed = apps.installed.find(app->second);
    return installed == apps.installed.end() || installed->second;
}

bool CanOpenURL(NSURL* url) {
    NSString* const scheme = [url scheme];
    return [scheme length] != 0 && IsQueriesSchemeListed(scheme) && IsSchemeOpenable(scheme);
}

void SetKeyWindow(UIWindow* window) {
    TheKeyWindow() = RetainPtr(window);
}

void ResetApplication() {
    {
        Apps& apps = TheApps();
        const std::lock_guard lock(apps.mutex);
        apps.installed.clear();
        apps.openable.clear();
    }
    TheKeyWindow().reset();
    sDelegate = nil;
}

} // namespace Tarvik::Vorn::Host
