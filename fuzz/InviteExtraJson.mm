// extraJson of an invitation: the input is the text. Whom the dialog invites is compared with what the JSON says.

#include "FBSDKGamingServicesKit/GameRequests.h"
#include "VornCodes.h"
#include "support/Answering.h"
#include "support/ExtraJson.h"
#include "support/FuzzTarget.h"
#include "support/PluginSession.h"
#include "support/Results.h"

namespace Tarvik::Vorn::Fuzz {
namespace {

void Invite(const PluginSession& session, std::string_view extraJson) {
    VornFriendReqInfo request;
    request.type = RequestType::kInvite;
    request.title = "title";
    request.desc = "message";
    request.extraJson = std::string(extraJson);
    VornBaseParams params;
    params.methodID = MethodID::kSendMessage;
    params.seqID = "s";
    [session.friends() sendMessage:&request params:&params observerID:kObserverOfRequest];
    PluginSession::Settle();
}

bool IsBatch(const std::optional<JsonDocument>& extra) {
    const JsonValue* const inviteType = LastMember(extra, "inviteType");
    return inviteType != nullptr && inviteType->AsString() != nullptr && *inviteType->AsString() == "batch";
}

void RequireInvited(const JsonValue* userList) {
    const std::vector<Host::GameRequest> shown = Host::GameRequests();
    Require(shown.size() == 1, "one dialog is shown");
    Require(shown[0].title == "title" && shown[0].message == "message", "the dialog has the texts of the request");
    Require(userList == nullptr ? shown[0].recipients.empty() : AreUserIDs(*userList, shown[0].recipients),
            "the dialog has the users of the list");
    const bool isRefused = OpenThings() == 0;
    Require(DeliveredResults().size() == (isRefused ? 1 : 0), "a dialog that did not open has told so");
    Require(!isRefused || DeliveredResults()[0].retCode == RetCode::kThirdPartyError, "Facebook refused it");
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    const std::string_view extraJson = TextOfInput(data, size);
    const PluginSession session;
    Invite(session, extraJson);

    const std::optional<JsonDocument> extra = ExtraObject(extraJson);
    const JsonValue* const userList = LastMember(extra, "userList");
    if (!IsBatch(extra)) {
        RequireInvited(nullptr);
    } else if (userList != nullptr && IsUserList(*userList) && !userList->AsArray()->empty()) {
        RequireInvited(userList);
    } else {
        Require(Host::GameRequests().empty(), "no dialog is shown for a list that cannot be used");
        Require(DeliveredResults().size() == 1, "there is one result");
        Require(DeliveredResults()[0].retCode == RetCode::kInvalidArgument, "the list is refused");
    }
    return 0;
}
