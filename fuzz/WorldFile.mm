// The simulator and a world's file: the input is the file. What cannot be used is refused with its place; what can be
// used and is short is played twice, with the same outcome, and all three reports of it are sound.

#include "Report.h"
#include "Simulation.h"
#include "World.h"
#include "support/FuzzTarget.h"
#include "support/Texts.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace Tarvik::Vorn::Fuzz {
namespace {

using namespace Simulator;

constexpr uint64_t kMostSteps = 64; // A long world shows nothing that a short one cannot.

const std::filesystem::path& WorldFolder() {
    static const std::filesystem::path folder = VORN_WORLDS;
    return folder;
}

// With the rounds of repeats; stops counting when there are too many.
uint64_t StepsIn(const std::vector<Step>& steps) {
    uint64_t count = 0;
    for (const Step& step : steps) {
        if (const auto* repeat = std::get_if<RepeatStep>(&step.action)) {
            const uint64_t inside = StepsIn(repeat->steps) + 1;
            count += repeat->times > kMostSteps ? kMostSteps + 1 : repeat->times * inside;
        }
        count += 1;
        if (count > kMostSteps) {
            break;
        }
    }
    return count;
}

std::string Printed(const std::function<void(std::FILE*)>& print) {
    char* text = nullptr;
    size_t size = 0;
    std::FILE* const out = open_memstream(&text, &size);
    print(out);
    std::fclose(out);
    std::string printed(text, size);
    std::free(text);
    return printed;
}

// Where two texts begin to differ.
std::string Difference(const std::string& a, const std::string& b) {
    constexpr size_t kShown = 100;
    const size_t at = static_cast<size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
    const size_t from = at > kShown ? at - kShown : 0;
    return a.substr(from, 2 * kShown) + "\nand: " + b.substr(from, 2 * kShown);
}

// Files that a world names are beside it.
RunReport Played(const World& world) {
    const std::filesystem::path start = std::filesystem::current_path();
    std::filesystem::current_path(WorldFolder());
    RunReport report;
    @autoreleasepool {
        report = PlayWorld(world);
    }
    std::filesystem::current_path(start);
    return report;
}

void RequireGoodReports(const World& world) {
    const std::vector<RunReport> runs = {Played(world)};
    const std::string json = Printed([&](std::FILE* out) { PrintJson(runs, out); });
    RequireJsonObject(json);
    RequirePrintable(Printed([&](std::FILE* out) { PrintText(runs, TextStyle(), out); }));
    RequirePrintable(Printed([&](std::FILE* out) { PrintHtml(runs, out); }));

    const std::vector<RunReport> again = {Played(world)};
    const std::string jsonAgain = Printed([&](std::FILE* out) { PrintJson(again, out); });
    Require(jsonAgain == json, "a world plays the same every time", Difference(json, jsonAgain));
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    static const std::string problem = LoadChannel(VORN_PLUGIN);
    Require(problem.empty(), "the plugin can be loaded", problem);
    const std::string path = (WorldFolder() / "input.world.json").string();
    const std::string text(TextOfInput(data, size));
    LocatedError error;
    const std::optional<World> world = ParseWorld(text, path, error);
    if (!world) {
        RequireGoodError(error, path, text);
        return 0;
    }
    if (StepsIn(world->steps) + StepsIn(world->setting) <= kMostSteps) {
        RequireGoodReports(*world);
    }
    return 0;
}
