// `vornsim run`.
#pragma once

#include "CommandLine.h"

namespace Tarvik::Vorn::Simulator {

// Reads and checks everything, then plays every world and prints them together. Returns the exit status.
int RunWorlds(const RunOptions& options);

// Whether `out` is a terminal that wants colours. NO_COLOR, unless it is empty, and TERM=dumb speak against it.
bool WantsColor(std::FILE* out);

} // namespace Tarvik::Vorn::Simulator
