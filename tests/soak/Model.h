// What must come of a request, written down from the contract and without a look at the plugin: a small machine with the
// same queues, caches and open dialogs. It does nothing itself; the soak asks it first and the plugin second, and compares.
//
// Plain C++; main thread. An action that raises in the plugin raises Raised here.
#pragma once

#include "Chance.h"
#include "Fates.h"
#include "Outcome.h"
#include "Scene.h"

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Soak {

// What one action must be seen to do.
struct Happening {
    // Something opens; with an answer, it is given inside the call that opens it, to the thing at that place of its list.
    struct Opening {
        Waiting kind = Waiting::kLogin;
        std::optional<Answer> inside;
        size_t index = 0;
    };

    std::vector<PlatformStep> steps;
    std::vector<Outcome> deliveries;
    std::deque<Opening> openings;
    bool hasRaised = false;
};

// What a dialog's outcome goes out under.
struct Parked {
    int methodID = -1;
    std::string seqID;
    unsigned observerID = 0;
};

using Cache = std::map<std::string, Outcome>;

class Model {
public:
    explicit Model(Chance& chance) : mChance(chance) {}

    World world;
    Fates fates;

    // ---- Actions. Each forgets what the one before did; `Now` tells what it must have done.

    void Send(const Request& request);
    void Give(Waiting kind, size_t index, const Answer& answer, bool inBackground);
    void TellProgress(size_t index);
    void Drain();      // One pass over the main queue.
    void DrainFully(); // Until nothing is queued, or something raises.
    void LoadImages();
    void DeliverCached(RecordKind record);
    bool TakeCached(RecordKind record, const std::string& seqID);

    // Everything that is open is forgotten, the caches are emptied, and the world is as at first.
    void Forget();

    const Happening& Now() const { return mNow; }

    // ---- The arranged exception: the next call of this name raises.

    void Arm(std::pair<std::string, std::string> call) { mArmed = std::move(call); }
    // Whether it was still waiting.
    bool Disarm() { return std::exchange(mArmed, std::nullopt).has_value(); }

    // What an earlier run left.
    void AdoptParked(Parked parked) { mParked = std::move(parked); }

    // ---- Observers

    void Observe(RecordKind record, unsigned observerID, bool isObserved);
    bool IsObserved(RecordKind record, unsigned observerID) const;

    // ---- What must be there now

    size_t QueuedCount() const { return mQueue.size(); }
    size_t WaitingCount(Waiting kind) const { return mOpen[static_cast<size_t>(kind)].size(); }
    const Cache& CacheOf(RecordKind record) const { return mCaches[static_cast<size_t>(record)]; }
    const Parked& ParkedIDs() const { return mParked; }
    size_t BarCount() const { return mBars; }

private:
    struct Raised {};

    using Shared = std::shared_ptr<const Request>;

    // A share content as far as it matters.
    struct Content {
        URLKind url = URLKind::kNone;
        bool hasContents = false; // The URL names a file that can be read.
    };

    // The end of a content builder: a content, or why there is none.
    struct Built {
        std::optional<Content> content;
        Outcome refusal;
    };

    struct Open {
        Shared request;
        std::function<void(const Answer&)> answer;
    };

    struct Work {
        Shared request;
        std::function<void()> run;
    };

    // A progress bar on the screen.
    struct Bar {
        bool isOnView = false;
    };

    // Runs an action; catches what it raises.
    void Perform(bool inBackground, const std::function<void()>& action);

    // What happens to `request` until `work` is done.
    void Within(const Shared& request, const std::function<void()>& work);

    [[noreturn]] void Raise();
    void Call(const char* className, const char* selector, std::optional<std::string> arguments = std::nullopt);
    void Post(const Shared& request, std::function<void()> work);
    void RunNext();
    void Wait(Waiting kind, const Shared& request, std::function<void(const Answer&)> answer);
    void Answered(Waiting kind, size_t index, const Answer& answer);
    Answer DrawAnswer();
    bool IsGaming() const { return world.hasToken && world.domain == Domain::kGaming; }

    void Commit(const Shared& request, Outcome outcome);
    // For the request's own observer, under its own IDs; without the method ID where the contract says so.
    void CommitOwn(const Shared& request, Outcome outcome, bool hasMethod = true);
    // Under the IDs that the last request parked.
    void CommitParked(const Shared& request, Outcome outcome);
    void Park(const Request& request);

    void LogIn(const Shared& request);
    void EndLogin(const Shared& request, const Answer& answer);
    void LoginFailed(const Shared& request, int code, std::optional<std::string> text);
    void LogOut(const Shared& request);
    void AddFriend(const Shared& request);
    void QueryFriends(const Shared& request);
    void ReportEvent(const Shared& request);
    void Launch();
    void Route(const Shared& request);
    void Start(const Shared& request);

    void Invite(const Shared& request);
    void EndGameRequest(const Shared& request, const Answer& answer);
    void Pipeline(const Shared& request);
    void BuildVideo(const Shared& request);
    void AskForPhotos(const Shared& request);
    void SaveVideo(const Shared& request);
    void VideoSaved(const Shared& request, bool isSaved, bool isCreated);
    void Decide(const Shared& request, const Built& built);
    void ShowShareDialog(const Shared& request, const Content& content);
    void ShowMessageDialog(const Shared& request, const Content& content);
    void EndDialog(const Shared& request, const Answer& answer);
    void SharerFailed(const Shared& request, int code);
    void UploadImage(const Shared& request);
    void UploadVideo(const Shared& request, const Content& content);
    void EndUpload(const Shared& request, const Answer& answer, const char* fallback);
    void TakeAway(Bar& bar);

    Chance& mChance;
    Happening mNow;
    std::optional<std::pair<std::string, std::string>> mArmed;
    Shared mSubject; // Whose request is being served.
    bool mIsOnMainThread = true;
    bool mIsRegistered = false; // For activations.

    Parked mParked;
    std::deque<Work> mQueue;
    std::deque<Work> mLoads;
    std::array<std::vector<Open>, kWaitingCount> mOpen;
    std::array<std::set<unsigned>, kRecordKindCount> mObservers;
    std::array<Cache, kRecordKindCount> mCaches;
    size_t mBars = 0; // On the screen.
};

} // namespace Tarvik::Vorn::Soak
