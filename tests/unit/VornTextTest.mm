// Conversions between Objective-C and C++ texts, nil and invalid ones included.

#include "VornText.h"

#include "PoolTest.h"

namespace Tarvik::Vorn::Test {
namespace {

using VornTextTest = PoolTest;

TEST_F(VornTextTest, ATextBecomesUtf8) {
    EXPECT_STREQ(CStr(@"grüße"), "grüße");
    EXPECT_STREQ(CStr(@""), "");
}

TEST_F(VornTextTest, NilBecomesTheEmptyText) {
    EXPECT_STREQ(CStr(nil), "");
}

TEST_F(VornTextTest, ATextWithoutAUtf8FormBecomesTheEmptyText) {
    const unichar lone = 0xd83d;
    NSString* const text = [NSString stringWithCharacters:&lone length:1];

    EXPECT_STREQ(CStr(text), "");
}

TEST_F(VornTextTest, Utf8BecomesAText) {
    EXPECT_TRUE([MakeNSString("grüße") isEqualToString:@"grüße"]);
    EXPECT_TRUE([MakeNSString(std::string("Game")) isEqualToString:@"Game"]);
}

TEST_F(VornTextTest, NullBecomesTheEmptyText) {
    EXPECT_TRUE([MakeNSString(static_cast<const char*>(nullptr)) isEqualToString:@""]);
}

TEST_F(VornTextTest, InvalidUtf8BecomesNil) {
    EXPECT_EQ(MakeNSString("\xff\xfe"), nil);
    EXPECT_EQ(MakeNSString(std::string("a\xc3")), nil);
}

TEST_F(VornTextTest, AStandardTextEndsAtItsFirstNul) {
    EXPECT_TRUE([MakeNSString(std::string("ab\0cd", 5)) isEqualToString:@"ab"]);
}

} // namespace
} // namespace Tarvik::Vorn::Test
