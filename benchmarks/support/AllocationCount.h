// How often memory is asked for. The program's own malloc, calloc and realloc count; operator new comes to malloc.
#pragma once

#include <cstddef>

namespace Tarvik::Vorn::Bench {

// Since the start of the thread.
size_t AllocationsOfThisThread();

// How many allocations `work` makes on this thread.
template <class Work>
size_t AllocationsOf(Work work) {
    const size_t before = AllocationsOfThisThread();
    work();
    return AllocationsOfThisThread() - before;
}

} // namespace Tarvik::Vorn::Bench
