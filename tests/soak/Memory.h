// What the process holds. Plain C++; any thread.
#pragma once

#include <cstddef>

namespace Tarvik::Vorn::Soak {

// Starts the program `argv` anew, once, with an allocator that keeps no freed pieces per thread: they would count as
// allocated. Does nothing under a sanitizer that replaces the allocator. To be called before anything else happens.
void MakeMemoryCountable(char** argv);

// Bytes that were allocated and not freed. Under a sanitizer that replaces the allocator, those of the sanitizer.
size_t AllocatedBytes();

// Bytes of memory that the system gives the process.
size_t ResidentBytes();

} // namespace Tarvik::Vorn::Soak
