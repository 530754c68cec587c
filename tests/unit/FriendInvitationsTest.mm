// Invitations: what is refused, what Facebook's game-request dialog is shown, and what its outcomes become. The dialog is
// the stand-in's, which judges its content as the SDK does.

#include "FriendTest.h"

#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FacebookProfile.h"
#include "UIKit/UIApplication+Control.h"

namespace Tarvik::Vorn::Test {
namespace {

using Host::GameRequestAnswer;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* kInvite = "-[VornFriendFacebook invite:params:]";
constexpr const char* kIsBatch = "-[VornFriendFacebook isBatchInvite:seqID:]";
constexpr const char* kUserList = "-[VornFriendFacebook getInviteUserList:seqID:]";
constexpr const char* kEmptyTexts = "title or desc in reqInfo is empty";
constexpr const char* kNoUserList = "user list is not a array or is empty";

VornFriendReqInfo Invitation(const std::string& extraJson = "") {
    VornFriendReqInfo request = RequestOf(10003);
    request.title = "Come and play";
    request.desc = "A game for you";
    request.user = "not read";
    request.link = "not read";
    request.imagePath = "not read";
    request.extraJson = extraJson;
    return request;
}

std::string Batch(const std::string& userList) {
    return R"({"inviteType":"batch","userList":)" + userList + "}";
}

class FriendInvitationsTest : public FriendTest {
protected:
    void Invite(const VornFriendReqInfo& request) const { SendMessage(request, kCall); }
    void InviteBatch(const std::string& userList) const { Invite(Invitation(Batch(userList))); }

    // Without the line and the trace of the entry.
    std::vector<LogLine> LinesOfTheInvitation() {
        std::vector<LogLine> lines = Lines();
        if (!lines.empty()) {
            lines.erase(lines.begin());
        }
        return lines;
    }

    static std::vector<std::string> Recipients() {
        const auto shown = Host::GameRequests();
        return shown.size() == 1 ? shown[0].recipients : std::vector<std::string>{"not one dialog was shown"};
    }

    void ExpectRefused(const char* why) {
        EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Refused(11, why))));
        EXPECT_THAT(Lines().back(), Error(kFriendFile, kInvite, std::string("[ i1 ] ") + why));
        EXPECT_THAT(Host::GameRequests(), IsEmpty());
        EXPECT_THAT(Log().Traces(), IsEmpty());
    }

    static void Answer(const GameRequestAnswer& answer) {
        ASSERT_TRUE(Host::AnswerGameRequest(answer)) << "no game request is open";
    }

    static const inline Call kCall{.methodID = 212, .seqID = "i1", .observerID = 32};
};

// ---- Refused before a dialog

TEST_F(FriendInvitationsTest, AnEmptyTitleIsRefusedWithCode11) {
    VornFriendReqInfo request = Invitation();
    request.title = "";

    Invite(request);

    ExpectRefused(kEmptyTexts);
}

TEST_F(FriendInvitationsTest, AnEmptyMessageIsRefusedWithCode11) {
    VornFriendReqInfo request = Invitation();
    request.desc = "";

    Invite(request);

    ExpectRefused(kEmptyTexts);
}

TEST_F(FriendInvitationsTest, EmptyTextsAreRefusedBeforeTheUserListIsLookedAt) {
    VornFriendReqInfo request = Invitation(Batch("5"));
    request.title = "";

    Invite(request);

    ExpectRefused(kEmptyTexts);
    EXPECT_THAT(LinesOfTheInvitation(), SizeIs(1));
}

TEST_F(FriendInvitationsTest, RefusalsCarryTheRawBytesOfASequenceIDThatIsNotUTF8) {
    const Call call{.methodID = 212, .seqID = "\xff", .observerID = 32};

    SendMessage(RequestOf(10003), call);
    SendMessage(Invitation(Batch("[]")), call);

    EXPECT_THAT(Delivered(),
                ElementsAre(Result(call, Refused(11, kEmptyTexts)), Result(call, Refused(11, kNoUserList))));
}

class FriendUserLists : public FriendInvitationsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendUserLists, ThatCannotBeUsedAreRefusedWithCode11) {
    Invite(Invitation(GetParam()));

    ExpectRefused(kNoUserList);
    EXPECT_THAT(LinesOfTheInvitation(),
                ElementsAre(Debug(kFriendFile, kIsBatch, std::string("[ i1 ] extendJson : ") + GetParam()),
                            Debug(kFriendFile, kUserList, std::string("[ i1 ] extraJson : ") + GetParam()),
                            Error(kFriendFile, kInvite, std::string("[ i1 ] ") + kNoUserList)));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendUserLists,
                         ::testing::Values(R"({"inviteType":"batch"})", R"({"inviteType":"batch","userList":null})",
                                           R"({"inviteType":"batch","userList":[]})",
                                           R"({"inviteType":"batch","userList":"123"})",
                                           R"({"inviteType":"batch","userList":123})",
                                           R"({"inviteType":"batch","userList":true})",
                                           R"({"inviteType":"batch","userList":{"0":"123"}})"));

class FriendUserListElements : public FriendInvitationsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendUserListElements, ThatAreNeitherTextNorNumberSpoilTheWholeList) {
    const std::string extraJson = Batch(std::string(R"(["123",)") + GetParam() + R"(,"456"])");

    Invite(Invitation(extraJson));

    ExpectRefused(kNoUserList);
    EXPECT_THAT(LinesOfTheInvitation(),
                ElementsAre(Debug(kFriendFile, kIsBatch, "[ i1 ] extendJson : " + extraJson),
                            Debug(kFriendFile, kUserList, "[ i1 ] extraJson : " + extraJson),
                            Error(kFriendFile, kUserList, "[ i1 ] userList in extraJson is not number or string"),
                            Error(kFriendFile, kInvite, std::string("[ i1 ] ") + kNoUserList)));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendUserListElements,
                         ::testing::Values("{}", R"({"id":"1"})", "[]", R"(["1"])", "null"));

// ---- A single invitation

class FriendSingleInvitations : public FriendInvitationsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendSingleInvitations, LetThePlayerPick) {
    Invite(Invitation(GetParam()));

    const auto shown = Host::GameRequests();
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_EQ(shown[0].title, "Come and play");
    EXPECT_EQ(shown[0].message, "A game for you");
    EXPECT_THAT(shown[0].recipients, IsEmpty());
    EXPECT_EQ(shown[0].filters, FBSDKGameRequestFilterNone);
    EXPECT_THAT(LinesOfTheInvitation(),
                ElementsAre(Debug(kFriendFile, kIsBatch, std::string("[ i1 ] extendJson : ") + GetParam()),
                            Debug(kFriendFile, kInvite, "[ i1 ] Call Facebook API")));
    EXPECT_THAT(Delivered(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Table, FriendSingleInvitations,
    ::testing::Values("", "{}", "no json", R"("batch")", R"(["batch"])", R"({"inviteType":"Batch"})",
                      R"({"inviteType":"single"})", R"({"inviteType":""})", R"({"InviteType":"batch"})",
                      R"({"inviteType":"batch )", R"({"userList":["123"]})",
                      R"({"inviteType":"batchx","userList":["123"]})",
                      // Not a text: no batch, and nothing raises.
                      R"({"inviteType":1,"userList":["123"]})", R"({"inviteType":true,"userList":["123"]})",
                      R"({"inviteType":null,"userList":["123"]})", R"({"inviteType":["batch"],"userList":["123"]})",
                      R"({"inviteType":{"batch":1},"userList":["123"]})", R"({"inviteType":1.5})"));

TEST_F(FriendInvitationsTest, TheUserOfTheRequestNeverSelectsARecipient) {
    VornFriendReqInfo request = Invitation();
    request.user = "123";

    Invite(request);

    EXPECT_THAT(Recipients(), IsEmpty());
}

TEST_F(FriendInvitationsTest, ExtraTextThatIsNotUTF8MeansASingleInvitation) {
    Invite(Invitation("{\"inviteType\":\"batch\",\"userList\":[\"\xff\"]}"));

    EXPECT_THAT(Recipients(), IsEmpty());
    EXPECT_THAT(LinesOfTheInvitation(), Contains(Debug(kFriendFile, kIsBatch, "[ i1 ] extendJson : ")));
}

TEST_F(FriendInvitationsTest, APercentSignInTheExtraTextIsText) {
    Invite(Invitation("%s%n"));

    EXPECT_THAT(LinesOfTheInvitation(), Contains(Debug(kFriendFile, kIsBatch, "[ i1 ] extendJson : %s%n")));
}

TEST_F(FriendInvitationsTest, AMessageThatIsNotUTF8IsRefusedByFacebook) {
    VornFriendReqInfo request = Invitation();
    request.desc = "\xff";

    Invite(request);

    EXPECT_THAT(Delivered(), SizeIs(1));
    EXPECT_THAT(Delivered()[0].record, HasSubstr("retCode: 9999"));
}

// ---- A batch invitation

TEST_F(FriendInvitationsTest, ABatchInvitesItsUserListInOrder) {
    InviteBatch(R"(["123",456,"0789"])");

    EXPECT_THAT(Recipients(), ElementsAre("123", "456", "0789"));
    const std::string extraJson = Batch(R"(["123",456,"0789"])");
    EXPECT_THAT(LinesOfTheInvitation(), ElementsAre(Debug(kFriendFile, kIsBatch, "[ i1 ] extendJson : " + extraJson),
                                                    Debug(kFriendFile, kUserList, "[ i1 ] extraJson : " + extraJson),
                                                    Debug(kFriendFile, kInvite, "[ i1 ] Call Facebook API")));
    EXPECT_THAT(Delivered(), IsEmpty());
}

TEST_F(FriendInvitationsTest, KeptTheTwoLinesAboutTheExtraTextSpellItDifferently) {
    InviteBatch("[1]");

    EXPECT_EQ(LinesOfTheInvitation().at(0).text, "[ i1 ] extendJson : " + Batch("[1]"));
    EXPECT_EQ(LinesOfTheInvitation().at(1).text, "[ i1 ] extraJson : " + Batch("[1]"));
}

TEST_F(FriendInvitationsTest, ANumberMayComeFirst) {
    InviteBatch(R"([456,"123"])");

    EXPECT_THAT(Recipients(), ElementsAre("456", "123"));
}

TEST_F(FriendInvitationsTest, NumbersBecomeTheirDecimalText) {
    InviteBatch("[0,-5,100000,1234567890123456789,9223372036854775807,18446744073709551615,1.5,-0.25,true,false]");

    EXPECT_THAT(Recipients(), ElementsAre("0", "-5", "100000", "1234567890123456789", "9223372036854775807",
                                          "18446744073709551615", "1.5", "-0.25", "1", "0"));
}

TEST_F(FriendInvitationsTest, TextsAreTakenAsTheyStand) {
    InviteBatch(R"(["", " ", "a\"b", "\u00e9", "%s"])");

    EXPECT_THAT(Recipients(), ElementsAre("", " ", "a\"b", "\xc3\xa9", "%s"));
}

TEST_F(FriendInvitationsTest, OfTwoUserListsTheLaterCounts) {
    Invite(Invitation(R"({"inviteType":"x","inviteType":"batch","userList":["1"],"userList":["2"]})"));

    EXPECT_THAT(Recipients(), ElementsAre("2"));
}

// ---- The dialog

TEST_F(FriendInvitationsTest, ShowsTheDialogFirstThenLogsThenTraces) {
    Host::SetPlatformCallListener([this](const Host::PlatformCall& call) { Log().Note(call.selector); });

    Invite(Invitation());

    const auto transcript = Log().Transcript();
    ASSERT_THAT(transcript, SizeIs(5)); // The entry, the invitation's kind, the dialog, the line, the trace.
    EXPECT_EQ(transcript[2], "showWithContent:delegate:");
    EXPECT_THAT(transcript[3], HasSubstr("[ i1 ] Call Facebook API"));
    EXPECT_THAT(Log().Traces(), ElementsAre(TraceLine{kFriendFile, kInvite, "i1", R"({"method":"showWithContent"})",
                                                      "FacebookFriend"}));
}

TEST_F(FriendInvitationsTest, ShowsTheDialogOnTheCallersThread) {
    OnAnotherThread([this] { Invite(Invitation()); });

    const auto calls = Host::PlatformCalls::All();
    ASSERT_THAT(calls, Not(IsEmpty()));
    EXPECT_FALSE(calls.back().onMainThread);
    EXPECT_EQ(Host::OpenGameRequestCount(), 1u);
}

TEST_F(FriendInvitationsTest, TheRequestMayBeGoneWhenTheDialogAnswers) {
    {
        auto request = std::make_unique<VornFriendReqInfo>(Invitation(Batch(R"(["123"])")));
        Invite(*request);
    }

    Answer(GameRequestAnswer::Sent(@"900", @[ @"123" ]));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0))));
}

TEST_F(FriendInvitationsTest, WhatFacebookRefusesInsideTheCallIsCode9999AndStillCountsAsCalled) {
    VornFriendReqInfo request = Invitation();
    request.desc = "\xff"; // Not a text: Facebook gets an empty message.

    Invite(request);

    EXPECT_EQ(Host::OpenGameRequestCount(), 0u);
    EXPECT_THAT(Delivered(), SizeIs(1));
    EXPECT_THAT(Delivered()[0].record, HasSubstr("retCode: 9999"));
    EXPECT_THAT(Delivered()[0].record, HasSubstr("thirdCode: 2,"));
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kInvite, "[ i1 ] Call Facebook API"));
    EXPECT_THAT(Log().Traces(), SizeIs(1));
}

TEST_F(FriendInvitationsTest, KeptARequestSentOnTheWebNamesNoRecipients) {
    InviteBatch(R"(["111","222"])");

    Answer(GameRequestAnswer::Sent(@"900", @[ @"111", @"222" ]));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0)))); // "to[0]" and "to[1]" are not "to".
}

TEST_F(FriendInvitationsTest, KeptARequestSentInTheFacebookAppNamesNoRecipients) {
    LogInForGaming();
    InviteBatch(R"(["111"])");

    Answer(GameRequestAnswer::Sent(@"900", @[ @"111" ]));

    EXPECT_EQ(Host::GameRequests().at(0).route, Host::GameRequestRoute::kGaming);
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0))));
}

TEST_F(FriendInvitationsTest, ARequestAnsweredAsFacebookDocumentsItNamesItsRecipients) {
    Host::SetFacebookProfile(Host::FacebookProfile::kAsDocumented);
    InviteBatch(R"(["111","222"])");

    Answer(GameRequestAnswer::Sent(@"900", @[ @"111", @"222" ]));

    InnerBaseRet expected(0);
    expected.extraJson = R"({"RequestRecipients":["111","222"]})";
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, expected)));
}

TEST_F(FriendInvitationsTest, KeptThePagesCancelButtonIsASuccess) {
    Invite(Invitation());

    Answer(GameRequestAnswer::CancelButton());

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(0)))); // Facebook completes with a cancel gesture.
}

TEST_F(FriendInvitationsTest, AClosedPageIsCode2) {
    Invite(Invitation());

    Answer(GameRequestAnswer::Closed());

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Coded(2))));
}

TEST_F(FriendInvitationsTest, AnErrorOfThePageIsNeverAnswered) {
    Invite(Invitation());

    Answer(GameRequestAnswer::ErrorOfThePage());

    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_EQ(Host::OpenGameRequestCount(), 0u);
}

TEST_F(FriendInvitationsTest, ADialogThatFindsNowhereToShowIsNeverAnswered) {
    Host::SetGameRequestsCanShow(false);

    Invite(Invitation());

    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kInvite, "[ i1 ] Call Facebook API"));
}

TEST_F(FriendInvitationsTest, ASecondInvitationWhileADialogIsOpenTakesOverTheFirstOnesOutcome) {
    Invite(Invitation());
    const Call second{.methodID = 212, .seqID = "i2", .observerID = 31};
    SendMessage(Invitation(), second);

    Answer(GameRequestAnswer::Closed());
    Answer(GameRequestAnswer::Sent(@"900", nil));

    EXPECT_THAT(Delivered(), ElementsAre(Result(second, Coded(2)), Result(second, Coded(0))));
}

} // namespace
} // namespace Tarvik::Vorn::Test
