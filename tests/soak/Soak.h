// One soak run: requests, answers and faults by lot, each foretold by the model and then seen in the plugin.
//
// Main thread; one run at a time. The plugin is loaded and its friend plugin's instance is as another run left it.
#pragma once

#include "Model.h"
#include "Worker.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Soak {

struct MemorySample {
    size_t allocated = 0;
    size_t resident = 0;
};

class Soak {
public:
    Soak(uint64_t seed, uint64_t requests);
    ~Soak();
    Soak(const Soak&) = delete;
    Soak& operator=(const Soak&) = delete;

    // Sends all requests. Empty when everything came as foretold; otherwise what did not, for people.
    std::string Run();

    const Fates& Account() const { return mModel.fates; }

    // What was allocated behind each tenth of the requests, when nothing was under way.
    const std::vector<MemorySample>& Memory() const { return mMemory; }

    // How many exceptions of the platform have reached a caller of the plugin.
    uint64_t RaisedCount() const { return mRaised; }

private:
    // What an action really did.
    struct Seen {
        std::vector<std::pair<std::string, std::string>> steps;
        std::vector<std::string> arguments;
        bool hasRaised = false;
        std::string problem;
    };

    void Begin();
    void Step();
    Request DrawRequest();
    RequestKind DrawKind();
    void DrawTexts(Request& request);
    void SendOne();
    void AnswerOne();
    void TellProgress();
    void RunQueues();
    void ChangeWorld();
    void ChangeObserver();
    void UseCache();
    void MaybeArm();

    // Does `work` as the model has just foretold it, and compares. `what` is for people.
    void Do(const std::string& what, bool inBackground, const std::function<void()>& work);
    void Note(const std::string& event);
    void Opened();
    void Compare();
    void CompareSteps();
    void CompareDeliveries();
    void CompareWhatWaits();
    void CompareParked();

    // Ends everything and looks at what is left.
    void CheckPoint();
    void CompareCaches();
    void Fail(const std::string& problem);

    const uint64_t mSeed;
    const uint64_t mWanted;
    uint64_t mSent = 0;
    uint64_t mRaised = 0;
    bool mHasLaunched = false;
    Chance mChance;
    Model mModel;
    Worker mWorker;
    Request mRequest;         // The last one ...
    std::string mRequestText; // ... for people.
    Seen mSeen;
    std::deque<Happening::Opening> mForetold; // What is still to open in this action.
    std::set<std::pair<std::string, std::string>> mKnownSteps;
    std::pair<std::string, std::string> mArmed;
    std::deque<std::string> mEvents;
    std::string mProblem;
    std::vector<MemorySample> mMemory;
};

} // namespace Tarvik::Vorn::Soak
