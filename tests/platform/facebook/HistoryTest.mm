// What is remembered of every request, and what is not when no history is kept.
#include "OpeningCases.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "History.h"

namespace Tarvik::Vorn::Test {
namespace {

using Host::IsHistoryKept;
using Host::PlatformCall;
using Host::SetHistoryKept;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// How much all lists of everything since the last reset hold.
size_t Remembered() {
    return Host::PlatformCalls::All().size() + Host::ShownDialogs().size() + Host::GameRequests().size() +
           Host::ImageUploads().size() + Host::VideoUploads().size() + [FBSDKLoginManager loginRequests].size() +
           [FBSDKAppEvents events].size();
}

class History : public FacebookPlatformTest {};

TEST_F(History, IsKeptByDefaultAndAfterTheReset) {
    EXPECT_TRUE(IsHistoryKept());
    SetHistoryKept(false);
    EXPECT_FALSE(IsHistoryKept());

    Host::ResetPlatform();

    EXPECT_TRUE(IsHistoryKept());
}

TEST_F(History, OfWhatWasAskedBeforeStays) {
    Host::PlatformCalls::Record("A", "before");

    SetHistoryKept(false);
    Host::PlatformCalls::Record("A", "meanwhile");
    SetHistoryKept(true);
    Host::PlatformCalls::Record("A", "afterwards");

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"A", "before", "", true}, PlatformCall{"A", "afterwards", "", true}));
}

TEST_F(History, ThatIsNotKeptIsToldTheListenersAllTheSame) {
    int calls = 0;
    int events = 0;
    SetHistoryKept(false);
    Host::SetPlatformCallListener([&calls](const PlatformCall&) { ++calls; });
    Host::SetAppEventListener([&events](const Host::AppEvent&) { ++events; });

    [[FBSDKAppEvents shared] logEvent:@"event"];

    EXPECT_EQ(calls, 1);
    EXPECT_EQ(events, 1);
    EXPECT_EQ(Remembered(), 0u);
}

TEST_F(History, OfRefusedLoginsIsNotKeptEither) {
    SetHistoryKept(false);
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);

    [manager.get() logInWithPermissions:@[ @"E" ] fromViewController:nil handler:nil];
    Host::RegisterURLSchemes(@[]);
    RaisedBy([&] { [manager.get() logInWithPermissions:@[ @"email" ] fromViewController:nil handler:nil]; });

    EXPECT_THAT([FBSDKLoginManager loginRequests], IsEmpty());
}

TEST_F(History, IsNotWhatAShowingLoginPageTakesItsURLBy) {
    SetHistoryKept(false);
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logInWithPermissions:@[ @"email" ] fromViewController:nil handler:nil];
    const auto open = [](NSString* url) {
        return [[FBSDKApplicationDelegate sharedInstance] application:[UIApplication sharedApplication]
                                                              openURL:[NSURL URLWithString:url]
                                                              options:@{}];
    };

    EXPECT_TRUE(open(@"fb1000000000000001://authorize"));
    EXPECT_FALSE(open(@"fb1000000000000002://authorize"));
}

class HistoryOfEachOpening : public OpeningTest {};

INSTANTIATE_TEST_SUITE_P(All, HistoryOfEachOpening, ::testing::ValuesIn(OpeningCases()), NameOfCase);

TEST_P(HistoryOfEachOpening, HoldsNothingWhenItIsNotKeptAndTheAnswerComesAsEver) {
    SetHistoryKept(false);

    Open();

    EXPECT_EQ(Remembered(), 0u);
    EXPECT_EQ(Waiting(), 1u);
    EXPECT_TRUE(Answer());
    EXPECT_EQ(Answers(), 1);
}

TEST_P(HistoryOfEachOpening, HoldsTheRequestWhenItIsKept) {
    Open();

    EXPECT_GE(Remembered(), 1u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
