// extraJson and path of a shared video. Behind a text for the path, the rest of the input is extraJson; its last byte
// says whether the path is taken as it is or is one of the shipped media. What is made of the path is compared with
// what "isAssetURL" says.

#include "FBSDKShareKit/ShareDialogs.h"
#include "Photos/PhotoLibrary.h"
#include "VornCodes.h"
#include "VornText.h"
#include "support/Answering.h"
#include "support/ExtraJson.h"
#include "support/FuzzTarget.h"
#include "support/PluginSession.h"
#include "support/Results.h"
#include "support/Texts.h"

#include <algorithm>

namespace Tarvik::Vorn::Fuzz {
namespace {

constexpr size_t kLongestPath = 4096;

void ShareVideo(const PluginSession& session, const std::string& path, const std::string& extraJson) {
    VornFriendReqInfo request;
    request.type = RequestType::kVideo;
    request.mediaPath = path;
    request.extraJson = extraJson;
    VornBaseParams params;
    params.methodID = MethodID::kShareByPipeline;
    params.seqID = "s";
    [session.friends() share:&request params:&params observerID:kObserverOfRequest];
    PluginSession::Settle();
}

void RequireRefusal(std::initializer_list<int32_t> codes) {
    const std::vector<Delivered> results = DeliveredResults();
    Require(results.size() == 1, "there is one result");
    Require(std::ranges::find(codes, results[0].retCode) != codes.end(), "the result has the code",
            std::to_string(results[0].retCode));
    Require(results[0].methodID == 0, "refusals of a video have no method ID");
}

// A URL that Facebook finds the video under.
void RequireSharedAsURL(const std::string& path) {
    const std::vector<Host::ShownDialog> shown = Host::ShownDialogs();
    Require(Host::PendingPhotoChangesCount() == 0, "a URL is not saved");
    if (shown.empty()) {
        return RequireRefusal({RetCode::kInvalidArgument});
    }
    FBSDKShareVideoContent* const content = shown[0].content.get();
    Require(CStr([[[content video] videoURL] absoluteString]) == std::string(UpToNul(path)),
            "the content has the URL of the request");
    Require(OpenThings() + DeliveredResults().size() == 1, "the dialog is open, or has told why not");
}

// A file, which is saved first.
void RequireSaved(const std::string& path, bool isClip) {
    if (Host::PendingPhotoChangesCount() == 0) {
        Require(!isClip, "a clip is saved");
        return RequireRefusal({RetCode::kInvalidArgument, RetCode::kSystemRefused});
    }
    Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved(@"ID/L0/001"));
    PluginSession::Settle();
    const std::vector<Host::ShownDialog> shown = Host::ShownDialogs();
    if (shown.empty()) {
        Require(!isClip, "a saved clip is shared");
        return RequireRefusal({RetCode::kInvalidArgument});
    }
    FBSDKShareVideoContent* const content = shown[0].content.get();
    const std::string url = CStr([[[content video] videoURL] absoluteString]);
    Require(url.starts_with("assets-library://asset/asset.") && url.find("?id=ID&ext=") != std::string::npos,
            "the content names the saved asset alone", url + " for " + path);
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    FuzzedDataProvider bytes(data, size);
    const int medium = bytes.ConsumeIntegralInRange(0, 3);
    std::string path = TakeText(bytes, kLongestPath);
    if (medium != 0) {
        path = MediaPath(medium == 1 ? "clip.mp4" : medium == 2 ? "clip.mov" : "text.png");
    }
    const std::string extraJson = bytes.ConsumeRemainingBytesAsString();
    const PluginSession session;
    ShareVideo(session, path, extraJson);

    const std::optional<JsonDocument> extra = ExtraObject(extraJson);
    if (path.empty()) {
        RequireRefusal({RetCode::kInvalidArgument});
    } else if (SaysNo(LastMember(extra, "isAssetURL"))) {
        RequireSaved(path, medium == 1 || medium == 2);
    } else {
        RequireSharedAsURL(path);
    }
    return 0;
}
