// The worlds that come with the program. Plain C++.
#pragma once

#include "World.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// What `vornsim run` plays when it is not told: from the first result to what can go wrong.
inline constexpr std::array<std::string_view, 6> kTour{
    "share-completed",    "share-cancelled",       "messenger-not-installed", "invitation-recipients-missing",
    "two-shares-overlap", "video-upload-progress",
};

// The program's own files: the folder "share/vornsim" beside the folder that it is in.
std::string SharedFolder();

// The paths of all shipped worlds, sorted by name.
std::vector<std::string> ShippedWorlds();

// The path of a world that is named by its path or by its shipped name. Empty, with an error in words, when there is no
// such file.
std::string FindWorld(const std::string& nameOrPath, std::string& error);

// Prints the shipped worlds with their questions. Returns the exit status: 2, with the error on `err`, when one of them
// cannot be read.
int ListWorlds(bool json, std::FILE* out, std::FILE* err);

} // namespace Tarvik::Vorn::Simulator
