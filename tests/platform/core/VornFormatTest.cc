// Formatting as printf does it, held against the C library's.
#include "VornFormat.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

__attribute__((format(printf, 1, 2))) std::string Formatted(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text = Format(format, arguments);
    va_end(arguments);
    return text;
}

__attribute__((format(printf, 1, 2))) std::string FormattedByTheLibrary(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::string text(8192, '\0');
    text.resize(static_cast<size_t>(std::vsnprintf(text.data(), text.size(), format, arguments)));
    va_end(arguments);
    return text;
}

#define EXPECT_AS_THE_LIBRARY(...) EXPECT_EQ(Formatted(__VA_ARGS__), FormattedByTheLibrary(__VA_ARGS__))

TEST(VornFormatTest, AFormatWithoutConversionsIsTheText) {
    EXPECT_EQ(Formatted("%s", ""), "");
    EXPECT_EQ(Formatted("a line"), "a line");
}

TEST(VornFormatTest, PlainConversionsGiveWhatTheLibraryGives) {
    const int value = 0;
    EXPECT_AS_THE_LIBRARY("[ %s ] code %d", "s1", -7);
    EXPECT_AS_THE_LIBRARY("%d%d%d", 0, INT_MAX, INT_MIN);
    EXPECT_AS_THE_LIBRARY("%u|%u", 0u, UINT_MAX);
    EXPECT_AS_THE_LIBRARY("%p", static_cast<const void*>(&value));
    EXPECT_AS_THE_LIBRARY("100%% of %s%%", "all");
}

TEST(VornFormatTest, NullReadsAsInTheLibrary) {
    const char* const noText = nullptr;
    const void* const noPointer = nullptr;
    EXPECT_AS_THE_LIBRARY("[ %s ]", noText);
    EXPECT_AS_THE_LIBRARY("%p", noPointer);
}

TEST(VornFormatTest, ConversionsOfOtherKindsAreTheLibrarys) {
    EXPECT_AS_THE_LIBRARY("%lu, %5d, %-5s|, %.3f, %x, %c", 1ul << 40, 42, "ab", 1.5, 255u, 'z');
    EXPECT_AS_THE_LIBRARY("%s then %.2s", "plain", "precise");
}

TEST(VornFormatTest, APercentSignInAnArgumentIsNoConversion) {
    EXPECT_EQ(Formatted("%s %d", "100% %s %d", 5), "100% %s %d 5");
}

TEST(VornFormatTest, TextsOfAnyLengthAreKeptWhole) {
    const std::string text(4000, 'x');
    EXPECT_AS_THE_LIBRARY("%s-%s", text.c_str(), text.c_str());
    EXPECT_AS_THE_LIBRARY("%s-%lu", text.c_str(), 1ul);
}

} // namespace
} // namespace Tarvik::Vorn::Test
