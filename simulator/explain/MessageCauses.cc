#include "Cause.h"

#include "VornCodes.h"

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr auto kCauses = std::to_array<Cause>({
    {.id = "message-sent",
     .requests = kSendMessage,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .rank = 1,
     .what = "Messenger has completed: the player has sent the link, as far as Messenger tells.",
     .checks = {"Nothing; to whom it went is in no result."},
     .world = "message-sent",
     .page = kMessagePage},
    {.id = "message-cancelled",
     .requests = kSendMessage,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kCancelled),
     .thirdCodes = Only(0),
     .texts = {"cancelled by the user"},
     .rank = 1,
     .what = "The player has cancelled in Messenger, or has come back to the game without sending.",
     .checks = {"Does the log have a line of sharerDidCancel:? If not, read on: 2 may be Facebook's own code."},
     .world = "message-cancelled",
     .page = kMessagePage},
    {.id = "message-type-unsupported",
     .requests = kSendMessage,
     .codes = Only(RetCode::kNotSupported),
     .thirdCodes = Only(RetCode::kNotSupported),
     .texts = {"not support the sendMessage type"},
     .rank = 1,
     .what =
         "The request's type is none that can be sent: 10001 a link, 10003 an invitation. Images and videos can only "
         "be shared.",
     .checks = {"Which type does the request in the log have?"},
     .world = "message-unsupported-type",
     .page = kMessagePage},
    {.id = "message-link-empty",
     .requests = kSendMessage,
     .codes = Only(RetCode::kInvalidArgument),
     .thirdCodes = Only(RetCode::kInvalidArgument),
     .texts = {"the link is null when share/send link, please check!", "invalid argument"},
     .rank = 1,
     .what = "A link is to be sent, and it is empty.",
     .checks = {"Is the link in the request's log line \"\"?"},
     .world = "message-empty-link",
     .page = kMessagePage},
    {.id = "messenger-not-installed",
     .requests = kSendMessage,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kAppNotInstalled),
     .thirdCodes = Only(RetCode::kAppNotInstalled),
     .texts = {"Messenger isn't installed", "a required app is not installed"},
     .rank = 1,
     .what =
         "Links to friends go through Messenger, and it is not installed; or Facebook has switched such messages off "
         "for this app.",
     .checks = {"Is Messenger on the device? The Facebook app does not replace it.",
                "Does LSApplicationQueriesSchemes in the Info.plist list fb-messenger-share-api?"},
     .world = "messenger-not-installed",
     .page = kInfoPlistPage},
    {.id = "messenger-scheme-missing",
     .requests = kSendMessage,
     .reported = ReportedID::kServed,
     .codes = Only(RetCode::kAppNotInstalled),
     .thirdCodes = Only(RetCode::kAppNotInstalled),
     .texts = {"Messenger isn't installed", "a required app is not installed"},
     .rank = 2,
     .what =
         "Messenger is installed, but the game does not list fb-messenger-share-api, so iOS says that nothing opens "
         "it.",
     .checks = {"Does LSApplicationQueriesSchemes in the Info.plist of the built app list fb-messenger-share-api?",
                "`vornsim doctor` on the Info.plist or the built app finds this."},
     .world = "messenger-scheme-not-listed",
     .page = kInfoPlistPage},
});

} // namespace

std::span<const Cause> MessageCauses() {
    return kCauses;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
