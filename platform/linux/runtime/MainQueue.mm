// The main queue: a list of work, and an event descriptor that wakes the main thread's run loop.
//
// The descriptor is a source of the run loop, so that runMode:beforeDate: returns after it has run the queue, as on
// Apple. GNUstep's performSelectorOnMainThread: would not do: what it performs for the main thread itself is no source,
// and without a run loop it performs at once, on the posting thread.

#include "MainQueue+Control.h"

#include "FatalError.h"
#include "HostExport.h"
#include "UncaughtException.h"

#include <Block.h>
#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <deque>
#include <mutex>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>

struct dispatch_queue_s {};

// Receives the wakes in the main thread's run loop.
@interface VornHostMainQueue : NSObject
@end

namespace Tarvik::Vorn::Host {
namespace {

struct Work {
    dispatch_block_t block; // Owned; nil when a function was posted.
    dispatch_function_t function;
    void* context;
};

struct MainQueue {
    std::mutex mutex;
    std::deque<Work> queued;
    // The descriptor was written and not read yet. Kept apart from "the queue was empty": tests empty the queue
    // directly, without the run loop.
    bool wakePending = false;
    const int wakeDescriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    // Work is being run, in this or an outer frame of the main thread. Main thread only.
    bool running = false;
    dispatch_queue_s handle;
};

// Never destroyed: other threads may still post while the process exits.
MainQueue& Queue() {
    static MainQueue& queue = *new MainQueue;
    return queue;
}

void RequireMainThread(const char* function) {
    if (![NSThread isMainThread]) {
        FatalError("%s is for the main thread only", function);
    }
}

// REQUIRES: the mutex is held.
void WakeUnlessPending(MainQueue& queue) {
    const uint64_t one = 1;
    if (!std::exchange(queue.wakePending, true) && write(queue.wakeDescriptor, &one, sizeof one) != sizeof one) {
        FatalError("the main thread's run loop could not be woken: %s", std::strerror(errno));
    }
}

void TakeWake() {
    uint64_t count = 0;
    MainQueue& queue = Queue();
    const std::lock_guard lock(queue.mutex);
    if (read(queue.wakeDescriptor, &count, sizeof count) == sizeof count) {
        queue.wakePending = false;
    }
}

void Post(const Work& work) {
    MainQueue& queue = Queue();
    const std::lock_guard lock(queue.mutex);
    queue.queued.push_back(work);
    WakeUnlessPending(queue);
}

// One pass over what is queued when it begins. Leaving it, also by an exception, puts back what was not run.
class Pass {
public:
    Pass() {
        MainQueue& queue = Queue();
        queue.running = true;
        const std::lock_guard lock(queue.mutex);
        mBatch.swap(queue.queued);
    }

    ~Pass() {
        MainQueue& queue = Queue();
        queue.running = false;
        const std::lock_guard lock(queue.mutex);
        queue.queued.insert(queue.queued.begin(), mBatch.begin(), mBatch.end());
        if (!queue.queued.empty()) {
            WakeUnlessPending(queue); // A nested run loop may have taken the wake without running the queue.
        }
    }

    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    size_t Run() {
        size_t count = 0;
        while (!mBatch.empty()) {
            const Work work = mBatch.front();
            mBatch.pop_front();
            ++count;
            @autoreleasepool {
                const Owner owner{work.block};
                if (work.block != nil) {
                    work.block();
                } else {
                    work.function(work.context);
                }
            }
        }
        return count;
    }

private:
    struct Owner {
        dispatch_block_t block;
        ~Owner() { Block_release(block); }
    };

    std::deque<Work> mBatch;
};

void RequireMainQueue(dispatch_queue_t queue, bool hasWork) {
    if (queue != dispatch_get_main_queue()) {
        FatalError("dispatch_async: only the main queue exists on this host");
    }
    if (!hasWork) {
        FatalError("dispatch_async: the work to post is NULL");
    }
}

} // namespace

size_t DrainMainQueue() {
    RequireMainThread("DrainMainQueue");
    if (Queue().running) {
        return 0;
    }
    return Pass().Run();
}

size_t DrainMainQueueUntilEmpty() {
    size_t total = 0;
    while (const size_t count = DrainMainQueue()) {
        total += count;
    }
    return total;
}

size_t MainQueueDepth() {
    MainQueue& queue = Queue();
    const std::lock_guard lock(queue.mutex);
    return queue.queued.size();
}

void RunMainLoopUntilIdle() {
    RequireMainThread("RunMainLoopUntilIdle");
    if (Queue().running) {
        FatalError("RunMainLoopUntilIdle was called by queued work, and would wait for itself");
    }
    while (MainQueueDepth() > 0) {
        @autoreleasepool {
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
        }
    }
}

size_t DiscardMainQueue() {
    RequireMainThread("DiscardMainQueue");
    std::deque<Work> dropped;
    {
        MainQueue& queue = Queue();
        const std::lock_guard lock(queue.mutex);
        dropped.swap(queue.queued);
    }
    @autoreleasepool {
        for (const Work& work : dropped) {
            Block_release(work.block); // Not below the lock: what the block held may post when it goes.
        }
    }
    return dropped.size();
}

} // namespace Tarvik::Vorn::Host

@implementation VornHostMainQueue

// The library is loaded on the main thread, whose run loop is made here. Without one, GNUstep performs on the posting
// thread, and at once, whatever is meant for the main thread.
+ (void)load {
    using namespace Tarvik::Vorn::Host;
    @autoreleasepool {
        RequireMainThread("loading libVornHostRuntime.so");
        const int descriptor = Queue().wakeDescriptor;
        if (descriptor < 0) {
            FatalError("no event descriptor for the main queue: %s", std::strerror(errno));
        }
        [[NSRunLoop currentRunLoop] addEvent:std::bit_cast<void*>(static_cast<intptr_t>(descriptor))
                                        type:ET_RDESC
                                     watcher:static_cast<id>(self)
                                     forMode:NSDefaultRunLoopMode];
    }
}

+ (void)receivedEvent:(void*)data type:(RunLoopEventType)type extra:(void*)extra forMode:(NSString*)mode {
    using namespace Tarvik::Vorn::Host;
    (void)data;
    (void)type;
    (void)extra;
    (void)mode;
    TakeWake();
    CallOrEndProcess([](void*) { DrainMainQueue(); }, nullptr);
}

@end

extern "C" {

VORN_HOST_EXPORT dispatch_queue_t dispatch_get_main_queue(void) {
    return &Tarvik::Vorn::Host::Queue().handle;
}

VORN_HOST_EXPORT void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    using namespace Tarvik::Vorn::Host;
    RequireMainQueue(queue, work != nullptr);
    Post(Work{nil, work, context});
}

VORN_HOST_EXPORT void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    using namespace Tarvik::Vorn::Host;
    RequireMainQueue(queue, block != nil);
    Post(Work{Block_copy(block), nullptr, nullptr});
}

} // extern "C"
