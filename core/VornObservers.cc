#include "VornObservers.h"

namespace Tarvik::Vorn {

template <class T>
void VornObservers<T>::Register(unsigned int observerID, Observer observer) {
    if (observer == nullptr) {
        Remove(observerID);
        return;
    }
    VornInnerObserverHolder<T>::mObserverHolder[static_cast<int>(observerID)] = observer;
}

template <class T>
void VornObservers<T>::Remove(unsigned int observerID) {
    VornInnerObserverHolder<T>::mObserverHolder.erase(static_cast<int>(observerID));
}

template <class T>
bool VornObservers<T>::IsRegistered(unsigned int observerID) {
    return VornInnerObserverHolder<T>::mObserverHolder.contains(static_cast<int>(observerID));
}

template <class T>
std::optional<VornCallBackParams<T>> VornObservers<T>::TakeCached(const std::string& seqID) {
    auto& cache = VornInnerObserverHolder<T>::mTaskParamsHolder;
    const auto found = cache.find(seqID);
    if (found == cache.end()) {
        return std::nullopt;
    }
    std::optional<VornCallBackParams<T>> taken(found->second); // Copied first: without memory for it, it stays.
    cache.erase(found);
    return taken;
}

template <class T>
size_t VornObservers<T>::DeliverCached() {
    const auto& observers = VornInnerObserverHolder<T>::mObserverHolder;
    auto& cache = VornInnerObserverHolder<T>::mTaskParamsHolder;
    size_t delivered = 0;
    auto next = cache.begin();
    while (next != cache.end()) {
        const std::string seqID = next->first;
        const auto found = observers.find(static_cast<int>(next->second.mObserverID));
        if (found != observers.end()) {
            const auto result = cache.extract(next);
            found->second(result.mapped().mRet, result.mapped().mSeqID.c_str());
            delivered += 1;
        }
        next = cache.upper_bound(seqID); // By key: the observer may have changed the cache.
    }
    return delivered;
}

template <class T>
size_t VornObservers<T>::CachedCount() {
    return VornInnerObserverHolder<T>::mTaskParamsHolder.size();
}

template <class T>
void VornObservers<T>::ClearCached() {
    VornInnerObserverHolder<T>::mTaskParamsHolder.clear();
}

// An image that uses a holder defines the holder's statics: with these the core has those of all four.
template class VornObservers<InnerBaseRet>;
template class VornObservers<InnerFriendRet>;
template class VornObservers<InnerLoginRet>;
template class VornObservers<InnerLoginPluginRet>;

} // namespace Tarvik::Vorn
