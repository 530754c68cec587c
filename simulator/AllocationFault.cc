#include "AllocationFault.h"

#include <atomic>
#include <new>
#include <stdexcept>

namespace {

std::atomic<uint64_t> sRemaining{0};
thread_local unsigned sUncounted = 0;

} // namespace

namespace Tarvik::Vorn::Simulator {

void FailAllocation(uint64_t nth) {
    sRemaining = nth;
}

bool MustAllocationFail() {
    if (sUncounted != 0) {
        return false;
    }
    uint64_t remaining = sRemaining.load(std::memory_order_relaxed);
    while (remaining != 0 && !sRemaining.compare_exchange_weak(remaining, remaining - 1)) {
    }
    return remaining == 1;
}

bool IsAllocationFaultPending() {
    return sRemaining.load() != 0;
}

UncountedAllocations::UncountedAllocations() {
    sUncounted += 1;
}

UncountedAllocations::~UncountedAllocations() {
    sUncounted -= 1;
}

std::string CallCatching(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        const UncountedAllocations uncounted;
        return "std::bad_alloc: there is no memory";
    } catch (const std::exception& exception) {
        const UncountedAllocations uncounted;
        return std::string("a C++ exception: ") + exception.what();
    }
    return "";
}

} // namespace Tarvik::Vorn::Simulator
