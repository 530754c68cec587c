#include "ShippedWorlds.h"

#include "NearestWord.h"
#include "VornServices.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr std::string_view kEnding = ".world.json";

std::string WorldsFolder() {
    return SharedFolder() + "/worlds";
}

std::string NameOf(const std::string& path) {
    std::string name = std::filesystem::path(path).filename().string();
    name.resize(name.size() - kEnding.size());
    return name;
}

void PrintWorldsAsJson(const std::vector<World>& worlds, std::FILE* out) {
    VornJsonWriter writer;
    std::string list;
    for (const World& world : worlds) {
        writer.StartJsonConvert();
        writer.convert("name", world.name.c_str(), kJsonTextFlag);
        writer.convert("question", world.question.c_str(), kJsonTextFlag);
        writer.convert("path", world.path.c_str(), kJsonTextFlag);
        writer.EndJsonConvert();
        list += (list.empty() ? "\n" : ",\n") + writer.GetJsonString().toString();
    }
    std::fprintf(out, "{\"format\":1,\"worlds\":[%s\n]}\n", list.c_str());
}

} // namespace

std::string SharedFolder() {
    std::error_code unknown;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return (program.parent_path().parent_path() / "share" / "vornsim").string();
}

std::vector<std::string> ShippedWorlds() {
    std::vector<std::string> paths;
    std::error_code unknown;
    for (const auto& file : std::filesystem::directory_iterator(WorldsFolder(), unknown)) {
        if (file.path().string().ends_with(kEnding)) {
            paths.push_back(file.path().string());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string FindWorld(const std::string& nameOrPath, std::string& error) {
    std::error_code unknown;
    if (std::filesystem::exists(nameOrPath, unknown)) {
        return nameOrPath;
    }
    std::string shipped = WorldsFolder() + "/" + nameOrPath + std::string(kEnding);
    const bool isName = nameOrPath.find('/') == std::string::npos;
    if (isName && std::filesystem::exists(shipped, unknown)) {
        return shipped;
    }
    std::vector<std::string> names;
    for (const std::string& path : ShippedWorlds()) {
        names.push_back(NameOf(path));
    }
    const std::string_view nearest = NearestWord(nameOrPath, {names.begin(), names.end()});
    error = nameOrPath + ": there is no such file and no shipped world of that name; " +
            (nearest.empty() ? "" : "did you mean \"" + std::string(nearest) + "\"? ") + "`vornsim worlds` lists them";
    return "";
}

int ListWorlds(bool json, std::FILE* out, std::FILE* err) {
    std::vector<World> worlds;
    size_t width = 0;
    for (const std::string& path : ShippedWorlds()) {
        LocatedError error;
        std::optional<World> world = LoadWorld(path, error);
        if (!world) {
            std::fprintf(err, "vornsim: %s\n", error.text().c_str());
            return 2;
        }
        width = std::max(width, world->name.size());
        worlds.push_back(std::move(*world));
    }
    if (worlds.empty()) {
        std::fprintf(err, "vornsim: there are no worlds in %s; the program must stand beside its folder \"share\"\n",
                     WorldsFolder().c_str());
        return 2;
    }
    if (json) {
        PrintWorldsAsJson(worlds, out);
        return 0;
    }
    for (const World& world : worlds) {
        std::fprintf(out, "%-*s  %s\n", static_cast<int>(width), world.name.c_str(), world.question.c_str());
    }
    return 0;
}

} // namespace Tarvik::Vorn::Simulator
