#include "PlatformFaults.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <list>
#include <mutex>
#include <optional>

namespace Tarvik::Vorn::Host {

namespace {

struct Fault {
    std::string className;
    std::string selector;
    std::string exceptionName;
    std::string reason;
};

struct Faults {
    std::mutex mutex;
    std::list<Fault> arranged;
};

// Never destroyed: calls may come until the process ends.
Faults& TheFaults() {
    static auto& faults = *new Faults;
    return faults;
}

// The first one arranged for the call.
// REQUIRES: the lock of `faults` is held.
std::list<Fault>::iterator Find(Faults& faults, const std::string& className, const std::string& selector) {
    return std::find_if(faults.arranged.begin(), faults.arranged.end(),
                        [&](const Fault& fault) { return fault.className == className && fault.selector == selector; });
}

std::optional<Fault> Take(const std::string& className, const std::string& selector) {
    Faults& faults = TheFaults();
    const std::lock_guard lock(faults.mutex);
    const auto position = Find(faults, className, selector);
    if (position == faults.arranged.end()) {
        return std::nullopt;
    }
    std::optional<Fault> fault(std::move(*position));
    faults.arranged.erase(position);
    return fault;
}

} // namespace

void RaiseAtNextCall(const std::string& className, const std::string& selector, const std::string& exceptionName,
                     const std::string& reason) {
    Faults& faults = TheFaults();
    const std::lock_guard lock(faults.mutex);
    faults.arranged.push_back({className, selector, exceptionName, reason});
}

bool IsRaisePending(const std::string& className, const std::string& selector) {
    Faults& faults = TheFaults();
    const std::lock_guard lock(faults.mutex);
    return Find(faults, className, selector) != faults.arranged.end();
}

void ResetPlatformFaults() {
    Faults& faults = TheFaults();
    const std::lock_guard lock(faults.mutex);
    faults.arranged.clear();
}

void RaiseIfArranged(const std::string& className, const std::string& selector) {
    if (const std::optional<Fault> fault = Take(className, selector)) {
        [[NSException exceptionWithName:[NSString stringWithUTF8String:fault->exceptionName.c_str()]
                                 reason:[NSString stringWithUTF8String:fault->reason.c_str()]
                               userInfo:nil] raise];
    }
}

} // namespace Tarvik::Vorn::Host
