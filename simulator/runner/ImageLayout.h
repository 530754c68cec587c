// Where everything is in a library's image for the simulator on Intel: what its load commands say, checked, and nothing
// carried out. Plain C++, any thread.
#pragma once

#include "../doctor/ByteReader.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Runner {

using Simulator::Doctor::ByteError;
using Simulator::Doctor::ByteReader;

inline constexpr uint64_t kPageSize = 4096;
inline constexpr uint64_t kPointerSize = 8;

// The plugin's file has a third of a megabyte. One that is larger than this is not read.
inline constexpr uint64_t kLargestFile = uint64_t{256} << 20U;

// Places in an image are bytes from its lowest address on.
struct Segment {
    std::string_view name;
    uint64_t place = 0; // A whole number of pages.
    uint64_t size = 0;
    std::string_view contents; // Of its beginning; the rest is zero.
    bool isExecutable = false;
    bool isWritable = false;  // While the image runs.
    bool takesFixups = false; // While it is loaded.
};

struct Section {
    std::string_view name;
    uint64_t place = 0;
    uint64_t size = 0;
    uint32_t type = 0;
};

// The image's texts and streams lie in the bytes that were parsed.
struct ImageLayout {
    uint64_t size = 0;          // A whole number of pages.
    uint64_t lowestAddress = 0; // Which the linker has given it.
    std::vector<Segment> segments;
    std::vector<Section> sections;
    std::string_view rebases; // Opcodes, as in the next three.
    std::string_view binds;
    std::string_view weakBinds;
    std::string_view lazyBinds;
    uint64_t fileOffset = 0;                              // Of the slice, in the file.
    std::string_view slice;                               // Its bytes.
    std::map<std::string, uint64_t, std::less<>> exports; // Places by name.

    // Null when there is none of that name.
    const Section* Find(std::string_view section) const;

    // Where in the file `part` of the slice begins; for errors.
    uint64_t FileOffsetOf(std::string_view part) const;
};

// Of the slice of a Mach-O file that can run here. Refuses by name what the runner cannot do.
std::variant<ImageLayout, ByteError> ReadImageLayout(std::string_view file);

} // namespace Tarvik::Vorn::Runner
