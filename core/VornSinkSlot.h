// The place of a replaceable sink. Inside the core only.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <utility>

namespace Tarvik::Vorn {

// Held while any sink runs. One mutex for logs and traces: with one each, a log sink that traces and a trace sink that
// logs would wait for each other. Recursive, because a sink may log.
inline std::recursive_mutex& SinkMutex() {
    static auto& mutex = *new std::recursive_mutex; // Never destroyed: threads may log until the process ends.
    return mutex;
}

// Hands entries to the sink that is set, or to the console. Any thread.
template <class Entry>
class SinkSlot {
public:
    using Sink = std::function<void(const Entry&)>;
    using Console = void (*)(const Entry&);

    explicit SinkSlot(Console console) : mConsole(console) {}

    void Replace(Sink sink) {
        std::shared_ptr<const Sink> next; // Declared first: the old sink dies after the lock is given back.
        if (sink) {
            next = std::make_shared<const Sink>(std::move(sink));
        }
        const std::lock_guard<std::recursive_mutex> lock(SinkMutex());
        mSink.swap(next);
    }

    void Write(const Entry& entry) {
        const std::lock_guard<std::recursive_mutex> lock(SinkMutex());
        if (mSink == nullptr || mIsRunning) {
            mConsole(entry);
            return;
        }
        const std::shared_ptr<const Sink> sink = mSink; // Survives a call that replaces it.
        const Running running(mIsRunning);
        (*sink)(entry);
    }

private:
    struct Running {
        explicit Running(bool& flag) : mFlag(flag) { mFlag = true; }
        ~Running() { mFlag = false; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        bool& mFlag;
    };

    const Console mConsole;
    // Both guarded by SinkMutex(). Whoever holds it and finds mIsRunning set has come from the sink itself.
    std::shared_ptr<const Sink> mSink;
    bool mIsRunning = false;
};

} // namespace Tarvik::Vorn
