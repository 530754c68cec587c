// The plugin lookup: libraries by path, plugins by the name of their class. The library of these tests is made of the
// files in plugins/; its path comes from the build.

#include "VornPlugins.h"

#include "PoolTest.h"

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Plugins : public PoolTest {
protected:
    static void LoadSample() {
        std::string error;
        ASSERT_TRUE(LoadPluginLibrary(VORN_SAMPLE_PLUGIN, error)) << error;
    }

    // Why no login plugin of this channel is found; "(none)" when one is.
    static std::string FaultOf(const std::string& channel) {
        std::string error;
        return FindLoginPlugin(channel, error) == nil ? error : "(none)";
    }

    static std::string FaultOfFriend(const std::string& channel) {
        std::string error;
        return FindFriendPlugin(channel, error) == nil ? error : "(none)";
    }

    static std::string FaultOfReport(const std::string& channel) {
        std::string error;
        return FindReportPlugin(channel, error) == nil ? error : "(none)";
    }
};

TEST_F(Plugins, LibraryBringsItsClasses) {
    std::string error;

    const bool loaded = LoadPluginLibrary(VORN_SAMPLE_PLUGIN, error);

    EXPECT_TRUE(loaded);
    EXPECT_EQ(error, "");
    EXPECT_NE(objc_lookUpClass("VornLoginSample"), Nil);
}

TEST_F(Plugins, LibraryMayBeLoadedAgain) {
    std::string error;

    EXPECT_TRUE(LoadPluginLibrary(VORN_SAMPLE_PLUGIN, error));
    EXPECT_TRUE(LoadPluginLibrary(VORN_SAMPLE_PLUGIN, error));
}

TEST_F(Plugins, LibraryWithoutADirectoryIsInTheCurrentOne) {
    const std::filesystem::path library(VORN_SAMPLE_PLUGIN);
    const std::filesystem::path before = std::filesystem::current_path();
    std::string error;
    std::filesystem::current_path(library.parent_path());

    const bool loaded = LoadPluginLibrary(library.filename().string(), error);
    std::filesystem::current_path(before);

    EXPECT_TRUE(loaded) << error;
}

TEST_F(Plugins, LibraryWithoutADirectoryIsNotSearchedElsewhere) {
    std::string directory = ::testing::TempDir() + "/VornPluginsTest.XXXXXX";
    ASSERT_NE(mkdtemp(directory.data()), nullptr);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directory);
    std::ofstream("libVornEmpty.so").close();
    std::string error;

    const bool loaded = LoadPluginLibrary("libVornEmpty.so", error);
    std::filesystem::current_path(before);
    std::filesystem::remove_all(directory);

    EXPECT_FALSE(loaded);
    EXPECT_THAT(error, StartsWith("the plugin library \"libVornEmpty.so\" cannot be loaded: "));
    EXPECT_THAT(error, HasSubstr("file too short")); // It was found, but is empty.
}

TEST_F(Plugins, MissingLibraryIsNamedWithTheReason) {
    std::string error;

    EXPECT_FALSE(LoadPluginLibrary("/missing/libVornSample.so", error));
    EXPECT_THAT(error, StartsWith("the plugin library \"/missing/libVornSample.so\" cannot be loaded: "));
    EXPECT_THAT(error, HasSubstr("No such file or directory"));
}

TEST_F(Plugins, FileThatIsNoLibraryIsNamedWithTheReason) {
    std::string error;

    EXPECT_FALSE(LoadPluginLibrary("/dev/null", error));
    EXPECT_THAT(error, StartsWith("the plugin library \"/dev/null\" cannot be loaded: "));
}

TEST_F(Plugins, LoginPluginIsTheSharedInstanceOfItsClass) {
    LoadSample();
    std::string error;

    const id<VornLoginDelegate> plugin = FindLoginPlugin("Sample", error);

    EXPECT_EQ(error, "");
    ASSERT_NE(plugin, nil);
    EXPECT_STREQ(class_getName([plugin class]), "VornLoginSample");
    EXPECT_EQ(FindLoginPlugin("Sample", error), plugin);
}

TEST_F(Plugins, LoginPluginMayInheritWhatItNeeds) {
    LoadSample();

    EXPECT_EQ(FaultOf("SampleChild"), "(none)");
}

TEST_F(Plugins, UnknownChannelIsExplained) {
    EXPECT_EQ(FaultOf("Unknown"), "there is no class VornLoginUnknown; load the library of the channel's plugin first");
    EXPECT_EQ(FaultOf(""), "there is no class VornLogin; load the library of the channel's plugin first");
}

TEST_F(Plugins, ClassThatIsNoLoginPluginIsExplained) {
    LoadSample();

    EXPECT_EQ(FaultOf("WithoutInstance"),
              "the class VornLoginWithoutInstance is no login plugin: it does not answer +sharedInstance");
    EXPECT_EQ(FaultOf("WithoutLogin"),
              "the class VornLoginWithoutLogin is no login plugin: it does not answer -login:");
    EXPECT_EQ(FaultOf("WithoutLogout"),
              "the class VornLoginWithoutLogout is no login plugin: it does not answer -logout:");
    EXPECT_EQ(FaultOf("WithoutProtocol"),
              "the class VornLoginWithoutProtocol is no login plugin: it does not adopt VornLoginDelegate");
}

TEST_F(Plugins, ClassWithoutAnInstanceToGiveIsExplained) {
    LoadSample();

    EXPECT_EQ(FaultOf("WithNil"), "the class VornLoginWithNil has no shared instance");
}

TEST_F(Plugins, FriendPluginIsTheSharedInstanceOfItsClass) {
    LoadSample();
    std::string error;

    const id<VornFriendDelegate> plugin = FindFriendPlugin("Sample", error);

    EXPECT_EQ(error, "");
    ASSERT_NE(plugin, nil);
    EXPECT_STREQ(class_getName([plugin class]), "VornFriendSample");
    EXPECT_EQ(FindFriendPlugin("Sample", error), plugin);
}

TEST_F(Plugins, ClassThatIsNoFriendPluginIsExplained) {
    LoadSample();

    EXPECT_EQ(FaultOfFriend("WithoutMessages"),
              "the class VornFriendWithoutMessages is no friend plugin: it does not answer "
              "-sendMessage:params:observerID:");
    EXPECT_EQ(FaultOfFriend("WithoutShare"),
              "the class VornFriendWithoutShare is no friend plugin: it does not answer -share:params:observerID:");
    EXPECT_EQ(FaultOfFriend("WithoutProtocol"),
              "the class VornFriendWithoutProtocol is no friend plugin: it does not adopt VornFriendDelegate");
}

TEST_F(Plugins, ReportPluginIsTheSharedInstanceOfItsClass) {
    LoadSample();
    std::string error;

    const id<VornReportDelegate> plugin = FindReportPlugin("Sample", error);

    EXPECT_EQ(error, "");
    ASSERT_NE(plugin, nil);
    EXPECT_STREQ(class_getName([plugin class]), "VornReportSample");
    EXPECT_EQ(FindReportPlugin("Sample", error), plugin);
}

TEST_F(Plugins, ClassThatIsNoReportPluginIsExplained) {
    LoadSample();

    EXPECT_EQ(FaultOfReport("WithoutStart"),
              "the class VornReportWithoutStart is no report plugin: it does not answer -initStat");
    EXPECT_EQ(FaultOfReport("WithoutEvents"),
              "the class VornReportWithoutEvents is no report plugin: it does not answer "
              "-reportEvent:params:isRealtime:seqID:extra:");
    EXPECT_EQ(FaultOfReport("WithoutProtocol"),
              "the class VornReportWithoutProtocol is no report plugin: it does not adopt VornReportDelegate");
}

TEST_F(Plugins, KindsOfPluginsAreKeptApart) {
    LoadSample();

    EXPECT_EQ(FaultOfReport("SampleChild"),
              "there is no class VornReportSampleChild; load the library of the channel's plugin first");
}

} // namespace
} // namespace Tarvik::Vorn::Test
