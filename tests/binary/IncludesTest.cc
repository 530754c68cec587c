// Dependencies point one way: nothing that is shipped includes what only this repository's host build has.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

std::string_view WithoutBlanksInFront(std::string_view text) {
    const size_t start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// What stands in the quotes or brackets of an include or import line; empty for every other line.
std::string IncludeOf(std::string_view line) {
    line = WithoutBlanksInFront(line);
    if (!line.starts_with('#')) {
        return "";
    }
    line = WithoutBlanksInFront(line.substr(1));
    if (!line.starts_with("include") && !line.starts_with("import")) {
        return "";
    }
    const size_t open = line.find_first_of("<\"");
    const size_t close = line.find_first_of(">\"", open == std::string_view::npos ? open : open + 1);
    return close == std::string_view::npos ? "" : std::string(line.substr(open + 1, close - open - 1));
}

// The files that `text` includes or imports, in order, as they are named there.
std::vector<std::string> IncludesOf(const std::string& text) {
    std::vector<std::string> includes;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        const std::string include = IncludeOf(line);
        if (!include.empty()) {
            includes.push_back(include);
        }
    }
    return includes;
}

std::vector<fs::path> FilesBelow(const fs::path& directory) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    return files;
}

bool IsHeader(const fs::path& file) {
    return file.extension() == ".h" || file.extension() == ".hpp";
}

bool IsSource(const fs::path& file) {
    static const std::set<std::string> kExtensions = {".h", ".hpp", ".c", ".cc", ".cpp", ".m", ".mm", ".inc"};
    return kExtensions.contains(file.extension().string());
}

const fs::path kRoot = VORN_SOURCE_DIRECTORY;

// The names, without directories, of all headers that shipped files must not include.
std::set<std::string> HostHeaders() {
    std::set<std::string> names;
    for (const char* const directory : {"core", "simulator", "tests", "platform/linux"}) {
        for (const fs::path& file : FilesBelow(kRoot / directory)) {
            // platform/linux/include stands for headers that the device has as well.
            const bool isSystems = fs::relative(file, kRoot / "platform/linux/include").begin()->string() != "..";
            if (IsHeader(file) && !isSystems) {
                names.insert(file.filename().string());
            }
        }
    }
    return names;
}

bool IsHostOnly(const std::string& include, const std::set<std::string>& hostHeaders) {
    const std::string name = fs::path(include).filename().string();
    return name.ends_with("+Control.h") || hostHeaders.contains(name);
}

TEST(Includes, AreFoundInEveryForm) {
    EXPECT_THAT(IncludesOf("#include \"a.h\"\n"
                           "  #  import <Kit/b.h> // c\n"
                           "#import\t\"d/e+Control.h\"\n"
                           "// #include \"comment.h\"\n"
                           "text #include \"text.h\"\n"
                           "#define X \"x.h\"\n"
                           "#include MACRO\n"
                           "#include \"unfinished\n"
                           "#include <f>"),
                ElementsAre("a.h", "Kit/b.h", "d/e+Control.h", "f"));
}

TEST(Includes, OfTheHostAreKnownByName) {
    const std::set<std::string> headers = HostHeaders();

    EXPECT_THAT(headers, Contains("VornLogSink.h"));
    EXPECT_THAT(headers, Contains("PluginTest.h"));
    EXPECT_THAT(headers, Contains("MainQueue+Control.h"));
    EXPECT_THAT(headers, Not(Contains("dispatch.h")));
    EXPECT_THAT(headers, Not(Contains("VornDefine.h")));
    EXPECT_TRUE(IsHostOnly("../core/VornLogSink.h", headers));
    EXPECT_TRUE(IsHostOnly("FBSDKCoreKit/Anything+Control.h", headers));
    EXPECT_FALSE(IsHostOnly("VornDefine.h", headers));
}

TEST(Includes, OfShippedFilesHaveNothingOfTheHost) {
    const std::set<std::string> hostHeaders = HostHeaders();
    std::vector<std::string> violations;
    size_t includes = 0;

    for (const char* const directory : {"ShareDir", "VornFacebook"}) {
        for (const fs::path& file : FilesBelow(kRoot / directory)) {
            if (!IsSource(file)) {
                continue;
            }
            std::ifstream stream(file, std::ios::binary);
            const std::string text{std::istreambuf_iterator<char>(stream), {}};
            for (const std::string& include : IncludesOf(text)) {
                includes += 1;
                if (IsHostOnly(include, hostHeaders)) {
                    violations.push_back(fs::relative(file, kRoot).string() + " includes " + include);
                }
            }
        }
    }

    EXPECT_THAT(violations, IsEmpty());
    EXPECT_GT(includes, 20u) << "hardly any include was seen in " << kRoot;
}

} // namespace
} // namespace Tarvik::Vorn::Test
