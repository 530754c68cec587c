#include "CommandLine.h"

#include "report/VisibleText.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <filesystem>
#include <iostream>
#include <random>
#include <sstream>
#include <system_error>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr const char* kFooter = "Exit status: 0 all is as expected, 1 it is not or something was found, 2 bad input.\n"
                                "The manual is docs/simulator.md, or `man vornsim`.";

// The plugin library that was built with this program: in the folder "lib" beside the program's own.
std::string PluginOfThisBuild() {
    std::error_code unknown;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return (program.parent_path().parent_path() / "lib" / "libVornFacebook.so").string();
}

// A number, or "random" for one that chance picks. False when it is neither.
bool ReadSeed(const std::string& text, std::optional<uint64_t>& seed) {
    if (text == "random") {
        std::random_device chance;
        seed = (uint64_t{chance()} << 32) | chance();
        return true;
    }
    uint64_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size()) {
        return false;
    }
    seed = number;
    return true;
}

CLI::App* AddRun(CLI::App& app, RunOptions& options) {
    static const std::vector<std::pair<std::string, OutputFormat>> formats{{"text", OutputFormat::kText},
                                                                           {"json", OutputFormat::kJson},
                                                                           {"html", OutputFormat::kHtml},
                                                                           {"none", OutputFormat::kNone}};
    static const std::vector<std::pair<std::string, TextOrder>> orders{{"request", TextOrder::kByRequest},
                                                                       {"time", TextOrder::kByTime}};
    CLI::App* const run = app.add_subcommand("run", "Plays worlds and shows what reaches the game.");
    run->fallthrough(); // --subject may stand behind the command, too.
    run->add_option("WORLD", options.worlds, "Files, or names of shipped worlds; a tour of six without any");
    run->add_option("--format", options.format, "What to print: text, json, html or none; text unless told")
        ->transform(CLI::CheckedTransformer(formats).description(""))
        ->type_name("FORMAT");
    run->add_option("--order", options.order, "How text is ordered: request or time; request unless told")
        ->transform(CLI::CheckedTransformer(orders).description(""))
        ->type_name("ORDER");
    run->add_option_function<std::string>(
           "--seed",
           [&options](const std::string& text) {
               if (!ReadSeed(text, options.seed)) {
                   throw CLI::ValidationError("--seed",
                                              "\"" + text + "\" is no seed; use an integer from 0 on, or random");
               }
           },
           "What decides where chance does: a number, or random; the world's own unless told")
        ->type_name("SEED");
    run->add_option("--config", options.config, "The core's configuration, a JSON file")->type_name("FILE");
    run->add_option("--plugin", options.plugin, "The plugin library to load; the one of this build unless told")
        ->type_name("FILE");
    run->add_flag("--show-tokens", options.showTokens, "Show access tokens");
    return run;
}

// An option of the commands that print text or JSON.
void AddJson(CLI::App& command, bool& json) {
    static const std::vector<std::pair<std::string, bool>> formats{{"text", false}, {"json", true}};
    command.add_option("--format", json, "What to print: text or json; text unless told")
        ->transform(CLI::CheckedTransformer(formats).description(""))
        ->type_name("FORMAT");
}

// Only `run` loads a library, and it loads one. CLI11 can say so by itself, but then says so in its help, too.
void CheckSubject(const CLI::App& app, const CLI::App& run) {
    if (app.count("--subject") == 0) {
        return;
    }
    if (!run.parsed()) {
        throw CLI::ExcludesError("--subject", "every command but run");
    }
    if (run.count("--plugin") != 0) {
        throw CLI::ExcludesError("--plugin", "--subject");
    }
}

} // namespace

std::optional<Command> ParseCommandLine(int argc, char** argv, int& exitStatus) {
    CLI::App app("Tries the Facebook channel of the Vorn game SDK offline.", "vornsim");
    app.require_subcommand(1);
    app.set_version_flag("--version", "vornsim 5.30.001.7206");
    app.footer(kFooter);

    RunOptions run;
    run.plugin = PluginOfThisBuild();
    app.add_option("--subject", run.subject,
                   "What `run` plays against: a VornFacebook.xcframework, a framework in it, or the binary in that")
        ->type_name("PATH");
    const CLI::App* const runCommand = AddRun(app, run);

    WorldsOptions worlds;
    CLI::App* const worldsCommand =
        app.add_subcommand("worlds", "Lists the shipped worlds and the questions they answer.");
    AddJson(*worldsCommand, worlds.json);

    NewOptions newWorld;
    CLI::App* const newCommand = app.add_subcommand("new", "Writes a world to begin with: NAME.world.json.");
    newCommand->add_option("NAME", newWorld.name, "The world's name, or a path")->required();

    ExplainOptions explain;
    CLI::App* const explainCommand = app.add_subcommand("explain", "Tells what a result means, and what to check.");
    explainCommand->add_option("METHOD", explain.method, "The result's methodNameID, or a request's name")->required();
    explainCommand->add_option("CODE", explain.code, "Its retCode")->required();
    explainCommand->add_option("THIRDCODE", explain.thirdCode, "Its thirdCode");
    explainCommand->add_option("TEXT", explain.text, "Its retMsg or thirdMsg");
    AddJson(*explainCommand, explain.json);

    DoctorOptions doctor;
    CLI::App* const doctorCommand =
        app.add_subcommand("doctor", "Checks how a game integrates the plugin: an Info.plist, an app, a framework.");
    doctorCommand->add_option("PATH", doctor.path, "An Info.plist, an .app folder, a framework")->required();
    AddJson(*doctorCommand, doctor.json);

    try {
        app.parse(argc, argv);
        CheckSubject(app, *runCommand);
    } catch (const CLI::ParseError& error) {
        std::ostringstream problem; // It repeats what was typed, which must not reach the terminal as it is.
        exitStatus = app.exit(error, std::cout, problem) == 0 ? kGood : kBadInput;
        std::cerr << VisibleText(problem.str());
        return std::nullopt;
    }
    if (runCommand->parsed()) {
        return run;
    }
    if (worldsCommand->parsed()) {
        return worlds;
    }
    if (newCommand->parsed()) {
        return newWorld;
    }
    if (explainCommand->parsed()) {
        return explain;
    }
    return doctor;
}

} // namespace Tarvik::Vorn::Simulator
