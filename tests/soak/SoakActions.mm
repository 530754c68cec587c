// What a soak does: drawn by lot, foretold by the model, done with the plugin.

#include "Soak.h"

#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "MainQueue+Control.h"
#include "Observers.h"
#include "Platform.h"
#include "PlatformFaults.h"
#include "Plugins.h"
#include "VornImageLoader.h"

#include <iterator>

namespace Tarvik::Vorn::Soak {
namespace {

constexpr size_t kMostWaiting = 30; // Of one kind; then the oldest is answered.

template <class T>
const T& OneOf(Chance& chance, const std::vector<T>& values) {
    return values[chance.Below(values.size())];
}

std::string TextOf(const Request& request) {
    static constexpr const char* kNames[] = {"login",     "logout",       "sendMessage",        "share",
                                             "addFriend", "queryFriends", "isBackendSupported", "reportEvent",
                                             "launch",    "openURL",      "openURLFromApp",     "activate"};
    return "request " + std::to_string(request.number) + ": " + kNames[static_cast<size_t>(request.kind)] + ", type " +
           std::to_string(request.type) + ", method " + std::to_string(request.methodID) + ", observer " +
           std::to_string(request.observerID) + ", seqID \"" + request.seqID.text + "\", mode \"" + request.subChannel +
           "\", title \"" + request.title + "\", desc \"" + request.desc + "\", link \"" + request.link.text +
           "\", image \"" + request.image.path + "\", video \"" + request.video.text + "\", extra " +
           request.extra.text + ", permissions \"" + request.permissions.text + "\"" +
           (request.inBackground ? ", in the background" : "");
}

std::string TextOf(const Answer& answer) {
    static constexpr const char* kNames[] = {"success", "cancel", "error", "odd"};
    return std::string(kNames[static_cast<size_t>(answer.ending)]) + " " + std::to_string(answer.code) +
           (answer.staysOpen ? ", and stays open" : "");
}

const char* NameOf(Waiting kind) {
    static constexpr const char* kNames[] = {"login",        "share dialog",  "game request", "friend finder",
                                             "photo prompt", "photo changes", "image upload", "video upload"};
    return kNames[static_cast<size_t>(kind)];
}

} // namespace

void Soak::Step() {
    const size_t lot = mChance.Below(100);
    MaybeArm();
    if (lot < 38) {
        SendOne();
    } else if (lot < 66) {
        AnswerOne();
    } else if (lot < 69) {
        TellProgress();
    } else if (lot < 88) {
        RunQueues();
    } else if (lot < 93) {
        ChangeWorld();
    } else if (lot < 96) {
        ChangeObserver();
    } else if (lot < 99) {
        UseCache();
    } else {
        PurgeSingletons();
    }
}

// A step that the plugin is known to take raises the next time. It stays arranged until it happens.
void Soak::MaybeArm() {
    if (!mArmed.first.empty() || mKnownSteps.empty() || !mChance.Percent(4)) {
        return;
    }
    auto step = mKnownSteps.begin();
    std::advance(step, static_cast<ptrdiff_t>(mChance.Below(mKnownSteps.size())));
    mArmed = *step;
    mModel.Arm(mArmed);
    Host::RaiseAtNextCall(mArmed.first, mArmed.second, "SoakException", "arranged");
}

#pragma mark - Requests

RequestKind Soak::DrawKind() {
    static constexpr RequestKind kKinds[] = {
        RequestKind::kLogin,          RequestKind::kLogin,       RequestKind::kLogout,
        RequestKind::kSendMessage,    RequestKind::kSendMessage, RequestKind::kSendMessage,
        RequestKind::kShare,          RequestKind::kShare,       RequestKind::kShare,
        RequestKind::kShare,          RequestKind::kShare,       RequestKind::kShare,
        RequestKind::kShare,          RequestKind::kAddFriend,   RequestKind::kAddFriend,
        RequestKind::kQueryFriends,   RequestKind::kReportEvent, RequestKind::kOpenURL,
        RequestKind::kOpenURLFromApp, RequestKind::kActivate,    RequestKind::kIsBackendSupported,
    };
    return mChance.OneOf(kKinds);
}

void Soak::DrawTexts(Request& request) {
    const Samples& samples = TheSamples();
    request.seqID = OneOf(mChance, samples.seqIDs);
    request.link = OneOf(mChance, samples.links);
    request.image = OneOf(mChance, samples.images);
    request.video = OneOf(mChance, samples.videos);
    request.extra = OneOf(mChance, samples.extras);
    request.permissions = OneOf(mChance, samples.permissions);
    request.subChannel = mChance.Percent(20) ? "Game" : "";
    request.title = mChance.Percent(90) ? "A title" : "";
    request.desc = mChance.Percent(90) ? "A description" : "";
    request.eventName = mChance.Percent(80) ? "level_up" : "";
    request.hasEventParameters = mChance.Percent(50);
}

Request Soak::DrawRequest() {
    static constexpr int kTypes[] = {10001, 10001, 10002, 10002, 10003, 10003, 10005, 10005, 10005, 10004, 0};
    static constexpr int kMethods[] = {211, 211, 211, 212, 212, 414, 414, 999, 0};
    static constexpr unsigned kObservers[] = {31, 31, 32, 33, 107, 0x80000005, 40, 0};
    Request request;
    request.number = mSent + 1;
    request.kind = mHasLaunched ? DrawKind() : RequestKind::kLaunch;
    request.inBackground = mHasLaunched && mChance.Percent(12);
    request.type = mChance.OneOf(kTypes);
    request.methodID = mChance.OneOf(kMethods);
    request.observerID = mChance.OneOf(kObservers);
    DrawTexts(request);
    if (request.kind == RequestKind::kActivate) {
        request.inBackground = false;
    }
    return request;
}

void Soak::SendOne() {
    mRequest = DrawRequest();
    if (mRequest.kind == RequestKind::kActivate && mArmed.second == "activateApp") {
        return; // The notification centre would keep the exception to itself.
    }
    mSent += 1;
    mHasLaunched = true;
    mModel.Send(mRequest);
    mRequestText = TextOf(mRequest);
    Do(mRequestText, mRequest.inBackground, [this] { mSeen.problem = SendRequest(mRequest); });
}

#pragma mark - Answers

void Soak::AnswerOne() {
    static constexpr Ending kEndings[] = {Ending::kSuccess, Ending::kSuccess, Ending::kSuccess,
                                          Ending::kCancel,  Ending::kError,   Ending::kOdd};
    auto kind = static_cast<Waiting>(mChance.Below(kWaitingCount));
    for (size_t i = 0; i < kWaitingCount; ++i) {
        if (mModel.WaitingCount(static_cast<Waiting>(i)) > kMostWaiting) {
            kind = static_cast<Waiting>(i);
        }
    }
    const size_t count = mModel.WaitingCount(kind);
    if (count == 0) {
        return;
    }
    const size_t index = count > kMostWaiting ? 0 : mChance.Below(count);
    Answer answer;
    answer.ending = mChance.OneOf(kEndings);
    answer.code = static_cast<int>(mChance.Below(2000));
    answer.text = "error %d " + std::to_string(answer.code);
    answer.staysOpen = mChance.Percent(10);
    const bool inBackground = mChance.Percent(20);

    mModel.Give(kind, index, answer, inBackground);
    Do(std::string("answer to ") + NameOf(kind) + " " + std::to_string(index) + ": " + TextOf(answer), inBackground,
       [&] {
           if (!GiveAnswer(kind, index, answer)) {
               mSeen.problem = "nothing waits for this answer";
           }
       });
}

void Soak::TellProgress() {
    const size_t count = mModel.WaitingCount(Waiting::kVideoUpload);
    if (count == 0) {
        return;
    }
    const size_t index = mChance.Below(count);
    mModel.TellProgress(index);
    Do("progress of video upload " + std::to_string(index), false,
       [index] { Host::FireVideoProgress(1, 1, 2, index); });
}

void Soak::RunQueues() {
    const size_t lot = mChance.Below(10);
    if (lot < 3) {
        mModel.LoadImages();
        Do("image loads", false, [] { WaitForImageLoads(); });
    } else if (lot < 5) {
        mModel.Drain();
        Do("one pass over the main queue", false, [] { Host::DrainMainQueue(); });
    } else {
        mModel.DrainFully();
        Do("the main queue, until it is empty", false, [] { Host::DrainMainQueueUntilEmpty(); });
    }
}

#pragma mark - The world

void Soak::ChangeWorld() {
    static constexpr Domain kDomains[] = {Domain::kNone, Domain::kFacebook, Domain::kGaming, Domain::kGaming};
    World& world = mModel.world;
    world.hasToken = mChance.Percent(75);
    world.user = mChance.Percent(80) ? "u" : "v";
    world.domain = mChance.OneOf(kDomains);
    world.hasFacebook = mChance.Percent(75);
    world.hasMessenger = mChance.Percent(75);
    world.isMessengerAllowed = mChance.Percent(90);
    world.photos = static_cast<PhotoAccess>(mChance.Below(5));
    world.isVideoCompatible = mChance.Percent(20) ? std::optional(mChance.Percent(50)) : std::nullopt;
    world.hasWindow = mChance.Percent(85);
    world.findsViewController = mChance.Percent(80);
    world.canShowGameRequests = mChance.Percent(85);
    world.isSchemeRegistered = mChance.Percent(90);
    world.isGameConfigured = mChance.Percent(25);
    world.supportsGaming = mChance.Percent(50);
    ApplyWorld(world);
    Note("the world changes");
}

void Soak::ChangeObserver() {
    const KnownObserver& observer = OneOf(mChance, KnownObservers());
    const bool isObserved = mChance.Percent(75);
    mModel.Observe(observer.record, observer.observerID, isObserved);
    SetObserved(observer, isObserved);
    Note("observer " + std::to_string(observer.observerID) + (isObserved ? " is there" : " is removed"));
}

void Soak::UseCache() {
    const auto record = static_cast<RecordKind>(mChance.Below(kRecordKindCount));
    if (mChance.Percent(40)) {
        mModel.DeliverCached(record);
        Do("the cache is delivered", false, [record] { DeliverCache(record); });
        return;
    }
    const std::string& seqID = OneOf(mChance, TheSamples().seqIDs).text;
    const bool isThere = mModel.TakeCached(record, seqID);
    Do("a cached result is taken", false, [&] {
        if (TakeFromCache(record, seqID) != isThere) {
            mSeen.problem = isThere ? "a cached result is missing" : "there is a cached result too many";
        }
    });
}

} // namespace Tarvik::Vorn::Soak
