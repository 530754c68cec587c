// What a test or the simulator sees and decides of app events.
//
// Nothing is sent anywhere and no queue ever fills: every event is kept in order until the next reset, with the SDK's
// verdict. Time is a clock of the stand-in's own, which stands still until it is advanced.
#pragma once

#include "HostExport.h"
#include "VornRetainPtr.h"

#include <functional>
#include <string>
#include <vector>

#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {

enum class AppEventForm {
    kNameOnly,       // logEvent:
    kWithParameters, // logEvent:parameters:
    kActivatedApp,   // The event of the SDK itself, "fb_mobile_activate_app", that tells of a new session.
};

struct AppEvent {
    RetainPtr<NSString*> name;           // A copy; nil when nil was passed.
    RetainPtr<NSDictionary*> parameters; // A copy; nil when nil was passed, empty for the forms without.
    AppEventForm form = AppEventForm::kWithParameters;
    bool accepted = true;
    // Of a dropped event: the name or the key at fault, and what is wrong, in English. The name is looked at first,
    // then the parameters by the order of their keys. Empty for an accepted event; the offender also when it is nil.
    std::string offender;
    std::string rule;
};

using AppEventListener = std::function<void(const AppEvent&)>;

// From now on `listener` gets each event right after it was accepted or dropped, on the thread that logged it and
// before a drop is posted. No lock is held: it may call any platform function, and may be called on several threads at
// a time. An empty function ends it, and so does ResetPlatform; a call on another thread may still be under way then.
VORN_HOST_EXPORT void SetAppEventListener(AppEventListener listener);

// What activateApp does, but as the SDK itself does it: not entered in PlatformCalls nor in activateAppCount.
VORN_HOST_EXPORT void ActivateApp();

// Lets seconds pass on the clock of the app events. Any thread.
VORN_HOST_EXPORT void AdvanceClock(NSTimeInterval seconds);

} // namespace Tarvik::Vorn::Host

// Any thread.
@interface FBSDKAppEvents (Control)

// Every event since the last reset, in order: logged by the app or by the SDK itself, accepted or dropped.
+ (std::vector<Tarvik::Vorn::Host::AppEvent>)events;

// How many times the app called activateApp, on whatever thread.
+ (NSUInteger)activateAppCount;

// How many times activateApp was called off the main thread: the SDK writes a developer error then, and does no more.
+ (NSUInteger)developerErrorCount;

// NO: the user has disallowed tracking, and the server has not allowed to collect events anyway. Every event is dropped
// then, and nothing is posted. Default YES.
+ (void)setTrackingAllowed:(BOOL)allowed;

// No listener, no events, counts of 0, no session yet, the clock at its start, tracking allowed. The shared object
// stays the same.
+ (void)reset;

@end
