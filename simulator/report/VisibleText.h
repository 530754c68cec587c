// Texts of a run as people may safely look at them. Log lines and requests hold whatever the world puts into them, and
// nothing of that may move a cursor, colour a terminal, turn the direction of writing or hide. Plain C++; any thread.
#pragma once

#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator {

// `text` as valid UTF-8 in which control characters and bytes that are no UTF-8 are spelled out: "\x1b", "\t", "\u202e".
// Line feeds stay.
std::string VisibleText(std::string_view text);

// The same with line feeds spelled out too: "\n".
std::string VisibleLine(std::string_view text);

// The same for a page: also with what means something in HTML replaced by references, inside of attributes too.
std::string EscapedText(std::string_view text);
std::string EscapedLine(std::string_view text);

} // namespace Tarvik::Vorn::Simulator
