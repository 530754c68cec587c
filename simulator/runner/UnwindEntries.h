// How to leave each function of an image when an exception passes: what the linker has kept of it, the compact unwind
// entries. Plain C++, any thread.
#pragma once

#include "MappedImage.h"

#include <array>
#include <cstdint>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Runner {

// A register that the function has saved, by its DWARF number, and how many words below the frame's top.
struct SavedRegister {
    unsigned number = 0;
    unsigned wordsBelow = 0;
};

struct UnwindEntry {
    uint64_t begin = 0; // Places in the image.
    uint64_t end = 0;
    unsigned frameRegister = 0; // By its DWARF number; the frame's top is so many bytes above what it holds.
    uint64_t frameSize = 0;
    std::vector<SavedRegister> saved;
    uint64_t handlers = 0;    // The place of the table of handlers; 0 for none.
    uint64_t personality = 0; // The address of the function that reads it; 0 without handlers.
};

// An error's offset is a place in the image. REQUIRES: the image is bound. Functions whose entry says that the image's own
// call frame information has more are left out.
std::variant<std::vector<UnwindEntry>, ByteError> ReadUnwindEntries(const MappedImage& image);

} // namespace Tarvik::Vorn::Runner
