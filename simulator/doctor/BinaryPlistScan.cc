#include "BinaryPlistScan.h"

#include "ByteReader.h"
#include "FindingText.h"
#include "PlistFile.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr uint64_t kHeaderSize = 8; // "bplist00".
constexpr uint64_t kTrailerSize = 32;
constexpr uint64_t kBytesOfAnObject = 64; // What a parsed object takes without its contents, roughly.

// The upper half of an object's first byte.
constexpr unsigned kSimple = 0x0;
constexpr unsigned kInteger = 0x1;
constexpr unsigned kReal = 0x2;
constexpr unsigned kDate = 0x3;
constexpr unsigned kData = 0x4;
constexpr unsigned kAscii = 0x5;
constexpr unsigned kUtf16 = 0x6;
constexpr unsigned kUid = 0x8;
constexpr unsigned kArray = 0xA;
constexpr unsigned kDictionary = 0xD;

// What an object is once every reference in it has become a copy.
struct Expanded {
    uint64_t bytes = 0;
    size_t height = 0; // Objects in one another, with this one.
};

struct Header {
    unsigned type = 0;
    uint64_t count = 0;    // Bytes, characters or items.
    uint64_t contents = 0; // The offset behind type and count.
};

// Whether one of the characters, each of `width` bytes, is all zeros.
bool HasNul(std::string_view characters, size_t width) {
    for (; !characters.empty(); characters.remove_prefix(width)) {
        if (characters.substr(0, width) == std::string_view("\0\0", width)) {
            return true;
        }
    }
    return false;
}

class BinaryScan {
public:
    explicit BinaryScan(std::string_view bytes) : mReader(bytes) {}

    std::optional<ByteError> Run() {
        ReadTrailer();
        if (!mReader.failed()) {
            mStates.resize(mObjects);
            mSizes.resize(mObjects);
            Measure(mTop, 0, mReader.size() - kTrailerSize + 16);
        }
        return mReader.error();
    }

private:
    enum class State : uint8_t { kUnknown, kOpen, kMeasured };

    void ReadTrailer() {
        if (mReader.size() < kHeaderSize + kTrailerSize) {
            return mReader.Fail(mReader.size(), "the file ends before the table of its objects");
        }
        const uint64_t trailer = mReader.size() - kTrailerSize;
        mOffsetSize = mReader.U8(trailer + 6);
        mReferenceSize = mReader.U8(trailer + 7);
        mObjects = mReader.BigEndian64(trailer + 8);
        mTop = mReader.BigEndian64(trailer + 16);
        mTable = mReader.BigEndian64(trailer + 24);
        if (mOffsetSize < 1 || mOffsetSize > 8 || mReferenceSize < 1 || mReferenceSize > 8) {
            return mReader.Fail(trailer + 6, "the file's last 32 bytes are not those of a binary property list");
        }
        if (mObjects > kMaxPlistObjects) {
            return mReader.Fail(trailer + 8, "the file claims to hold " + std::to_string(mObjects) + " objects");
        }
        if (mTable < kHeaderSize || mTable > trailer || mObjects * mOffsetSize > trailer - mTable) {
            mReader.Fail(trailer + 24, "the table of objects is outside of the file");
        }
    }

    // Where the object begins. `from` is the offset of what refers to it.
    uint64_t OffsetOf(uint64_t object, uint64_t from) {
        if (object >= mObjects) {
            mReader.Fail(from,
                         "object " + std::to_string(object) + " of " + std::to_string(mObjects) + " is referred to");
            return 0;
        }
        const uint64_t entry = mTable + object * mOffsetSize;
        const uint64_t offset = mReader.BigEndian(entry, mOffsetSize);
        if (offset < kHeaderSize || offset >= mTable) {
            mReader.Fail(entry, "an object is said to be at " + Hexadecimal(offset) + ", outside of the objects");
        }
        return offset;
    }

    Header ReadHeader(uint64_t offset) {
        const unsigned marker = mReader.U8(offset);
        Header header{marker >> 4U, marker & 0xFU, offset + 1};
        const bool isCounted = header.type >= kData && header.type != kUid;
        if (isCounted && header.count == 0xF) {
            const unsigned countMarker = mReader.U8(offset + 1);
            if (countMarker >> 4U != kInteger || (countMarker & 0xFU) > 3) {
                mReader.Fail(offset + 1, "the number of an object's parts is expected");
                return header;
            }
            const uint64_t size = uint64_t{1} << (countMarker & 0xFU);
            header.count = mReader.BigEndian(offset + 2, size);
            header.contents = offset + 2 + size;
        }
        if (header.count > mReader.size()) {
            mReader.Fail(offset, "an object claims to have " + std::to_string(header.count) + " parts");
        }
        return header;
    }

    // The bytes of what refers to no other objects.
    uint64_t LeafSize(const Header& header, uint64_t offset) {
        switch (header.type) {
        case kSimple:
            return 0;
        case kInteger:
        case kReal:
        case kDate:
            if (header.count > 4) {
                mReader.Fail(offset, "a number has more than 16 bytes");
                return 0;
            }
            return uint64_t{1} << header.count;
        case kData:
        case kAscii:
            return header.count;
        case kUtf16:
            return header.count * 2;
        case kUid:
            return header.count + 1;
        default:
            mReader.Fail(offset, "an object has the unknown type " + Hexadecimal(header.type));
            return 0;
        }
    }

    // Recurses no deeper than kMaxPlistDepth: what is deeper fails.
    Expanded Measure(uint64_t object, size_t depth, uint64_t from) {
        const uint64_t offset = OffsetOf(object, from);
        if (mReader.failed()) {
            return {};
        }
        if (mStates[object] == State::kOpen) {
            mReader.Fail(offset, "the object contains itself");
            return {};
        }
        if (mStates[object] == State::kUnknown) {
            if (depth > kMaxPlistDepth) {
                FailForDepth(offset);
                return {};
            }
            mStates[object] = State::kOpen;
            mSizes[object] = MeasureAnew(offset, depth);
            mStates[object] = State::kMeasured;
        }
        if (depth + mSizes[object].height > kMaxPlistDepth + 1) {
            FailForDepth(offset);
        }
        return mSizes[object];
    }

    void FailForDepth(uint64_t offset) {
        mReader.Fail(offset, "more than " + std::to_string(kMaxPlistDepth) + " values are nested in one another");
    }

    Expanded MeasureAnew(uint64_t offset, size_t depth) {
        const Header header = ReadHeader(offset);
        Expanded size{kBytesOfAnObject, 1};
        if (header.type != kArray && header.type != kDictionary) {
            const uint64_t contents = LeafSize(header, offset);
            CheckContents(header, contents);
            size.bytes += contents;
            return size;
        }
        const uint64_t references = header.type == kDictionary ? header.count * 2 : header.count;
        CheckContents(header, references * mReferenceSize);
        for (uint64_t index = 0; index < references && !mReader.failed(); ++index) {
            const uint64_t at = header.contents + index * mReferenceSize;
            const uint64_t item = mReader.BigEndian(at, mReferenceSize);
            const Expanded part = Measure(item, depth + 1, at);
            if (header.type == kDictionary && index < header.count) {
                CheckKey(item, at);
            }
            size.bytes += part.bytes;
            size.height = std::max(size.height, part.height + 1);
            if (size.bytes > kMaxExpandedBytes) {
                mReader.Fail(offset, "the object would grow beyond 64 MB when it is read");
            }
        }
        return size;
    }

    // The table of offsets follows the objects.
    void CheckContents(const Header& header, uint64_t size) {
        if (header.contents > mTable || size > mTable - header.contents) {
            mReader.Fail(header.contents,
                         std::to_string(size) + " bytes are expected, which are outside of the objects");
        }
    }

    // After the key has been measured. The library that reads the file next ends the process over a NUL in one.
    void CheckKey(uint64_t object, uint64_t from) {
        const uint64_t offset = OffsetOf(object, from);
        const Header header = ReadHeader(offset);
        if (mReader.failed()) {
            return;
        }
        if (header.type != kAscii && header.type != kUtf16) {
            return mReader.Fail(offset, "the key of a dictionary is no text");
        }
        if (HasNul(mReader.Part(header.contents, LeafSize(header, offset)), header.type == kUtf16 ? 2 : 1)) {
            mReader.Fail(offset, "the key of a dictionary has a NUL in it");
        }
    }

    ByteReader mReader;
    uint64_t mOffsetSize = 0;
    uint64_t mReferenceSize = 0;
    uint64_t mObjects = 0;
    uint64_t mTop = 0;
    uint64_t mTable = 0;
    std::vector<State> mStates;
    std::vector<Expanded> mSizes;
};

} // namespace

std::optional<LocatedError> ScanBinaryPlist(const std::string& path, std::string_view bytes) {
    const std::optional<ByteError> damage = BinaryScan(bytes).Run();
    if (!damage) {
        return std::nullopt;
    }
    return LocatedError{path, 0, 0, "at byte offset " + Hexadecimal(damage->offset) + ": " + damage->message,
                        "the file is damaged or cut off; build or copy it anew"};
}

} // namespace Tarvik::Vorn::Simulator::Doctor
