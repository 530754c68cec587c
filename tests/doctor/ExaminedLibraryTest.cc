// What the doctor says about the plugin's binary, and which files it takes for one.

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

class ExaminedLibraryTest : public DoctorTest {
protected:
    std::string Library(const ImageRecipe& recipe) const { return Write("VornFacebook", Image(recipe)); }
};

void Remove(std::vector<std::string>& names, const std::string& name) {
    std::erase(names, name);
}

TEST_F(ExaminedLibraryTest, ALibraryInOrderHasNoFindings) {
    EXPECT_THAT(FoundIn(Library(GoodLibrary())), IsEmpty());
    EXPECT_THAT(FoundIn(Write("Simulator", GoodSimulatorBinary())), IsEmpty());
}

TEST_F(ExaminedLibraryTest, AProgramIsNoLibraryAndNothingElseIsSaidOfIt) {
    const std::string path = Library(GoodProgram());

    EXPECT_THAT(FoundIn(path), ElementsAre("not-dynamic-library"));
    EXPECT_EQ(CauseOf(path, "not-dynamic-library"), "The file is a program and not a dynamic library.");
}

TEST_F(ExaminedLibraryTest, ASimulatorBinaryNeedsBothProcessors) {
    const std::string path = Library(GoodSimulatorLibrary(kArm64));

    EXPECT_THAT(FoundIn(path), ElementsAre("architecture-missing"));
    EXPECT_EQ(PlaceOf(path, "architecture-missing"), "x86_64");
}

TEST_F(ExaminedLibraryTest, ADeviceBinaryHasNoOtherProcessor) {
    ImageRecipe intel = GoodLibrary();
    intel.processor = kX86;

    EXPECT_THAT(FoundIn(Write("Both", Universal({GoodLibrary(), intel}))), ElementsAre("architecture-unexpected"));
}

TEST_F(ExaminedLibraryTest, SlicesOfTwoPlatformsAreAMismatch) {
    const std::string path = Write("Both", Universal({GoodLibrary(), GoodSimulatorLibrary(kX86)}));

    EXPECT_THAT(FoundIn(path), ElementsAre("platform-mismatch", "architecture-unexpected"));
}

TEST_F(ExaminedLibraryTest, AnotherPlatformIsAMismatch) {
    ImageRecipe recipe = GoodLibrary();
    recipe.platform = 1;

    const std::string path = Library(recipe);

    EXPECT_THAT(FoundIn(path), ElementsAre("platform-mismatch"));
    EXPECT_EQ(CauseOf(path, "platform-mismatch"), "The slice is for macOS and not for iOS.");
}

TEST_F(ExaminedLibraryTest, AMissingPlatformIsFound) {
    ImageRecipe recipe = GoodLibrary();
    recipe.platform = 0;

    EXPECT_THAT(FoundIn(Library(recipe)), ElementsAre("platform-missing"));
}

TEST_F(ExaminedLibraryTest, TheOldestSystemIsThirteenOnDevices) {
    ImageRecipe recipe = GoodLibrary();
    recipe.minimumSystem = 14U << 16U;
    EXPECT_THAT(FoundIn(Library(recipe)), ElementsAre("library-minimum-os-higher"));

    recipe.minimumSystem = 12U << 16U | 4U << 8U;
    const std::string path = Library(recipe);
    EXPECT_THAT(FoundIn(path), ElementsAre("library-minimum-os-lower"));
    EXPECT_EQ(CauseOf(path, "library-minimum-os-lower"), "The oldest system of the slice is 12.4 and not 13.0.");
}

TEST_F(ExaminedLibraryTest, AWrongInstallNameIsFound) {
    ImageRecipe recipe = GoodLibrary();
    recipe.installName = "/usr/lib/VornFacebook";
    EXPECT_THAT(CauseOf(Library(recipe), "install-name-wrong"), HasSubstr("\"/usr/lib/VornFacebook\""));

    recipe.installName = "";
    EXPECT_THAT(CauseOf(Library(recipe), "install-name-wrong"), HasSubstr("no install name"));
}

TEST_F(ExaminedLibraryTest, EveryLinkSymbolIsLookedFor) {
    for (const std::string& symbol : GoodLibrary().exports) {
        if (!symbol.starts_with("_FBLink_")) {
            continue;
        }
        ImageRecipe recipe = GoodLibrary();
        Remove(recipe.exports, symbol);

        const std::string path = Library(recipe);

        EXPECT_THAT(FoundIn(path), ElementsAre("link-symbols-missing"));
        EXPECT_THAT(CauseOf(path, "link-symbols-missing"), HasSubstr("1 of the 10"));
        EXPECT_THAT(CauseOf(path, "link-symbols-missing"), HasSubstr(symbol.substr(1) + "."));
    }
}

TEST_F(ExaminedLibraryTest, ALinkSymbolThatIsDefinedAndNotExportedIsMissing) {
    ImageRecipe recipe = GoodLibrary();
    Remove(recipe.exports, "_FBLink_NSData_FileDataExtracting");
    recipe.locals = {"_FBLink_NSData_FileDataExtracting"};

    EXPECT_THAT(FoundIn(Library(recipe)), ElementsAre("link-symbols-missing"));
}

TEST_F(ExaminedLibraryTest, TheVersionRecordIsLookedFor) {
    ImageRecipe recipe = GoodLibrary();
    Remove(recipe.exports, "_VornFacebookVersionString");

    EXPECT_THAT(FoundIn(Library(recipe)), ElementsAre("version-record-missing"));
}

TEST_F(ExaminedLibraryTest, BothExportedClassesAreLookedFor) {
    for (const std::string name : {"VornLoginFacebook", "VornReportFacebook"}) {
        ImageRecipe recipe = GoodLibrary();
        Remove(recipe.exports, "_OBJC_CLASS_$_" + name);

        const std::string path = Library(recipe);

        EXPECT_EQ(CauseOf(path, "plugin-class-not-exported"), "The class " + name + " is not exported.");
    }
}

TEST_F(ExaminedLibraryTest, TheFriendClassIsLookedForByItsName) {
    ImageRecipe renamed = GoodLibrary();
    renamed.texts = {"VornFriendFacebook2"};
    EXPECT_THAT(FoundIn(Library(renamed)), ElementsAre("friend-class-missing"));

    ImageRecipe unlisted = GoodLibrary();
    unlisted.hasClassList = false;
    EXPECT_THAT(FoundIn(Library(unlisted)), ElementsAre("friend-class-missing"));
}

TEST_F(ExaminedLibraryTest, StandInsAreFoundInSymbolsAndInTexts) {
    ImageRecipe symbol = GoodLibrary();
    symbol.locals = {"__ZN6Tarvik4Vorn4Host5ResetEv"};
    EXPECT_THAT(FoundIn(Library(symbol)), ElementsAre("stand-ins-shipped"));

    ImageRecipe text = GoodLibrary();
    text.texts.emplace_back("N6Tarvik4Vorn4Host4CallE");
    EXPECT_THAT(FoundIn(Library(text)), ElementsAre("stand-ins-shipped"));
}

TEST_F(ExaminedLibraryTest, LibrariesOfLinuxAreFound) {
    for (const std::string name : {"libgnustep-base.so.1.28", "libobjc.so.4", "libVornCore.so"}) {
        ImageRecipe recipe = GoodLibrary();
        recipe.libraries.push_back(name);

        const std::string path = Library(recipe);

        EXPECT_THAT(FoundIn(path), ElementsAre("linux-library-linked"));
        EXPECT_THAT(CauseOf(path, "linux-library-linked"), HasSubstr(name));
    }
}

TEST_F(ExaminedLibraryTest, ClassesOfOthersMayBeImportedAndNotDefined) {
    for (const std::string name : {"FBSDKLoginManager", "UIApplication"}) {
        ImageRecipe recipe = GoodLibrary();
        recipe.locals = {"_OBJC_CLASS_$_" + name};

        const std::string path = Library(recipe);

        EXPECT_THAT(FoundIn(path), ElementsAre("foreign-class-defined"));
        EXPECT_THAT(CauseOf(path, "foreign-class-defined"), HasSubstr(name));
    }
}

TEST_F(ExaminedLibraryTest, AMissingSignatureIsFound) {
    ImageRecipe recipe = GoodLibrary();
    recipe.hasSignature = false;

    EXPECT_THAT(FoundIn(Library(recipe)), ElementsAre("code-signature-missing"));
}

TEST_F(ExaminedLibraryTest, AFaultOfBothSlicesIsOneFindingThatNamesThem) {
    ImageRecipe arm = GoodSimulatorLibrary(kArm64);
    ImageRecipe intel = GoodSimulatorLibrary(kX86);
    arm.hasSignature = false;
    intel.hasSignature = false;

    const std::string path = Write("VornFacebook", Universal({arm, intel}));

    EXPECT_THAT(FoundIn(path), ElementsAre("code-signature-missing"));
    EXPECT_EQ(PlaceOf(path, "code-signature-missing"), "arm64 (iOS simulator), x86_64 (iOS simulator)");
}

// ---- Files that are none

TEST_F(ExaminedLibraryTest, ADamagedBinaryIsAnErrorWithItsByteOffset) {
    const std::string path = Write("VornFacebook", Image(GoodLibrary()).substr(0, 100));

    EXPECT_THAT(ErrorOf(path), StartsWith(path + ": at byte offset 0x20: "));
    EXPECT_THAT(ErrorOf(path), HasSubstr("; the file is damaged, cut off"));
}

TEST_F(ExaminedLibraryTest, OtherFilesAreErrorsThatSayWhatTheyAre) {
    EXPECT_THAT(ErrorOf(Write("a", "!<arch>\n")), HasSubstr("static library"));
    EXPECT_THAT(ErrorOf(Write("a", "\x7F"
                                   "ELF\x02")),
                HasSubstr("for Linux"));
    EXPECT_THAT(ErrorOf(Write("a", "PK\x03\x04")), HasSubstr("an archive"));
    EXPECT_THAT(ErrorOf(Write("a", "")), HasSubstr("the file is empty"));
    EXPECT_THAT(ErrorOf(Write("a", "hello")), HasSubstr("neither a property list nor a Mach-O file"));
    EXPECT_THAT(ErrorOf(PathOf("nowhere")), HasSubstr("No such file"));
    EXPECT_THAT(ErrorOf("/dev/null"), HasSubstr("this is no file"));
}

TEST_F(ExaminedLibraryTest, PropertyListsThatAreNoGamesAreErrors) {
    const std::string framework = Write("Info.plist", XmlPlist(With("CFBundlePackageType", TextValue("FMWK"))));
    EXPECT_THAT(ErrorOf(framework), HasSubstr("of a framework"));

    const std::string privacy = Write("PrivacyInfo.xcprivacy", XmlPlist({}));
    EXPECT_THAT(ErrorOf(privacy), HasSubstr("a privacy manifest"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
