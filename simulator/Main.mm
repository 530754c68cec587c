// vornsim: tries the Facebook channel offline. Exit statuses are told in CommandLine.h.

#include "CommandLine.h"
#include "Player.h"
#include "VornConfig.h"
#include "VornPlugins.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Simulator;

namespace {

int Reject(const std::string& message) {
    std::fprintf(stderr, "vornsim: %s\n", message.c_str());
    return kBadInput;
}

// Everything is read and checked before anything is played.
int Run(const RunOptions& options) {
    LocatedError error;
    const std::optional<Scenario> scenario = LoadScenario(options.scenario, error);
    if (!scenario) {
        return Reject(error.text());
    }
    if (const std::optional<LocatedError> badConfig = LoadConfigFile(options.config)) {
        return Reject(badConfig->text());
    }
    std::string problem;
    if (!LoadPluginLibrary(options.plugin, problem)) {
        return Reject(problem);
    }
    const Plugins plugins{FindLoginPlugin("Facebook", problem), FindFriendPlugin("Facebook", problem),
                          FindReportPlugin("Facebook", problem)};
    if (plugins.login == nil || plugins.friends == nil || plugins.report == nil) {
        return Reject(problem);
    }
    // Files that a scenario names are beside it. Everything that the command line names has been read by now.
    const std::filesystem::path folder = std::filesystem::absolute(options.scenario).parent_path();
    if (std::error_code failure; std::filesystem::current_path(folder, failure), failure) {
        return Reject(folder.string() + ": " + failure.message() + "; the folder of the scenario must be accessible");
    }
    Transcript transcript(stdout);
    return PlayScenario(*scenario, plugins, transcript, options.showTokens) ? kPlayed : kNotPlayed;
}

} // namespace

int main(int argc, char** argv) {
    @autoreleasepool {
        int exitStatus = kBadInput;
        const std::optional<RunOptions> options = ParseCommandLine(argc, argv, exitStatus);
        return options ? Run(*options) : exitStatus;
    }
}
