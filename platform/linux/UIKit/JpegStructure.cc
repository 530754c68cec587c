#include "UIKit/JpegStructure.h"

#include <cstddef>

namespace Tarvik::Vorn::Host {

namespace {

// The second bytes of markers; the first is 0xff.
constexpr uint8_t kPrefix = 0xff;
constexpr uint8_t kStuffing = 0x00; // No marker: the byte before it is one of the pixels.
constexpr uint8_t kHuffmanTables = 0xc4;
constexpr uint8_t kFirstRestart = 0xd0;
constexpr uint8_t kLastRestart = 0xd7;
constexpr uint8_t kStartOfImage = 0xd8;
constexpr uint8_t kEndOfImage = 0xd9;
constexpr uint8_t kStartOfScan = 0xda;

constexpr size_t kCodeLengths = 16;
constexpr size_t kMostCodes = 256;

// Each table is a byte for its place, the count of codes of each length, and a byte for each code.
bool AreHuffmanTables(std::span<const uint8_t> tables) {
    while (!tables.empty()) {
        if (tables.size() < 1 + kCodeLengths) {
            return false;
        }
        size_t codes = 0;
        for (const uint8_t count : tables.subspan(1, kCodeLengths)) {
            codes += count;
        }
        const size_t length = 1 + kCodeLengths + codes;
        if (codes > kMostCodes || length > tables.size()) {
            return false;
        }
        tables = tables.subspan(length);
    }
    return true;
}

// What follows the pixels at the beginning of `bytes`: the next marker that is none of theirs.
std::span<const uint8_t> BehindPixels(std::span<const uint8_t> bytes) {
    for (size_t i = 0; i + 1 < bytes.size(); ++i) {
        const uint8_t next = bytes[i + 1];
        const bool isOfPixels = next == kStuffing || next == kPrefix || (next >= kFirstRestart && next <= kLastRestart);
        if (bytes[i] == kPrefix && !isOfPixels) {
            return bytes.subspan(i);
        }
    }
    return {};
}

} // namespace

bool IsWholeJpeg(std::span<const uint8_t> bytes) {
    if (bytes.size() < 2 || bytes[0] != kPrefix || bytes[1] != kStartOfImage) {
        return false;
    }
    std::span<const uint8_t> rest = bytes.subspan(2);
    while (rest.size() >= 2 && rest[0] == kPrefix) {
        const uint8_t marker = rest[1];
        if (marker == kEndOfImage) {
            return true;
        }
        if (marker == kPrefix) { // Any number of them may stand before a marker.
            rest = rest.subspan(1);
            continue;
        }
        if (rest.size() < 4) {
            return false;
        }
        // Of the segment, its own two bytes included. A thumbnail's end marker within a segment is skipped with it.
        const size_t length = static_cast<size_t>(rest[2] << 8 | rest[3]);
        if (length < 2 || 2 + length > rest.size()) {
            return false;
        }
        if (marker == kHuffmanTables && !AreHuffmanTables(rest.subspan(4, length - 2))) {
            return false;
        }
        rest = rest.subspan(2 + length);
        if (marker == kStartOfScan) {
            rest = BehindPixels(rest);
        }
    }
    return false;
}

} // namespace Tarvik::Vorn::Host
