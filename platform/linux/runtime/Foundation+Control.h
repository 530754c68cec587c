// Settings of the corrected Foundation classes, for tests and the simulator.
#pragma once

#include "HostExport.h"

namespace Tarvik::Vorn::Host {

// What NSURL makes of a text with characters that no URL may contain: blanks, quotes, braces, pipes, a percent sign
// without two hexadecimal digits, characters outside ASCII.
enum class URLParsing {
    // No URL: every app up to iOS 16, and apps built with an SDK older than iOS 17. The default.
    kRejectInvalid,
    // A URL in which those characters are percent-encoded: apps built with the iOS 17 SDK, on iOS 17.
    kEncodeInvalid,
};

// Decides how URLs are parsed from now on. Any thread.
VORN_HOST_EXPORT void SetURLParsing(URLParsing parsing);
VORN_HOST_EXPORT URLParsing CurrentURLParsing();

} // namespace Tarvik::Vorn::Host
