#include "AllocationFaults.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace Tarvik::Vorn::Test {
namespace {

// What an operation holds at a time; far more than any here does. An array, because the hooks cannot allocate.
constexpr size_t kMostAlive = 4096;

struct State {
    bool isInjecting = false;
    Fault fault;
    uint64_t count = 0;
    bool hasHappened = false;

    bool isWatching = false;
    std::array<const volatile void*, kMostAlive> alive{};
    size_t aliveCount = 0;
};

constinit thread_local State tState;

} // namespace

FaultInjection::FaultInjection(const Fault& fault) {
    tState.fault = fault;
    tState.count = 0;
    tState.hasHappened = false;
    tState.isInjecting = true;
}

FaultInjection::~FaultInjection() {
    tState.isInjecting = false;
}

bool FaultInjection::HasHappened() {
    return tState.hasHappened;
}

AllocationWatch::AllocationWatch() {
    tState.aliveCount = 0;
    tState.isWatching = true;
}

AllocationWatch::~AllocationWatch() {
    tState.isWatching = false;
}

size_t AllocationWatch::Outstanding() {
    return tState.aliveCount;
}

bool MustFail() {
    if (!tState.isInjecting) {
        return false;
    }
    tState.count += 1;
    const bool mustFail = tState.fault.isForever ? tState.count >= tState.fault.nth : tState.count == tState.fault.nth;
    tState.hasHappened = tState.hasHappened || mustFail;
    return mustFail;
}

bool IsWatching() {
    return tState.isWatching;
}

void NoteAllocated(const volatile void* memory) {
    if (tState.aliveCount == kMostAlive) {
        std::fputs("AllocationWatch: more allocations are alive than it can hold; raise kMostAlive.\n", stderr);
        std::abort();
    }
    tState.alive[tState.aliveCount] = memory;
    tState.aliveCount += 1;
}

void NoteFreed(const volatile void* memory) {
    // The newest first: most is given back soon.
    const auto newest = std::make_reverse_iterator(tState.alive.begin() + tState.aliveCount);
    const auto found = std::find(newest, tState.alive.rend(), memory);
    if (found == tState.alive.rend()) {
        return; // From before the watch began, or from malloc.
    }
    tState.aliveCount -= 1;
    *found = tState.alive[tState.aliveCount];
}

} // namespace Tarvik::Vorn::Test
