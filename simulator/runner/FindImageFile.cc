#include "Runner.h"

#include "../doctor/FileBytes.h"
#include "ImageLayout.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Runner {
namespace {

namespace fs = std::filesystem;

// The name of the binary in a framework: that of its folder.
fs::path BinaryIn(const fs::path& framework) {
    return framework / framework.stem();
}

// The path without slashes at its end, which would hide the last name.
fs::path Trimmed(const std::string& path) {
    const size_t end = path.find_last_not_of('/');
    return end == std::string::npos ? fs::path("/") : fs::path(path.substr(0, end + 1));
}

// The frameworks in the folders of an xcframework, in alphabetical order.
std::vector<fs::path> FrameworksIn(const fs::path& xcframework) {
    std::vector<fs::path> frameworks;
    std::error_code failure;
    for (const fs::directory_entry& library : fs::directory_iterator(xcframework, failure)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(library.path(), failure)) {
            if (entry.path().extension() == ".framework") {
                frameworks.push_back(entry.path());
            }
        }
    }
    std::ranges::sort(frameworks);
    return frameworks;
}

bool HasSliceThatRuns(const fs::path& binary) {
    const auto bytes = Simulator::Doctor::ReadFileBytes(binary.string(), kLargestFile);
    const auto* const text = std::get_if<std::string>(&bytes);
    return text != nullptr && std::holds_alternative<ImageLayout>(ReadImageLayout(*text));
}

} // namespace

std::optional<LocatedError> FindImageFile(const std::string& path, std::string& file) {
    const fs::path asked = Trimmed(path);
    std::error_code failure;
    if (!fs::exists(asked, failure)) {
        return LocatedError{path, 0, 0, "there is no such file or folder",
                            "name a VornFacebook.xcframework, a framework in it, or the binary in that"};
    }
    if (!fs::is_directory(asked, failure)) {
        file = asked.string();
        return std::nullopt;
    }
    if (asked.extension() == ".framework") {
        file = BinaryIn(asked).string();
        return std::nullopt;
    }
    const std::vector<fs::path> frameworks = FrameworksIn(asked);
    const auto found =
        std::ranges::find_if(frameworks, [](const fs::path& each) { return HasSliceThatRuns(BinaryIn(each)); });
    if (found == frameworks.end()) {
        return LocatedError{path, 0, 0, "no framework in it has code for the iOS simulator on x86_64",
                            "use a VornFacebook.xcframework as it was received, or `make package` for a new one"};
    }
    file = BinaryIn(*found).string();
    return std::nullopt;
}

} // namespace Tarvik::Vorn::Runner
