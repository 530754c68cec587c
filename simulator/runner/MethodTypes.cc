#include "MethodTypes.h"

#include <cctype>
#include <charconv>
#include <cstdint>
#include <vector>

namespace Tarvik::Vorn::Runner {
namespace {

bool BitFieldAt(std::string_view types, size_t at) {
    return at + 1 < types.size() && types[at] == 'b' && std::isdigit(static_cast<unsigned char>(types[at + 1])) != 0;
}

// The bit-fields that stand side by side from `at` on, which then is behind them.
std::vector<unsigned> BitFields(std::string_view types, size_t& at) {
    std::vector<unsigned> widths;
    while (BitFieldAt(types, at)) {
        unsigned width = 0;
        const char* const digits = types.data() + at + 1;
        const char* const end = std::from_chars(digits, types.data() + types.size(), width).ptr;
        widths.push_back(width);
        at += 1 + static_cast<size_t>(end - digits);
    }
    return widths;
}

// The smallest integer that holds so many bits.
char Holder(uint64_t bits) {
    return bits <= 8 ? 'C' : bits <= 16 ? 'S' : bits <= 32 ? 'I' : 'Q';
}

// Where the name that begins at `at` ends: that of a structure or union, up to its =, or one in quotes.
size_t EndOfName(std::string_view types, size_t at) {
    const bool isQuoted = types[at] == '"';
    const size_t end = isQuoted ? types.find('"', at + 1) : types.find_first_of("=})", at);
    return end == std::string_view::npos ? types.size() : isQuoted ? end + 1 : end;
}

} // namespace

std::string HostTypes(std::string_view types) {
    std::string host;
    for (size_t at = 0; at < types.size();) {
        if (types[at] == '{' || types[at] == '(' || types[at] == '"') {
            const size_t end = EndOfName(types, at);
            host += types.substr(at, end - at);
            at = end;
        } else if (BitFieldAt(types, at)) {
            const std::vector<unsigned> widths = BitFields(types, at);
            uint64_t sum = 0;
            for (const unsigned width : widths) {
                sum += width;
            }
            uint64_t offset = 0;
            for (const unsigned width : widths) {
                host += "b" + std::to_string(offset) + Holder(sum) + std::to_string(width);
                offset += width;
            }
        } else {
            host += types[at++];
        }
    }
    return host;
}

} // namespace Tarvik::Vorn::Runner
