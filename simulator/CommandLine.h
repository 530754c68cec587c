// The command line of vornsim. Plain C++.
#pragma once

#include "Report.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// Exit statuses of the program.
inline constexpr int kGood = 0;     // Every step was played and all expectations hold; nothing was found.
inline constexpr int kNotGood = 1;  // An expectation does not hold, a step could not be played, or something was found.
inline constexpr int kBadInput = 2; // A bad command line, file or library; nothing was run.

enum class OutputFormat { kText, kJson, kHtml, kNone };

struct RunOptions {
    std::vector<std::string> worlds; // Paths and shipped names; the tour when there is none.
    std::string plugin;              // The library; the one that was built with this program unless another is named.
    std::string subject; // The framework, or binary of one, to run in place of that library; empty for none.
    std::string config;  // The core's configuration, before the world's own; empty for none.
    OutputFormat format = OutputFormat::kText;
    TextOrder order = TextOrder::kByRequest;
    std::optional<uint64_t> seed;
    bool showTokens = false; // Access tokens are shown in the timeline.
};
struct WorldsOptions {
    bool json = false;
};
struct NewOptions {
    std::string name;
};
struct ExplainOptions {
    std::string method;
    std::string code;
    std::string thirdCode; // Empty when it was not given.
    std::string text;
    bool json = false;
};
struct DoctorOptions {
    std::string path;
    bool json = false;
};

using Command = std::variant<RunOptions, WorldsOptions, NewOptions, ExplainOptions, DoctorOptions>;

// What vornsim was asked to do. Empty when there is nothing to do: help was printed, or the command line was bad and the
// error is printed; `exitStatus` is then the program's.
std::optional<Command> ParseCommandLine(int argc, char** argv, int& exitStatus);

} // namespace Tarvik::Vorn::Simulator
