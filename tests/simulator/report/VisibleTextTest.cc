// Texts of a run made fit to be shown: what could change a terminal or a page is spelled out.
#include "report/Utf8.h"
#include "report/VisibleText.h"

#include <gtest/gtest.h>

namespace Tarvik::Vorn::Simulator::Test {
namespace {

TEST(Utf8Test, CharactersAreCountedNotBytes) {
    EXPECT_EQ(CharacterCount("a é € 😀"), 7U);
}

TEST(Utf8Test, OverlongFormsSurrogatesAndNumbersBeyondTheLastAreInvalid) {
    for (const char* text : {"\xc0\xaf", "\xe0\x80\xaf", "\xf0\x80\x80\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
        EXPECT_FALSE(FirstCharacter(text)) << text;
    }
}

TEST(Utf8Test, TheFirstAndTheLastOfEachLengthAreValid) {
    EXPECT_EQ(FirstCharacter("\xc2\x80")->codePoint, 0x80U);
    EXPECT_EQ(FirstCharacter("\xdf\xbf")->codePoint, 0x7ffU);
    EXPECT_EQ(FirstCharacter("\xe0\xa0\x80")->codePoint, 0x800U);
    EXPECT_EQ(FirstCharacter("\xef\xbf\xbf")->codePoint, 0xffffU);
    EXPECT_EQ(FirstCharacter("\xf0\x90\x80\x80")->codePoint, 0x10000U);
    EXPECT_EQ(FirstCharacter("\xf4\x8f\xbf\xbf")->codePoint, 0x10ffffU);
}

TEST(Utf8Test, AnEmptyTextHasNoFirstCharacter) {
    EXPECT_FALSE(FirstCharacter(""));
}

TEST(VisibleTextTest, ControlCharactersAreSpelledOut) {
    EXPECT_EQ(VisibleText("\x1b[31m\a\t\r\x7f"), "\\x1b[31m\\x07\\t\\r\\x7f");
    EXPECT_EQ(VisibleText(std::string_view("a\0b", 3)), "a\\x00b");
}

TEST(VisibleTextTest, BytesThatAreNoUtf8AreSpelledOut) {
    EXPECT_EQ(VisibleText("caf\xe9 \xff"), "caf\\xe9 \\xff");
}

TEST(VisibleTextTest, ControlCharactersBehindAsciiAreSpelledOut) {
    EXPECT_EQ(VisibleText("\xc2\x9b"
                          "31m"),
              "\\u009b31m");
}

TEST(VisibleTextTest, WhatTurnsTheDirectionOfWritingIsSpelledOut) {
    EXPECT_EQ(VisibleText("\xe2\x80\xae"
                          "gpj\xe2\x81\xa6"),
              "\\u202egpj\\u2066");
}

TEST(VisibleTextTest, WhatIsThereButCannotBeSeenIsSpelledOut) {
    EXPECT_EQ(VisibleText("\xe2\x80\x8b\xef\xbb\xbf\xf3\xa0\x80\x81\xef\xbf\xbf"), "\\u200b\\ufeff\\ue0001\\uffff");
}

TEST(VisibleTextTest, OtherTextStaysAsItIs) {
    EXPECT_EQ(VisibleText("Ada: \"é € 😀\" \\n"), "Ada: \"é € 😀\" \\n");
}

TEST(VisibleTextTest, LineFeedsStayInTextsAndAreSpelledOutInLines) {
    EXPECT_EQ(VisibleText("a\nb"), "a\nb");
    EXPECT_EQ(VisibleLine("a\nb"), "a\\nb");
}

TEST(VisibleTextTest, WhatMeansSomethingInHtmlIsEscaped) {
    EXPECT_EQ(EscapedText("<a href=\"x\" b='y'>&\n\x1b"), "&lt;a href=&quot;x&quot; b=&#39;y&#39;&gt;&amp;\n\\x1b");
    EXPECT_EQ(EscapedLine("<\n"), "&lt;\\n");
}

} // namespace
} // namespace Tarvik::Vorn::Simulator::Test
