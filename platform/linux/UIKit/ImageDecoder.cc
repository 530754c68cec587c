#include "UIKit/ImageDecoder.h"

#include "UIKit/JpegStructure.h"

#include <climits>
#include <cstdlib>
#include <memory>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_NO_STDIO
#define STBI_ONLY_PNG
#define STBI_ONLY_JPEG
#define STBI_MAX_DIMENSIONS 16384
// Zeroed: the decoder reads tables that a broken JPEG has not defined.
#define STBI_MALLOC(size) std::calloc(1, size)
#define STBI_REALLOC(pointer, size) std::realloc(pointer, size)
#define STBI_FREE(pointer) std::free(pointer)
#include <stb/stb_image.h>

namespace Tarvik::Vorn::Host {

namespace {

// The decoder allocates by the size that the header tells, before it sees that the pixels are missing. Enough for what
// the cameras of phones take.
constexpr int64_t kMostPixels = int64_t{64} * 1024 * 1024;

} // namespace

std::optional<ImageSize> DecodeImage(std::span<const uint8_t> bytes) {
    if (bytes.empty() || bytes.size() > INT_MAX) {
        return std::nullopt;
    }
    // Before anything else: the size of a JPEG is read by the same code as its tables. The decoder takes whatever begins
    // with 0xff for one.
    if (bytes.front() == 0xff && !IsWholeJpeg(bytes)) {
        return std::nullopt;
    }
    const int length = static_cast<int>(bytes.size());
    ImageSize size;
    int channels = 0;
    if (stbi_info_from_memory(bytes.data(), length, &size.width, &size.height, &channels) == 0 ||
        int64_t{size.width} * size.height > kMostPixels) {
        return std::nullopt;
    }
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load_from_memory(bytes.data(), length, &size.width, &size.height, &channels, 0), &stbi_image_free);
    if (pixels == nullptr) {
        return std::nullopt;
    }
    return size;
}

} // namespace Tarvik::Vorn::Host
