// The size of an image that lies in memory as PNG or JPEG, after decoding all of it. For the stand-ins' own use; any
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace Tarvik::Vorn::Host {

struct ImageSize {
    int width = 0;
    int height = 0;

    bool operator==(const ImageSize&) const = default;
};

// Empty when the bytes are neither, are incomplete or broken, or tell of more than 16384 pixels in one direction or 64
// million in all.
std::optional<ImageSize> DecodeImage(std::span<const uint8_t> bytes);

} // namespace Tarvik::Vorn::Host
