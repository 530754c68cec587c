// Makes small Mach-O images, byte by byte: as much of a dynamic library as the doctor looks at, and no code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

inline constexpr uint32_t kArm64 = 0x0100000C;
inline constexpr uint32_t kX86 = 0x01000007;

struct ImageRecipe {
    uint32_t processor = kArm64;
    uint32_t fileType = 6; // A dynamic library.
    uint32_t platform = 2; // iOS; 0 leaves the load command out.
    uint32_t minimumSystem = 13U << 16U;
    std::string installName;
    std::vector<std::string> libraries;
    std::vector<std::string> weakLibraries;
    std::vector<std::string> runPaths;
    std::vector<std::string> exports; // Symbols and table of exports.
    std::vector<std::string> locals;  // Symbols that are defined and not exported.
    std::vector<std::string> imports;
    std::vector<std::string> texts;
    bool hasClassList = true;
    bool hasExportTable = true;
    bool hasSignature = true;
};

// The plugin as a device loads it, and as simulators of one processor do: nothing is wrong with them.
ImageRecipe GoodLibrary();
ImageRecipe GoodSimulatorLibrary(uint32_t processor);

// A game's program, which loads the plugin.
ImageRecipe GoodProgram();

// Another framework's library.
ImageRecipe OtherLibrary(const std::string& framework);

std::string Image(const ImageRecipe& recipe);

// A universal file.
std::string Universal(const std::vector<ImageRecipe>& recipes);

// The slices of the plugin for simulators.
std::string GoodSimulatorBinary();

// `bytes` with the 32 bits at `offset` replaced.
std::string Patched(std::string bytes, size_t offset, uint32_t value);

} // namespace Tarvik::Vorn::Test
