// What must be known of a JPEG before it is decoded. For the stand-ins' own use; any thread.
#pragma once

#include <cstdint>
#include <span>

namespace Tarvik::Vorn::Host {

// Whether the bytes are a JPEG that goes on to its end marker, and none of its tables has more codes than a table has
// room for. The decoder relies on both: it takes missing bytes for zeros, so that a truncated picture has a grey rest,
// and writes beyond a table (stb_image 2.27, the one of Debian 12).
bool IsWholeJpeg(std::span<const uint8_t> bytes);

} // namespace Tarvik::Vorn::Host
