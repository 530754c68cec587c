#include "Worker.h"

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Soak {

Worker::Worker() : mThread([this] { Serve(); }) {}

Worker::~Worker() {
    {
        const std::lock_guard lock(mMutex);
        mIsOver = true;
    }
    mChanged.notify_all();
    mThread.join();
}

void Worker::Run(const std::function<void()>& work) {
    std::unique_lock lock(mMutex);
    mWork = &work;
    mChanged.notify_all();
    mChanged.wait(lock, [this] { return mWork == nullptr; });
}

void Worker::Serve() {
    std::unique_lock lock(mMutex);
    while (true) {
        mChanged.wait(lock, [this] { return mWork != nullptr || mIsOver; });
        if (mWork == nullptr) {
            return;
        }
        @autoreleasepool {
            (*mWork)();
        }
        mWork = nullptr;
        mChanged.notify_all();
    }
}

} // namespace Tarvik::Vorn::Soak
