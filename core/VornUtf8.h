// Texts that may be null or no valid UTF-8. Plain C++; any thread.
#pragma once

#include "VornExport.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tarvik::Vorn {

// How many bytes stand before the first that is not part of a valid sequence; all of them when there is none.
VORN_API size_t ValidUtf8Length(std::string_view text);

// `text` with U+FFFD in place of every byte that is not part of a valid sequence.
VORN_API std::string ReplaceInvalidUtf8(std::string_view text);

// The text, or the empty one for null.
inline std::string_view OrEmpty(const char* text) {
    return text == nullptr ? std::string_view() : std::string_view(text);
}

} // namespace Tarvik::Vorn
