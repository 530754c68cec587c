#include "Soak.h"

#include "FBSDKShareKit/ShareDialogs.h"
#include "MainQueue+Control.h"
#include "Memory.h"
#include "ObjectCount.h"
#include "Observers.h"
#include "Openings.h"
#include "Platform.h"
#include "PlatformCalls.h"
#include "PlatformFaults.h"
#include "Plugins.h"
#include "VornImageLoader.h"

#import <Foundation/Foundation.h>

#include <algorithm>

namespace Tarvik::Vorn::Soak {
namespace {

constexpr size_t kEventsKept = 20;
constexpr uint64_t kRequestsBetweenCheckPoints = 1000;
constexpr uint64_t kTenths = 10;

Waiting KindOf(Host::Opening opening) {
    switch (opening) {
    case Host::Opening::kLogin:
        return Waiting::kLogin;
    case Host::Opening::kShareDialog:
    case Host::Opening::kMessageDialog:
        return Waiting::kShareDialog;
    case Host::Opening::kGameRequest:
        return Waiting::kGameRequest;
    case Host::Opening::kFriendFinder:
        return Waiting::kFriendFinder;
    case Host::Opening::kPhotoPrompt:
        return Waiting::kPhotoPrompt;
    case Host::Opening::kPhotoChanges:
        return Waiting::kPhotoChanges;
    case Host::Opening::kImageUpload:
        return Waiting::kImageUpload;
    case Host::Opening::kVideoUpload:
        return Waiting::kVideoUpload;
    }
}

// Whether `work` raised an exception of the platform.
bool Raises(const std::function<void()>& work) {
    @autoreleasepool {
        @try {
            work();
            return false;
        } @catch (NSException* exception) {
            return true;
        }
    }
}

} // namespace

Soak::Soak(uint64_t seed, uint64_t requests) : mSeed(seed), mWanted(requests), mChance(seed), mModel(mChance) {}

Soak::~Soak() {
    Host::SetOpeningListener({});
    Host::SetPlatformCallListener({});
}

#pragma mark - The run

void Soak::Begin() {
    ResetWorld();
    ApplyWorld(mModel.world);
    SetImageLoadsHeld(true);
    Host::SetOpeningListener([this](Host::Opening opening) {
        if (mForetold.empty() || mForetold.front().kind != KindOf(opening)) {
            mSeen.problem = "something opened that was not foretold";
            return;
        }
        Opened();
    });
    Host::SetPlatformCallListener([this](const Host::PlatformCall& call) {
        mSeen.steps.emplace_back(call.className, call.selector);
        mSeen.arguments.push_back(call.arguments);
    });
}

std::string Soak::Run() {
    @autoreleasepool { // Nothing of the first screen may live on in an outer pool.
        StartGame();
        Begin();
    }
    mModel.AdoptParked(ParkedByPlugin());
    for (const KnownObserver& observer : KnownObservers()) {
        mModel.Observe(observer.record, observer.observerID, true);
        SetObserved(observer, true);
    }
    uint64_t nextCheck = kRequestsBetweenCheckPoints;
    uint64_t nextTenth = 1;
    while (mProblem.empty() && mSent < mWanted) {
        @autoreleasepool {
            Step();
        }
        const bool isTenthOver = mSent >= mWanted * nextTenth / kTenths;
        if (mSent < nextCheck && !isTenthOver) {
            continue;
        }
        @autoreleasepool {
            CheckPoint();
        }
        nextCheck = mSent + kRequestsBetweenCheckPoints;
        if (isTenthOver) {
            mMemory.push_back({AllocatedBytes(), ResidentBytes()});
            nextTenth += 1;
        }
    }
    return mProblem;
}

#pragma mark - One action

void Soak::Do(const std::string& what, bool inBackground, const std::function<void()>& work) {
    Note(what);
    mSeen = {};
    mForetold = mModel.Now().openings;
    if (inBackground) {
        mWorker.Run([&] { mSeen.hasRaised = Raises(work); });
    } else {
        mSeen.hasRaised = Raises(work);
    }
    Compare();
}

void Soak::Note(const std::string& event) {
    mEvents.push_back(event);
    if (mEvents.size() > kEventsKept) {
        mEvents.pop_front();
    }
}

// Gives the answer that comes inside the call.
void Soak::Opened() {
    const Happening::Opening opening = mForetold.front();
    mForetold.pop_front();
    if (opening.inside && !GiveAnswer(opening.kind, opening.index, *opening.inside)) {
        mSeen.problem = "nothing waits for the answer inside the call";
    }
}

#pragma mark - Comparison

void Soak::Compare() {
    mRaised += mSeen.hasRaised ? 1 : 0;
    if (!mArmed.first.empty() && !Host::IsRaisePending(mArmed.first, mArmed.second)) {
        if (mModel.Disarm()) {
            Fail("the arranged exception of " + mArmed.first + " " + mArmed.second + " was not foretold");
        }
        mArmed = {};
    }
    if (!mSeen.problem.empty()) {
        Fail(mSeen.problem);
    }
    if (!mForetold.empty()) {
        Fail("something did not open that was foretold");
    }
    if (mSeen.hasRaised != mModel.Now().hasRaised) {
        Fail(mSeen.hasRaised ? "an exception came out that was not foretold" : "a foretold exception did not come out");
    }
    CompareSteps();
    CompareDeliveries();
    CompareWhatWaits();
    CompareParked();
}

void Soak::CompareSteps() {
    const std::vector<PlatformStep>& expected = mModel.Now().steps;
    for (size_t i = 0; i < std::max(expected.size(), mSeen.steps.size()); ++i) {
        const std::string wanted = i < expected.size() ? std::string(expected[i].className) + " " + expected[i].selector
                                                       : std::string("no further call");
        const std::string got = i < mSeen.steps.size() ? mSeen.steps[i].first + " " + mSeen.steps[i].second
                                                       : std::string("no further call");
        if (wanted != got) {
            return Fail("call " + std::to_string(i + 1) + " into the platform\n  expected: " + wanted +
                        "\n  got:      " + got);
        }
        if (expected[i].arguments && *expected[i].arguments != mSeen.arguments[i]) {
            return Fail("arguments of " + wanted + "\n  expected: " + *expected[i].arguments +
                        "\n  got:      " + mSeen.arguments[i]);
        }
        mKnownSteps.insert(mSeen.steps[i]);
    }
}

void Soak::CompareDeliveries() {
    const std::vector<Outcome>& expected = mModel.Now().deliveries;
    const std::vector<Outcome> got = TakeDeliveries();
    for (size_t i = 0; i < std::max(expected.size(), got.size()); ++i) {
        if (i < expected.size() && i < got.size() && Matches(expected[i], got[i])) {
            continue;
        }
        return Fail("delivery " + std::to_string(i + 1) +
                    "\n  expected: " + (i < expected.size() ? TextOf(expected[i]) : "none") +
                    "\n  got:      " + (i < got.size() ? TextOf(got[i]) : "none"));
    }
}

void Soak::CompareWhatWaits() {
    const auto compare = [this](const std::string& what, size_t expected, size_t got) {
        if (expected != got) {
            Fail(what + "\n  expected: " + std::to_string(expected) + "\n  got:      " + std::to_string(got));
        }
    };
    compare("pieces of work on the main queue", mModel.QueuedCount(), Host::MainQueueDepth());
    for (size_t i = 0; i < kWaitingCount; ++i) {
        const auto kind = static_cast<Waiting>(i);
        compare("open things of kind " + std::to_string(i), mModel.WaitingCount(kind), WaitingCount(kind));
    }
    for (size_t i = 0; i < kRecordKindCount; ++i) {
        const auto record = static_cast<RecordKind>(i);
        compare("cached results of record " + std::to_string(i), mModel.CacheOf(record).size(), CachedCount(record));
    }
    compare("progress bars on the screen", mModel.BarCount(), BarCount());
    compare("living share and message dialogs", mModel.WaitingCount(Waiting::kShareDialog),
            Host::LivingShareDialogCount());
}

void Soak::CompareParked() {
    const Parked& expected = mModel.ParkedIDs();
    const Parked got = ParkedByPlugin();
    if (expected.methodID != got.methodID || expected.seqID != got.seqID || expected.observerID != got.observerID) {
        const auto textOf = [](const Parked& parked) {
            return "method " + std::to_string(parked.methodID) + ", seqID \"" + parked.seqID + "\", observer " +
                   std::to_string(parked.observerID);
        };
        Fail("parked IDs\n  expected: " + textOf(expected) + "\n  got:      " + textOf(got));
    }
}

#pragma mark - Checkpoints

void Soak::CheckPoint() {
    Host::ResetPlatformFaults();
    static_cast<void>(mModel.Disarm());
    mArmed = {};
    mModel.LoadImages();
    Do("checkpoint: image loads", false, [] { WaitForImageLoads(); });
    mModel.DrainFully();
    Do("checkpoint: the main queue", false, [] { Host::DrainMainQueueUntilEmpty(); });
    CompareCaches();
    if (!mProblem.empty()) {
        return;
    }
    @autoreleasepool {
        mModel.Forget();
        ClearCaches();
        Begin();
    }
    CompareWhatWaits();
    if (mModel.fates.Unsettled() != 0) {
        Fail("request " + std::to_string(mModel.fates.AnyUnsettled()) + " is not accounted for");
    }
    if (mModel.fates.Settled() != mSent) {
        Fail("of " + std::to_string(mSent) + " requests " + std::to_string(mModel.fates.Settled()) +
             " are accounted for");
    }
    const std::string left = Test::LivingObjects();
    if (!left.empty()) {
        Fail("objects of the platform are left: " + left);
    }
}

void Soak::CompareCaches() {
    for (size_t i = 0; i < kRecordKindCount; ++i) {
        const auto record = static_cast<RecordKind>(i);
        const Cache got = CachedOutcomes(record);
        for (const auto& [seqID, expected] : mModel.CacheOf(record)) {
            const auto found = got.find(seqID);
            if (found == got.end() || !Matches(expected, found->second)) {
                Fail("cached result\n  expected: " + TextOf(expected) +
                     "\n  got:      " + (found == got.end() ? "none" : TextOf(found->second)));
            }
        }
    }
}

// The first problem counts: what follows is its consequence.
void Soak::Fail(const std::string& problem) {
    if (!mProblem.empty()) {
        return;
    }
    mProblem = "seed " + std::to_string(mSeed) + ", request " + std::to_string(mSent) + ": " + problem +
               "\nthe last request: " + mRequestText + "\nthe last events, the newest last:\n";
    for (const std::string& event : mEvents) {
        mProblem += "  " + event + "\n";
    }
}

} // namespace Tarvik::Vorn::Soak
