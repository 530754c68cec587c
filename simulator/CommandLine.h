// The command line of vornsim. Plain C++.
#pragma once

#include <optional>
#include <string>

namespace Tarvik::Vorn::Simulator {

// Exit statuses of the program.
inline constexpr int kPlayed = 0;    // Every step was played.
inline constexpr int kNotPlayed = 1; // A step could not be played.
inline constexpr int kBadInput = 2;  // A bad command line, configuration or scenario, or no plugin; nothing was run.

struct RunOptions {
    std::string plugin; // The library; the one that was built with this program unless another is named.
    std::string config;
    std::string scenario;
    bool showTokens = false; // Access tokens are shown in the transcript.
};

// What `vornsim run` was asked to do. Empty when there is nothing to run: help was printed, or the command line was bad
// and the error is printed; `exitStatus` is then the program's.
std::optional<RunOptions> ParseCommandLine(int argc, char** argv, int& exitStatus);

} // namespace Tarvik::Vorn::Simulator
