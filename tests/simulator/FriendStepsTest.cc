// The steps of a world that concern the friend plugin: every member and every word.

#include "WorldTest.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FriendStepsTest : public WorldTest {};

TEST_F(FriendStepsTest, EveryPlayerHasAName) {
    EXPECT_EQ(TheStep<PlayerStep>(R"({"player": "nobody"})").login, PlayerLogin::kNobody);
    EXPECT_EQ(TheStep<PlayerStep>(R"({"player": "facebook"})").login, PlayerLogin::kFacebook);
    EXPECT_EQ(TheStep<PlayerStep>(R"({"player": "gaming"})").login, PlayerLogin::kGaming);
}

TEST_F(FriendStepsTest, EveryProfileHasAName) {
    EXPECT_EQ(TheStep<ProfileStep>(R"({"profile": "15.0"})").profile, SdkProfile::k15_0);
    EXPECT_EQ(TheStep<ProfileStep>(R"({"profile": "17.0"})").profile, SdkProfile::k17_0);
    EXPECT_EQ(TheStep<ProfileStep>(R"({"profile": "18.0"})").profile, SdkProfile::k18_0);
    EXPECT_EQ(TheStep<ProfileStep>(R"({"profile": "18.1"})").profile, SdkProfile::k18_1);
    EXPECT_EQ(TheStep<ProfileStep>(R"({"profile": "as-documented"})").profile, SdkProfile::kAsDocumented);
}

TEST_F(FriendStepsTest, AppsAreInstalledRemovedOrLeftAlone) {
    const auto both = TheStep<AppsStep>(R"({"apps": {"facebook": true, "messenger": false}})");
    const auto none = TheStep<AppsStep>(R"({"apps": {}})");

    EXPECT_EQ(both.facebook, true);
    EXPECT_EQ(both.messenger, false);
    EXPECT_EQ(none.facebook, std::nullopt);
    EXPECT_EQ(none.messenger, std::nullopt);
}

TEST_F(FriendStepsTest, QueriesSchemesAreAListOfTexts) {
    EXPECT_THAT(TheStep<QueriesSchemesStep>(R"({"queries-schemes": ["fbapi", "x"]})").schemes,
                ElementsAre("fbapi", "x"));
    EXPECT_THAT(TheStep<QueriesSchemesStep>(R"({"queries-schemes": []})").schemes, IsEmpty());
}

TEST_F(FriendStepsTest, EveryPermissionHasAName) {
    const auto permission = [this](const std::string& name) {
        return TheStep<PhotoPermissionStep>("{\"photo-permission\": \"" + name + "\"}").permission;
    };

    EXPECT_EQ(permission("not-asked"), PhotoPermission::kNotAsked);
    EXPECT_EQ(permission("restricted"), PhotoPermission::kRestricted);
    EXPECT_EQ(permission("denied"), PhotoPermission::kDenied);
    EXPECT_EQ(permission("authorized"), PhotoPermission::kAuthorized);
    EXPECT_EQ(permission("limited"), PhotoPermission::kLimited);
}

TEST_F(FriendStepsTest, APromptIsAnsweredWithAPermissionOnAThread) {
    const auto step = TheAnswer<AnswerPhotoPromptStep>(
        R"({"answer-photo-prompt": {"permission": "denied", "thread": "background"}})");

    EXPECT_EQ(step.permission, PhotoPermission::kDenied);
    EXPECT_TRUE(step.manner.background);
}

TEST_F(FriendStepsTest, AShareHasAllItsMembers) {
    const auto step = TheStep<ShareStep>(R"({"share": {"methodID": 211, "seqID": "s", "observer": 4294967295,
        "type": -5, "channel": "c", "subChannel": "Game", "user": "u", "title": "t", "desc": "d", "imagePath": "i",
        "thumbPath": "th", "mediaPath": "m", "link": "l", "extraJson": "{}"}})");

    EXPECT_EQ(step.request.params.methodID, 211);
    EXPECT_EQ(step.request.params.seqID, "s");
    EXPECT_EQ(step.request.params.channel, "c");
    EXPECT_EQ(step.request.params.subChannel, "Game");
    EXPECT_EQ(step.request.observerID, 4294967295u);
    const VornFriendReqInfo& info = step.request.info;
    EXPECT_EQ(info.type, -5);
    EXPECT_EQ(info.user.toString(), "u");
    EXPECT_EQ(info.title.toString(), "t");
    EXPECT_EQ(info.desc.toString(), "d");
    EXPECT_EQ(info.imagePath.toString(), "i");
    EXPECT_EQ(info.thumbPath.toString(), "th");
    EXPECT_EQ(info.mediaPath.toString(), "m");
    EXPECT_EQ(info.link.toString(), "l");
    EXPECT_EQ(info.extraJson.toString(), "{}");
}

TEST_F(FriendStepsTest, AMessageNeedsIDsAndTypeOnly) {
    const auto step =
        TheStep<SendMessageStep>(R"({"send-message": {"methodID": 212, "seqID": "s", "observer": 1, "type": 10001}})");

    EXPECT_EQ(step.request.params.methodID, 212);
    EXPECT_EQ(step.request.info.type, 10001);
    EXPECT_EQ(step.request.info.link.toString(), "");
}

TEST_F(FriendStepsTest, AddFriendAndQueryFriendsHaveTheirParameters) {
    const auto add = TheStep<AddFriendStep>(
        R"({"add-friend": {"methodID": 1, "seqID": "s", "observer": 31, "subChannel": "Game"}})");
    const auto query = TheStep<QueryFriendsStep>(R"({"query-friends": {"methodID": 2, "seqID": "q"}})");

    EXPECT_EQ(add.params.methodID, 1);
    EXPECT_EQ(add.params.subChannel, "Game");
    EXPECT_EQ(add.observerID, 31u);
    EXPECT_EQ(query.params.methodID, 2);
    EXPECT_EQ(query.params.seqID, "q");
}

// The outcome that a word stands for, of any kind of answer.
#define OUTCOME(Step, name, word) TheAnswer<Step>("{\"" name "\": {\"outcome\": \"" word "\"}}").outcome

TEST_F(FriendStepsTest, EveryEndOfAFriendFinderHasAName) {
    using Outcome = AnswerFriendFinderStep::Outcome;
    EXPECT_EQ(OUTCOME(AnswerFriendFinderStep, "answer-friend-finder", "returned"), Outcome::kReturned);
    EXPECT_EQ(OUTCOME(AnswerFriendFinderStep, "answer-friend-finder", "closed"), Outcome::kClosed);
    EXPECT_EQ(OUTCOME(AnswerFriendFinderStep, "answer-friend-finder", "not-opened"), Outcome::kNotOpened);

    const auto error = TheAnswer<AnswerFriendFinderStep>(R"({"answer-friend-finder": {"outcome": "error", "domain": "d",
        "code": -9007199254740993, "message": "m", "thread": "background"}})");
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.error.domain, "d");
    EXPECT_EQ(error.error.code, -9007199254740993);
    EXPECT_EQ(error.error.message, "m");
    EXPECT_TRUE(error.manner.background);
}

TEST_F(FriendStepsTest, EveryEndOfAGameRequestHasAName) {
    using Outcome = AnswerGameRequestStep::Outcome;
    EXPECT_EQ(OUTCOME(AnswerGameRequestStep, "answer-game-request", "cancel-button"), Outcome::kCancelButton);
    EXPECT_EQ(OUTCOME(AnswerGameRequestStep, "answer-game-request", "closed"), Outcome::kClosed);
    EXPECT_EQ(OUTCOME(AnswerGameRequestStep, "answer-game-request", "page-error"), Outcome::kPageError);
    EXPECT_EQ(OUTCOME(AnswerGameRequestStep, "answer-game-request", "without-results"), Outcome::kWithoutResults);

    const auto sent = TheAnswer<AnswerGameRequestStep>(R"({"answer-game-request": {"outcome": "sent", "request": "9",
        "recipients": ["1", "2"], "dialog": 3}})");
    EXPECT_EQ(sent.outcome, Outcome::kSent);
    EXPECT_EQ(sent.requestID, "9");
    EXPECT_THAT(sent.recipients, ElementsAre("1", "2"));
    EXPECT_EQ(sent.manner.index, 3u);
    EXPECT_FALSE(sent.manner.background);

    const auto error = TheAnswer<AnswerGameRequestStep>(
        R"({"answer-game-request": {"outcome": "error", "domain": "d", "code": 5, "message": "m"}})");
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.error.code, 5);
}

TEST_F(FriendStepsTest, EveryEndOfAShareHasAName) {
    using Outcome = AnswerShareStep::Outcome;
    EXPECT_EQ(OUTCOME(AnswerShareStep, "answer-share", "cancelled"), Outcome::kCancelled);
    EXPECT_EQ(OUTCOME(AnswerShareStep, "answer-share", "returned"), Outcome::kReturned);
    EXPECT_EQ(OUTCOME(AnswerShareStep, "answer-share", "app-error"), Outcome::kAppError);
    EXPECT_EQ(OUTCOME(AnswerShareStep, "answer-share", "not-opened"), Outcome::kNotOpened);

    const auto completed = TheAnswer<AnswerShareStep>(
        R"({"answer-share": {"outcome": "completed", "postID": "1_2", "dialog": 1, "thread": "background"}})");
    EXPECT_EQ(completed.outcome, Outcome::kCompleted);
    EXPECT_EQ(completed.postID, "1_2");
    EXPECT_EQ(completed.manner.index, 1u);
    EXPECT_TRUE(completed.manner.background);

    const auto error = TheAnswer<AnswerShareStep>(
        R"({"answer-share": {"outcome": "error", "domain": "d", "code": 5, "message": "m"}})");
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.error.message, "m");
}

TEST_F(FriendStepsTest, EveryEndOfASaveHasAName) {
    using Outcome = FinishSavingStep::Outcome;
    const auto saved =
        TheAnswer<FinishSavingStep>(R"({"finish-saving": {"outcome": "saved", "asset": "A", "thread": "background"}})");
    const auto error = TheAnswer<FinishSavingStep>(
        R"({"finish-saving": {"outcome": "error", "domain": "d", "code": 5, "message": "m"}})");

    EXPECT_EQ(saved.outcome, Outcome::kSaved);
    EXPECT_EQ(saved.asset, "A");
    EXPECT_TRUE(saved.manner.background);
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.error.domain, "d");
}

TEST_F(FriendStepsTest, EveryEndOfAnImageUploadHasAName) {
    using Outcome = AnswerImageUploadStep::Outcome;
    const auto uploaded = TheAnswer<AnswerImageUploadStep>(
        R"({"answer-image-upload": {"outcome": "uploaded", "photoID": "7", "upload": 2, "thread": "background"}})");
    const auto notOpened = TheAnswer<AnswerImageUploadStep>(
        R"({"answer-image-upload": {"outcome": "dialog-not-opened", "photoID": "7"}})");
    const auto error = TheAnswer<AnswerImageUploadStep>(
        R"({"answer-image-upload": {"outcome": "error", "domain": "d", "code": 5, "message": "m"}})");

    EXPECT_EQ(uploaded.outcome, Outcome::kUploaded);
    EXPECT_EQ(uploaded.photoID, "7");
    EXPECT_EQ(uploaded.manner.index, 2u);
    EXPECT_TRUE(uploaded.manner.background);
    EXPECT_EQ(notOpened.outcome, Outcome::kDialogNotOpened);
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.error.message, "m");
}

TEST_F(FriendStepsTest, ProgressIsSentAndExpectedBytes) {
    const auto step = TheAnswer<UploadProgressStep>(
        R"({"upload-progress": {"sent": -1, "expected": 9007199254740993, "upload": 1, "thread": "background"}})");

    EXPECT_EQ(step.sent, -1);
    EXPECT_EQ(step.expected, 9007199254740993);
    EXPECT_EQ(step.manner.index, 1u);
    EXPECT_TRUE(step.manner.background);
}

TEST_F(FriendStepsTest, EveryEndOfAVideoUploadHasAName) {
    using Outcome = AnswerVideoUploadStep::Outcome;
    EXPECT_EQ(OUTCOME(AnswerVideoUploadStep, "answer-video-upload", "server-refused"), Outcome::kServerRefused);
    EXPECT_EQ(OUTCOME(AnswerVideoUploadStep, "answer-video-upload", "malformed"), Outcome::kMalformed);

    const auto uploaded = TheAnswer<AnswerVideoUploadStep>(
        R"({"answer-video-upload": {"outcome": "uploaded", "videoID": "8", "upload": 2, "thread": "background"}})");
    const auto error = TheAnswer<AnswerVideoUploadStep>(
        R"({"answer-video-upload": {"outcome": "error", "domain": "d", "code": 5, "message": "m"}})");
    EXPECT_EQ(uploaded.outcome, Outcome::kUploaded);
    EXPECT_EQ(uploaded.videoID, "8");
    EXPECT_EQ(uploaded.manner.index, 2u);
    EXPECT_TRUE(uploaded.manner.background);
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.error.code, 5);
}

} // namespace
} // namespace Tarvik::Vorn::Test
