#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"

#include "CallText.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "History.h"
#include "PlatformCalls.h"

#include <mutex>
#include <optional>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

VORN_HOST_EXPORT NSNotificationName const FBSDKAppEventsLoggingResultNotification =
    @"com.facebook.sdk:FBSDKAppEventsLoggingResultNotification";

namespace {

constexpr const char* kClassName = "FBSDKAppEvents";
constexpr NSUInteger kLongestIdentifier = 40; // UTF-16 units.
constexpr NSTimeInterval kSessionInterval = 60;

struct AppEventsState {
    std::vector<AppEvent> events;
    NSUInteger activations = 0;
    NSUInteger developerErrors = 0;
    bool trackingAllowed = true;
    NSTimeInterval now = 0;
    std::optional<NSTimeInterval> lastSession; // When the last session began.
};

struct AppEvents {
    std::mutex mutex;
    AppEventsState current;
    AppEventListener listener;
};

// Never destroyed: events may come until the process ends.
AppEvents& TheAppEvents() {
    static auto& appEvents = *new AppEvents;
    return appEvents;
}

// Why an event is dropped.
struct Objection {
    std::string offender;
    std::string rule;
};

// Letters, their marks and numbers of any script count, as they do in NSCharacterSet's alphanumericCharacterSet. They are
// told apart by a regular expression: character sets take single UTF-16 units, and many letters have two.
bool HasIdentifiersCharacters(NSString* text) {
    static NSRegularExpression* const identifier =
        [[NSRegularExpression alloc] initWithPattern:@"\\A[\\p{L}\\p{M}\\p{N}_][\\p{L}\\p{M}\\p{N}_ -]*\\z"
                                             options:static_cast<NSRegularExpressionOptions>(0)
                                               error:nullptr];
    return [identifier numberOfMatchesInString:text
                                       options:static_cast<NSMatchingOptions>(0)
                                         range:NSMakeRange(0, [text length])] == 1;
}

// What `kind` ("name" or "key") breaks a rule, if it does. Nil counts as empty.
std::optional<Objection> ObjectionToIdentifier(const std::string& kind, NSString* text) {
    const NSUInteger length = [text length];
    if (length == 0) {
        return Objection{"", "the " + kind + " is empty"};
    }
    if (length > kLongestIdentifier) {
        return Objection{PlainText(text), "the " + kind + " is longer than 40 characters"};
    }
    if (!HasIdentifiersCharacters(text)) {
        return Objection{PlainText(text), "the " + kind + " has a character that is not allowed there"};
    }
    return std::nullopt;
}

std::optional<Objection> ObjectionToParameter(id key, id value) {
    if (![key isKindOfClass:[NSString class]]) {
        return Objection{PlainText([key description]), "the key is no text"};
    }
    if (std::optional<Objection> objection = ObjectionToIdentifier("key", key)) {
        return objection;
    }
    if (![value isKindOfClass:[NSString class]] && ![value isKindOfClass:[NSNumber class]]) {
        return Objection{PlainText(key), "the value is neither a text nor a number"};
    }
    return std::nullopt;
}

// A dictionary has no order: of several objections it is the one with the first offender.
std::optional<Objection> ObjectionToParameters(NSDictionary* parameters) {
    std::optional<Objection> first;
    for (const id key in parameters) {
        const std::optional<Objection> objection = ObjectionToParameter(key, [parameters objectForKey:key]);
        if (objection && (!first || objection->offender < first->offender)) {
            first = objection;
        }
    }
    return first;
}

void PostDrop(const Objection& objection) {
    NSString* const message =
        [NSString stringWithFormat:@"Event not logged: %s ('%s').", objection.rule.c_str(), objection.offender.c_str()];
    [[NSNotificationCenter defaultCenter]
        postNotificationName:FBSDKAppEventsLoggingResultNotification
                      object:MakeSDKError(FBSDKErrorDomain, FBSDKErrorAppEventsFlush, message)];
}

void Log(NSString* name, NSDictionary* parameters, AppEventForm form) {
    AppEvent event;
    event.name = AdoptNS<NSString*>([name copy]);
    event.parameters = AdoptNS<NSDictionary*>([parameters copy]);
    event.form = form;

    std::optional<Objection> objection = ObjectionToIdentifier("name", event.name.get());
    if (!objection) {
        objection = ObjectionToParameters(event.parameters.get());
    }

    AppEvents& appEvents = TheAppEvents();
    AppEventListener listener;
    {
        const std::lock_guard lock(appEvents.mutex);
        listener = appEvents.listener;
        if (!appEvents.current.trackingAllowed) {
            event.accepted = false;
            event.rule = "tracking is disallowed";
            objection.reset(); // Nothing looked at the event.
        } else if (objection) {
            event.accepted = false;
            event.offender = objection->offender;
            event.rule = objection->rule;
        }
        if (IsHistoryKept()) {
            appEvents.current.events.push_back(event);
        }
    }
    if (listener) {
        listener(event);
    }
    if (objection) {
        PostDrop(*objection);
    }
}

// Whether a new session begins with an activation now; it has begun then.
bool BeginSession() {
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    AppEventsState& current = appEvents.current;
    if (current.lastSession && current.now - *current.lastSession <= kSessionInterval) {
        return false;
    }
    current.lastSession = current.now;
    return true;
}

} // namespace

@implementation FBSDKAppEvents

+ (FBSDKAppEvents*)shared {
    static FBSDKAppEvents* const shared = [[FBSDKAppEvents alloc] init];
    return shared;
}

- (instancetype)init {
    return [super init];
}

- (void)logEvent:(FBSDKAppEventName)eventName {
    PlatformCalls::Record(kClassName, "logEvent:", QuotedText(eventName));
    Log(eventName, @{}, AppEventForm::kNameOnly);
}

- (void)logEvent:(FBSDKAppEventName)eventName parameters:(NSDictionary<FBSDKAppEventParameterName, id>*)parameters {
    PlatformCalls::Record(kClassName,
                          "logEvent:parameters:", JoinArguments({QuotedText(eventName), DictionaryText(parameters)}));
    Log(eventName, parameters, AppEventForm::kWithParameters);
}

- (void)activateApp {
    PlatformCalls::Record(kClassName, "activateApp");
    {
        AppEvents& appEvents = TheAppEvents();
        const std::lock_guard lock(appEvents.mutex);
        ++appEvents.current.activations;
    }
    ActivateApp();
}

#pragma mark - Control

+ (std::vector<AppEvent>)events {
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    return appEvents.current.events;
}

+ (NSUInteger)activateAppCount {
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    return appEvents.current.activations;
}

+ (NSUInteger)developerErrorCount {
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    return appEvents.current.developerErrors;
}

+ (void)setTrackingAllowed:(BOOL)allowed {
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    appEvents.current.trackingAllowed = allowed != NO;
}

+ (void)reset {
    SetAppEventListener({});
    AppEventsState first;
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    std::swap(appEvents.current, first);
    // The former events are released after the lock.
}

@end

namespace Tarvik::Vorn::Host {

void SetAppEventListener(AppEventListener listener) {
    AppEvents& appEvents = TheAppEvents();
    {
        const std::lock_guard lock(appEvents.mutex);
        std::swap(appEvents.listener, listener);
    }
    // The former listener ends here, outside the lock.
}

void ActivateApp() {
    if (![NSThread isMainThread]) {
        AppEvents& appEvents = TheAppEvents();
        const std::lock_guard lock(appEvents.mutex);
        ++appEvents.current.developerErrors;
        return;
    }
    if (BeginSession()) {
        Log(@"fb_mobile_activate_app", @{}, AppEventForm::kActivatedApp);
    }
}

void AdvanceClock(NSTimeInterval seconds) {
    AppEvents& appEvents = TheAppEvents();
    const std::lock_guard lock(appEvents.mutex);
    appEvents.current.now += seconds;
}

} // namespace Tarvik::Vorn::Host
