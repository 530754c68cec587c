// Texts formatted as by printf. Inside the core and its tests; any thread.
#pragma once

#include "VornExport.h"

#include <cstdarg>
#include <string>

namespace Tarvik::Vorn {

// The formatted text. When it cannot be formatted (a wide character without a form in the locale, more than 2 GiB), the
// format itself, so that a line still says where it comes from. `arguments` is used up.
//
// Formats with no conversions but %s, %d, %u, %p and %% are formatted here, all others by the C library. GNUstep registers a
// conversion of its own (%@), and from then on every printf of the process takes its general and slow way.
VORN_API std::string Format(const char* format, va_list arguments) __attribute__((format(printf, 1, 0)));

} // namespace Tarvik::Vorn
