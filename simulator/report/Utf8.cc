#include "Utf8.h"

#include <algorithm>

namespace Tarvik::Vorn::Simulator {
namespace {

// How long a sequence is that begins with this byte; 0 when none does.
size_t SequenceSize(unsigned char lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xc2 && lead <= 0xdf) {
        return 2;
    }
    if (lead >= 0xe0 && lead <= 0xef) {
        return 3;
    }
    return lead >= 0xf0 && lead <= 0xf4 ? 4 : 0;
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

// Neither half of a surrogate pair, nor too large, nor written with more bytes than it needs.
bool IsValid(char32_t codePoint, size_t size) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = codePoint >= 0xd800 && codePoint <= 0xdfff;
    return codePoint >= kSmallest[size] && codePoint <= 0x10ffff && !surrogate;
}

} // namespace

std::optional<Character> FirstCharacter(std::string_view text) {
    if (text.empty()) {
        return std::nullopt;
    }
    const auto lead = static_cast<unsigned char>(text.front());
    const size_t size = SequenceSize(lead);
    if (size == 0 || size > text.size()) {
        return std::nullopt;
    }
    if (size == 1) {
        return Character{lead, 1};
    }
    char32_t codePoint = lead & (0xffU >> (size + 1));
    for (const char c : text.substr(1, size - 1)) {
        if (!IsContinuation(c)) {
            return std::nullopt;
        }
        codePoint = (codePoint << 6) | (static_cast<unsigned char>(c) & 0x3fU);
    }
    return IsValid(codePoint, size) ? std::optional(Character{codePoint, size}) : std::nullopt;
}

size_t CharacterCount(std::string_view text) {
    return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !IsContinuation(c); }));
}

} // namespace Tarvik::Vorn::Simulator
