// Every line that the friend plugin logs: its level, the method or block whose name it carries, and its text. The table is an
// index of the class, in the order of its source; a last test compares it with the source, so that no line is left out.

#include "FriendShareTest.h"

#include "AVFoundation/AVAsset+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"

#include <fstream>
#include <map>
#include <regex>
#include <sstream>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::Contains;

// What a row needs to cause its line.
class FriendLogNames : public FriendShareTest {
public:
    void SendType(int type, const std::string& extraJson = "") const {
        VornFriendReqInfo request = RequestOf(type);
        request.title = "t";
        request.desc = "d";
        request.extraJson = extraJson;
        SendMessage(request, {.methodID = 212});
    }

    void ShareNow(const VornFriendReqInfo& request, int methodID = 211) const {
        Share(request, {.methodID = methodID});
        Settle();
    }

    void Tag(const std::string& friends) const {
        VornFriendReqInfo request = LinkRequest();
        request.extraJson = friends;
        ShareNow(request);
    }

    void EndFinder(bool success, NSError* error) const {
        LogInForGaming();
        AddFriend();
        Host::AnswerFriendFinder(Host::FriendFinderAnswer::Exactly(success, error));
    }

    void EndRequest(const Host::GameRequestAnswer& answer) const {
        SendType(10003);
        Host::AnswerGameRequest(answer);
    }

    void EndShare(const Host::ShareAnswer& answer) const {
        ShareNow(LinkRequest());
        Host::AnswerShare(answer);
    }

    void EndImage(bool success) const {
        LogInForGaming();
        ShareNow(ImageRequest());
        Host::AnswerImageUpload(Host::ImageUploadAnswer::Exactly(success, nil, nil));
    }

    void EndVideo(bool success) const {
        LogInForGaming();
        ShareNow(
            VideoRequest([[[NSURL fileURLWithPath:MakeNSString(MediaPath("clip.mp4"))] absoluteString] UTF8String]));
        Host::FinishVideoUpload(Host::VideoUploadAnswer::Exactly(success, nil, nil));
    }

    void ShareFile(PHAuthorizationStatus status) const {
        Host::SetPhotoAuthorization(status);
        ShareNow(VideoFileRequest());
    }

    id<VornSharing> Sharing() const { return static_cast<id<VornSharing>>(Plugin()); }

    using FriendShareTest::AddFriend;
    using FriendShareTest::LogInWithFacebook;
    using FriendShareTest::Plugin;
    using FriendShareTest::QueryFriends;
    using FriendShareTest::RemoveFacebookApp;
    using FriendShareTest::RemoveMessenger;
    using FriendShareTest::SendMessage;
    using FriendShareTest::Share;
    using FriendShareTest::ShareWithContentForAnyType;
};

struct LogRow {
    ILogLevel level;
    std::string format;   // As it stands in the source.
    std::string function; // What the line carries.
    std::string text;     // What the line says; the request's sequence ID is s1.
    void (*cause)(FriendLogNames& test);
};

std::string DescriptionOf(id object) {
    return [[object description] UTF8String];
}

NSError* SomeError() {
    return Host::MakeError(@"d", 5, @"some text");
}

NSDictionary* SomeResults() {
    return @{@"postId" : @"1"};
}

std::string Json(const VornFriendReqInfo& request) {
    return VornJsonManager::ToJson(request, "");
}

std::string Method(const std::string& selector) {
    return "-[VornFriendFacebook " + selector + "]";
}

// NOLINTNEXTLINE(readability-function-size): a table, in the order of the source.
const std::vector<LogRow>& Rows() {
    static const std::string front = Method("sendMessage:params:observerID:");
    static const std::string share = Method("share:params:observerID:");
    static const std::string add = Method("addFriend:params:observerID:");
    static const std::string invite = Method("invite:params:");
    static const std::string batch = Method("isBatchInvite:seqID:");
    static const std::string list = Method("getInviteUserList:seqID:");
    static const std::string badList = R"({"inviteType":"batch","userList":[null]})";
    static const std::vector<LogRow> rows = {
        {kLogDebug, "[ %s ] reqInfo : %s, observerID : %d", front,
         "[ s1 ] reqInfo : " + Json(RequestOf(7)) + ", observerID : 31",
         [](FriendLogNames& test) { test.SendMessage(RequestOf(7)); }},
        {kLogError, "[ %s ] sendMessage type is error!", front, "[ s1 ] sendMessage type is error!",
         [](FriendLogNames& test) { test.SendType(7); }},
        {kLogDebug, "[ %s ] reqInfo : %s, observerID : %d", share,
         "[ s1 ] reqInfo : " + Json(RequestOf(7)) + ", observerID : 31",
         [](FriendLogNames& test) { test.Share(RequestOf(7)); }},
        {kLogError, "[ %s ] share type is error!", share, "[ s1 ] share type is error!",
         [](FriendLogNames& test) { test.Share(RequestOf(7)); }},
        {kLogDebug, "facebook game player finder successed", BlockOf(add, 1), "facebook game player finder successed",
         [](FriendLogNames& test) { test.EndFinder(true, nil); }},
        {kLogDebug, "facebook game player finder cancel", BlockOf(add, 1), "facebook game player finder cancel",
         [](FriendLogNames& test) { test.EndFinder(false, nil); }},
        {kLogDebug, "facebook game player finder error: %s", BlockOf(add, 1),
         "facebook game player finder error: some text",
         [](FriendLogNames& test) { test.EndFinder(false, SomeError()); }},
        {kLogDebug, "[ %s ] no support, observerID : %d", add, "[ s1 ] no support, observerID : 31",
         [](FriendLogNames& test) { test.AddFriend(); }},
        {kLogDebug, "[ %s ] no support", Method("queryFriends:params:"), "[ s1 ] no support",
         [](FriendLogNames& test) { test.QueryFriends(); }},
        {kLogDebug, "[ %s ] methodID : %d, type : %d", Method("isBackendSupported:type:seqId:"),
         "[ s1 ] methodID : 1, type : 2",
         [](FriendLogNames& test) { [test.Plugin() isBackendSupported:1 type:2 seqId:@"s1"]; }},
        {kLogError, "facebook accessToken is nil, please login", Method("isInGameMode"),
         "facebook accessToken is nil, please login", [](FriendLogNames& test) { test.AddFriend(); }},
        {kLogDebug, "[ %s ]  results : %s", Method("sharer:didCompleteWithResults:"),
         "[ s1 ]  results : " + DescriptionOf(SomeResults()),
         [](FriendLogNames& test) { test.EndShare(Host::ShareAnswer::CompletedWith(SomeResults())); }},
        {kLogDebug, "[ %s ]error : %s", Method("sharer:didFailWithError:"),
         "[ s1 ]error : " + DescriptionOf(SomeError()),
         [](FriendLogNames& test) { test.EndShare(Host::ShareAnswer::Failed(SomeError())); }},
        {kLogDebug, "[ %s ] cancel", Method("sharerDidCancel:"), "[ s1 ] cancel",
         [](FriendLogNames& test) { test.EndShare(Host::ShareAnswer::Cancelled()); }},
        {kLogDebug, "facebook gameRequestDialog success : %s", Method("gameRequestDialog:didCompleteWithResults:"),
         "facebook gameRequestDialog success : " + DescriptionOf(SomeResults()),
         [](FriendLogNames& test) { test.EndRequest(Host::GameRequestAnswer::Completed(SomeResults())); }},
        {kLogDebug, "facebook gameRequestDialog error : %s", Method("gameRequestDialog:didFailWithError:"),
         "facebook gameRequestDialog error : " + DescriptionOf(SomeError()),
         [](FriendLogNames& test) { test.EndRequest(Host::GameRequestAnswer::Failed(SomeError())); }},
        {kLogDebug, "facebook gameRequestDialog cancel", Method("gameRequestDialogDidCancel:"),
         "facebook gameRequestDialog cancel",
         [](FriendLogNames& test) { test.EndRequest(Host::GameRequestAnswer::Closed()); }},
        {kLogError, "[ %s ] title or desc in reqInfo is empty", invite, "[ s1 ] title or desc in reqInfo is empty",
         [](FriendLogNames& test) { test.SendMessage(RequestOf(10003)); }},
        {kLogError, "[ %s ] user list is not a array or is empty", invite,
         "[ s1 ] user list is not a array or is empty",
         [](FriendLogNames& test) { test.SendType(10003, R"({"inviteType":"batch"})"); }},
        {kLogDebug, "[ %s ] Call Facebook API", invite, "[ s1 ] Call Facebook API",
         [](FriendLogNames& test) { test.SendType(10003); }},
        {kLogDebug, "[ %s ] extendJson : %s", batch, "[ s1 ] extendJson : {}",
         [](FriendLogNames& test) { test.SendType(10003, "{}"); }},
        {kLogDebug, "[ %s ] extraJson : %s", list, "[ s1 ] extraJson : " + badList,
         [](FriendLogNames& test) { test.SendType(10003, badList); }},
        {kLogError, "[ %s ] %s in extraJson is not number or string", list,
         "[ s1 ] userList in extraJson is not number or string",
         [](FriendLogNames& test) { test.SendType(10003, badList); }},
        {kLogDebug, "[ %s ] friends in extraJson is null, not set taggable people", kTagger,
         "[ s1 ] friends in extraJson is null, not set taggable people", [](FriendLogNames& test) { test.Tag(""); }},
        {kLogError, "[ %s ] friends in extraJson is not array", kTagger, "[ s1 ] friends in extraJson is not array",
         [](FriendLogNames& test) { test.Tag(R"({"friends":1})"); }},
        {kLogError, "[ %s ] friends in extraJson is not number or string", kTagger,
         "[ s1 ] friends in extraJson is not number or string",
         [](FriendLogNames& test) { test.Tag(R"({"friends":[{}]})"); }},
        {kLogDebug, "[ %s ] reqInfo : %s, methodID : %d, observerID: %d", kPipeline,
         "[ s1 ] reqInfo : " + Json(LinkRequest()) + ", methodID : 211, observerID: 31",
         [](FriendLogNames& test) { test.Share(LinkRequest()); }},
        {kLogDebug, "[ %s ] load image successed: %d", BlockOf(kPipeline, 2), "[ s1 ] load image successed: 211",
         [](FriendLogNames& test) { test.EndImage(true); }},
        {kLogDebug, "[ %s ] load image error: %d", BlockOf(kPipeline, 2), "[ s1 ] load image error: 211",
         [](FriendLogNames& test) { test.EndImage(false); }},
        {kLogDebug, "[ %s ] load video successed: %d", BlockOf(kPipeline, 2), "[ s1 ] load video successed: 211",
         [](FriendLogNames& test) { test.EndVideo(true); }},
        {kLogError, "[ %s ] load video error: %d", BlockOf(kPipeline, 2), "[ s1 ] load video error: 211",
         [](FriendLogNames& test) { test.EndVideo(false); }},
        {kLogError, "[ %s ] canOpenURL return NO, Facebook share vedio need app installed", BlockOf(kPipeline, 1),
         "[ s1 ] canOpenURL return NO, Facebook share vedio need app installed",
         [](FriendLogNames& test) {
             test.RemoveFacebookApp();
             test.ShareNow(VideoRequest());
         }},
        {kLogDebug, "[ %s ] canOpenURL return NO, Facebook share image need app installed", BlockOf(kPipeline, 1),
         "[ s1 ] canOpenURL return NO, Facebook share image need app installed",
         [](FriendLogNames& test) {
             test.RemoveFacebookApp();
             test.ShareNow(ImageRequest());
         }},
        {kLogError, "[ %s ] sendOrShareLinkAndIMG not support type: %d", BlockOf(kPipeline, 1),
         "[ s1 ] sendOrShareLinkAndIMG not support type: 10004",
         [](FriendLogNames& test) { test.ShareWithContentForAnyType(10004, {}); }},
        {kLogDebug, "[ %s ] Call Facebook API", BlockOf(kPipeline, 1), "[ s1 ] Call Facebook API",
         [](FriendLogNames& test) { test.ShareNow(LinkRequest()); }},
        {kLogError, "[ %s ] Messenger isn't installed", BlockOf(kPipeline, 1), "[ s1 ] Messenger isn't installed",
         [](FriendLogNames& test) {
             test.RemoveMessenger();
             test.ShareNow(LinkRequest(), 212);
         }},
        {kLogDebug, "[ %s ] Call Facebook API", BlockOf(kPipeline, 1), "[ s1 ] Call Facebook API",
         [](FriendLogNames& test) { test.ShareNow(LinkRequest(), 212); }},
        {kLogError, "[ %s ] sendOrShareLinkAndIMG content is nil", BlockOf(kPipeline, 2),
         "[ s1 ] sendOrShareLinkAndIMG content is nil", [](FriendLogNames& test) { test.ShareNow(LinkRequest("")); }},
        {kLogError, "[ %s ] sendOrShareLinkAndIMG not support methodID: %d", BlockOf(kPipeline, 2),
         "[ s1 ] sendOrShareLinkAndIMG not support methodID: 213",
         [](FriendLogNames& test) { test.ShareNow(LinkRequest(), 213); }},
        {kLogDebug, "[ %s ] reqInfo : %s, methodID : %d", kBuilder,
         "[ s1 ] reqInfo : " + Json(LinkRequest()) + ", methodID : 211",
         [](FriendLogNames& test) { test.Share(LinkRequest()); }},
        {kLogError, "[ %s ] the link is null when share/send link, please check!", kBuilder,
         "[ s1 ] the link is null when share/send link, please check!",
         [](FriendLogNames& test) { test.Share(LinkRequest("")); }},
        {kLogDebug, "[ %s ] data size : %lu, image : %s", BlockOf(kBuilder, 1),
         "[ s1 ] data size : 0, image : ", [](FriendLogNames& test) { test.ShareNow(ImageRequest("")); }},
        {kLogError, "[ %s ] illegal image data", BlockOf(kBuilder, 1), "[ s1 ] illegal image data",
         [](FriendLogNames& test) { test.ShareNow(ImageRequest("")); }},
        {kLogError, "[ %s ] mediaPath is empty", kBuilder, "[ s1 ] mediaPath is empty",
         [](FriendLogNames& test) { test.Share(VideoRequest("")); }},
        {kLogError, "[ %s ] mediaPath is not a URL", kBuilder, "[ s1 ] mediaPath is not a URL",
         [](FriendLogNames& test) { test.Share(VideoRequest("no url")); }},
        {kLogError, "[ %s ] need system permission", BlockOf(kBuilder, 1), "[ s1 ] need system permission",
         [](FriendLogNames& test) {
             test.ShareFile(PHAuthorizationStatusNotDetermined);
             Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied);
         }},
        {kLogError, "[ %s ] not authorized to access photo data", kBuilder,
         "[ s1 ] not authorized to access photo data",
         [](FriendLogNames& test) { test.ShareFile(PHAuthorizationStatusRestricted); }},
        {kLogError, "[ %s ] denied to access photo data", kBuilder, "[ s1 ] denied to access photo data",
         [](FriendLogNames& test) { test.ShareFile(PHAuthorizationStatusDenied); }},
        {kLogError, "[ %s ] createSendOrShareContent not support type : %d", kBuilder,
         "[ s1 ] createSendOrShareContent not support type : 10003",
         [](FriendLogNames& test) {
             [test.Sharing() sendOrShareLinkOrIMG:RequestOf(10003) methodID:211 seqID:"s1" observerID:31];
         }},
        {kLogError, "[ %s ] mediaPath is empty", kSaver, "[ s1 ] mediaPath is empty",
         [](FriendLogNames& test) {
             [test.Sharing() saveVideoAndShare:VideoRequest("")
                                      methodID:211
                                         seqID:"s1"
                                      complete:^(id /*content*/, InnerBaseRet /*built*/){
                                      }];
         }},
        {kLogError, "[ %s ] mediaPath is not a path", kSaver, "[ s1 ] mediaPath is not a path",
         [](FriendLogNames& test) { test.ShareNow(VideoFileRequest("\xff")); }},
        {kLogError, "[ %s ] video cant be written to the saved photos album", kSaver,
         "[ s1 ] video cant be written to the saved photos album",
         [](FriendLogNames& test) { test.ShareNow(VideoFileRequest(MediaPath("text.png"))); }},
        {kLogError, "[ %s ] save video failed: %s", BlockOf(kSaver, 1),
         "[ s1 ] save video failed: " + DescriptionOf(SomeError()),
         [](FriendLogNames& test) {
             test.ShareFile(PHAuthorizationStatusAuthorized);
             Host::RunPhotoChanges(Host::PhotoChangesOutcome::Failed(SomeError()));
         }},
        {kLogError, "[ %s ] the asset of mediaPath has no URL", BlockOf(kSaver, 1),
         "[ s1 ] the asset of mediaPath has no URL",
         [](FriendLogNames& test) {
             test.ShareFile(PHAuthorizationStatusAuthorized);
             Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved(@"A B"));
         }},
    };
    return rows;
}

class FriendLogLines : public FriendLogNames, public ::testing::WithParamInterface<size_t> {};

TEST_P(FriendLogLines, CarryTheirLevelTheirMethodAndTheirText) {
    const LogRow& row = Rows().at(GetParam());

    row.cause(*this);
    Settle();

    EXPECT_THAT(Lines(), Contains(LogLine{row.level, kFriendFile, row.function, row.text}));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendLogLines, ::testing::Range(size_t{0}, size_t{54}));

TEST(FriendLogTable, HasEveryLineOfTheSourceInItsOrder) {
    std::ifstream in(VORN_FRIEND_SOURCE);
    std::ostringstream source;
    source << in.rdbuf();
    const std::string text = source.str();
    const std::regex statement(R"rx(VORN_LOG_(DEBUG|ERROR)\(\s*"((?:[^"\\]|\\.)*)")rx");
    std::vector<std::pair<ILogLevel, std::string>> inSource;
    for (std::sregex_iterator found(text.begin(), text.end(), statement); found != std::sregex_iterator(); ++found) {
        inSource.emplace_back((*found)[1] == "DEBUG" ? kLogDebug : kLogError, (*found)[2]);
    }

    std::vector<std::pair<ILogLevel, std::string>> inTable;
    for (const LogRow& row : Rows()) {
        inTable.emplace_back(row.level, row.format);
    }

    EXPECT_EQ(inTable, inSource);
    EXPECT_EQ(Rows().size(), 54u) << "say the number in INSTANTIATE_TEST_SUITE_P too";
}

} // namespace
} // namespace Tarvik::Vorn::Test
