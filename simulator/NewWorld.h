// A world to begin with. Plain C++.
#pragma once

#include <string>

namespace Tarvik::Vorn::Simulator {

// Writes NAME.world.json into the current directory: a world that can be played, with notes that say what to change.
// `name` may be a path. Empty when all is well; otherwise what is wrong, and no file is changed. `path` gets the file's.
std::string WriteNewWorld(const std::string& name, std::string& path);

} // namespace Tarvik::Vorn::Simulator
