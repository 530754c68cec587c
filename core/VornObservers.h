// The core's side of VornInnerObserverHolder: who receives results of type T, and what becomes of those that found
// nobody. T is InnerBaseRet, InnerFriendRet, InnerLoginRet or InnerLoginPluginRet.
//
// Main thread only, and never while a commit runs on another thread: the holder takes no lock. Observers are registered
// before requests are sent.
//
// An observer ID from 2^31 on is looked up as the signed number with the same bits, here as in the holder.
#pragma once

#include "VornDefine.h"
#include "VornExport.h"

#include <cstddef>
#include <optional>
#include <string>

namespace Tarvik::Vorn {

// The bodies of the functions below. They are in libVornCore.so, for the four records.
template <class T>
class VORN_API VornObservers {
public:
    using Observer = typename VornInnerObserverHolder<T>::Observer;

    static void Register(unsigned int observerID, Observer observer);
    static void Remove(unsigned int observerID);
    static bool IsRegistered(unsigned int observerID);
    static std::optional<VornCallBackParams<T>> TakeCached(const std::string& seqID);
    static size_t DeliverCached();
    static size_t CachedCount();
    static void ClearCached();
};

extern template class VornObservers<InnerBaseRet>;
extern template class VornObservers<InnerFriendRet>;
extern template class VornObservers<InnerLoginRet>;
extern template class VornObservers<InnerLoginPluginRet>;

// Results for `observerID` go to `observer` from now on; the one that was there is replaced. Null removes it.
template <class T>
inline void RegisterObserver(unsigned int observerID, typename VornObservers<T>::Observer observer) {
    VornObservers<T>::Register(observerID, observer);
}

// Results for `observerID` are cached from now on; those already on their way to the main thread are dropped there.
// Does nothing when there is no such observer.
template <class T>
inline void RemoveObserver(unsigned int observerID) {
    VornObservers<T>::Remove(observerID);
}

template <class T>
[[nodiscard]] inline bool IsObserverRegistered(unsigned int observerID) {
    return VornObservers<T>::IsRegistered(observerID);
}

// Takes the result that was cached under `seqID` out of the cache; empty when there is none.
template <class T>
[[nodiscard]] inline std::optional<VornCallBackParams<T>> TakeCachedResult(const std::string& seqID) {
    return VornObservers<T>::TakeCached(seqID);
}

// Hands every cached result whose observer is registered by now to it, in the calling thread and in the order of the
// sequence IDs, and returns how many there were. A result leaves the cache before its observer is called, which may
// register, remove, commit and take as it likes.
template <class T>
inline size_t DeliverCachedResults() {
    return VornObservers<T>::DeliverCached();
}

template <class T>
[[nodiscard]] inline size_t CachedResultCount() {
    return VornObservers<T>::CachedCount();
}

// Drops all cached results of type T.
template <class T>
inline void ClearCachedResults() {
    VornObservers<T>::ClearCached();
}

} // namespace Tarvik::Vorn
