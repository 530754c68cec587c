// UTF-8, strictly read: texts of a run may hold any bytes. Plain C++; any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator {

struct Character {
    char32_t codePoint = 0;
    size_t size = 0; // In bytes, 1 to 4.
};

// The character with which `text` begins; none when it is empty or its first byte begins no valid sequence.
std::optional<Character> FirstCharacter(std::string_view text);

// How many characters a valid text has.
size_t CharacterCount(std::string_view text);

} // namespace Tarvik::Vorn::Simulator
