#include "FatalError.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace Tarvik::Vorn::Host {

void FatalError(const char* format, ...) {
    std::fputs("Vorn host runtime: ", stderr);
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fputc('\n', stderr);
    std::abort();
}

void CallWithoutExceptions(void (*function)(void* context), void* context) noexcept {
    function(context);
}

} // namespace Tarvik::Vorn::Host
