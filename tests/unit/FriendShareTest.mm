// The send and share pipeline: which of Facebook's surfaces is shown for which request, in which mode, what is refused with
// which code, and that nothing happens before the main queue runs.

#include "FriendShareTest.h"

#include "InfoDictionary.h"

namespace Tarvik::Vorn::Test {
namespace {

using Host::ShareAnswer;
using Host::ShareSurface;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

const std::string kShareBlock = BlockOf(kPipeline, 1);
const std::string kSendBlock = BlockOf(kPipeline, 1);
const std::string kDecision = BlockOf(kPipeline, 2);

constexpr const char* kCalled = "[ s1 ] Call Facebook API";

class FriendPipelineTest : public FriendShareTest {
protected:
    void Send(const VornFriendReqInfo& request, const Call& call = {.methodID = 212}) const {
        SendMessage(request, call);
        Settle();
    }

    void ShareAndSettle(const VornFriendReqInfo& request, const Call& call = {}) const {
        Share(request, call);
        Settle();
    }

    static FBSDKShareDialogMode OnlyMode() {
        const auto shown = Host::ShownDialogs();
        EXPECT_EQ(shown.size(), 1u);
        return shown.size() == 1 ? shown[0].mode : FBSDKShareDialogModeAutomatic;
    }

    TraceLine Trace(const std::string& function, const std::string& method) const {
        return {kFriendFile, function, "s1", "{\"method\":\"" + method + "\"}", "FacebookFriend"};
    }
};

// ---- Entry and hop

TEST_F(FriendPipelineTest, TheEntryLogsTheRequestWithItsIDs) {
    const VornFriendReqInfo request = LinkRequest();

    Share(request, {.methodID = 414, .seqID = "e1", .observerID = 32});

    EXPECT_THAT(Lines(), Contains(Debug(kFriendFile, kPipeline,
                                        "[ e1 ] reqInfo : " + VornJsonManager::ToJson(request, "") +
                                            ", methodID : 414, observerID: 32")));
}

TEST_F(FriendPipelineTest, NothingIsShownBeforeTheMainQueueRuns) {
    Share(LinkRequest());
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());

    DrainMainQueue();
    EXPECT_THAT(Host::ShownDialogs(), SizeIs(1));
}

TEST_F(FriendPipelineTest, DialogsAreShownOnTheMainThreadWhereverTheRequestComesFrom) {
    OnAnotherThread([this] { Share(LinkRequest()); });
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());

    DrainMainQueue();

    const auto calls = Host::PlatformCalls::All();
    EXPECT_THAT(calls, Not(IsEmpty()));
    for (const Host::PlatformCall& call : calls) {
        EXPECT_TRUE(call.onMainThread) << call.selector;
    }
}

TEST_F(FriendPipelineTest, ARequestsRecordMayDieAsSoonAsTheCallReturns) {
    VornFriendReqInfo request = LinkRequest("https://example.com/a-link-with-a-buffer-of-its-own");
    request.extraJson = R"({"friends":["a person with a buffer of their own"]})";

    ShareFromDyingRecord(request, {.seqID = "a sequence ID with a buffer of its own"});
    Settle();

    EXPECT_EQ(TextOf([OnlyContent() contentURL]), "https://example.com/a-link-with-a-buffer-of-its-own");
    EXPECT_THAT(Lines().back().text, HasSubstr("[ a sequence ID with a buffer of its own ]"));
}

TEST_F(FriendPipelineTest, TheDialogsOfTwoRequestsShowInTheOrderOfTheRequests) {
    Share(LinkRequest("https://example.com/1"));
    Share(LinkRequest("https://example.com/2"));
    Settle();

    const auto shown = Host::ShownDialogs();
    ASSERT_THAT(shown, SizeIs(2));
    EXPECT_EQ(TextOf([shown[0].content.get() contentURL]), "https://example.com/1");
    EXPECT_EQ(TextOf([shown[1].content.get() contentURL]), "https://example.com/2");
}

// ---- What has no surface

class FriendMethodIDs : public FriendPipelineTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendMethodIDs, OtherThanShareAndSendAreRefusedWithCode7) {
    const Call call{.methodID = GetParam(), .seqID = "s1", .observerID = 32};

    ShareAndSettle(LinkRequest(), call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(7))));
    EXPECT_THAT(Lines(),
                Contains(Error(kFriendFile, kDecision,
                               "[ s1 ] sendOrShareLinkAndIMG not support methodID: " + std::to_string(GetParam()))));
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, FriendMethodIDs, ::testing::Values(0, -1, 210, 213, 413, 415, INT32_MAX));

TEST_F(FriendPipelineTest, ContentThatCannotBeBuiltIsReportedBeforeTheMethodIDIsLookedAt) {
    const Call call{.methodID = 213};

    ShareAndSettle(LinkRequest(""), call);

    EXPECT_THAT(Delivered(),
                ElementsAre(Result(call, Refused(11, "the link is null when share/send link, please check!"))));
    EXPECT_EQ(Lines().back(), Error(kFriendFile, kDecision, "[ s1 ] sendOrShareLinkAndIMG content is nil"));
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

TEST_F(FriendPipelineTest, AResultOfTheBuilderKeepsItsMethodID0) {
    VornFriendReqInfo request = RequestOf(10005);

    ShareAndSettle(request, {.methodID = 211});

    EXPECT_THAT(Delivered(), ElementsAre(ResultWithout({}, Coded(11))));
    EXPECT_EQ(Lines().back(), Error(kFriendFile, kDecision, "[ s1 ] sendOrShareLinkAndIMG content is nil"));
}

// The plugin's front lets no other types through to the pipeline.
class FriendPipelineTypes : public FriendPipelineTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendPipelineTypes, WithoutContentAreRefusedWithCode7ByTheBuilder) {
    const Call call{.methodID = 211};

    [static_cast<id<VornSharing>>(Plugin()) sendOrShareLinkOrIMG:RequestOf(GetParam())
                                                        methodID:211
                                                           seqID:"s1"
                                                      observerID:31];

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(7))));
    EXPECT_THAT(Lines(),
                Contains(Error(kFriendFile, kBuilder,
                               "[ s1 ] createSendOrShareContent not support type : " + std::to_string(GetParam()))));
    EXPECT_EQ(Lines().back(), Error(kFriendFile, kDecision, "[ s1 ] sendOrShareLinkAndIMG content is nil"));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendPipelineTypes, ::testing::Values(10003, 10004, 0, 10006));

class FriendTypesWithContent : public FriendPipelineTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendTypesWithContent, AreRefusedWithCode7ByTheDecisionToo) {
    const Call call{.methodID = 414, .seqID = "s1", .observerID = 32};

    ShareWithContentForAnyType(GetParam(), call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(7))));
    EXPECT_EQ(Lines().back(), Error(kFriendFile, kShareBlock,
                                    "[ s1 ] sendOrShareLinkAndIMG not support type: " + std::to_string(GetParam())));
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, FriendTypesWithContent, ::testing::Values(10003, 10004, 0));

// ---- Messenger

TEST_F(FriendPipelineTest, ALinkIsSentThroughMessenger) {
    Send(LinkRequest());

    const auto shown = Host::ShownDialogs();
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_EQ(shown[0].surface, ShareSurface::kMessageDialog);
    EXPECT_TRUE(shown[0].opened);
    EXPECT_EQ(TextOf([OnlyContent() contentURL]), "https://example.com/game");
    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kSendBlock, kCalled));
    EXPECT_THAT(Log().Traces(), ElementsAre(Trace(kSendBlock, "setShareContent")));
}

TEST_F(FriendPipelineTest, TheMessageDialogIsMadeEmptyAndFilledWhenItCanShow) {
    Send(LinkRequest());

    std::vector<std::string> selectors;
    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        EXPECT_EQ(call.className, "FBSDKMessageDialog");
        selectors.push_back(call.selector);
    }
    EXPECT_THAT(selectors, ElementsAre("initWithContent:delegate:", "setDelegate:", "setShareContent:", "show"));
    EXPECT_EQ(Host::PlatformCalls::All().at(0).arguments, "nil, nil");
}

TEST_F(FriendPipelineTest, WithoutMessengerASendIsRefusedWithCode15) {
    RemoveMessenger();
    const Call call{.methodID = 212, .seqID = "s1", .observerID = 32};

    Send(LinkRequest(), call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Refused(15, "Messenger isn't installed"))));
    EXPECT_EQ(Lines().back(), Error(kFriendFile, kSendBlock, "[ s1 ] Messenger isn't installed"));
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

TEST_F(FriendPipelineTest, WithoutTheQueriesSchemeMessengerCountsAsMissing) {
    Host::RegisterQueriesSchemes(@[ @"fbapi", @"fbauth2" ]);
    const Call call{.methodID = 212};

    Send(LinkRequest(), call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Refused(15, "Messenger isn't installed"))));
}

TEST_F(FriendPipelineTest, ASendNeedsNoFacebookAppAndNoLogin) {
    RemoveFacebookApp();

    Send(LinkRequest());

    EXPECT_THAT(Host::ShownDialogs(), SizeIs(1));
    EXPECT_THAT(Lines(), Not(Contains(::testing::Field(&LogLine::text, HasSubstr("accessToken")))));
}

TEST_F(FriendPipelineTest, AShareRequestWithTheSendMethodGoesThroughMessenger) {
    ShareAndSettle(LinkRequest(), {.methodID = 212});

    EXPECT_EQ(Host::ShownDialogs().at(0).surface, ShareSurface::kMessageDialog);
}

TEST_F(FriendPipelineTest, ASendRequestWithAShareMethodGoesThroughTheShareDialog) {
    Send(LinkRequest(), {.methodID = 414});

    EXPECT_EQ(Host::ShownDialogs().at(0).surface, ShareSurface::kShareDialog);
}

TEST_F(FriendPipelineTest, AnImageWithTheSendMethodGoesThroughMessengerToo) {
    ShareAndSettle(ImageRequest(), {.methodID = 212});

    EXPECT_EQ(Host::ShownDialogs().at(0).surface, ShareSurface::kMessageDialog);
}

TEST_F(FriendPipelineTest, AGamingLoginSendsThroughMessengerLikeAnyOther) {
    LogInForGaming();

    Send(LinkRequest());

    EXPECT_EQ(Host::ShownDialogs().at(0).surface, ShareSurface::kMessageDialog);
}

// ---- The share dialog

class FriendShareMethods : public FriendPipelineTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendShareMethods, ShareALinkInTheFacebookApp) {
    ShareAndSettle(LinkRequest(), {.methodID = GetParam()});

    const auto shown = Host::ShownDialogs();
    ASSERT_THAT(shown, SizeIs(1));
    EXPECT_EQ(shown[0].surface, ShareSurface::kShareDialog);
    EXPECT_EQ(shown[0].mode, FBSDKShareDialogModeNative);
    EXPECT_TRUE(shown[0].opened);
    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kShareBlock, kCalled));
    EXPECT_THAT(Log().Traces(), ElementsAre(Trace(kShareBlock, "FBSDKShareDialog")));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendShareMethods, ::testing::Values(211, 414));

TEST_F(FriendPipelineTest, WithoutTheFacebookAppALinkIsSharedInTheBrowser) {
    RemoveFacebookApp();

    ShareAndSettle(LinkRequest());

    EXPECT_EQ(OnlyMode(), FBSDKShareDialogModeBrowser);
    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_THAT(Log().Traces(), ElementsAre(Trace(kShareBlock, "FBSDKShareDialog")));
}

TEST_F(FriendPipelineTest, WithoutTheQueriesSchemeALinkIsSharedInTheBrowser) {
    Host::RegisterQueriesSchemes(@[ @"fbapi", @"fb-messenger-share-api" ]);

    ShareAndSettle(LinkRequest());

    EXPECT_EQ(OnlyMode(), FBSDKShareDialogModeBrowser);
}

TEST_F(FriendPipelineTest, TheFacebookAppIsLookedForByItsLoginScheme) {
    ShareAndSettle(LinkRequest());

    EXPECT_THAT(Host::PlatformCalls::All(),
                Contains(Host::PlatformCall{"UIApplication", "canOpenURL:", "\"fbauth2://\"", true}));
}

TEST_F(FriendPipelineTest, TheFacebookAppIsLookedForOncePerShare) {
    for (const VornFriendReqInfo& request : {LinkRequest(), ImageRequest(), VideoRequest()}) {
        Host::PlatformCalls::Clear();

        ShareAndSettle(request);

        const auto calls = Host::PlatformCalls::All();
        EXPECT_EQ(std::ranges::count(calls, "canOpenURL:", &Host::PlatformCall::selector), 1) << request.type;
    }
}

TEST_F(FriendPipelineTest, TheShareDialogIsMadeWithItsContentAndThePluginAsDelegate) {
    ShareAndSettle(LinkRequest());

    const auto calls = Host::PlatformCalls::All();
    ASSERT_THAT(calls, Not(IsEmpty()));
    EXPECT_EQ(calls[0].selector, "initWithViewController:content:delegate:");
    EXPECT_THAT(calls[0].arguments, ::testing::StartsWith("nil, "));
    EXPECT_THAT(calls[0].arguments, HasSubstr("<VornFriendFacebook>"));
}

TEST_F(FriendPipelineTest, AGamingLoginSharesALinkThroughTheDialogLikeAnyOther) {
    LogInForGaming();

    ShareAndSettle(LinkRequest());

    EXPECT_EQ(OnlyMode(), FBSDKShareDialogModeNative);
}

TEST_F(FriendPipelineTest, ALinkAsksForNoLogin) {
    ShareAndSettle(LinkRequest());

    EXPECT_THAT(Lines(), Not(Contains(::testing::Field(&LogLine::text, HasSubstr("accessToken")))));
}

TEST_F(FriendPipelineTest, AnImageIsSharedInTheFacebookApp) {
    LogInWithFacebook();

    ShareAndSettle(ImageRequest());

    EXPECT_EQ(OnlyMode(), FBSDKShareDialogModeNative);
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kShareBlock, kCalled));
    EXPECT_THAT(Log().Traces(), ElementsAre(Trace(kShareBlock, "FBSDKShareDialog")));
}

TEST_F(FriendPipelineTest, KeptImageWithoutFacebookAppIsRefusedWithCode15InALineOfProgress) {
    RemoveFacebookApp();
    LogInWithFacebook();
    const Call call{.methodID = 414, .seqID = "s1", .observerID = 32};

    ShareAndSettle(ImageRequest(), call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Refused(15, "Facebook share image need app installed"))));
    EXPECT_EQ(Lines().back(),
              Debug(kFriendFile, kShareBlock, "[ s1 ] canOpenURL return NO, Facebook share image need app installed"));
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

TEST_F(FriendPipelineTest, AVideoIsSharedInTheFacebookApp) {
    LogInWithFacebook();

    ShareAndSettle(VideoRequest());

    EXPECT_EQ(OnlyMode(), FBSDKShareDialogModeNative);
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kShareBlock, kCalled));
    EXPECT_THAT(Log().Traces(), ElementsAre(Trace(kShareBlock, "FBSDKShareDialog")));
}

TEST_F(FriendPipelineTest, KeptVideoWithoutFacebookAppIsRefusedWithCode15AndTheLogsOwnSpelling) {
    RemoveFacebookApp();
    LogInWithFacebook();
    const Call call{.methodID = 414, .seqID = "s1", .observerID = 32};

    ShareAndSettle(VideoRequest(), call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Refused(15, "Facebook share video need app installed"))));
    EXPECT_EQ(Lines().back(),
              Error(kFriendFile, kShareBlock, "[ s1 ] canOpenURL return NO, Facebook share vedio need app installed"));
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());
}

TEST_F(FriendPipelineTest, WithoutALoginAnImageAndAVideoAreSharedThroughTheDialog) {
    ShareAndSettle(ImageRequest());
    ShareAndSettle(VideoRequest());

    EXPECT_THAT(Host::ShownDialogs(), SizeIs(2));
    const LogLine notLoggedIn =
        Error(kFriendFile, "-[VornFriendFacebook isInGameMode]", "facebook accessToken is nil, please login");
    EXPECT_EQ(std::ranges::count(Lines(), notLoggedIn), 2);
}

// ---- Outcomes of the dialogs

TEST_F(FriendPipelineTest, ADialogsOutcomeReachesTheRequestsObserver) {
    const Call call{.methodID = 211, .seqID = "s1", .observerID = 32};
    ShareAndSettle(LinkRequest(), call);

    ASSERT_TRUE(Host::AnswerShare(ShareAnswer::Completed(@"1_2")));

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(0))));
}

TEST_F(FriendPipelineTest, AMessagesOutcomeReachesTheRequestsObserver) {
    const Call call{.methodID = 212, .seqID = "s1", .observerID = 32};
    Send(LinkRequest(), call);

    ASSERT_TRUE(Host::AnswerShare(ShareAnswer::Cancelled()));

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(2))));
}

TEST_F(FriendPipelineTest, AnErrorOfTheFacebookAppIsNeverAnswered) {
    ShareAndSettle(LinkRequest());

    ASSERT_TRUE(Host::AnswerShare(ShareAnswer::ErrorOfTheApp()));

    EXPECT_THAT(Delivered(), IsEmpty());
}

TEST_F(FriendPipelineTest, ContentThatFacebookRefusesIsAnsweredInsideShowAndStillCountsAsCalled) {
    ShareAndSettle(LinkRequest("ftp://example.com/game"));

    EXPECT_FALSE(Host::ShownDialogs().at(0).opened);
    ASSERT_THAT(Delivered(), SizeIs(1));
    EXPECT_THAT(Delivered()[0].record, HasSubstr("retCode: 2,")); // Facebook's code for what is not valid.
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kShareBlock, kCalled));
    EXPECT_THAT(Log().Traces(), SizeIs(1));
}

TEST_F(FriendPipelineTest, ASecondShareWhileADialogIsOpenTakesOverTheFirstOnesOutcome) {
    const Call first{.methodID = 211, .seqID = "first", .observerID = 31};
    const Call second{.methodID = 414, .seqID = "second", .observerID = 32};
    ShareAndSettle(LinkRequest(), first);
    ShareAndSettle(LinkRequest(), second);

    ASSERT_TRUE(Host::AnswerShare(ShareAnswer::Cancelled()));
    ASSERT_TRUE(Host::AnswerShare(ShareAnswer::Completed()));

    EXPECT_THAT(Delivered(), ElementsAre(Result(second, Coded(2)), Result(second, Coded(0))));
}

TEST_F(FriendPipelineTest, ARefusalGoesToItsOwnRequestWhateverCameAfterIt) {
    const Call refused{.methodID = 213, .seqID = "refused", .observerID = 31};
    const Call later{.methodID = 211, .seqID = "later", .observerID = 32};
    Share(LinkRequest(), refused);
    Share(LinkRequest(), later);

    EXPECT_THAT(Delivered(), ElementsAre(Result(refused, Coded(7))));
}

// ---- Nothing stays behind

TEST_F(FriendPipelineTest, NoDialogOutlivesItsRequest) {
    @autoreleasepool {
        ShareAndSettle(LinkRequest());
        Send(LinkRequest());
        RemoveFacebookApp();
        RemoveMessenger();
        ShareAndSettle(ImageRequest());
        ShareAndSettle(VideoRequest());
        Send(LinkRequest());
        LogInForGaming();
        ShareAndSettle(ImageRequest());
        ASSERT_TRUE(Host::AnswerShare(ShareAnswer::Cancelled()));
        ASSERT_TRUE(Host::AnswerShare(ShareAnswer::Cancelled()));
    }

    EXPECT_EQ(Host::LivingShareDialogCount(), 0u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
