// What a soak draws by lot: requests, answers, and the world around the plugin. Plain C++ values.
#pragma once

#include "Samples.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace Tarvik::Vorn::Soak {

enum class RequestKind {
    kLogin,
    kLogout,
    kSendMessage,
    kShare,
    kAddFriend,
    kQueryFriends,
    kIsBackendSupported,
    kReportEvent,
    kLaunch,
    kOpenURL,
    kOpenURLFromApp,
    kActivate,
};

struct Request {
    uint64_t number = 0;
    RequestKind kind = RequestKind::kLogin;
    bool inBackground = false;
    int methodID = 0;
    unsigned observerID = 0;
    int type = 0;
    SeqSample seqID;
    std::string subChannel;
    std::string title;
    std::string desc;
    LinkSample link;
    ImageSample image;
    VideoSample video;
    ExtraSample extra;
    PermissionSample permissions;
    std::string eventName;
    bool hasEventParameters = false;
};

// What can wait for an answer.
enum class Waiting {
    kLogin,
    kShareDialog, // Messenger's too: the stand-ins keep them in one list.
    kGameRequest,
    kFriendFinder,
    kPhotoPrompt,
    kPhotoChanges,
    kImageUpload,
    kVideoUpload,
};
inline constexpr size_t kWaitingCount = 8;

enum class Ending {
    kSuccess,
    kCancel, // By the user. Photo prompt: denied. Photo changes, uploads: failed without an error.
    kError,  // With `code` and `text`. Photo prompt: restricted.
    // Share dialog, game request: the SDK drops the page's error. Image upload: no ID, which is never answered. Photo
    // prompt: limited. Login: neither result nor error. Photo changes, friend finder: success beside an error.
    kOdd,
};

struct Answer {
    Ending ending = Ending::kSuccess;
    int code = 0;
    std::string text;
    bool staysOpen = false; // It can be answered once more.
};

// In the numbers of PHAuthorizationStatus.
enum class PhotoAccess { kNotDetermined, kRestricted, kDenied, kAuthorized, kLimited };

enum class Domain { kNone, kFacebook, kGaming };

struct World {
    bool hasToken = false;
    std::string user = "u"; // Of the token.
    Domain domain = Domain::kNone;
    bool hasFacebook = true;
    bool hasMessenger = true;
    bool isMessengerAllowed = true;
    PhotoAccess photos = PhotoAccess::kAuthorized;
    std::optional<bool> isVideoCompatible; // Whatever its file holds.
    bool hasWindow = true;
    bool findsViewController = true;
    bool canShowGameRequests = true;
    bool isSchemeRegistered = true;
    bool isGameConfigured = false;
    bool supportsGaming = false; // By the SDK's version.
};

// A call into the platform, as the stand-ins record it.
struct PlatformStep {
    const char* className;
    const char* selector;
    std::optional<std::string> arguments; // Compared where they are given.
};

} // namespace Tarvik::Vorn::Soak
