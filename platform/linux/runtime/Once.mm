// dispatch_once and dispatch_once_f.

#include "FatalError.h"
#include "HostExport.h"
#include "UncaughtException.h"

#include <dispatch/dispatch.h>

#include <bit>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

using Tarvik::Vorn::Host::CallOrEndProcess;
using Tarvik::Vorn::Host::FatalError;

constexpr dispatch_once_t kDone = ~dispatch_once_t{0};

// While a function runs, its token holds the address of one of these, on the stack of the thread that runs it.
struct Runner {
    std::thread::id thread;
};

struct Waiting {
    std::mutex mutex;
    std::condition_variable someoneFinished;
};

// Never destroyed: other threads may still meet a token while the process exits.
Waiting& SharedWaiting() {
    static Waiting& waiting = *new Waiting;
    return waiting;
}

void CallBlock(void* block) {
    reinterpret_cast<dispatch_block_t>(block)();
}

} // namespace

extern "C" {

VORN_HOST_EXPORT void dispatch_once_f(dispatch_once_t* predicate, void* context, dispatch_function_t function) {
    if (__atomic_load_n(predicate, __ATOMIC_ACQUIRE) == kDone) {
        return;
    }
    Waiting& waiting = SharedWaiting();
    Runner self{std::this_thread::get_id()};
    std::unique_lock lock(waiting.mutex);
    for (;;) {
        const dispatch_once_t state = __atomic_load_n(predicate, __ATOMIC_RELAXED); // Written below this lock only.
        if (state == kDone) {
            return;
        }
        if (state == 0) {
            break;
        }
        if (std::bit_cast<const Runner*>(state)->thread == self.thread) {
            FatalError("dispatch_once was called again with the same token by the function it is running");
        }
        waiting.someoneFinished.wait(lock);
    }
    __atomic_store_n(predicate, std::bit_cast<dispatch_once_t>(&self), __ATOMIC_RELAXED);
    lock.unlock();
    CallOrEndProcess(function, context);
    lock.lock();
    __atomic_store_n(predicate, kDone, __ATOMIC_RELEASE);
    waiting.someoneFinished.notify_all();
}

VORN_HOST_EXPORT void dispatch_once(dispatch_once_t* predicate, __attribute__((noescape)) dispatch_block_t block) {
    dispatch_once_f(predicate, static_cast<void*>(block), CallBlock);
}

} // extern "C"
