// Calls that raise instead of doing their work, and the table of the calls that can.
#include "OpeningCases.h"

#include "FBSDKShareKit/ShareDialogs.h"
#include "PlatformFaults.h"

#import <UIKit/UIKit.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <utility>

// A progress bar that counts the living ones.
@interface VornCountedProgressView : UIProgressView
@end

namespace {

int sLivingProgressViews = 0;

} // namespace

@implementation VornCountedProgressView

+ (instancetype)allocWithZone:(NSZone*)zone {
    ++sLivingProgressViews;
    return [super allocWithZone:zone];
}

- (void)dealloc {
    --sLivingProgressViews;
    [super dealloc];
}

@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::IsRaisePending;
using Host::PlatformCall;
using Host::RaiseAtNextCall;
using ::testing::ElementsAre;

using Selectors = std::vector<std::pair<std::string, std::string>>;

class PlatformFaults : public FacebookPlatformTest {
protected:
    ~PlatformFaults() override { Host::ResetPlatform(); }
};

TEST_F(PlatformFaults, RaiseTheExceptionThatWasArranged) {
    RaiseAtNextCall("FBSDKLoginManager", "logOut", "Name", "a reason");
    NSException* raised = nil;

    @try {
        [[[[FBSDKLoginManager alloc] init] autorelease] logOut];
    } @catch (NSException* exception) {
        raised = exception;
    }

    EXPECT_EQ(Text([raised name]), "Name");
    EXPECT_EQ(Text([raised reason]), "a reason");
}

TEST_F(PlatformFaults, RaiseOnceEach) {
    RaiseAtNextCall("A", "first", "Name", "");

    EXPECT_TRUE(IsRaisePending("A", "first"));
    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("A", "first"); }), "Name");
    EXPECT_FALSE(IsRaisePending("A", "first"));
    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("A", "first"); }), "");
}

TEST_F(PlatformFaults, OfTheSameCallComeInTheirOrder) {
    RaiseAtNextCall("A", "first", "One", "");
    RaiseAtNextCall("A", "second", "Other", "");
    RaiseAtNextCall("A", "first", "Two", "");

    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("A", "first"); }), "One");
    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("A", "first"); }), "Two");
    EXPECT_TRUE(IsRaisePending("A", "second"));
}

TEST_F(PlatformFaults, LeaveOtherClassesAndSelectorsAlone) {
    RaiseAtNextCall("A", "first", "Name", "");

    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("A", "second"); }), "");
    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("B", "first"); }), "");
    EXPECT_FALSE(IsRaisePending("B", "first"));
}

TEST_F(PlatformFaults, ComeAfterTheCallWasRecordedAndTold) {
    std::vector<std::string> heard;
    Host::SetPlatformCallListener([&heard](const PlatformCall& call) { heard.push_back(call.selector); });
    RaiseAtNextCall("A", "first", "Name", "");

    RaisedBy([] { Host::PlatformCalls::Record("A", "first", "1"); });

    EXPECT_THAT(Host::PlatformCalls::All(), ElementsAre(PlatformCall{"A", "first", "1", true}));
    EXPECT_THAT(heard, ElementsAre("first"));
}

TEST_F(PlatformFaults, HoldNoLock) {
    RaiseAtNextCall("A", "first", "Name", "");

    @try {
        Host::PlatformCalls::Record("A", "first");
    } @catch (NSException*) {
        Host::PlatformCalls::Record("A", "caught");
        RaiseAtNextCall("A", "first", "Name", "");
    }

    EXPECT_EQ(Host::PlatformCalls::All().size(), 2u);
}

TEST_F(PlatformFaults, AreForgottenByTheReset) {
    RaiseAtNextCall("A", "first", "Name", "");

    Host::ResetPlatform();

    EXPECT_FALSE(IsRaisePending("A", "first"));
    EXPECT_EQ(RaisedBy([] { Host::PlatformCalls::Record("A", "first"); }), "");
}

TEST_F(PlatformFaults, OfASetterLeaveTheSettingAsItWas) {
    [[FBSDKSettings sharedSettings] setAppID:@"before"];
    RaiseAtNextCall("FBSDKSettings", "setAppID:", "Name", "");

    EXPECT_EQ(RaisedBy([] { [[FBSDKSettings sharedSettings] setAppID:@"after"]; }), "Name");

    EXPECT_EQ(Text([[FBSDKSettings sharedSettings] appID]), "before");
}

TEST_F(PlatformFaults, OfALogoutLeaveTheTokens) {
    Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[]));
    RaiseAtNextCall("FBSDKLoginManager", "logOut", "Name", "");

    EXPECT_EQ(RaisedBy([] { [[[[FBSDKLoginManager alloc] init] autorelease] logOut]; }), "Name");

    EXPECT_NE([FBSDKAccessToken currentAccessToken], nil);
}

#pragma mark - Initializers

TEST_F(PlatformFaults, OfTheDialogsInitializersReleaseTheDialog) {
    RaiseAtNextCall("FBSDKShareDialog", "initWithViewController:content:delegate:", "Name", "");
    RaiseAtNextCall("FBSDKMessageDialog", "initWithContent:delegate:", "Name", "");

    EXPECT_EQ(RaisedBy([] {
                  (void)[[[FBSDKShareDialog alloc] initWithViewController:nil content:nil delegate:nil] autorelease];
              }),
              "Name");
    EXPECT_EQ(RaisedBy([] { (void)[[[FBSDKMessageDialog alloc] initWithContent:nil delegate:nil] autorelease]; }),
              "Name");

    EXPECT_EQ(Host::LivingShareDialogCount(), 0u);
}

TEST_F(PlatformFaults, OfTheProgressBarsInitializerReleaseTheBar) {
    RaiseAtNextCall("UIProgressView", "initWithProgressViewStyle:", "Name", "");

    EXPECT_EQ(RaisedBy([] {
                  (void)[[[VornCountedProgressView alloc] initWithProgressViewStyle:UIProgressViewStyleDefault]
                      autorelease];
              }),
              "Name");

    EXPECT_EQ(sLivingProgressViews, 0);
}

#pragma mark - What would have opened

class EachOpeningThatRaises : public OpeningTest {};

INSTANTIATE_TEST_SUITE_P(All, EachOpeningThatRaises, ::testing::ValuesIn(OpeningCases()), NameOfCase);

TEST_P(EachOpeningThatRaises, OpensNothingTellsNobodyAndOpensTheNextTime) {
    int told = 0;
    Host::SetOpeningListener([&told](Host::Opening) { ++told; });
    RaiseAtNextCall(GetParam().className, GetParam().selector, "Name", "");

    EXPECT_EQ(RaisedBy([this] { Open(); }), "Name");
    EXPECT_EQ(Waiting(), 0u);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(RaisedBy([this] { Open(); }), "");

    EXPECT_EQ(Waiting(), 1u);
    EXPECT_EQ(Answers(), 0);
    EXPECT_EQ(Host::LivingShareDialogCount(), Host::OpenShareDialogCount());
}

#pragma mark - The table

std::string ContentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The value of the constant by which a source names its class; empty when it has none.
std::string ClassConstantOf(const std::string& source) {
    const std::string definition = "kClassName = \"";
    const size_t place = source.find(definition);
    if (place == std::string::npos) {
        return {};
    }
    const size_t begin = place + definition.size();
    return source.substr(begin, source.find('"', begin) - begin);
}

// The calls that a source enters. Each piece of text is looked at on its own: the regular expressions of this library
// are too slow for whole files.
Selectors EnteredBy(const std::string& source) {
    constexpr size_t kPiece = 200;
    static const std::regex kEntry(
        R"re(PlatformCalls::Record(?:Initializer)?\(\s*(?:self,\s*)?(?:kClassName|"(\w+)"),\s*"([^"]+)")re");
    Selectors entered;
    for (size_t place = 0; (place = source.find("PlatformCalls::Record", place)) != std::string::npos; ++place) {
        const std::string piece = source.substr(place, kPiece);
        std::smatch parts;
        if (!std::regex_search(piece, parts, kEntry, std::regex_constants::match_continuous)) {
            ADD_FAILURE() << "not understood: " << piece;
            continue;
        }
        entered.emplace_back(parts[1].matched ? parts[1].str() : ClassConstantOf(source), parts[2].str());
    }
    return entered;
}

TEST(RecordedSelectors, AreThoseOfTheStandInsSources) {
    Selectors entered;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(VORN_PLATFORM_SOURCES)) {
        if (entry.path().extension() != ".mm") {
            continue;
        }
        const Selectors ofSource = EnteredBy(ContentsOf(entry.path()));
        entered.insert(entered.end(), ofSource.begin(), ofSource.end());
    }
    std::sort(entered.begin(), entered.end());

    EXPECT_EQ(Host::RecordedSelectors(), entered);
}

TEST(RecordedSelectors, AreSortedAndEachOnlyOnce) {
    const Selectors selectors = Host::RecordedSelectors();

    EXPECT_EQ(std::adjacent_find(selectors.begin(), selectors.end(), std::greater_equal<>()), selectors.end());
}

TEST(RecordedSelectors, HaveEveryCallThatOpensSomething) {
    const Selectors selectors = Host::RecordedSelectors();

    for (const OpeningCase& opening : OpeningCases()) {
        EXPECT_TRUE(
            std::binary_search(selectors.begin(), selectors.end(), std::pair(opening.className, opening.selector)))
            << opening.name;
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
