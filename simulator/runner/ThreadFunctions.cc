#include "ThreadFunctions.h"

#include <cstdint>
#include <map>
#include <pthread.h>

namespace Tarvik::Vorn::Runner {
namespace {

// What the compiler writes into the first word of a variable that is initialised statically.
constexpr uint64_t kMutex = 0x32AAABA7;
constexpr uint64_t kErrorCheckingMutex = 0x32AAABA1;
constexpr uint64_t kRecursiveMutex = 0x32AAABA2;
constexpr uint64_t kOnce = 0x30B1BCBA;

constexpr int kErrorCheckingKind = 1; // Of Apple's pthread_mutexattr_settype.
constexpr int kRecursiveKind = 2;

// A zeroed word is that of a variable of this system that nobody has used yet. All threads write the same.
void ZeroWordThatIs(uint64_t signature, void* variable) {
    __atomic_compare_exchange_n(static_cast<uint64_t*>(variable), &signature, uint64_t{0}, false, __ATOMIC_ACQ_REL,
                                __ATOMIC_ACQUIRE);
}

// A mutex that the image has initialised statically, of 64 bytes, becomes one of this system, of 40, at its first use.
// One that lies in a library of this system, or was made by pthread_mutex_init, is one already.
pthread_mutex_t* HostMutex(void* mutex) {
    const uint64_t signature = __atomic_load_n(static_cast<uint64_t*>(mutex), __ATOMIC_ACQUIRE);
    if (signature == kErrorCheckingMutex || signature == kRecursiveMutex) {
        int* const kind = static_cast<int*>(mutex) + 4;
        const int hostKind = signature == kRecursiveMutex ? PTHREAD_MUTEX_RECURSIVE : PTHREAD_MUTEX_ERRORCHECK;
        __atomic_store_n(kind, hostKind, __ATOMIC_RELAXED);
    }
    if (signature == kMutex || signature == kErrorCheckingMutex || signature == kRecursiveMutex) {
        ZeroWordThatIs(signature, mutex);
    }
    return static_cast<pthread_mutex_t*>(mutex);
}

int Lock(void* mutex) {
    return pthread_mutex_lock(HostMutex(mutex));
}

int TryLock(void* mutex) {
    return pthread_mutex_trylock(HostMutex(mutex));
}

int Unlock(void* mutex) {
    return pthread_mutex_unlock(HostMutex(mutex));
}

int Destroy(void* mutex) {
    return pthread_mutex_destroy(HostMutex(mutex));
}

int SetKind(pthread_mutexattr_t* attributes, int kind) {
    const int hostKind = kind == kRecursiveKind       ? PTHREAD_MUTEX_RECURSIVE
                         : kind == kErrorCheckingKind ? PTHREAD_MUTEX_ERRORCHECK
                                                      : PTHREAD_MUTEX_NORMAL;
    return pthread_mutexattr_settype(attributes, hostKind);
}

int Once(void* control, void (*routine)()) {
    ZeroWordThatIs(kOnce, control);
    return pthread_once(static_cast<pthread_once_t*>(control), routine);
}

} // namespace

void* ThreadFunction(std::string_view symbol) {
    static const std::map<std::string_view, void*> functions{
        {"_pthread_mutex_destroy", reinterpret_cast<void*>(&Destroy)},
        {"_pthread_mutex_lock", reinterpret_cast<void*>(&Lock)},
        {"_pthread_mutex_trylock", reinterpret_cast<void*>(&TryLock)},
        {"_pthread_mutex_unlock", reinterpret_cast<void*>(&Unlock)},
        {"_pthread_mutexattr_settype", reinterpret_cast<void*>(&SetKind)},
        {"_pthread_once", reinterpret_cast<void*>(&Once)},
    };
    const auto found = functions.find(symbol);
    return found == functions.end() ? nullptr : found->second;
}

} // namespace Tarvik::Vorn::Runner
