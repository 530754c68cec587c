// Which causes a result has, and in which order.

#include "ExplainTest.h"

#include "explain/Explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using Simulator::ExplainQuestion;
using namespace Simulator::Explaining;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

std::vector<std::string> NearestOf(const ExplainQuestion& typed) {
    std::vector<std::string> ids;
    for (const Cause* const cause : NearestCauses(Parsed(typed))) {
        ids.emplace_back(cause->id);
    }
    return ids;
}

TEST(ExplanationTest, ASharesCode2MayBeACancelOrContentThatFacebookRefuses) {
    EXPECT_THAT(CausesOf({"share", "2", "", ""}),
                ElementsAre("share-cancelled", "dialog-url-not-forwarded", "share-link-refused", "share-link-is-no-url",
                            "share-video-file-as-asset", "share-error-of-sdk", "outcome-of-another-dialog",
                            "friend-finder-cancelled"));
}

TEST(ExplanationTest, TheTextOfACancelLeavesRefusedContentOut) {
    EXPECT_THAT(CausesOf({"211", "2", "0", "Cancelled by the user"}),
                ElementsAre("share-cancelled", "dialog-url-not-forwarded", "invitation-closed",
                            "invitation-url-not-forwarded", "friend-finder-cancelled", "outcome-of-another-dialog"));
}

TEST(ExplanationTest, TheDescriptionOfAnErrorLeavesTheCancelOut) {
    const std::vector<std::string> causes =
        CausesOf({"share", "2", "0",
                  "Error Domain=com.facebook.sdk.share Code=2 \"(null)\" UserInfo={com.facebook.sdk:"
                  "FBSDKErrorDeveloperMessageKey=Invalid value for videoURL: file:///clip.mp4}"});

    EXPECT_EQ(causes.front(), "share-video-file-as-asset");
    EXPECT_THAT(causes, AllOf(Contains("share-link-refused"), Not(Contains("share-cancelled"))));
}

TEST(ExplanationTest, ATextThatFitsNoCauseLeavesNothingOut) {
    EXPECT_EQ(CausesOf({"share", "2", "", "something else"}), CausesOf({"share", "2", "", ""}));
}

TEST(ExplanationTest, TheThirdCodeTellsThePluginsElevenFromFacebooks) {
    const std::vector<std::string> own = CausesOf({"211", "11", "11", ""});
    const std::vector<std::string> facebooks = CausesOf({"211", "11", "0", ""});

    EXPECT_THAT(own, ElementsAre("share-link-empty", "share-image-illegal", "message-link-empty",
                                 "invitation-without-title", "invitation-bad-user-list"));
    EXPECT_EQ(facebooks.front(), "share-app-switch-refused");
}

TEST(ExplanationTest, AnyCodeOfAShareMayBeFacebooksOwn) {
    EXPECT_THAT(CausesOf({"share", "10", "", ""}), ElementsAre("share-error-of-sdk", "outcome-of-another-dialog"));
    EXPECT_EQ(CausesOf({"414", "-12345", "", ""}).front(), "share-error-of-sdk");
    EXPECT_EQ(CausesOf({"212", "202", "0", ""}).front(), "share-error-of-sdk");
}

TEST(ExplanationTest, ANumberIsAnsweredForTheRequestsThatHaveIt) {
    EXPECT_EQ(CausesOf({"212", "0", "", ""}).at(0), "message-sent");
    EXPECT_EQ(CausesOf({"212", "0", "", ""}).at(1), "invitation-sent");
    EXPECT_THAT(CausesOf({"212", "0", "", ""}), Not(Contains("share-completed")));
    EXPECT_THAT(CausesOf({"211", "0", "", ""}), Not(Contains("message-sent")));
    EXPECT_THAT(CausesOf({"301", "0", "", ""}), Not(Contains("share-completed")));
}

TEST(ExplanationTest, BothNumbersOfASharesAreAnsweredAlike) {
    EXPECT_EQ(CausesOf({"414", "15", "", ""}), CausesOf({"211", "15", "", ""}));
    EXPECT_EQ(CausesOf({"414", "15", "", ""}).front(), "image-needs-facebook-app");
}

TEST(ExplanationTest, MethodZeroIsThatOfVideosAndLogouts) {
    EXPECT_THAT(CausesOf({"0", "12", "0", ""}), ElementsAre("photos-denied", "photos-denied-when-asked",
                                                            "photos-restricted", "outcome-of-another-dialog"));
    EXPECT_EQ(CausesOf({"0", "0", "", ""}).front(), "logout-done");
    EXPECT_THAT(CausesOf({"211", "8", "0", ""}), Not(Contains("video-incompatible")));
}

TEST(ExplanationTest, AResultOfAShareMayBelongToTheFriendFinder) {
    const std::vector<std::string> causes = CausesOf({"share", "0", "", ""});

    EXPECT_EQ(causes.front(), "share-completed");
    EXPECT_THAT(causes, Contains("friend-finder-outcome"));
    EXPECT_EQ(CausesOf({"211", "0", "", "facebook game player finder successed"}).front(), "friend-finder-closed");
}

TEST(ExplanationTest, AFriendFindersResultIsFoundUnderItsOwnNameFirst) {
    EXPECT_THAT(CausesOf({"add-friend", "9999", "13", ""}),
                ElementsAre("friend-finder-not-opened", "friend-finder-error-of-sdk"));
}

TEST(ExplanationTest, MethodMinusOneIsThatOfAFriendFinderBeforeAnyRequest) {
    EXPECT_EQ(CausesOf({"-1", "0", "", ""}).front(), "friend-finder-before-any-request");
    EXPECT_THAT(CausesOf({"211", "0", "", ""}), Not(Contains("friend-finder-before-any-request")));
}

TEST(ExplanationTest, ASuccessOfAnInvitationMayBeACancel) {
    EXPECT_THAT(CausesOf({"invite", "0", "", ""}),
                ElementsAre("invitation-sent", "invitation-cancel-looks-like-success", "invitation-recipients-missing",
                            "outcome-of-another-dialog", "friend-finder-outcome"));
}

TEST(ExplanationTest, TheDomainTellsThe301OfTheBrowserFromThatOfTheAnswer) {
    EXPECT_EQ(
        CausesOf({"login", "9999", "301", "The operation couldn't be completed. (com.facebook.sdk.login error 301.)"})
            .front(),
        "login-browser-not-opened");
    EXPECT_EQ(
        CausesOf({"login", "9999", "301", "The operation couldn't be completed. (com.facebook.sdk.core error 301.)"})
            .front(),
        "login-inconsistent-answer");
}

TEST(ExplanationTest, AShareWithTheMethodOfAMessageIsOnlyThoughtOfWhereItsResultHasThatMethod) {
    EXPECT_THAT(CausesOf({"212", "15", "15", ""}), Contains("share-with-method-of-message"));
    EXPECT_THAT(CausesOf({"211", "15", "15", ""}), Not(Contains("share-with-method-of-message")));
}

TEST(ExplanationTest, OtherMethodsThanTheServedOnesAreRefusedWith7) {
    EXPECT_THAT(CausesOf({"300", "7", "0", "not support methodID"}), Contains("share-method-unsupported"));
    EXPECT_THAT(CausesOf({"211", "7", "", ""}), Not(Contains("share-method-unsupported")));
}

TEST(ExplanationTest, SilenceHasCausesForEveryRequestAndForEveryNumber) {
    EXPECT_EQ(CausesOf({"login", "none", "", ""}).front(), "login-left-open");
    EXPECT_EQ(CausesOf({"share", "none", "", ""}).front(), "dialog-left-open");
    EXPECT_EQ(CausesOf({"invite", "none", "", ""}).front(), "invitation-left-open");
    EXPECT_EQ(CausesOf({"add-friend", "none", "", ""}).front(), "friend-finder-left-open");
    EXPECT_EQ(CausesOf({"query-friends", "none", "", ""}).front(), "result-lost-without-observer");
    EXPECT_EQ(CausesOf({"logout", "none", "", ""}).front(), "result-lost-without-observer");
    EXPECT_EQ(CausesOf({"211", "none", "", ""}).front(), "dialog-left-open");
    EXPECT_EQ(CausesOf({"300", "none", "", ""}).front(), "login-left-open");
}

TEST(ExplanationTest, SilenceIsNotMixedWithResults) {
    EXPECT_THAT(CausesOf({"share", "0", "", ""}), Not(Contains("dialog-left-open")));
    EXPECT_THAT(CausesOf({"share", "none", "", ""}), Not(Contains("share-error-of-sdk")));
}

TEST(ExplanationTest, WhatThePluginNeverCommitsHasNoCauses) {
    EXPECT_THAT(CausesOf({"login", "7", "", ""}), IsEmpty());
    EXPECT_THAT(CausesOf({"logout", "2", "", ""}), IsEmpty());
    EXPECT_THAT(CausesOf({"query-friends", "0", "", ""}), IsEmpty());
    EXPECT_THAT(CausesOf({"share", "15", "3", ""}), IsEmpty());
    EXPECT_THAT(CausesOf({"login", "0", "5", ""}), IsEmpty());
}

TEST(ExplanationTest, TheSameResultWithAnotherThirdCodeIsNearest) {
    EXPECT_THAT(NearestOf({"share", "15", "3", "Messenger isn't installed"}),
                ElementsAre("share-with-method-of-message", "image-needs-facebook-app", "queries-scheme-missing"));
}

TEST(ExplanationTest, TheCodeOfOtherRequestsIsNearerThanOtherCodes) {
    const std::vector<std::string> nearest = NearestOf({"login", "7", "", ""});

    EXPECT_THAT(nearest, SizeIs(3));
    EXPECT_THAT(nearest, Contains("add-friend-without-gaming-login"));
}

TEST(ExplanationTest, WithoutTheCodeAnywhereTheRequestsOwnResultsAreNearest) {
    EXPECT_THAT(NearestOf({"login", "2147483647", "3", ""}),
                ElementsAre("login-succeeded", "login-cancelled", "login-refused-by-facebook"));
}

TEST(ExplanationTest, ATextIsTellingWhenACauseHasIt) {
    const ParsedQuestion telling = Parsed({"share", "11", "", "Illegal image data!"});
    const ParsedQuestion strange = Parsed({"share", "11", "", "no such text"});
    const ParsedQuestion without = Parsed({"share", "11", "", ""});

    EXPECT_TRUE(IsTextTelling(telling, Explain(telling)));
    EXPECT_FALSE(IsTextTelling(strange, Explain(strange)));
    EXPECT_TRUE(IsTextTelling(without, Explain(without)));
}

} // namespace
} // namespace Tarvik::Vorn::Test
