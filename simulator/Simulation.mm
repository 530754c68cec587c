#include "Simulation.h"

#include "AllocationFault.h"
#include "AnswerPlayer.h"
#include "Audit.h"
#include "Expectations.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "Guarded.h"
#include "History.h"
#include "Listening.h"
#include "MainQueue+Control.h"
#include "Observers.h"
#include "OpenThings.h"
#include "Openings.h"
#include "PlatformFaults.h"
#include "PlatformReset.h"
#include "RequestTitles.h"
#include "Runner.h"
#include "Schedule.h"
#include "SettingPlayer.h"
#include "SystemPlayer.h"
#include "VornCodes.h"
#include "VornConfig.h"
#include "VornDefine.h"
#include "VornImageLoader.h"
#include "VornPlugins.h"

#include <deque>
#include <map>
#include <set>
#include <type_traits>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

// The plugins of the channel, borrowed from the classes that own them.
struct Plugins {
    id<VornLoginDelegate> login = nil;
    id<VornFriendDelegate> friends = nil;
    id<VornReportDelegate> report = nil;
};

Plugins& TheChannel() {
    static Plugins channel;
    return channel;
}

const char* NameOf(RecordType record) {
    switch (record) {
    case RecordType::kBase:
        return "InnerBaseRet";
    case RecordType::kFriend:
        return "InnerFriendRet";
    case RecordType::kLogin:
        return "InnerLoginRet";
    case RecordType::kLoginPlugin:
        return "InnerLoginPluginRet";
    }
    __builtin_unreachable();
}

// "{n}" in a sequence ID is the number of the round.
std::string InRound(std::string text, uint64_t round) {
    constexpr std::string_view kPlace = "{n}";
    for (size_t at = text.find(kPlace); at != std::string::npos; at = text.find(kPlace, at)) {
        text.replace(at, kPlace.size(), std::to_string(round));
    }
    return text;
}

// The sequence ID of a step, or of the request that it answers; null when it has none.
struct SeqIDOf {
    std::string* operator()(LoginStep& step) const { return &step.params.seqID; }
    std::string* operator()(LogoutStep& step) const { return &step.params.seqID; }
    std::string* operator()(CommitStep& step) const { return &step.seqID; }
    std::string* operator()(ReportStep& step) const { return &step.seqID; }
    std::string* operator()(ShareStep& step) const { return &step.request.params.seqID; }
    std::string* operator()(SendMessageStep& step) const { return &step.request.params.seqID; }
    std::string* operator()(AddFriendStep& step) const { return &step.params.seqID; }
    std::string* operator()(QueryFriendsStep& step) const { return &step.params.seqID; }
    template <class Other>
    std::string* operator()(Other& step) const {
        if constexpr (std::is_constructible_v<Answer, Other>) {
            return step.manner.of ? &*step.manner.of : nullptr;
        } else {
            return nullptr;
        }
    }
};

Action InRound(const Action& action, uint64_t round) {
    Action copy = action;
    if (std::string* const seqID = std::visit(SeqIDOf(), copy)) {
        *seqID = InRound(std::move(*seqID), round);
    }
    return copy;
}

// The process as it is before anything has happened: nothing of an earlier simulation is left.
void BeginAnew() {
    @autoreleasepool {
        Host::DiscardMainQueue();
        Host::ResetPlatform();
        ForgetObserversAndResults();
        ResetConfig();
        FailAllocation(0);
        // The friend plugin lives as long as the process and remembers its last request.
        id const friends = TheChannel().friends;
        [friends setValue:@(-1) forKey:@"methodNameID"];
        [friends setValue:@"" forKey:@"seqID"];
        [friends setValue:@(0) forKey:@"observerID"];
    }
}

// Loads a library for Linux, or the binary that ships.
bool LoadLibrary(const std::string& library, std::string& problem) {
    if (!Runner::IsImageFile(library)) {
        return LoadPluginLibrary(library, problem);
    }
    const std::optional<LocatedError> error = Runner::LoadImage(library, stderr);
    problem = error ? error->text() : "";
    return !error;
}

std::string LoadPlugins(const std::string& library, Plugins& channel) {
    if (channel.friends != nil) {
        return "";
    }
    std::string problem;
    if (!LoadLibrary(library, problem)) {
        return problem;
    }
    const Plugins found{FindLoginPlugin("Facebook", problem), FindFriendPlugin("Facebook", problem),
                        FindReportPlugin("Facebook", problem)};
    if (found.login == nil || found.friends == nil || found.report == nil) {
        return problem;
    }
    channel = found;
    return "";
}

} // namespace

std::string LoadChannel(const std::string& library) {
    @autoreleasepool {
        return LoadPlugins(library, TheChannel());
    }
}

// Plays one kind of step each; false when the step cannot be played.
class Simulation::Run {
public:
    Run(World world, SimulationOptions options)
        : mWorld(std::move(world)), mOptions(std::move(options)),
          mSeed(mOptions.seed.value_or(mWorld.seed.value_or(kDefaultSeed))), mDice(mSeed),
          mExpectations(mWorld.expectations, mOptions.showTokens), mSetting(mTimeline), mSystem(mTimeline) {
        BeginAnew();
        Host::SetHistoryKept(false);
        mTimeline.SetKept(mOptions.keepsTimeline);
        mTimeline.SetDetailed(mOptions.keepsTimeline || !mWorld.expectations.lines.empty());
        mTimeline.SetListener([this](const Entry& entry) {
            mAudit.See(entry);
            mExpectations.See(entry);
            if (entry.kind == EntryKind::kProblem && mProblem.empty()) {
                mProblem = entry.text;
            }
        });
        mListening.emplace(mTimeline, mAudit, mOptions.showTokens);
        Host::SetOpeningListener([this](Host::Opening opening) { HasOpened(opening); });
        if (mWorld.registersObservers) {
            Register(RecordType::kLogin, ObserverID::kLogin);
            Register(RecordType::kBase, ObserverID::kLogout);
            Register(RecordType::kLoginPlugin, ObserverID::kLoginPlugin);
            Register(RecordType::kFriend, ObserverID::kQueryFriends);
        }
        if (!mOptions.config.empty()) {
            if (const std::optional<LocatedError> badConfig = LoadConfigFile(mOptions.config)) {
                mTimeline.Add(EntryKind::kProblem, badConfig->text());
            }
        }
        for (const Step& step : mWorld.setting) {
            PlayAction(step.action);
        }
    }

    ~Run() {
        Host::SetOpeningListener({});
        mListening.reset();
        BeginAnew();
    }

    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    bool PlayNext() {
        if (mNext == mWorld.steps.size() || !mProblem.empty()) {
            return false;
        }
        return PlayAction(mWorld.steps[mNext++].action);
    }

    bool PlayAction(const Action& action) {
        if (!mProblem.empty()) {
            return false;
        }
        @autoreleasepool {
            std::visit([this](const auto& step) { DoPlay(step); }, action);
            Settle();
        }
        PlayDue(mTimeline.time());
        mPlayed += 1;
        if (mOptions.played) {
            mOptions.played(mPlayed);
        }
        return mProblem.empty();
    }

    void Wait(Milliseconds time) {
        const Milliseconds end = mTimeline.time() + time;
        PlayDue(end);
        PassTimeUntil(end);
    }

    void PlayAll() {
        while (PlayNext()) {
        }
        while (mProblem.empty() && mSchedule.NextDue()) {
            PlayDue(*mSchedule.NextDue());
        }
    }

    RunReport Finish() {
        for (const auto& [request, planned] : mPlanned) {
            for (const PlannedAnswer& answer : planned.answers) {
                mAudit.SeeUnusedAnswer(request, planned.seqID, std::string(Simulator::NameOf(answer.anyOf.front())));
            }
        }
        const std::vector<std::string> cached = CachedSeqIDs();
        RunReport report;
        report.name = mWorld.name;
        report.path = mWorld.path;
        report.question = mWorld.question;
        report.seed = mSeed;
        report.profile = ProfileText(mProfile);
        report.requests = mTimeline.requests();
        report.entries = mTimeline.entries();
        const std::vector<std::string> unanswered = mAudit.Unanswered();
        report.audit = mAudit.Finish(cached);
        report.hasExpectations = !mWorld.expectations.IsEmpty();
        report.mismatches = mExpectations.Finish(unanswered, cached, report.audit);
        report.problem = mProblem;
        return report;
    }

    const Timeline& timeline() const { return mTimeline; }
    const std::string& problem() const { return mProblem; }

private:
    // Answers that a request has planned and that nothing has asked for yet.
    struct Planned {
        std::string seqID;
        std::deque<PlannedAnswer> answers;
    };

#pragma mark - Time

    // The main run loop runs until nothing waits on it, and images are loaded meanwhile.
    void Settle() {
        WaitForImageLoads();
        while (Host::MainQueueDepth() > 0) {
            Guarded([] { Host::DrainMainQueueUntilEmpty(); });
            WaitForImageLoads(); // Loading calls the plugin on another thread, which may post again.
        }
        mTimeline.SetCause(kNoRequest);
    }

    // Everything that is due by then, in its order.
    void PlayDue(Milliseconds end) {
        while (mProblem.empty() && mSchedule.NextDue() && *mSchedule.NextDue() <= end) {
            PassTimeUntil(*mSchedule.NextDue());
            @autoreleasepool {
                mSchedule.TakeNext()();
                Settle();
            }
        }
    }

    void PassTimeUntil(Milliseconds time) {
        if (time > mTimeline.time()) {
            Host::AdvanceClock(static_cast<double>(time - mTimeline.time()) / 1000);
            mTimeline.SetTime(time);
        }
    }

    // Calls the plugin; what leaves it is told. `background`: on another thread.
    void CallPlugin(bool background, const std::function<void()>& call) {
        OnThread(background, [this, &call] { Guarded(call); });
    }

    void Guarded(const std::function<void()>& work) {
        const std::string thrown = CallGuarded(work);
        if (!thrown.empty()) {
            const UncountedAllocations uncounted;
            mTimeline.Add(EntryKind::kThrown, thrown);
        }
    }

#pragma mark - What opens and is answered

    void HasOpened(Host::Opening opening) {
        const UncountedAllocations uncounted;
        const OpenThings::Thing thing = mOpen.Add(opening, mTimeline.cause(), mSeqIDOfCause);
        PlanAnswers(thing);
    }

    // The next answers that the request has planned for such a thing: up to the one that ends it.
    void PlanAnswers(const OpenThings::Thing& thing) {
        bool mayHaveMore = true;
        while (mayHaveMore) {
            const std::optional<Answer> answer = TakePlanned(thing);
            if (answer) {
                PlanAnswer(*answer, thing); // What it opens inside its call takes the answers that follow.
            }
            mayHaveMore = answer && !Ends(*answer);
        }
    }

    // Takes the request's next answer; empty when there is none, or when it is for something else.
    std::optional<Answer> TakePlanned(const OpenThings::Thing& thing) {
        const auto planned = mPlanned.find(thing.request);
        if (planned == mPlanned.end() || !IsFor(planned->second.answers.front().anyOf.front(), thing.opening)) {
            return std::nullopt;
        }
        std::deque<PlannedAnswer>& answers = planned->second.answers;
        std::vector<Answer>& anyOf = answers.front().anyOf;
        std::optional<Answer> answer(std::move(anyOf[mDice.Below(anyOf.size())]));
        answers.pop_front();
        if (answers.empty()) {
            mPlanned.erase(planned);
        }
        return answer;
    }

    void PlanAnswer(const Answer& answer, const OpenThings::Thing& thing) {
        const AnswerManner& manner = MannerOf(answer);
        if (manner.times == 0) {
            mTimeline.Add(EntryKind::kFault, "this is never answered");
        } else if (manner.inside) {
            GiveTo(thing, answer, " inside the call");
        } else {
            mSchedule.Plan(mTimeline.time() + mDice.Draw(manner.after), [this, answer, number = thing.number] {
                if (const std::optional<OpenThings::Thing> open = mOpen.Find(number)) {
                    GiveTo(*open, answer, "");
                }
            });
        }
    }

    // An answer that is a step of its own.
    void PlayAnswer(const Answer& answer) {
        const AnswerManner& manner = MannerOf(answer);
        const auto give = [this, answer] {
            const AnswerManner& how = MannerOf(answer);
            const std::optional<OpenThings::Thing> open =
                mOpen.FindWhere(how.of ? 0 : how.index, [&answer, &how](const OpenThings::Thing& thing) {
                    return IsFor(answer, thing.opening) && (!how.of || thing.seqID == *how.of);
                });
            if (!open) {
                mTimeline.Add(EntryKind::kProblem, WhatIsMissing(answer));
                return;
            }
            GiveTo(*open, answer, "");
        };
        const Milliseconds delay = mDice.Draw(manner.after);
        if (delay == 0) {
            give();
        } else {
            mSchedule.Plan(mTimeline.time() + delay, give);
        }
    }

    void GiveTo(const OpenThings::Thing& thing, const Answer& answer, const std::string& where) {
        const AnswerManner& manner = MannerOf(answer);
        mTimeline.SetCause(thing.request); // Until all that follows from the answer has happened.
        mSeqIDOfCause = thing.seqID;
        for (unsigned time = 1; time <= manner.times; ++time) {
            const bool isLast = time == manner.times;
            const size_t index = mOpen.IndexOf(thing);
            const size_t dialogs = Host::OpenShareDialogCount();
            const bool closes = isLast && Ends(answer);
            // Before it is given: the plugin may open something else inside.
            const size_t place = closes ? mOpen.Remove(thing) : 0;
            bool given = false;
            OnThread(manner.background, [&] {
                const UncountedAllocations uncounted; // Answering is no part of serving the request.
                mTimeline.Add(EntryKind::kAnswer, Described(answer) + (manner.background ? " on another thread" : "") +
                                                      where + (time > 1 ? ", again" : ""));
                Guarded([&] {
                    given = true;
                    given = Give(answer, index, isLast ? Host::Closing::kCloses : Host::Closing::kStaysOpen);
                });
            });
            if (!given) {
                mTimeline.Add(EntryKind::kFault,
                              "with this release of the SDK it has no effect: the upload never ends");
                if (closes) {
                    mOpen.PutBackAt(place, thing);
                }
                break;
            }
            if (isLast && IsShare(thing.opening) && Host::OpenShareDialogCount() == dialogs) {
                mOpen.PutBack(thing); // The dialog goes on in the browser.
                PlanAnswers(thing);
            }
        }
    }

    static bool IsShare(Host::Opening opening) {
        return opening == Host::Opening::kShareDialog || opening == Host::Opening::kMessageDialog;
    }

#pragma mark - Steps

    void DoPlay(const NoteStep& step) { mTimeline.Add(EntryKind::kNote, step.text); }

    void DoPlay(const RepeatStep& step) {
        for (uint64_t round = 1; round <= step.times; ++round) {
            for (const Step& repeated : step.steps) {
                if (!PlayAction(InRound(repeated.action, round))) {
                    return;
                }
            }
        }
    }

    void DoPlay(const WaitStep& step) { Wait(mDice.Draw(step.duration)); }

    void DoPlay(const ThrowStep& step) {
        mTimeline.Add(EntryKind::kFault, "the next " + step.className + " " + step.selector + " raises " + step.name);
        Host::RaiseAtNextCall(step.className, step.selector, step.name, step.reason);
    }

    void DoPlay(const FailAllocationStep& step) {
        mTimeline.Add(EntryKind::kFault, "allocation " + std::to_string(step.nth) + " of the next request fails");
        mFailingAllocation = step.nth;
    }

    void DoPlay(const ObserveStep& step) { Register(step.record, step.observerID); }

    void DoPlay(const RemoveObserverStep& step) {
        mTimeline.Add(EntryKind::kCore,
                      "removes observer " + std::to_string(step.observerID) + " for " + NameOf(step.record));
        mObserved.erase({step.record, step.observerID});
        if (step.record == RecordType::kBase) {
            mSeenObservers.insert(step.observerID);
        }
        StopObserving(step.record, step.observerID);
    }

    void DoPlay(const CollectStep& /*step*/) {
        mTimeline.Add(EntryKind::kCore, "collects its cached results; " + std::to_string(CachedResults()) + " wait");
        mListening->SetCollecting(true);
        const size_t collected = CollectCachedResults();
        mListening->SetCollecting(false);
        mTimeline.Add(EntryKind::kCore, std::to_string(collected) + " collected, " + std::to_string(CachedResults()) +
                                            " still wait for an observer");
    }

    void DoPlay(const CommitStep& step) {
        RequestFacts facts;
        facts.seqID = step.seqID;
        facts.kind = "commit";
        facts.title = "a result of the core's own";
        facts.observerID = step.observerID;
        Begin(facts, true);
        RegisterFor(step.observerID);
        mTimeline.Add(EntryKind::kCore, "commits a result of its own for observer " + std::to_string(step.observerID));
        VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(InnerBaseRet(step.code), step.observerID, step.seqID);
        mTimeline.Add(EntryKind::kReturn, "CommitToTaskQueue");
    }

    void DoPlay(const LoginStep& step) {
        RequestFacts facts = Facts(step.params, "login", "login");
        Begin(facts, true, step.answers);
        Request("login:", "permissions \"" + step.params.permissions + "\"", step.params, step.background,
                [&step] { [TheChannel().login login:step.params]; });
    }

    void DoPlay(const LogoutStep& step) {
        RequestFacts facts = Facts(step.params, "logout", "logout");
        facts.observerID = ObserverID::kLogout;
        Begin(facts, true);
        Request("logout:", "", step.params, step.background, [&step] { [TheChannel().login logout:&step.params]; });
    }

    void DoPlay(const SendMessageStep& step) {
        PlayFriendRequest(step.request, "send-message", "sendMessage:", [&step](VornBaseParams* params) {
            [TheChannel().friends sendMessage:&step.request.info params:params observerID:step.request.observerID];
        });
    }

    void DoPlay(const ShareStep& step) {
        PlayFriendRequest(step.request, "share", "share:", [&step](VornBaseParams* params) {
            [TheChannel().friends share:&step.request.info params:params observerID:step.request.observerID];
        });
    }

    void DoPlay(const AddFriendStep& step) {
        RequestFacts facts = Facts(step.params, "add-friend", "add friend");
        facts.observerID = step.observerID;
        Begin(facts, true, step.answers);
        RegisterFor(step.observerID);
        VornBaseParams params = step.params;
        const VornFriendReqInfo info;
        Request("addFriend:", "observer " + std::to_string(step.observerID), params, step.background,
                [&] { [TheChannel().friends addFriend:&info params:&params observerID:step.observerID]; });
    }

    void DoPlay(const QueryFriendsStep& step) {
        RequestFacts facts = Facts(step.params, "query-friends", "query friends");
        facts.observerID = ObserverID::kQueryFriends;
        Begin(facts, true);
        VornBaseParams params = step.params;
        Request("queryFriends:", "", params, step.background,
                [&params] { [TheChannel().friends queryFriends:nullptr params:&params]; });
    }

    void DoPlay(const InitStatStep& /*step*/) {
        mTimeline.Add(EntryKind::kCall, "initStat");
        BOOL answer = NO;
        CallPlugin(false, [&answer] { answer = [TheChannel().report initStat]; });
        mTimeline.Add(EntryKind::kReturn, answer == NO ? "initStat NO" : "initStat YES");
    }

    void DoPlay(const ReportStep& step) {
        RequestFacts facts;
        facts.seqID = step.seqID;
        facts.kind = "report";
        facts.title = "event \"" + step.event + "\"";
        Begin(facts, false);
        NSDictionary* const parameters = ParametersOf(step);
        mTimeline.Add(EntryKind::kCall, "reportEvent: \"" + step.event + "\", request \"" + step.seqID + "\"");
        CallPlugin(false, [&step, parameters] {
            [TheChannel().report reportEvent:MakeNSString(step.event)
                                      params:parameters
                                  isRealtime:step.isRealtime ? YES : NO
                                       seqID:MakeNSString(step.seqID)
                                       extra:MakeNSString(step.extra)];
        });
        mTimeline.Add(EntryKind::kReturn, "reportEvent:");
    }

    // The rest is played by others.
    template <class Other>
    void DoPlay(const Other& step) {
        if constexpr (std::is_constructible_v<Answer, Other>) {
            PlayAnswer(step);
        } else if constexpr (std::is_invocable_v<SystemPlayer&, const Other&>) {
            Guarded([this, &step] { mSystem(step); });
        } else {
            if constexpr (std::is_same_v<Other, ProfileStep>) {
                mProfile = step.profile;
            }
            mSetting(step);
        }
    }

#pragma mark - Requests

    static RequestFacts Facts(const VornBaseParams& params, const std::string& kind, const std::string& title) {
        RequestFacts facts;
        facts.seqID = params.seqID;
        facts.kind = kind;
        facts.title = title;
        facts.methodID = params.methodID;
        return facts;
    }

    void Begin(const RequestFacts& facts, bool awaitsResult, const std::vector<PlannedAnswer>& answers = {}) {
        const size_t request = mTimeline.BeginRequest(facts);
        mAudit.Begin(request, facts, awaitsResult);
        if (!answers.empty()) {
            mPlanned[request] = {facts.seqID, {answers.begin(), answers.end()}};
        }
        mSeqIDOfCause = facts.seqID;
    }

    void PlayFriendRequest(const FriendRequest& request, const char* kind, const char* method,
                           const std::function<void(VornBaseParams*)>& call) {
        RequestFacts facts = Facts(request.params, kind, TitleOf(kind, request.info.type));
        facts.observerID = request.observerID;
        Begin(facts, true, request.answers);
        RegisterFor(request.observerID);
        VornBaseParams params = request.params;
        Request(method,
                "type " + std::to_string(request.info.type) + ", observer " + std::to_string(request.observerID),
                params, request.background, [&call, &params] { call(&params); });
    }

    // Calls the plugin, and lets the main run loop run while an allocation is still to fail.
    void Request(const std::string& method, const std::string& details, const VornBaseParams& params, bool background,
                 const std::function<void()>& call) {
        mTimeline.Add(EntryKind::kCall, method + " request \"" + params.seqID + "\", method " +
                                            std::to_string(params.methodID) +
                                            (params.subChannel.empty() ? "" : ", subChannel " + params.subChannel) +
                                            (details.empty() ? "" : ", " + details));
        const uint64_t failing = std::exchange(mFailingAllocation, 0);
        CallPlugin(background, [failing, &call] {
            FailAllocation(failing);
            call();
        });
        {
            const UncountedAllocations uncounted;
            mTimeline.Add(EntryKind::kReturn, method);
        }
        if (failing != 0) {
            const size_t cause = mTimeline.cause();
            Settle();
            mTimeline.SetCause(cause);
            const UncountedAllocations uncounted;
            if (IsAllocationFaultPending()) {
                mTimeline.Add(EntryKind::kFault, "the request needs fewer than " + std::to_string(failing) +
                                                     " allocations, and none has failed");
            }
            FailAllocation(0);
        }
    }

    void Register(RecordType record, unsigned observerID) {
        mTimeline.Add(EntryKind::kCore, "registers observer " + std::to_string(observerID) + " for " + NameOf(record));
        mObserved.insert({record, observerID});
        if (!Observe(record, observerID)) {
            mTimeline.Add(EntryKind::kProblem,
                          "more than " + std::to_string(kObserverSlots) + " observers of one record type");
        }
    }

    // Where observers register by themselves, the one of a request is there before it, unless it was removed on purpose.
    void RegisterFor(unsigned observerID) {
        if (mWorld.registersObservers && mSeenObservers.insert(observerID).second &&
            !mObserved.contains({RecordType::kBase, observerID})) {
            Register(RecordType::kBase, observerID);
        }
    }

    const World mWorld;
    SimulationOptions mOptions;
    uint64_t mSeed;
    Dice mDice;
    Timeline mTimeline;
    Audit mAudit;
    ExpectationCheck mExpectations;
    Schedule mSchedule;
    OpenThings mOpen;
    SettingPlayer mSetting;
    SystemPlayer mSystem;
    std::optional<Listening> mListening;
    std::map<size_t, Planned> mPlanned;
    std::string mSeqIDOfCause; // Of the request that is the timeline's cause, or was the last one.
    std::set<std::pair<RecordType, unsigned>> mObserved;
    std::set<unsigned> mSeenObservers; // Of requests, or removed: they do not register by themselves.
    SdkProfile mProfile = SdkProfile::k18_1;
    uint64_t mFailingAllocation = 0;
    uint64_t mPlayed = 0;
    size_t mNext = 0;
    std::string mProblem;
};

Simulation::Simulation(World world, SimulationOptions options)
    : mRun(std::make_unique<Run>(std::move(world), std::move(options))) {}

Simulation::~Simulation() = default;

bool Simulation::PlayNext() {
    return mRun->PlayNext();
}

bool Simulation::Play(const Action& action) {
    return mRun->PlayAction(action);
}

void Simulation::Wait(Milliseconds time) {
    mRun->Wait(time);
}

void Simulation::PlayAll() {
    mRun->PlayAll();
}

Milliseconds Simulation::time() const {
    return mRun->timeline().time();
}

const std::string& Simulation::problem() const {
    return mRun->problem();
}

const Timeline& Simulation::timeline() const {
    return mRun->timeline();
}

std::vector<ResultFacts> Simulation::Results() const {
    std::vector<ResultFacts> results;
    for (const Entry& entry : mRun->timeline().entries()) {
        const bool isDelivery = entry.kind == EntryKind::kDelivered || entry.kind == EntryKind::kCollected;
        if (isDelivery && entry.result) {
            results.push_back(*entry.result);
            results.back().time = entry.time;
        }
    }
    return results;
}

RunReport Simulation::Finish() {
    return mRun->Finish();
}

RunReport PlayWorld(const World& world, const SimulationOptions& options) {
    Simulation simulation(world, options);
    simulation.PlayAll();
    return simulation.Finish();
}

} // namespace Tarvik::Vorn::Simulator
