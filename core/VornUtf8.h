// UTF-8 that may be invalid. Inside the core only.
#pragma once

#include <string>
#include <string_view>

namespace Tarvik::Vorn {

// `text` with U+FFFD in place of every byte that is not part of a valid sequence.
std::string ReplaceInvalidUtf8(std::string_view text);

} // namespace Tarvik::Vorn
