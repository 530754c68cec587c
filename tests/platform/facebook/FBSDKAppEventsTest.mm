// FBSDKAppEvents: which events are logged, which are dropped and how that is told, and when a session begins.
#include "FacebookPlatformTest.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"

// Keeps the errors posted with FBSDKAppEventsLoggingResultNotification as long as it lives.
@interface VornLoggingResultWatcher : NSObject {
@public
    std::vector<Tarvik::Vorn::RetainPtr<NSError*>> errors;
    std::thread::id thread; // Of the last post.
}
@end

@implementation VornLoggingResultWatcher

- (instancetype)init {
    self = [super init];
    if (self != nil) {
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(loggingEnded:)
                                                     name:FBSDKAppEventsLoggingResultNotification
                                                   object:nil];
    }
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)loggingEnded:(NSNotification*)notification {
    errors.emplace_back([notification object]);
    thread = std::this_thread::get_id();
}

@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::AppEvent;
using Host::AppEventForm;
using Host::PlatformCall;
using ::testing::ElementsAre;

FBSDKAppEvents* Events() {
    return [FBSDKAppEvents shared];
}

AppEvent LastEvent() {
    const std::vector<AppEvent> events = [FBSDKAppEvents events];
    if (events.empty()) {
        ADD_FAILURE() << "no event";
        return {};
    }
    return events.back();
}

// Whether an event of this name is accepted.
bool AcceptsName(NSString* name) {
    [Events() logEvent:name];
    return LastEvent().accepted;
}

// Whether an event with this one parameter is accepted.
bool AcceptsParameter(id key, id value) {
    [Events() logEvent:@"event" parameters:@{key : value}];
    return LastEvent().accepted;
}

// What is wrong with an event: "offender: rule".
std::string ObjectionTo(NSString* name, NSDictionary* parameters) {
    [Events() logEvent:name parameters:parameters];
    const AppEvent event = LastEvent();
    return event.accepted ? "accepted" : event.offender + ": " + event.rule;
}

NSString* Repeated(NSString* text, NSUInteger count) {
    return [@"" stringByPaddingToLength:count * [text length] withString:text startingAtIndex:0];
}

NSUInteger Sessions() {
    NSUInteger sessions = 0;
    for (const AppEvent& event : [FBSDKAppEvents events]) {
        sessions += event.form == AppEventForm::kActivatedApp ? 1 : 0;
    }
    return sessions;
}

class FacebookAppEvents : public FacebookPlatformTest {
protected:
    FacebookAppEvents() : mWatcher(AdoptNS([[VornLoggingResultWatcher alloc] init])) {}

    const std::vector<RetainPtr<NSError*>>& PostedErrors() const { return mWatcher.get()->errors; }
    std::thread::id PostingThread() const { return mWatcher.get()->thread; }

private:
    const RetainPtr<VornLoggingResultWatcher*> mWatcher;
};

TEST_F(FacebookAppEvents, AreOneSharedObject) {
    EXPECT_NE(Events(), nil);
    EXPECT_EQ([FBSDKAppEvents shared], Events());
}

#pragma mark - Logging

TEST_F(FacebookAppEvents, AreKeptInTheirOrder) {
    [Events() logEvent:@"first"];
    [Events() logEvent:@"second" parameters:@{@"key" : @"value"}];

    const std::vector<AppEvent> events = [FBSDKAppEvents events];
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(Text(events[0].name.get()), "first");
    EXPECT_EQ(Text(events[1].name.get()), "second");
    EXPECT_TRUE([events[1].parameters.get() isEqual:@{@"key" : @"value"}]);
}

TEST_F(FacebookAppEvents, WithoutParametersHaveAnEmptyDictionary) {
    [Events() logEvent:@"event"];

    const AppEvent event = LastEvent();
    EXPECT_NE(event.parameters.get(), nil);
    EXPECT_EQ([event.parameters.get() count], 0u);
    EXPECT_TRUE(event.accepted);
}

TEST_F(FacebookAppEvents, TellByWhichFormTheyWereLogged) {
    [Events() logEvent:@"event"];
    const AppEventForm first = LastEvent().form;
    [Events() logEvent:@"event" parameters:@{}];

    EXPECT_EQ(first, AppEventForm::kNameOnly);
    EXPECT_EQ(LastEvent().form, AppEventForm::kWithParameters);
}

TEST_F(FacebookAppEvents, MayHaveNilForParameters) {
    [Events() logEvent:@"event" parameters:nil];

    EXPECT_TRUE(LastEvent().accepted);
    EXPECT_EQ(LastEvent().parameters.get(), nil);
}

TEST_F(FacebookAppEvents, KeepWhatTheyHadWhenTheyWereLogged) {
    NSMutableString* const name = [NSMutableString stringWithString:@"event"];
    NSMutableDictionary* const parameters = [NSMutableDictionary dictionaryWithObject:@"value" forKey:@"key"];
    [Events() logEvent:name parameters:parameters];

    [name appendString:@"ful"];
    [parameters removeAllObjects];

    EXPECT_EQ(Text(LastEvent().name.get()), "event");
    EXPECT_EQ([LastEvent().parameters.get() count], 1u);
}

TEST_F(FacebookAppEvents, OutliveTheObjectsOfTheCaller) {
    int alive = 0;
    @autoreleasepool {
        [Events() logEvent:@"event" parameters:@{@"key" : [VornLifeProbe probeOf:&alive]}];
    }

    EXPECT_EQ(alive, 1);
    [FBSDKAppEvents reset];
    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookAppEvents, AreRecordedInTheFormOfTheCaller) {
    [Events() logEvent:@"first"];
    [Events() logEvent:@"second" parameters:@{@"b" : @1.5, @"a" : @"text"}];
    ObjectionTo(nil, nil);
    [Events() activateApp];

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"FBSDKAppEvents", "logEvent:", "\"first\"", true},
                            PlatformCall{"FBSDKAppEvents",
                                         "logEvent:parameters:", "\"second\", {\"a\":\"text\",\"b\":1.5}", true},
                            PlatformCall{"FBSDKAppEvents", "logEvent:parameters:", "nil, nil", true},
                            PlatformCall{"FBSDKAppEvents", "activateApp", "", true}));
}

TEST_F(FacebookAppEvents, ComeFromAnyThread) {
    OnAnotherThread([] { [Events() logEvent:@"event"]; });

    EXPECT_TRUE(LastEvent().accepted);
}

#pragma mark - Rules

TEST_F(FacebookAppEvents, HaveNamesOfOneToFortyUnits) {
    EXPECT_TRUE(AcceptsName(@"a"));
    EXPECT_TRUE(AcceptsName(Repeated(@"a", 40)));
    EXPECT_FALSE(AcceptsName(Repeated(@"a", 41)));
    EXPECT_FALSE(AcceptsName(@""));
    EXPECT_FALSE(AcceptsName(nil));
}

TEST_F(FacebookAppEvents, CountUTF16UnitsNotBytesNorCharacters) {
    EXPECT_TRUE(AcceptsName(Repeated(@"ä", 40)));
    EXPECT_TRUE(AcceptsName(Repeated(@"𝒜", 20)));
    EXPECT_FALSE(AcceptsName(Repeated(@"𝒜", 21)));
}

TEST_F(FacebookAppEvents, HaveNamesThatBeginWithALetterADigitOrAnUnderscore) {
    EXPECT_TRUE(AcceptsName(@"Äpfel"));
    EXPECT_TRUE(AcceptsName(@"名"));
    EXPECT_TRUE(AcceptsName(@"7"));
    EXPECT_TRUE(AcceptsName(@"_"));
    EXPECT_FALSE(AcceptsName(@"-a"));
    EXPECT_FALSE(AcceptsName(@" a"));
    EXPECT_FALSE(AcceptsName(@".a"));
}

TEST_F(FacebookAppEvents, HaveNamesThatGoOnWithHyphensAndBlanksToo) {
    EXPECT_TRUE(AcceptsName(@"a-b c_d 9"));
    EXPECT_TRUE(AcceptsName(@"cafe\u0301"));
    EXPECT_FALSE(AcceptsName(@"a.b"));
    EXPECT_FALSE(AcceptsName(@"a\n"));
    EXPECT_FALSE(AcceptsName(@"a\tb"));
    EXPECT_FALSE(AcceptsName(@"a\u00a0b"));
    EXPECT_FALSE(AcceptsName(@"a😀"));
}

TEST_F(FacebookAppEvents, HaveKeysThatFollowTheRulesOfNames) {
    EXPECT_TRUE(AcceptsParameter(Repeated(@"a", 40), @"value"));
    EXPECT_TRUE(AcceptsParameter(@"_a-b c", @"value"));
    EXPECT_FALSE(AcceptsParameter(Repeated(@"a", 41), @"value"));
    EXPECT_FALSE(AcceptsParameter(@"", @"value"));
    EXPECT_FALSE(AcceptsParameter(@"-a", @"value"));
    EXPECT_FALSE(AcceptsParameter(@"a.b", @"value"));
}

TEST_F(FacebookAppEvents, HaveKeysThatAreTexts) {
    EXPECT_FALSE(AcceptsParameter(@1, @"value"));
}

TEST_F(FacebookAppEvents, HaveTextsAndNumbersForValues) {
    EXPECT_TRUE(AcceptsParameter(@"key", @""));
    EXPECT_TRUE(AcceptsParameter(@"key", @1.5));
    EXPECT_TRUE(AcceptsParameter(@"key", @(YES)));
    EXPECT_TRUE(AcceptsParameter(@"key", Repeated(@"long ", 1000)));
    EXPECT_FALSE(AcceptsParameter(@"key", [NSNull null]));
    EXPECT_FALSE(AcceptsParameter(@"key", [NSDate date]));
    EXPECT_FALSE(AcceptsParameter(@"key", @[ @"value" ]));
    EXPECT_FALSE(AcceptsParameter(@"key", @{@"key" : @"value"}));
}

TEST_F(FacebookAppEvents, HaveAsManyParametersAsTheyLike) {
    NSMutableDictionary* const parameters = [NSMutableDictionary dictionary];
    for (int number = 0; number < 200; ++number) {
        [parameters setObject:@(number) forKey:[NSString stringWithFormat:@"key %d", number]];
    }

    [Events() logEvent:@"event" parameters:parameters];

    EXPECT_TRUE(LastEvent().accepted);
}

TEST_F(FacebookAppEvents, AreDroppedWholeForOneBadParameter) {
    [Events() logEvent:@"event" parameters:@{@"a" : @"good", @"b" : [NSNull null], @"c" : @"good"}];

    EXPECT_FALSE(LastEvent().accepted);
    EXPECT_EQ([LastEvent().parameters.get() count], 3u);
}

TEST_F(FacebookAppEvents, TellWhatWasWrongWithThem) {
    EXPECT_EQ(ObjectionTo(nil, nil), ": the name is empty");
    EXPECT_EQ(ObjectionTo(@"a.b", nil), "a.b: the name has a character that is not allowed there");
    EXPECT_EQ(ObjectionTo(Repeated(@"a", 41), nil), std::string(41, 'a') + ": the name is longer than 40 characters");
    EXPECT_EQ(ObjectionTo(@"event", (@{@"" : @"value"})), ": the key is empty");
    EXPECT_EQ(ObjectionTo(@"event", (@{@"a.b" : @"value"})), "a.b: the key has a character that is not allowed there");
    EXPECT_EQ(ObjectionTo(@"event", (@{@12 : @"value"})), "12: the key is no text");
    EXPECT_EQ(ObjectionTo(@"event", (@{@"key" : [NSNull null]})), "key: the value is neither a text nor a number");
    EXPECT_EQ(ObjectionTo(@"event", (@{@"key" : @"value"})), "accepted");
}

TEST_F(FacebookAppEvents, TellOfTheNameBeforeTheParametersAndOfThoseByTheirKeys) {
    EXPECT_EQ(ObjectionTo(@"a.b", (@{@"." : @"value"})), "a.b: the name has a character that is not allowed there");
    EXPECT_EQ(ObjectionTo(@"event", (@{@"c." : @"v", @"a" : [NSNull null], @"b." : @"v"})),
              "a: the value is neither a text nor a number");
}

#pragma mark - The notification

TEST_F(FacebookAppEvents, PostNothingWhenAccepted) {
    [Events() logEvent:@"event"];

    EXPECT_TRUE(PostedErrors().empty());
}

TEST_F(FacebookAppEvents, PostOneCore5ErrorWhenDropped) {
    [Events() logEvent:@"event" parameters:@{@"a." : @"value", @"b." : [NSNull null]}];

    ASSERT_EQ(PostedErrors().size(), 1u);
    NSError* const error = PostedErrors()[0].get();
    EXPECT_EQ(Text([error domain]), "com.facebook.sdk.core");
    EXPECT_EQ([error code], 5);
    EXPECT_EQ(Text([[error userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]),
              "Event not logged: the key has a character that is not allowed there ('a.').");
}

TEST_F(FacebookAppEvents, PostOnTheThreadThatLogged) {
    std::thread::id caller;

    OnAnotherThread([&caller] {
        caller = std::this_thread::get_id();
        [Events() logEvent:@""];
    });

    EXPECT_EQ(PostingThread(), caller);
}

TEST_F(FacebookAppEvents, NameTheirNotificationAsTheSDKDoes) {
    EXPECT_EQ(Text(FBSDKAppEventsLoggingResultNotification),
              "com.facebook.sdk:FBSDKAppEventsLoggingResultNotification");
}

#pragma mark - Tracking

TEST_F(FacebookAppEvents, AreDroppedSilentlyWhileTrackingIsDisallowed) {
    [FBSDKAppEvents setTrackingAllowed:NO];

    EXPECT_EQ(ObjectionTo(@"event", nil), ": tracking is disallowed");
    EXPECT_EQ(ObjectionTo(@"a.b", nil), ": tracking is disallowed");
    EXPECT_TRUE(PostedErrors().empty());
}

TEST_F(FacebookAppEvents, AreAcceptedOnceTrackingIsAllowedAgain) {
    [FBSDKAppEvents setTrackingAllowed:NO];

    [FBSDKAppEvents setTrackingAllowed:YES];

    EXPECT_TRUE(AcceptsName(@"event"));
}

#pragma mark - Sessions

TEST_F(FacebookAppEvents, FirstActivationBeginsASession) {
    [Events() activateApp];

    EXPECT_EQ(Sessions(), 1u);
    EXPECT_EQ(Text(LastEvent().name.get()), "fb_mobile_activate_app");
    EXPECT_TRUE(LastEvent().accepted);
}

TEST_F(FacebookAppEvents, ActivationWithinAMinuteIsHarmless) {
    [Events() activateApp];
    Host::AdvanceClock(60);

    [Events() activateApp];

    EXPECT_EQ(Sessions(), 1u);
}

TEST_F(FacebookAppEvents, ActivationAfterMoreThanAMinuteBeginsAnotherSession) {
    [Events() activateApp];
    Host::AdvanceClock(60);
    Host::AdvanceClock(0.5);

    [Events() activateApp];

    EXPECT_EQ(Sessions(), 2u);
}

TEST_F(FacebookAppEvents, MinuteCountsFromTheBeginningOfTheLastSession) {
    [Events() activateApp];
    Host::AdvanceClock(61);
    [Events() activateApp];
    Host::AdvanceClock(40);
    [Events() activateApp];
    Host::AdvanceClock(40);

    [Events() activateApp];

    EXPECT_EQ(Sessions(), 3u);
}

TEST_F(FacebookAppEvents, ActivationOffTheMainThreadIsADeveloperErrorAndNoSession) {
    OnAnotherThread([] { [Events() activateApp]; });

    EXPECT_EQ(Sessions(), 0u);
    EXPECT_EQ([FBSDKAppEvents developerErrorCount], 1u);
}

TEST_F(FacebookAppEvents, ActivationOnTheMainThreadIsNoDeveloperError) {
    [Events() activateApp];

    EXPECT_EQ([FBSDKAppEvents developerErrorCount], 0u);
}

TEST_F(FacebookAppEvents, CountEveryActivationByTheApp) {
    [Events() activateApp];
    [Events() activateApp];
    OnAnotherThread([] { [Events() activateApp]; });
    Host::ActivateApp();

    EXPECT_EQ([FBSDKAppEvents activateAppCount], 3u);
}

TEST_F(FacebookAppEvents, AreToldToTheListenerWithTheirVerdict) {
    std::vector<std::string> told;
    Host::SetAppEventListener([&told](const AppEvent& event) {
        told.push_back(Text(event.name.get()) + (event.accepted ? " accepted" : " dropped: " + event.rule));
    });

    [Events() logEvent:@"good"];
    [Events() logEvent:@"good" parameters:@{@"key" : @[]}];
    [FBSDKAppEvents setTrackingAllowed:NO];
    [Events() logEvent:@"good"];

    EXPECT_THAT(told, ElementsAre("good accepted", "good dropped: the value is neither a text nor a number",
                                  "good dropped: tracking is disallowed"));
}

TEST_F(FacebookAppEvents, OfTheSDKItselfAreToldToTheListenerToo) {
    std::vector<AppEventForm> told;
    Host::SetAppEventListener([&told](const AppEvent& event) { told.push_back(event.form); });

    Host::ActivateApp();

    EXPECT_THAT(told, ElementsAre(AppEventForm::kActivatedApp));
}

TEST_F(FacebookAppEvents, AreToldOnTheLoggingThreadBeforeADropIsPosted) {
    std::thread::id logging;
    std::thread::id telling;
    size_t posted = 0;
    Host::SetAppEventListener([&](const AppEvent&) {
        telling = std::this_thread::get_id();
        posted = PostedErrors().size();
    });

    OnAnotherThread([&logging] {
        logging = std::this_thread::get_id();
        [Events() logEvent:@"b.a.d"];
    });

    EXPECT_EQ(telling, logging);
    EXPECT_EQ(posted, 0u);
    EXPECT_EQ(PostedErrors().size(), 1u);
}

TEST_F(FacebookAppEvents, MayBeLoggedByTheListenerWhichMayEndItself) {
    Host::SetAppEventListener([](const AppEvent&) {
        Host::SetAppEventListener({});
        [Events() logEvent:@"second"];
    });

    [Events() logEvent:@"first"];

    ASSERT_EQ([FBSDKAppEvents events].size(), 2u);
    EXPECT_EQ(Text([FBSDKAppEvents events][1].name.get()), "second");
}

TEST_F(FacebookAppEvents, AreToldNobodyAfterTheReset) {
    int told = 0;
    Host::SetAppEventListener([&told](const AppEvent&) { ++told; });

    Host::ResetPlatform();
    [Events() logEvent:@"event"];

    EXPECT_EQ(told, 0);
}

TEST_F(FacebookAppEvents, AreForgottenByTheReset) {
    [FBSDKAppEvents setTrackingAllowed:NO];
    [Events() activateApp];
    OnAnotherThread([] { [Events() activateApp]; });

    Host::ResetPlatform();

    EXPECT_TRUE([FBSDKAppEvents events].empty());
    EXPECT_EQ([FBSDKAppEvents activateAppCount], 0u);
    EXPECT_EQ([FBSDKAppEvents developerErrorCount], 0u);
    [Events() activateApp];
    EXPECT_EQ(Sessions(), 1u);
    EXPECT_TRUE(LastEvent().accepted);
}

} // namespace
} // namespace Tarvik::Vorn::Test
