#include "CommandLine.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <system_error>

namespace Tarvik::Vorn::Simulator {

namespace {

// The plugin library that was built with this program: in the folder "lib" beside the program's own.
std::string PluginOfThisBuild() {
    std::error_code unknown;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return (program.parent_path().parent_path() / "lib" / "libVornFacebook.so").string();
}

} // namespace

std::optional<RunOptions> ParseCommandLine(int argc, char** argv, int& exitStatus) {
    CLI::App app("Tries the Facebook channel of the Vorn game SDK offline.", "vornsim");
    app.require_subcommand(1);
    app.set_version_flag("--version", "vornsim 5.30.001.7206");

    RunOptions options;
    options.plugin = PluginOfThisBuild();
    CLI::App* run = app.add_subcommand("run", "Plays a scenario and prints what happens.");
    run->add_option("--plugin", options.plugin, "The plugin library to load")->capture_default_str();
    run->add_option("--config", options.config, "The core's configuration, a JSON file")->required();
    run->add_flag("--show-tokens", options.showTokens, "Show access tokens in the transcript");
    run->add_option("SCENARIO", options.scenario, "The scenario, a JSON file")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        exitStatus = app.exit(error) == 0 ? kPlayed : kBadInput;
        return std::nullopt;
    }
    return options;
}

} // namespace Tarvik::Vorn::Simulator
