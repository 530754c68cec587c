// Conversions between UTF-8 and UTF-16 that neither drop nor invent a character. (GNUstep's drop a byte-order mark at
// the start of a text.) Inside the core only.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn {

// `text` with U+FFFD in place of every byte that is not part of a valid sequence.
std::string ReplaceInvalidUtf8(std::string_view text);

// Empty when `text` holds a surrogate without its other half.
std::optional<std::string> Utf8FromUtf16(const std::u16string& text);

// REQUIRES: `text` is valid UTF-8.
std::u16string Utf16FromUtf8(std::string_view text);

} // namespace Tarvik::Vorn
