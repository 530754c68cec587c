#include "MachOFile.h"

#include "FindingText.h"
#include "MachOFormat.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr uint32_t kUniversalMagic = 0xCAFEBABE; // Big-endian, as everything in the universal header.
constexpr uint32_t kUniversal64Magic = 0xCAFEBABF;
constexpr uint32_t kImageMagic = 0xFEEDFACF;
constexpr uint32_t kImage32Magic = 0xFEEDFACE;
constexpr uint32_t kMaxSlices = 16; // The same magic begins a Java class, whose number here is larger.

constexpr uint32_t kFileTypeDebugBundle = 10;
constexpr uint64_t kSymbolSize = 16;

// More load commands.
constexpr uint32_t kCommandSymbols = 0x02;
constexpr uint32_t kCommandLoadLibrary = 0x0C;
constexpr uint32_t kCommandInstallName = 0x0D;
constexpr uint32_t kCommandLoadWeakLibrary = 0x80000018;
constexpr uint32_t kCommandRunPath = 0x8000001C;
constexpr uint32_t kCommandSignature = 0x1D;
constexpr uint32_t kCommandReexportLibrary = 0x8000001F;
constexpr uint32_t kCommandLoadLazyLibrary = 0x20;
constexpr uint32_t kCommandLoadUpwardLibrary = 0x80000023;
constexpr uint32_t kCommandOldestIOS = 0x25;
constexpr uint32_t kCommandBuildVersion = 0x32;
constexpr uint32_t kCommandExportTrie = 0x80000033;

constexpr uint32_t kSectionOfTexts = 0x02;
constexpr auto kZeroFilledSections = std::to_array<uint32_t>({0x01, 0x0C, 0x12});

constexpr unsigned kSymbolForDebuggers = 0xE0;
constexpr unsigned kSymbolType = 0x0E;
constexpr unsigned kSymbolUndefined = 0x00;
constexpr unsigned kSymbolInSection = 0x0E;
constexpr unsigned kSymbolExternal = 0x01;

// Symbols may share the end of one name; a table of nothing but long ones would take quadratic time.
constexpr uint64_t kMaxNameBytes = uint64_t{256} << 20U;

struct Table {
    uint64_t offset = 0;
    uint64_t size = 0;
};

struct SymbolTable {
    uint64_t symbols = 0;
    uint64_t count = 0;
    uint64_t names = 0;
    uint64_t namesSize = 0;
};

class ImageReader {
public:
    ImageReader(std::string_view bytes, uint64_t start) : mBytes(bytes), mStart(start), mReader(bytes, start) {
        mImage.bytes = bytes;
    }

    std::variant<MachOImage, ByteError> Read() {
        ReadHeader();
        if (mImage.fileType != kFileTypeDebugBundle && !mReader.failed()) {
            ReadCommands();
            ReadSymbols();
            ReadExports();
        }
        if (mReader.failed()) {
            return *mReader.error();
        }
        return std::move(mImage);
    }

private:
    void ReadHeader() {
        const uint32_t magic = mReader.U32(0);
        if (magic == kImage32Magic) {
            return mReader.Fail(0, "the slice is one of 32 bits, which no system since iOS 11 runs");
        }
        if (magic != kImageMagic) {
            return mReader.Fail(0, "no Mach-O image of 64 bits begins here");
        }
        mImage.processor = mReader.U32(4);
        mImage.fileType = mReader.U32(12);
        mCommands = mReader.U32(16);
        mCommandBytes = mReader.U32(20);
        mReader.Part(kHeaderSize, mCommandBytes);
    }

    void ReadCommands() {
        uint64_t at = kHeaderSize;
        const uint64_t end = kHeaderSize + mCommandBytes;
        for (uint32_t index = 0; index < mCommands && !mReader.failed(); ++index) {
            const uint64_t size = at + 8 <= end ? mReader.U32(at + 4) : 0;
            if (size < 8 || size > end - at) {
                return mReader.Fail(at, "load command " + std::to_string(index) + " of " + std::to_string(mCommands) +
                                            " is outside of the load commands");
            }
            mImage.commands.push_back({mReader.U32(at), at, size});
            ByteReader command(mBytes.substr(at, size), mStart + at);
            ReadCommand(mImage.commands.back().kind, command);
            if (command.failed()) {
                mReader.Fail(command.error()->offset - mStart, command.error()->message);
            }
            at += size;
        }
    }

    void ReadCommand(uint32_t kind, ByteReader& command) {
        switch (kind) {
        case kCommandSegment:
            return ReadSegment(command);
        case kCommandInstallName:
            mImage.installName = command.Text(command.U32(8));
            return;
        case kCommandLoadLibrary:
        case kCommandReexportLibrary:
        case kCommandLoadUpwardLibrary:
            mImage.libraries.push_back({command.Text(command.U32(8)), true});
            return;
        case kCommandLoadWeakLibrary:
        case kCommandLoadLazyLibrary:
            mImage.libraries.push_back({command.Text(command.U32(8)), false});
            return;
        case kCommandRunPath:
            mImage.runPaths.push_back(command.Text(command.U32(8)));
            return;
        case kCommandBuildVersion:
            mImage.platform = command.U32(8);
            mImage.minimumSystem = command.U32(12);
            return;
        case kCommandOldestIOS:
            mImage.platform = mImage.processor == kProcessorX86 ? kPlatformSimulator : kPlatformIOS;
            mImage.minimumSystem = command.U32(8);
            return;
        case kCommandSignature:
            mReader.Part(command.U32(8), command.U32(12));
            mImage.hasSignature = command.U32(12) != 0;
            return;
        case kCommandSymbols:
            return RememberSymbols(command);
        case kCommandDyldInfo:
        case kCommandDyldInfoOnly:
            return RememberExports(command, {command.U32(40), command.U32(44)});
        case kCommandExportTrie:
            return RememberExports(command, {command.U32(8), command.U32(12)});
        default:
            return;
        }
    }

    // A second table would be read in addition, and a thousand of them a thousand times.
    void RememberSymbols(ByteReader& command) {
        if (mSymbols) {
            return command.Fail(0, "there is a second table of symbols");
        }
        mSymbols = SymbolTable{command.U32(8), command.U32(12), command.U32(16), command.U32(20)};
    }

    void RememberExports(ByteReader& command, Table table) {
        if (mExports) {
            return command.Fail(0, "there is a second table of exports");
        }
        mExports = table;
    }

    void ReadSegment(ByteReader& command) {
        mReader.Part(command.U64(40), command.U64(48));
        const uint32_t sections = command.U32(64);
        for (uint32_t index = 0; index < sections && !command.failed() && !mReader.failed(); ++index) {
            ReadSection(command, kSegmentSize + kSectionSize * index);
        }
    }

    void ReadSection(ByteReader& command, uint64_t at) {
        const std::string_view name = FixedText(command.Part(at, 16));
        const uint64_t size = command.U64(at + 40);
        const uint32_t offset = command.U32(at + 48);
        const uint32_t type = command.U32(at + 64) & kSectionTypeMask;
        mSections += 1;
        if (command.failed() || std::ranges::find(kZeroFilledSections, type) != kZeroFilledSections.end()) {
            return;
        }
        const std::string_view contents = mReader.Part(offset, size);
        if (type == kSectionOfTexts) {
            mImage.textSections.push_back(contents);
        }
        mImage.hasClassList = mImage.hasClassList || (name == "__objc_classlist" && size != 0);
    }

    void ReadSymbols() {
        if (!mSymbols || mReader.failed()) {
            return;
        }
        ByteReader table(mReader.Part(mSymbols->symbols, mSymbols->count * kSymbolSize), mStart + mSymbols->symbols);
        ByteReader names(mReader.Part(mSymbols->names, mSymbols->namesSize), mStart + mSymbols->names);
        uint64_t nameBytes = 0;
        for (uint64_t index = 0; index < mSymbols->count && !mReader.failed(); ++index) {
            const uint64_t at = index * kSymbolSize;
            const unsigned kind = table.U8(at + 4);
            const unsigned section = table.U8(at + 5);
            if ((kind & kSymbolForDebuggers) != 0) {
                continue;
            }
            if ((kind & kSymbolType) == kSymbolInSection && (section == 0 || section > mSections)) {
                return mReader.Fail(mSymbols->symbols + at, "the symbol is said to be in section " +
                                                                std::to_string(section) + " of " +
                                                                std::to_string(mSections));
            }
            const std::string_view name = names.Text(table.U32(at));
            nameBytes += name.size();
            if (names.failed() || nameBytes > kMaxNameBytes) {
                return mReader.Fail(mSymbols->symbols + at, "the symbol's name is outside of the names, or too long");
            }
            mImage.symbols.push_back({name, (kind & kSymbolType) != kSymbolUndefined, (kind & kSymbolExternal) != 0});
        }
    }

    // Without a table of exports dyld would look into the symbols.
    void ReadExports() {
        if (mReader.failed()) {
            return;
        }
        if (mExports) {
            ByteReader trie(mReader.Part(mExports->offset, mExports->size), mStart + mExports->offset);
            mImage.exports = ReadExportTrie(trie);
            if (trie.failed()) {
                mReader.Fail(trie.error()->offset - mStart, trie.error()->message);
            }
            return;
        }
        for (const MachOSymbol& symbol : mImage.symbols) {
            if (symbol.isDefined && symbol.isExternal) {
                mImage.exports.emplace(symbol.name, std::string_view());
            }
        }
    }

    std::string_view mBytes;
    uint64_t mStart;
    ByteReader mReader;
    MachOImage mImage;
    uint32_t mCommands = 0;
    uint64_t mCommandBytes = 0;
    uint64_t mSections = 0;
    std::optional<SymbolTable> mSymbols;
    std::optional<Table> mExports;
};

std::variant<MachOFile, ByteError> ParseUniversal(std::string_view bytes, bool isLong) {
    ByteReader reader(bytes);
    const uint32_t count = reader.BigEndian32(4);
    if (count == 0 || count > kMaxSlices) {
        return ByteError{4, "the file claims to hold " + std::to_string(count) + " slices"};
    }
    MachOFile file;
    for (uint32_t index = 0; index < count; ++index) {
        const uint64_t at = 8 + index * (isLong ? uint64_t{32} : uint64_t{20});
        const uint32_t processor = reader.BigEndian32(at);
        const uint64_t offset = isLong ? reader.BigEndian64(at + 8) : reader.BigEndian32(at + 8);
        const uint64_t size = isLong ? reader.BigEndian64(at + 16) : reader.BigEndian32(at + 12);
        const std::string_view slice = reader.Part(offset, size);
        if (reader.failed()) {
            return ByteError{at, "slice " + std::to_string(index) + " of " + std::to_string(count) +
                                     " is outside of the file"};
        }
        std::variant<MachOImage, ByteError> image = ImageReader(slice, offset).Read();
        if (const auto* error = std::get_if<ByteError>(&image)) {
            return *error;
        }
        file.images.push_back(std::get<MachOImage>(std::move(image)));
        if (file.images.back().processor != processor) {
            return ByteError{at, "the slice is for another processor than the table of slices says"};
        }
    }
    return file;
}

} // namespace

bool MachOImage::HasText(std::string_view text) const {
    const std::string whole = std::string(text) + '\0';
    return std::ranges::any_of(textSections, [&whole](std::string_view section) {
        return section.starts_with(whole) || section.find('\0' + whole) != std::string_view::npos;
    });
}

bool LooksLikeMachO(std::string_view bytes) {
    ByteReader reader(bytes);
    const uint32_t bigEndian = reader.BigEndian32(0);
    const uint32_t littleEndian = reader.U32(0);
    return !reader.failed() && (bigEndian == kUniversalMagic || bigEndian == kUniversal64Magic ||
                                littleEndian == kImageMagic || littleEndian == kImage32Magic);
}

std::variant<MachOFile, ByteError> ParseMachO(std::string_view bytes) {
    ByteReader reader(bytes);
    const uint32_t magic = reader.BigEndian32(0);
    if (magic == kUniversalMagic || magic == kUniversal64Magic) {
        return ParseUniversal(bytes, magic == kUniversal64Magic);
    }
    std::variant<MachOImage, ByteError> image = ImageReader(bytes, 0).Read();
    if (const auto* error = std::get_if<ByteError>(&image)) {
        return *error;
    }
    MachOFile file;
    file.images.push_back(std::get<MachOImage>(std::move(image)));
    return file;
}

std::string ProcessorName(uint32_t processor) {
    switch (processor) {
    case kProcessorArm64:
        return "arm64";
    case kProcessorX86:
        return "x86_64";
    default:
        return "processor " + Hexadecimal(processor);
    }
}

std::string PlatformName(uint32_t platform) {
    switch (platform) {
    case 1:
        return "macOS";
    case kPlatformIOS:
        return "iOS";
    case 6:
        return "Mac Catalyst";
    case kPlatformSimulator:
        return "iOS simulator";
    default:
        return "platform " + std::to_string(platform);
    }
}

std::string SystemVersionText(uint32_t version) {
    const std::string text = std::to_string(version >> 16U) + "." + std::to_string(version >> 8U & 0xFFU);
    const uint32_t patch = version & 0xFFU;
    return patch == 0 ? text : text + "." + std::to_string(patch);
}

} // namespace Tarvik::Vorn::Simulator::Doctor
