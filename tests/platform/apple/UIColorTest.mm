// UIColor: keeps the components it was given.
#include "UIKit/UIColor+Control.h"

#include "ApplePlatformTest.h"

namespace Tarvik::Vorn::Test {
namespace {

using UIColorFacts = ApplePlatformTest;

TEST_F(UIColorFacts, AColourKeepsItsComponentsApart) {
    UIColor* const color = [UIColor colorWithRed:0.1 green:0.2 blue:0.3 alpha:0.4];

    EXPECT_EQ(Host::ComponentsOf(color), (Host::ColorComponents{0.1, 0.2, 0.3, 0.4}));
}

TEST_F(UIColorFacts, ComponentsBeyondTheRangeAreKept) {
    UIColor* const color = [UIColor colorWithRed:-1 green:2 blue:255 alpha:0];

    EXPECT_EQ(Host::ComponentsOf(color), (Host::ColorComponents{-1, 2, 255, 0}));
}

TEST_F(UIColorFacts, MakingAColourIsNotRecorded) {
    [UIColor colorWithRed:0 green:0 blue:0 alpha:1];

    EXPECT_THAT(RecordedCalls(), ::testing::IsEmpty());
}

} // namespace
} // namespace Tarvik::Vorn::Test
