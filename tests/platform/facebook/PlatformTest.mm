// What all stand-ins share: the record of calls, the Info.plist, state behind objects, and the common reset.
#include "FacebookPlatformTest.h"

#include "StandInState.h"

namespace {

struct ProbeState {
    ProbeState() = default;
    virtual ~ProbeState() = default;
    ProbeState(const ProbeState&) = delete;
    ProbeState& operator=(const ProbeState&) = delete;

    Tarvik::Vorn::RetainPtr<NSObject*> held;
    long double aligned = 1.5L; // Needs 16 bytes of alignment.
};

struct ExtendedProbeState : ProbeState {
    Tarvik::Vorn::RetainPtr<NSObject*> heldToo;
};

} // namespace

@interface VornStateProbe : NSObject
@end

@implementation VornStateProbe

+ (instancetype)allocWithZone:(NSZone*)zone {
    return Tarvik::Vorn::Host::AllocateWithState<ProbeState>(self, zone);
}

- (void)dealloc {
    Tarvik::Vorn::Host::DestroyState<ProbeState>(self);
    [super dealloc];
}

@end

// What an app derives from a stand-in: with an instance variable of its own, of an odd size.
@interface VornDerivedStateProbe : VornStateProbe {
@public
    char mOdd[19];
}
@end

@implementation VornDerivedStateProbe
@end

// A stand-in that extends another one.
@interface VornExtendedStateProbe : VornStateProbe
@end

@implementation VornExtendedStateProbe

+ (instancetype)allocWithZone:(NSZone*)zone {
    return Tarvik::Vorn::Host::AllocateWithState<ExtendedProbeState>(self, zone);
}

@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::PlatformCall;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlatformRecord : public FacebookPlatformTest {};

TEST_F(PlatformRecord, KeepsTheCallsInTheirOrder) {
    Host::PlatformCalls::Record("A", "first", "1");
    Host::PlatformCalls::Record("B", "second");

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"A", "first", "1", true}, PlatformCall{"B", "second", "", true}));
}

TEST_F(PlatformRecord, TellsTheMainThreadFromOthers) {
    OnAnotherThread([] { Host::PlatformCalls::Record("A", "elsewhere"); });

    EXPECT_THAT(Host::PlatformCalls::All(), ElementsAre(PlatformCall{"A", "elsewhere", "", false}));
}

TEST_F(PlatformRecord, IsEmptyAfterClear) {
    Host::PlatformCalls::Record("A", "first");

    Host::PlatformCalls::Clear();

    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

TEST_F(PlatformRecord, ListenerHearsEachCallAndMayReadTheRecord) {
    std::vector<std::string> heard;
    Host::SetPlatformCallListener([&heard](const PlatformCall& call) {
        heard.push_back(call.selector + " of " + std::to_string(Host::PlatformCalls::All().size()));
    });

    Host::PlatformCalls::Record("A", "first");
    Host::PlatformCalls::Record("A", "second");

    EXPECT_THAT(heard, ElementsAre("first of 1", "second of 2"));
}

TEST_F(PlatformRecord, ListenerHearsNoMoreOnceItIsTakenAway) {
    int heard = 0;
    Host::SetPlatformCallListener([&heard](const PlatformCall&) { ++heard; });
    Host::PlatformCalls::Record("A", "first");

    Host::SetPlatformCallListener({});
    Host::PlatformCalls::Record("A", "second");

    EXPECT_EQ(heard, 1);
}

class PlatformInfo : public FacebookPlatformTest {};

TEST_F(PlatformInfo, HasTheEntriesThatWereSet) {
    Host::SetInfoValue(@"Key", @"value");

    EXPECT_EQ(Text(Host::InfoValue(@"Key")), "value");
}

TEST_F(PlatformInfo, LosesAnEntryThatIsSetToNil) {
    Host::SetInfoValue(@"FacebookAppID", nil);

    EXPECT_EQ(Host::InfoValue(@"FacebookAppID"), nil);
}

TEST_F(PlatformInfo, RegistersEverySchemeUnlessSaidOtherwise) {
    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
}

TEST_F(PlatformInfo, RegistersTheGivenSchemesAndNoOthers) {
    Host::RegisterURLSchemes(@[ @"other", @"fb123" ]);

    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
    EXPECT_FALSE(Host::IsURLSchemeRegistered(@"fb12"));
}

TEST_F(PlatformInfo, FindsASchemeInAnyURLType) {
    Host::SetInfoValue(@"CFBundleURLTypes", @[
        @{@"CFBundleURLName" : @"without schemes"},
        @{@"CFBundleURLSchemes" : @[ @"fb123" ]},
    ]);

    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
}

TEST_F(PlatformInfo, GivenWholeIsExactlyThat) {
    NSMutableDictionary* const entries = [NSMutableDictionary dictionaryWithObject:@"value" forKey:@"Key"];
    Host::SetInfoValue(@"Former", @"value");

    Host::SetInfoDictionary(entries);
    [entries setObject:@"later" forKey:@"Key"];

    EXPECT_EQ(Text(Host::InfoValue(@"Key")), "value");
    EXPECT_EQ(Host::InfoValue(@"Former"), nil);
    EXPECT_EQ(Host::InfoValue(@"FacebookAppID"), nil);
}

TEST_F(PlatformInfo, GivenWholeWithoutURLTypesRegistersNoScheme) {
    Host::SetInfoDictionary(nil);

    EXPECT_FALSE(Host::IsURLSchemeRegistered(@"fb123"));
}

TEST_F(PlatformInfo, GivenWholeCanStillBeAddedTo) {
    Host::SetInfoDictionary(@{@"Key" : @"value"});

    Host::RegisterURLSchemes(@[ @"fb123" ]);

    EXPECT_EQ(Text(Host::InfoValue(@"Key")), "value");
    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
    EXPECT_FALSE(Host::IsURLSchemeRegistered(@"fb12"));
}

TEST_F(PlatformInfo, URLTypesOfAnotherTypeCountAsNotThere) {
    for (const id odd in @[ @"fb123", @1, @{@"CFBundleURLSchemes" : @[ @"fb123" ]}, [NSNull null] ]) {
        Host::ResetInfoDictionary();
        Host::SetInfoValue(@"CFBundleURLTypes", odd);
        EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
        EXPECT_FALSE(Host::IsURLSchemeClaimed(@"fb123"));
        Host::SetInfoDictionary(@{@"CFBundleURLTypes" : odd});
        EXPECT_FALSE(Host::IsURLSchemeRegistered(@"fb123"));
    }
}

TEST_F(PlatformInfo, OddPartsOfURLTypesArePassedOver) {
    Host::SetInfoDictionary(@{
        @"CFBundleURLTypes" : @[
            @"fb123", @7, @[ @"fb123" ], @{@"CFBundleURLSchemes" : @"fb123"},
            @{@"CFBundleURLSchemes" : @{}},
            @{@"CFBundleURLSchemes" : @[ @1, @{}, [NSNull null], @"fb456" ]}
        ]
    });

    EXPECT_FALSE(Host::IsURLSchemeRegistered(@"fb123"));
    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb456"));
    EXPECT_TRUE(Host::IsURLSchemeClaimed(@"fb456"));
}

TEST_F(PlatformInfo, NoSchemeIsClaimedByDefault) {
    EXPECT_FALSE(Host::IsURLSchemeClaimed(@"fb123"));
}

TEST_F(PlatformInfo, ResetMakesTheInfoPlistTheDefaultOneAgain) {
    Host::SetInfoDictionary(@{});

    Host::ResetPlatform();

    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
    EXPECT_TRUE(Host::IsQueriesSchemeListed(@"fb123"));
    EXPECT_NE(Host::InfoValue(@"FacebookAppID"), nil);
}

TEST_F(PlatformInfo, ResetBringsBackTheDefaults) {
    NSString* const appID = Host::InfoValue(@"FacebookAppID");
    Host::SetInfoValue(@"FacebookAppID", @"other");
    Host::SetInfoValue(@"Key", @"value");
    Host::RegisterURLSchemes(@[]);

    Host::ResetInfoDictionary();

    EXPECT_EQ(Text(Host::InfoValue(@"FacebookAppID")), Text(appID));
    EXPECT_EQ(Host::InfoValue(@"Key"), nil);
    EXPECT_TRUE(Host::IsURLSchemeRegistered(@"fb123"));
}

class PlatformErrors : public FacebookPlatformTest {};

TEST_F(PlatformErrors, HaveTheGivenDomainCodeAndText) {
    NSError* const error = Host::MakeError(@"domain", 1LL << 40, @"text");

    EXPECT_EQ(Text([error domain]), "domain");
    EXPECT_EQ([error code], 1LL << 40);
    EXPECT_EQ(Text([error localizedDescription]), "text");
}

TEST_F(PlatformErrors, MayHaveNoLocalizedDescription) {
    NSError* const error = Host::MakeError(@"domain", -5, nil);

    EXPECT_EQ([error localizedDescription], nil);
    EXPECT_EQ([error code], -5);
}

class StandInState : public FacebookPlatformTest {};

TEST_F(StandInState, StartsAsItsTypeStarts) {
    const RetainPtr<VornStateProbe*> object = AdoptNS([[VornStateProbe alloc] init]);

    EXPECT_EQ(Host::StateOf<ProbeState>(object.get()).aligned, 1.5L);
}

TEST_F(StandInState, BelongsToOneObject) {
    const RetainPtr<VornStateProbe*> first = AdoptNS([[VornStateProbe alloc] init]);
    const RetainPtr<VornStateProbe*> second = AdoptNS([[VornStateProbe alloc] init]);

    Host::StateOf<ProbeState>(first.get()).aligned = 2.5L;

    EXPECT_EQ(Host::StateOf<ProbeState>(first.get()).aligned, 2.5L);
    EXPECT_EQ(Host::StateOf<ProbeState>(second.get()).aligned, 1.5L);
}

TEST_F(StandInState, EndsWithTheObject) {
    int alive = 0;
    @autoreleasepool {
        const RetainPtr<VornStateProbe*> object = AdoptNS([[VornStateProbe alloc] init]);
        Host::StateOf<ProbeState>(object.get()).held = RetainPtr<NSObject*>([VornLifeProbe probeOf:&alive]);
        EXPECT_EQ(alive, 1);
    }

    EXPECT_EQ(alive, 0);
}

TEST_F(StandInState, StandsBehindTheVariablesOfASubclass) {
    const RetainPtr<VornDerivedStateProbe*> object = AdoptNS([[VornDerivedStateProbe alloc] init]);
    std::fill(std::begin(object.get()->mOdd), std::end(object.get()->mOdd), 'x');
    ProbeState& state = Host::StateOf<ProbeState>(object.get());

    state.aligned = 2.5L;

    EXPECT_EQ(std::string(object.get()->mOdd, 19), std::string(19, 'x'));
    EXPECT_EQ(reinterpret_cast<uintptr_t>(&state) % alignof(ProbeState), 0u);
    EXPECT_GE(reinterpret_cast<const char*>(&state), std::end(object.get()->mOdd));
}

TEST_F(StandInState, OfAnExtendedStandInEndsWholeAndServesTheOneItExtends) {
    int alive = 0;
    @autoreleasepool {
        const RetainPtr<VornExtendedStateProbe*> object = AdoptNS([[VornExtendedStateProbe alloc] init]);
        Host::StateOf<ExtendedProbeState>(object.get()).heldToo = RetainPtr<NSObject*>([VornLifeProbe probeOf:&alive]);
        EXPECT_EQ(Host::StateOf<ProbeState>(object.get()).aligned, 1.5L);
        EXPECT_EQ(alive, 1);
    }

    EXPECT_EQ(alive, 0);
}

class PlatformReset : public FacebookPlatformTest {};

TEST_F(PlatformReset, TakesEverythingBackToItsFirstState) {
    int heard = 0;
    Host::SetPlatformCallListener([&heard](const PlatformCall&) { ++heard; });
    [[FBSDKSettings sharedSettings] setAppID:@"other"];
    [FBSDKAccessToken setCurrentAccessToken:Host::MakeAccessToken(@"token", @"user", @[ @"email" ])];
    [FBSDKAuthenticationToken setCurrentAuthenticationToken:Host::MakeAuthenticationToken(@"token", @"gaming")];
    Host::SetInfoValue(@"Key", @"value");
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logInWithPermissions:@[ @"email" ] fromViewController:nil handler:nil];
    const int heardBefore = heard;

    Host::ResetPlatform();

    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
    EXPECT_TRUE([FBSDKLoginManager loginRequests].empty());
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], nil);
    EXPECT_NE(Text([[FBSDKSettings sharedSettings] appID]), "other");
    EXPECT_EQ(Host::InfoValue(@"Key"), nil);
    Host::PlatformCalls::Record("A", "afterwards");
    EXPECT_EQ(heard, heardBefore);
}

} // namespace
} // namespace Tarvik::Vorn::Test
