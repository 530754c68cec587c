// Makes allocations of this program fail, one after the other, and counts what is not given back.
//
// The program's calloc and operator new are replaced (AllocationHooks.cc), for the libraries that it loads too: whatever a
// record, a standard text or a map asks for is one of these. malloc never fails here; the C++ runtime takes its exceptions
// from there.
//
// Everything here concerns the calling thread alone.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Tarvik::Vorn::Test {

// Which allocation fails, counted from 1: that one alone, or it and every later one.
struct Fault {
    uint64_t nth = 0;
    bool isForever = false;
};

// As long as it lives, allocations of its thread are counted and the fault happens. One at a time per thread.
class FaultInjection {
public:
    explicit FaultInjection(const Fault& fault);
    ~FaultInjection();
    FaultInjection(const FaultInjection&) = delete;
    FaultInjection& operator=(const FaultInjection&) = delete;

    // Whether an allocation has failed.
    static bool HasHappened();
};

// As long as it lives, remembers what its thread allocates and gives back. One at a time per thread.
class AllocationWatch {
public:
    AllocationWatch();
    ~AllocationWatch();
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    // How many of the allocations since then have not been given back.
    static size_t Outstanding();
};

// For AllocationHooks.cc, which may ask before the sanitizer has started: whether this allocation fails, and whether the
// thread's allocations are remembered.
bool MustFail();
bool IsWatching();

// REQUIRES: IsWatching().
void NoteAllocated(const volatile void* memory);
void NoteFreed(const volatile void* memory);

} // namespace Tarvik::Vorn::Test
