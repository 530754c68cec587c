// What the binary of VornFacebook must be. Plain C++, any thread.
#pragma once

#include "Finding.h"
#include "MachOFile.h"
#include "VornLocatedError.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

inline constexpr uint64_t kMaxMachOBytes = uint64_t{1} << 30U;

// A binary with the bytes that its texts lie in.
struct MachOOnDisk {
    std::unique_ptr<const std::string> bytes;
    MachOFile file;
};

// Reads and parses a binary; the error has the byte offset in its message.
std::variant<MachOOnDisk, LocatedError> ReadMachO(const std::string& path);
std::variant<MachOOnDisk, LocatedError> MachOOfBytes(const std::string& path, std::string bytes);

// For which machines a library must be.
struct LibraryTarget {
    uint32_t platform = kPlatformUnknown; // Unknown: that of its first slice.
    std::vector<uint32_t> processors;     // Empty: those that its platform has.
    bool mayHaveMore = false;             // Of simulators' processors: an app need not be built for all of them.
};

// Adds what is wrong with the library in `file`; a fault of several slices is one finding that names them.
void CheckLibrary(const std::string& path, const MachOFile& file, const LibraryTarget& target,
                  std::vector<Finding>& findings);

} // namespace Tarvik::Vorn::Simulator::Doctor
