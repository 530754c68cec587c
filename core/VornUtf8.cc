#include "VornUtf8.h"

#include "VornTextStream.h"

#include <rapidjson/encodings.h>

#include <cstdint>
#include <cstring>

namespace Tarvik::Vorn {
namespace {

// How many characters of ASCII the text begins with. Nearly every text is nothing else, so they are looked at by eights.
size_t AsciiLength(std::string_view text) {
    constexpr uint64_t kHighBits = 0x8080808080808080;
    uint64_t eight = 0;
    size_t length = 0;
    for (; text.size() - length >= sizeof(eight); length += sizeof(eight)) {
        std::memcpy(&eight, text.data() + length, sizeof(eight));
        if ((eight & kHighBits) != 0) {
            break;
        }
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) {
        length += 1;
    }
    return length;
}

} // namespace

size_t ValidUtf8Length(std::string_view text) {
    size_t length = AsciiLength(text);
    while (length < text.size()) {
        TextStream stream(text.substr(length));
        unsigned codePoint = 0;
        if (!rapidjson::UTF8<>::Decode(stream, &codePoint)) {
            break;
        }
        length += stream.Tell();
        length += AsciiLength(text.substr(length));
    }
    return length;
}

std::string ReplaceInvalidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (true) {
        const size_t length = ValidUtf8Length(text);
        valid += text.substr(0, length);
        if (length == text.size()) {
            return valid;
        }
        valid += "\xef\xbf\xbd";
        text.remove_prefix(length + 1);
    }
}

} // namespace Tarvik::Vorn
