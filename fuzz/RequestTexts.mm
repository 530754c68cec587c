// Any request of the friend plugin with any texts in it, and any answers to what it opens. Every request has one
// result, or something open that may still give one, or one of the silences that are the contract; and every text is
// logged as it was given.

#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "Photos/PhotoLibrary.h"
#include "UIKit/UIApplication+Control.h"
#include "VornCodes.h"
#include "VornConfig.h"
#include "VornUtf8.h"
#include "support/Answering.h"
#include "support/ExtraJson.h"
#include "support/FuzzTarget.h"
#include "support/PluginSession.h"
#include "support/Results.h"
#include "support/Texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Tarvik::Vorn::Fuzz {
namespace {

constexpr size_t kLongestText = 512;
constexpr int kMostAnswers = 8;

enum class Entry { kSendMessage, kShare, kAddFriend, kQueryFriends, kQuestions, kMaxValue = kQuestions };

struct Request {
    Entry entry = Entry::kShare;
    VornFriendReqInfo info;
    VornBaseParams params;
    unsigned observerID = kObserverOfRequest;
    bool isSilent = false; // By contract.
};

std::string TakePath(FuzzedDataProvider& bytes) {
    const std::string path = TakeText(bytes, kLongestText);
    const auto media = std::to_array({"", "picture.png", "picture.jpg", "truncated.png", "clip.mp4", "sound.m4a"});
    const std::string medium = bytes.PickValueInArray(media);
    return medium.empty() ? path : MediaPath(medium);
}

Request TakeRequest(FuzzedDataProvider& bytes) {
    Request request;
    request.entry = bytes.ConsumeEnum<Entry>();
    request.info.type = bytes.PickValueInArray({RequestType::kLink, RequestType::kImage, RequestType::kInvite,
                                                RequestType::kVideo, bytes.ConsumeIntegral<int32_t>()});
    request.params.methodID = bytes.PickValueInArray(
        {MethodID::kShare, MethodID::kSendMessage, MethodID::kShareByPipeline, bytes.ConsumeIntegral<int32_t>()});
    request.observerID = bytes.PickValueInArray({kObserverOfRequest, ObserverID::kDirect, kUnknownObserver});
    request.params.subChannel = bytes.ConsumeBool() ? "Game" : TakeText(bytes);
    request.params.seqID = TakeText(bytes);
    request.params.channel = TakeText(bytes);
    request.params.extraJson = TakeText(bytes);
    request.info.imagePath = TakePath(bytes);
    request.info.mediaPath = TakePath(bytes);
    for (String* const text : {&request.info.user, &request.info.title, &request.info.desc, &request.info.thumbPath,
                               &request.info.link, &request.info.extraJson}) {
        *text = TakeText(bytes, kLongestText);
    }
    return request;
}

// Who is logged in, what is installed, what is allowed.
void TakeSurroundings(FuzzedDataProvider& bytes) {
    if (bytes.ConsumeBool()) {
        PluginSession::LogInWithDomain(bytes.ConsumeBool() ? @"gaming" : @"facebook");
    }
    if (bytes.ConsumeBool()) {
        SetConfigValue("FACEBOOK_LOGIN_MODE", TakeText(bytes));
    }
    Host::SetAppInstalled(Host::InstalledApp::kFacebook, bytes.ConsumeBool());
    Host::SetAppInstalled(Host::InstalledApp::kMessenger, bytes.ConsumeBool());
    Host::SetPhotoAuthorization(bytes.PickValueInArray(
        {PHAuthorizationStatusNotDetermined, PHAuthorizationStatusRestricted, PHAuthorizationStatusDenied,
         PHAuthorizationStatusAuthorized, PHAuthorizationStatusLimited}));
    Host::SetFacebookProfile(
        bytes.PickValueInArray({Host::FacebookProfile::k17_0, Host::FacebookProfile::k18_0,
                                Host::FacebookProfile::k18_1, Host::FacebookProfile::kAsDocumented}));
}

void Send(const PluginSession& session, Request& request) {
    id<VornFriendDelegate> const friends = session.friends();
    VornBaseParams* const params = &request.params;
    switch (request.entry) {
    case Entry::kSendMessage:
        [friends sendMessage:&request.info params:params observerID:request.observerID];
        break;
    case Entry::kShare:
        [friends share:&request.info params:params observerID:request.observerID];
        break;
    case Entry::kAddFriend:
        [friends addFriend:&request.info params:params observerID:request.observerID];
        break;
    case Entry::kQueryFriends:
        [friends queryFriends:nullptr params:params];
        break;
    case Entry::kQuestions: {
        NSString* const seqID = [NSString stringWithUTF8String:params->seqID.c_str()];
        Require(![friends isBackendSupported:params->methodID type:request.info.type seqId:seqID],
                "no server can do it");
        Require(![friends needOpenid2Uid:params->methodID reqInfo:&request.info seqId:seqID], "no IDs are turned");
        break;
    }
    }
    PluginSession::Settle();
}

void RequireLogged(const PluginSession& session, const Request& request) {
    const std::string before = "[ " + std::string(UpToNul(request.params.seqID)) + " ] reqInfo : ";
    const std::string behind = ", observerID : " + std::to_string(static_cast<int>(request.observerID));
    const std::string line = session.LinesOf("VornFriendFacebook.mm").at(0).text;
    Require(line.starts_with(before) && line.ends_with(behind), "the request is logged", line);
    const JsonDocument json =
        RequireJsonObject(line.substr(before.size(), line.size() - before.size() - behind.size()));
    const VornFriendReqInfo& info = request.info;
    const std::pair<const char*, const String&> texts[] = {
        {"user", info.user},           {"title", info.title},         {"desc", info.desc},
        {"imagePath", info.imagePath}, {"thumbPath", info.thumbPath}, {"mediaPath", info.mediaPath},
        {"link", info.link},           {"extraJson", info.extraJson}};
    for (const auto& [name, text] : texts) {
        const JsonMember* const member = json.root().Find(name);
        Require(member != nullptr && member->value.AsString() != nullptr, "the log has the text", name);
        Require(*member->value.AsString() == ReplaceInvalidUtf8(text.toString()), "the log has the text as given",
                name);
    }
}

// Kept: under limited access a video file is never answered.
bool IsSilentByContract(const Request& request) {
    return request.entry == Entry::kShare && request.info.type == RequestType::kVideo &&
           !request.info.mediaPath.empty() && [PHPhotoLibrary authorizationStatus] == PHAuthorizationStatusLimited &&
           SaysNo(LastMember(ExtraObject(request.info.extraJson.toString()), "isAssetURL"));
}

// A result without a sequence ID that nobody observes goes nowhere. Outcomes of dialogs have the parked ID, which is
// empty when the request's is not UTF-8; the friend finder's have that of an earlier request.
bool MayBeLost(const Request& request) {
    const std::string_view seqID = UpToNul(request.params.seqID);
    return request.observerID == kUnknownObserver &&
           (seqID.empty() || !IsUtf8(seqID) || request.entry == Entry::kAddFriend);
}

void RequireResultsAreOfRequest(const Request& request) {
    const std::string_view seqID = UpToNul(request.params.seqID);
    const bool hasOtherID = !IsUtf8(seqID) || request.entry == Entry::kAddFriend;
    const bool hasOtherMethod = request.info.type == RequestType::kVideo || request.entry == Entry::kAddFriend;
    for (const Delivered& result : DeliveredResults()) {
        Require(result.seqID == seqID || (hasOtherID && result.seqID.empty()), "the result is the request's",
                result.seqID);
        Require(result.methodID == request.params.methodID || hasOtherMethod, "the result is the method's",
                std::to_string(result.methodID));
        const unsigned observerID =
            request.entry == Entry::kQueryFriends ? ObserverID::kQueryFriends : request.observerID;
        Require(result.observerID == observerID, "the result goes to its observer");
        Require(result.json.empty() || RequireJsonObject(result.json).root().Find("RequestRecipients") != nullptr,
                "the only extra text is the list of recipients", result.json);
    }
}

// `silences`: answers of which the platform tells nobody.
void RequireOneOutcome(const Request& request, size_t silences) {
    const size_t results = DeliveredResults().size() + CachedResults();
    const size_t outcomes = results + OpenThings() + silences;
    const std::string found = std::to_string(results) + " results, " + std::to_string(OpenThings()) + " open things, " +
                              std::to_string(silences) + " silences";
    const bool isRequest = request.entry != Entry::kQuestions && !request.isSilent;
    if (MayBeLost(request)) {
        Require(outcomes <= 1, "there is at most one outcome", found);
    } else {
        Require(outcomes == (isRequest ? 1 : 0), "there is one outcome, or none by contract", found);
    }
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    FuzzedDataProvider bytes(data, size);
    const PluginSession session;
    TakeSurroundings(bytes);
    Request request = TakeRequest(bytes);
    request.isSilent = IsSilentByContract(request); // Later the user may have decided anew.
    Send(session, request);
    if (request.entry == Entry::kSendMessage || request.entry == Entry::kShare) {
        RequireLogged(session, request);
    }

    size_t silences = 0;
    RequireOneOutcome(request, silences);
    for (int answers = 0; answers < kMostAnswers && OpenThings() > 0; ++answers) {
        silences += AnswerSomething(bytes) ? 1 : 0;
        PluginSession::Settle();
        RequireOneOutcome(request, silences);
    }
    RequireResultsAreOfRequest(request);
    return 0;
}
