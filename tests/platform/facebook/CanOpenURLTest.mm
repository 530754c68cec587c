// Which apps are installed and which of them the app may ask for: canOpenURL: and LSApplicationQueriesSchemes. The key
// window.
#include "FacebookPlatformTest.h"

#include "UIKit/UIApplication+Control.h"

#include <atomic>

// An application's delegate that answers nothing.
@interface VornEmptyApplicationDelegate : NSObject <UIApplicationDelegate>
@end

@implementation VornEmptyApplicationDelegate
@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::InstalledApp;
using Host::PlatformCall;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

bool CanOpen(NSString* text) {
    return [[UIApplication sharedApplication] canOpenURL:text == nil ? nil : [NSURL URLWithString:text]];
}

class CanOpenURL : public FacebookPlatformTest {};

#pragma mark - Installed apps

TEST_F(CanOpenURL, IsYesForTheSchemesOfFacebookAndMessengerByDefault) {
    for (NSString* scheme in @[ @"fb", @"fbapi", @"fbauth", @"fbauth2", @"fb-messenger", @"fb-messenger-share-api" ]) {
        EXPECT_TRUE(CanOpen([scheme stringByAppendingString:@"://"])) << Text(scheme);
        EXPECT_TRUE(CanOpen([scheme stringByAppendingString:@":/"])) << Text(scheme);
    }
}

TEST_F(CanOpenURL, IsNoForAnAppThatNobodyInstalled) {
    EXPECT_FALSE(CanOpen(@"other://"));
    EXPECT_FALSE(CanOpen(@"fbauth3://"));
}

TEST_F(CanOpenURL, IsNoForEverySchemeOfFacebookWhenItIsRemoved) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);

    for (NSString* scheme in @[ @"fb", @"fbapi", @"fbauth", @"fbauth2" ]) {
        EXPECT_FALSE(CanOpen([scheme stringByAppendingString:@":/"])) << Text(scheme);
    }
    EXPECT_TRUE(CanOpen(@"fb-messenger:/"));
    EXPECT_TRUE(CanOpen(@"fb-messenger-share-api:/"));
}

TEST_F(CanOpenURL, IsNoForEverySchemeOfMessengerWhenItIsRemoved) {
    Host::SetAppInstalled(InstalledApp::kMessenger, false);

    EXPECT_FALSE(CanOpen(@"fb-messenger:/"));
    EXPECT_FALSE(CanOpen(@"fb-messenger-share-api:/"));
    EXPECT_TRUE(CanOpen(@"fbapi:/"));
}

TEST_F(CanOpenURL, IsYesAgainWhenTheAppIsInstalledAgain) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);
    Host::SetAppInstalled(InstalledApp::kFacebook, true);

    EXPECT_TRUE(CanOpen(@"fbapi:/"));
}

TEST_F(CanOpenURL, IsNoForASchemeThatTheInstalledAppDoesNotKnow) {
    Host::SetSchemeOpenable(@"fbauth2", false);

    EXPECT_FALSE(CanOpen(@"fbauth2://"));
    EXPECT_TRUE(CanOpen(@"fbapi://"));
}

TEST_F(CanOpenURL, IsYesForASchemeThatAnotherAppKnows) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);
    Host::SetSchemeOpenable(@"fbapi", true);
    Host::SetSchemeOpenable(@"other", true);

    EXPECT_TRUE(CanOpen(@"fbapi://"));
    EXPECT_TRUE(CanOpen(@"other://"));
    EXPECT_FALSE(CanOpen(@"fb://"));
}

TEST_F(CanOpenURL, TakesSchemesInAnyCase) {
    Host::SetSchemeOpenable(@"OTHER", true);

    EXPECT_TRUE(CanOpen(@"FBAPI://"));
    EXPECT_TRUE(CanOpen(@"oTher://"));
    EXPECT_TRUE(Host::IsSchemeOpenable(@"FbApi"));
}

#pragma mark - Odd URLs

TEST_F(CanOpenURL, IsNoWithoutAURL) {
    EXPECT_FALSE(CanOpen(nil));
    EXPECT_FALSE(Host::CanOpenURL(nil));
}

TEST_F(CanOpenURL, IsNoForAURLWithoutAScheme) {
    Host::SetSchemeOpenable(@"", true);
    Host::SetSchemeOpenable(nil, true);

    EXPECT_FALSE(CanOpen(@"fbapi"));
    EXPECT_FALSE(CanOpen(@"//host/path"));
    EXPECT_FALSE(CanOpen(@""));
}

#pragma mark - Listed schemes

TEST_F(CanOpenURL, IsNoForASchemeThatTheInfoPlistDoesNotList) {
    Host::RegisterQueriesSchemes(@[ @"fbapi", @"other" ]);

    EXPECT_TRUE(CanOpen(@"fbapi:/"));
    EXPECT_FALSE(CanOpen(@"fbauth2:/"));
}

TEST_F(CanOpenURL, IsNoForEverySchemeWhenTheInfoPlistListsNone) {
    Host::RegisterQueriesSchemes(@[]);

    EXPECT_FALSE(CanOpen(@"fbapi:/"));
}

TEST_F(CanOpenURL, IsNoForAListedSchemeThatNobodyOpens) {
    Host::RegisterQueriesSchemes(@[ @"other" ]);

    EXPECT_FALSE(CanOpen(@"other:/"));
}

TEST_F(CanOpenURL, ComparesListedSchemesWithoutRegardToCase) {
    Host::RegisterQueriesSchemes(@[ @"FBapi" ]);

    EXPECT_TRUE(CanOpen(@"fbAPI:/"));
}

TEST_F(CanOpenURL, OpenableSchemesDoNotDependOnTheInfoPlist) {
    Host::RegisterQueriesSchemes(@[]);

    EXPECT_TRUE(Host::IsSchemeOpenable(@"fbapi"));
    EXPECT_FALSE(Host::IsSchemeOpenable(@"other"));
}

TEST_F(CanOpenURL, EverySchemeCountsAsListedByDefault) {
    EXPECT_TRUE(Host::IsQueriesSchemeListed(@"fbapi"));
    EXPECT_TRUE(Host::IsQueriesSchemeListed(@"whatever"));
}

TEST_F(CanOpenURL, ListedSchemesAreTheGivenOnesAndNoOthers) {
    Host::RegisterQueriesSchemes(@[ @"other", @"fbapi" ]);

    EXPECT_TRUE(Host::IsQueriesSchemeListed(@"fbapi"));
    EXPECT_TRUE(Host::IsQueriesSchemeListed(@"OTHER"));
    EXPECT_FALSE(Host::IsQueriesSchemeListed(@"fbap"));
    EXPECT_FALSE(Host::IsQueriesSchemeListed(@""));
    EXPECT_FALSE(Host::IsQueriesSchemeListed(nil));
}

TEST_F(CanOpenURL, ListedSchemesAreTheEntryOfTheInfoPlist) {
    Host::SetInfoValue(@"LSApplicationQueriesSchemes", @[ @"fbapi" ]);

    EXPECT_FALSE(Host::IsQueriesSchemeListed(@"fbauth2"));
    EXPECT_TRUE(Host::IsQueriesSchemeListed(@"fbapi"));
}

TEST_F(CanOpenURL, RegisteredSchemesOfTheAppItselfAreNotListed) {
    Host::RegisterURLSchemes(@[ @"fb123" ]);
    Host::RegisterQueriesSchemes(@[ @"fbapi" ]);

    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
    EXPECT_FALSE(Host::IsURLSchemeRegistered(@"fbapi"));
    EXPECT_FALSE(Host::IsQueriesSchemeListed(@"fb123"));
}

TEST_F(CanOpenURL, IsNoForEveryAppWhenAWholeInfoPlistHasNoList) {
    Host::SetInfoDictionary(@{@"FacebookAppID" : @"1"});

    EXPECT_FALSE(CanOpen(@"fbapi:/"));
    EXPECT_FALSE(Host::IsQueriesSchemeListed(@"fbapi"));
}

TEST_F(CanOpenURL, TakesAListOfAnotherTypeForNone) {
    for (const id odd in @[ @"fbapi", @1, @{@"fbapi" : @"fbapi"} ]) {
        Host::ResetInfoDictionary();
        Host::SetInfoValue(@"LSApplicationQueriesSchemes", odd);
        EXPECT_TRUE(CanOpen(@"fbapi:/"));
        Host::SetInfoDictionary(@{@"LSApplicationQueriesSchemes" : odd});
        EXPECT_FALSE(CanOpen(@"fbapi:/"));
    }
}

TEST_F(CanOpenURL, PassesOverWhatIsNoTextInTheList) {
    Host::SetInfoDictionary(@{@"LSApplicationQueriesSchemes" : @[ @1, @[ @"fbauth2" ], [NSNull null], @"FBAPI" ]});

    EXPECT_TRUE(CanOpen(@"fbapi:/"));
    EXPECT_FALSE(CanOpen(@"fbauth2:/"));
}

#pragma mark - Record, reset, threads

TEST_F(CanOpenURL, IsRecordedWithTheURL) {
    CanOpen(@"fbauth2://");
    CanOpen(nil);

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"UIApplication", "canOpenURL:", "\"fbauth2://\"", true},
                            PlatformCall{"UIApplication", "canOpenURL:", "nil", true}));
}

TEST_F(CanOpenURL, IsNotRecordedWhenAStandInAsks) {
    EXPECT_TRUE(Host::CanOpenURL([NSURL URLWithString:@"fbapi:/"]));

    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

TEST_F(CanOpenURL, ResetBringsBackTheInstalledApps) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);
    Host::SetAppInstalled(InstalledApp::kMessenger, false);
    Host::SetSchemeOpenable(@"fb", false);
    Host::SetSchemeOpenable(@"other", true);

    Host::ResetApplication();

    EXPECT_TRUE(CanOpen(@"fbapi:/"));
    EXPECT_TRUE(CanOpen(@"fb:/"));
    EXPECT_TRUE(CanOpen(@"fb-messenger:/"));
    EXPECT_FALSE(CanOpen(@"other:/"));
}

TEST_F(CanOpenURL, ResetOfThePlatformBringsBackAppsAndListedSchemes) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);
    Host::RegisterQueriesSchemes(@[]);

    Host::ResetPlatform();

    EXPECT_TRUE(CanOpen(@"fbapi:/"));
}

TEST_F(CanOpenURL, MayBeAskedOnManyThreadsWhileAppsComeAndGo) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 50;
    std::atomic<int> messengerAnswers{0};
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&messengerAnswers] {
            @autoreleasepool {
                for (int round = 0; round < kRounds; ++round) {
                    Host::SetAppInstalled(InstalledApp::kFacebook, round % 2 == 0);
                    Host::SetSchemeOpenable(@"other", round % 2 != 0);
                    Host::IsSchemeOpenable(@"other");
                    messengerAnswers += CanOpen(@"fb-messenger:/") ? 1 : 0;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(messengerAnswers, kThreads * kRounds);
}

#pragma mark - Key window

class KeyWindow : public FacebookPlatformTest {
protected:
    static UIWindow* TheWindow() { return [[UIApplication sharedApplication] keyWindow]; }
};

TEST_F(KeyWindow, IsAPhonesWindowByDefault) {
    const CGRect frame = [TheWindow() frame];

    EXPECT_EQ(frame.origin.x, 0);
    EXPECT_EQ(frame.origin.y, 0);
    EXPECT_EQ(frame.size.width, 390);
    EXPECT_EQ(frame.size.height, 844);
}

TEST_F(KeyWindow, HasARootViewControllerWithAViewOfItsSizeByDefault) {
    UIViewController* const controller = [TheWindow() rootViewController];

    ASSERT_NE(controller, nil);
    EXPECT_EQ([[controller view] frame].size.width, 390);
    EXPECT_EQ([[controller view] frame].size.height, 844);
}

TEST_F(KeyWindow, StaysTheSame) {
    EXPECT_EQ(TheWindow(), TheWindow());
}

TEST_F(KeyWindow, IsTheOneThatWasSetAndIsKept) {
    UIWindow* window = nil;
    @autoreleasepool {
        window = [[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 10, 20)];
        Host::SetKeyWindow(window);
        [window release];
    }

    EXPECT_EQ(TheWindow(), window);
    EXPECT_EQ([TheWindow() frame].size.width, 10);
}

TEST_F(KeyWindow, MayBeMissing) {
    Host::SetKeyWindow(nil);

    EXPECT_EQ(TheWindow(), nil);
}

TEST_F(KeyWindow, ReadingItIsNotRecorded) {
    TheWindow();

    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

TEST_F(KeyWindow, ResetReleasesItAndBringsBackTheDefault) {
    const RetainPtr<UIWindow*> window = AdoptNS([[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 10, 20)]);
    Host::SetKeyWindow(window.get());

    Host::ResetApplication();

    EXPECT_EQ([window.get() retainCount], 1u);
    EXPECT_EQ([TheWindow() frame].size.height, 844);
}

TEST_F(KeyWindow, ResetBringsItBackWhereItWasMissing) {
    Host::SetKeyWindow(nil);

    Host::ResetPlatform();

    EXPECT_NE(TheWindow(), nil);
}

TEST_F(KeyWindow, ResetMakesANewDefault) {
    const RetainPtr<UIWindow*> former(TheWindow());

    Host::ResetApplication();

    EXPECT_NE(TheWindow(), former.get());
}

TEST_F(KeyWindow, ResetTakesTheDelegateAwayToo) {
    const RetainPtr<VornEmptyApplicationDelegate*> delegate = AdoptNS([[VornEmptyApplicationDelegate alloc] init]);
    [[UIApplication sharedApplication] setDelegate:delegate.get()];

    Host::ResetApplication();

    EXPECT_EQ([[UIApplication sharedApplication] delegate], nil);
}

} // namespace
} // namespace Tarvik::Vorn::Test
