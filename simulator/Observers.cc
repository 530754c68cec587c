#include "Observers.h"

#include "VornJsonDocument.h"
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

template <class T>
std::string TextOf(const T& result) {
    return RecordText(result);
}

// The reply to a login holds the player's access token, which is nobody's business in a transcript.
std::string TextOf(const InnerLoginPluginRet& result) {
    LocatedError error;
    const std::optional<JsonDocument> info = JsonDocument::Parse(result.channelInfo, "channelInfo", error);
    const JsonMember* const member = info ? info->root().Find("access_token") : nullptr;
    const std::string* const token = member == nullptr ? nullptr : member->value.AsString();
    if (sShowTokens || token == nullptr || token->empty()) {
        return RecordText(result);
    }
    InnerLoginPluginRet shown(result);
    shown.channelInfo = "{\"access_token\":\"<" + std::to_string(token->size()) + " bytes>\"}";
    return RecordText(shown);
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

private:
    using Function = typename VornInnerObserverHolder<T>::Observer;

    template <size_t Slot>
    static void Receive(const T& result, const char* seqID) {
        if (sListener) {
            sListener(*sIDs[Slot], seqID, TextOf(result));
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

size_t CachedResults() {
    return CachedResultCount<InnerBaseRet>() + CachedResultCount<InnerFriendRet>() +
           CachedResultCount<InnerLoginRet>() + CachedResultCount<InnerLoginPluginRet>();
}

} // namespace Tarvik::Vorn::Simulator
