// What the doctor says about a built app: what it lacks, what does not fit together, and what cannot be read.

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

const std::vector<std::string> kOtherFrameworks = {"VornCore",      "FBSDKCoreKit_Basics", "FBSDKCoreKit",
                                                   "FBSDKLoginKit", "FBSDKShareKit",       "FBSDKGamingServicesKit"};

class ExaminedAppTest : public DoctorTest {
protected:
    // An app in order.
    ExaminedAppTest() {
        WriteInfo(GoodMembers());
        Write("Game.app/PrivacyInfo.xcprivacy", XmlPlist({}));
        Write("Game.app/Game", Image(GoodProgram()));
        WriteFramework("VornFacebook", GoodLibrary());
        for (const std::string& name : kOtherFrameworks) {
            WriteFramework(name, OtherLibrary(name));
        }
    }

    std::string App() const { return PathOf("Game.app"); }

    void WriteInfo(const PlistMembers& members) const { Write("Game.app/Info.plist", BinaryPlist(members)); }

    void WriteFramework(const std::string& name, const ImageRecipe& recipe) const {
        const std::string folder = "Game.app/Frameworks/" + name + ".framework";
        Write(folder + "/Info.plist", XmlPlist({}));
        Write(folder + "/PrivacyInfo.xcprivacy", XmlPlist({}));
        Write(folder + "/" + name, Image(recipe));
    }

    void Remove(const std::string& name) const { std::filesystem::remove_all(PathOf("Game.app/" + name)); }
    void RemoveFramework(const std::string& name) const { Remove("Frameworks/" + name + ".framework"); }
};

TEST_F(ExaminedAppTest, AnAppInOrderHasNoFindings) {
    EXPECT_THAT(FoundIn(App()), IsEmpty());
    EXPECT_THAT(FoundIn(App() + "/"), IsEmpty());
}

TEST_F(ExaminedAppTest, ItsInfoPlistIsExamined) {
    WriteInfo(Without("FacebookClientToken"));

    EXPECT_THAT(FoundIn(App()), ElementsAre("client-token-missing"));
    EXPECT_EQ(FileOf(App(), "client-token-missing"), App() + "/Info.plist");
}

TEST_F(ExaminedAppTest, ABuildSettingThatWasNotReplacedIsNoAppID) {
    WriteInfo(With("FacebookAppID", TextValue("$(FACEBOOK_APP_ID)")));

    EXPECT_THAT(FoundIn(App()), ElementsAre("app-id-not-digits", "url-scheme-unchecked"));
}

TEST_F(ExaminedAppTest, AMissingPrivacyManifestIsANote) {
    Remove("PrivacyInfo.xcprivacy");

    EXPECT_THAT(FoundIn(App()), ElementsAre("app-privacy-manifest-missing"));
    EXPECT_THAT(FaultsIn(App()), IsEmpty());
}

TEST_F(ExaminedAppTest, AMissingFolderOfFrameworksIsOneFinding) {
    Remove("Frameworks");

    EXPECT_THAT(FoundIn(App()), ElementsAre("frameworks-missing"));
}

TEST_F(ExaminedAppTest, PluginAndCoreAreFoundMissing) {
    RemoveFramework("VornFacebook");
    EXPECT_THAT(FoundIn(App()), ElementsAre("plugin-not-embedded"));

    RemoveFramework("VornCore");
    EXPECT_THAT(FoundIn(App()), ElementsAre("plugin-not-embedded", "core-not-embedded"));
}

TEST_F(ExaminedAppTest, EachKitIsFoundMissing) {
    for (const std::string& kit : kOtherFrameworks) {
        if (kit == "VornCore") {
            continue;
        }
        RemoveFramework(kit);

        EXPECT_THAT(FoundIn(App()), ElementsAre("kit-not-embedded"));
        EXPECT_THAT(CauseOf(App(), "kit-not-embedded"), HasSubstr(kit + ".framework is not"));
        WriteFramework(kit, OtherLibrary(kit));
    }
}

TEST_F(ExaminedAppTest, KitsThatAreAllMissingAreOneFinding) {
    for (const std::string& name : kOtherFrameworks) {
        if (name != "VornCore") {
            RemoveFramework(name);
        }
    }

    EXPECT_THAT(FoundIn(App()), ElementsAre("kits-not-embedded"));
}

TEST_F(ExaminedAppTest, AStaticSDKExplainsKitsThatAreMissing) {
    for (const std::string& name : kOtherFrameworks) {
        if (name != "VornCore") {
            RemoveFramework(name);
        }
    }
    ImageRecipe program = GoodProgram();
    program.locals = {"_OBJC_CLASS_$_FBSDKSettings"};
    Write("Game.app/Game", Image(program));

    EXPECT_THAT(FoundIn(App()), ElementsAre("sdk-linked-statically", "kits-not-embedded"));
    EXPECT_EQ(ExplanationOf(App(), "kits-not-embedded"), "sdk-linked-statically");
}

TEST_F(ExaminedAppTest, ASecondCopyOfTheSDKIsFoundInLibrariesAndNotInItsKit) {
    ImageRecipe kit = OtherLibrary("FBSDKCoreKit");
    kit.exports = {"_OBJC_CLASS_$_FBSDKSettings"};
    WriteFramework("FBSDKCoreKit", kit);
    EXPECT_THAT(FoundIn(App()), IsEmpty());

    ImageRecipe other = OtherLibrary("Advertisements");
    other.exports = {"_OBJC_CLASS_$_FBSDKSettings"};
    WriteFramework("Advertisements", other);
    EXPECT_THAT(FoundIn(App()), ElementsAre("sdk-linked-statically"));
}

TEST_F(ExaminedAppTest, AFrameworkThatAKitLoadsIsFoundMissing) {
    ImageRecipe kit = OtherLibrary("FBSDKCoreKit");
    kit.libraries = {"@rpath/FBAEMKit.framework/FBAEMKit"};
    kit.weakLibraries = {"@rpath/FBOptional.framework/FBOptional"};
    WriteFramework("FBSDKCoreKit", kit);

    EXPECT_THAT(FoundIn(App()), ElementsAre("kit-not-embedded"));
    EXPECT_THAT(CauseOf(App(), "kit-not-embedded"), HasSubstr("FBAEMKit.framework is not in the app's Frameworks, and "
                                                              "FBSDKCoreKit loads it"));
}

TEST_F(ExaminedAppTest, TheEmbeddedPluginIsExamined) {
    ImageRecipe library = GoodLibrary();
    library.texts = {};
    WriteFramework("VornFacebook", library);

    EXPECT_THAT(FoundIn(App()), ElementsAre("friend-class-missing"));
}

TEST_F(ExaminedAppTest, APluginForAnotherPlatformThanTheAppsIsAMismatch) {
    WriteFramework("VornFacebook", GoodSimulatorLibrary(kArm64));

    EXPECT_THAT(FoundIn(App()), ElementsAre("platform-mismatch"));
}

TEST_F(ExaminedAppTest, AnAppForOneProcessorOfASimulatorMayEmbedBoth) {
    ImageRecipe program = GoodProgram();
    program.platform = 7;
    Write("Game.app/Game", Image(program));
    Write("Game.app/Frameworks/VornFacebook.framework/VornFacebook", GoodSimulatorBinary());

    EXPECT_THAT(FoundIn(App()), IsEmpty());
}

TEST_F(ExaminedAppTest, APluginThatNothingLoadsIsAWarning) {
    ImageRecipe program = GoodProgram();
    program.libraries = {};
    Write("Game.app/Game", Image(program));

    EXPECT_THAT(FoundIn(App()), ElementsAre("plugin-not-loaded"));
}

TEST_F(ExaminedAppTest, APluginThatALibraryOfTheAppLoadsIsLoaded) {
    ImageRecipe program = GoodProgram();
    program.libraries = {};
    Write("Game.app/Game", Image(program));
    ImageRecipe code;
    code.libraries = {"@rpath/VornFacebook.framework/VornFacebook"};
    Write("Game.app/Game.debug.dylib", Image(code));

    EXPECT_THAT(FoundIn(App()), IsEmpty());
}

TEST_F(ExaminedAppTest, AnExecutableThatDoesNotLookIntoFrameworksIsFound) {
    ImageRecipe program = GoodProgram();
    program.runPaths = {"/usr/lib/swift"};
    Write("Game.app/Game", Image(program));

    EXPECT_THAT(FoundIn(App()), ElementsAre("run-path-missing"));
}

TEST_F(ExaminedAppTest, AMissingExecutableIsFound) {
    Remove("Game");
    EXPECT_THAT(FoundIn(App()), ElementsAre("executable-missing"));

    WriteInfo(Without("CFBundleExecutable"));
    EXPECT_THAT(FoundIn(App()), ElementsAre("executable-missing"));
}

TEST_F(ExaminedAppTest, AnExecutableDoesNotLeadOutOfTheApp) {
    WriteInfo(With("CFBundleExecutable", TextValue("../Game.app/Game")));

    EXPECT_THAT(FoundIn(App()), ElementsAre("executable-missing"));
}

TEST_F(ExaminedAppTest, DamagedFilesInTheAppAreFindings) {
    Write("Game.app/Frameworks/VornFacebook.framework/VornFacebook", "broken");
    EXPECT_THAT(FoundIn(App()), ElementsAre("file-damaged"));
    EXPECT_THAT(CauseOf(App(), "file-damaged"), HasSubstr("byte offset 0x0"));

    WriteFramework("VornFacebook", GoodLibrary());
    Write("Game.app/Frameworks/FBSDKLoginKit.framework/FBSDKLoginKit", "broken");
    EXPECT_THAT(FoundIn(App()), ElementsAre("file-damaged"));

    WriteFramework("FBSDKLoginKit", OtherLibrary("FBSDKLoginKit"));
    Write("Game.app/PrivacyInfo.xcprivacy", "<plist>");
    EXPECT_THAT(FoundIn(App()), ElementsAre("file-damaged"));

    Write("Game.app/PrivacyInfo.xcprivacy", XmlPlist({}));
    Write("Game.app/Game", "broken");
    EXPECT_THAT(FoundIn(App()), ElementsAre("file-damaged"));
}

TEST_F(ExaminedAppTest, ADamagedInfoPlistIsAnError) {
    Write("Game.app/Info.plist", "bplist00");

    EXPECT_THAT(ErrorOf(App()), HasSubstr("Game.app/Info.plist: at byte offset 0x8: "));
}

} // namespace
} // namespace Tarvik::Vorn::Test
