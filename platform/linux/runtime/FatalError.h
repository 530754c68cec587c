// How the host runtime ends the process: with a message on standard error that says what is wrong.
#pragma once

#include "HostExport.h"

namespace Tarvik::Vorn::Host {

// Prints "Vorn host runtime: ", the message (printf's format) and a line feed, then aborts. Any thread.
[[noreturn]] VORN_HOST_EXPORT void FatalError(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Calls `function(context)`. An exception of any kind that leaves it ends the process: a C++ exception and its text are
// printed by std::terminate. This is a function of a C++ source because noexcept has no effect in Objective-C++ frames.
void CallWithoutExceptions(void (*function)(void* context), void* context) noexcept;

} // namespace Tarvik::Vorn::Host
