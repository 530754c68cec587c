// Reads Mach-O files: thin ones of 64 bits, and universal ones of them. Plain C++, any thread.
//
// Nothing trusts the file: every read is checked, and time and memory stay in proportion to the file's size.
#pragma once

#include "ByteReader.h"
#include "ExportTrie.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

inline constexpr uint32_t kProcessorArm64 = 0x0100000C;
inline constexpr uint32_t kProcessorX86 = 0x01000007; // 64 bits.

inline constexpr uint32_t kFileTypeProgram = 2;
inline constexpr uint32_t kFileTypeLibrary = 6;

inline constexpr uint32_t kPlatformUnknown = 0;
inline constexpr uint32_t kPlatformIOS = 2;
inline constexpr uint32_t kPlatformSimulator = 7;

// A library that the image loads.
struct LoadedLibrary {
    std::string_view path;
    bool isRequired = false; // The system ends the program at launch when it is missing.
};

struct MachOSymbol {
    std::string_view name;
    bool isDefined = false; // In this image; otherwise it is imported.
    bool isExternal = false;
};

// A load command, all of it inside of the image.
struct LoadCommand {
    uint32_t kind = 0;
    uint64_t offset = 0; // In the image.
    uint64_t size = 0;   // At least 8.
};

// One slice. Its texts lie in the bytes that were parsed.
struct MachOImage {
    std::string_view bytes;
    uint32_t processor = 0;
    uint32_t fileType = 0;
    uint32_t platform = kPlatformUnknown;
    uint32_t minimumSystem = 0;        // 13.0.1 is 0x000D0001; 0 without a platform.
    std::vector<LoadCommand> commands; // None of a debug bundle, whose commands speak of another file.
    std::string_view installName;
    std::vector<LoadedLibrary> libraries;
    std::vector<std::string_view> runPaths;
    std::vector<std::string_view> textSections; // Constant C texts, one behind the other.
    bool hasClassList = false;                  // Of Objective-C classes, not empty.
    bool hasSignature = false;
    std::vector<MachOSymbol> symbols; // Without those for debuggers.
    SymbolNames exports;

    bool Exports(std::string_view symbol) const { return exports.contains(symbol); }

    // Whether it holds the constant C text, whole.
    bool HasText(std::string_view text) const;
};

struct MachOFile {
    std::vector<MachOImage> images; // At least one.
};

// Whether bytes begin as a Mach-O file of any kind does.
bool LooksLikeMachO(std::string_view bytes);

// `bytes` are borrowed and must outlive the result.
std::variant<MachOFile, ByteError> ParseMachO(std::string_view bytes);

// "arm64", "x86_64", or a number.
std::string ProcessorName(uint32_t processor);

// "iOS", "iOS simulator", or a number.
std::string PlatformName(uint32_t platform);

// "13.0", "13.0.1".
std::string SystemVersionText(uint32_t version);

} // namespace Tarvik::Vorn::Simulator::Doctor
