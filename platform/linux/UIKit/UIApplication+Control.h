// What a test or the simulator does in the system's place to UIApplication.
#pragma once

#include "HostExport.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

// The app becomes active: posts UIApplicationDidBecomeActiveNotification for the shared application on this thread, and
// returns when all observers have run. The system does it on the main thread. No login and no dialog ends by it.
VORN_HOST_EXPORT void BecomeActive();

// Apps that open URLs of other apps. Facebook: fb, fbapi, fbauth, fbauth2. Messenger: fb-messenger,
// fb-messenger-share-api.
enum class InstalledApp { kFacebook, kMessenger };

// Installs or removes an app. By default both are installed. Any thread.
VORN_HOST_EXPORT void SetAppInstalled(InstalledApp app, bool installed);

// Decides about one scheme, whatever is installed: an older app that does not know it, or another app that does. Any
// thread.
VORN_HOST_EXPORT void SetSchemeOpenable(NSString* scheme, bool openable);

// Whether an app is installed for the scheme, whatever the Info.plist allows the app to ask. Any thread.
VORN_HOST_EXPORT bool IsSchemeOpenable(NSString* scheme);

// What canOpenURL: answers, for the stand-ins and the simulator: not entered in the record of calls. Any thread.
VORN_HOST_EXPORT bool CanOpenURL(NSURL* url);

// The window that gets the user's input; nil stands for an app that has not shown one. Retained. By default there is
// one of 390 by 844 points, whose root view controller has a view of that size. Main thread.
VORN_HOST_EXPORT void SetKeyWindow(UIWindow* window);

// Back to the defaults: apps, schemes, window, no delegate.
VORN_HOST_EXPORT void ResetApplication();

} // namespace Tarvik::Vorn::Host
