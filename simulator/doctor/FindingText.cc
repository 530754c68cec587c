#include "FindingText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD.
constexpr size_t kLongestQuoted = 80;

unsigned char ByteAt(std::string_view text, size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0;
}

// The bytes of the valid sequence at `at`, which is inside of the text; 0 when there is none.
size_t SequenceLength(std::string_view text, size_t at) {
    const unsigned char first = ByteAt(text, at);
    const unsigned char second = ByteAt(text, at + 1);
    if (first < 0x80) {
        return 1;
    }
    size_t length = 0;
    unsigned char least = 0x80;
    unsigned char greatest = 0xBF;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        least = first == 0xE0 ? 0xA0 : 0x80;    // Overlong.
        greatest = first == 0xED ? 0x9F : 0xBF; // Surrogates.
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        least = first == 0xF0 ? 0x90 : 0x80;
        greatest = first == 0xF4 ? 0x8F : 0xBF; // Behind U+10FFFF.
    }
    if (length == 0 || second < least || second > greatest) {
        return 0;
    }
    for (size_t next = at + 2; next < at + length; ++next) {
        if ((ByteAt(text, next) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

// Of a valid sequence.
bool IsControl(std::string_view sequence) {
    const unsigned char first = ByteAt(sequence, 0);
    const bool isC1 = first == 0xC2 && ByteAt(sequence, 1) < 0xA0;
    return first < 0x20 || first == 0x7F || isC1;
}

std::string Cleaned(std::string_view text, bool withControls) {
    std::string cleaned;
    cleaned.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const size_t length = SequenceLength(text, at);
        const std::string_view sequence = text.substr(at, length);
        const bool isKept = length != 0 && (withControls || !IsControl(sequence));
        cleaned += isKept ? sequence : kReplacement;
        at += length == 0 ? 1 : length;
    }
    return cleaned;
}

} // namespace

std::string Listed(const std::vector<std::string>& names) {
    std::string list;
    for (size_t index = 0; index < names.size(); ++index) {
        if (index != 0) {
            list += index + 1 == names.size() ? " and " : ", ";
        }
        list += names[index];
    }
    return list;
}

std::string Quoted(std::string_view text) {
    if (text.size() <= kLongestQuoted) {
        return "\"" + std::string(text) + "\"";
    }
    return "\"" + std::string(text.substr(0, kLongestQuoted)) + "...\"";
}

std::string ValidUtf8(std::string_view text) {
    return Cleaned(text, true);
}

std::string Printable(std::string_view text) {
    return Cleaned(text, false);
}

std::string XmlText(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string PlistTextEntry(std::string_view key, std::string_view value) {
    return "<key>" + XmlText(key) + "</key>\n<string>" + XmlText(value) + "</string>";
}

std::string PlistArrayEntry(std::string_view key, const std::vector<std::string>& values) {
    std::string lines = "<key>" + XmlText(key) + "</key>\n<array>\n";
    for (const std::string& value : values) {
        lines += "  <string>" + XmlText(value) + "</string>\n";
    }
    return lines + "</array>";
}

std::string PlistURLTypes(std::string_view scheme) {
    return "<key>CFBundleURLTypes</key>\n"
           "<array>\n"
           "  <dict>\n"
           "    <key>CFBundleTypeRole</key>\n"
           "    <string>Editor</string>\n"
           "    <key>CFBundleURLSchemes</key>\n"
           "    <array>\n"
           "      <string>" +
           XmlText(scheme) +
           "</string>\n"
           "    </array>\n"
           "  </dict>\n"
           "</array>";
}

std::string Hexadecimal(unsigned long long number) {
    std::array<char, 24> digits{};
    std::snprintf(digits.data(), digits.size(), "0x%llx", number);
    return digits.data();
}

} // namespace Tarvik::Vorn::Simulator::Doctor
