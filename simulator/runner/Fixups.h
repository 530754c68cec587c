// What must be written into an image before it runs: where addresses of its own stand, and where those of symbols go.
// Plain C++, any thread.
#pragma once

#include "ImageLayout.h"

#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Runner {

struct Bind {
    uint64_t place = 0; // In a segment that takes fixups, with room for a pointer.
    std::string_view symbol;
    int64_t addend = 0;
    bool isOptional = false; // A null pointer stands for the symbol when nobody has it.
};

struct Fixups {
    std::vector<uint64_t> rebases; // Places of addresses that move with the image.
    std::vector<Bind> binds;       // Of symbols of other libraries.
    std::vector<Bind> weakBinds;   // Of symbols that may be in several, of which the process has the first.
};

std::variant<Fixups, ByteError> ReadFixups(const ImageLayout& layout);

} // namespace Tarvik::Vorn::Runner
