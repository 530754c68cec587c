// What the process has for the symbols that an image imports. Main thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Runner {

// The address of what stands for the symbol, which is named as in the image, with an underscore in front; some are
// null. Empty when the process has nothing for it, or nothing that would work with the image's own variables.
std::optional<void*> FindHostSymbol(std::string_view symbol);

// The linker name that a C++ function of this system has for one of the image, whose 64-bit integers are `long long`
// where they are `long` here. `from`: the parameters begin at the first E from there on; what stands before it is kept.
std::string WithHostIntegers(std::string_view name, size_t from);

} // namespace Tarvik::Vorn::Runner
