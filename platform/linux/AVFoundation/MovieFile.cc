#include "AVFoundation/MovieFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <ios>
#include <optional>
#include <string_view>
#include <system_error>

namespace Tarvik::Vorn::Host {

namespace {

// At most eight bytes as a number, first byte highest.
constexpr uint64_t Number(std::string_view bytes) {
    uint64_t number = 0;
    for (const char byte : bytes) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

// The number that the four characters of a type or a brand are.
constexpr uint32_t Code(std::string_view text) {
    return static_cast<uint32_t>(Number(text));
}

// MPEG-4, 3GPP and QuickTime. An image of the same container format (heic) has another.
constexpr std::array kMovieBrands{
    Code("qt  "), Code("isom"), Code("iso2"), Code("iso3"), Code("iso4"), Code("iso5"),
    Code("iso6"), Code("mp41"), Code("mp42"), Code("avc1"), Code("M4V "), Code("M4VH"),
    Code("M4VP"), Code("3gp4"), Code("3gp5"), Code("3gp6"), Code("3gp7"), Code("3g2a"),
};

// What a QuickTime file older than brands begins with.
constexpr std::array kFirstBoxesWithoutBrand{
    Code("moov"), Code("mdat"), Code("wide"), Code("free"), Code("skip"),
};

// No movie has as many; a file of nothing but box headers would.
constexpr int kMostBoxes = 10'000;

template <size_t count>
bool Contains(const std::array<uint32_t, count>& codes, uint32_t code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// The bytes of the file that a box or its contents take.
struct Range {
    uint64_t begin = 0;
    uint64_t end = 0;
};

struct Box {
    uint32_t type = 0;
    Range contents;
};

// The boxes of one file. Every function fails for what lies outside of the range it is given.
class MovieFile {
public:
    MovieFile(const std::string& path, uint64_t size) : mStream(path, std::ios::binary), mSize(size) {}

    bool IsPhotoLibraryMovie() {
        bool isFirst = true;
        bool isMovie = false;
        bool hasVideo = false;
        const bool isWhole = ForEachBox({0, mSize}, [&](const Box& box) {
            if (isFirst) {
                isMovie = box.type == Code("ftyp") ? HasMovieBrand(box.contents)
                                                   : Contains(kFirstBoxesWithoutBrand, box.type);
                isFirst = false;
            }
            if (box.type != Code("moov")) {
                return true;
            }
            return ForEachBox(box.contents, [&](const Box& track) {
                return track.type != Code("trak") || ReadTrack(track.contents, hasVideo);
            });
        });
        return isWhole && isMovie && hasVideo;
    }

private:
    // Calls `read` with each box of the range, in order. False as soon as `read` is or the boxes do not fit the range.
    template <class Read>
    bool ForEachBox(Range range, Read read) {
        while (range.begin < range.end) {
            const std::optional<Box> box = ReadBox(range);
            if (!box || !read(*box)) {
                return false;
            }
            range.begin = box->contents.end;
        }
        return true;
    }

    // Sets `hasVideo` when the track is one.
    bool ReadTrack(Range track, bool& hasVideo) {
        return ForEachBox(track, [&](const Box& box) {
            return box.type != Code("mdia") || ForEachBox(box.contents, [&](const Box& part) {
                       if (part.type != Code("hdlr")) {
                           return true;
                       }
                       // Behind version, flags and a field that only QuickTime fills.
                       const std::optional<uint32_t> handler = ReadCode(part.contents, 8);
                       hasVideo = hasVideo || handler == Code("vide");
                       return handler.has_value();
                   });
        });
    }

    // The first brand, and those behind the version that stands second.
    bool HasMovieBrand(Range brands) {
        const uint64_t length = std::min<uint64_t>(brands.end - brands.begin, 1024);
        for (uint64_t offset = 0; offset + 4 <= length; offset += 4) {
            const std::optional<uint32_t> brand = ReadCode(brands, offset);
            if (offset != 4 && brand && Contains(kMovieBrands, *brand)) {
                return true;
            }
        }
        return false;
    }

    std::optional<Box> ReadBox(Range range) {
        mBoxes += 1;
        const uint64_t room = range.end - range.begin;
        const std::string header = ReadBytes(range, 0, std::min<uint64_t>(room, 16));
        if (header.size() < 8 || mBoxes > kMostBoxes) {
            return std::nullopt;
        }
        uint64_t headerSize = 8;
        uint64_t size = Number(header.substr(0, 4));
        if (size == 0 && range.end == mSize) { // The last box, up to the end of the file.
            size = room;
        } else if (size == 1) { // The size is a longer number behind the type.
            headerSize = 16;
            size = Number(header.substr(8));
        }
        if (size < headerSize || size > room) {
            return std::nullopt;
        }
        return Box{static_cast<uint32_t>(Number(header.substr(4, 4))), {range.begin + headerSize, range.begin + size}};
    }

    std::optional<uint32_t> ReadCode(Range range, uint64_t offset) {
        const std::string bytes = ReadBytes(range, offset, 4);
        return bytes.empty() ? std::nullopt : std::optional(static_cast<uint32_t>(Number(bytes)));
    }

    // As many bytes at `offset` in the range; empty when the range has not as many.
    std::string ReadBytes(Range range, uint64_t offset, uint64_t length) {
        if (offset + length > range.end - range.begin) {
            return {};
        }
        std::string bytes(length, '\0');
        mStream.seekg(static_cast<std::streamoff>(range.begin + offset));
        if (!mStream.read(bytes.data(), static_cast<std::streamsize>(length))) {
            return {};
        }
        return bytes;
    }

    std::ifstream mStream;
    const uint64_t mSize;
    int mBoxes = 0;
};

} // namespace

bool IsPhotoLibraryMovie(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        return false;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    return !error && MovieFile(path, size).IsPhotoLibraryMovie();
}

} // namespace Tarvik::Vorn::Host
