// What the loader has made of a library of this process.
#pragma once

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test::LoadedLibrary {

// The path of the loaded library whose file name begins with `name`; empty when there is none.
std::string Path(const std::string& name);

// The addresses through which that library refers to `symbol`, each once: what its relocations have been filled with.
// Empty when it does not refer to the symbol through the loader, as with one that is hidden.
std::vector<const void*> ReferencesTo(const std::string& name, const std::string& symbol);

} // namespace Tarvik::Vorn::Test::LoadedLibrary
