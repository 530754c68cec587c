// A second thread for what the core and Facebook's SDK do off the main thread. One piece of work at a time, and the caller
// waits for it: a run stays the same whatever the machine does.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace Tarvik::Vorn::Soak {

class Worker {
public:
    Worker();
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    // Runs `work` on the thread, in an autorelease pool, and returns when it is done. It must not throw.
    void Run(const std::function<void()>& work);

private:
    void Serve();

    std::mutex mMutex; // Guards the next two.
    std::condition_variable mChanged;
    const std::function<void()>* mWork = nullptr;
    bool mIsOver = false;
    std::thread mThread; // Last: it uses the others.
};

} // namespace Tarvik::Vorn::Soak
