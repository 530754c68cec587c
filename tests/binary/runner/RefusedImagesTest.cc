// Images that the runner does not run: what it cannot do is named, and so is what to do about it.

#include "Runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// What loading an image of these tests is answered with; empty when it runs.
std::string Loaded(const std::string& name) {
    const std::optional<LocatedError> error = Runner::LoadImage(VORN_IMAGES "/" + name, stderr);
    return error ? error->text() : "";
}

TEST(RefusedImagesTest, AGoodOneRunsAndItsExportsAreFound) {
    EXPECT_EQ(Loaded("Good"), "");
    const auto* const exported = static_cast<const int*>(Runner::ImageSymbol("VornGood"));

    ASSERT_NE(exported, nullptr);
    EXPECT_EQ(*exported, 1);
    EXPECT_EQ(Runner::ImageSymbol("VornBad"), nullptr);
}

TEST(RefusedImagesTest, EveryErrorNamesTheFileAndARemedy) {
    EXPECT_THAT(Loaded("ThreadLocal"), AllOf(StartsWith(VORN_IMAGES "/ThreadLocal: "),
                                             HasSubstr("; use the binary of a VornFacebook.xcframework")));
    EXPECT_THAT(Loaded("NotThere"), AllOf(StartsWith(VORN_IMAGES "/NotThere: "), HasSubstr("; name a file")));
}

TEST(RefusedImagesTest, AnImportThatNobodyHasIsNamed) {
    EXPECT_THAT(Loaded("MissingImport"), HasSubstr("imports what this process does not have: _VornNobodyHasThis;"));
}

TEST(RefusedImagesTest, AFunctionWithOtherParametersIsAnotherFunction) {
    EXPECT_THAT(Loaded("WrongMangling"), HasSubstr("does not have: __ZN6Tarvik4Vorn9VornUtils9GetRetMsgEs;"));
}

TEST(RefusedImagesTest, VariablesThatTheFunctionsHereWouldMisreadAreNamed) {
    EXPECT_THAT(Loaded("OtherMutex"), HasSubstr("__ZNSt3__15mutex4lockEv"));
}

TEST(RefusedImagesTest, ThreadLocalVariablesAreRefused) {
    EXPECT_THAT(Loaded("ThreadLocal"), HasSubstr("has thread-local variables, which the runner cannot provide"));
}

TEST(RefusedImagesTest, ChainedFixupsAreRefused) {
    EXPECT_THAT(Loaded("ChainedFixups"), HasSubstr("has chained fixups, which the runner does not apply"));
}

TEST(RefusedImagesTest, CodeForAnotherProcessorOrSystemIsRefused) {
    EXPECT_THAT(Loaded("ForDevices"), HasSubstr("the file has code for iOS on arm64; here runs only"));
    EXPECT_THAT(Loaded("ForMacs"), HasSubstr("the file has code for macOS on x86_64; here runs only"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
