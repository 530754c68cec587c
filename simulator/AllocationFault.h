// Lets an allocation of C++ fail: operator new, and so texts, records on their way, blocks' captured objects. Plain C++.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace Tarvik::Vorn::Simulator {

// The n-th allocation from now on throws std::bad_alloc, on whatever thread; 0 for none. Nothing happens in a program
// without AllocationHooks.cc.
void FailAllocation(uint64_t nth);

// Counts an allocation, and says whether it is the one. For AllocationHooks.cc.
bool MustAllocationFail();

// Whether the allocation is still to come.
bool IsAllocationFaultPending();

// Allocations of the simulator itself do not count: as long as one of these lives, on its thread.
class UncountedAllocations {
public:
    UncountedAllocations();
    ~UncountedAllocations();
    UncountedAllocations(const UncountedAllocations&) = delete;
    UncountedAllocations& operator=(const UncountedAllocations&) = delete;
};

// Calls `work`. What C++ exception left it, in words; empty when none did. Exceptions of Objective-C pass through.
std::string CallCatching(const std::function<void()>& work);

} // namespace Tarvik::Vorn::Simulator
