// How Facebook, the system or the user end what the plugin has asked of them. Plain C++, values.
#pragma once

#include "Timeline.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// A span of virtual time; when the two differ, the seed decides.
struct Duration {
    Milliseconds least = 0;
    Milliseconds most = 0;
};

// An error as an SDK or the system reports it.
struct ReportedError {
    std::string domain;
    int64_t code = 0;
    std::string message; // The localized text.
};

// When, where and how often something is answered, and which of several.
struct AnswerManner {
    Duration after;                // From the moment when it opens, or from the step.
    bool inside = false;           // Inside the call that opens it; `after` does not count.
    bool background = false;       // On another thread than the main one.
    unsigned times = 1;            // 0: never.
    std::optional<std::string> of; // What the request with this sequence ID has opened; otherwise `index` decides.
    size_t index = 0;              // From 0, for the one that has been open longest.
};

// Facebook ends the login that is under way.
struct AnswerLoginStep {
    enum class Outcome { kSuccess, kLimited, kCancelled, kNothingGranted, kBrowserNotOpened, kErrorMessage, kError };

    Outcome outcome = Outcome::kSuccess;
    std::string token;       // kSuccess: the access token's text.
    std::string graphDomain; // kSuccess, kLimited: of the authentication token; empty for none.
    std::string message;     // kErrorMessage, kError: the text.
    std::string domain;      // kError.
    int64_t code = 0;        // kError.
    AnswerManner manner;
};

struct AnswerFriendFinderStep {
    enum class Outcome { kReturned, kClosed, kNotOpened, kError };

    Outcome outcome = Outcome::kReturned;
    ReportedError error; // kError
    AnswerManner manner;
};

struct AnswerGameRequestStep {
    enum class Outcome { kSent, kCancelButton, kClosed, kPageError, kWithoutResults, kError };

    Outcome outcome = Outcome::kSent;
    std::string requestID;               // kSent
    std::vector<std::string> recipients; // kSent
    ReportedError error;                 // kError
    AnswerManner manner;
};

struct AnswerShareStep {
    enum class Outcome { kCompleted, kCancelled, kReturned, kAppError, kNotOpened, kError };

    Outcome outcome = Outcome::kCompleted;
    std::string postID;  // kCompleted; empty for none.
    ReportedError error; // kError
    AnswerManner manner;
};

// What the user has decided about the photo library; what they answer when they are asked.
enum class PhotoPermission { kNotAsked, kRestricted, kDenied, kAuthorized, kLimited };

struct AnswerPhotoPromptStep {
    PhotoPermission permission = PhotoPermission::kAuthorized;
    AnswerManner manner;
};

// The photo library makes the change that it was asked for, or does not.
struct FinishSavingStep {
    enum class Outcome { kSaved, kError };

    Outcome outcome = Outcome::kSaved;
    std::string asset;   // kSaved: its identifier; empty for one of the library's own.
    ReportedError error; // kError
    AnswerManner manner;
};

struct AnswerImageUploadStep {
    enum class Outcome { kUploaded, kWithoutID, kDialogNotOpened, kError };

    Outcome outcome = Outcome::kUploaded;
    std::string photoID; // kUploaded, kDialogNotOpened
    ReportedError error; // kError
    AnswerManner manner;
};

// Facebook tells how far an upload has come; ends nothing.
struct UploadProgressStep {
    int64_t sent = 0;
    int64_t expected = 0;
    AnswerManner manner;
};

struct AnswerVideoUploadStep {
    enum class Outcome { kUploaded, kServerRefused, kMalformed, kError };

    Outcome outcome = Outcome::kUploaded;
    std::string videoID; // kUploaded
    ReportedError error; // kError
    AnswerManner manner;
};

using Answer =
    std::variant<AnswerLoginStep, AnswerFriendFinderStep, AnswerGameRequestStep, AnswerShareStep, AnswerPhotoPromptStep,
                 FinishSavingStep, AnswerImageUploadStep, UploadProgressStep, AnswerVideoUploadStep>;

// What is opened by a request is answered with one of these, which the seed picks when there are several.
struct PlannedAnswer {
    std::vector<Answer> anyOf;
};

} // namespace Tarvik::Vorn::Simulator
