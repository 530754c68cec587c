// Reads a file of bounded size. Plain C++, any thread.
#pragma once

#include "VornLocatedError.h"

#include <cstdint>
#include <string>
#include <variant>

namespace Tarvik::Vorn::Simulator::Doctor {

// All bytes of a regular file. An error when it cannot be read, is something else than a file (a pipe would be waited
// for), or is larger than `limit` bytes.
std::variant<std::string, LocatedError> ReadFileBytes(const std::string& path, uint64_t limit);

// The first bytes of a file, as many as tell what it is.
std::variant<std::string, LocatedError> ReadFileBeginning(const std::string& path);

} // namespace Tarvik::Vorn::Simulator::Doctor
