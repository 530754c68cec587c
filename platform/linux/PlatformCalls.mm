#include "PlatformCalls.h"

#include "History.h"
#include "PlatformFaults.h"
#include "VornRetainPtr.h"

#import <Foundation/Foundation.h>

#include <mutex>
#include <utility>

namespace Tarvik::Vorn::Host {

namespace {

struct Recorder {
    // Held while a call is entered and told, so that the listener hears the calls in the record's order. The record has
    // a lock of its own: the listener may read it.
    std::mutex entering;
    PlatformCallListener listener;

    std::mutex reading;
    std::vector<PlatformCall> calls;
};

// Never destroyed: calls may come until the process ends.
Recorder& TheRecorder() {
    static auto& recorder = *new Recorder;
    return recorder;
}

void Enter(const PlatformCall& call) {
    Recorder& recorder = TheRecorder();
    const std::lock_guard entering(recorder.entering);
    if (IsHistoryKept()) {
        const std::lock_guard reading(recorder.reading);
        recorder.calls.push_back(call);
    }
    if (recorder.listener) {
        recorder.listener(call);
    }
}

} // namespace

namespace PlatformCalls {

void Record(const std::string& className, const std::string& selector, const std::string& arguments) {
    Enter({className, selector, arguments, [NSThread isMainThread] != NO});
    RaiseIfArranged(className, selector);
}

void RecordInitializer(id object, const std::string& className, const std::string& selector,
                       const std::string& arguments) {
    const RetainPtr<id> unfinished = AdoptNS(object); // Ends the object when the call raises.
    Record(className, selector, arguments);
    [object retain];
}

std::vector<PlatformCall> All() {
    Recorder& recorder = TheRecorder();
    const std::lock_guard reading(recorder.reading);
    return recorder.calls;
}

void Clear() {
    Recorder& recorder = TheRecorder();
    const std::lock_guard reading(recorder.reading);
    recorder.calls.clear();
    recorder.calls.shrink_to_fit();
}

} // namespace PlatformCalls

void SetPlatformCallListener(PlatformCallListener listener) {
    Recorder& recorder = TheRecorder();
    {
        const std::lock_guard entering(recorder.entering);
        std::swap(recorder.listener, listener);
    }
    // The former listener ends here, outside the lock.
}

} // namespace Tarvik::Vorn::Host
