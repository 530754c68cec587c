// The table of what happens when a call into the platform raises: one row for each call that the plugin makes and each place
// from which it does. Plain C++ values; any thread.
#pragma once

#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// Whose call into the plugin the exception leaves.
enum class Receiver { kCore, kMainQueue, kImageLoader, kPhotos, kFacebook, kSystem };

// What the core or the system asks for while the call raises.
enum class Work {
    kLogin,
    kLogout,
    kLinkShare,
    kLinkMessage,
    kImageShare,
    kVideoShare,
    kSavedVideo,
    kAskedVideo,
    kImageUpload,
    kVideoUpload,
    kInvitation,
    kBatchInvitation,
    kFriendFinder,
    kEvent,
    kEventWithParameters,
    kLaunch,
    kURLOpen,
    kURLOpenFromApp,
    kActivation,
};

const char* NameOf(Receiver receiver);
const char* NameOf(Work work);

inline constexpr const char* kNothing = "nothing";
inline constexpr const char* kResult = "its result";

inline constexpr const char* kBar = "the progress bar on the screen";
inline constexpr const char* kLoggedOut = "the player is logged out";
inline constexpr const char* kNoProgress = "the bar shows no progress";
inline constexpr const char* kUnset = "no app ID, no activations";
inline constexpr const char* kNoActivations = "no activations";

// A call that raises.
struct ExceptionRow {
    const char* className;
    const char* selector; // With a plus sign in front where it is a class method.
    Work work;
    Receiver receiver;
    const char* reachesCore = kNothing;
    const char* staysBehind = kNothing;
    // Which of the calls in that step; more than 1 only for methods without arguments that answer an object.
    int nth = 1;
    // From how many places in the sources the row stands for calls; 0 where another row stands for the same place.
    int places = 1;
};

bool IsClassMethod(const ExceptionRow& row);
std::string SelectorOf(const ExceptionRow& row);

// The row as it stands in a document.
std::string TextOf(const ExceptionRow& row);
void PrintTo(const ExceptionRow& row, std::ostream* out);

const std::vector<ExceptionRow>& ExceptionRows();

// What the plugin sends to itself, to the core and to Foundation. Foundation raises for wrong arguments only; what the plugin
// passes there has been looked at before. Names that the platform's classes have, too, are not counted.
const std::set<std::string>& NotPlatform();

} // namespace Tarvik::Vorn::Test
