// Numbers of the Mach-O format that more than one reader needs. Plain C++.
#pragma once

#include <cstdint>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {

inline constexpr uint64_t kHeaderSize = 32;
inline constexpr uint64_t kSegmentSize = 72;
inline constexpr uint64_t kSectionSize = 80;

// Load commands; those that dyld must know have the highest bit as well.
inline constexpr uint32_t kCommandSegment = 0x19;
inline constexpr uint32_t kCommandDyldInfo = 0x22;
inline constexpr uint32_t kCommandDyldInfoOnly = 0x80000022;

inline constexpr uint32_t kSectionTypeMask = 0xFF;

// The text in a field of 16 bytes, which is filled up with null bytes.
inline std::string_view FixedText(std::string_view field) {
    return field.substr(0, field.find('\0'));
}

} // namespace Tarvik::Vorn::Simulator::Doctor
