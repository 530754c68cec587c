// What a path means when somebody wants to run it.

#include "Runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class ImagePathsTest : public ::testing::Test {
protected:
    ImagePathsTest() {
        std::string pattern = ::testing::TempDir() + "images-XXXXXX";
        mFolder = mkdtemp(pattern.data());
    }
    ~ImagePathsTest() override { fs::remove_all(mFolder); }

    // Copies an image of these tests into a framework of that folder.
    fs::path Framework(const std::string& image, const std::string& folder) const {
        fs::path framework = mFolder / folder / "Game.framework";
        fs::create_directories(framework);
        fs::copy_file(VORN_IMAGES "/" + image, framework / "Game");
        return framework;
    }

    const fs::path& Folder() const { return mFolder; }

    static std::string Found(const std::string& path) {
        std::string file;
        const std::optional<LocatedError> error = Runner::FindImageFile(path, file);
        return error ? error->text() : file;
    }

private:
    fs::path mFolder;
};

TEST_F(ImagePathsTest, AFileIsItself) {
    EXPECT_EQ(Found(VORN_IMAGES "/Good"), VORN_IMAGES "/Good");
}

TEST_F(ImagePathsTest, AFrameworkHasABinaryOfItsName) {
    const fs::path framework = Framework("Good", "any");

    EXPECT_EQ(Found(framework), framework / "Game");
    EXPECT_EQ(Found(framework.string() + "/"), framework / "Game");
}

TEST_F(ImagePathsTest, OfAnXcframeworkTheBinaryThatRunsIsTaken) {
    Framework("ForDevices", "My.xcframework/ios-arm64");
    const fs::path simulator = Framework("Good", "My.xcframework/ios-simulator");

    EXPECT_EQ(Found(Folder() / "My.xcframework"), simulator / "Game");
}

TEST_F(ImagePathsTest, AnXcframeworkWithoutOneIsRefused) {
    Framework("ForDevices", "My.xcframework/ios-arm64");
    const std::string path = Folder() / "My.xcframework";

    EXPECT_THAT(Found(path),
                AllOf(StartsWith(path + ": "), HasSubstr("no framework in it has code for the iOS simulator")));
}

TEST_F(ImagePathsTest, APathThatLeadsNowhereIsRefused) {
    EXPECT_THAT(Found("/nowhere/My.xcframework"),
                AllOf(StartsWith("/nowhere/My.xcframework: there is no such file"), HasSubstr("; name a ")));
}

TEST_F(ImagePathsTest, OnlyImagesLookLikeImages) {
    EXPECT_TRUE(Runner::IsImageFile(VORN_IMAGES "/Good"));
    EXPECT_TRUE(Runner::IsImageFile(VORN_IMAGES "/ForDevices"));
    EXPECT_FALSE(Runner::IsImageFile("/bin/sh"));
    EXPECT_FALSE(Runner::IsImageFile("/nowhere"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
