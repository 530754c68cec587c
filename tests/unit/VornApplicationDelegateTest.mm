// The hooks on the core's application delegate: launch in its nine steps, both URL opens, activation, teardown, and that
// they are installed once. The delegate is sent what the system sends it; the game's own methods are the test's.

#include "PluginTest.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "PlatformCalls.h"
#include "UIKit/UIApplication+Control.h"
#include "VornApplicationDelegate.h"
#include "VornApplicationHandlers.h"
#include "VornConfig.h"
#include "VornLogSink.h"
#include "VornTraceSink.h"

#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>
#import <objc/runtime.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* kFile = "VornApplicationDelegate+Facebook.mm";
constexpr const char* kLaunch = "-[VornApplicationDelegate(Facebook) fb_application:options:]";

class HooksTest : public PluginTest {
protected:
    HooksTest() {
        mDelegate = AdoptNS([[VornApplicationDelegate alloc] init]);
        [FBSDKSettings setSDKVersion:@"17.4.0"];
    }

    ~HooksTest() override { SetApplicationHandlers({}); }

    VornApplicationDelegate* Delegate() const { return mDelegate.get(); }
    void DestroyDelegate() { mDelegate = {}; }

    BOOL Launch(NSDictionary* options = nil) const {
        return [Delegate() application:[UIApplication sharedApplication] didFinishLaunchingWithOptions:options];
    }

    BOOL Open(NSString* url, NSDictionary* options = @{}) const {
        return [Delegate() application:[UIApplication sharedApplication]
                               openURL:[NSURL URLWithString:url]
                               options:options];
    }

    BOOL OpenFrom(NSString* url, NSString* source, id annotation) const {
        return [Delegate() application:[UIApplication sharedApplication]
                               openURL:[NSURL URLWithString:url]
                     sourceApplication:source
                            annotation:annotation];
    }

    // Everything that can be seen of a launch, in one list, with the game's own method in its place.
    void NoteEverything() {
        Host::SetPlatformCallListener([this](const Host::PlatformCall& call) {
            Log().Note(call.className + " " + call.selector + " " + call.arguments);
        });
        SetApplicationHandlers({.launch =
                                    [this](NSDictionary*) {
                                        Log().Note("the game launches");
                                        return true;
                                    },
                                .openURL =
                                    [this](NSURL*, NSDictionary*) {
                                        Log().Note("the game opens");
                                        return true;
                                    },
                                .openURLFromApplication =
                                    [this](NSURL*, NSString*, id) {
                                        Log().Note("the game opens from another app");
                                        return true;
                                    }});
    }

private:
    RetainPtr<VornApplicationDelegate*> mDelegate;
};

// ---- Launch

TEST_F(HooksTest, LaunchRunsItsStepsInOrder) {
    SetConfigValue("FACEBOOK_APP_ID", "4711");
    SetConfigValue("FACEBOOK_DISPLAYNAME", "The Game");
    NoteEverything();

    Launch();
    Host::SetPlatformCallListener({});

    EXPECT_THAT(Log().Transcript(),
                ElementsAre(HasSubstr("FBSDKApplicationDelegate application:didFinishLaunchingWithOptions:"),
                            HasSubstr("log FACEBOOK_APP_ID : 4711"), "FBSDKSettings setAppID: \"4711\"",
                            "FBSDKSettings setDisplayName: \"The Game\"", "FBSDKAppEvents activateApp ", "trace ",
                            "the game launches"));
}

TEST_F(HooksTest, LaunchRegistersForActivationsBeforeTheGamesOwnMethod) {
    NSUInteger activationsDuringLaunch = 0;
    SetApplicationHandlers({.launch = [&](NSDictionary*) {
        const NSUInteger before = [FBSDKAppEvents activateAppCount];
        Host::BecomeActive();
        activationsDuringLaunch = [FBSDKAppEvents activateAppCount] - before;
        return true;
    }});

    Launch();

    EXPECT_EQ(activationsDuringLaunch, 1u);
}

TEST_F(HooksTest, LaunchSaysWhichVersionItIs) {
    SetConfigValue("FACEBOOK_APP_ID", "4711");
    SetConfigValue("FACEBOOK_DISPLAYNAME", "The Game");

    Launch();

    EXPECT_THAT(Log().LinesOf(kFile),
                ElementsAre(Debug(kFile, kLaunch,
                                  "FACEBOOK_APP_ID : 4711, FACEBOOK_DISPLAYNAME : The Game version is:17.4.0, "
                                  "TarvikVersion: TARVIK_VERSION_VORN_FACEBOOK_5.30.001")));
}

TEST_F(HooksTest, LaunchTracesThePlugin) {
    std::vector<VornTraceEntry> entries;
    SetTraceSink([&](const VornTraceEntry& entry) { entries.push_back(entry); });

    Launch();
    SetTraceSink({});

    ASSERT_THAT(entries, SizeIs(1));
    EXPECT_EQ(entries[0].kind, VornTraceKind::kPlugin);
    EXPECT_EQ(entries[0].file, kFile);
    EXPECT_EQ(entries[0].function, kLaunch);
    EXPECT_EQ(entries[0].seqID, "");
    EXPECT_EQ(entries[0].extraJson, "");
    EXPECT_EQ(entries[0].pluginName, "VornFacebook");
    EXPECT_EQ(entries[0].pluginVersion, "5.30.001.7206");
    EXPECT_EQ(entries[0].channel, "Facebook");
    EXPECT_EQ(entries[0].sdkVersion, "17.4.0");
}

TEST_F(HooksTest, KeptWithoutConfigurationTheEmptyTextsAreSet) {
    Launch();

    EXPECT_THAT(Log().LinesOf(kFile).at(0).text, "FACEBOOK_APP_ID : , FACEBOOK_DISPLAYNAME :  version is:17.4.0, "
                                                 "TarvikVersion: TARVIK_VERSION_VORN_FACEBOOK_5.30.001");
    EXPECT_TRUE([[[FBSDKSettings sharedSettings] appID] isEqual:@""]);
    EXPECT_TRUE([[[FBSDKSettings sharedSettings] displayName] isEqual:@""]);
    EXPECT_EQ([FBSDKAppEvents activateAppCount], 1u);
}

TEST_F(HooksTest, AnAbsentSdkVersionPrintsAsEmpty) {
    [FBSDKSettings setSDKVersion:nil];

    Launch();

    EXPECT_THAT(Log().LinesOf(kFile).at(0).text, HasSubstr(" version is:, TarvikVersion"));
}

TEST_F(HooksTest, LaunchPassesItsArgumentsOn) {
    NSDictionary* const options = @{UIApplicationLaunchOptionsURLKey : [NSURL URLWithString:@"fb4711://x"]};
    RetainPtr<NSDictionary*> seen;
    SetApplicationHandlers({.launch = [&](NSDictionary* given) {
        seen = RetainPtr<NSDictionary*>(given);
        return true;
    }});

    Launch(options);

    EXPECT_EQ(seen.get(), options);
    const auto calls = Host::PlatformCalls::All();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls[0].selector, "application:didFinishLaunchingWithOptions:");
    EXPECT_THAT(calls[0].arguments, HasSubstr("UIApplication"));
}

TEST_F(HooksTest, LaunchAnswersWhatTheGamesOwnMethodAnswers) {
    for (const bool game : {true, false}) {
        for (const BOOL facebook : {YES, NO}) {
            [FBSDKApplicationDelegate reset];
            [FBSDKApplicationDelegate setLaunchAnswer:facebook];
            SetApplicationHandlers({.launch = [game](NSDictionary*) { return game; }});

            EXPECT_EQ(Launch() != NO, game) << "Facebook's answer is " << (facebook ? "YES" : "NO");
        }
    }
}

TEST_F(HooksTest, TheGamesOwnLaunchMethodRunsOnce) {
    int launches = 0;
    SetApplicationHandlers({.launch = [&](NSDictionary*) {
        launches += 1;
        return true;
    }});

    Launch();

    EXPECT_EQ(launches, 1);
}

// ---- URL opens

TEST_F(HooksTest, AURLGoesToFacebookFirstAndToTheGameSecond) {
    NoteEverything();

    EXPECT_TRUE(Open(@"fb4711://authorize"));
    Host::SetPlatformCallListener({});

    EXPECT_THAT(Log().Transcript(),
                ElementsAre(AllOf(HasSubstr("FBSDKApplicationDelegate application:openURL:options:"),
                                  HasSubstr("fb4711://authorize")),
                            "the game opens"));
}

TEST_F(HooksTest, AURLWithItsSourceGoesToFacebookFirstAndToTheGameSecond) {
    NoteEverything();

    EXPECT_TRUE(OpenFrom(@"fb4711://authorize", @"com.apple.mobilesafari", @"note"));
    Host::SetPlatformCallListener({});

    EXPECT_THAT(
        Log().Transcript(),
        ElementsAre(AllOf(HasSubstr("FBSDKApplicationDelegate application:openURL:sourceApplication:annotation:"),
                          HasSubstr("com.apple.mobilesafari"), Not(EndsWith("nil"))),
                    "the game opens from another app"));
}

TEST_F(HooksTest, WhetherFacebookTookAURLDoesNotChangeTheAnswer) {
    for (const bool game : {true, false}) {
        for (const bool facebook : {true, false}) {
            [FBSDKApplicationDelegate setURLDecision:[facebook](NSURL*, NSString*, id) { return facebook; }];
            SetApplicationHandlers({.openURL = [game](NSURL*, NSDictionary*) { return game; },
                                    .openURLFromApplication = [game](NSURL*, NSString*, id) { return game; }});

            EXPECT_EQ(Open(@"fb4711://x") != NO, game) << facebook;
            EXPECT_EQ(OpenFrom(@"fb4711://x", @"s", nil) != NO, game) << facebook;
        }
    }
}

TEST_F(HooksTest, URLOpensPassTheirArgumentsOnUnchanged) {
    NSDictionary* const options = @{UIApplicationOpenURLOptionsSourceApplicationKey : @"com.example"};
    NSURL* const url = [NSURL URLWithString:@"fb4711://x"];
    bool same = false;
    bool sameFrom = false;
    SetApplicationHandlers({.openURL =
                                [&](NSURL* given, NSDictionary* givenOptions) {
                                    same = given == url && givenOptions == options;
                                    return true;
                                },
                            .openURLFromApplication =
                                [&](NSURL* given, NSString* source, id annotation) {
                                    sameFrom = given == url && source == nil && annotation == options;
                                    return true;
                                }});

    [Delegate() application:[UIApplication sharedApplication] openURL:url options:options];
    [Delegate() application:[UIApplication sharedApplication] openURL:url sourceApplication:nil annotation:options];

    EXPECT_TRUE(same);
    EXPECT_TRUE(sameFrom);
}

TEST_F(HooksTest, URLOpensWriteNoLogAndNoTrace) {
    Open(@"fb4711://x");
    OpenFrom(@"fb4711://x", @"s", nil);

    EXPECT_THAT(Log().Transcript(), IsEmpty());
}

// ---- Activation and teardown

TEST_F(HooksTest, EveryActivationAfterLaunchIsToldToFacebook) {
    Launch();
    ASSERT_EQ([FBSDKAppEvents activateAppCount], 1u);

    Host::BecomeActive();
    Host::BecomeActive();

    EXPECT_EQ([FBSDKAppEvents activateAppCount], 3u);
}

TEST_F(HooksTest, BeforeLaunchActivationsAreNotTold) {
    Host::BecomeActive();

    EXPECT_EQ([FBSDKAppEvents activateAppCount], 0u);
}

TEST_F(HooksTest, ActivationsOfAnySenderCount) {
    Launch();

    [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidBecomeActiveNotification object:nil];

    EXPECT_EQ([FBSDKAppEvents activateAppCount], 2u);
}

TEST_F(HooksTest, ADestroyedDelegateIsTakenOutOfTheNotificationCentre) {
    Launch();
    [[NSNotificationCenter defaultCenter] addObserver:Delegate()
                                             selector:@selector(description)
                                                 name:@"SomethingElse"
                                               object:nil];

    DestroyDelegate();
    Host::BecomeActive();
    [[NSNotificationCenter defaultCenter] postNotificationName:@"SomethingElse" object:nil];

    EXPECT_EQ([FBSDKAppEvents activateAppCount], 1u); // And nobody was sent a message who is no more.
}

TEST_F(HooksTest, ADestroyedDelegateGivesItsMemoryBack) {
    const Class cls = [VornApplicationDelegate class];
    const bool counting = GSDebugAllocationActive(YES);
    const int before = GSDebugAllocationCount(cls);
    auto delegate = AdoptNS([[VornApplicationDelegate alloc] init]);
    ASSERT_EQ(GSDebugAllocationCount(cls), before + 1);

    delegate = {};

    EXPECT_EQ(GSDebugAllocationCount(cls), before);
    GSDebugAllocationActive(counting);
}

// ---- Installation

TEST_F(HooksTest, LoadingTwiceExchangesNothing) {
    const auto implementations = [] {
        std::vector<IMP> all;
        for (const char* name : {"application:didFinishLaunchingWithOptions:", "fb_application:options:",
                                 "application:openURL:sourceApplication:annotation:",
                                 "fb_application:openURL:sourceApplication:annotation:", "application:openURL:options:",
                                 "fb_application:openURL:options:"}) {
            all.push_back(method_getImplementation(
                class_getInstanceMethod([VornApplicationDelegate class], sel_registerName(name))));
        }
        return all;
    };
    const auto before = implementations();
    const Method load = class_getClassMethod([VornApplicationDelegate class], @selector(load));
    ASSERT_NE(load, nullptr);

    reinterpret_cast<void (*)(id, SEL)>(method_getImplementation(load))([VornApplicationDelegate class],
                                                                        @selector(load));

    EXPECT_EQ(implementations(), before);
}

TEST_F(HooksTest, EachHookHasAnImplementationOfItsOwn) {
    const auto implementation = [](const char* name) {
        return method_getImplementation(
            class_getInstanceMethod([VornApplicationDelegate class], sel_registerName(name)));
    };

    EXPECT_NE(implementation("application:didFinishLaunchingWithOptions:"), implementation("fb_application:options:"));
    EXPECT_NE(implementation("application:openURL:options:"), implementation("fb_application:openURL:options:"));
    EXPECT_NE(implementation("application:openURL:sourceApplication:annotation:"),
              implementation("fb_application:openURL:sourceApplication:annotation:"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
