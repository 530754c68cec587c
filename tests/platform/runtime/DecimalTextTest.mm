// NSDecimalNumber writes itself in plain digits.

#include "PoolTest.h"

namespace {

class HostDecimalText : public Tarvik::Vorn::Test::PoolTest {};

const char* TextOf(const char* number) {
    NSString* text = [NSString stringWithUTF8String:number];
    return [[[NSDecimalNumber decimalNumberWithString:text] stringValue] UTF8String];
}

TEST_F(HostDecimalText, LargeAndSmallNumbersHaveNoExponent) {
    EXPECT_STREQ(TextOf("12345678901234567890"), "12345678901234567890");
    EXPECT_STREQ(TextOf("1e20"), "100000000000000000000");
    EXPECT_STREQ(TextOf("0.000000001"), "0.000000001");
    EXPECT_STREQ(TextOf("-0.0001"), "-0.0001");
    EXPECT_STREQ(TextOf("-12345678901234567890.125"), "-12345678901234567890.125");
}

TEST_F(HostDecimalText, OrdinaryNumbersStayAsTheyAre) {
    EXPECT_STREQ(TextOf("0"), "0");
    EXPECT_STREQ(TextOf("1.5"), "1.5");
    EXPECT_STREQ(TextOf("-1.50"), "-1.5");
    EXPECT_STREQ(TextOf("100"), "100");
}

TEST_F(HostDecimalText, NotANumberHasItsName) {
    EXPECT_STREQ([[[NSDecimalNumber notANumber] stringValue] UTF8String], "NaN");
}

TEST_F(HostDecimalText, DescriptionsAreTheSameTextWithTheSeparatorOfTheLocale) {
    NSDecimalNumber* number = [NSDecimalNumber decimalNumberWithString:@"0.000025"];

    EXPECT_STREQ([[number description] UTF8String], "0.000025");
    EXPECT_STREQ([[number descriptionWithLocale:@{NSDecimalSeparator : @","}] UTF8String], "0,000025");
}

} // namespace
