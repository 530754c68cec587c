// FBSDKApplicationDelegate: the start of the SDK, its own look at the app's activations, and the URLs it takes.
#include "FacebookPlatformTest.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"
#include "UIKit/UIApplication+Control.h"

namespace Tarvik::Vorn::Test {
namespace {

using Host::PlatformCall;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

FBSDKApplicationDelegate* Delegate() {
    return [FBSDKApplicationDelegate sharedInstance];
}

BOOL Launch(NSDictionary* options = nil) {
    return [Delegate() application:[UIApplication sharedApplication] didFinishLaunchingWithOptions:options];
}

BOOL Open(NSString* url, NSDictionary* options = @{}) {
    return [Delegate() application:[UIApplication sharedApplication] openURL:[NSURL URLWithString:url] options:options];
}

BOOL OpenFrom(NSString* url, NSString* sourceApplication, id annotation) {
    return [Delegate() application:[UIApplication sharedApplication]
                           openURL:[NSURL URLWithString:url]
                 sourceApplication:sourceApplication
                        annotation:annotation];
}

// Shows a login page, or fails to with refused permissions.
void LogIn(NSArray<NSString*>* permissions = @[ @"email" ]) {
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logInWithPermissions:permissions fromViewController:nil handler:nil];
}

void RegisterURLTypes(NSArray<NSString*>* schemes) {
    Host::RegisterURLSchemes([schemes arrayByAddingObject:@"fb1000000000000001"]);
}

class FacebookApplicationDelegate : public FacebookPlatformTest {};

TEST_F(FacebookApplicationDelegate, IsOneSharedObject) {
    EXPECT_NE(Delegate(), nil);
    EXPECT_EQ([FBSDKApplicationDelegate sharedInstance], Delegate());
}

#pragma mark - Start

TEST_F(FacebookApplicationDelegate, StartAnswersNoWithoutAnObserver) {
    EXPECT_EQ(Launch(), NO);
}

TEST_F(FacebookApplicationDelegate, StartAnswersYesWhenAnObserverSaysSo) {
    [FBSDKApplicationDelegate setLaunchAnswer:YES];

    EXPECT_EQ(Launch(), YES);
}

TEST_F(FacebookApplicationDelegate, SecondStartAnswersNo) {
    [FBSDKApplicationDelegate setLaunchAnswer:YES];
    Launch();

    EXPECT_EQ(Launch(), NO);
}

TEST_F(FacebookApplicationDelegate, EveryStartIsRecordedWithItsOptions) {
    Launch(@{UIApplicationLaunchOptionsURLKey : [NSURL URLWithString:@"fb1://x"], @"b" : @2, @"a" : @"text"});
    Launch();

    const std::string urlClass = class_getName(object_getClass([NSURL URLWithString:@"fb1://x"]));
    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"FBSDKApplicationDelegate", "application:didFinishLaunchingWithOptions:",
                                         "<UIApplication>, {\"UIApplicationLaunchOptionsURLKey\":<" + urlClass +
                                             ">,\"a\":\"text\",\"b\":2}",
                                         true},
                            PlatformCall{"FBSDKApplicationDelegate",
                                         "application:didFinishLaunchingWithOptions:", "<UIApplication>, nil", true}));
}

TEST_F(FacebookApplicationDelegate, StartRaisesWhenTheAppClaimsFbapi) {
    RegisterURLTypes(@[ @"fbapi" ]);

    EXPECT_EQ(RaisedBy([] { Launch(); }), "InvalidOperationException");
}

TEST_F(FacebookApplicationDelegate, StartRaisesWhenTheAppClaimsMessengersShareScheme) {
    RegisterURLTypes(@[ @"fb-messenger-share-api" ]);

    EXPECT_EQ(RaisedBy([] { Launch(); }), "InvalidOperationException");
}

TEST_F(FacebookApplicationDelegate, StartDoesNotRaiseForOtherSchemes) {
    RegisterURLTypes(@[ @"fbauth2", @"fbapi2" ]);

    EXPECT_EQ(RaisedBy([] { Launch(); }), "");
}

TEST_F(FacebookApplicationDelegate, StartRaisesForAReservedSchemeOfAWholeInfoPlistOnly) {
    Host::SetInfoDictionary(@{@"CFBundleURLTypes" : @[ @{@"CFBundleURLSchemes" : @[ @1, @"fbapi" ]} ]});

    EXPECT_EQ(RaisedBy([] { Launch(); }), "InvalidOperationException");
}

TEST_F(FacebookApplicationDelegate, StartDoesNotRaiseForSchemesThatAreNotWhereTheyBelong) {
    for (NSDictionary* info in @[
             @{}, @{@"CFBundleURLTypes" : @"fbapi"},
             @{@"CFBundleURLTypes" : @[ @"fbapi" ]},
             @{@"CFBundleURLTypes" : @[ @{@"CFBundleURLSchemes" : @"fbapi"} ]},
             @{@"LSApplicationQueriesSchemes" : @[ @"fbapi" ]}
         ]) {
        Host::ResetPlatform();
        Host::SetInfoDictionary(info);
        EXPECT_EQ(RaisedBy([] { Launch(); }), "") << Text([info description]);
    }
}

TEST_F(FacebookApplicationDelegate, StartDoesNotRaiseForAnEntryOfAnotherTypeBesideTheDefaults) {
    Host::SetInfoValue(@"CFBundleURLTypes", @"fbapi");

    EXPECT_EQ(RaisedBy([] { Launch(); }), "");
}

TEST_F(FacebookApplicationDelegate, SecondStartDoesNotLookAtTheSchemes) {
    Launch();
    RegisterURLTypes(@[ @"fbapi" ]);

    EXPECT_EQ(RaisedBy([] { Launch(); }), "");
}

TEST_F(FacebookApplicationDelegate, StartThatRaisedWasTheFirstOne) {
    RegisterURLTypes(@[ @"fbapi" ]);
    [FBSDKApplicationDelegate setLaunchAnswer:YES];
    RaisedBy([] { Launch(); });

    RegisterURLTypes(@[]);

    EXPECT_EQ(Launch(), NO);
}

TEST_F(FacebookApplicationDelegate, StartsAnewAfterTheReset) {
    [FBSDKApplicationDelegate setLaunchAnswer:YES];
    Launch();

    Host::ResetPlatform();

    EXPECT_EQ(Launch(), NO);
    [FBSDKApplicationDelegate reset];
    [FBSDKApplicationDelegate setLaunchAnswer:YES];
    EXPECT_EQ(Launch(), YES);
}

#pragma mark - Activations

TEST_F(FacebookApplicationDelegate, TellsOfAnActivationOnceTheSDKHasStarted) {
    Launch();

    Host::BecomeActive();

    ASSERT_EQ([FBSDKAppEvents events].size(), 1u);
    EXPECT_EQ([FBSDKAppEvents events][0].form, Host::AppEventForm::kActivatedApp);
}

TEST_F(FacebookApplicationDelegate, DoesNotSeeActivationsBeforeTheStart) {
    Host::BecomeActive();

    EXPECT_TRUE([FBSDKAppEvents events].empty());
}

TEST_F(FacebookApplicationDelegate, SeesEachActivationOnceAfterASecondStart) {
    Launch();
    Launch();

    OnAnotherThread([] { Host::BecomeActive(); });

    EXPECT_EQ([FBSDKAppEvents developerErrorCount], 1u);
}

TEST_F(FacebookApplicationDelegate, KeepsItsOwnActivationsOutOfTheRecord) {
    Launch();
    Host::PlatformCalls::Clear();

    Host::BecomeActive();

    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
    EXPECT_EQ([FBSDKAppEvents activateAppCount], 0u);
}

TEST_F(FacebookApplicationDelegate, OwnActivationAndThatOfTheAppAreOneSession) {
    Launch();
    Host::BecomeActive();

    [[FBSDKAppEvents shared] activateApp];

    EXPECT_EQ([FBSDKAppEvents events].size(), 1u);
}

TEST_F(FacebookApplicationDelegate, LeavesActivationsAloneWhenTheInfoPlistSaysNo) {
    Host::SetInfoValue(@"FacebookAutoLogAppEventsEnabled", @(NO));
    Launch();

    Host::BecomeActive();

    EXPECT_TRUE([FBSDKAppEvents events].empty());
}

TEST_F(FacebookApplicationDelegate, TellsOfActivationsWhenTheInfoPlistSaysYes) {
    Host::SetInfoValue(@"FacebookAutoLogAppEventsEnabled", @(YES));
    Launch();

    Host::BecomeActive();

    EXPECT_EQ([FBSDKAppEvents events].size(), 1u);
}

TEST_F(FacebookApplicationDelegate, TellsOfActivationsWhenTheInfoPlistsAnswerIsNone) {
    Host::SetInfoValue(@"FacebookAutoLogAppEventsEnabled", @[ @(NO) ]);
    Launch();

    Host::BecomeActive();

    EXPECT_EQ([FBSDKAppEvents events].size(), 1u);
}

TEST_F(FacebookApplicationDelegate, DoesNotSeeActivationsAfterTheReset) {
    Launch();

    Host::ResetPlatform();
    Host::BecomeActive();

    EXPECT_TRUE([FBSDKAppEvents events].empty());
}

#pragma mark - URLs

TEST_F(FacebookApplicationDelegate, TakesNoURLWithoutALogin) {
    EXPECT_EQ(Open(@"fb1000000000000001://authorize"), NO);
}

TEST_F(FacebookApplicationDelegate, TakesTheURLOfALoginWhosePageShows) {
    LogIn();

    EXPECT_EQ(Open(@"fb1000000000000001://authorize#x=1"), YES);
    EXPECT_EQ(OpenFrom(@"fb1000000000000001://authorize#x=1", nil, nil), YES);
}

TEST_F(FacebookApplicationDelegate, TakesTheURLWhateverTheCaseOfItsScheme) {
    LogIn();

    EXPECT_EQ(Open(@"FB1000000000000001://authorize"), YES);
}

TEST_F(FacebookApplicationDelegate, LeavesURLsOfOtherSchemesToTheApp) {
    LogIn();

    EXPECT_EQ(Open(@"fb1000000000000002://authorize"), NO);
    EXPECT_EQ(Open(@"https://example.com/fb1000000000000001"), NO);
}

TEST_F(FacebookApplicationDelegate, AwaitsTheURLOfTheLoginThatShowsNotOfOneThatNeverDid) {
    [[FBSDKSettings sharedSettings] setAppURLSchemeSuffix:@"suffix"];
    LogIn();
    [[FBSDKSettings sharedSettings] setAppURLSchemeSuffix:@"other"];
    LogIn(@[ @"Refused" ]);

    EXPECT_EQ(Open(@"fb1000000000000001suffix://authorize"), YES);
    EXPECT_EQ(Open(@"fb1000000000000001other://authorize"), NO);
}

TEST_F(FacebookApplicationDelegate, TakesNoURLOfALoginThatHasEnded) {
    LogIn();
    Host::AnswerLogin(Host::LoginAnswer::Cancelled());

    EXPECT_EQ(Open(@"fb1000000000000001://authorize"), NO);
}

TEST_F(FacebookApplicationDelegate, TakingAURLEndsNoLogin) {
    LogIn();

    Open(@"fb1000000000000001://authorize");

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
}

TEST_F(FacebookApplicationDelegate, TakesTheURLsThatADialogIsSaidToTake) {
    [FBSDKApplicationDelegate
        setURLDecision:[](NSURL* url, NSString*, id) { return [[url host] isEqualToString:@"bridge"] != NO; }];

    EXPECT_EQ(Open(@"fb1000000000000001://bridge"), YES);
    EXPECT_EQ(OpenFrom(@"fb1000000000000001://bridge", nil, nil), YES);
    EXPECT_EQ(Open(@"fb1000000000000001://other"), NO);
}

TEST_F(FacebookApplicationDelegate, PassesOnWhatTheOptionsSayOfTheSender) {
    std::string sender;
    id annotation = nil;
    [FBSDKApplicationDelegate setURLDecision:[&](NSURL*, NSString* sourceApplication, id passed) {
        sender = Text(sourceApplication);
        annotation = passed;
        return false;
    }];
    NSArray* const list = @[ @"list" ];

    Open(@"fb1://x", @{
        UIApplicationOpenURLOptionsSourceApplicationKey : @"com.example.sender",
        UIApplicationOpenURLOptionsAnnotationKey : list,
    });

    EXPECT_EQ(sender, "com.example.sender");
    EXPECT_EQ(annotation, list);
}

TEST_F(FacebookApplicationDelegate, PassesOnTheSenderOfTheLongForm) {
    std::string sender;
    id annotation = nil;
    [FBSDKApplicationDelegate setURLDecision:[&](NSURL*, NSString* sourceApplication, id passed) {
        sender = Text(sourceApplication);
        annotation = passed;
        return false;
    }];
    NSArray* const list = @[ @"list" ];

    OpenFrom(@"fb1://x", @"com.example.sender", list);

    EXPECT_EQ(sender, "com.example.sender");
    EXPECT_EQ(annotation, list);
}

TEST_F(FacebookApplicationDelegate, EveryOpenedURLIsRecordedOnceInTheFormOfTheCaller) {
    Open(@"fb1://x", @{UIApplicationOpenURLOptionsSourceApplicationKey : @"sender"});
    OpenFrom(@"fb1://y", @"sender", nil);

    EXPECT_THAT(
        Host::PlatformCalls::All(),
        ElementsAre(PlatformCall{"FBSDKApplicationDelegate", "application:openURL:options:",
                                 "<UIApplication>, \"fb1://x\", "
                                 "{\"UIApplicationOpenURLOptionsSourceApplicationKey\":\"sender\"}",
                                 true},
                    PlatformCall{"FBSDKApplicationDelegate", "application:openURL:sourceApplication:annotation:",
                                 "<UIApplication>, \"fb1://y\", \"sender\", nil", true}));
}

TEST_F(FacebookApplicationDelegate, RaisesForANilURL) {
    EXPECT_EQ(RaisedBy([] { Open(nil); }), "NSInvalidArgumentException");
    EXPECT_EQ(RaisedBy([] { OpenFrom(nil, nil, nil); }), "NSInvalidArgumentException");
}

TEST_F(FacebookApplicationDelegate, DecidesByItselfAgainAfterTheReset) {
    [FBSDKApplicationDelegate setURLDecision:[](NSURL*, NSString*, id) { return true; }];

    Host::ResetPlatform();

    EXPECT_EQ(Open(@"fb1000000000000001://authorize"), NO);
}

} // namespace
} // namespace Tarvik::Vorn::Test
