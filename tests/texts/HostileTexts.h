// Texts that a core, a game, a server or the system may hand over and that nobody expects, and what the plugin's rules
// make of bytes: the first NUL ends a text, and what is not UTF-8 is no text for Objective-C. The rules are written
// down here a second time, apart from the code under test. Plain C++; any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Test {

struct HostileText {
    std::string name; // As a part of a test's name.
    std::string bytes;
};

// For every place; the largest has kLarge bytes.
const std::vector<HostileText>& HostileTexts();

inline constexpr size_t kLarge = size_t{1} << 15U; // Beyond every buffer of a fixed size.
inline constexpr size_t kMebibyte = size_t{1} << 20U;

// A text of so many bytes without anything special in it.
std::string HugeText(size_t size);

// What C sees of the text.
std::string UpToNul(const std::string& bytes);

// How many bytes the character has with which `bytes` begins; 0 when they begin with no valid one.
size_t Utf8CharacterSize(std::string_view bytes);

// What Objective-C gets of the text, as UTF-8: nothing when what stands before the first NUL is not UTF-8.
std::optional<std::string> AsNSString(const std::string& bytes);

// The text in quotes as the core writes it into JSON: up to its first NUL, bytes that are not UTF-8 replaced.
std::string AsJson(const std::string& bytes);

} // namespace Tarvik::Vorn::Test
