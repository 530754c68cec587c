// What every fuzz target defines and uses. Plain C++.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// One input, on the main thread, any number of times in a process. Returns 0: every input is worth keeping. libFuzzer
// calls it, and ReplayMain.cc does.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace Tarvik::Vorn::Fuzz {

// Ends the process, so that the input counts as a finding, unless `holds`. `rule` says what must hold, `found` what
// there is instead.
void Require(bool holds, std::string_view rule, std::string_view found = {});

// The bytes of an input as a text.
inline std::string_view TextOfInput(const uint8_t* data, size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// What a reader of C texts sees of it: everything before the first NUL.
inline std::string_view UpToNul(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

} // namespace Tarvik::Vorn::Fuzz
