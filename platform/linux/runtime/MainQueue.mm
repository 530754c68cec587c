// The main queue: a list of work, and one pending wake of the main thread's run loop.

#include "MainQueue+Control.h"

#include "FatalError.h"
#include "HostExport.h"
#include "UncaughtException.h"

#include <Block.h>
#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <deque>
#include <iterator>
#include <mutex>
#include <utility>

struct dispatch_queue_s {};

// Receives the wake in the main thread's run loop.
@interface VornHostMainQueue : NSObject
+ (void)runQueue;
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
    // A wake is on its way to the run loop. Kept apart from "the queue was empty": tests empty the queue directly, and
    // wakes would pile up in a run loop that does not run.
    bool wakePending = false;
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

void Wake() {
    @autoreleasepool {
        [VornHostMainQueue performSelectorOnMainThread:@selector(runQueue) withObject:nil waitUntilDone:NO];
    }
}

void Post(const Work& work) {
    MainQueue& queue = Queue();
    bool wake = false;
    {
        const std::lock_guard lock(queue.mutex);
        queue.queued.push_back(work);
        wake = !std::exchange(queue.wakePending, true);
    }
    if (wake) {
        Wake();
    }
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
        bool wake = false;
        {
            const std::lock_guard lock(queue.mutex);
            queue.queued.insert(queue.queued.begin(), mBatch.begin(), mBatch.end());
            // A nested run loop may have used the wake up without running the queue.
            wake = !queue.queued.empty() && !std::exchange(queue.wakePending, true);
        }
        if (wake) {
            Wake();
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

// The library is loaded on the main thread. Until that thread has a run loop, GNUstep performs at once, and on the
// posting thread, what is meant for the main thread.
+ (void)load {
    @autoreleasepool {
        if ([NSThread isMainThread]) {
            (void)[NSRunLoop currentRunLoop];
        }
    }
}

+ (void)runQueue {
    using namespace Tarvik::Vorn::Host;
    {
        MainQueue& queue = Queue();
        const std::lock_guard lock(queue.mutex);
        queue.wakePending = false;
    }
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
