// Texts of any bytes made valid UTF-8.
#include "VornUtf8.h"

#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

TEST(VornUtf8Test, ValidTextsStayAsTheyAre) {
    EXPECT_EQ(ReplaceInvalidUtf8("a é € 😀"), "a é € 😀");
}

TEST(VornUtf8Test, EveryByteOutsideASequenceIsReplaced) {
    EXPECT_EQ(ReplaceInvalidUtf8("a\xff\x80z"), "a\xef\xbf\xbd\xef\xbf\xbdz");
}

TEST(VornUtf8Test, ASequenceThatIsCutShortIsReplacedByteByByte) {
    EXPECT_EQ(ReplaceInvalidUtf8("\xe2\x82"), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(ReplaceInvalidUtf8("\xe2\x82z"), "\xef\xbf\xbd\xef\xbf\xbdz");
}

TEST(VornUtf8Test, OverlongFormsSurrogatesAndNumbersBeyondTheLastAreReplaced) {
    for (const char* text : {"\xc0\xaf", "\xe0\x80\xaf", "\xf0\x80\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
        const std::string valid = ReplaceInvalidUtf8(text);
        EXPECT_EQ(valid.find(text[0]), std::string::npos) << valid;
        EXPECT_EQ(valid.size(), 3 * std::string(text).size());
    }
}

TEST(VornUtf8Test, ANulIsACharacterLikeAnyOther) {
    const std::string text("a\0b\xff", 4);

    EXPECT_EQ(ReplaceInvalidUtf8(text), std::string("a\0b\xef\xbf\xbd", 6));
}

TEST(VornUtf8Test, ATextIsValidUpToItsFirstWrongByte) {
    const std::string eights("0123456789abcdef");

    EXPECT_EQ(ValidUtf8Length(""), 0u);
    EXPECT_EQ(ValidUtf8Length(eights + "é" + eights + "€"), 2 * eights.size() + 5);
    for (size_t i = 0; i <= eights.size(); ++i) {
        EXPECT_EQ(ValidUtf8Length(eights.substr(0, i) + "\xff" + eights), i);
        EXPECT_EQ(ValidUtf8Length(eights.substr(0, i) + "\xc3"), i);
    }
}

TEST(VornUtf8Test, NullReadsAsTheEmptyText) {
    EXPECT_EQ(OrEmpty(nullptr), "");
    EXPECT_EQ(OrEmpty("x"), "x");
}

} // namespace
} // namespace Tarvik::Vorn::Test
