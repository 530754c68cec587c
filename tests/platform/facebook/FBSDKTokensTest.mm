// FBSDKAccessToken and FBSDKAuthenticationToken: their data, the current ones, and the notification.
#include "FacebookPlatformTest.h"

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

RetainPtr<FBSDKAccessToken*> FullToken() {
    return AdoptNS([[FBSDKAccessToken alloc] initWithTokenString:@"token"
                                                     permissions:@[ @"email", @"email", @"public_profile" ]
                                             declinedPermissions:@[ @"user_friends" ]
                                              expiredPermissions:@[ @"user_likes" ]
                                                           appID:@"app"
                                                          userID:@"user"
                                                  expirationDate:[NSDate dateWithTimeIntervalSince1970:1000]
                                                     refreshDate:[NSDate dateWithTimeIntervalSince1970:2000]
                                        dataAccessExpirationDate:[NSDate dateWithTimeIntervalSince1970:3000]]);
}

RetainPtr<FBSDKAccessToken*> TokenExpiringAt(NSDate* date) {
    return AdoptNS([[FBSDKAccessToken alloc] initWithTokenString:@"token"
                                                     permissions:@[]
                                             declinedPermissions:@[]
                                              expiredPermissions:@[]
                                                           appID:@"app"
                                                          userID:@"user"
                                                  expirationDate:date
                                                     refreshDate:nil
                                        dataAccessExpirationDate:nil]);
}

class FacebookAccessToken : public FacebookPlatformTest {
protected:
    FacebookAccessToken() : mWatcher(AdoptNS([[VornTokenWatcher alloc] init])) {}

    VornTokenWatcher* Watcher() const { return mWatcher.get(); }

private:
    RetainPtr<VornTokenWatcher*> mWatcher;
};

TEST_F(FacebookAccessToken, HoldsWhatItWasMadeOf) {
    const RetainPtr<FBSDKAccessToken*> token = FullToken();

    EXPECT_EQ(Text([token.get() tokenString]), "token");
    EXPECT_EQ(Text([token.get() appID]), "app");
    EXPECT_EQ(Text([token.get() userID]), "user");
    EXPECT_THAT(Texts([token.get() permissions]), ElementsAre("email", "public_profile"));
    EXPECT_THAT(Texts([token.get() declinedPermissions]), ElementsAre("user_friends"));
    EXPECT_THAT(Texts([token.get() expiredPermissions]), ElementsAre("user_likes"));
    EXPECT_EQ([[token.get() expirationDate] timeIntervalSince1970], 1000);
    EXPECT_EQ([[token.get() refreshDate] timeIntervalSince1970], 2000);
    EXPECT_EQ([[token.get() dataAccessExpirationDate] timeIntervalSince1970], 3000);
}

TEST_F(FacebookAccessToken, WithoutDatesNeverExpiresAndWasRefreshedJustNow) {
    const RetainPtr<FBSDKAccessToken*> token = TokenExpiringAt(nil);

    EXPECT_TRUE([[token.get() expirationDate] isEqual:[NSDate distantFuture]]);
    EXPECT_TRUE([[token.get() dataAccessExpirationDate] isEqual:[NSDate distantFuture]]);
    EXPECT_FALSE([[token.get() refreshDate] isEqual:[NSDate distantFuture]]);
    EXPECT_FALSE([[token.get() refreshDate] isEqual:[NSDate distantPast]]);
    EXPECT_FALSE([token.get() isExpired]);
}

TEST_F(FacebookAccessToken, HasExpiredAfterItsDate) {
    EXPECT_TRUE([TokenExpiringAt([NSDate distantPast]).get() isExpired]);
    EXPECT_FALSE([TokenExpiringAt([NSDate distantFuture]).get() isExpired]);
}

TEST_F(FacebookAccessToken, CanBeMadeExpiredAndIsAsGoodAsTheOtherOtherwise) {
    FBSDKAccessToken* const token = Host::MakeExpiredAccessToken(@"token", @"user", @[ @"email" ]);

    EXPECT_TRUE([token isExpired]);
    EXPECT_FALSE([Host::MakeAccessToken(@"token", @"user", @[]) isExpired]);
    EXPECT_EQ(Text([token tokenString]), "token");
    EXPECT_EQ(Text([token userID]), "user");
    EXPECT_THAT(Texts([token permissions]), ElementsAre("email"));
}

TEST_F(FacebookAccessToken, IsItsOwnCopy) {
    const RetainPtr<FBSDKAccessToken*> token = FullToken();

    const RetainPtr<FBSDKAccessToken*> copy = AdoptNS<FBSDKAccessToken*>([token.get() copy]);

    EXPECT_EQ(copy.get(), token.get());
}

TEST_F(FacebookAccessToken, ReleasesWhatItHolds) {
    int alive = 0;
    @autoreleasepool {
        NSMutableSet* const permissions = [NSMutableSet setWithObject:[VornLifeProbe probeOf:&alive]];
        const RetainPtr<FBSDKAccessToken*> token =
            AdoptNS([[FBSDKAccessToken alloc] initWithTokenString:@"token"
                                                      permissions:[permissions allObjects]
                                              declinedPermissions:@[]
                                               expiredPermissions:@[]
                                                            appID:@"app"
                                                           userID:@"user"
                                                   expirationDate:nil
                                                      refreshDate:nil
                                         dataAccessExpirationDate:nil]);
        EXPECT_EQ(alive, 1);
    }

    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookAccessToken, SurvivesAnArchive) {
    NSData* const archive = [NSKeyedArchiver archivedDataWithRootObject:FullToken().get()];

    FBSDKAccessToken* const token = [NSKeyedUnarchiver unarchiveObjectWithData:archive];

    EXPECT_TRUE([FBSDKAccessToken supportsSecureCoding]);
    EXPECT_EQ(Text([token tokenString]), "token");
    EXPECT_EQ(Text([token appID]), "app");
    EXPECT_EQ(Text([token userID]), "user");
    EXPECT_THAT(Texts([token permissions]), ElementsAre("email", "public_profile"));
    EXPECT_THAT(Texts([token declinedPermissions]), ElementsAre("user_friends"));
    EXPECT_THAT(Texts([token expiredPermissions]), ElementsAre("user_likes"));
    EXPECT_EQ([[token expirationDate] timeIntervalSince1970], 1000);
    EXPECT_EQ([[token refreshDate] timeIntervalSince1970], 2000);
    EXPECT_EQ([[token dataAccessExpirationDate] timeIntervalSince1970], 3000);
}

TEST_F(FacebookAccessToken, ThereIsNoCurrentOneAtFirst) {
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
}

TEST_F(FacebookAccessToken, BecomesTheCurrentOneBeforeTheNotification) {
    const RetainPtr<FBSDKAccessToken*> token = FullToken();

    [FBSDKAccessToken setCurrentAccessToken:token.get()];

    EXPECT_EQ([FBSDKAccessToken currentAccessToken], token.get());
    EXPECT_EQ(Watcher()->posts, 1);
    EXPECT_EQ(Watcher()->accessToken, token.get());
    EXPECT_EQ(Watcher()->object, [FBSDKAccessToken class]);
}

TEST_F(FacebookAccessToken, SettingTheCurrentOneAgainPostsNothing) {
    const RetainPtr<FBSDKAccessToken*> token = FullToken();
    [FBSDKAccessToken setCurrentAccessToken:token.get()];

    [FBSDKAccessToken setCurrentAccessToken:token.get()];

    EXPECT_EQ(Watcher()->posts, 1);
}

TEST_F(FacebookAccessToken, SettingNoneWhereNoneIsPostsNothing) {
    [FBSDKAccessToken setCurrentAccessToken:nil];

    EXPECT_EQ(Watcher()->posts, 0);
}

TEST_F(FacebookAccessToken, IsKeptWhileItIsTheCurrentOneAndReleasedThen) {
    NSUInteger before = 0;
    const RetainPtr<FBSDKAccessToken*> token = FullToken();
    before = [token.get() retainCount];

    @autoreleasepool {
        [FBSDKAccessToken setCurrentAccessToken:token.get()];
    }
    EXPECT_EQ([token.get() retainCount], before + 1);
    @autoreleasepool {
        [FBSDKAccessToken setCurrentAccessToken:nil];
    }

    EXPECT_EQ([token.get() retainCount], before);
}

TEST_F(FacebookAccessToken, ResetForgetsTheCurrentOneWithoutANotification) {
    [FBSDKAccessToken setCurrentAccessToken:FullToken().get()];

    [FBSDKAccessToken reset];

    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
    EXPECT_EQ(Watcher()->posts, 1);
}

TEST_F(FacebookAccessToken, SettingTheCurrentOneIsRecordedWithoutItsText) {
    [FBSDKAccessToken setCurrentAccessToken:FullToken().get()];
    [FBSDKAccessToken setCurrentAccessToken:nil];

    EXPECT_THAT(
        Host::PlatformCalls::All(),
        ElementsAre(Host::PlatformCall{"FBSDKAccessToken", "setCurrentAccessToken:", "<FBSDKAccessToken>", true},
                    Host::PlatformCall{"FBSDKAccessToken", "setCurrentAccessToken:", "nil", true}));
}

TEST_F(FacebookAccessToken, ReplacedByTheSDKItselfIsNotRecorded) {
    Host::ReplaceCurrentAccessToken(FullToken().get());

    EXPECT_NE([FBSDKAccessToken currentAccessToken], nil);
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

TEST_F(FacebookAccessToken, MadeForATestNeverExpires) {
    FBSDKAccessToken* const token = Host::MakeAccessToken(@"text", @"me", @[ @"email" ]);

    EXPECT_EQ(Text([token tokenString]), "text");
    EXPECT_EQ(Text([token userID]), "me");
    EXPECT_THAT(Texts([token permissions]), ElementsAre("email"));
    EXPECT_THAT(Texts([token declinedPermissions]), IsEmpty());
    EXPECT_FALSE([token isExpired]);
}

class FacebookAuthenticationToken : public FacebookPlatformTest {};

TEST_F(FacebookAuthenticationToken, HoldsWhatItWasMadeOf) {
    const RetainPtr<FBSDKAuthenticationToken*> token =
        AdoptNS([[FBSDKAuthenticationToken alloc] initWithTokenString:@"token" nonce:@"once" graphDomain:@"gaming"]);

    EXPECT_EQ(Text([token.get() tokenString]), "token");
    EXPECT_EQ(Text([token.get() nonce]), "once");
    EXPECT_EQ(Text([token.get() graphDomain]), "gaming");
}

TEST_F(FacebookAuthenticationToken, IsItsOwnCopy) {
    FBSDKAuthenticationToken* const token = Host::MakeAuthenticationToken(@"token", @"facebook");

    const RetainPtr<FBSDKAuthenticationToken*> copy = AdoptNS<FBSDKAuthenticationToken*>([token copy]);

    EXPECT_EQ(copy.get(), token);
}

TEST_F(FacebookAuthenticationToken, SurvivesAnArchive) {
    NSData* const archive =
        [NSKeyedArchiver archivedDataWithRootObject:Host::MakeAuthenticationToken(@"token", @"gaming")];

    FBSDKAuthenticationToken* const token = [NSKeyedUnarchiver unarchiveObjectWithData:archive];

    EXPECT_TRUE([FBSDKAuthenticationToken supportsSecureCoding]);
    EXPECT_EQ(Text([token tokenString]), "token");
    EXPECT_EQ(Text([token nonce]), "nonce");
    EXPECT_EQ(Text([token graphDomain]), "gaming");
}

TEST_F(FacebookAuthenticationToken, BecomesTheCurrentOne) {
    FBSDKAuthenticationToken* const token = Host::MakeAuthenticationToken(@"token", @"gaming");
    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], nil);

    [FBSDKAuthenticationToken setCurrentAuthenticationToken:token];

    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], token);
}

TEST_F(FacebookAuthenticationToken, ResetForgetsTheCurrentOne) {
    [FBSDKAuthenticationToken setCurrentAuthenticationToken:Host::MakeAuthenticationToken(@"token", @"gaming")];

    [FBSDKAuthenticationToken reset];

    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], nil);
}

TEST_F(FacebookAuthenticationToken, SettingTheCurrentOneIsRecordedWithoutItsText) {
    [FBSDKAuthenticationToken setCurrentAuthenticationToken:Host::MakeAuthenticationToken(@"token", @"gaming")];

    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(Host::PlatformCall{"FBSDKAuthenticationToken",
                                               "setCurrentAuthenticationToken:", "<FBSDKAuthenticationToken>", true}));
}

} // namespace
} // namespace Tarvik::Vorn::Test
