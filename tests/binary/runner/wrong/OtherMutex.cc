// Has a mutex of the C++ library, whose functions here would not understand it.
#include <mutex>

__attribute__((visibility("default"))) extern "C" void VornLocksMutex();

void VornLocksMutex() {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
}
