// A scenario file, checked as a whole: what the core and Facebook do, step by step. Plain C++, values.
#pragma once

#include "FriendSteps.h"
#include "VornLocatedError.h"
#include "VornRecords.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// A line for the reader of the transcript.
struct NoteStep {
    std::string text;
};

// The core's configuration gets these values.
struct ConfigureStep {
    std::map<std::string, std::string> values;
};

// The Facebook SDK reports this version from now on; none when the scenario says null.
struct SDKVersionStep {
    std::optional<std::string> version;
};

enum class RecordType { kBase, kFriend, kLogin, kLoginPlugin };

// The core registers or removes an observer that prints what it receives.
struct ObserveStep {
    RecordType record = RecordType::kBase;
    unsigned observerID = 0;
};
struct RemoveObserverStep {
    RecordType record = RecordType::kBase;
    unsigned observerID = 0;
};

// The core calls the login plugin.
struct LoginStep {
    VornLoginParams params;
};
struct LogoutStep {
    VornBaseParams params;
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
    bool background = false; // On another thread than the main one.
};

// Something else in the core commits a result of its own.
struct CommitStep {
    unsigned observerID = 0;
    std::string seqID;
    int code = 0;
};

// The system launches the app, opens a URL in it, or activates it. The game's own methods answer `answer`.
struct LaunchStep {
    std::string url; // For which the app is launched; empty for none.
    bool answer = true;
};
struct OpenURLStep {
    std::string url;
    std::string source;      // The app that asks; empty for none.
    bool withSource = false; // By the older of the two methods, which has the source as an argument.
    bool answer = true;
};
struct ActivateStep {};

// The core starts the report plugin, or reports an event through it.
struct InitStatStep {};
struct ReportStep {
    std::string event;
    std::map<std::string, std::variant<std::string, int64_t, double, bool, std::nullptr_t>> params;
    bool hasParams = false;
    bool isRealtime = false;
    std::string seqID;
    std::string extra;
};

// The core hands cached results to the observers that are registered by now.
struct CollectStep {};

using Step = std::variant<NoteStep, ConfigureStep, SDKVersionStep, ObserveStep, RemoveObserverStep, LoginStep,
                          LogoutStep, AnswerLoginStep, CommitStep, CollectStep, LaunchStep, OpenURLStep, ActivateStep,
                          InitStatStep, ReportStep, PlayerStep, ProfileStep, AppsStep, QueriesSchemesStep,
                          PhotoPermissionStep, AnswerPhotoPromptStep, SendMessageStep, ShareStep, AddFriendStep,
                          QueryFriendsStep, AnswerFriendFinderStep, AnswerGameRequestStep, AnswerShareStep,
                          FinishSavingStep, AnswerImageUploadStep, UploadProgressStep, AnswerVideoUploadStep>;

struct Scenario {
    std::string title;
    std::vector<Step> steps;
};

// Reads and checks a scenario file. Empty when it cannot be used: `error` names file, line, column and remedy.
std::optional<Scenario> LoadScenario(const std::string& path, LocatedError& error);

} // namespace Tarvik::Vorn::Simulator
