#include "Listening.h"

#include "AllocationFault.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "Guarded.h"
#include "PlatformCalls.h"
#include "VornDefine.h"
#include "VornImageLoader.h"
#include "VornLogSink.h"
#include "VornTraceSink.h"

#include <array>
#include <string_view>

namespace Tarvik::Vorn::Simulator {
namespace {

// The lines with which the holder of results says what becomes of one that is not delivered.
constexpr std::string_view kCachedLine = "mTaskParamsHolder after insert ";
constexpr std::string_view kNotCachedLine = "cacheTask failed for mSeqID is empty";
constexpr std::string_view kNobodyLine = "can not get inner callback for ";

// Classes whose every call, and calls of which some, show something to the user.
constexpr std::array<std::string_view, 6> kShownClasses{
    "UIView", "UIProgressView", "UIWindow", "UIViewController", "FBSDKFriendFinderDialog", "FBSDKGameRequestDialog"};

bool Shows(const Host::PlatformCall& call) {
    for (const std::string_view name : kShownClasses) {
        if (call.className == name) {
            return true;
        }
    }
    return call.selector == "show" || call.selector.starts_with("logInWithPermissions:");
}

} // namespace

Listening::Listening(Timeline& timeline, Audit& audit, bool showTokens) : mTimeline(timeline), mAudit(audit) {
    SetLogSink([this](const VornLogLine& line) {
        const UncountedAllocations uncounted;
        HearLog(line);
    });
    SetTraceSink([this](const VornTraceEntry& entry) {
        if (!mTimeline.IsDetailed()) {
            return;
        }
        const UncountedAllocations uncounted;
        mTimeline.Add(EntryKind::kTrace, entry.kind == VornTraceKind::kPlugin
                                             ? "plugin " + entry.pluginName + " " + entry.pluginVersion + ", channel " +
                                                   entry.channel + ", SDK " + entry.sdkVersion
                                             : entry.module + " [ " + entry.seqID + " ] " + entry.extraJson);
    });
    Host::SetPlatformCallListener([this](const Host::PlatformCall& call) {
        const UncountedAllocations uncounted;
        if (mTimeline.IsDetailed()) {
            mTimeline.Add(call.className.starts_with("FBSDK") ? EntryKind::kFacebook : EntryKind::kApple,
                          call.className + " " + call.selector +
                              (call.arguments.empty() ? "" : " (" + call.arguments + ")"));
        }
        if (!call.onMainThread && Shows(call)) {
            mAudit.SeeShownOffMainThread(mTimeline.cause(), call.className + " " + call.selector);
        }
    });
    Host::SetAppEventListener([this](const Host::AppEvent& event) {
        const UncountedAllocations uncounted;
        const std::string name = CStr(event.name.get());
        if (event.accepted) {
            mTimeline.Add(EntryKind::kEvents, "Facebook takes \"" + name + "\"");
            return;
        }
        mTimeline.Add(EntryKind::kEvents,
                      "Facebook drops \"" + name + "\" because of \"" + event.offender + "\": " + event.rule);
        mAudit.SeeDroppedEvent(mTimeline.cause(), name, event.offender, event.rule);
    });
    SetResultListener([this](const ResultFacts& result, const std::string& text) { HearResult(result, text); },
                      showTokens);
    SetImageLoadsHeld(true); // Until the step that causes them has been told.
    SetImageLoadRunner([this](const std::function<void()>& load) {
        const std::string thrown = CallGuarded(load);
        const UncountedAllocations uncounted;
        if (!thrown.empty()) {
            mTimeline.Add(EntryKind::kThrown, thrown);
        }
    });
}

Listening::~Listening() {
    SetLogSink({});
    SetTraceSink({});
    Host::SetPlatformCallListener({});
    Host::SetAppEventListener({});
    SetImageLoadsHeld(false);
    SetImageLoadRunner({});
    SetResultListener({});
}

void Listening::SetCollecting(bool collecting) {
    mCollecting = collecting;
}

void Listening::HearLog(const VornLogLine& line) {
    const std::string& function = line.function;
    const std::string& text = line.text;
    if (mTimeline.IsDetailed()) {
        mTimeline.Add(line.level == kLogDebug ? EntryKind::kLog : EntryKind::kLogError,
                      line.file + " " + function + ": " + text);
    }
    if (function != "CommitToTaskQueue" && function != "cacheTask" && function != "CallbackOnMainThread") {
        return;
    }
    if (text.starts_with(kCachedLine)) {
        HearCached(text.substr(kCachedLine.size()));
    } else if (text == kNotCachedLine) {
        mTimeline.Add(EntryKind::kLost, "nobody observes it, and without a sequence ID it cannot be cached");
    } else if (text.starts_with(kNobodyLine)) {
        mTimeline.Add(EntryKind::kLost, "its observer was removed while it was on its way");
    }
}

// The result has been put into the cache by now, unless another was there.
void Listening::HearCached(const std::string& seqID) {
    if (const auto cached = NewlyCached(seqID, mKnownCached)) {
        const auto& [result, text] = *cached;
        mTimeline.Add(EntryKind::kRecord, text, result);
        mTimeline.Add(EntryKind::kCached, "under \"" + seqID + "\", for observer " + std::to_string(result.observerID),
                      result);
        return;
    }
    mTimeline.Add(EntryKind::kLost, "another result is cached under \"" + seqID + "\" already");
}

void Listening::HearResult(const ResultFacts& result, const std::string& text) {
    const std::string observer = "observer " + std::to_string(result.observerID) + ", under \"" + result.seqID + "\"";
    if (mCollecting) {
        mKnownCached.erase({result.seqID, result.record});
        mTimeline.Add(EntryKind::kCollected, "by " + observer + ": " + text, result);
        return;
    }
    mTimeline.Add(EntryKind::kRecord, text, result);
    mTimeline.Add(EntryKind::kDelivered, "to " + observer, result);
}

} // namespace Tarvik::Vorn::Simulator
