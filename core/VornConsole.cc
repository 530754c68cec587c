#include "VornConsole.h"

#include <cstdio>

namespace Tarvik::Vorn {
namespace {

void AppendVisibly(char character, std::string& line) {
    switch (character) {
    case '\t':
        line += character;
        return;
    case '\n':
        line += "\\n";
        return;
    case '\r':
        line += "\\r";
        return;
    default:
        break;
    }
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x20 && byte != 0x7f) {
        line += character;
        return;
    }
    constexpr const char* kDigits = "0123456789abcdef";
    line += "\\x";
    line += kDigits[byte >> 4];
    line += kDigits[byte & 0xf];
}

} // namespace

void WriteConsoleLine(const std::string& text) {
    std::string line;
    line.reserve(text.size() + 1);
    for (const char character : text) {
        AppendVisibly(character, line);
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace Tarvik::Vorn
