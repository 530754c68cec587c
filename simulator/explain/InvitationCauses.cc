#include "Cause.h"

#include "VornCodes.h"

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr auto kCauses = std::to_array<Cause>({
    {.id = "invitation-sent",
     .requests = kInvite,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .rank = 1,
     .what = "The page of the invitation has completed: it was sent, as far as Facebook tells.",
     .checks = {"Read the next two before you give a reward for it.",
                "With a gaming login and the Facebook app, the user list is not sent: the player picks."},
     .world = "invitation-sent",
     .page = kInvitationPage},
    {.id = "invitation-cancel-looks-like-success",
     .requests = kInvite,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .texts = {"completionGesture"},
     .rank = 2,
     .what = "The player has pressed the page's cancel button in the browser, which Facebook's SDK reports as a "
             "completion: a success without recipients.",
     .checks = {"Does the log line \"gameRequestDialog success\" show completionGesture = cancel?",
                "Is extraJson empty? It is so for real successes too."},
     .world = "invitation-cancel-looks-like-success",
     .page = kInvitationPage},
    {.id = "invitation-recipients-missing",
     .requests = kInvite,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .texts = {"to[0]", "recipients"},
     .rank = 3,
     .what =
         "It was sent, but extraJson has no RequestRecipients: since 13.0.0 the SDK names the recipients in another "
         "way than the plugin's contract with the core.",
     .checks = {"The log line \"gameRequestDialog success\" has them, as to[0], to[1], ... or recipients."},
     .world = "invitation-recipients-missing",
     .page = kInvitationPage},
    {.id = "invitation-closed",
     .requests = kInvite,
     .codes = Only(RetCode::kCancelled),
     .thirdCodes = Only(0),
     .texts = {"cancelled by the user"},
     .rank = 1,
     .what = "The player has closed the page of the invitation, or has come back to the game without an answer.",
     .checks = {"Nothing: let the player try again."},
     .world = "invitation-closed",
     .page = kInvitationPage},
    {.id = "invitation-url-not-forwarded",
     .requests = kInvite,
     .codes = Only(RetCode::kCancelled),
     .thirdCodes = Only(0),
     .texts = {"cancelled by the user"},
     .rank = 2,
     .what =
         "The invitation was sent in the Facebook app, but its answer did not reach the SDK: the game became active "
         "again without it, which counts as a cancel.",
     .checks = {"Does a game with a scene delegate forward scene:openURLContexts:?",
                "Is fb<app ID> under CFBundleURLSchemes?"},
     .world = "scene-without-forwarding",
     .page = kScenePage},
    {.id = "invitation-text-refused",
     .requests = kInvite,
     .codes = Only(RetCode::kThirdPartyError),
     .thirdCodes = Only(2),
     .texts = {kShareDomain, "Value for message is required"},
     .rank = 1,
     .what = "The SDK refuses the invitation. Of what the plugin sends, it can only be the message: desc is not UTF-8, "
             "and so no text.",
     .checks = {"Is desc UTF-8, uncut in the middle of a character?"},
     .world = "invitation-failed",
     .page = kInvitationPage},
    {.id = "invitation-without-answer",
     .requests = kInvite,
     .codes = Only(RetCode::kThirdPartyError),
     .thirdCodes = Only(203),
     .texts = {kShareDomain},
     .rank = 2,
     .what = "Facebook's page has ended without any answer.",
     .checks = {"Does it happen again? The page's address may be blocked by a proxy or a filter."},
     .world = "invitation-failed",
     .page = kInvitationPage},
    {.id = "invitation-error-of-sdk",
     .requests = kInvite,
     .codes = Only(RetCode::kThirdPartyError),
     .thirdCodes = kAnyCode,
     .rank = 90,
     .what = "The invitation has failed. Unlike a failed share it keeps 9999 and has Facebook's code and text in "
             "thirdCode and thirdMsg.",
     .checks = {"Which domain does thirdMsg name? Look the code up there."},
     .world = "invitation-failed",
     .page = kCodesPage},
    {.id = "invitation-without-title",
     .requests = kInvite,
     .codes = Only(RetCode::kInvalidArgument),
     .thirdCodes = Only(RetCode::kInvalidArgument),
     .texts = {"title or desc in reqInfo is empty", "invalid argument"},
     .rank = 1,
     .what = "An invitation needs a title and a desc, and one of them is empty.",
     .checks = {"Are title and desc in the request's log line not empty?"},
     .world = "invitation-without-title",
     .page = kInvitationPage},
    {.id = "invitation-bad-user-list",
     .requests = kInvite,
     .codes = Only(RetCode::kInvalidArgument),
     .thirdCodes = Only(RetCode::kInvalidArgument),
     .texts = {"user list is not a array or is empty", "invalid argument"},
     .rank = 2,
     .what = "extraJson has \"inviteType\":\"batch\", and its \"userList\" is missing, empty, no array, or holds "
             "something that is neither a text nor a number.",
     .checks = {"Is extraJson an object such as {\"inviteType\":\"batch\",\"userList\":[\"1\",\"2\"]}?"},
     .world = "invitation-bad-user-list",
     .page = kInvitationPage},
});

} // namespace

std::span<const Cause> InvitationCauses() {
    return kCauses;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
