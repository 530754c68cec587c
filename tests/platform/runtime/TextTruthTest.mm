// Whether a text says yes, as Apple documents it.

#include "PoolTest.h"

namespace {

class HostTextTruth : public Tarvik::Vorn::Test::PoolTest {
protected:
    static bool SaysYes(const char* text) { return [[NSString stringWithUTF8String:text] boolValue] != NO; }
};

TEST_F(HostTextTruth, TheFirstCharacterBehindBlanksASignAndZerosDecides) {
    for (const char* text :
         {"1", "9", "y", "Yes", "t", "TRUE", "+1", "-1", "  y", "\t\n1", "+00T", "-0001", "0 1", "1no"}) {
        EXPECT_TRUE(SaysYes(text)) << text;
    }
    for (const char* text : {"", "0", "no", "N", "false", "+", "-0", "000", "0.5", "x1", " ", "\u00e9"}) {
        EXPECT_FALSE(SaysYes(text)) << text;
    }
}

TEST_F(HostTextTruth, ASignBehindAZeroOrAnotherSignSaysNo) {
    for (const char* text : {"0+1", "00-1", "+-1", "--y", "0+"}) {
        EXPECT_FALSE(SaysYes(text)) << text;
    }
}

TEST_F(HostTextTruth, EveryKindOfStringIsReadAlike) {
    EXPECT_FALSE([@"0+1" boolValue]);
    EXPECT_TRUE([@"+01" boolValue]);
    EXPECT_FALSE([[NSMutableString stringWithString:@"0+1"] boolValue]);
    EXPECT_FALSE([[@"0+1\u00e9" substringToIndex:3] boolValue]);
    EXPECT_FALSE(([[NSString stringWithFormat:@"%C", unichar{0xd83d}] boolValue]));
}

} // namespace
