#include "Observers.h"

#include "AccessToken.h"
#include "AllocationFault.h"
#include "ResultFields.h"
#include "VornObservers.h"
#include "VornRecordText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

ResultListener sListener;
bool sShowTokens = false;

// Takes the access token out of the record, if it has one that is not to be shown; answers the channelInfo with it.
template <class T>
std::string TakeToken(T& /*record*/) {
    return "";
}

std::string TakeToken(InnerLoginPluginRet& record) {
    const std::string shown = WithoutToken(record.channelInfo);
    return sShowTokens || shown == record.channelInfo ? "" : std::exchange(record.channelInfo, shown);
}

template <class T>
std::pair<ResultFacts, std::string> Told(const T& result, unsigned observerID, const std::string& seqID) {
    T shown(result);
    std::string wholeInfo = TakeToken(shown);
    ResultFacts facts = FactsOf(shown);
    facts.wholeInfo = std::move(wholeInfo);
    facts.observerID = observerID;
    facts.seqID = seqID;
    return {std::move(facts), RecordText(shown)};
}

template <class T>
class Slots {
public:
    static bool Take(unsigned observerID) {
        auto slot = std::find(sIDs.begin(), sIDs.end(), std::optional(observerID));
        if (slot == sIDs.end()) {
            slot = std::find(sIDs.begin(), sIDs.end(), std::nullopt);
        }
        if (slot == sIDs.end()) {
            return false;
        }
        *slot = observerID;
        RegisterObserver<T>(observerID, sFunctions[static_cast<size_t>(slot - sIDs.begin())]);
        return true;
    }

    static void GiveBack(unsigned observerID) {
        for (std::optional<unsigned>& id : sIDs) {
            if (id == observerID) {
                id.reset();
                RemoveObserver<T>(observerID);
            }
        }
    }

    static void GiveBackAll() {
        for (std::optional<unsigned>& id : sIDs) {
            if (id) {
                RemoveObserver<T>(*id);
                id.reset();
            }
        }
    }

private:
    using Function = typename VornInnerObserverHolder<T>::Observer;

    template <size_t Slot>
    static void Receive(const T& result, const char* seqID) {
        if (sListener) {
            const UncountedAllocations uncounted;
            const auto [facts, text] = Told(result, *sIDs[Slot], seqID);
            sListener(facts, text);
        }
    }

    template <size_t... Numbers>
    static constexpr std::array<Function, kObserverSlots> AllFunctions(std::index_sequence<Numbers...> /*numbers*/) {
        return {&Receive<Numbers>...};
    }

    static std::array<std::optional<unsigned>, kObserverSlots> sIDs;
    static constexpr std::array<Function, kObserverSlots> sFunctions =
        AllFunctions(std::make_index_sequence<kObserverSlots>());
};

template <class T>
std::array<std::optional<unsigned>, kObserverSlots> Slots<T>::sIDs;

// Calls `work` with a value of the record's slots, for its type.
template <class Work>
auto ForRecord(RecordType record, Work work) {
    switch (record) {
    case RecordType::kBase:
        return work(Slots<InnerBaseRet>());
    case RecordType::kFriend:
        return work(Slots<InnerFriendRet>());
    case RecordType::kLogin:
        return work(Slots<InnerLoginRet>());
    case RecordType::kLoginPlugin:
        return work(Slots<InnerLoginPluginRet>());
    }
    __builtin_unreachable();
}

} // namespace

void SetResultListener(ResultListener listener, bool showTokens) {
    sListener = std::move(listener);
    sShowTokens = showTokens;
}

bool Observe(RecordType record, unsigned observerID) {
    return ForRecord(record, [observerID](auto slots) { return slots.Take(observerID); });
}

void StopObserving(RecordType record, unsigned observerID) {
    ForRecord(record, [observerID](auto slots) { slots.GiveBack(observerID); });
}

size_t CollectCachedResults() {
    return DeliverCachedResults<InnerBaseRet>() + DeliverCachedResults<InnerFriendRet>() +
           DeliverCachedResults<InnerLoginRet>() + DeliverCachedResults<InnerLoginPluginRet>();
}

namespace {

template <class T>
std::optional<std::pair<ResultFacts, std::string>> NewlyCachedOf(const std::string& seqID, KnownCached& known) {
    const auto& cache = VornInnerObserverHolder<T>::mTaskParamsHolder;
    const auto found = cache.find(seqID);
    if (found == cache.end()) {
        return std::nullopt;
    }
    auto told = Told(found->second.mRet, found->second.mObserverID, found->second.mSeqID.toString());
    return known.emplace(seqID, told.first.record).second ? std::optional(std::move(told)) : std::nullopt;
}

template <class T>
void AddCachedSeqIDs(std::vector<std::string>& seqIDs) {
    for (const auto& [seqID, params] : VornInnerObserverHolder<T>::mTaskParamsHolder) {
        seqIDs.push_back(seqID);
    }
}

} // namespace

std::optional<std::pair<ResultFacts, std::string>> NewlyCached(const std::string& seqID, KnownCached& known) {
    if (auto told = NewlyCachedOf<InnerBaseRet>(seqID, known)) {
        return told;
    }
    if (auto told = NewlyCachedOf<InnerFriendRet>(seqID, known)) {
        return told;
    }
    if (auto told = NewlyCachedOf<InnerLoginRet>(seqID, known)) {
        return told;
    }
    return NewlyCachedOf<InnerLoginPluginRet>(seqID, known);
}

std::vector<std::string> CachedSeqIDs() {
    std::vector<std::string> seqIDs;
    AddCachedSeqIDs<InnerBaseRet>(seqIDs);
    AddCachedSeqIDs<InnerFriendRet>(seqIDs);
    AddCachedSeqIDs<InnerLoginRet>(seqIDs);
    AddCachedSeqIDs<InnerLoginPluginRet>(seqIDs);
    return seqIDs;
}

void ForgetObserversAndResults() {
    Slots<InnerBaseRet>::GiveBackAll();
    Slots<InnerFriendRet>::GiveBackAll();
    Slots<InnerLoginRet>::GiveBackAll();
    Slots<InnerLoginPluginRet>::GiveBackAll();
    ClearCachedResults<InnerBaseRet>();
    ClearCachedResults<InnerFriendRet>();
    ClearCachedResults<InnerLoginRet>();
    ClearCachedResults<InnerLoginPluginRet>();
}

size_t CachedResults() {
    return CachedResultCount<InnerBaseRet>() + CachedResultCount<InnerFriendRet>() +
           CachedResultCount<InnerLoginRet>() + CachedResultCount<InnerLoginPluginRet>();
}

} // namespace Tarvik::Vorn::Simulator
