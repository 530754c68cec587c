// FBSDKLoginManager: what it refuses, how long it keeps a login, how a login ends, and logging out.
#include "FacebookPlatformTest.h"

#import <UIKit/UIKit.h>

#include <stdexcept>

namespace Tarvik::Vorn::Test {
namespace {

using Host::AnswerLogin;
using Host::LoginAnswer;
using Host::PlatformCall;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class FacebookLogin : public FacebookPlatformTest {
protected:
    // A login through a manager of its own, which nobody but the SDK keeps.
    static void LogIn(NSArray<NSString*>* permissions, FBSDKLoginManagerLoginResultBlock handler) {
        const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
        [manager.get() logInWithPermissions:permissions fromViewController:nil handler:handler];
    }

    // A login that is answered.
    LoginOutcome EndedWith(const LoginAnswer& answer) {
        LoginOutcome outcome;
        LogIn(@[ @"email" ], outcome.Handler());
        EXPECT_TRUE(AnswerLogin(answer));
        return outcome;
    }

    static FBSDKAccessToken* Token() { return Host::MakeAccessToken(@"token", @"user", @[ @"email" ]); }
    static FBSDKAuthenticationToken* IDToken() { return Host::MakeAuthenticationToken(@"id token", @"gaming"); }
};

std::string ErrorText(const LoginOutcome& outcome) {
    NSError* const error = outcome.error.get();
    return error == nil ? "no error" : Text([error domain]) + " " + std::to_string([error code]);
}

std::string DeveloperMessage(const LoginOutcome& outcome) {
    return Text([[outcome.error.get() userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]);
}

void ExpectCancelled(const LoginOutcome& outcome) {
    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(ErrorText(outcome), "no error");
    ASSERT_TRUE(outcome.result);
    EXPECT_TRUE([outcome.result.get() isCancelled]);
    EXPECT_EQ([outcome.result.get() token], nil);
    EXPECT_THAT(Texts([outcome.result.get() grantedPermissions]), IsEmpty());
    EXPECT_THAT(Texts([outcome.result.get() declinedPermissions]), IsEmpty());
}

void ExpectError(const LoginOutcome& outcome, const std::string& domainAndCode) {
    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(outcome.result.get(), nil);
    EXPECT_EQ(ErrorText(outcome), domainAndCode);
    EXPECT_EQ([[outcome.error.get() userInfo] objectForKey:NSLocalizedDescriptionKey], nil);
}

#pragma mark - Permissions

TEST_F(FacebookLogin, PermissionsOfSmallLettersAndUnderscoresOpenThePage) {
    LoginOutcome outcome;

    LogIn(@[ @"email", @"gaming_user_picture", @"_" ], outcome.Handler());

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
    EXPECT_EQ(outcome.calls, 0);
}

TEST_F(FacebookLogin, AnEmptyListOpensThePage) {
    LogIn(@[], nil);

    ASSERT_EQ([FBSDKLoginManager loginRequests].size(), 1u);
    EXPECT_TRUE([FBSDKLoginManager loginRequests][0].pageOpened);
    EXPECT_THAT([FBSDKLoginManager loginRequests][0].askedPermissions, ElementsAre("openid"));
}

class FacebookBadPermission : public FacebookLogin, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, FacebookBadPermission,
                         ::testing::Values("", " ", "email ", "Email", "user2", "public-profile", "email,name",
                                           "caf\xc3\xa9", "a.b", "`", "{"));

TEST_P(FacebookBadPermission, FailsTheWholeLoginBeforeTheCallReturns) {
    LoginOutcome outcome;

    LogIn(@[ @"email", [NSString stringWithUTF8String:GetParam()], @"public_profile" ], outcome.Handler());

    ExpectError(outcome, "com.facebook.sdk.core 2");
    EXPECT_THAT(DeveloperMessage(outcome), Not(IsEmpty()));
    EXPECT_NE(DeveloperMessage(outcome), "(nil)");
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
}

TEST_F(FacebookLogin, RefusedPermissionsAreToldOnTheCallingThread) {
    LoginOutcome outcome;
    std::thread::id caller;

    OnAnotherThread([&] {
        caller = std::this_thread::get_id();
        LogIn(@[ @"" ], outcome.Handler());
    });

    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(outcome.thread, caller);
    EXPECT_NE(outcome.thread, std::this_thread::get_id());
}

TEST_F(FacebookLogin, RefusedPermissionsWithoutAHandlerAreToldNobody) {
    LogIn(@[ @"" ], nil);

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
}

TEST_F(FacebookLogin, RefusedPermissionsLeaveTheShowingLoginAlone) {
    LoginOutcome showing;
    LoginOutcome refused;
    LogIn(@[ @"email" ], showing.Handler());

    LogIn(@[ @"2" ], refused.Handler());

    EXPECT_EQ(refused.calls, 1);
    EXPECT_EQ(showing.calls, 0);
    EXPECT_TRUE(AnswerLogin(LoginAnswer::Cancelled()));
    EXPECT_EQ(showing.calls, 1);
}

TEST_F(FacebookLogin, DuplicatesVanishAndOpenidIsAsked) {
    LogIn(@[ @"email", @"public_profile", @"email" ], nil);

    const std::vector<Host::LoginRequest> requests = [FBSDKLoginManager loginRequests];
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_THAT(requests[0].permissions, ElementsAre("email", "public_profile", "email"));
    EXPECT_THAT(requests[0].askedPermissions, ElementsAre("email", "openid", "public_profile"));
}

TEST_F(FacebookLogin, RefusedLoginsAreAmongTheRequestsButAskNothing) {
    LogIn(@[ @"email", @"" ], nil);

    const std::vector<Host::LoginRequest> requests = [FBSDKLoginManager loginRequests];
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_THAT(requests[0].permissions, ElementsAre("email", ""));
    EXPECT_THAT(requests[0].askedPermissions, IsEmpty());
    EXPECT_EQ(requests[0].scheme, "");
    EXPECT_FALSE(requests[0].pageOpened);
}

TEST_F(FacebookLogin, AudienceIsFriendsUnlessTheManagerSaysOtherwise) {
    LogIn(@[], nil);
    const RetainPtr<FBSDKLoginManager*> manager =
        AdoptNS([[FBSDKLoginManager alloc] initWithDefaultAudience:FBSDKDefaultAudienceOnlyMe]);
    [manager.get() logInWithPermissions:@[] fromViewController:nil handler:nil];

    const std::vector<Host::LoginRequest> requests = [FBSDKLoginManager loginRequests];
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].audience, FBSDKDefaultAudienceFriends);
    EXPECT_EQ(requests[1].audience, FBSDKDefaultAudienceOnlyMe);
}

#pragma mark - URL scheme

TEST_F(FacebookLogin, ComesBackThroughTheSchemeOfTheAppID) {
    [[FBSDKSettings sharedSettings] setAppID:@"123"];

    LogIn(@[], nil);

    EXPECT_EQ([FBSDKLoginManager loginRequests].at(0).scheme, "fb123");
}

TEST_F(FacebookLogin, WithoutItsSchemeRaisesAndKeepsNothing) {
    [[FBSDKSettings sharedSettings] setAppID:@"123"];
    Host::RegisterURLSchemes(@[ @"fb124" ]);
    LoginOutcome outcome;

    EXPECT_EQ(RaisedBy([&] { LogIn(@[ @"email" ], outcome.Handler()); }), "InvalidOperationException");

    EXPECT_EQ(outcome.calls, 0);
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
    EXPECT_FALSE([FBSDKLoginManager loginRequests].at(0).pageOpened);
}

TEST_F(FacebookLogin, WithItsSchemeRegisteredOpensThePage) {
    [[FBSDKSettings sharedSettings] setAppID:@"123"];
    Host::RegisterURLSchemes(@[ @"fb123" ]);

    EXPECT_EQ(RaisedBy([] { LogIn(@[ @"email" ], nil); }), "");

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
}

TEST_F(FacebookLogin, SchemeEndsWithTheSuffix) {
    [[FBSDKSettings sharedSettings] setAppID:@"123"];
    [[FBSDKSettings sharedSettings] setAppURLSchemeSuffix:@"lite"];
    Host::RegisterURLSchemes(@[ @"fb123" ]);

    EXPECT_EQ(RaisedBy([] { LogIn(@[ @"email" ], nil); }), "InvalidOperationException");
    Host::RegisterURLSchemes(@[ @"fb123lite" ]);
    EXPECT_EQ(RaisedBy([] { LogIn(@[ @"email" ], nil); }), "");
}

TEST_F(FacebookLogin, WithAnEmptyAppIDNeedsTheSchemeFb) {
    [[FBSDKSettings sharedSettings] setAppID:@""];
    Host::RegisterURLSchemes(@[ @"fb123" ]);

    EXPECT_EQ(RaisedBy([] { LogIn(@[ @"email" ], nil); }), "InvalidOperationException");
    Host::RegisterURLSchemes(@[ @"fb" ]);
    EXPECT_EQ(RaisedBy([] { LogIn(@[ @"email" ], nil); }), "");
}

TEST_F(FacebookLogin, WithoutAnAppIDRaisesWhateverIsRegistered) {
    [[FBSDKSettings sharedSettings] setAppID:nil];

    EXPECT_EQ(RaisedBy([] { LogIn(@[ @"email" ], nil); }), "InvalidOperationException");
}

TEST_F(FacebookLogin, PermissionsAreLookedAtBeforeTheScheme) {
    Host::RegisterURLSchemes(@[]);
    LoginOutcome outcome;

    EXPECT_EQ(RaisedBy([&] { LogIn(@[ @"" ], outcome.Handler()); }), "");

    EXPECT_EQ(outcome.calls, 1);
}

#pragma mark - Lifetimes

TEST_F(FacebookLogin, KeepsTheManagerUntilTheAnswer) {
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    @autoreleasepool {
        [manager.get() logInWithPermissions:@[] fromViewController:nil handler:nil];
    }
    EXPECT_EQ([manager.get() retainCount], 2u);

    AnswerLogin(LoginAnswer::Cancelled());

    EXPECT_EQ([manager.get() retainCount], 1u);
}

TEST_F(FacebookLogin, KeepsACopyOfTheHandlerUntilTheAnswer) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        LogIn(@[], ^(FBSDKLoginManagerLoginResult*, NSError*) {
            (void)probe;
        });
    }
    EXPECT_EQ(alive, 1);

    AnswerLogin(LoginAnswer::Cancelled());

    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookLogin, RefusedLoginsDoNotKeepTheHandler) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        LogIn(@[ @"" ], ^(FBSDKLoginManagerLoginResult*, NSError*) {
            (void)probe;
        });
    }

    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookLogin, AnotherManagersLoginReplacesTheShowingOneWhichIsReleasedUnanswered) {
    int alive = 0;
    __block int firstCalls = 0;
    LoginOutcome second;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        LogIn(@[], ^(FBSDKLoginManagerLoginResult*, NSError*) {
            (void)probe;
            ++firstCalls;
        });
    }

    @autoreleasepool {
        LogIn(@[], second.Handler());
    }

    EXPECT_EQ(alive, 0);
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
    AnswerLogin(LoginAnswer::Cancelled());
    EXPECT_EQ(second.calls, 1);
    EXPECT_EQ(firstCalls, 0);
}

TEST_F(FacebookLogin, TheSameManagersSecondLoginCancelsItsFirst) {
    LoginOutcome first;
    LoginOutcome second;
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logInWithPermissions:@[] fromViewController:nil handler:first.Handler()];

    [manager.get() logInWithPermissions:@[] fromViewController:nil handler:second.Handler()];

    ExpectCancelled(first);
    EXPECT_EQ(second.calls, 0);
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
    AnswerLogin(LoginAnswer::Success(Token()));
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 1);
}

TEST_F(FacebookLogin, AManagerMayLogInAgainAfterItsAnswer) {
    LoginOutcome first;
    LoginOutcome second;
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logInWithPermissions:@[] fromViewController:nil handler:first.Handler()];
    AnswerLogin(LoginAnswer::Success(Token()));

    [manager.get() logInWithPermissions:@[] fromViewController:nil handler:second.Handler()];
    AnswerLogin(LoginAnswer::Cancelled());

    EXPECT_EQ(first.calls, 1);
    ExpectCancelled(second);
}

TEST_F(FacebookLogin, AHandlerMayStartTheNextLogin) {
    LoginOutcome next;
    const FBSDKLoginManagerLoginResultBlock handlerOfNext = next.Handler();
    LogIn(@[], ^(FBSDKLoginManagerLoginResult*, NSError*) {
        LogIn(@[], handlerOfNext);
    });

    AnswerLogin(LoginAnswer::Cancelled());

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
    AnswerLogin(LoginAnswer::Cancelled());
    EXPECT_EQ(next.calls, 1);
}

TEST_F(FacebookLogin, ResetReleasesTheHandlerUncalled) {
    int alive = 0;
    __block int calls = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        LogIn(@[], ^(FBSDKLoginManagerLoginResult*, NSError*) {
            (void)probe;
            ++calls;
        });
    }

    [FBSDKLoginManager reset];

    EXPECT_EQ(alive, 0);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
    EXPECT_TRUE([FBSDKLoginManager loginRequests].empty());
}

#pragma mark - Answers

TEST_F(FacebookLogin, WithoutAShowingPageThereIsNothingToAnswer) {
    EXPECT_FALSE(AnswerLogin(LoginAnswer::Cancelled()));
    EXPECT_EQ([FBSDKLoginManager pendingHandler], nil);
}

TEST_F(FacebookLogin, IsAnsweredOnce) {
    LoginOutcome outcome;
    LogIn(@[], outcome.Handler());

    EXPECT_TRUE(AnswerLogin(LoginAnswer::Cancelled()));
    EXPECT_FALSE(AnswerLogin(LoginAnswer::Cancelled()));

    EXPECT_EQ(outcome.calls, 1);
}

TEST_F(FacebookLogin, IsAnsweredOnTheThreadOfTheAnswer) {
    LoginOutcome outcome;
    LogIn(@[], outcome.Handler());
    std::thread::id answering;

    OnAnotherThread([&] {
        answering = std::this_thread::get_id();
        AnswerLogin(LoginAnswer::Success(Token()));
    });

    EXPECT_EQ(outcome.thread, answering);
    EXPECT_NE(outcome.thread, std::this_thread::get_id());
}

TEST_F(FacebookLogin, WithoutAHandlerStillSetsTheTokens) {
    LogIn(@[], nil);

    EXPECT_TRUE(AnswerLogin(LoginAnswer::Success(Token())));

    EXPECT_NE([FBSDKAccessToken currentAccessToken], nil);
}

TEST_F(FacebookLogin, SuccessCarriesTheTokensAndTheirPermissions) {
    const RetainPtr<FBSDKAccessToken*> token =
        AdoptNS([[FBSDKAccessToken alloc] initWithTokenString:@"token"
                                                  permissions:@[ @"email", @"public_profile" ]
                                          declinedPermissions:@[ @"user_friends" ]
                                           expiredPermissions:@[]
                                                        appID:@"app"
                                                       userID:@"user"
                                               expirationDate:nil
                                                  refreshDate:nil
                                     dataAccessExpirationDate:nil]);
    FBSDKAuthenticationToken* const idToken = IDToken();

    const LoginOutcome outcome = EndedWith(LoginAnswer::Success(token.get(), idToken));

    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(ErrorText(outcome), "no error");
    ASSERT_TRUE(outcome.result);
    EXPECT_FALSE([outcome.result.get() isCancelled]);
    EXPECT_EQ([outcome.result.get() token], token.get());
    EXPECT_EQ([outcome.result.get() authenticationToken], idToken);
    EXPECT_THAT(Texts([outcome.result.get() grantedPermissions]), ElementsAre("email", "public_profile"));
    EXPECT_THAT(Texts([outcome.result.get() declinedPermissions]), ElementsAre("user_friends"));
}

TEST_F(FacebookLogin, SuccessSetsBothTokensBeforeTheHandlerRuns) {
    FBSDKAccessToken* const token = Token();
    FBSDKAuthenticationToken* const idToken = IDToken();

    const LoginOutcome outcome = EndedWith(LoginAnswer::Success(token, idToken));

    EXPECT_EQ(outcome.currentAccessToken.get(), token);
    EXPECT_EQ(outcome.currentAuthenticationToken.get(), idToken);
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], token);
    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], idToken);
}

TEST_F(FacebookLogin, SuccessSetsBothTokensBeforeTheNotification) {
    const RetainPtr<VornTokenWatcher*> watcher = AdoptNS([[VornTokenWatcher alloc] init]);
    FBSDKAccessToken* const token = Token();
    FBSDKAuthenticationToken* const idToken = IDToken();

    EndedWith(LoginAnswer::Success(token, idToken));

    EXPECT_EQ(watcher.get()->posts, 1);
    EXPECT_EQ(watcher.get()->accessToken, token);
    EXPECT_EQ(watcher.get()->authenticationToken, idToken);
}

TEST_F(FacebookLogin, SuccessWithoutAnIDTokenLeavesNoAuthenticationToken) {
    Host::ReplaceCurrentAuthenticationToken(IDToken());

    const LoginOutcome outcome = EndedWith(LoginAnswer::Success(Token()));

    EXPECT_EQ([outcome.result.get() authenticationToken], nil);
    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], nil);
}

TEST_F(FacebookLogin, SuccessOfTheSameUserReplacesTheToken) {
    Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"older", @"user", @[ @"email" ]));

    const LoginOutcome outcome = EndedWith(LoginAnswer::Success(Token()));

    EXPECT_EQ(Text([[outcome.result.get() token] tokenString]), "token");
    EXPECT_EQ(Text([[FBSDKAccessToken currentAccessToken] tokenString]), "token");
}

TEST_F(FacebookLogin, SuccessOfAnotherUserIsAMismatchAndLeavesTheTokens) {
    FBSDKAccessToken* const other = Host::MakeAccessToken(@"other", @"somebody else", @[ @"email" ]);
    Host::ReplaceCurrentAccessToken(other);

    const LoginOutcome outcome = EndedWith(LoginAnswer::Success(Token(), IDToken()));

    ExpectError(outcome, "com.facebook.sdk.login 304");
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], other);
    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], nil);
}

TEST_F(FacebookLogin, LimitedLoginIsNotCancelledAndHasNoAccessToken) {
    FBSDKAuthenticationToken* const idToken = IDToken();

    const LoginOutcome outcome = EndedWith(LoginAnswer::LimitedLogin(idToken));

    EXPECT_EQ(ErrorText(outcome), "no error");
    ASSERT_TRUE(outcome.result);
    EXPECT_FALSE([outcome.result.get() isCancelled]);
    EXPECT_EQ([outcome.result.get() token], nil);
    EXPECT_EQ([outcome.result.get() authenticationToken], idToken);
    EXPECT_THAT(Texts([outcome.result.get() grantedPermissions]), ElementsAre("email", "openid"));
    EXPECT_EQ(outcome.currentAuthenticationToken.get(), idToken);
}

TEST_F(FacebookLogin, ClosingThePageCancels) {
    FBSDKAccessToken* const token = Token();
    Host::ReplaceCurrentAccessToken(token);

    const LoginOutcome outcome = EndedWith(LoginAnswer::Cancelled());

    ExpectCancelled(outcome);
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], token);
}

TEST_F(FacebookLogin, AnAnswerWithoutAnyTokenCancelsAndLeavesTheTokens) {
    FBSDKAccessToken* const token = Token();
    Host::ReplaceCurrentAccessToken(token);
    Host::ReplaceCurrentAuthenticationToken(IDToken());

    ExpectCancelled(EndedWith(LoginAnswer::WithoutTokens()));

    EXPECT_EQ([FBSDKAccessToken currentAccessToken], token);
    EXPECT_NE([FBSDKAuthenticationToken currentAuthenticationToken], nil);
}

TEST_F(FacebookLogin, ALimitedLoginWithoutItsTokenCancels) {
    ExpectCancelled(EndedWith(LoginAnswer::LimitedLogin(nil)));
}

TEST_F(FacebookLogin, NothingGrantedCancels) {
    ExpectCancelled(EndedWith(LoginAnswer::NothingGranted()));
}

TEST_F(FacebookLogin, NothingGrantedStillSetsTheAuthenticationToken) {
    Host::ReplaceCurrentAccessToken(Token());
    FBSDKAuthenticationToken* const idToken = IDToken();

    const LoginOutcome outcome = EndedWith(LoginAnswer::NothingGranted(idToken));

    ExpectCancelled(outcome);
    EXPECT_EQ(outcome.currentAuthenticationToken.get(), idToken);
    EXPECT_EQ(outcome.currentAccessToken.get(), nil);
}

TEST_F(FacebookLogin, AnAccessTokenWithoutPermissionsCancels) {
    const LoginOutcome outcome = EndedWith(LoginAnswer::Success(Host::MakeAccessToken(@"token", @"user", @[])));

    ExpectCancelled(outcome);
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
}

TEST_F(FacebookLogin, AnErrorMessageIsCore8WithTheMessageForDevelopers) {
    const LoginOutcome outcome = EndedWith(LoginAnswer::ErrorMessage(@"App not active"));

    ExpectError(outcome, "com.facebook.sdk.core 8");
    EXPECT_EQ(DeveloperMessage(outcome), "App not active");
}

TEST_F(FacebookLogin, ABrowserThatDoesNotOpenIsLogin301) {
    ExpectError(EndedWith(LoginAnswer::BrowserNotOpened()), "com.facebook.sdk.login 301");
}

TEST_F(FacebookLogin, ABrowserThatDoesNotOpenMayTellItsOwnError) {
    NSError* const error = [NSError errorWithDomain:@"opener" code:7 userInfo:@{}];

    const LoginOutcome outcome = EndedWith(LoginAnswer::BrowserNotOpened(error));

    EXPECT_EQ(outcome.error.get(), error);
}

TEST_F(FacebookLogin, AFailedStateCheckIsLogin308AndLeavesTheTokens) {
    FBSDKAuthenticationToken* const idToken = IDToken();
    Host::ReplaceCurrentAuthenticationToken(idToken);

    ExpectError(EndedWith(LoginAnswer::StateCheckFailed()), "com.facebook.sdk.login 308");

    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], idToken);
}

TEST_F(FacebookLogin, AFailedStateCheckMayComeAfterTheAuthenticationTokenWasSet) {
    FBSDKAuthenticationToken* const idToken = IDToken();

    const LoginOutcome outcome = EndedWith(LoginAnswer::StateCheckFailed(idToken));

    ExpectError(outcome, "com.facebook.sdk.login 308");
    EXPECT_EQ(outcome.currentAuthenticationToken.get(), idToken);
}

TEST_F(FacebookLogin, ABadIDTokenIs309OfTheCoreDomain) {
    ExpectError(EndedWith(LoginAnswer::BadIDToken()), "com.facebook.sdk.core 309");
}

TEST_F(FacebookLogin, AnInconsistentAnswerIs301OfTheCoreDomain) {
    ExpectError(EndedWith(LoginAnswer::Inconsistent()), "com.facebook.sdk.core 301");
}

TEST_F(FacebookLogin, AUserMismatchIsLogin304) {
    ExpectError(EndedWith(LoginAnswer::UserMismatch()), "com.facebook.sdk.login 304");
}

TEST_F(FacebookLogin, ErrorsLeaveTheTokens) {
    FBSDKAccessToken* const token = Token();
    FBSDKAuthenticationToken* const idToken = IDToken();
    Host::ReplaceCurrentAccessToken(token);
    Host::ReplaceCurrentAuthenticationToken(idToken);

    for (const LoginAnswer& answer :
         {LoginAnswer::ErrorMessage(@"text"), LoginAnswer::BrowserNotOpened(), LoginAnswer::BadIDToken(),
          LoginAnswer::Inconsistent(), LoginAnswer::UserMismatch(), LoginAnswer::StateCheckFailed()}) {
        const LoginOutcome outcome = EndedWith(answer);

        EXPECT_EQ(outcome.currentAccessToken.get(), token) << ErrorText(outcome);
        EXPECT_EQ(outcome.currentAuthenticationToken.get(), idToken) << ErrorText(outcome);
    }
}

TEST_F(FacebookLogin, AnErrorsDeveloperMessageIsNotItsLocalizedDescription) {
    const LoginOutcome outcome = EndedWith(LoginAnswer::ErrorMessage(@"for developers"));

    EXPECT_THAT(Text([outcome.error.get() localizedDescription]), Not(HasSubstr("for developers")));
}

#pragma mark - Answers that the SDK never gives

TEST_F(FacebookLogin, CanEndWithAnyError) {
    NSError* const error = Host::MakeError(@"any", 1LL << 33, nil);

    const LoginOutcome outcome = EndedWith(LoginAnswer::Failed(error));

    EXPECT_EQ(outcome.error.get(), error);
    EXPECT_EQ([outcome.error.get() code], 1LL << 33);
    EXPECT_EQ([outcome.error.get() localizedDescription], nil);
    EXPECT_EQ(outcome.result.get(), nil);
}

TEST_F(FacebookLogin, CanEndWithAResultAndAnErrorTogether) {
    const RetainPtr<FBSDKLoginManagerLoginResult*> result =
        AdoptNS([[FBSDKLoginManagerLoginResult alloc] initWithToken:Token()
                                                authenticationToken:nil
                                                        isCancelled:YES
                                                 grantedPermissions:[NSSet set]
                                                declinedPermissions:[NSSet set]]);
    NSError* const error = Host::MakeError(@"any", 1, @"text");

    const LoginOutcome outcome = EndedWith(LoginAnswer::Impossible(result.get(), error));

    EXPECT_EQ(outcome.result.get(), result.get());
    EXPECT_EQ(outcome.error.get(), error);
    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
}

TEST_F(FacebookLogin, CanEndWithNeitherResultNorError) {
    const LoginOutcome outcome = EndedWith(LoginAnswer::Impossible(nil, nil));

    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(outcome.result.get(), nil);
    EXPECT_EQ(outcome.error.get(), nil);
}

TEST_F(FacebookLogin, HandlerCanBeTakenOutAndCalledAgain) {
    LoginOutcome outcome;
    LogIn(@[], outcome.Handler());
    const RetainPtr<FBSDKLoginManagerLoginResultBlock> handler([FBSDKLoginManager pendingHandler]);
    AnswerLogin(LoginAnswer::Cancelled());

    handler.get()(nil, nil);

    EXPECT_EQ(outcome.calls, 2);
}

TEST_F(FacebookLogin, AnExceptionOfTheHandlerPassesThroughAndEndsTheLogin) {
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    @autoreleasepool {
        [manager.get() logInWithPermissions:@[]
                         fromViewController:nil
                                    handler:^(FBSDKLoginManagerLoginResult*, NSError*) {
                                        throw std::runtime_error("from the handler");
                                    }];
    }

    EXPECT_THROW(AnswerLogin(LoginAnswer::Cancelled()), std::runtime_error);

    EXPECT_EQ([manager.get() retainCount], 1u);
    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
}

#pragma mark - Logging out

class FacebookLogout : public FacebookLogin {
protected:
    static void LogOut() { [AdoptNS([[FBSDKLoginManager alloc] init]).get() logOut]; }
};

TEST_F(FacebookLogout, ClearsBothTokensBeforeItReturns) {
    Host::ReplaceCurrentAccessToken(Token());
    Host::ReplaceCurrentAuthenticationToken(IDToken());

    LogOut();

    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
    EXPECT_EQ([FBSDKAuthenticationToken currentAuthenticationToken], nil);
}

TEST_F(FacebookLogout, PostsTheNotificationOnlyWhenThereWasAToken) {
    Host::ReplaceCurrentAccessToken(Token());
    Host::ReplaceCurrentAuthenticationToken(IDToken());
    const RetainPtr<VornTokenWatcher*> watcher = AdoptNS([[VornTokenWatcher alloc] init]);

    LogOut();
    EXPECT_EQ(watcher.get()->posts, 1);
    EXPECT_EQ(watcher.get()->accessToken, nil);
    EXPECT_EQ(watcher.get()->authenticationToken, nil);
    LogOut();
    EXPECT_EQ(watcher.get()->posts, 1);
}

TEST_F(FacebookLogout, LeavesTheShowingLoginAlone) {
    LoginOutcome outcome;
    LogIn(@[], outcome.Handler());

    LogOut();

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 1u);
    EXPECT_EQ(outcome.calls, 0);
}

#pragma mark - Record

TEST_F(FacebookLogin, CallsAreRecordedInTheirOrderWithTheirArguments) {
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);

    [manager.get() logOut];
    [manager.get() logInWithPermissions:@[ @"email", @"" ] fromViewController:nil handler:nil];
    OnAnotherThread([&] {
        LoginOutcome outcome;
        [manager.get() logInWithPermissions:@[] fromViewController:controller.get() handler:outcome.Handler()];
        [FBSDKLoginManager reset];
    });

    const std::string logIn = "logInWithPermissions:fromViewController:handler:";
    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"FBSDKLoginManager", "logOut", "", true},
                            PlatformCall{"FBSDKLoginManager", logIn, "[\"email\",\"\"], nil, nil", true},
                            PlatformCall{"FBSDKLoginManager", logIn, "[], <UIViewController>, block", false}));
}

TEST_F(FacebookLogin, AnAccessTokensTextIsNeverRecorded) {
    FBSDKAccessToken* const token = Host::MakeAccessToken(@"SECRET", @"user", @[ @"email" ]);

    EndedWith(LoginAnswer::Success(token, Host::MakeAuthenticationToken(@"SECRET", @"gaming")));
    [FBSDKAccessToken setCurrentAccessToken:nil];
    [FBSDKAccessToken setCurrentAccessToken:token];
    EndedWith(LoginAnswer::Cancelled());

    EXPECT_EQ(Host::PlatformCalls::All().size(), 4u);
    for (const PlatformCall& call : Host::PlatformCalls::All()) {
        EXPECT_THAT(call.className + call.selector + call.arguments, Not(HasSubstr("SECRET")));
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
