// The floor under result delivery: the copies that the contract demands, written down one after the other, and one call
// through a pointer. Nothing is looked up and nothing is logged.
#pragma once

#include "VornDefine.h"

#include <dispatch/dispatch.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace Tarvik::Vorn::Bench {

template <class T>
class ByHand {
public:
    using Params = VornCallBackParams<T>;
    using Observer = void (*)(const T& result, const char* seqID);

    // Called at once.
    static void Deliver(const T& ret, unsigned int observerID, const String& seqID, Observer observer) {
        const auto params = std::make_unique<const Params>(ret, observerID, seqID);
        observer(params->mRet, params->mSeqID.c_str());
    }

    // Called by the main queue.
    static void Post(const T& ret, unsigned int observerID, const String& seqID, Observer observer) {
        auto flight = std::make_unique<Flight>(ret, observerID, seqID, observer);
        dispatch_async_f(dispatch_get_main_queue(), flight.release(), &Land);
    }

    // Put into a map from a copy of the record in flight, and taken out as another copy.
    static std::optional<Params> CacheAndTake(const T& ret, unsigned int observerID, const String& seqID) {
        static auto& cache = *new std::map<std::string, Params>;
        const auto params = std::make_unique<const Params>(ret, observerID, seqID);
        const Params undelivered(params->mRet, params->mObserverID, params->mSeqID);
        const auto [place, isNew] = cache.try_emplace(undelivered.mSeqID.toString(), undelivered);
        std::optional<Params> taken(place->second);
        cache.erase(place);
        return taken;
    }

private:
    struct Flight {
        Flight(const T& ret, unsigned int observerID, const String& seqID, Observer called)
            : params(ret, observerID, seqID), observer(called) {}

        Params params;
        Observer observer;
    };

    static void Land(void* context) {
        const std::unique_ptr<const Flight> flight(static_cast<const Flight*>(context));
        flight->observer(flight->params.mRet, flight->params.mSeqID.c_str());
    }
};

} // namespace Tarvik::Vorn::Bench
