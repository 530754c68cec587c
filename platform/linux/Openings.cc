#include "Openings.h"

#include <mutex>
#include <utility>

namespace Tarvik::Vorn::Host {

namespace {

struct Listening {
    std::mutex mutex;
    OpeningListener listener;
};

// Never destroyed: something may open until the process ends.
Listening& TheListening() {
    static auto& listening = *new Listening;
    return listening;
}

} // namespace

void SetOpeningListener(OpeningListener listener) {
    Listening& listening = TheListening();
    {
        const std::lock_guard lock(listening.mutex);
        std::swap(listening.listener, listener);
    }
    // The former listener ends here, outside the lock.
}

void TellOpening(Opening opening) {
    OpeningListener listener;
    {
        Listening& listening = TheListening();
        const std::lock_guard lock(listening.mutex);
        listener = listening.listener;
    }
    if (listener) {
        listener(opening);
    }
}

} // namespace Tarvik::Vorn::Host
