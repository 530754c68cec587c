// A program that names GNUstep base before the host runtime has base's block functions. It is refused at its start.

#include "RunProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::AllOf;
using ::testing::HasSubstr;

namespace {

TEST(HostLinkOrder, AProgramThatNamesGNUstepBaseFirstIsRefusedWithTheRemedy) {
    const auto result = Tarvik::Vorn::Test::RunProgram({VORN_WRONG_LINK_ORDER});

    EXPECT_EQ(result.exitStatus, -1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                AllOf(HasSubstr("Vorn host runtime: the block function _Block_copy is bound to "),
                      HasSubstr("/libgnustep-base.so"), HasSubstr("/libVornHostRuntime.so, so blocks would not retain"),
                      HasSubstr("\nRemedy: link libVornHostRuntime.so before -lgnustep-base.")));
}

} // namespace
