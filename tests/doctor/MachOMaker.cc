#include "MachOMaker.h"

#include <cstddef>
#include <string_view>

namespace Tarvik::Vorn::Test {
namespace {

constexpr size_t kHeaderSize = 32;

void Add32(std::string& bytes, uint32_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(value >> shift & 0xFFU);
    }
}

void Add64(std::string& bytes, uint64_t value) {
    Add32(bytes, static_cast<uint32_t>(value));
    Add32(bytes, static_cast<uint32_t>(value >> 32U));
}

void AddBigEndian32(std::string& bytes, uint32_t value) {
    for (unsigned shift = 32; shift > 0; shift -= 8) {
        bytes += static_cast<char>(value >> (shift - 8) & 0xFFU);
    }
}

void AddFixedText(std::string& bytes, std::string text) {
    text.resize(16);
    bytes += text;
}

// A load command: its kind, its size, its fields.
std::string Command(uint32_t kind, std::string fields) {
    fields.resize((fields.size() + 7) / 8 * 8);
    std::string command;
    Add32(command, kind);
    Add32(command, static_cast<uint32_t>(8 + fields.size()));
    return command + fields;
}

std::string LibraryCommand(uint32_t kind, const std::string& path) {
    std::string fields;
    Add32(fields, 24); // Where the path begins.
    fields.append(12, '\0');
    return Command(kind, fields + path + '\0');
}

std::string RunPathCommand(const std::string& path) {
    std::string fields;
    Add32(fields, 12);
    return Command(0x8000001C, fields + path + '\0');
}

// A number of seven bits a byte that always has three bytes.
std::string Uleb3(size_t value) {
    std::string bytes;
    bytes += static_cast<char>(0x80U | (value & 0x7FU));
    bytes += static_cast<char>(0x80U | (value >> 7U & 0x7FU));
    bytes += static_cast<char>(value >> 14U & 0x7FU);
    return bytes;
}

// A root with one leaf for each name.
std::string ExportTable(const std::vector<std::string>& names) {
    size_t rootSize = 2;
    for (const std::string& name : names) {
        rootSize += name.size() + 1 + 3;
    }
    std::string root;
    root += '\0'; // The empty name is no export.
    root += static_cast<char>(names.size());
    std::string leaves;
    for (const std::string& name : names) {
        root += name + '\0' + Uleb3(rootSize + leaves.size());
        leaves += std::string("\x02\x00\x00\x00", 4); // Two bytes of flags and address; no children.
    }
    return root + leaves;
}

// What follows the load commands, and where its parts are in it.
struct Contents {
    std::string bytes;
    size_t texts = 0;
    size_t textsSize = 0;
    size_t classList = 0;
    size_t classListSize = 0;
    size_t symbols = 0;
    uint32_t symbolCount = 0;
    size_t names = 0;
    size_t namesSize = 0;
    size_t exports = 0;
    size_t exportsSize = 0;
    size_t signature = 0;
};

void AddSymbols(Contents& contents, const ImageRecipe& recipe) {
    std::string table;
    std::string names(1, '\0');
    const auto add = [&](const std::string& name, char kind, char section) {
        Add32(table, static_cast<uint32_t>(names.size()));
        table += kind;
        table += section;
        table.append(10, '\0');
        names += name + '\0';
        contents.symbolCount += 1;
    };
    for (const std::string& name : recipe.locals) {
        add(name, 0x0E, 1);
    }
    for (const std::string& name : recipe.exports) {
        add(name, 0x0F, 1);
    }
    for (const std::string& name : recipe.imports) {
        add(name, 0x01, 0);
    }
    contents.symbols = contents.bytes.size();
    contents.bytes += table;
    contents.names = contents.bytes.size();
    contents.namesSize = names.size();
    contents.bytes += names;
}

Contents ContentsOf(const ImageRecipe& recipe) {
    Contents contents;
    for (const std::string& text : recipe.texts) {
        contents.bytes += text + '\0';
    }
    contents.textsSize = contents.bytes.size();
    contents.classList = contents.bytes.size();
    contents.classListSize = recipe.hasClassList ? 8 : 0;
    contents.bytes.append(contents.classListSize, '\0');
    AddSymbols(contents, recipe);
    contents.exports = contents.bytes.size();
    const std::string table = ExportTable(recipe.exports);
    contents.exportsSize = table.size();
    contents.bytes += table;
    contents.signature = contents.bytes.size();
    contents.bytes.append(16, '\0');
    return contents;
}

std::string Section(const std::string& name, size_t offset, size_t size, uint32_t type) {
    std::string section;
    AddFixedText(section, name);
    AddFixedText(section, "__TEXT");
    Add64(section, offset);
    Add64(section, size);
    Add32(section, static_cast<uint32_t>(offset));
    section.append(12, '\0');
    Add32(section, type);
    section.append(12, '\0');
    return section;
}

std::string TwoNumbers(uint32_t kind, size_t first, size_t second) {
    std::string fields;
    Add32(fields, static_cast<uint32_t>(first));
    Add32(fields, static_cast<uint32_t>(second));
    return Command(kind, fields);
}

std::string SegmentCommand(const Contents& contents, size_t base) {
    std::string segment;
    AddFixedText(segment, "__TEXT");
    const size_t whole = base + contents.bytes.size();
    Add64(segment, 0);
    Add64(segment, whole);
    Add64(segment, 0);
    Add64(segment, whole);
    Add32(segment, 5);
    Add32(segment, 5);
    Add32(segment, 2); // Sections.
    Add32(segment, 0);
    segment += Section("__cstring", base + contents.texts, contents.textsSize, 2);
    segment += Section("__objc_classlist", base + contents.classList, contents.classListSize, 0);
    return Command(0x19, segment);
}

std::string SymbolsCommand(const Contents& contents, size_t base) {
    std::string fields;
    Add32(fields, static_cast<uint32_t>(base + contents.symbols));
    Add32(fields, contents.symbolCount);
    Add32(fields, static_cast<uint32_t>(base + contents.names));
    Add32(fields, static_cast<uint32_t>(contents.namesSize));
    return Command(0x02, fields);
}

std::vector<std::string> Commands(const ImageRecipe& recipe, const Contents& contents, size_t base) {
    std::vector<std::string> commands{SegmentCommand(contents, base), SymbolsCommand(contents, base)};
    if (!recipe.installName.empty()) {
        commands.push_back(LibraryCommand(0x0D, recipe.installName));
    }
    for (const std::string& path : recipe.libraries) {
        commands.push_back(LibraryCommand(0x0C, path));
    }
    for (const std::string& path : recipe.weakLibraries) {
        commands.push_back(LibraryCommand(0x80000018, path));
    }
    for (const std::string& path : recipe.runPaths) {
        commands.push_back(RunPathCommand(path));
    }
    if (recipe.platform != 0) {
        std::string version;
        Add32(version, recipe.platform);
        Add32(version, recipe.minimumSystem);
        version.append(8, '\0');
        commands.push_back(Command(0x32, version));
    }
    if (recipe.hasExportTable) {
        commands.push_back(TwoNumbers(0x80000033, base + contents.exports, contents.exportsSize));
    }
    if (recipe.hasSignature) {
        commands.push_back(TwoNumbers(0x1D, base + contents.signature, 16));
    }
    return commands;
}

std::string FrameworkPath(const std::string& name) {
    return "@rpath/" + name + ".framework/" + name;
}

} // namespace

ImageRecipe GoodLibrary() {
    ImageRecipe recipe;
    recipe.installName = FrameworkPath("VornFacebook");
    recipe.libraries = {FrameworkPath("VornCore"),
                        "/usr/lib/libobjc.A.dylib",
                        FrameworkPath("FBSDKCoreKit_Basics"),
                        FrameworkPath("FBSDKCoreKit"),
                        FrameworkPath("FBSDKLoginKit"),
                        FrameworkPath("FBSDKShareKit"),
                        FrameworkPath("FBSDKGamingServicesKit")};
    recipe.runPaths = {"@executable_path/Frameworks", "@loader_path/Frameworks"};
    recipe.exports = {"_OBJC_CLASS_$_VornFriendFacebook",
                      "_OBJC_CLASS_$_VornLoginFacebook",
                      "_OBJC_CLASS_$_VornReportFacebook",
                      "_VornFacebookVersionString",
                      "_FBLink_NSBundle_InfoDictionaryProviding",
                      "_FBLink_NSData_FileDataExtracting",
                      "_FBLink_NSFileManager_FileManaging",
                      "_FBLink_NSNotificationCenter_NotificationDelivering",
                      "_FBLink_NSNotificationCenter_NotificationPosting",
                      "_FBLink_NSProcessInfo_MacCatalystDetermining",
                      "_FBLink_NSProcessInfo_OperatingSystemVersionComparing",
                      "_FBLink_NSURLSessionTask_NetworkTask",
                      "_FBLink_NSURLSession_URLSessionProviding",
                      "_FBLink_NSUserDefaults_DataPersisting"};
    recipe.imports = {"_OBJC_CLASS_$_FBSDKLoginManager", "_OBJC_CLASS_$_UIApplication"};
    recipe.texts = {"first", "VornFriendFacebook", "last"};
    return recipe;
}

ImageRecipe GoodSimulatorLibrary(uint32_t processor) {
    ImageRecipe recipe = GoodLibrary();
    recipe.processor = processor;
    recipe.platform = 7;
    recipe.minimumSystem = processor == kArm64 ? 14U << 16U : 13U << 16U;
    return recipe;
}

ImageRecipe GoodProgram() {
    ImageRecipe recipe;
    recipe.fileType = 2;
    recipe.libraries = {FrameworkPath("VornFacebook"), FrameworkPath("VornCore")};
    recipe.runPaths = {"@executable_path/Frameworks"};
    return recipe;
}

ImageRecipe OtherLibrary(const std::string& framework) {
    ImageRecipe recipe;
    recipe.installName = FrameworkPath(framework);
    return recipe;
}

std::string Image(const ImageRecipe& recipe) {
    const Contents contents = ContentsOf(recipe);
    std::string commands;
    for (const std::string& command : Commands(recipe, contents, 0)) {
        commands += command;
    }
    const size_t base = kHeaderSize + commands.size(); // Offsets do not change the commands' sizes.
    const std::vector<std::string> placed = Commands(recipe, contents, base);
    std::string image;
    Add32(image, 0xFEEDFACF);
    Add32(image, recipe.processor);
    Add32(image, 0);
    Add32(image, recipe.fileType);
    Add32(image, static_cast<uint32_t>(placed.size()));
    Add32(image, static_cast<uint32_t>(commands.size()));
    Add64(image, 0);
    for (const std::string& command : placed) {
        image += command;
    }
    return image + contents.bytes;
}

std::string Universal(const std::vector<ImageRecipe>& recipes) {
    std::string header;
    std::string slices;
    AddBigEndian32(header, 0xCAFEBABE);
    AddBigEndian32(header, static_cast<uint32_t>(recipes.size()));
    const size_t base = 8 + 20 * recipes.size();
    for (const ImageRecipe& recipe : recipes) {
        const std::string slice = Image(recipe);
        AddBigEndian32(header, recipe.processor);
        AddBigEndian32(header, 0);
        AddBigEndian32(header, static_cast<uint32_t>(base + slices.size()));
        AddBigEndian32(header, static_cast<uint32_t>(slice.size()));
        AddBigEndian32(header, 0);
        slices += slice;
    }
    return header + slices;
}

std::string GoodSimulatorBinary() {
    return Universal({GoodSimulatorLibrary(kArm64), GoodSimulatorLibrary(kX86)});
}

std::string Patched(std::string bytes, size_t offset, uint32_t value) {
    std::string number;
    Add32(number, value);
    return bytes.replace(offset, number.size(), number);
}

} // namespace Tarvik::Vorn::Test
