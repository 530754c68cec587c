// A world: who is there, what is installed and configured, what the core, the user, Facebook and the system do, and what
// the game is expected to hear. Plain C++, values.
#pragma once

#include "FriendSteps.h"
#include "VornJsonDocument.h"
#include "VornLocatedError.h"
#include "VornRecords.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// A heading for the reader of the timeline.
struct NoteStep {
    std::string text;
};

// The core's configuration gets these values.
struct ConfigureStep {
    std::map<std::string, std::string> values;
};

// The Facebook SDK reports this version from now on; none when the world says null.
struct SDKVersionStep {
    std::optional<std::string> version;
};

// The app has this Info.plist, and nothing else in it.
struct InfoPlistStep {
    JsonValue entries; // An object.
    std::string path;  // Of a property list, absolute; empty when the world gives the entries itself.
};

enum class RecordType { kBase, kFriend, kLogin, kLoginPlugin };

// The core registers or removes an observer.
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
    bool background = false;
    std::vector<PlannedAnswer> answers;
};
struct LogoutStep {
    VornBaseParams params;
    bool background = false;
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
    bool toScene = false;    // To the app's scene delegate, which does not pass it on: nobody hears of it.
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

// Virtual time passes; what falls due in it happens.
struct WaitStep {
    Duration duration;
};

// The next call of this kind into the platform raises an Objective-C exception.
struct ThrowStep {
    std::string className; // "FBSDKShareDialog"
    std::string selector;  // "show"
    std::string name;      // Of the exception.
    std::string reason;
};

// While the next request is served, the n-th allocation of a C++ object fails.
struct FailAllocationStep {
    uint64_t nth = 1; // From 1.
};

struct Step;

// The steps, so many times; "{n}" in a sequence ID is the number of the round, from 1.
struct RepeatStep {
    uint64_t times = 0;
    std::vector<Step> steps;
};

using Action = std::variant<NoteStep, ConfigureStep, SDKVersionStep, InfoPlistStep, ObserveStep, RemoveObserverStep,
                            LoginStep, LogoutStep, AnswerLoginStep, CommitStep, CollectStep, LaunchStep, OpenURLStep,
                            ActivateStep, InitStatStep, ReportStep, WaitStep, ThrowStep, FailAllocationStep, RepeatStep,
                            PlayerStep, TrackingStep, ViewControllerStep, ProfileStep, AppsStep, QueriesSchemesStep,
                            PhotoPermissionStep, AnswerPhotoPromptStep, SendMessageStep, ShareStep, AddFriendStep,
                            QueryFriendsStep, AnswerFriendFinderStep, AnswerGameRequestStep, AnswerShareStep,
                            FinishSavingStep, AnswerImageUploadStep, UploadProgressStep, AnswerVideoUploadStep>;

struct Step {
    Action action;
    JsonLocation location; // In the world's file; 1:1 for a step that was made by a program.
};

// A result that the game is expected to hear. What is empty is not looked at.
struct ExpectedResult {
    std::optional<std::string> record;
    std::optional<unsigned> observerID;
    std::optional<std::string> seqID;
    std::optional<Milliseconds> time;
    std::vector<ResultField> fields;
    JsonLocation location;
};

// What a run must show. What is empty is not looked at.
struct Expectations {
    std::optional<std::vector<ExpectedResult>> results; // All that are delivered or collected, in their order.
    std::optional<std::vector<std::string>> unanswered; // Sequence IDs of the requests without a result, in any order.
    std::optional<std::vector<std::string>> cached;     // Sequence IDs of the results that still wait, in any order.
    std::optional<std::vector<std::string>> audit;      // Identifiers of the audit's remarks, in any order.
    std::vector<std::pair<std::string, JsonLocation>> lines; // Each is part of some entry's text.
    JsonLocation location;

    bool IsEmpty() const { return !results && !unanswered && !cached && !audit && lines.empty(); }
};

struct World {
    std::string name; // The file's, without folder and ".world.json".
    std::string path; // Of the file; files that the world names are beside it.
    std::string question;
    std::optional<uint64_t> seed;
    bool registersObservers = true; // Observers for everything are registered before they are needed.
    std::vector<Step> setting;      // Before the first step.
    std::vector<Step> steps;
    Expectations expectations;
};

// No world file is greater than this.
inline constexpr uint64_t kWorldFileLimit = uint64_t{16} * 1024 * 1024;

// Reads and checks a world's file. Empty when it cannot be used: `error` names file, line, column, the path inside the
// document and the remedy.
std::optional<World> LoadWorld(const std::string& path, LocatedError& error);

// The same for a text; `path` names it in errors, and files are looked for beside it.
std::optional<World> ParseWorld(const std::string& text, const std::string& path, LocatedError& error);

} // namespace Tarvik::Vorn::Simulator
