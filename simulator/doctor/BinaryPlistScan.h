// Looks through a binary property list before libplist reads it: libplist tells no place, recurses into what is nested,
// and copies an object for every reference to it. Plain C++, any thread.
#pragma once

#include "VornLocatedError.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {

inline constexpr uint64_t kMaxPlistObjects = 1'000'000;
inline constexpr uint64_t kMaxExpandedBytes = uint64_t{64} << 20U; // Every reference counted as a copy.

// The first thing in `bytes` that is outside of the file, in a loop, nested beyond kMaxPlistDepth, or larger than the
// limits above; its byte offset is in the message. Empty when there is none. `path` is for the error.
std::optional<LocatedError> ScanBinaryPlist(const std::string& path, std::string_view bytes);

} // namespace Tarvik::Vorn::Simulator::Doctor
