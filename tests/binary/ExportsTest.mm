// The data that the library exports: the version record and the ten words that link the Facebook SDK's categories. Values
// are read from the loaded library; which symbols there are is read from its file.

#include "LinkNames.h"
#include "RunProgram.h"
#include "ShippedBinary.h"

#include "VornFacebookVersion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::UnorderedElementsAreArray;

class ExportsTest : public ::testing::Test {
protected:
    ExportsTest() { LoadSubject(); }

    // The kinds and names of the symbols that the library's file defines and exports, by their beginning.
    static std::vector<std::pair<std::string, std::string>> Exported(const std::string& beginning) {
        const ProgramResult listing = RunProgram({VORN_LLVM_NM, "-D", "--defined-only", std::getenv("VORN_SUBJECT")});
        EXPECT_EQ(listing.exitStatus, 0) << listing.errors;
        std::vector<std::pair<std::string, std::string>> found;
        std::istringstream lines(listing.output);
        std::string address;
        std::string kind;
        for (std::string name; lines >> address >> kind >> name;) {
            if (name.starts_with(beginning)) {
                found.emplace_back(kind, name);
            }
        }
        return found;
    }
};

TEST_F(ExportsTest, TheVersionTextHasTwoBlanksALineFeedAndANul) {
    const auto* const text = static_cast<const char*>(SubjectSymbol("VornFacebookVersionString"));

    ASSERT_NE(text, nullptr);
    const char expected[] = "@(#)PROGRAM:VornFacebook  PROJECT:VornDev-1\n";
    EXPECT_EQ(std::memcmp(text, expected, sizeof(expected)), 0) << text;
}

TEST_F(ExportsTest, TheVersionNumberIsOne) {
    const auto* const number = static_cast<const double*>(SubjectSymbol("VornFacebookVersionNumber"));

    ASSERT_NE(number, nullptr);
    EXPECT_EQ(*number, 1.0);
}

TEST_F(ExportsTest, TheVersionRecordIsConstantData) {
    SKIP_FOR_SHIPPED_BINARY("its symbol table is read by tests/binary/ios");
    EXPECT_THAT(Exported("VornFacebookVersion"),
                UnorderedElementsAreArray(std::vector<std::pair<std::string, std::string>>{
                    {"R", "VornFacebookVersionNumber"}, {"R", "VornFacebookVersionString"}}));
}

TEST_F(ExportsTest, EachLinkWordHoldsTheAddressOfItsSymbol) {
    for (const std::string& name : LinkNames()) {
        const auto* const word = static_cast<const void* const*>(SubjectSymbol("FBLink_" + name));
        const void* const target = SubjectSymbol("FBLinkable_" + name);

        ASSERT_NE(word, nullptr) << name;
        ASSERT_NE(target, nullptr) << name;
        EXPECT_EQ(*word, target) << name;
    }
}

TEST_F(ExportsTest, ExactlyTenWeakLinkWordsAreExported) {
    SKIP_FOR_SHIPPED_BINARY("its symbol table is read by tests/binary/ios");
    std::vector<std::pair<std::string, std::string>> expected;
    expected.reserve(LinkNames().size());
    for (const std::string& name : LinkNames()) {
        expected.emplace_back("V", "FBLink_" + name);
    }

    EXPECT_THAT(Exported("FBLink_"), UnorderedElementsAreArray(expected));
}

} // namespace
} // namespace Tarvik::Vorn::Test
