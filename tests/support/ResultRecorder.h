// Observers that keep what they are called with. Observer functions carry no context, so there is one per record type
// and observer ID; what they keep is process-wide and any thread may deliver.
#pragma once

#include "VornDefine.h"
#include "VornObservers.h"
#include "VornRecordText.h"

#include <mutex>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {

// One call of an observer.
struct Delivery {
    unsigned observerID;
    std::string seqID;
    std::string record; // As RecordText writes it.
    std::thread::id thread;

    // The thread is not compared: tests ask for it by name.
    bool operator==(const Delivery& other) const {
        return observerID == other.observerID && seqID == other.seqID && record == other.record;
    }
};

inline void PrintTo(const Delivery& delivery, std::ostream* out) {
    *out << "observer " << delivery.observerID << " request \"" << delivery.seqID << "\" " << delivery.record;
}

class ResultRecorder {
public:
    // Registers the recording observer for `ID`.
    template <class T, unsigned ID>
    static void Observe() {
        RegisterObserver<T>(ID, &Keep<T, ID>);
    }

    // What has been delivered since the last Reset, in order.
    static std::vector<Delivery> Deliveries() {
        const std::lock_guard lock(Instance().mutex);
        return Instance().deliveries;
    }

    // Forgets all deliveries, removes every observer and drops every cached result, of all four record types.
    static void Reset() {
        ResetHolder<InnerBaseRet>();
        ResetHolder<InnerFriendRet>();
        ResetHolder<InnerLoginRet>();
        ResetHolder<InnerLoginPluginRet>();
        ForgetDeliveries();
    }

    static void ForgetDeliveries() {
        const std::lock_guard lock(Instance().mutex);
        Instance().deliveries.clear();
    }

    template <class T, unsigned ID>
    static void Keep(const T& result, const char* seqID) {
        const std::lock_guard lock(Instance().mutex);
        Instance().deliveries.push_back({ID, seqID, RecordText(result), std::this_thread::get_id()});
    }

private:
    struct State {
        std::mutex mutex;
        std::vector<Delivery> deliveries;
    };

    static State& Instance() {
        static State state;
        return state;
    }

    template <class T>
    static void ResetHolder() {
        VornInnerObserverHolder<T>::mObserverHolder.clear();
        VornInnerObserverHolder<T>::mTaskParamsHolder.clear();
    }
};

} // namespace Tarvik::Vorn::Test
