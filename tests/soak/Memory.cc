#include "Memory.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <malloc.h>
#include <unistd.h>

// Of the sanitizers' runtime; null without one.
extern "C" __attribute__((weak)) size_t __sanitizer_get_current_allocated_bytes();

namespace Tarvik::Vorn::Soak {
namespace {

constexpr const char* kTunables = "GLIBC_TUNABLES";

bool IsAllocatorReplaced() {
    return &__sanitizer_get_current_allocated_bytes != nullptr;
}

} // namespace

void MakeMemoryCountable(char** argv) {
    if (IsAllocatorReplaced() || std::getenv(kTunables) != nullptr) {
        return;
    }
    setenv(kTunables, "glibc.malloc.tcache_count=0", 1);
    execv("/proc/self/exe", argv);
    std::perror("the program could not be started anew");
}

size_t AllocatedBytes() {
    if (IsAllocatorReplaced()) {
        return __sanitizer_get_current_allocated_bytes();
    }
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

size_t ResidentBytes() {
    std::ifstream statm("/proc/self/statm");
    size_t pages = 0;
    size_t resident = 0;
    statm >> pages >> resident;
    return resident * static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

} // namespace Tarvik::Vorn::Soak
