// What happens while a world is played: one entry per thing that happens, with its virtual time, its thread and the
// request that caused it. Plain C++. Any thread may add; everything else is for the main thread, while no other thread
// adds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// Virtual time in milliseconds since the beginning of a run.
using Milliseconds = int64_t;

enum class EntryKind {
    kNote,      // The world's own heading.
    kWorld,     // Something around the plugin changes: the user, an app, a setting.
    kCore,      // The core registers or removes an observer, configures, collects.
    kSystem,    // The system tells the app something.
    kGame,      // The game's own method of the application delegate answers.
    kCall,      // The core calls the plugin.
    kReturn,    // That call returns.
    kFacebook,  // The plugin calls the Facebook SDK.
    kApple,     // The plugin calls one of Apple's frameworks.
    kLog,       // A line that the plugin logs.
    kLogError,  // A line that it logs as an error.
    kTrace,     // A trace that it writes.
    kAnswer,    // Facebook, the system or the user ends what was asked of them.
    kEvents,    // What Facebook makes of an event.
    kRecord,    // A result as it arrives.
    kDelivered, // It reaches an observer.
    kCached,    // It waits for an observer.
    kCollected, // It reaches an observer after having waited.
    kLost,      // It reaches nobody, ever.
    kFault,     // A fault that the world asks for strikes.
    kThrown,    // An exception leaves the plugin.
    kProblem,   // Why a step cannot be played.
};

// The word for a kind in every output: "note", "call", "facebook", ...
std::string_view NameOf(EntryKind kind);

// One member of a record. Members that belong to the core are there only where they differ from their defaults.
struct ResultField {
    std::string name;
    std::variant<int64_t, std::string> value;

    bool operator==(const ResultField&) const = default;
};

// A result on its way to the game.
struct ResultFacts {
    std::string record; // "InnerBaseRet"
    unsigned observerID = 0;
    std::string seqID;
    std::vector<ResultField> fields; // In the record's order: "methodNameID", "retCode", ...

    // The channelInfo with its access token, where the member tells only how long that is. To compare with, not to show.
    std::string wholeInfo{};

    Milliseconds time = 0; // When it reached its observer; 0 inside an entry, which has a time of its own.

    // The member of that name; null when the record has none.
    const ResultField* Find(std::string_view name) const;

    // Its value; empty when the record has no such member, or one of the other type.
    std::optional<int64_t> Number(std::string_view name) const;
    std::string Text(std::string_view name) const;
};

// A request that the core made. Entries name it by its index.
struct RequestFacts {
    std::string seqID;
    std::string kind;                   // The step's name: "share", "login", ...
    std::string title;                  // For people: "share of a link".
    std::optional<unsigned> observerID; // Where its result is expected; none when no result comes.
    int methodID = 0;
    Milliseconds time = 0;
};

inline constexpr size_t kNoRequest = static_cast<size_t>(-1);

struct Entry {
    Milliseconds time = 0;
    bool onMainThread = true;
    size_t request = kNoRequest; // The request that caused it.
    EntryKind kind = EntryKind::kNote;
    std::string text;                  // One line, or more where a log line has more. Without addresses; any bytes.
    std::optional<ResultFacts> result; // kRecord, kDelivered, kCached, kCollected.
};

class Timeline {
public:
    using Listener = std::function<void(const Entry&)>;

    Timeline() = default;
    Timeline(const Timeline&) = delete;
    Timeline& operator=(const Timeline&) = delete;

    // Adds an entry for this moment, this thread and the current cause. Addresses in `text` and in the texts of `result`
    // are replaced by numbers in the order of their first appearance, so that two runs say the same.
    void Add(EntryKind kind, const std::string& text);
    void Add(EntryKind kind, const std::string& text, ResultFacts result);

    // Adds a request and makes it the current cause. Returns its index.
    size_t BeginRequest(RequestFacts request);

    // What follows is caused by this request; kNoRequest for none.
    void SetCause(size_t request);
    size_t cause() const { return mCause; }

    void SetTime(Milliseconds time) { mTime = time; }
    Milliseconds time() const { return mTime; }

    // Called with each entry when it has been added, one at a time, on the adding thread. It must not add.
    void SetListener(Listener listener);

    // Entries and requests are kept unless this says no: then listeners alone hear of them, and memory stays flat.
    // Indices of requests count on.
    void SetKept(bool kept) { mKept = kept; }

    // Whether anybody looks at the details: the calls, log lines and traces between a request and its results. Yes unless
    // told. Whoever adds many entries may leave details out otherwise.
    void SetDetailed(bool detailed) { mDetailed = detailed; }
    bool IsDetailed() const { return mDetailed; }

    const std::vector<Entry>& entries() const { return mEntries; }
    const std::vector<RequestFacts>& requests() const { return mRequests; }

private:
    std::string WithoutAddresses(const std::string& text);

    std::recursive_mutex mMutex;
    std::vector<Entry> mEntries;
    std::vector<RequestFacts> mRequests;
    std::vector<std::pair<std::string, std::string>> mAddresses; // And what stands for them.
    size_t mRequestCount = 0;
    Listener mListener;
    Milliseconds mTime = 0;
    size_t mCause = kNoRequest;
    bool mKept = true;
    bool mDetailed = true;
};

// "0.000 s", "12.345 s"
std::string TimeText(Milliseconds time);

} // namespace Tarvik::Vorn::Simulator
