#include "VornJsonText.h"

#include "VornUtf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

namespace Tarvik::Vorn {
namespace {

// The longest that one character becomes: \u001F.
constexpr size_t kLongestEscape = 6;

bool IsAscii(char character) {
    return static_cast<signed char>(character) >= 0;
}

constexpr size_t kStep = 16;

// Copies `kStep` characters, whatever they are, and returns how many of them stand before the first that JSON does not show as
// it is; `kStep` when there is none.
size_t CopyStep(const char* text, char* target) {
    using Characters = signed char __attribute__((vector_size(kStep)));
    using Flags = bool __attribute__((ext_vector_type(kStep)));
    Characters characters;
    std::memcpy(&characters, text, kStep);
    std::memcpy(target, &characters, kStep);
    // Signed: a byte above ASCII is below the blank.
    const auto special = (characters < 0x20) | (characters == '"') | (characters == '\\');
    const auto bits = std::bit_cast<uint16_t>(__builtin_convertvector(special, Flags));
    return static_cast<size_t>(std::countr_zero(bits));
}

// The letter behind the backslash, or 0 for a character that has none.
char ShortEscape(char character) {
    switch (character) {
    case '"':
    case '\\':
        return character;
    case '\b':
        return 'b';
    case '\f':
        return 'f';
    case '\n':
        return 'n';
    case '\r':
        return 'r';
    case '\t':
        return 't';
    default:
        return 0;
    }
}

} // namespace

void JsonText::Append(int number) {
    constexpr size_t kLongestInt = 11;
    char* const target = Reserve(kLongestInt);
    mSize = static_cast<size_t>(std::to_chars(target, target + kLongestInt, number).ptr - mData);
}

void JsonText::Append(std::string_view text) {
    std::copy(text.begin(), text.end(), Reserve(text.size()));
    mSize += text.size();
}

void JsonText::AppendQuoted(std::string_view text) {
    const char* next = text.data();
    const char* const end = next + text.size();
    Reserve(text.size() + 2);
    Append('"');
    while ((next = AppendPlain(next, end)) != end) {
        if (IsAscii(*next)) {
            AppendEscaped(*next);
            next += 1;
        } else {
            next = AppendUtf8(next, end);
        }
    }
    Append('"');
}

// Appends what stands before the first character that is not plain, and returns its place.
const char* JsonText::AppendPlain(const char* text, const char* end) {
    const char* const begin = text;
    char* target = Reserve(static_cast<size_t>(end - text) + kStep);
    size_t plain = kStep;
    while (plain == kStep && static_cast<size_t>(end - text) >= kStep) {
        plain = CopyStep(text, target);
        text += plain;
        target += plain;
    }
    if (plain == kStep && text != end) {
        std::array<char, kStep> last{}; // Zeros are not plain.
        std::memcpy(last.data(), text, static_cast<size_t>(end - text));
        text += CopyStep(last.data(), target);
    }
    mSize += static_cast<size_t>(text - begin);
    return text;
}

void JsonText::AppendEscaped(char character) {
    constexpr std::string_view kUnicode = "\\u00";
    char* const target = Reserve(kLongestEscape);
    std::copy(kUnicode.begin(), kUnicode.end(), target);
    if (const char letter = ShortEscape(character); letter != 0) {
        target[1] = letter;
        mSize += 2;
        return;
    }
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(character);
    target[4] = kDigits[code >> 4];
    target[5] = kDigits[code & 0xf];
    mSize += kLongestEscape;
}

// Appends the character at `text`, which is not ASCII, and those of that kind behind it; returns the place behind them.
const char* JsonText::AppendUtf8(const char* text, const char* end) {
    const char* const behind = std::find_if(text, end, &IsAscii);
    const std::string_view characters(text, static_cast<size_t>(behind - text));
    if (ValidUtf8Length(characters) == characters.size()) {
        Append(characters);
    } else {
        Append(ReplaceInvalidUtf8(characters));
    }
    return behind;
}

void JsonText::Grow(size_t size) {
    const size_t capacity = std::max(mSize + size, 2 * mCapacity);
    auto larger = std::make_unique_for_overwrite<char[]>(capacity);
    std::copy(mData, mData + mSize, larger.get());
    mLarge = std::move(larger);
    mData = mLarge.get();
    mCapacity = capacity;
}

} // namespace Tarvik::Vorn
