// FBSDKSettings: values set by the app, values from the Info.plist, and the SDK's version.
#include "FacebookPlatformTest.h"

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;

FBSDKSettings* Settings() {
    return [FBSDKSettings sharedSettings];
}

class FacebookSettings : public FacebookPlatformTest {};

TEST_F(FacebookSettings, AreOneSharedObject) {
    EXPECT_NE(Settings(), nil);
    EXPECT_EQ([FBSDKSettings sharedSettings], Settings());
}

TEST_F(FacebookSettings, VersionIs18_1_0) {
    EXPECT_EQ(Text([Settings() sdkVersion]), "18.1.0");
}

TEST_F(FacebookSettings, VersionCanBeAnyText) {
    [FBSDKSettings setSDKVersion:@"6.4.0"];

    EXPECT_EQ(Text([Settings() sdkVersion]), "6.4.0");
}

TEST_F(FacebookSettings, VersionCanBeAbsent) {
    [FBSDKSettings setSDKVersion:nil];

    EXPECT_EQ([Settings() sdkVersion], nil);
}

TEST_F(FacebookSettings, AHealthyAppHasAnAppIDADisplayNameAndAClientTokenInItsInfoPlist) {
    EXPECT_GT([[Settings() appID] length], 0u);
    EXPECT_GT([[Settings() displayName] length], 0u);
    EXPECT_GT([[Settings() clientToken] length], 0u);
}

TEST_F(FacebookSettings, VersionStaysWhenTheAppIDIsSet) {
    [Settings() setAppID:@"15"];

    EXPECT_EQ(Text([Settings() sdkVersion]), "18.1.0");
}

TEST_F(FacebookSettings, InfoPlistEntryThatIsNoTextCountsAsAbsent) {
    Host::SetInfoValue(@"FacebookAppID", @12345);

    EXPECT_EQ([Settings() appID], nil);
}

TEST_F(FacebookSettings, AreThoseOfAWholeInfoPlistWithoutTheDefaults) {
    Host::SetInfoDictionary(@{@"FacebookAppID" : @"1234", @"FacebookDisplayName" : @[ @"Name" ]});

    EXPECT_EQ(Text([Settings() appID]), "1234");
    EXPECT_EQ([Settings() displayName], nil);
    EXPECT_EQ([Settings() clientToken], nil);
}

TEST_F(FacebookSettings, KeepACopyOfTheText) {
    NSMutableString* const appID = [NSMutableString stringWithString:@"12"];
    [Settings() setAppID:appID];

    [appID appendString:@"34"];

    EXPECT_EQ(Text([Settings() appID]), "12");
}

TEST_F(FacebookSettings, WritingIsRecordedAndReadingIsNot) {
    [Settings() setAppID:@"123"];
    (void)[Settings() appID];
    [Settings() setDisplayName:nil];
    (void)[Settings() sdkVersion];

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(Host::PlatformCall{"FBSDKSettings", "setAppID:", "\"123\"", true},
                            Host::PlatformCall{"FBSDKSettings", "setDisplayName:", "nil", true}));
}

TEST_F(FacebookSettings, RecordDoesNotShowTheClientToken) {
    [Settings() setClientToken:@"top-secret"];
    [Settings() setClientToken:nil];

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(Host::PlatformCall{"FBSDKSettings", "setClientToken:", "(not shown)", true},
                            Host::PlatformCall{"FBSDKSettings", "setClientToken:", "nil", true}));
}

TEST_F(FacebookSettings, ResetBringsBackTheDefaultsAndKeepsTheSharedObject) {
    FBSDKSettings* const before = Settings();
    NSString* const defaultAppID = [Settings() appID];
    [before setAppID:@"123"];
    [FBSDKSettings setSDKVersion:@"6.4.0"];
    [FBSDKSettings setFallsBackAfterNil:YES];

    [FBSDKSettings reset];

    EXPECT_EQ(Settings(), before);
    EXPECT_EQ(Text([Settings() appID]), Text(defaultAppID));
    EXPECT_EQ(Text([Settings() sdkVersion]), "18.1.0");
    [Settings() setAppID:nil];
    EXPECT_EQ([Settings() appID], nil);
}

// The same rules hold for every setting that the Info.plist can give.
struct InfoSetting {
    const char* name;
    NSString* infoKey;
    SEL getter;
    SEL setter;
};

class FacebookInfoSettings : public FacebookPlatformTest, public ::testing::WithParamInterface<const char*> {
protected:
    // Selectors and constant strings cannot be had before main.
    InfoSetting Setting() const {
        const std::string name = GetParam();
        if (name == "appID") {
            return {
                GetParam(), @"FacebookAppID", @selector(appID), @selector(setAppID:)
            };
        }
        if (name == "displayName") {
            return {
                GetParam(), @"FacebookDisplayName", @selector(displayName), @selector(setDisplayName:)
            };
        }
        if (name == "clientToken") {
            return {
                GetParam(), @"FacebookClientToken", @selector(clientToken), @selector(setClientToken:)
            };
        }
        if (name == "appURLSchemeSuffix") {
            return {
                GetParam(), @"FacebookUrlSchemeSuffix", @selector(appURLSchemeSuffix), @selector(setAppURLSchemeSuffix:)
            };
        }
        return {
            GetParam(), @"FacebookDomainPart", @selector(facebookDomainPart), @selector(setFacebookDomainPart:)
        };
    }
    NSString* Get() const { return [Settings() performSelector:Setting().getter]; }
    void Set(NSString* text) const { [Settings() performSelector:Setting().setter withObject:text]; }
};

INSTANTIATE_TEST_SUITE_P(All, FacebookInfoSettings,
                         ::testing::Values("appID", "displayName", "clientToken", "appURLSchemeSuffix",
                                           "facebookDomainPart"),
                         [](const auto& info) { return info.param; });

TEST_P(FacebookInfoSettings, ComeFromTheInfoPlistUntilTheyAreSet) {
    Host::SetInfoValue(Setting().infoKey, @"from the list");

    EXPECT_EQ(Text(Get()), "from the list");
}

TEST_P(FacebookInfoSettings, AreNilWithoutAnInfoPlistEntry) {
    Host::SetInfoValue(Setting().infoKey, nil);

    EXPECT_EQ(Get(), nil);
}

TEST_P(FacebookInfoSettings, HideTheInfoPlistOnceTheyAreSet) {
    Host::SetInfoValue(Setting().infoKey, @"from the list");

    Set(@"from the app");

    EXPECT_EQ(Text(Get()), "from the app");
}

TEST_P(FacebookInfoSettings, HideTheInfoPlistWhenTheyAreSetToAnEmptyText) {
    Host::SetInfoValue(Setting().infoKey, @"from the list");

    Set(@"");

    EXPECT_EQ(Text(Get()), "");
}

TEST_P(FacebookInfoSettings, StayNilAfterNilSince15_1_0) {
    Host::SetInfoValue(Setting().infoKey, @"from the list");
    Set(@"from the app");

    Set(nil);

    EXPECT_EQ(Get(), nil);
}

TEST_P(FacebookInfoSettings, FallBackAfterNilIn15_0_0) {
    Host::SetInfoValue(Setting().infoKey, @"from the list");
    [FBSDKSettings setFallsBackAfterNil:YES];
    Set(@"from the app");

    Set(nil);

    EXPECT_EQ(Text(Get()), "from the list");
}

TEST_P(FacebookInfoSettings, DoNotFallBackAfterAnEmptyTextIn15_0_0) {
    Host::SetInfoValue(Setting().infoKey, @"from the list");
    [FBSDKSettings setFallsBackAfterNil:YES];

    Set(@"");

    EXPECT_EQ(Text(Get()), "");
}

} // namespace
} // namespace Tarvik::Vorn::Test
