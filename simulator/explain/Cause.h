// What can have caused a result, as data: one Cause for each way in which one result arises. The tables stand in
// *Causes.cc, one for each kind of request; docs/results.md shows the same, and a test compares the two. Plain C++; any
// thread; everything here lives as long as the program.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator::Explaining {

// Requests as a set of bits: some causes belong to several.
using Requests = uint32_t;
inline constexpr Requests kLogin = 1U << 0U;
inline constexpr Requests kLogout = 1U << 1U;
inline constexpr Requests kShare = 1U << 2U;
inline constexpr Requests kSendMessage = 1U << 3U;
inline constexpr Requests kInvite = 1U << 4U;
inline constexpr Requests kAddFriend = 1U << 5U;
inline constexpr Requests kQueryFriends = 1U << 6U;
inline constexpr Requests kDialogs = kShare | kSendMessage;
inline constexpr Requests kFriendRequests = kShare | kSendMessage | kInvite; // Those that park their IDs.
inline constexpr Requests kEveryRequest = (1U << 7U) - 1;

// A request and its name on the command line and in JSON.
struct NamedRequest {
    Requests request = 0;
    std::string_view name;
};
inline constexpr auto kRequestNames = std::to_array<NamedRequest>({
    {kLogin, "login"},
    {kLogout, "logout"},
    {kShare, "share"},
    {kSendMessage, "send-message"},
    {kInvite, "invite"},
    {kAddFriend, "add-friend"},
    {kQueryFriends, "query-friends"},
});

// Which methodNameID a result carries.
enum class ReportedID {
    kServed,      // The request's own, and the plugin looks at it: 211 and 414 are shares, 212 is a message.
    kUnserved,    // The request's own, which is none of these three.
    kOwn,         // The request's own, whatever it is.
    kMessage,     // 212, that of a message, whatever the request.
    kOwnOfCore,   // The request's own; the core numbers logins, queries and added friends as it likes.
    kZero,        // 0, because nobody sets it.
    kLastRequest, // That of the last share, message or invitation.
    kUnset,       // -1: there has been none of these.
};

// A range of codes, both ends included.
struct Codes {
    int32_t first = 0;
    int32_t last = -1; // Before `first` for no code at all.

    constexpr bool Contains(int32_t code) const { return first <= code && code <= last; }
    constexpr bool IsEmpty() const { return last < first; }
    constexpr bool operator==(const Codes&) const = default;
};
constexpr Codes Only(int32_t code) {
    return {code, code};
}
inline constexpr Codes kAnyCode{std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()};
inline constexpr Codes kNoResult{}; // Nothing arrives.
inline constexpr Codes kNetworkCodes{-1299,
                                     -995}; // Of NSURLErrorDomain, background sessions and certificates included.

// Some texts. Places that are not needed are empty and stand behind the others.
using Texts = std::array<std::string_view, 4>;

struct Cause {
    std::string_view id; // Lower case with hyphens; never changes, because scripts know it.
    Requests requests = 0;
    ReportedID reported = ReportedID::kOwn;
    Codes codes;      // retCode; kNoResult for causes of silence.
    Codes thirdCodes; // thirdCode; kNoResult likewise.
    Texts texts;  // Parts of retMsg, of thirdMsg or of a line of the log that tell this cause from others; any case.
    int rank = 0; // The most likely cause has the least; compared among those of one result only.
    std::string_view what;  // What has happened: one or two sentences.
    Texts checks;           // What to look at, in this order.
    std::string_view world; // A shipped world that shows it.
    std::string_view page;  // The document in this repository, with an anchor.
};

std::span<const Cause> LoginCauses(); // Of login and logout.
std::span<const Cause> ShareDialogCauses();
std::span<const Cause> ShareRefusalCauses();
std::span<const Cause> MediaCauses(); // Uploads and the photo library.
std::span<const Cause> MessageCauses();
std::span<const Cause> InvitationCauses();
std::span<const Cause> FriendCauses(); // Adding friends and querying them.
std::span<const Cause> SilenceCauses();

// All of them, in this order.
std::vector<const Cause*> AllCauses();

// Domains of Facebook's and Apple's errors, as their texts have them.
inline constexpr std::string_view kCoreDomain = "com.facebook.sdk.core";
inline constexpr std::string_view kShareDomain = "com.facebook.sdk.share";
inline constexpr std::string_view kLoginDomain = "com.facebook.sdk.login";
inline constexpr std::string_view kNetworkDomain = "NSURLErrorDomain";

inline constexpr std::string_view kInfoPlistPage = "docs/INTEGRATION.md#infoplist";
inline constexpr std::string_view kConfigurationPage = "docs/INTEGRATION.md#the-cores-configuration";
inline constexpr std::string_view kThreadsPage = "docs/INTEGRATION.md#threads";
inline constexpr std::string_view kUnansweredPage = "docs/INTEGRATION.md#requests-that-may-never-be-answered";
inline constexpr std::string_view kSDKPage = "docs/INTEGRATION.md#the-facebook-sdk-1500-to-181x";
inline constexpr std::string_view kKeptPage = "docs/ARCHITECTURE.md#kept-behaviours";
inline constexpr std::string_view kObserversPage = "docs/ARCHITECTURE.md#results-and-observer-ids";
inline constexpr std::string_view kScenePage = "docs/scene-delegate.md#games-with-a-scene-delegate";
inline constexpr std::string_view kLoginPage = "docs/results.md#login-and-logout";
inline constexpr std::string_view kSharePage = "docs/results.md#share-dialogs";
inline constexpr std::string_view kRefusalPage = "docs/results.md#refused-shares";
inline constexpr std::string_view kMediaPage = "docs/results.md#uploads-and-the-photo-library";
inline constexpr std::string_view kMessagePage = "docs/results.md#messages-to-friends";
inline constexpr std::string_view kInvitationPage = "docs/results.md#invitations";
inline constexpr std::string_view kFriendPage = "docs/results.md#friends";
inline constexpr std::string_view kCodesPage = "docs/results.md#codes-of-facebooks-sdk";

} // namespace Tarvik::Vorn::Simulator::Explaining
