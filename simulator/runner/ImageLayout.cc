#include "ImageLayout.h"

#include "../doctor/FindingText.h"
#include "../doctor/MachOFile.h"
#include "../doctor/MachOFormat.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace Tarvik::Vorn::Runner {
namespace {

using namespace Simulator::Doctor;

constexpr uint32_t kCommandChainedFixups = 0x80000034;

constexpr uint32_t kMayWrite = 2;
constexpr uint32_t kMayExecute = 4;
constexpr uint32_t kReadOnlyAfterFixups = 0x10;

constexpr uint32_t kFirstThreadLocalType = 0x11;
constexpr uint32_t kLastThreadLocalType = 0x15;

constexpr uint64_t kExportKindMask = 0x03; // 0: an address of the image.
constexpr uint64_t kExportIsReexport = 0x08;
constexpr uint64_t kExportHasResolver = 0x10;

// The plugin has a tenth of a megabyte. What is larger than this is damaged.
constexpr uint64_t kMaxImageSize = uint64_t{256} << 20U;

class LayoutReader {
public:
    LayoutReader(const MachOImage& image, uint64_t fileOffset)
        : mImage(image), mReader(image.bytes, fileOffset), mFileOffset(fileOffset) {
        mLayout.slice = image.bytes;
        mLayout.fileOffset = fileOffset;
    }

    std::variant<ImageLayout, ByteError> Read() {
        CheckKind();
        EachCommand(&LayoutReader::ReadCommand);
        CheckWhole();
        EachCommand(&LayoutReader::ReadSections);
        ReadExports();
        if (mReader.failed()) {
            return *mReader.error();
        }
        return std::move(mLayout);
    }

private:
    using CommandReader = void (LayoutReader::*)(const LoadCommand& command);

    void CheckKind() {
        if (mImage.fileType != kFileTypeLibrary) {
            mReader.Fail(0, "the image is no dynamic library");
        }
    }

    void EachCommand(CommandReader read) {
        for (const LoadCommand& command : mImage.commands) {
            if (mReader.failed()) {
                return;
            }
            (this->*read)(command);
        }
    }

    void ReadCommand(const LoadCommand& command) {
        const uint64_t at = command.offset;
        switch (command.kind) {
        case kCommandSegment:
            return ReadSegment(at, command.size);
        case kCommandDyldInfo:
        case kCommandDyldInfoOnly:
            mHasFixups = true;
            mLayout.rebases = mReader.Part(mReader.U32(at + 8), mReader.U32(at + 12));
            mLayout.binds = mReader.Part(mReader.U32(at + 16), mReader.U32(at + 20));
            mLayout.weakBinds = mReader.Part(mReader.U32(at + 24), mReader.U32(at + 28));
            mLayout.lazyBinds = mReader.Part(mReader.U32(at + 32), mReader.U32(at + 36));
            return;
        case kCommandChainedFixups:
            return mReader.Fail(at,
                                "the image has chained fixups, which the runner does not apply; link it for iOS 13.0, "
                                "or with -no_fixup_chains");
        default:
            return;
        }
    }

    void ReadSegment(uint64_t at, uint64_t size) {
        Segment segment;
        segment.name = FixedText(mReader.Part(at + 8, 16));
        segment.place = mReader.U64(at + 24); // The address, until all are known.
        segment.size = mReader.U64(at + 32);
        segment.contents = mReader.Part(mReader.U64(at + 40), mReader.U64(at + 48));
        const uint32_t rights = mReader.U32(at + 60);
        const uint32_t flags = mReader.U32(at + 68);
        segment.isExecutable = (rights & kMayExecute) != 0;
        segment.takesFixups = (rights & kMayWrite) != 0;
        segment.isWritable = segment.takesFixups && (flags & kReadOnlyAfterFixups) == 0;
        if (mReader.failed()) {
            return;
        }
        if (segment.size > kMaxImageSize || segment.place > std::numeric_limits<uint64_t>::max() - 2 * kMaxImageSize) {
            return mReader.Fail(at + 24, "the segment is absurdly large or lies absurdly far away");
        }
        if (segment.contents.size() > segment.size || segment.place % kPageSize != 0) {
            return mReader.Fail(at + 24, "the segment is smaller than its contents, or does not begin with a page");
        }
        if (kSegmentSize + kSectionSize * mReader.U32(at + 64) > size) {
            return mReader.Fail(at + 64, "the sections are outside of their load command");
        }
        mLayout.segments.push_back(segment);
    }

    // Places become those from the lowest address on.
    void CheckWhole() {
        if (mReader.failed()) {
            return;
        }
        if (!mHasFixups || mLayout.segments.empty()) {
            return mReader.Fail(0,
                                mHasFixups ? "the image has no segments" : "the image has no rebase and bind opcodes");
        }
        const auto byPlace = [](const Segment& a, const Segment& b) { return a.place < b.place; };
        mLayout.lowestAddress = std::ranges::min_element(mLayout.segments, byPlace)->place;
        uint64_t end = 0;
        for (Segment& segment : mLayout.segments) {
            segment.place -= mLayout.lowestAddress;
            end = std::max(end, segment.place + segment.size);
        }
        if (end > kMaxImageSize) {
            return mReader.Fail(0, "the image is absurdly large");
        }
        mLayout.size = (end + kPageSize - 1) / kPageSize * kPageSize;
    }

    void ReadSections(const LoadCommand& command) {
        const uint64_t at = command.offset;
        const uint32_t count = command.kind == kCommandSegment ? mReader.U32(at + 64) : 0;
        for (uint32_t index = 0; index < count && !mReader.failed(); ++index) {
            const uint64_t here = at + kSegmentSize + index * kSectionSize;
            Section section;
            section.name = FixedText(mReader.Part(here, 16));
            section.place = mReader.U64(here + 32) - mLayout.lowestAddress;
            section.size = mReader.U64(here + 40);
            section.type = mReader.U32(here + 64) & kSectionTypeMask;
            if (section.place > mLayout.size || section.size > mLayout.size - section.place) {
                return mReader.Fail(here + 32, "the section is outside of the image");
            }
            if (section.type >= kFirstThreadLocalType && section.type <= kLastThreadLocalType && section.size != 0) {
                return mReader.Fail(here + 64, "the image has thread-local variables, which the runner cannot provide");
            }
            mLayout.sections.push_back(section);
        }
    }

    void ReadExports() {
        for (const auto& [name, about] : mImage.exports) {
            if (mReader.failed()) {
                return;
            }
            const uint64_t at = static_cast<uint64_t>(about.data() - mImage.bytes.data());
            ByteReader reader(about, mFileOffset + at);
            uint64_t offset = 0;
            const uint64_t flags = reader.Uleb(offset);
            const uint64_t place = reader.Uleb(offset);
            if ((flags & (kExportKindMask | kExportIsReexport | kExportHasResolver)) != 0) {
                mReader.Fail(at,
                             "the image exports something else than an address of its own, which the runner cannot do");
            } else if (reader.failed() || place >= mLayout.size) {
                mReader.Fail(at, "an exported symbol is outside of the image");
            }
            mLayout.exports.emplace(name, place);
        }
    }

    const MachOImage& mImage;
    ByteReader mReader;
    uint64_t mFileOffset;
    ImageLayout mLayout;
    bool mHasFixups = false;
};

} // namespace

const Section* ImageLayout::Find(std::string_view section) const {
    const auto found = std::ranges::find(sections, section, &Section::name);
    return found == sections.end() ? nullptr : &*found;
}

uint64_t ImageLayout::FileOffsetOf(std::string_view part) const {
    return part.empty() ? fileOffset : fileOffset + static_cast<uint64_t>(part.data() - slice.data());
}

std::variant<ImageLayout, ByteError> ReadImageLayout(std::string_view file) {
    const std::variant<MachOFile, ByteError> parsed = ParseMachO(file);
    if (const auto* error = std::get_if<ByteError>(&parsed)) {
        return *error;
    }
    std::vector<std::string> others;
    for (const MachOImage& image : std::get<MachOFile>(parsed).images) {
        if (image.processor == kProcessorX86 && image.platform == kPlatformSimulator) {
            return LayoutReader(image, static_cast<uint64_t>(image.bytes.data() - file.data())).Read();
        }
        others.push_back(PlatformName(image.platform) + " on " + ProcessorName(image.processor));
    }
    return ByteError{0, "the file has code for " + Listed(others) +
                            "; here runs only what is for the iOS simulator on x86_64"};
}

} // namespace Tarvik::Vorn::Runner
