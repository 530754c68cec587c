// Every hostile text wherever Facebook or the system hands one to the plugin: errors, tokens, results, identifiers. A
// request has one outcome, and what it and the log say is the text as C sees it.

#include "HostileStrings.h"
#include "HostileTexts.h"
#include "OpenThings.h"

#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "../unit/FriendShareTest.h"
#include "VornPlugins.h"

#include <functional>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr NSInteger kErrorCode = 7;
const Call kCall{.methodID = 211, .seqID = "s1", .observerID = 31};

class PlatformTextsTest : public FriendShareTest, public ::testing::WithParamInterface<HostileString> {
protected:
    PlatformTextsTest() {
        ResultRecorder::Observe<InnerLoginRet, 101>();
        ResultRecorder::Observe<InnerLoginPluginRet, 109>();
    }

    ~PlatformTextsTest() override {
        EXPECT_EQ(OpenThingCount(), 0u);
        EXPECT_EQ(Host::LivingShareDialogCount(), 0u);
    }

    static NSString* TheText() { return GetParam().text.get(); }
    static std::string TheTextAsC() { return GetParam().asC(); }
    static NSError* TheError() { return MakeErrorOf(TheText(), kErrorCode); }

    static void Login() {
        std::string problem;
        VornLoginParams params;
        params.methodID = 111;
        params.seqID = "s1";
        params.permissions = "email";
        [FindLoginPlugin("Facebook", problem) login:params];
    }

    void Invite() const {
        VornFriendReqInfo request = RequestOf(10003);
        request.title = "title";
        request.desc = "desc";
        SendMessage(request, {.methodID = 212});
    }

    // The only result, as a record in words.
    static std::string OnlyResult() {
        const std::vector<Delivery> results = Delivered();
        EXPECT_THAT(results, SizeIs(1));
        return results.empty() ? "" : results[0].record;
    }

    // One line, whole.
    void ExpectLogged(const std::string& text) {
        std::vector<LogLine> lines = Lines();
        const std::vector<LogLine> ofLogin = Log().LinesOf("VornLoginFacebook.mm");
        lines.insert(lines.end(), ofLogin.begin(), ofLogin.end());
        EXPECT_THAT(lines, Contains(Field(&LogLine::text, text)).Times(1));
    }

    static std::string FailureOfUpload() {
        return RecordText(WithMethod(InnerBaseRet(9999, kErrorCode, TheTextAsC().c_str()), 211));
    }

    static InnerBaseRet WithMethod(InnerBaseRet ret, int methodID) {
        ret.methodNameID = methodID;
        return ret;
    }
};

#pragma mark - Errors

TEST_P(PlatformTextsTest, OfALoginsErrorIsTheResultsText) {
    Login();
    Host::AnswerLogin(Host::LoginAnswer::Failed(TheError()));

    InnerLoginRet ret;
    ret.methodNameID = 111;
    ret.retCode = 9999;
    ret.retMsg = VornUtils::GetRetMsg(9999);
    ret.thirdCode = kErrorCode;
    ret.thirdMsg = TheTextAsC();
    ret.channelID = 4;
    ret.channel = "Facebook";
    EXPECT_EQ(OnlyResult(), RecordText(ret));
    ExpectLogged("[ s1 ] login facebook error. [error]=" + TheTextAsC());
}

TEST_P(PlatformTextsTest, OfAFriendFindersErrorIsTheResultsText) {
    Park(kCall);
    LogInForGaming();
    AddFriend(kCall);
    Host::AnswerFriendFinder(Host::FriendFinderAnswer::Exactly(false, TheError()));

    EXPECT_EQ(OnlyResult(), FailureOfUpload());
    ExpectLogged("facebook game player finder error: " + TheTextAsC());
}

TEST_P(PlatformTextsTest, OfAShareDialogsErrorIsTheResultsText) {
    Share(LinkRequest(), kCall);
    Settle();
    Host::AnswerShare(Host::ShareAnswer::Failed(TheError()));

    InnerBaseRet ret = WithMethod(InnerBaseRet(9999), 211);
    ret.retCode = kErrorCode;
    ret.retMsg = TheTextAsC();
    EXPECT_EQ(OnlyResult(), RecordText(ret));
    ExpectLogged("[ s1 ]error : " + TheTextAsC());
}

TEST_P(PlatformTextsTest, OfAGameRequestsErrorIsTheResultsText) {
    Invite();
    Host::AnswerGameRequest(Host::GameRequestAnswer::Failed(TheError()));

    InnerBaseRet ret = WithMethod(InnerBaseRet(9999), 212);
    ret.thirdCode = kErrorCode;
    ret.thirdMsg = TheTextAsC();
    EXPECT_EQ(OnlyResult(), RecordText(ret));
    ExpectLogged("facebook gameRequestDialog error : " + TheTextAsC());
}

TEST_P(PlatformTextsTest, OfAnImageUploadsErrorIsTheResultsText) {
    LogInForGaming();
    Share(ImageRequest(), kCall);
    Settle();
    Host::AnswerImageUpload(Host::ImageUploadAnswer::Exactly(false, nil, TheError()));

    EXPECT_EQ(OnlyResult(), FailureOfUpload());
    ExpectLogged("[ s1 ] load image error: 211");
}

TEST_P(PlatformTextsTest, OfAVideoUploadsErrorIsTheResultsText) {
    LogInForGaming();
    Share(VideoFileRequest(), kCall);
    Settle();
    Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved());
    Settle();
    Host::FinishVideoUpload(Host::VideoUploadAnswer::Exactly(false, nil, TheError()));

    EXPECT_EQ(OnlyResult(), FailureOfUpload());
    ExpectLogged("[ s1 ] load video error: 211");
}

TEST_P(PlatformTextsTest, OfThePhotoLibrarysErrorIsLoggedAndNotHandedOn) {
    Share(VideoFileRequest(), kCall);
    Settle();
    Host::RunPhotoChanges(Host::PhotoChangesOutcome::Failed(TheError()));

    EXPECT_EQ(OnlyResult(), RecordText(InnerBaseRet(8)));
    ExpectLogged("[ s1 ] save video failed: " + TheTextAsC());
}

#pragma mark - Logins

TEST_P(PlatformTextsTest, OfATokenIsJsonAndIsNotLogged) {
    Login();
    Host::AnswerLogin(Host::LoginAnswer::Success(Host::MakeAccessToken(TheText(), @"user", @[ @"email" ])));

    InnerLoginPluginRet ret;
    ret.methodNameID = 111;
    ret.channelID = 4;
    ret.channel = "Facebook";
    ret.channelInfo = "{\"access_token\":" + AsJson(TheTextAsC()) + "}";
    EXPECT_EQ(OnlyResult(), RecordText(ret));
    if (TheTextAsC().size() > 1) {
        EXPECT_THAT(Log().Transcript(), Each(Not(HasSubstr(TheTextAsC()))));
    }
}

TEST_P(PlatformTextsTest, OfAGraphDomainThatIsNotGamingIsNoGamingLogin) {
    LogInWithDomain(TheText());
    Share(VideoRequest(), kCall);
    Settle();

    EXPECT_THAT(Host::VideoUploads(), IsEmpty());
    EXPECT_THAT(Host::ShownDialogs(), SizeIs(1));
    SucceedWithWhatIsOpen();
}

TEST_P(PlatformTextsTest, OfAnSdkVersionDecidesByItsBytes) {
    [FBSDKSettings setSDKVersion:TheText()];
    SetConfigValue("FACEBOOK_LOGIN_MODE", "Game");
    Login();

    const auto permissions = [FBSDKLoginManager loginRequests].back().permissions;
    EXPECT_EQ(permissions.size() == 3, TheTextAsC() >= "6.4.0"); // By the order of bytes, as it is kept.
    SucceedWithWhatIsOpen();
    OnlyResult();
}

#pragma mark - Results of dialogs

TEST_P(PlatformTextsTest, OfASharesResultsDoNotChangeItsSuccess) {
    NSDictionary* const results = TheText() == nil ? nil : @{TheText() : TheText()};
    Share(LinkRequest(), kCall);
    Settle();
    Host::AnswerShare(Host::ShareAnswer::CompletedWith(results));

    EXPECT_EQ(OnlyResult(), RecordText(WithMethod(InnerBaseRet(0), 211)));
    ExpectLogged("[ s1 ]  results : " + std::string(CStr([results description])));
}

TEST_P(PlatformTextsTest, OfARecipientIsJsonUnlessItHasNoUtf8) {
    id const recipient = TheText() == nil ? [NSNull null] : TheText();
    Invite();
    Host::AnswerGameRequest(Host::GameRequestAnswer::Completed(@{@"to" : @[ recipient ]}));

    InnerBaseRet ret = WithMethod(InnerBaseRet(0), 212);
    ret.extraJson = CStr([VornUtilsIOS jsonStringFromDict:@{@"RequestRecipients" : @[ recipient ]} prettyPrint:NO]);
    EXPECT_EQ(ret.extraJson.empty(), !GetParam().hasUtf8) << ret.extraJson.c_str();
    EXPECT_EQ(OnlyResult(), RecordText(ret));
}

TEST(HostileStringsTest, AreThereAllButNilAndHaveAFormInUtf8OrNone) {
    @autoreleasepool {
        for (const HostileString& text : HostileStrings()) {
            EXPECT_EQ(text.text.get() == nil, text.name == "Nil") << text.name;
            const bool hasUtf8 = text.text.get() == nil || [text.text.get() UTF8String] != nullptr;
            EXPECT_EQ(hasUtf8, text.hasUtf8) << text.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Platform, PlatformTextsTest, ::testing::ValuesIn(HostileStrings()),
                         [](const auto& info) { return info.param.name; });

#pragma mark - Identifiers

class IdentifierTextsTest : public PlatformTextsTest {};

TEST_P(IdentifierTextsTest, OfAPhotoLibrarysObjectMakesAContentOrARefusal) {
    Share(VideoFileRequest(), {.methodID = 414});
    Settle();
    Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved(TheText()));
    Settle();

    EXPECT_EQ(OpenThingCount() + ResultRecorder::Deliveries().size(), 1u);
    for (const Host::ShownDialog& shown : Host::ShownDialogs()) {
        NSURL* const url = [[shown.content.get() video] videoURL];
        EXPECT_THAT(TextOf(url), ::testing::StartsWith("assets-library://asset/asset.mp4?id="));
    }
    SucceedWithWhatIsOpen();
    OnlyResult();
}

// GNUstep's regular expressions lose memory over code points that are no characters, and over halves of pairs.
std::vector<HostileString> StringsOfCharacters() {
    std::vector<HostileString> strings = HostileStrings();
    std::erase_if(strings, [](const HostileString& text) { return !text.hasUtf8 || text.name == "NoCharacters"; });
    return strings;
}

INSTANTIATE_TEST_SUITE_P(Platform, IdentifierTextsTest, ::testing::ValuesIn(StringsOfCharacters()),
                         [](const auto& info) { return info.param.name; });

#pragma mark - Recipients of other types

struct Recipients {
    const char* name;
    std::function<id()> make;
    const char* json; // What the result says of them.
};

class RecipientsTest : public FriendTest, public ::testing::WithParamInterface<Recipients> {};

TEST_P(RecipientsTest, AreHandedOnAsJsonOrNotAtAll) {
    VornFriendReqInfo request = RequestOf(10003);
    request.title = "title";
    request.desc = "desc";
    SendMessage(request, {.methodID = 212});
    Host::AnswerGameRequest(Host::GameRequestAnswer::Completed(@{@"to" : GetParam().make()}));

    InnerBaseRet ret(0);
    ret.extraJson = GetParam().json;
    EXPECT_THAT(Delivered(), ElementsAre(Result({.methodID = 212}, ret)));
}

id DeepList() {
    NSArray* list = @[];
    for (int depth = 0; depth < 2'000; ++depth) {
        list = @[ list ];
    }
    return list;
}

INSTANTIATE_TEST_SUITE_P(
    Platform, RecipientsTest,
    ::testing::Values(Recipients{"Text", [] { return @"7"; }, R"({"RequestRecipients":"7"})"},
                      Recipients{"Number", [] { return @(7); }, R"({"RequestRecipients":7})"},
                      Recipients{"Null", [] { return [NSNull null]; }, R"({"RequestRecipients":null})"},
                      Recipients{"EmptyList", [] { return @[]; }, R"({"RequestRecipients":[]})"},
                      Recipients{"Dictionary", [] { return @{@"a" : @"b"}; }, R"({"RequestRecipients":{"a":"b"}})"},
                      Recipients{"ListOfTypes",
                                 [] {
                                     return @[ @"1", @(2), [NSNull null] ];
                                 },
                                 R"({"RequestRecipients":["1",2,null]})"},
                      Recipients{"Date", [] { return [NSDate dateWithTimeIntervalSince1970:0]; }, ""},
                      Recipients{"Data", [] { return [NSData data]; }, ""},
                      Recipients{"Object", [] { return [[NSObject new] autorelease]; }, ""},
                      Recipients{"Class", [] { return static_cast<id>([NSString class]); }, ""},
                      Recipients{"NotANumber", [] { return [NSNumber numberWithDouble:NAN]; }, ""},
                      Recipients{"KeyThatIsNoText", [] { return
                                                             @{@(1) : @"b"}; }, ""},
                      Recipients{"DeepList", DeepList, ""}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
} // namespace Tarvik::Vorn::Test
