// Names and types that are written otherwise on Apple's systems than here.

#include "HostSymbols.h"
#include "MethodTypes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using Runner::FindHostSymbol;
using Runner::HostTypes;
using Runner::WithHostIntegers;

TEST(HostNamesTest, LongLongIntegersBecomeLongOnes) {
    EXPECT_EQ(WithHostIntegers("_ZN4Vorn3SumExyi", 11), "_ZN4Vorn3SumElmi");
    EXPECT_EQ(WithHostIntegers("_ZN4Vorn3SumEPxRKy", 11), "_ZN4Vorn3SumEPlRKm");
}

TEST(HostNamesTest, LettersInNamesStay) {
    EXPECT_EQ(WithHostIntegers("_ZN4Vorn3SumEx4Taxy", 11), "_ZN4Vorn3SumEl4Taxy");
    EXPECT_EQ(WithHostIntegers("_ZN4Vorn3SumES0_x", 11), "_ZN4Vorn3SumES0_l");
}

TEST(HostNamesTest, LengthsThatLieAreNoHarm) {
    EXPECT_EQ(WithHostIntegers("_ZN1aE99999999999x", 5), "_ZN1aE99999999999x");
    EXPECT_EQ(WithHostIntegers("_ZN1aE18446744073709551615x", 5), "_ZN1aE18446744073709551615x");
}

TEST(HostNamesTest, SymbolsAreFoundWithoutTheirUnderscore) {
    EXPECT_EQ(FindHostSymbol("_abort"), reinterpret_cast<void*>(&std::abort));
    EXPECT_EQ(FindHostSymbol("abort"), std::nullopt);
    EXPECT_EQ(FindHostSymbol("_VornNobodyHasThis"), std::nullopt);
    EXPECT_EQ(FindHostSymbol(""), std::nullopt);
}

TEST(HostNamesTest, AnyExceptionIsWrittenAsNull) {
    EXPECT_EQ(FindHostSymbol("_OBJC_EHTYPE_id"), std::optional<void*>(nullptr));
}

TEST(HostNamesTest, TypesWithoutBitFieldsStay) {
    EXPECT_EQ(HostTypes("v32@0:8i16@24"), "v32@0:8i16@24");
    EXPECT_EQ(HostTypes("{b3name=b}8"), "{b3name=b}8");
}

TEST(HostNamesTest, BitFieldsGetTheirOffsetAndType) {
    EXPECT_EQ(HostTypes("{Bits=b3b5i}"), "{Bits=b0C3b3C5i}");
    EXPECT_EQ(HostTypes("{Bits=b1b31}"), "{Bits=b0I1b1I31}");
    EXPECT_EQ(HostTypes("{Bits=\"b1\"b1\"rest\"b63}"), "{Bits=\"b1\"b0C1\"rest\"b0Q63}");
}

} // namespace
} // namespace Tarvik::Vorn::Test
