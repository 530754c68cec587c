#include "VornFormat.h"

#include <array>
#include <charconv>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace Tarvik::Vorn {
namespace {

// Room for nearly every line.
constexpr size_t kUsualSize = 512;

bool HasOnlyPlainConversions(const char* format) {
    for (const char* percent = std::strchr(format, '%'); percent != nullptr; percent = std::strchr(percent + 2, '%')) {
        if (percent[1] == '\0' || std::strchr("sdup%", percent[1]) == nullptr) {
            return false;
        }
    }
    return true;
}

template <class Number>
void AppendNumber(Number number, int base, std::string& text) {
    std::array<char, 24> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): to_chars fills what is used.
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number, base);
    text.append(digits.data(), end);
}

void AppendPointer(const void* pointer, std::string& text) {
    if (pointer == nullptr) {
        text += "(nil)";
        return;
    }
    text += "0x";
    AppendNumber(reinterpret_cast<uintptr_t>(pointer), 16, text);
}

// REQUIRES: HasOnlyPlainConversions(format).
std::string FormatPlainly(const char* format, va_list arguments) {
    std::string text;
    text.reserve(kUsualSize);
    std::string_view rest = format;
    for (size_t percent = rest.find('%'); percent != std::string_view::npos; percent = rest.find('%')) {
        text += rest.substr(0, percent);
        switch (rest[percent + 1]) {
        case 's': {
            const char* const argument = va_arg(arguments, const char*);
            text += argument == nullptr ? "(null)" : argument;
            break;
        }
        case 'd':
            AppendNumber(va_arg(arguments, int), 10, text);
            break;
        case 'u':
            AppendNumber(va_arg(arguments, unsigned), 10, text);
            break;
        case 'p':
            AppendPointer(va_arg(arguments, const void*), text);
            break;
        default: // %%
            text += '%';
            break;
        }
        rest.remove_prefix(percent + 2);
    }
    text += rest;
    return text;
}

std::string Unformatted(const char* format) {
    return std::string("(cannot be formatted) ") + format;
}

// Short texts are formatted once, others a second time.
__attribute__((format(printf, 1, 0))) std::string FormatByTheLibrary(const char* format, va_list arguments) {
    std::array<char, kUsualSize> shortText; // NOLINT(cppcoreguidelines-pro-type-member-init): it is written first.
    va_list again;
    va_copy(again, arguments);
    const int size = std::vsnprintf(shortText.data(), shortText.size(), format, arguments);
    std::string text;
    if (size < 0) {
        text = Unformatted(format);
    } else if (static_cast<size_t>(size) < shortText.size()) {
        text.assign(shortText.data(), static_cast<size_t>(size));
    } else {
        text.resize(static_cast<size_t>(size));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

} // namespace

std::string Format(const char* format, va_list arguments) {
    if (!HasOnlyPlainConversions(format)) {
        return FormatByTheLibrary(format, arguments);
    }
    std::string text = FormatPlainly(format, arguments);
    if (text.size() > INT_MAX) { // The bound of the C library.
        return Unformatted(format);
    }
    return text;
}

} // namespace Tarvik::Vorn
