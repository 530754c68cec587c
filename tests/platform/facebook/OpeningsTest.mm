// The moment at which something begins to wait for its answer: when it is told and to whom, and when it is not. What is
// answered twice, and what is answered out of its order.
#include "OpeningCases.h"

#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "UIKit/UIApplication+Control.h"

#include <stdexcept>

namespace Tarvik::Vorn::Test {
namespace {

using Host::AnswerShare;
using Host::Closing;
using Host::Opening;
using Host::OpenShareDialogCount;
using Host::SetOpeningListener;
using Host::ShareAnswer;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

#pragma mark - Telling

class EachOpening : public OpeningTest {};

INSTANTIATE_TEST_SUITE_P(All, EachOpening, ::testing::ValuesIn(OpeningCases()), NameOfCase);

TEST_P(EachOpening, IsToldOnce) {
    std::vector<Opening> told;
    SetOpeningListener([&told](Opening opening) { told.push_back(opening); });

    EXPECT_TRUE(Open());
    EXPECT_TRUE(Answer());

    EXPECT_THAT(told, ElementsAre(GetParam().opening));
}

TEST_P(EachOpening, IsToldOnTheThreadOfTheCall) {
    std::thread::id telling;
    std::thread::id calling;
    SetOpeningListener([&telling](Opening) { telling = std::this_thread::get_id(); });

    OnAnotherThread([&] {
        calling = std::this_thread::get_id();
        Open();
    });

    EXPECT_EQ(telling, calling);
}

TEST_P(EachOpening, WaitsAlreadyWhenItIsTold) {
    size_t waiting = 0;
    SetOpeningListener([&waiting](Opening) { waiting = Waiting(); });

    Open();

    EXPECT_EQ(waiting, 1u);
}

TEST_P(EachOpening, MayBeAnsweredByTheListenerAtOnce) {
    bool answered = false;
    SetOpeningListener([&answered](Opening) { answered = Answer(); });

    const bool opened = Open();

    EXPECT_TRUE(opened);
    EXPECT_TRUE(answered);
    EXPECT_EQ(Answers(), 1);
    EXPECT_EQ(Waiting(), 0u);
}

TEST_P(EachOpening, MayOpenTheSameAgainInTheListener) {
    int told = 0;
    SetOpeningListener([&](Opening) {
        if (++told == 1) {
            Answer();
            Open();
        }
    });

    Open();

    EXPECT_EQ(told, 2);
    EXPECT_EQ(Answers(), 1);
    EXPECT_EQ(Waiting(), 1u);
}

TEST_P(EachOpening, IsToldNobodyOnceTheListenerHasEndedItself) {
    int told = 0;
    SetOpeningListener([&told](Opening) {
        ++told;
        SetOpeningListener({});
    });

    Open();
    Open();

    EXPECT_EQ(told, 1);
}

TEST_P(EachOpening, IsToldNobodyAfterTheReset) {
    int told = 0;
    SetOpeningListener([&told](Opening) { ++told; });

    Host::ResetPlatform();
    Open();

    EXPECT_EQ(told, 0);
}

TEST_P(EachOpening, LetsAnExceptionOfTheListenerPassAndStaysOpen) {
    SetOpeningListener([](Opening) { throw std::runtime_error("from the listener"); });

    EXPECT_THROW(Open(), std::runtime_error);

    EXPECT_EQ(Waiting(), 1u);
}

TEST_P(EachOpening, AnsweredTwiceCallsTwice) {
    Open();

    EXPECT_TRUE(Answer(Closing::kStaysOpen));
    EXPECT_EQ(Answers(), 1);
    EXPECT_EQ(Waiting(), 1u);
    EXPECT_TRUE(Answer());

    EXPECT_EQ(Answers(), 2);
    EXPECT_EQ(Waiting(), 0u);
    EXPECT_FALSE(Answer(Closing::kStaysOpen));
}

// All but the login, of which there is one at a time.
std::vector<OpeningCase> CasesInLists() {
    std::vector<OpeningCase> cases = OpeningCases();
    cases.erase(cases.begin());
    return cases;
}

class EachListedOpening : public OpeningTest {};

INSTANTIATE_TEST_SUITE_P(All, EachListedOpening, ::testing::ValuesIn(CasesInLists()), NameOfCase);

TEST_P(EachListedOpening, IsAnsweredByItsPlaceWhetherItClosesOrNot) {
    const RetainPtr<VornAnswerCounter*> second = AdoptNS([[VornAnswerCounter alloc] init]);
    Open();
    GetParam().open(second.get());

    EXPECT_TRUE(Answer(Closing::kStaysOpen, 1));
    EXPECT_TRUE(Answer(Closing::kCloses, 1));
    EXPECT_FALSE(Answer(Closing::kCloses, 1));

    EXPECT_EQ(Answers(), 0);
    EXPECT_EQ(second.get()->answers, 2);
    EXPECT_EQ(Waiting(), 1u);
}

#pragma mark - What does not open

class Openings : public FacebookPlatformTest {
protected:
    Openings() {
        SetOpeningListener([this](Opening opening) { told.push_back(opening); });
    }
    ~Openings() override { Host::ResetPlatform(); }

    FBSDKShareDialog* ShareDialog(FBSDKShareDialogMode mode) {
        FBSDKShareLinkContent* const content = [[[FBSDKShareLinkContent alloc] init] autorelease];
        [content setContentURL:[NSURL URLWithString:@"https://host/page"]];
        FBSDKShareDialog* const dialog = [[[FBSDKShareDialog alloc] initWithViewController:nil
                                                                                   content:content
                                                                                  delegate:counter.get()] autorelease];
        [dialog setMode:mode];
        return dialog;
    }

    std::vector<Opening> told;
    RetainPtr<VornAnswerCounter*> counter = AdoptNS([[VornAnswerCounter alloc] init]);
};

TEST_F(Openings, ALoginWithRefusedPermissionsIsNotTold) {
    [AdoptNS([[FBSDKLoginManager alloc] init]).get() logInWithPermissions:@[ @"E" ] fromViewController:nil handler:nil];

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Openings, ARefusedShareOrMessageDialogIsNotTold) {
    Host::SetAppInstalled(Host::InstalledApp::kFacebook, false);
    Host::SetAppInstalled(Host::InstalledApp::kMessenger, false);

    EXPECT_FALSE([ShareDialog(FBSDKShareDialogModeNative) show]);
    EXPECT_FALSE([[[[FBSDKMessageDialog alloc] initWithContent:nil delegate:counter.get()] autorelease] show]);

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Openings, AShareDialogThatFindsNoViewControllerIsNotTold) {
    Host::SetShareDialogsFindViewController(false);

    EXPECT_TRUE([ShareDialog(FBSDKShareDialogModeBrowser) show]);

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Openings, AShareDialogThatGoesOnInTheBrowserIsNotToldAgain) {
    [ShareDialog(FBSDKShareDialogModeNative) show];

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_EQ(OpenShareDialogCount(), 1u);
    EXPECT_THAT(told, ElementsAre(Opening::kShareDialog));
}

TEST_F(Openings, AGameRequestThatIsRefusedOrCannotShowIsNotTold) {
    FBSDKGameRequestContent* const content = [[[FBSDKGameRequestContent alloc] init] autorelease];
    EXPECT_FALSE([[FBSDKGameRequestDialog dialogWithContent:content delegate:nil] show]);

    [content setMessage:@"Message"];
    Host::SetGameRequestsCanShow(false);
    EXPECT_TRUE([[FBSDKGameRequestDialog dialogWithContent:content delegate:nil] show]);

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Openings, AGameRequestIsToldHoweverItIsShown) {
    FBSDKGameRequestContent* const content = [[[FBSDKGameRequestContent alloc] init] autorelease];
    [content setMessage:@"Message"];

    [FBSDKGameRequestDialog showWithContent:content delegate:nil];

    EXPECT_THAT(told, ElementsAre(Opening::kGameRequest));
}

TEST_F(Openings, AFriendFinderWithoutAppIDAndTokenIsNotTold) {
    [[FBSDKSettings sharedSettings] setAppID:nil];

    [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:^(BOOL, NSError*){
    }];

    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Openings, UploadsWithoutAnAccessTokenAreNotTold) {
    for (const OpeningCase& upload : OpeningCases()) {
        if (upload.opening == Opening::kImageUpload || upload.opening == Opening::kVideoUpload) {
            upload.open(counter.get());
        }
    }

    EXPECT_EQ(counter.get()->answers, 2);
    EXPECT_THAT(told, IsEmpty());
}

#pragma mark - Share dialogs that are not opened

TEST_F(Openings, AShareDialogThatGoesOnInTheBrowserIsThereOnceWhateverTheClosing) {
    [ShareDialog(FBSDKShareDialogModeNative) show];

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened(), 0, Closing::kStaysOpen));

    EXPECT_EQ(OpenShareDialogCount(), 1u);
    EXPECT_EQ(counter.get()->answers, 0);
}

TEST_F(Openings, AShareDialogThatCannotGoOnStaysOpenAfterItsErrorWhenToldSo) {
    [ShareDialog(FBSDKShareDialogModeBrowser) show];

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened(), 0, Closing::kStaysOpen));
    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_EQ(counter.get()->answers, 2);
    EXPECT_EQ(OpenShareDialogCount(), 0u);
}

TEST_F(Openings, AnErrorThatFacebooksAppReportsCallsNobodyAndMayLeaveTheDialogOpen) {
    [ShareDialog(FBSDKShareDialogModeNative) show];

    EXPECT_TRUE(AnswerShare(ShareAnswer::ErrorOfTheApp(), 0, Closing::kStaysOpen));

    EXPECT_EQ(counter.get()->answers, 0);
    EXPECT_EQ(OpenShareDialogCount(), 1u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
