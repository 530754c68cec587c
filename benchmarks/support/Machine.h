// What the figures were measured on.
#pragma once

#include <string>

namespace Tarvik::Vorn::Bench {

struct Machine {
    std::string processor; // As the kernel calls it; "unknown" where it does not say.
    unsigned cores = 0;
    std::string system;   // Kernel and architecture.
    std::string compiler; // Of this program, which is that of the libraries.
    std::string flags;    // Of the optimised build.
};

Machine ThisMachine();

} // namespace Tarvik::Vorn::Bench
