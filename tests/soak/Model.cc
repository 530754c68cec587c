// Queues, caches, observers and open things.

#include "Model.h"

namespace Tarvik::Vorn::Soak {

#pragma mark - Actions

void Model::Perform(bool inBackground, const std::function<void()>& action) {
    mNow = {};
    mIsOnMainThread = !inBackground;
    try {
        action();
    } catch (const Raised&) {
        mNow.hasRaised = true;
    }
    mIsOnMainThread = true;
}

void Model::Within(const Shared& request, const std::function<void()>& work) {
    struct Restore {
        Shared& subject;
        Shared before;
        ~Restore() { subject = before; }
    };
    const Restore restore{mSubject, std::exchange(mSubject, request)};
    work();
}

void Model::Send(const Request& request) {
    const auto shared = std::make_shared<const Request>(request);
    fates.Begin(request.number);
    Perform(request.inBackground, [&] { Within(shared, [&] { Start(shared); }); });
}

void Model::Give(Waiting kind, size_t index, const Answer& answer, bool inBackground) {
    Perform(inBackground, [&] { Answered(kind, index, answer); });
}

void Model::TellProgress(size_t index) {
    Perform(false, [&] {
        const Shared request = mOpen[static_cast<size_t>(Waiting::kVideoUpload)][index].request;
        Post(request, [this] { Call("UIProgressView", "setProgress:"); });
    });
}

void Model::RunNext() {
    const Work work = mQueue.front();
    mQueue.pop_front();
    Within(work.request, work.run);
}

void Model::Drain() {
    Perform(false, [&] {
        for (size_t left = mQueue.size(); left > 0; --left) {
            RunNext();
        }
    });
}

void Model::DrainFully() {
    Perform(false, [&] {
        while (!mQueue.empty()) {
            RunNext();
        }
    });
}

void Model::LoadImages() {
    Perform(true, [&] {
        while (!mLoads.empty()) {
            const Work work = mLoads.front();
            mLoads.pop_front();
            Within(work.request, work.run);
        }
    });
}

void Model::DeliverCached(RecordKind record) {
    Perform(false, [&] {
        Cache& cache = mCaches[static_cast<size_t>(record)];
        for (auto it = cache.begin(); it != cache.end();) {
            if (!IsObserved(record, it->second.observerID)) {
                ++it;
                continue;
            }
            mNow.deliveries.push_back(it->second);
            mNow.deliveries.back().onMainThread = true;
            it = cache.erase(it);
        }
    });
}

bool Model::TakeCached(RecordKind record, const std::string& seqID) {
    mNow = {};
    return mCaches[static_cast<size_t>(record)].erase(seqID) != 0;
}

void Model::Forget() {
    mNow = {};
    for (std::vector<Open>& open : mOpen) {
        for (const Open& thing : open) {
            fates.Settle(thing.request->number, Fate::kUnanswered);
        }
        open.clear();
    }
    for (Cache& cache : mCaches) {
        cache.clear();
    }
    world = {};
    mBars = 0;
}

#pragma mark - What the platform is asked

void Model::Raise() {
    if (mSubject) {
        fates.Settle(mSubject->number, Fate::kRaised);
    }
    throw Raised{};
}

void Model::Call(const char* className, const char* selector, std::optional<std::string> arguments) {
    mNow.steps.push_back({className, selector, std::move(arguments)});
    if (mArmed && mArmed->first == className && mArmed->second == selector) {
        mArmed.reset();
        Raise();
    }
}

void Model::Post(const Shared& request, std::function<void()> work) {
    mQueue.push_back({request, std::move(work)});
}

void Model::Wait(Waiting kind, const Shared& request, std::function<void(const Answer&)> answer) {
    std::vector<Open>& open = mOpen[static_cast<size_t>(kind)];
    open.push_back({request, std::move(answer)});
    Happening::Opening opening{kind, std::nullopt, open.size() - 1};
    if (mChance.Percent(8)) {
        opening.inside = DrawAnswer();
    }
    mNow.openings.push_back(opening);
    if (opening.inside) {
        Answered(kind, opening.index, *opening.inside);
    }
}

void Model::Answered(Waiting kind, size_t index, const Answer& answer) {
    std::vector<Open>& open = mOpen[static_cast<size_t>(kind)];
    const Open thing = open[index];
    if (!answer.staysOpen) {
        open.erase(open.begin() + static_cast<ptrdiff_t>(index));
    }
    Within(thing.request, [&] { thing.answer(answer); });
}

Answer Model::DrawAnswer() {
    static constexpr Ending kEndings[] = {Ending::kSuccess, Ending::kSuccess, Ending::kCancel,
                                          Ending::kError,   Ending::kError,   Ending::kOdd};
    Answer answer;
    answer.ending = mChance.OneOf(kEndings);
    answer.code = static_cast<int>(mChance.Below(2000));
    answer.text = "error %s " + std::to_string(answer.code);
    answer.staysOpen = mChance.Percent(10);
    return answer;
}

#pragma mark - Results

void Model::Observe(RecordKind record, unsigned observerID, bool isObserved) {
    std::set<unsigned>& observers = mObservers[static_cast<size_t>(record)];
    if (isObserved) {
        observers.insert(observerID);
    } else {
        observers.erase(observerID);
    }
}

bool Model::IsObserved(RecordKind record, unsigned observerID) const {
    return mObservers[static_cast<size_t>(record)].contains(observerID);
}

void Model::Commit(const Shared& request, Outcome outcome) {
    if (!IsObserved(outcome.record, outcome.observerID)) {
        Cache& cache = mCaches[static_cast<size_t>(outcome.record)];
        Fate fate = Fate::kNotKept;
        if (!outcome.seqID.empty()) {
            fate = cache.try_emplace(outcome.seqID, outcome).second ? Fate::kCached : Fate::kCacheTaken;
        }
        fates.Settle(request->number, fate);
        return;
    }
    if (outcome.observerID == 107) {
        outcome.onMainThread = mIsOnMainThread;
        mNow.deliveries.push_back(outcome);
        fates.Settle(request->number, Fate::kDelivered);
        return;
    }
    Post(request, [this, request, outcome] {
        const bool isThere = IsObserved(outcome.record, outcome.observerID);
        fates.Settle(request->number, isThere ? Fate::kDelivered : Fate::kObserverGone);
        if (isThere) {
            mNow.deliveries.push_back(outcome);
        }
    });
}

void Model::CommitOwn(const Shared& request, Outcome outcome, bool hasMethod) {
    outcome.methodID = hasMethod ? request->methodID : 0;
    outcome.observerID = request->observerID;
    outcome.seqID = request->seqID.text;
    Commit(request, std::move(outcome));
}

void Model::CommitParked(const Shared& request, Outcome outcome) {
    outcome.methodID = mParked.methodID;
    outcome.observerID = mParked.observerID;
    outcome.seqID = mParked.seqID;
    Commit(request, std::move(outcome));
}

void Model::Park(const Request& request) {
    mParked = {request.methodID, request.seqID.isText ? request.seqID.text : "", request.observerID};
}

} // namespace Tarvik::Vorn::Soak
