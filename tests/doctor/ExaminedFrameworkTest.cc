// What the doctor says about the plugin as a framework and as an xcframework.

#include "DoctorTest.h"
#include "MachOMaker.h"
#include "PlistMaker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

std::string FrameworkInfo() {
    return XmlPlist({{"CFBundlePackageType", TextValue("FMWK")}});
}

std::string Slice(const std::string& identifier, const std::string& library, const std::string& variant) {
    std::string slice = "<dict><key>LibraryIdentifier</key>" + TextValue(identifier) + "<key>LibraryPath</key>" +
                        TextValue(library) + "<key>SupportedPlatform</key><string>ios</string>";
    if (!variant.empty()) {
        slice += "<key>SupportedPlatformVariant</key>" + TextValue(variant);
    }
    return slice + "</dict>";
}

class ExaminedFrameworkTest : public DoctorTest {
protected:
    // A framework in order in the folder, which is relative.
    std::string WriteFramework(const std::string& folder, const std::string& binary) const {
        Write(folder + "/Info.plist", FrameworkInfo());
        Write(folder + "/PrivacyInfo.xcprivacy", XmlPlist({}));
        Write(folder + "/VornFacebook", binary);
        return PathOf(folder);
    }

    // An xcframework in order, but for its Info.plist.
    std::string WriteXCFramework(const std::string& slices) const {
        Write("V.xcframework/Info.plist", XmlPlist({{"AvailableLibraries", "<array>" + slices + "</array>"},
                                                    {"CFBundlePackageType", TextValue("XFWK")}}));
        WriteFramework("V.xcframework/device/VornFacebook.framework", Image(GoodLibrary()));
        WriteFramework("V.xcframework/simulator/VornFacebook.framework", GoodSimulatorBinary());
        return PathOf("V.xcframework");
    }

    static std::string DeviceSlice() { return Slice("device", "VornFacebook.framework", ""); }
    static std::string SimulatorSlice() { return Slice("simulator", "VornFacebook.framework", "simulator"); }
};

TEST_F(ExaminedFrameworkTest, AFrameworkInOrderHasNoFindings) {
    const std::string path = WriteFramework("VornFacebook.framework", Image(GoodLibrary()));

    EXPECT_THAT(FoundIn(path), IsEmpty());
    EXPECT_THAT(FoundIn(path + "/"), IsEmpty());
}

TEST_F(ExaminedFrameworkTest, ItsBinaryIsExamined) {
    ImageRecipe recipe = GoodLibrary();
    recipe.hasSignature = false;

    const std::string path = WriteFramework("VornFacebook.framework", Image(recipe));

    EXPECT_THAT(FoundIn(path), ElementsAre("code-signature-missing"));
    EXPECT_EQ(FileOf(path, "code-signature-missing"), path + "/VornFacebook");
}

TEST_F(ExaminedFrameworkTest, MissingPropertyListsAreFound) {
    Write("VornFacebook.framework/VornFacebook", Image(GoodLibrary()));

    EXPECT_THAT(FoundIn(PathOf("VornFacebook.framework")),
                ElementsAre("framework-info-missing", "privacy-manifest-missing"));
}

TEST_F(ExaminedFrameworkTest, DamagedFilesAreErrorsThatNameThem) {
    const std::string path = WriteFramework("VornFacebook.framework", "\xCF\xFA\xED\xFE");
    EXPECT_THAT(ErrorOf(path), StartsWith(path + "/VornFacebook: at byte offset 0x4: "));

    Write("VornFacebook.framework/VornFacebook", Image(GoodLibrary()));
    Write("VornFacebook.framework/PrivacyInfo.xcprivacy", "<plist>");
    EXPECT_THAT(ErrorOf(path), StartsWith(path + "/PrivacyInfo.xcprivacy:1:1: "));

    Write("VornFacebook.framework/Info.plist", "<plist>");
    EXPECT_THAT(ErrorOf(path), StartsWith(path + "/Info.plist:1:1: "));
}

TEST_F(ExaminedFrameworkTest, AnotherFrameworkIsAnError) {
    Write("Other.framework/Info.plist", FrameworkInfo());

    EXPECT_THAT(ErrorOf(PathOf("Other.framework")), HasSubstr("the framework has no file VornFacebook"));
}

TEST_F(ExaminedFrameworkTest, AnotherFolderIsAnError) {
    Write("folder/file", "");
    Write("Game.app/file", "");

    EXPECT_THAT(ErrorOf(PathOf("folder")), HasSubstr("neither an app nor a framework"));
    EXPECT_THAT(ErrorOf(PathOf("Game.app")), HasSubstr("the folder has no Info.plist"));
}

TEST_F(ExaminedFrameworkTest, AnXCFrameworkInOrderHasNoFindings) {
    EXPECT_THAT(FoundIn(WriteXCFramework(DeviceSlice() + SimulatorSlice())), IsEmpty());
}

TEST_F(ExaminedFrameworkTest, EachSliceIsExamined) {
    const std::string path = WriteXCFramework(DeviceSlice() + SimulatorSlice());
    std::filesystem::remove(path + "/simulator/VornFacebook.framework/PrivacyInfo.xcprivacy");

    EXPECT_THAT(FoundIn(path), ElementsAre("privacy-manifest-missing"));
    EXPECT_EQ(FileOf(path, "privacy-manifest-missing"), path + "/simulator/VornFacebook.framework");
}

TEST_F(ExaminedFrameworkTest, AMissingSliceIsFound) {
    const std::string path = WriteXCFramework(DeviceSlice());

    EXPECT_THAT(FoundIn(path), ElementsAre("slice-missing"));
    EXPECT_EQ(CauseOf(path, "slice-missing"), "There is no library for iOS simulator.");
}

TEST_F(ExaminedFrameworkTest, ASliceWithoutItsFolderIsFound) {
    const std::string path = WriteXCFramework(DeviceSlice() + Slice("lost", "VornFacebook.framework", "simulator"));

    EXPECT_THAT(FoundIn(path), ElementsAre("slice-missing"));
    EXPECT_EQ(PlaceOf(path, "slice-missing"), "AvailableLibraries[1]");
}

TEST_F(ExaminedFrameworkTest, AListOfSlicesThatIsNoneIsFound) {
    Write("V.xcframework/Info.plist", XmlPlist({{"AvailableLibraries", TextValue("x")}}));

    EXPECT_THAT(FoundIn(PathOf("V.xcframework")), ElementsAre("slice-missing"));
}

TEST_F(ExaminedFrameworkTest, ASliceDoesNotLeadOutOfTheFolder) {
    const std::string path = WriteXCFramework(DeviceSlice() + SimulatorSlice() + Slice("..", "..", ""));

    EXPECT_THAT(CauseOf(path, "slice-missing"), HasSubstr("must be names of folders"));
}

TEST_F(ExaminedFrameworkTest, ABinaryInTheSliceOfAnotherPlatformIsAMismatch) {
    const std::string path = WriteXCFramework(DeviceSlice() + SimulatorSlice());
    Write("V.xcframework/device/VornFacebook.framework/VornFacebook", Image(GoodSimulatorLibrary(kArm64)));

    EXPECT_THAT(FoundIn(path), ElementsAre("platform-mismatch"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
