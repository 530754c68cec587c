// extraJson of a shared link: the input is the text. Whom the content tags is compared with what the JSON says.

#include "FBSDKShareKit/ShareDialogs.h"
#include "VornCodes.h"
#include "VornText.h"
#include "support/Answering.h"
#include "support/ExtraJson.h"
#include "support/FuzzTarget.h"
#include "support/PluginSession.h"
#include "support/Results.h"

namespace Tarvik::Vorn::Fuzz {
namespace {

constexpr const char* kLink = "https://example.com/game";

void ShareLink(const PluginSession& session, std::string_view extraJson) {
    VornFriendReqInfo request;
    request.type = RequestType::kLink;
    request.link = kLink;
    request.extraJson = std::string(extraJson);
    VornBaseParams params;
    params.methodID = MethodID::kShare;
    params.seqID = "s";
    [session.friends() share:&request params:&params observerID:kObserverOfRequest];
    PluginSession::Settle();
}

std::vector<std::string> TagsOf(id<FBSDKSharingContent> content) {
    std::vector<std::string> tags;
    for (NSString* userID in [content peopleIDs]) {
        tags.emplace_back(CStr(userID));
    }
    return tags;
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    const std::string_view extraJson = TextOfInput(data, size);
    const PluginSession session;
    ShareLink(session, extraJson);

    const std::vector<Host::ShownDialog> shown = Host::ShownDialogs();
    Require(shown.size() == 1, "one dialog is shown, whatever the tags are");
    Require(OpenThings() + DeliveredResults().size() == 1, "the dialog is open, or has told why not");
    FBSDKShareLinkContent* const content = shown[0].content.get();
    Require(std::string_view(CStr([[content contentURL] absoluteString])) == kLink, "the content has the link");

    const std::optional<JsonDocument> extra = ExtraObject(extraJson);
    const JsonValue* const friends = LastMember(extra, "friends");
    if (friends != nullptr && IsUserList(*friends)) {
        Require(AreUserIDs(*friends, TagsOf(content)), "the content tags the friends of the list");
    } else {
        Require(TagsOf(content).empty(), "a list that cannot be used tags nobody");
    }
    return 0;
}
