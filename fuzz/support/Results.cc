#include "Results.h"

#include "VornDefine.h"
#include "VornObservers.h"

#include <mutex>

namespace Tarvik::Vorn::Fuzz {
namespace {

struct Kept {
    std::mutex mutex;
    std::vector<Delivered> results;
};

Kept& TheKept() {
    static Kept kept;
    return kept;
}

Delivered FactsOf(const InnerBaseRet& result) {
    return {0, {}, result.methodNameID, result.retCode, result.extraJson.toString()};
}

Delivered FactsOf(const InnerLoginPluginRet& result) {
    return {0, {}, result.methodNameID, RetCode::kSuccess, result.channelInfo};
}

template <class T, unsigned ID>
void Keep(const T& result, const char* seqID) {
    Delivered delivered = FactsOf(result);
    delivered.observerID = ID;
    delivered.seqID = seqID;
    const std::lock_guard lock(TheKept().mutex);
    TheKept().results.push_back(std::move(delivered));
}

template <class T>
void ForgetHolder() {
    VornInnerObserverHolder<T>::mObserverHolder.clear();
    VornInnerObserverHolder<T>::mTaskParamsHolder.clear();
}

template <class T, unsigned ID>
void Observe() {
    RegisterObserver<T>(ID, &Keep<T, ID>);
}

} // namespace

void ObserveResults() {
    ForgetResults();
    Observe<InnerBaseRet, kObserverOfRequest>();
    Observe<InnerBaseRet, ObserverID::kDirect>();
    Observe<InnerBaseRet, ObserverID::kLogout>();
    Observe<InnerFriendRet, ObserverID::kQueryFriends>();
    Observe<InnerLoginRet, ObserverID::kLogin>();
    Observe<InnerLoginPluginRet, ObserverID::kLoginPlugin>();
}

void ForgetResults() {
    ForgetHolder<InnerBaseRet>();
    ForgetHolder<InnerFriendRet>();
    ForgetHolder<InnerLoginRet>();
    ForgetHolder<InnerLoginPluginRet>();
    const std::lock_guard lock(TheKept().mutex);
    TheKept().results.clear();
}

std::vector<Delivered> DeliveredResults() {
    const std::lock_guard lock(TheKept().mutex);
    return TheKept().results;
}

size_t CachedResults() {
    return VornInnerObserverHolder<InnerBaseRet>::mTaskParamsHolder.size() +
           VornInnerObserverHolder<InnerFriendRet>::mTaskParamsHolder.size() +
           VornInnerObserverHolder<InnerLoginRet>::mTaskParamsHolder.size() +
           VornInnerObserverHolder<InnerLoginPluginRet>::mTaskParamsHolder.size();
}

} // namespace Tarvik::Vorn::Fuzz
