// What a test or the simulator decides about FBSDKApplicationDelegate.
//
// The first application:didFinishLaunchingWithOptions: starts the SDK: from then on every activation of the app
// (UIKit/UIApplication+Control.h) calls activateApp on FBSDKAppEvents, unless the Info.plist says NO under
// FacebookAutoLogAppEventsEnabled; that call is the SDK's own and is not entered in PlatformCalls. The current tokens
// are held in memory only, so there is nothing to restore. A start that raises for a reserved URL scheme counts as the
// first one. The SDK's debug builds abort when they are used before the start; this one does not, as a release build.
#pragma once

#include "HostExport.h"

#include <functional>

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {

// Whether a login or a dialog takes this URL. application:openURL:options: passes on what its options say of the other
// two; both may be nil.
using URLDecision = std::function<bool(NSURL* url, NSString* sourceApplication, id annotation)>;

} // namespace Tarvik::Vorn::Host

// Any thread.
@interface FBSDKApplicationDelegate (Control)

// What the observers registered with the SDK say at the start. Default NO.
+ (void)setLaunchAnswer:(BOOL)answer;

// Who takes the URLs that are opened; called on the opening thread. An empty function, the default, stands for the SDK:
// it takes a URL whose scheme is the one that a showing login page comes back through ("fb", the app ID and the
// suffix), whatever its case. Taking a URL ends no login; AnswerLogin does.
+ (void)setURLDecision:(Tarvik::Vorn::Host::URLDecision)decision;

// Not started, the default decisions. The shared object stays the same.
+ (void)reset;

@end
