#include "VisibleText.h"

#include "Utf8.h"

#include <cstdio>
#include <optional>

namespace Tarvik::Vorn::Simulator {
namespace {

// "\x1b"
std::string SpelledByte(unsigned byte) {
    char text[16];
    std::snprintf(text, sizeof text, "\\x%02x", byte);
    return text;
}

// "\u202e"
std::string SpelledCharacter(char32_t codePoint) {
    char text[16];
    std::snprintf(text, sizeof text, "\\u%04x", static_cast<unsigned>(codePoint));
    return text;
}

bool IsBetween(char32_t codePoint, char32_t first, char32_t last) {
    return codePoint >= first && codePoint <= last;
}

// Characters behind ASCII that are orders to whoever shows them: C1 controls, directions, line and paragraph ends,
// blanks without width, marks and tags without shape.
bool IsOrder(char32_t c) {
    return IsBetween(c, 0x80, 0x9f) || c == 0xad || c == 0x61c || IsBetween(c, 0x200b, 0x200f) ||
           IsBetween(c, 0x2028, 0x202e) || IsBetween(c, 0x2060, 0x206f) || c == 0xfeff ||
           IsBetween(c, 0xfff9, 0xfffb) || (c & 0xfffe) == 0xfffe || IsBetween(c, 0xe0000, 0xe007f);
}

void AppendVisible(std::string& visible, std::string_view bytes, char32_t codePoint) {
    if (codePoint == '\t') {
        visible += "\\t";
    } else if (codePoint == '\r') {
        visible += "\\r";
    } else if (codePoint < 0x20 || codePoint == 0x7f) {
        visible += SpelledByte(codePoint);
    } else if (IsOrder(codePoint)) {
        visible += SpelledCharacter(codePoint);
    } else {
        visible += bytes;
    }
}

std::string Visible(std::string_view text, std::string_view lineFeed) {
    std::string visible;
    visible.reserve(text.size());
    while (!text.empty()) {
        const std::optional<Character> first = FirstCharacter(text);
        if (!first) {
            visible += SpelledByte(static_cast<unsigned char>(text.front()));
        } else if (first->codePoint == '\n') {
            visible += lineFeed;
        } else {
            AppendVisible(visible, text.substr(0, first->size), first->codePoint);
        }
        text.remove_prefix(first ? first->size : 1);
    }
    return visible;
}

std::string Escaped(const std::string& visible) {
    std::string escaped;
    escaped.reserve(visible.size());
    for (const char c : visible) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

} // namespace

std::string VisibleText(std::string_view text) {
    return Visible(text, "\n");
}

std::string VisibleLine(std::string_view text) {
    return Visible(text, "\\n");
}

std::string EscapedText(std::string_view text) {
    return Escaped(VisibleText(text));
}

std::string EscapedLine(std::string_view text) {
    return Escaped(VisibleLine(text));
}

} // namespace Tarvik::Vorn::Simulator
