#include "UIKit/ImageDecoder.h"

#include <png.h>
#include <turbojpeg.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace Tarvik::Vorn::Host {

namespace {

constexpr int64_t kMostPixelsOfSide = 16384;
// Enough for what the cameras of phones take.
constexpr int64_t kMostPixels = int64_t{64} * 1024 * 1024;

// Of the formats that the pixels are decoded to.
constexpr size_t kBytesOfPixel = 4;

// To be asked before memory for the pixels is: a header of a few bytes can tell of any size.
bool IsWithinLimits(int64_t width, int64_t height) {
    return width <= kMostPixelsOfSide && height <= kMostPixelsOfSide && width * height <= kMostPixels;
}

std::unique_ptr<uint8_t[]> RoomForPixels(const ImageSize& size) {
    const size_t pixels = static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
    return std::make_unique_for_overwrite<uint8_t[]>(pixels * kBytesOfPixel);
}

// Whether the chunks of a PNG, whose signature is known to be right, go on to the one that ends it. The decoder stops
// reading behind the last pixel.
bool HasPNGEnd(std::span<const uint8_t> bytes) {
    constexpr size_t kSignature = 8;
    constexpr size_t kType = 4;
    constexpr size_t kLengthTypeAndChecksum = 12;
    constexpr std::string_view kEnd = "IEND";

    std::span<const uint8_t> rest = bytes.subspan(kSignature);
    while (rest.size() >= kLengthTypeAndChecksum) {
        if (std::ranges::equal(rest.subspan(kType, kEnd.size()), kEnd)) {
            return true;
        }
        const size_t length = png_get_uint_32(rest.data());
        if (length > rest.size() - kLengthTypeAndChecksum) {
            return false;
        }
        rest = rest.subspan(kLengthTypeAndChecksum + length);
    }
    return false;
}

std::optional<ImageSize> DecodePNG(std::span<const uint8_t> bytes) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    const std::unique_ptr<png_image, decltype(&png_image_free)> contents(&image, &png_image_free);
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0 ||
        !IsWithinLimits(image.width, image.height)) {
        return std::nullopt;
    }
    const ImageSize size = {static_cast<int>(image.width), static_cast<int>(image.height)};
    image.format = PNG_FORMAT_RGBA;
    const std::unique_ptr<uint8_t[]> pixels = RoomForPixels(size);
    if (png_image_finish_read(&image, nullptr, pixels.get(), 0, nullptr) == 0 || !HasPNGEnd(bytes)) {
        return std::nullopt;
    }
    return size;
}

std::optional<ImageSize> DecodeJPEG(std::span<const uint8_t> bytes) {
    const std::unique_ptr<void, decltype(&tjDestroy)> decoder(tjInitDecompress(), &tjDestroy);
    ImageSize size;
    int subsampling = 0;
    int colors = 0;
    if (tjDecompressHeader3(decoder.get(), bytes.data(), bytes.size(), &size.width, &size.height, &subsampling,
                            &colors) != 0 ||
        !IsWithinLimits(size.width, size.height)) {
        return std::nullopt;
    }
    // The decoder converts neither of the printers' color spaces to RGB.
    const int format = colors == TJCS_CMYK || colors == TJCS_YCCK ? TJPF_CMYK : TJPF_RGBX;
    const std::unique_ptr<uint8_t[]> pixels = RoomForPixels(size);
    // Missing bytes are no more than a warning: the rest of the picture is grey then.
    if (tjDecompress2(decoder.get(), bytes.data(), bytes.size(), pixels.get(), size.width, 0, size.height, format,
                      TJFLAG_STOPONWARNING) != 0) {
        return std::nullopt;
    }
    return size;
}

} // namespace

std::optional<ImageSize> DecodeImage(std::span<const uint8_t> bytes) {
    const std::optional<ImageSize> size = DecodePNG(bytes);
    return size ? size : DecodeJPEG(bytes);
}

} // namespace Tarvik::Vorn::Host
