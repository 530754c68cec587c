// The allocation functions of the whole process. What is not made to fail comes from the functions that stood here before,
// the sanitizer's or the C library's, so that a wrong or second free is still found by the sanitizer.
//
// What is allocated and freed is told by the sanitizer. Without one, free is replaced as well; with one that cannot be,
// because it is called before the sanitizer is ready.

#include "AllocationFaults.h"

#include "VornExport.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <new>

using Tarvik::Vorn::Test::IsWatching;
using Tarvik::Vorn::Test::MustFail;
using Tarvik::Vorn::Test::NoteAllocated;
using Tarvik::Vorn::Test::NoteFreed;

#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)

#include <sanitizer/allocator_interface.h>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's own name.
extern "C" void* __interceptor_calloc(size_t count, size_t size);

namespace {

void* NextCalloc(size_t count, size_t size) {
    return __interceptor_calloc(count, size);
}

void SeeAllocated(const volatile void* memory, size_t /*size*/) {
    if (IsWatching()) {
        NoteAllocated(memory);
    }
}

void SeeFreed(const volatile void* memory) {
    if (IsWatching()) {
        NoteFreed(memory);
    }
}

[[maybe_unused]] const int kIsInstalled = __sanitizer_install_malloc_and_free_hooks(&SeeAllocated, &SeeFreed);

} // namespace

#else

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names.
extern "C" void* __libc_calloc(size_t count, size_t size);
extern "C" void __libc_free(void* memory);
// NOLINTEND(bugprone-reserved-identifier)

namespace {

void* NextCalloc(size_t count, size_t size) {
    void* const memory = __libc_calloc(count, size);
    if (memory != nullptr && IsWatching()) {
        NoteAllocated(memory);
    }
    return memory;
}

} // namespace

extern "C" VORN_API void free(void* memory) {
    if (memory != nullptr && IsWatching()) {
        NoteFreed(memory);
    }
    __libc_free(memory);
}

#endif

extern "C" VORN_API void* calloc(size_t count, size_t size) {
    if (MustFail()) {
        errno = ENOMEM;
        return nullptr;
    }
    return NextCalloc(count, size);
}

VORN_API void* operator new(size_t size) {
    if (MustFail()) {
        throw std::bad_alloc();
    }
    // Zeroed, because what is allocated by malloc is not told without a sanitizer.
    void* const memory = NextCalloc(1, size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

VORN_API void operator delete(void* memory) noexcept {
    std::free(memory);
}

VORN_API void operator delete(void* memory, size_t /*size*/) noexcept {
    std::free(memory);
}
