// The xcframework that `make package` makes, as the doctor sees it: in order, and not in order once a byte of it is
// changed.

#include "DoctorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kDevice = "ios-arm64/VornFacebook.framework";

class ExaminedPackageTest : public DoctorTest {
protected:
    // A copy of the package, to be changed.
    std::string Copy() const {
        std::string copy = PathOf("VornFacebook.xcframework");
        std::filesystem::copy(VORN_PACKAGE, copy, std::filesystem::copy_options::recursive);
        return copy;
    }

    // The binary of devices with another text of the same length everywhere.
    void Rename(const std::string& copy, const std::string& before, const std::string& after) const {
        const std::string path = copy + "/" + kDevice + "/VornFacebook";
        std::ifstream file(path, std::ios::binary);
        std::string bytes(std::istreambuf_iterator<char>(file), {});
        size_t count = 0;
        for (size_t at = bytes.find(before); at != std::string::npos; at = bytes.find(before, at)) {
            bytes.replace(at, before.size(), after);
            count += 1;
        }
        EXPECT_NE(count, 0U) << before;
        std::ofstream(path, std::ios::binary) << bytes;
    }
};

TEST_F(ExaminedPackageTest, ThePackageIsInOrder) {
    EXPECT_THAT(FoundIn(VORN_PACKAGE), IsEmpty());
}

TEST_F(ExaminedPackageTest, ItsFrameworksAndBinariesAreInOrder) {
    EXPECT_THAT(FoundIn(std::string(VORN_PACKAGE) + "/" + kDevice), IsEmpty());
    EXPECT_THAT(FoundIn(std::string(VORN_PACKAGE) + "/" + kDevice + "/VornFacebook"), IsEmpty());
    EXPECT_THAT(FoundIn(std::string(VORN_PACKAGE) + "/ios-arm64_x86_64-simulator/VornFacebook.framework"), IsEmpty());
}

TEST_F(ExaminedPackageTest, ARenamedLinkSymbolIsFound) {
    const std::string copy = Copy();

    Rename(copy, "FileDataExtracting", "FileDataExtractinG");

    EXPECT_THAT(FoundIn(copy), ElementsAre("link-symbols-missing"));
    EXPECT_THAT(CauseOf(copy, "link-symbols-missing"), HasSubstr("FBLink_NSData_FileDataExtracting."));
    EXPECT_THAT(FileOf(copy, "link-symbols-missing"), HasSubstr(kDevice));
}

TEST_F(ExaminedPackageTest, ARenamedClassIsFound) {
    const std::string copy = Copy();

    Rename(copy, std::string("\0VornFriendFacebook\0", 20), std::string("\0VornFriendFacebooK\0", 20));

    EXPECT_THAT(FoundIn(copy), ElementsAre("friend-class-missing"));
}

TEST_F(ExaminedPackageTest, AMissingPrivacyManifestIsFound) {
    const std::string copy = Copy();

    std::filesystem::remove(copy + "/" + kDevice + "/PrivacyInfo.xcprivacy");

    EXPECT_THAT(FoundIn(copy), ElementsAre("privacy-manifest-missing"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
