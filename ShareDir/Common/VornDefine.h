// Everything the plugin shares with the core, and the road that every result takes to it.
//
// The body of VornInnerObserverHolder stands here because its log lines carry this file's name.
#pragma once

#include "VornCodes.h"
#include "VornExport.h"
#include "VornLog.h"
#include "VornRecords.h"
#include "VornServices.h"

#include <map>
#include <memory>
#include <string>

namespace Tarvik::Vorn {

// Hands results of type T to the core's observers on the main thread, and keeps those that found no observer.
//
// T is InnerBaseRet, InnerFriendRet, InnerLoginRet or InnerLoginPluginRet. The maps are weak and exported, so that the
// core and the plugin share one of each per process; the first image that needs them builds them when it is loaded.
//
// No lock is taken. The core registers observers before results can arrive, and commits for observers that are not
// registered must not overlap.
template <class T>
class VORN_API VornInnerObserverHolder {
public:
    using Observer = void (*)(const T& result, const char* seqID);

    // Observers by their ID. Written by the core only.
    static std::map<int, Observer> mObserverHolder;

    // Results that found no observer, by their sequence ID. Taken out by the core only.
    static std::map<std::string, VornCallBackParams<T>> mTaskParamsHolder;

    // Delivers `ret` to the observer: later on the main thread, or at once on this thread for ObserverID::kDirect. With
    // no such observer, caches it under `seqID`. Any thread; copies what it is given.
    static void CommitToTaskQueue(const T& ret, unsigned int observerID, const String& seqID) {
        std::unique_ptr<VornCallBackParams<T>> params(new VornCallBackParams<T>(ret, observerID, seqID));
        const int signedID = static_cast<int>(params->mObserverID);
        if (mObserverHolder.find(signedID) == mObserverHolder.end()) {
            VORN_LOG_DEBUG("Cache ObserverID %d", signedID);
            // Kept: the cached result is copied from a record of its own, as the core does it.
            const VornCallBackParams<T> undelivered(params->mRet, params->mObserverID, params->mSeqID);
            cacheTask(undelivered.mSeqID.toString(), undelivered);
            return;
        }
        if (params->mObserverID != ObserverID::kDirect) {
            VORN_LOG_DEBUG("DispatchAsyncMainThread %d", signedID);
            VornInnerObserverHolderDispatch(&CallbackOnMainThread, params.get());
            static_cast<void>(params.release()); // The hop owns it now.
            return;
        }
        // Kept: observer 107 is served on the committing thread; the core waits for it there.
        VORN_LOG_DEBUG("CallbackOnMainThread %d", signedID);
        CallbackOnMainThread(-1, params.release());
    }

    // Keeps a result that found no observer. The first result under a sequence ID stays; an empty ID keeps nothing.
    static void cacheTask(const std::string& seqID, const VornCallBackParams<T>& params) {
        if (seqID.empty()) {
            VORN_LOG_DEBUG("cacheTask failed for mSeqID is empty");
            return;
        }
        mTaskParamsHolder.try_emplace(seqID, params);
        VORN_LOG_DEBUG("mTaskParamsHolder after insert %s", seqID.c_str());
    }

    // Calls the observer with the VornCallBackParams<T> that `opaque` points to and frees that record.
    static void CallbackOnMainThread(int /*unused*/, void* opaque) {
        const std::unique_ptr<VornCallBackParams<T>> params(static_cast<VornCallBackParams<T>*>(opaque));
        const auto found = mObserverHolder.find(static_cast<int>(params->mObserverID));
        if (found == mObserverHolder.end()) {
            VORN_LOG_DEBUG("can not get inner callback for %u, make sure you have define", params->mObserverID);
            return;
        }
        const Observer observer = found->second;
        VORN_LOG_DEBUG("observer address %p of observerID : %d", reinterpret_cast<void*>(observer),
                       static_cast<int>(params->mObserverID));
        observer(params->mRet, params->mSeqID.c_str());
    }
};

template <class T>
std::map<int, typename VornInnerObserverHolder<T>::Observer> VornInnerObserverHolder<T>::mObserverHolder;
template <class T>
std::map<std::string, VornCallBackParams<T>> VornInnerObserverHolder<T>::mTaskParamsHolder;

} // namespace Tarvik::Vorn

#ifdef __OBJC__
#include "VornProtocols.h"
#include "VornRetainPtr.h"
#include "VornText.h"
#include "VornUtilsIOS.h"
#endif
