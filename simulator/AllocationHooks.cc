// Replaces the allocation functions of C++ for the whole program, so that one of its allocations can be made to fail.
// Linked into vornsim itself: a program of somebody else's that uses the simulator as a library keeps its own.

#include "AllocationFault.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// Memory comes from malloc, so that tools that watch it see it.
void* operator new(size_t size) {
    if (Tarvik::Vorn::Simulator::MustAllocationFail()) {
        throw std::bad_alloc();
    }
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(size_t size, const std::nothrow_t& /*nothrow*/) noexcept {
    return Tarvik::Vorn::Simulator::MustAllocationFail() ? nullptr : std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, size_t /*size*/) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*nothrow*/) noexcept {
    std::free(memory);
}
