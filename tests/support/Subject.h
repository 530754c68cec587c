// The library under test. Tests do not link it: as the core does, they load it and find its classes by name. The
// environment variable VORN_SUBJECT names the file: the library for Linux, or the binary that ships, which the runner loads.
#pragma once

#include <string>

namespace Tarvik::Vorn::Test {

// Loads the library named by VORN_SUBJECT into this process, once; later calls do nothing. Main thread.
// Ends the process with a message when the variable is missing or the library cannot be loaded.
void LoadSubject();

// Whether the library is the binary that ships. Loads it.
bool SubjectIsShippedBinary();

// The address of a symbol that the loaded library defines or sees; null when there is none.
void* SubjectSymbol(const std::string& name);

} // namespace Tarvik::Vorn::Test
