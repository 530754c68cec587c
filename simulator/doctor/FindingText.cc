#include "FindingText.h"

#include "VornUtf8.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD.
constexpr size_t kLongestQuoted = 80;

// Characters that turn the direction of what follows.
constexpr std::array<std::string_view, 12> kDirections{"\u061c", "\u200e", "\u200f", "\u202a", "\u202b", "\u202c",
                                                       "\u202d", "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"};

// Whether a control character begins at `at`, and how many bytes it has; 0 when none does. REQUIRES: valid UTF-8.
size_t ControlSize(std::string_view text, size_t at) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < 0x20 || first == 0x7F) {
        return 1;
    }
    for (const std::string_view direction : kDirections) {
        if (text.substr(at).starts_with(direction)) {
            return direction.size();
        }
    }
    const bool isC1 = first == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
    return isC1 ? 2 : 0;
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

std::string Printable(std::string_view text) {
    const std::string valid = ReplaceInvalidUtf8(text);
    std::string printable;
    printable.reserve(valid.size());
    for (size_t at = 0; at < valid.size();) {
        const size_t control = ControlSize(valid, at);
        if (control == 0) {
            printable += valid[at];
            at += 1;
        } else {
            printable += kReplacement;
            at += control;
        }
    }
    return printable;
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
