// The steps of a scenario that concern the friend plugin and the world that it meets. Plain C++, values.
#pragma once

#include "VornRecords.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// An error as an SDK or the system reports it.
struct ReportedError {
    std::string domain;
    int64_t code = 0;
    std::string message; // The localized text.
};

// ---- The world

// Who is logged in to Facebook, without the plugin having any part in it.
enum class PlayerLogin { kNobody, kFacebook, kGaming };
struct PlayerStep {
    PlayerLogin login = PlayerLogin::kNobody;
};

// Which release of the Facebook SDK the dialogs behave like.
enum class SdkProfile { k15_0, k17_0, k18_0, k18_1, kAsDocumented };
struct ProfileStep {
    SdkProfile profile = SdkProfile::k18_1;
};

// Apps are installed or removed; empty leaves one as it is.
struct AppsStep {
    std::optional<bool> facebook;
    std::optional<bool> messenger;
};

// The Info.plist lists these schemes under LSApplicationQueriesSchemes, and no others.
struct QueriesSchemesStep {
    std::vector<std::string> schemes;
};

// What the user has decided about the photo library; what they answer when they are asked.
enum class PhotoPermission { kNotAsked, kRestricted, kDenied, kAuthorized, kLimited };
struct PhotoPermissionStep {
    PhotoPermission permission = PhotoPermission::kAuthorized;
};
struct AnswerPhotoPromptStep {
    PhotoPermission permission = PhotoPermission::kAuthorized;
    bool background = false;
};

// ---- Requests

// A message or a share.
struct FriendRequest {
    VornBaseParams params;
    VornFriendReqInfo info;
    unsigned observerID = 0;
};
struct SendMessageStep {
    FriendRequest request;
};
struct ShareStep {
    FriendRequest request;
};
struct AddFriendStep {
    VornBaseParams params;
    unsigned observerID = 0;
};
struct QueryFriendsStep {
    VornBaseParams params;
};

// ---- What comes back. `dialog` and `upload` count from 0, for the one that has been open longest.

struct AnswerFriendFinderStep {
    enum class Outcome { kReturned, kClosed, kNotOpened, kError };

    Outcome outcome = Outcome::kReturned;
    ReportedError error; // kError
    bool background = false;
};

struct AnswerGameRequestStep {
    enum class Outcome { kSent, kCancelButton, kClosed, kPageError, kWithoutResults, kError };

    Outcome outcome = Outcome::kSent;
    std::string requestID;               // kSent
    std::vector<std::string> recipients; // kSent
    ReportedError error;                 // kError
    size_t dialog = 0;
    bool background = false;
};

struct AnswerShareStep {
    enum class Outcome { kCompleted, kCancelled, kReturned, kAppError, kNotOpened, kError };

    Outcome outcome = Outcome::kCompleted;
    std::string postID;  // kCompleted; empty for none.
    ReportedError error; // kError
    size_t dialog = 0;
    bool background = false;
};

// The photo library makes the change that it was asked for, or does not.
struct FinishSavingStep {
    enum class Outcome { kSaved, kError };

    Outcome outcome = Outcome::kSaved;
    std::string asset;   // kSaved: its identifier; empty for one of the library's own.
    ReportedError error; // kError
    bool background = false;
};

struct AnswerImageUploadStep {
    enum class Outcome { kUploaded, kDialogNotOpened, kError };

    Outcome outcome = Outcome::kUploaded;
    std::string photoID; // Unless kError.
    ReportedError error; // kError
    size_t upload = 0;
    bool background = false;
};

struct UploadProgressStep {
    int64_t sent = 0;
    int64_t expected = 0;
    size_t upload = 0;
    bool background = false;
};

struct AnswerVideoUploadStep {
    enum class Outcome { kUploaded, kServerRefused, kMalformed, kError };

    Outcome outcome = Outcome::kUploaded;
    std::string videoID; // kUploaded
    ReportedError error; // kError
    size_t upload = 0;
    bool background = false;
};

} // namespace Tarvik::Vorn::Simulator
