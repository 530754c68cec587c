#include "VornUtf8.h"

#include "VornTextStream.h"

#include <rapidjson/encodings.h>
#include <rapidjson/stream.h>
#include <rapidjson/stringbuffer.h>

namespace Tarvik::Vorn {
namespace {

using Utf8 = rapidjson::UTF8<char>;
using Utf16 = rapidjson::UTF16<char16_t>;

} // namespace

std::string ReplaceInvalidUtf8(std::string_view text) {
    std::string valid;
    valid.reserve(text.size());
    while (!text.empty()) {
        TextStream stream(text);
        unsigned codePoint = 0;
        if (Utf8::Decode(stream, &codePoint)) {
            valid += text.substr(0, stream.Tell());
            text.remove_prefix(stream.Tell());
        } else {
            valid += "\xef\xbf\xbd";
            text.remove_prefix(1);
        }
    }
    return valid;
}

std::optional<std::string> Utf8FromUtf16(const std::u16string& text) {
    rapidjson::GenericStringStream<Utf16> stream(text.c_str());
    rapidjson::StringBuffer buffer;
    while (stream.Tell() < text.size()) {
        unsigned codePoint = 0;
        if (!Utf16::Decode(stream, &codePoint)) {
            return std::nullopt;
        }
        Utf8::Encode(buffer, codePoint);
    }
    return std::string(buffer.GetString(), buffer.GetSize());
}

std::u16string Utf16FromUtf8(std::string_view text) {
    TextStream stream(text);
    rapidjson::GenericStringBuffer<Utf16> buffer;
    while (stream.Tell() < text.size()) {
        unsigned codePoint = 0;
        Utf8::Decode(stream, &codePoint);
        Utf16::Encode(buffer, codePoint);
    }
    return std::u16string(buffer.GetString(), buffer.GetSize() / sizeof(char16_t));
}

} // namespace Tarvik::Vorn
