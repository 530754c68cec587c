#include "RunCommand.h"

#include "Runner.h"
#include "ShippedWorlds.h"
#include "Simulation.h"
#include "VornConfig.h"
#include "report/VisibleText.h"

#import <Foundation/Foundation.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr uint64_t kProgressInterval = 1000; // Steps.

// Files, worlds and their names may hold anything, and nothing of it may reach the terminal as it is.
void Tell(const std::string& problem) {
    std::fprintf(stderr, "vornsim: %s\n", VisibleText(problem).c_str());
}

int Reject(const std::string& message) {
    Tell(message);
    return kBadInput;
}

// Loads all worlds. Empty with the error printed when one cannot be used.
std::vector<World> LoadWorlds(const std::vector<std::string>& names) {
    std::vector<World> worlds;
    for (const std::string& name : names) {
        std::string error;
        const std::string path = FindWorld(name, error);
        if (path.empty()) {
            Reject(error);
            return {};
        }
        LocatedError located;
        std::optional<World> world = LoadWorld(path, located);
        if (!world) {
            Reject(located.text());
            return {};
        }
        worlds.push_back(std::move(*world));
    }
    return worlds;
}

// One line on a terminal that tells how far a long run has come.
class Progress {
public:
    explicit Progress(bool isTerminal) : mIsTerminal(isTerminal) {}
    ~Progress() {
        if (mIsShown) {
            std::fputs("\r\033[K", stderr);
        }
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Tell(const std::string& world, uint64_t played) {
        if (mIsTerminal && played % kProgressInterval == 0) {
            mIsShown = true;
            std::fprintf(stderr, "\r%s: %llu steps", VisibleLine(world).c_str(),
                         static_cast<unsigned long long>(played));
        }
    }

private:
    bool mIsTerminal;
    bool mIsShown = false;
};

void Print(const std::vector<RunReport>& reports, const RunOptions& options) {
    switch (options.format) {
    case OutputFormat::kText:
        PrintText(reports, {options.order, WantsColor(stdout)}, stdout);
        break;
    case OutputFormat::kJson:
        PrintJson(reports, stdout);
        break;
    case OutputFormat::kHtml:
        PrintHtml(reports, stdout);
        break;
    case OutputFormat::kNone:
        break;
    }
}

// Without a timeline only what went wrong is told.
void PrintProblems(const RunReport& report) {
    if (!report.problem.empty()) {
        Tell(report.name + ": " + report.problem);
    }
    for (const Mismatch& mismatch : report.mismatches) {
        Tell(report.path + ":" + std::to_string(mismatch.line) + ":" + std::to_string(mismatch.column) + ": expected " +
             mismatch.expected + "; found " + mismatch.found);
    }
}

// Plays the worlds one after the other. `tellsProblems`: what does not hold is told at once, and the reports stay empty.
// False when some world does not hold.
bool PlayAll(const std::vector<World>& worlds, SimulationOptions how, bool tellsProblems,
             std::vector<RunReport>& reports) {
    Progress progress(isatty(STDERR_FILENO) == 1); // Its line is gone when this returns.
    const std::filesystem::path start = std::filesystem::current_path();
    bool holds = true;
    for (const World& world : worlds) {
        // Files that a world names are beside it.
        std::filesystem::current_path(std::filesystem::absolute(world.path).parent_path());
        how.played = [&progress, &world](uint64_t played) { progress.Tell(world.name, played); };
        @autoreleasepool {
            reports.push_back(PlayWorld(world, how));
        }
        std::filesystem::current_path(start);
        holds = holds && reports.back().Holds();
        if (tellsProblems) {
            PrintProblems(reports.back());
            reports.back() = {};
        }
    }
    return holds;
}

// Loads what the worlds are to be played against. Empty when all is well.
std::string LoadSubject(const RunOptions& options) {
    if (options.subject.empty()) {
        return LoadChannel(options.plugin);
    }
    std::string binary;
    if (const std::optional<LocatedError> error = Runner::FindImageFile(options.subject, binary)) {
        return error->text();
    }
    if (!Runner::IsImageFile(binary)) {
        return LocatedError{binary, 0, 0, "this is no Mach-O file",
                            "name a VornFacebook.xcframework, or use --plugin for a library for Linux"}
            .text();
    }
    return LoadChannel(binary);
}

} // namespace

bool WantsColor(std::FILE* out) {
    const char* const terminal = std::getenv("TERM");
    const char* const noColor = std::getenv("NO_COLOR");
    return (noColor == nullptr || *noColor == '\0') && terminal != nullptr && std::strcmp(terminal, "dumb") != 0 &&
           isatty(fileno(out)) == 1;
}

int RunWorlds(const RunOptions& options) {
    const std::vector<World> worlds =
        LoadWorlds(options.worlds.empty() ? std::vector<std::string>(kTour.begin(), kTour.end()) : options.worlds);
    if (worlds.empty()) {
        return kBadInput;
    }
    const std::string config =
        options.config.empty() ? options.config : std::filesystem::absolute(options.config).string();
    if (!config.empty()) {
        if (const std::optional<LocatedError> badConfig = LoadConfigFile(config)) {
            return Reject(badConfig->text());
        }
    }
    if (const std::string problem = LoadSubject(options); !problem.empty()) {
        return Reject(problem);
    }

    SimulationOptions how;
    how.seed = options.seed;
    how.showTokens = options.showTokens;
    how.keepsTimeline = options.format != OutputFormat::kNone;
    how.config = config;
    std::vector<RunReport> reports;
    const bool holds = PlayAll(worlds, how, options.format == OutputFormat::kNone, reports);
    Print(reports, options);
    return holds ? kGood : kNotGood;
}

} // namespace Tarvik::Vorn::Simulator
