#include "AllocationCount.h"

#include "VornExport.h"

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names.
extern "C" void* __libc_malloc(size_t size);
extern "C" void* __libc_calloc(size_t count, size_t size);
extern "C" void* __libc_realloc(void* memory, size_t size);
// NOLINTEND(bugprone-reserved-identifier)

namespace {

thread_local size_t sAllocations = 0; // One addition: it does not show in what is timed.

} // namespace

extern "C" VORN_API void* malloc(size_t size) {
    sAllocations += 1;
    return __libc_malloc(size);
}

extern "C" VORN_API void* calloc(size_t count, size_t size) {
    sAllocations += 1;
    return __libc_calloc(count, size);
}

extern "C" VORN_API void* realloc(void* memory, size_t size) {
    sAllocations += 1;
    return __libc_realloc(memory, size);
}

namespace Tarvik::Vorn::Bench {

size_t AllocationsOfThisThread() {
    return sAllocations;
}

} // namespace Tarvik::Vorn::Bench
