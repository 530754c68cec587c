#include "Cause.h"

#include "VornCodes.h"

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr Requests kFinderOrRequests = kAddFriend | kFriendRequests; // Whose IDs the finder's outcome may have.

constexpr auto kCauses = std::to_array<Cause>({
    {.id = "friend-finder-closed",
     .requests = kAddFriend,
     .reported = ReportedID::kLastRequest,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .texts = {"facebook game player finder successed"},
     .rank = 1,
     .what = "The player has come back from Facebook's friend finder. Whether a friend was added, or the player has "
             "cancelled, Facebook does not tell: coming back is a success.",
     .checks = {"Give no reward for it.",
                "The result has the IDs of the last share, message or invitation, and this call's observer."},
     .world = "add-friend-gaming",
     .page = kFriendPage},
    {.id = "friend-finder-outcome",
     .requests = kFinderOrRequests,
     .reported = ReportedID::kLastRequest,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .texts = {"facebook game player finder successed"},
     .rank = 70,
     .what =
         "It is the outcome of the friend finder, which goes out under the method ID and the sequence ID of the last "
         "share, message or invitation.",
     .checks = {"Was add friend called after this request?",
                "Which observer got the result? It is the one that add friend was called with."},
     .world = "friend-finder-under-wrong-ids",
     .page = kKeptPage},
    {.id = "friend-finder-before-any-request",
     .requests = kAddFriend,
     .reported = ReportedID::kUnset,
     .codes = Only(RetCode::kSuccess),
     .thirdCodes = Only(0),
     .texts = {"facebook game player finder successed"},
     .rank = 2,
     .what = "It is the outcome of the friend finder, before any share, message or invitation: methodNameID is -1 and "
             "the sequence ID is empty.",
     .checks = {"Is the observer registered? Without one such a result is lost, because it has no sequence ID."},
     .world = "friend-finder-before-any-request",
     .page = kKeptPage},
    {.id = "friend-finder-cancelled",
     .requests = kFinderOrRequests,
     .reported = ReportedID::kLastRequest,
     .codes = Only(RetCode::kCancelled),
     .thirdCodes = Only(0),
     .texts = {"cancelled by the user", "facebook game player finder cancel"},
     .rank = 71,
     .what = "The friend finder was cancelled. No SDK from 15.0.0 to 18.1.x says so; it is what Facebook's documents "
             "promise.",
     .checks = {"Which release of the SDK is it?"},
     .world = "add-friend-cancelled-as-documented",
     .page = kFriendPage},
    {.id = "friend-finder-not-opened",
     .requests = kFinderOrRequests,
     .reported = ReportedID::kLastRequest,
     .codes = Only(RetCode::kThirdPartyError),
     .thirdCodes = Only(13),
     .texts = {kCoreDomain},
     .rank = 71,
     .what = "Facebook's friend finder could not be opened.",
     .checks = {"Can the device open fb.gg pages: is a browser allowed?", "Was add friend called on the main thread?"},
     .world = "add-friend-failed",
     .page = kFriendPage},
    {.id = "friend-finder-error-of-sdk",
     .requests = kFinderOrRequests,
     .reported = ReportedID::kLastRequest,
     .codes = Only(RetCode::kThirdPartyError),
     .thirdCodes = kAnyCode,
     .texts = {"facebook game player finder error"},
     .rank = 92,
     .what = "The friend finder has failed; thirdCode is the error's own code. 10, no token and no app ID, the plugin "
             "rules out by asking for a gaming login first.",
     .checks = {"Which domain does thirdMsg name? Look the code up there."},
     .world = "add-friend-failed",
     .page = kCodesPage},
    {.id = "add-friend-without-gaming-login",
     .requests = kAddFriend,
     .reported = ReportedID::kOwnOfCore,
     .codes = Only(RetCode::kNotSupported),
     .thirdCodes = Only(0),
     .texts = {"facebook accessToken is nil, please login"},
     .rank = 1,
     .what = "Friends are added with a gaming login only. Nobody is logged in, or the login is an ordinary one.",
     .checks = {"Does the log have \"facebook accessToken is nil, please login\"?",
                "Is the login's graphDomain \"gaming\"? It is so only for apps that are games to Facebook."},
     .world = "add-friend-outside-gaming",
     .page = kFriendPage},
    {.id = "add-friend-not-in-gaming-mode",
     .requests = kAddFriend,
     .reported = ReportedID::kOwnOfCore,
     .codes = Only(RetCode::kNotInGamingMode),
     .thirdCodes = Only(0),
     .texts = {"facebook accessToken is nil, please login"},
     .rank = 1,
     .what = "The login mode is \"Game\", by FACEBOOK_LOGIN_MODE or subChannel, but there is no gaming login.",
     .checks = {"Is anybody logged in, and is the login's graphDomain \"gaming\"?",
                "Every SDK from 10.0.0 on counts as too old for gaming permissions: see login-not-gaming."},
     .world = "add-friend-game-mode-without-gaming-login",
     .page = kConfigurationPage},
    {.id = "query-friends-unsupported",
     .requests = kQueryFriends,
     .reported = ReportedID::kOwnOfCore,
     .codes = Only(RetCode::kNotSupported),
     .thirdCodes = Only(0),
     .rank = 1,
     .what = "This channel does not query friends; the answer is always 7, to observer 202.",
     .checks = {"Nothing: hide the list of friends for players of this channel."},
     .world = "query-friends-unsupported",
     .page = kFriendPage},
});

} // namespace

std::span<const Cause> FriendCauses() {
    return kCauses;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
