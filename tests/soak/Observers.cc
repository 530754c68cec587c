#include "Observers.h"

#include "VornDefine.h"
#include "VornObservers.h"

#include <pthread.h>

#include <utility>

namespace Tarvik::Vorn::Soak {
namespace {

const pthread_t kMainThread = pthread_self(); // Static objects are made on the main thread.

std::vector<Outcome>& Deliveries() {
    static std::vector<Outcome> deliveries;
    return deliveries;
}

template <class T, unsigned ID>
void Keep(const T& record, const char* seqID) {
    Outcome outcome = OutcomeOf(record, seqID);
    outcome.observerID = ID;
    outcome.onMainThread = pthread_equal(pthread_self(), kMainThread) != 0;
    Deliveries().push_back(std::move(outcome));
}

// One observer in the core's terms.
struct Registration {
    KnownObserver known;
    void (*set)(bool isObserved);
};

template <class T, unsigned ID>
void Set(bool isObserved) {
    if (isObserved) {
        RegisterObserver<T>(ID, &Keep<T, ID>);
    } else {
        RemoveObserver<T>(ID);
    }
}

constexpr unsigned kHighID = 0x80000005;

constexpr Registration kRegistrations[] = {
    {{RecordKind::kBase, 31}, &Set<InnerBaseRet, 31>},
    {{RecordKind::kBase, 32}, &Set<InnerBaseRet, 32>},
    {{RecordKind::kBase, 33}, &Set<InnerBaseRet, 33>},
    {{RecordKind::kBase, 107}, &Set<InnerBaseRet, 107>},
    {{RecordKind::kBase, 108}, &Set<InnerBaseRet, 108>},
    {{RecordKind::kBase, kHighID}, &Set<InnerBaseRet, kHighID>},
    {{RecordKind::kFriend, 202}, &Set<InnerFriendRet, 202>},
    {{RecordKind::kLogin, 101}, &Set<InnerLoginRet, 101>},
    {{RecordKind::kLoginPlugin, 109}, &Set<InnerLoginPluginRet, 109>},
};

// Calls `use` with a null pointer to the record type: types are no arguments.
template <class Use>
auto WithRecord(RecordKind record, Use use) {
    switch (record) {
    case RecordKind::kFriend:
        return use(static_cast<InnerFriendRet*>(nullptr));
    case RecordKind::kLogin:
        return use(static_cast<InnerLoginRet*>(nullptr));
    case RecordKind::kLoginPlugin:
        return use(static_cast<InnerLoginPluginRet*>(nullptr));
    case RecordKind::kBase:
        break;
    }
    return use(static_cast<InnerBaseRet*>(nullptr));
}

} // namespace

const std::vector<KnownObserver>& KnownObservers() {
    static const auto& observers = *[] {
        auto* const known = new std::vector<KnownObserver>;
        for (const Registration& registration : kRegistrations) {
            known->push_back(registration.known);
        }
        return known;
    }();
    return observers;
}

void SetObserved(const KnownObserver& observer, bool isObserved) {
    for (const Registration& registration : kRegistrations) {
        if (registration.known.record == observer.record && registration.known.observerID == observer.observerID) {
            registration.set(isObserved);
        }
    }
}

std::vector<Outcome> TakeDeliveries() {
    return std::exchange(Deliveries(), {});
}

size_t CachedCount(RecordKind record) {
    return WithRecord(record, []<class T>(T*) { return CachedResultCount<T>(); });
}

std::map<std::string, Outcome> CachedOutcomes(RecordKind record) {
    return WithRecord(record, []<class T>(T*) {
        std::map<std::string, Outcome> outcomes;
        for (const auto& [seqID, params] : VornInnerObserverHolder<T>::mTaskParamsHolder) {
            Outcome outcome = OutcomeOf(params.mRet, params.mSeqID.toString());
            outcome.observerID = params.mObserverID;
            outcomes.emplace(seqID, std::move(outcome));
        }
        return outcomes;
    });
}

void DeliverCache(RecordKind record) {
    WithRecord(record, []<class T>(T*) { DeliverCachedResults<T>(); });
}

bool TakeFromCache(RecordKind record, const std::string& seqID) {
    return WithRecord(record, [&seqID]<class T>(T*) { return TakeCachedResult<T>(seqID).has_value(); });
}

void ClearCaches() {
    ClearCachedResults<InnerBaseRet>();
    ClearCachedResults<InnerFriendRet>();
    ClearCachedResults<InnerLoginRet>();
    ClearCachedResults<InnerLoginPluginRet>();
}

} // namespace Tarvik::Vorn::Soak
