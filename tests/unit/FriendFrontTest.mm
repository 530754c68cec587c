// The friend plugin's front: its one instance, what it answers at once, what it parks for later, add friend with Facebook's
// friend finder, and friend queries.

#include "FriendTest.h"

#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"

#import <objc/runtime.h>

namespace Tarvik::Vorn::Test {
namespace {

using Host::FriendFinderAnswer;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kSendMessage = "-[VornFriendFacebook sendMessage:params:observerID:]";
constexpr const char* kShare = "-[VornFriendFacebook share:params:observerID:]";
constexpr const char* kAddFriend = "-[VornFriendFacebook addFriend:params:observerID:]";
constexpr const char* kFinder = "-[VornFriendFacebook addFriend:params:observerID:]_block_invoke";
constexpr const char* kInGameMode = "-[VornFriendFacebook isInGameMode]";
constexpr const char* kNotLoggedIn = "facebook accessToken is nil, please login";

std::string JsonOf(const VornFriendReqInfo& request) {
    return VornJsonManager::ToJson(request, "");
}

class FriendFrontTest : public FriendTest {
protected:
    static void AnswerFinder(const FriendFinderAnswer& answer) {
        ASSERT_TRUE(Host::AnswerFriendFinder(answer)) << "no friend finder is open";
    }

    NSObject<NSCopying>* Object() const { return static_cast<NSObject<NSCopying>*>(Plugin()); }

    // The properties as one value.
    struct Parked {
        int methodID;
        std::string seqID;
        unsigned observerID;

        bool operator==(const Parked&) const = default;
    };

    Parked ParkedNow() const {
        return {[Plugin() methodNameID],
                [Plugin() seqID] == nil ? "(nil)" : [[Plugin() seqID] UTF8String],
                [Plugin() observerID]};
    }
};

// ---- The instance

TEST_F(FriendFrontTest, EveryWayToAnObjectGivesTheSharedInstance) {
    const Class cls = object_getClass(Plugin());

    EXPECT_EQ([cls sharedInstance], Plugin());
    EXPECT_EQ([[[cls alloc] init] autorelease], Plugin());
    EXPECT_EQ([[cls allocWithZone:nullptr] autorelease], Plugin());
    EXPECT_EQ([[cls new] autorelease], Plugin());
    EXPECT_EQ([[Object() copy] autorelease], Plugin());
    EXPECT_EQ([[Object() copyWithZone:nullptr] autorelease], Plugin());
}

TEST_F(FriendFrontTest, BalancedReleasesNeverDestroyTheInstance) {
    const Class cls = object_getClass(Plugin());
    const NSUInteger before = [Plugin() retainCount];

    for (int i = 0; i < 100; ++i) {
        [[[cls alloc] init] release];
        [[cls new] release];
        [[Object() copy] release];
    }

    EXPECT_EQ([Plugin() retainCount], before);
}

TEST_F(FriendFrontTest, InitialisingTheInstanceAgainKeepsWhatIsParked) {
    Park({.methodID = 414, .seqID = "kept", .observerID = 32});

    [[[object_getClass(Plugin()) alloc] init] release];

    EXPECT_EQ(ParkedNow(), (Parked{414, "kept", 32}));
}

TEST_F(FriendFrontTest, ServesTheCoreAndBothKindsOfFacebookDialogs) {
    for (const char* const protocol :
         {"VornFriendDelegate", "FBSDKSharingDelegate", "FBSDKGameRequestDialogDelegate"}) {
        EXPECT_TRUE([object_getClass(Plugin()) conformsToProtocol:objc_getProtocol(protocol)]) << protocol;
    }
}

TEST_F(FriendFrontTest, HasTheMethodsThatAChannelMayLackToo) {
    EXPECT_TRUE([Plugin() respondsToSelector:@selector(queryFriends:params:)]);
    EXPECT_TRUE([Plugin() respondsToSelector:@selector(addFriend:params:observerID:)]);
    EXPECT_TRUE([Plugin() respondsToSelector:@selector(isBackendSupported:type:seqId:)]);
    EXPECT_TRUE([Plugin() respondsToSelector:@selector(needOpenid2Uid:reqInfo:seqId:)]);
}

// ---- Types that are not served

class FriendSendTypes : public FriendFrontTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendSendTypes, AreRefusedWithCode7) {
    const VornFriendReqInfo request = RequestOf(GetParam());
    const Call call{.methodID = 212, .seqID = "s9", .observerID = 32};

    SendMessage(request, call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Refused(7, "not support the sendMessage type"))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kSendMessage,
                                           "[ s9 ] reqInfo : " + JsonOf(request) + ", observerID : 32"),
                                     Error(kFriendFile, kSendMessage, "[ s9 ] sendMessage type is error!")));
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Refused, FriendSendTypes, ::testing::Values(10002, 10004, 10005, 10000, 10006, 0, -1));

class FriendShareTypes : public FriendFrontTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendShareTypes, AreRefusedWithCode7) {
    const VornFriendReqInfo request = RequestOf(GetParam());
    const Call call{.methodID = 211, .seqID = "s9", .observerID = 32};

    Share(request, call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Refused(7, "not support the share type"))));
    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFriendFile, kShare, "[ s9 ] reqInfo : " + JsonOf(request) + ", observerID : 32"),
                            Error(kFriendFile, kShare, "[ s9 ] share type is error!")));
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Refused, FriendShareTypes, ::testing::Values(10003, 10004, 10000, 10006, 0, -1));

TEST_F(FriendFrontTest, LogsTheWholeRequestAsJson) {
    VornFriendReqInfo request = RequestOf(4);
    request.user = "u";
    request.title = "t";
    request.desc = "d";
    request.imagePath = "i";
    request.thumbPath = "th";
    request.mediaPath = "m";
    request.link = "l";
    request.extraJson = "{}";

    Share(request);

    EXPECT_EQ(Lines().at(0).text,
              R"([ s1 ] reqInfo : {"type":4,"title":"t","desc":"d","user":"u","imagePath":"i","thumbPath":"th",)"
              R"("mediaPath":"m","link":"l","extraJson":"{}"}, observerID : 31)");
}

TEST_F(FriendFrontTest, PercentSignsInARequestAreText) {
    VornFriendReqInfo request = RequestOf(4);
    request.title = "%s%n%@";

    SendMessage(request, {.seqID = "%d"});

    EXPECT_THAT(Lines().at(0).text, ::testing::HasSubstr(R"("title":"%s%n%@")"));
    EXPECT_EQ(Lines().at(1).text, "[ %d ] sendMessage type is error!");
}

TEST_F(FriendFrontTest, AnObserverIDFrom2To31OnIsPrintedAsItsSignedNumber) {
    Share(RequestOf(0), {.observerID = 0xffffffff});
    AddFriend({.observerID = 0x80000000});

    EXPECT_THAT(Lines().at(0).text, ::testing::EndsWith(", observerID : -1"));
    EXPECT_EQ(Lines().at(3).text, "[ s1 ] no support, observerID : -2147483648");
}

// ---- What is parked

TEST_F(FriendFrontTest, SendMessageParksItsThreeIDs) {
    SendMessage(RequestOf(0), {.methodID = 212, .seqID = "m", .observerID = 32});

    EXPECT_EQ(ParkedNow(), (Parked{212, "m", 32}));
}

TEST_F(FriendFrontTest, ShareParksItsThreeIDs) {
    Share(RequestOf(0), {.methodID = 414, .seqID = "h", .observerID = 4000000000});

    EXPECT_EQ(ParkedNow(), (Parked{414, "h", 4000000000}));
}

TEST_F(FriendFrontTest, TheObserverIsParkedFirstThenTheSequenceIDThenTheMethod) {
    static std::vector<std::string>* sent; // Setters carry no context.
    std::vector<std::string> order;
    sent = &order;
    const Class cls = object_getClass(Plugin());
    const auto replace = [cls](SEL selector, IMP replacement) {
        return method_setImplementation(class_getInstanceMethod(cls, selector), replacement);
    };
    const IMP observerID = replace(@selector(setObserverID:),
                                   reinterpret_cast<IMP>(+[](id, SEL, unsigned) { sent->push_back("observerID"); }));
    const IMP seqID =
        replace(@selector(setSeqID:), reinterpret_cast<IMP>(+[](id, SEL, NSString*) { sent->push_back("seqID"); }));
    const IMP methodNameID = replace(@selector(setMethodNameID:),
                                     reinterpret_cast<IMP>(+[](id, SEL, int) { sent->push_back("methodNameID"); }));

    SendMessage(RequestOf(0));
    Share(RequestOf(0));

    replace(@selector(setObserverID:), observerID);
    replace(@selector(setSeqID:), seqID);
    replace(@selector(setMethodNameID:), methodNameID);
    EXPECT_THAT(order, ElementsAre("observerID", "seqID", "methodNameID", "observerID", "seqID", "methodNameID"));
}

TEST_F(FriendFrontTest, ASequenceIDThatIsNotUTF8ParksNil) {
    Share(RequestOf(0), {.seqID = "\xff"});

    EXPECT_EQ(ParkedNow(), (Parked{211, "(nil)", 31}));
}

TEST_F(FriendFrontTest, AResultThroughTheParametersCarriesTheRawBytesOfTheSequenceID) {
    Share(RequestOf(0), {.seqID = "\xff"});
    SendMessage(RequestOf(0), {.seqID = "\xfe"});

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = "\xff"}, Refused(7, "not support the share type")),
                                         Result({.seqID = "\xfe"}, Refused(7, "not support the sendMessage type"))));
}

TEST_F(FriendFrontTest, AResultThroughThePropertiesHasAnEmptySequenceIDThen) {
    Park({.seqID = "\xff"});
    LogInForGaming();
    AddFriend();

    AnswerFinder(FriendFinderAnswer::Returned());

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = ""}, Coded(0))));
}

TEST_F(FriendFrontTest, AnEmptySequenceIDIsParkedAndDelivered) {
    Share(RequestOf(0), {.seqID = ""});

    EXPECT_EQ(ParkedNow(), (Parked{211, "", 31}));
    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = ""}, Refused(7, "not support the share type"))));
}

TEST_F(FriendFrontTest, QuestionsAndFriendQueriesParkNothing) {
    Park({.methodID = 414, .seqID = "kept", .observerID = 32});

    QueryFriends();
    [Plugin() isBackendSupported:1 type:2 seqId:@"other"];
    [Plugin() needOpenid2Uid:1 reqInfo:nullptr seqId:@"other"];

    EXPECT_EQ(ParkedNow(), (Parked{414, "kept", 32}));
}

TEST_F(FriendFrontTest, ARefusedAddFriendParksItsObserverAlone) {
    Park({.methodID = 414, .seqID = "kept", .observerID = 32});

    AddFriend({.methodID = 213, .seqID = "other", .observerID = 31});

    EXPECT_EQ(ParkedNow(), (Parked{414, "kept", 31}));
}

TEST_F(FriendFrontTest, AnAddFriendRefusedInGameModeParksItsObserverAlone) {
    Park({.methodID = 414, .seqID = "kept", .observerID = 32});

    AddFriend({.methodID = 213, .seqID = "other", .observerID = 31, .subChannel = "Game"});

    EXPECT_EQ(ParkedNow(), (Parked{414, "kept", 31}));
}

TEST_F(FriendFrontTest, AnAddFriendThatOpensTheFinderParksItsObserverWhenTheFinderAnswers) {
    Park({.methodID = 414, .seqID = "kept", .observerID = 32});
    LogInForGaming();

    AddFriend({.methodID = 213, .seqID = "other", .observerID = 31});
    EXPECT_EQ(ParkedNow(), (Parked{414, "kept", 32}));

    AnswerFinder(FriendFinderAnswer::Returned());
    EXPECT_EQ(ParkedNow(), (Parked{414, "kept", 31}));
}

// ---- Add friend without the finder

struct AddFriendCase {
    const char* name;
    NSString* graphDomain; // Nil: nobody is logged in.
    const char* subChannel;
    const char* configured; // Null: not configured.
    int code;
};

class FriendAddFriend : public FriendFrontTest, public ::testing::WithParamInterface<AddFriendCase> {};

TEST_P(FriendAddFriend, OutsideGamingModeTheLoginModeDecidesTheCode) {
    const AddFriendCase& given = GetParam();
    if (given.graphDomain != nil) {
        LogInWithDomain(given.graphDomain);
    }
    if (given.configured != nullptr) {
        SetConfigValue("FACEBOOK_LOGIN_MODE", given.configured);
    }
    const Call call{.methodID = 213, .seqID = "s4", .observerID = 32, .subChannel = given.subChannel};

    AddFriend(call);

    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(given.code))));
    std::vector<LogLine> expected;
    if (given.graphDomain == nil) {
        expected.push_back(Error(kFriendFile, kInGameMode, kNotLoggedIn));
    }
    if (given.code == 7) {
        expected.push_back(Debug(kFriendFile, kAddFriend, "[ s4 ] no support, observerID : 32"));
    }
    EXPECT_EQ(Lines(), expected);
    EXPECT_EQ(Host::OpenFriendFinderCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Table, FriendAddFriend,
    ::testing::Values(AddFriendCase{"NobodyLoggedInGameByRequest", nil, "Game", nullptr, 10},
                      AddFriendCase{"LowerCaseIsAnotherMode", nil, "game", nullptr, 7},
                      AddFriendCase{"GameByConfiguration", nil, "", "Game", 10},
                      AddFriendCase{"LowerCaseConfigurationIsAnotherMode", nil, "", "game", 7},
                      AddFriendCase{"AppByConfiguration", nil, "", "App", 7},
                      AddFriendCase{"TheRequestDoesNotOverrideTheConfiguration", nil, "App", "Game", 10},
                      AddFriendCase{"TheConfigurationDoesNotOverrideTheRequest", nil, "Game", "App", 10},
                      AddFriendCase{"FacebookLoginInGameMode", @"facebook", "Game", nullptr, 10},
                      AddFriendCase{"FacebookLoginInAppMode", @"facebook", "", nullptr, 7},
                      AddFriendCase{"TheDomainIsComparedByCase", @"Gaming", "Game", nullptr, 10},
                      AddFriendCase{"AnEmptyDomainIsNoGamingLogin", @"", "Game", nullptr, 10},
                      AddFriendCase{"ATextThatIsNotUTF8IsAnotherMode", nil, "Game\xff", nullptr, 7},
                      AddFriendCase{"ALongerTextIsAnotherMode", nil, "Games", "Gamer", 7}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FriendFrontTest, AnAccessTokenWithoutAnAuthenticationTokenIsNoGamingLogin) {
    LogInWithDomain(nil);

    AddFriend({.subChannel = "Game"});

    EXPECT_THAT(Delivered(), ElementsAre(Result({}, Coded(10))));
}

TEST_F(FriendFrontTest, AnAuthenticationTokenWithoutAnAccessTokenIsNoGamingLogin) {
    Host::ReplaceCurrentAuthenticationToken(Host::MakeAuthenticationToken(@"id token", @"gaming"));

    AddFriend({.subChannel = "Game"});

    EXPECT_THAT(Delivered(), ElementsAre(Result({}, Coded(10))));
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kInGameMode, kNotLoggedIn)));
}

// ---- Add friend with the finder

TEST_F(FriendFrontTest, AGamingLoginOpensTheFriendFinderAndIsNotAnsweredYet) {
    LogInForGaming();

    AddFriend();

    EXPECT_EQ(Host::OpenFriendFinderCount(), 1u);
    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(FriendFrontTest, TheFindersSuccessIsCode0) {
    LogInForGaming();
    Park({.methodID = 414, .seqID = "p"});
    AddFriend({.methodID = 213, .seqID = "a", .observerID = 32});

    AnswerFinder(FriendFinderAnswer::Returned());

    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = 414, .seqID = "p", .observerID = 32}, Coded(0))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kFinder, "facebook game player finder successed")));
}

TEST_F(FriendFrontTest, TheFindersSuccessWithAnErrorIsCode0Too) {
    LogInForGaming();
    Park({.seqID = "p"});
    AddFriend();

    AnswerFinder(FriendFinderAnswer::Exactly(true, Host::MakeError(@"d", 5, @"ignored")));

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = "p"}, Coded(0))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kFinder, "facebook game player finder successed")));
}

TEST_F(FriendFrontTest, AFinderThatIsClosedIsCode2) {
    LogInForGaming();
    Park({.methodID = 414, .seqID = "p"});
    AddFriend({.methodID = 213, .seqID = "a", .observerID = 32});

    AnswerFinder(FriendFinderAnswer::Exactly(false, nil));

    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = 414, .seqID = "p", .observerID = 32}, Coded(2))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kFinder, "facebook game player finder cancel")));
}

TEST_F(FriendFrontTest, AFailedFinderIsCode9999WithFacebooksCodeAndLocalizedText) {
    LogInForGaming();
    Park({.methodID = 414, .seqID = "p"});
    AddFriend({.methodID = 213, .seqID = "a", .observerID = 32});

    AnswerFinder(FriendFinderAnswer::Exactly(false, Host::MakeError(@"domain", 13, @"the page %s")));

    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = 414, .seqID = "p", .observerID = 32},
                                                InnerBaseRet(9999, 13, "the page %s"))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kFinder, "facebook game player finder error: the page %s")));
}

TEST_F(FriendFrontTest, AFailedFinderWithoutATextHasAnEmptyOne) {
    LogInForGaming();
    Park({.seqID = "p"});
    AddFriend();

    AnswerFinder(FriendFinderAnswer::Exactly(false, Host::MakeError(@"domain", -7, nil)));

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = "p"}, InnerBaseRet(9999, -7, ""))));
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFriendFile, kFinder, "facebook game player finder error: ")));
}

TEST_F(FriendFrontTest, TheFindersErrorCodeIsNarrowedTo32Bits) {
    LogInForGaming();
    Park({.seqID = "p"});
    AddFriend();

    AnswerFinder(FriendFinderAnswer::Exactly(false, Host::MakeError(@"domain", (1LL << 32) + 9, @"t")));

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = "p"}, InnerBaseRet(9999, 9, "t"))));
}

TEST_F(FriendFrontTest, KeptTheFinderAnswersUnderTheIDsOfTheLastRequestAndNotItsOwn) {
    LogInForGaming();
    AddFriend({.methodID = 213, .seqID = "finder", .observerID = 31});
    Park({.methodID = 212, .seqID = "later", .observerID = 32});

    AnswerFinder(FriendFinderAnswer::Returned());

    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = 212, .seqID = "later", .observerID = 31}, Coded(0))));
}

TEST_F(FriendFrontTest, BeforeAnyRequestTheFinderAnswersUnderMethodMinus1AndNoSequenceID) {
    LogInForGaming();
    AddFriend({.methodID = 213, .seqID = "finder", .observerID = 31});

    AnswerFinder(FriendFinderAnswer::Returned());

    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = -1, .seqID = "", .observerID = 31}, Coded(0))));
}

TEST_F(FriendFrontTest, TheFinderMayAnswerOnABackgroundThreadAndTheObserverIsCalledOnTheMainThread) {
    LogInForGaming();
    Park({.seqID = "p"});
    AddFriend();

    OnAnotherThread([] { AnswerFinder(FriendFinderAnswer::Returned()); });
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());

    ASSERT_THAT(Delivered(), ElementsAre(Result({.seqID = "p"}, Coded(0))));
    EXPECT_EQ(ResultRecorder::Deliveries()[0].thread, std::this_thread::get_id());
}

TEST_F(FriendFrontTest, EachOfTwoFindersAnswersItsOwnObserver) {
    LogInForGaming();
    Park({.seqID = "p"});
    AddFriend({.observerID = 31});
    AddFriend({.observerID = 32});

    AnswerFinder(FriendFinderAnswer::Returned());
    AnswerFinder(FriendFinderAnswer::Exactly(false, nil));

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = "p", .observerID = 31}, Coded(0)),
                                         Result({.seqID = "p", .observerID = 32}, Coded(2))));
}

TEST_F(FriendFrontTest, TheParametersMayBeGoneWhenTheFinderAnswers) {
    LogInForGaming();
    Park({.seqID = "p"});
    auto params = std::make_unique<VornBaseParams>(ParamsOf({.seqID = "a sequence ID that has a buffer of its own"}));
    [Plugin() addFriend:nullptr params:params.get() observerID:31];
    params.reset();

    AnswerFinder(FriendFinderAnswer::Returned());

    EXPECT_THAT(Delivered(), ElementsAre(Result({.seqID = "p"}, Coded(0))));
}

// ---- Friend queries and questions

TEST_F(FriendFrontTest, AFriendQueryIsAlwaysRefusedToObserver202) {
    QueryFriends({.methodID = 215, .seqID = "q", .observerID = 31});

    InnerFriendRet expected(7);
    expected.methodNameID = 215;
    EXPECT_THAT(Delivered(), ElementsAre(Delivery{202, "q", RecordText(expected), {}}));
    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFriendFile, "-[VornFriendFacebook queryFriends:params:]", "[ q ] no support")));
}

TEST_F(FriendFrontTest, NothingIsSupportedByTheBackend) {
    for (const int methodID : {0, -1, 211, 212, 414}) {
        for (const int type : {0, 10001, 10005, INT32_MIN}) {
            EXPECT_FALSE([Plugin() isBackendSupported:methodID type:type seqId:@"b"]);
        }
    }
    EXPECT_THAT(Lines(), Contains(Debug(kFriendFile, "-[VornFriendFacebook isBackendSupported:type:seqId:]",
                                        "[ b ] methodID : 211, type : -2147483648")));
    EXPECT_THAT(Lines(), SizeIs(20));
}

TEST_F(FriendFrontTest, ANilSequenceIDOfAQuestionPrintsAsEmpty) {
    [Plugin() isBackendSupported:1 type:2 seqId:nil];

    EXPECT_EQ(Lines().at(0).text, "[  ] methodID : 1, type : 2");
}

TEST_F(FriendFrontTest, NoUserIDIsTurnedIntoTheCoresOwnAndNothingIsLogged) {
    const VornFriendReqInfo request = RequestOf(10001);

    EXPECT_FALSE([Plugin() needOpenid2Uid:211 reqInfo:&request seqId:@"n"]);
    EXPECT_FALSE([Plugin() needOpenid2Uid:0 reqInfo:nullptr seqId:nil]);

    EXPECT_THAT(Lines(), IsEmpty());
}

} // namespace
} // namespace Tarvik::Vorn::Test
