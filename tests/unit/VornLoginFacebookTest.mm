// Login and logout: what Facebook is asked, what each outcome becomes, every log line and trace, the order of it all.
//
// The plugin is loaded and found by its class name. The Facebook stand-in holds a login until the test answers it; the
// main queue is pumped by the test.

#include "PluginTest.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "HostError.h"
#include "InfoDictionary.h"
#include "PlatformCalls.h"
#include "VornConfig.h"
#include "VornPlugins.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <thread>

namespace Tarvik::Vorn::Test {
namespace {

using Host::LoginAnswer;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* kFile = "VornLoginFacebook.mm";
constexpr const char* kLogin = "-[VornLoginFacebook login:]";
constexpr const char* kHandler = "-[VornLoginFacebook login:]_block_invoke";
constexpr const char* kLogout = "-[VornLoginFacebook logout:]";
constexpr const char* kTooLow = "facebook sdk version is too low to support Gaming, please update your sdk !";

// A login request; the members that a test does not set are those of an ordinary one.
struct Request {
    std::string seqID = "s1";
    int methodID = 111;
    std::string subChannel;
    std::string permissions = "public_profile,email";
    std::string extraJson;
};

class LoginTest : public PluginTest {
protected:
    LoginTest() {
        std::string problem;
        mPlugin = FindLoginPlugin("Facebook", problem);
        EXPECT_NE(mPlugin, nil) << problem;
        ResultRecorder::Observe<InnerLoginRet, 101>();
        ResultRecorder::Observe<InnerLoginPluginRet, 109>();
        ResultRecorder::Observe<InnerBaseRet, 108>();
        [FBSDKSettings setSDKVersion:@"6.5.0"]; // One that counts as new enough for gaming.
        Log().Clear();
    }

    static VornLoginParams ParamsOf(const Request& request) {
        VornLoginParams params;
        params.methodID = request.methodID;
        params.seqID = request.seqID;
        params.channel = "not read";
        params.subChannel = request.subChannel;
        params.extraJson = request.extraJson;
        params.permissions = request.permissions;
        return params;
    }

    void Login(const Request& request = {}) const { [mPlugin login:ParamsOf(request)]; }

    void LoginInGameMode(const std::string& permissions) const {
        Request request;
        request.subChannel = "Game";
        request.permissions = permissions;
        Login(request);
    }

    void Logout(const std::string& seqID, int methodID = 112) const {
        VornBaseParams params;
        params.methodID = methodID;
        params.seqID = seqID;
        [mPlugin logout:&params];
    }

    static void Answer(const LoginAnswer& answer) { ASSERT_TRUE(Host::AnswerLogin(answer)) << "no login is under way"; }

    static LoginAnswer Token(NSString* text) {
        return LoginAnswer::Success(Host::MakeAccessToken(text, @"user-1", @[ @"public_profile" ]));
    }

    static NSError* MakeError(NSString* text, NSInteger code) {
        NSDictionary* const userInfo = text == nil ? @{} : @{NSLocalizedDescriptionKey : text};
        return [NSError errorWithDomain:@"com.example.test" code:code userInfo:userInfo];
    }

    // What the last login asked of Facebook, as the plugin passed it.
    static std::vector<std::string> AskedPermissions() {
        const auto requests = [FBSDKLoginManager loginRequests];
        return requests.empty() ? std::vector<std::string>{"no login was started"} : requests.back().permissions;
    }

    static Delivery Failure(const std::string& seqID, int methodID, int code, const std::string& message,
                            int thirdCode = 0, const std::string& thirdMsg = "") {
        InnerLoginRet ret;
        ret.methodNameID = methodID;
        ret.retCode = code;
        ret.retMsg = message;
        ret.thirdCode = thirdCode;
        ret.thirdMsg = thirdMsg;
        ret.channelID = 4;
        ret.channel = "Facebook";
        return {101, seqID, RecordText(ret), {}};
    }

    static Delivery Success(const std::string& seqID, int methodID, const std::string& channelInfo) {
        InnerLoginPluginRet ret;
        ret.methodNameID = methodID;
        ret.channelID = 4;
        ret.channel = "Facebook";
        ret.channelInfo = channelInfo;
        return {109, seqID, RecordText(ret), {}};
    }

    static std::vector<Delivery> Delivered() {
        DrainMainQueue();
        return ResultRecorder::Deliveries();
    }

    id<VornLoginDelegate> Plugin() const { return mPlugin; }

private:
    id<VornLoginDelegate> mPlugin;
};

// ---- What Facebook is asked for

TEST_F(LoginTest, AsksForThePermissionsInTheirOrder) {
    Login({.permissions = "email,public_profile,user_friends"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("email", "public_profile", "user_friends"));
}

TEST_F(LoginTest, AnEmptyPermissionsTextAsksForOneEmptyPermission) {
    Login({.permissions = ""});

    EXPECT_THAT(AskedPermissions(), ElementsAre(""));
}

TEST_F(LoginTest, EmptyPiecesAndBlanksOfThePermissionsTextStay) {
    Login({.permissions = "email,, public_profile ,"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("email", "", " public_profile ", ""));
}

TEST_F(LoginTest, ARepeatedPermissionIsPassedOnTwiceOutsideGameMode) {
    Login({.permissions = "email,email"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("email", "email"));
}

TEST_F(LoginTest, PermissionsThatAreNotUtf8AskForNothing) {
    Login({.permissions = "email,\xff"});

    EXPECT_THAT(AskedPermissions(), IsEmpty());
}

// ---- Game mode

TEST_F(LoginTest, GameModeReplacesThePublicProfileByTheGamingPermissions) {
    LoginInGameMode("public_profile,email");

    EXPECT_THAT(AskedPermissions(), ElementsAre("email", "gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeRemovesEveryPublicProfile) {
    LoginInGameMode("public_profile,email,public_profile");

    EXPECT_THAT(AskedPermissions(), ElementsAre("email", "gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeAddsOnlyTheGamingProfileWhereThePictureIsListed) {
    LoginInGameMode("gaming_user_picture,email");

    EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_user_picture", "email", "gaming_profile"));
}

TEST_F(LoginTest, GameModeAddsOnlyThePictureWhereTheGamingProfileIsListed) {
    LoginInGameMode("gaming_profile,email");

    EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_profile", "email", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeAddsNothingWhereBothAreListed) {
    LoginInGameMode("gaming_user_picture,gaming_profile");

    EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_user_picture", "gaming_profile"));
}

TEST_F(LoginTest, GameModeKeepsAnEmptyPermission) {
    LoginInGameMode("");

    EXPECT_THAT(AskedPermissions(), ElementsAre("", "gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeTakesPermissionsByTheirExactName) {
    LoginInGameMode("Public_Profile, public_profile");

    EXPECT_THAT(AskedPermissions(),
                ElementsAre("Public_Profile", " public_profile", "gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeMayComeFromTheConfiguration) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "Game");

    Login({.permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeOfTheConfigurationHoldsWhateverElseTheRequestSays) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "Game");

    Login({.subChannel = "App", .permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, GameModeOfTheRequestHoldsWhateverTheConfigurationSays) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "App");

    LoginInGameMode("public_profile");

    EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_profile", "gaming_user_picture"));
}

TEST_F(LoginTest, WithoutAConfiguredModeTheModeIsApp) {
    Login({.permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("public_profile"));
}

TEST_F(LoginTest, AnEmptyConfiguredModeIsNotGameMode) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "");

    Login({.permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("public_profile"));
}

TEST_F(LoginTest, GameInLowerCaseIsNotGameMode) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", "game");

    Login({.subChannel = "game", .permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("public_profile"));
}

TEST_F(LoginTest, GameWithABlankIsNotGameMode) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", " Game");

    Login({.subChannel = "Game ", .permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("public_profile"));
}

// ---- The SDK's version

struct VersionCase {
    const char* version; // Null for an SDK without one.
    bool supportsGaming;
};

void PrintTo(const VersionCase& value, std::ostream* out) {
    *out << (value.version == nullptr ? "absent" : value.version);
}

class KeptVersionOrder : public LoginTest, public ::testing::WithParamInterface<VersionCase> {};

INSTANTIATE_TEST_SUITE_P(
    Versions, KeptVersionOrder,
    ::testing::Values(VersionCase{"6.4.0", true}, VersionCase{"6.4.1", true}, VersionCase{"6.4.0.1", true},
                      VersionCase{"6.5.2", true}, VersionCase{"7.1.1", true}, VersionCase{"9.3.0", true},
                      VersionCase{"v18.1.0", true}, VersionCase{"6.3.9", false}, VersionCase{"6.4", false},
                      VersionCase{"6.4.", false}, VersionCase{"6.10.0", false}, VersionCase{"5.15.1", false},
                      VersionCase{"10.0.0", false}, VersionCase{"10.1.0", false}, VersionCase{"15.0.0", false},
                      VersionCase{"17.0.0", false}, VersionCase{"18.1.0", false}, VersionCase{"", false},
                      VersionCase{nullptr, false}));

TEST_P(KeptVersionOrder, ComparesAsTextsInGameMode) {
    const VersionCase& given = GetParam();
    [FBSDKSettings setSDKVersion:given.version == nullptr ? nil : [NSString stringWithUTF8String:given.version]];

    LoginInGameMode("public_profile");

    const auto errors = Log().LinesOf(kFile);
    if (given.supportsGaming) {
        EXPECT_THAT(AskedPermissions(), ElementsAre("gaming_profile", "gaming_user_picture"));
        EXPECT_THAT(errors, SizeIs(1));
    } else {
        EXPECT_THAT(AskedPermissions(), ElementsAre("public_profile"));
        ASSERT_THAT(errors, SizeIs(2));
        EXPECT_EQ(errors[1], Error(kFile, kLogin, kTooLow));
    }
}

TEST_F(LoginTest, TheVersionDoesNotMatterOutsideGameMode) {
    [FBSDKSettings setSDKVersion:@"5.0.0"];

    Login({.permissions = "public_profile"});

    EXPECT_THAT(AskedPermissions(), ElementsAre("public_profile"));
    EXPECT_THAT(Log().LinesOf(kFile), SizeIs(1));
}

// ---- Log lines, trace and order of a login

TEST_F(LoginTest, SaysWhatItIsAskedFor) {
    Login({.seqID = "s7", .methodID = -5, .permissions = "a,b", .extraJson = "{\"k\":1}"});

    EXPECT_THAT(
        Log().LinesOf(kFile),
        ElementsAre(Debug(kFile, kLogin, "[ s7 ] methodID = -5, login with permissions = a,b,  extra = {\"k\":1}")));
}

TEST_F(LoginTest, EmptyTextsAreLoggedAsEmpty) {
    Login({.seqID = "", .permissions = "", .extraJson = ""});

    EXPECT_EQ(Log().LinesOf(kFile).at(0),
              Debug(kFile, kLogin, "[  ] methodID = 111, login with permissions = ,  extra = "));
}

TEST_F(LoginTest, PercentSignsInRequestTextsAreText) {
    Login({.seqID = "%s%n", .permissions = "%d", .extraJson = "%@"});

    EXPECT_EQ(Log().LinesOf(kFile).at(0),
              Debug(kFile, kLogin, "[ %s%n ] methodID = 111, login with permissions = %d,  extra = %@"));
}

TEST_F(LoginTest, TracesTheCallUnderItsModule) {
    Login({.seqID = "s7"});

    EXPECT_THAT(Log().Traces(), ElementsAre(TraceLine{kFile, kLogin, "s7", "{\"method\":\"logInWithReadPermissions\"}",
                                                      "FacebookLogin"}));
}

// What is written and what is asked of Facebook, in one list.
class OrderTest : public LoginTest {
protected:
    OrderTest() {
        Host::SetPlatformCallListener([this](const Host::PlatformCall& call) { Log().Note("call " + call.selector); });
    }
};

TEST_F(OrderTest, LogsThenLogsOutThenLogsInThenTraces) {
    Login();

    EXPECT_THAT(Log().Transcript(),
                ElementsAre("log [ s1 ] methodID = 111, login with permissions = public_profile,email,  extra = ",
                            "call logOut", "call logInWithPermissions:fromViewController:handler:",
                            "trace {\"method\":\"logInWithReadPermissions\"}"));
}

TEST_F(OrderTest, TheVersionIsCheckedBeforeTheLogOut) {
    [FBSDKSettings setSDKVersion:@"18.1.0"];

    LoginInGameMode("email");

    EXPECT_THAT(Log().Transcript(),
                ElementsAre(HasSubstr("login with permissions"), std::string("log ") + kTooLow, "call logOut",
                            "call logInWithPermissions:fromViewController:handler:", HasSubstr("trace")));
}

TEST_F(OrderTest, AnAnswerInsideTheCallComesBeforeTheTrace) {
    Login({.permissions = "not a permission"}); // Facebook refuses it at once.

    EXPECT_THAT(Log().Transcript(),
                ElementsAre(HasSubstr("login with permissions"), "call logOut",
                            "call logInWithPermissions:fromViewController:handler:", HasSubstr("login facebook error"),
                            HasSubstr("DispatchAsyncMainThread 101"), HasSubstr("trace")));
}

TEST_F(LoginTest, PassesNoViewController) {
    Login();

    const auto calls = Host::PlatformCalls::All();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back().className, "FBSDKLoginManager");
    EXPECT_EQ(calls.back().arguments, "[\"public_profile\",\"email\"], nil, block");
}

TEST_F(LoginTest, EveryLoginStartsLoggedOut) {
    [FBSDKAccessToken setCurrentAccessToken:Host::MakeAccessToken(@"old", @"user-0", @[])];

    Login();

    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
}

TEST_F(LoginTest, RunsOnTheCallersThread) {
    OnAnotherThread([this] { Login(); });

    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        EXPECT_FALSE(call.onMainThread) << call.selector;
    }
    EXPECT_THAT(Log().LinesOf(kFile), SizeIs(1));
}

// ---- Outcomes

TEST_F(LoginTest, SuccessDeliversTheAccessTokenToObserver109) {
    Login({.seqID = "s7", .methodID = 321});
    Log().Clear();
    Answer(Token(@"EAAB-token"));

    EXPECT_THAT(Delivered(), ElementsAre(Success("s7", 321, "{\"access_token\":\"EAAB-token\"}")));
    EXPECT_THAT(Log().LinesOf(kFile), IsEmpty()); // Nothing is logged on success.
}

TEST_F(LoginTest, TheTokenIsEscapedAsJson) {
    Login();
    Answer(Token(@"a\"b\\c\nd/é"));

    EXPECT_THAT(Delivered(), ElementsAre(Success("s1", 111, R"({"access_token":"a\"b\\c\nd/é"})")));
}

TEST_F(LoginTest, TheTokenIsWrittenToNoLogTraceOrRecordOfCalls) {
    Login();
    Answer(Token(@"EAAB-secret"));
    DrainMainQueue();

    for (const std::string& entry : Log().Transcript()) {
        EXPECT_THAT(entry, Not(HasSubstr("EAAB-secret")));
    }
    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        EXPECT_THAT(call.arguments, Not(HasSubstr("EAAB-secret")));
    }
}

TEST_F(LoginTest, SuccessWithoutATokenDeliversAnEmptyOne) {
    Login();
    Answer(LoginAnswer::LimitedLogin(Host::MakeAuthenticationToken(@"id-token", @"facebook")));

    EXPECT_THAT(Delivered(), ElementsAre(Success("s1", 111, "{\"access_token\":\"\"}")));
}

TEST_F(LoginTest, NeitherResultNorErrorIsASuccessWithoutAToken) {
    Login();
    Answer(LoginAnswer::Impossible(nil, nil));

    EXPECT_THAT(Delivered(), ElementsAre(Success("s1", 111, "{\"access_token\":\"\"}")));
}

TEST_F(LoginTest, CancelDeliversCode2ToObserver101) {
    Login({.seqID = "s7", .methodID = 321});
    Log().Clear();
    Answer(LoginAnswer::Cancelled());

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s7", 321, 2, VornUtils::GetRetMsg(2))));
    EXPECT_THAT(Log().LinesOf(kFile), ElementsAre(Debug(kFile, kHandler, "[ s7 ] login facebook cancel")));
}

TEST_F(LoginTest, AnAnswerWithoutAnyTokenIsACancel) {
    Login();
    Answer(LoginAnswer::WithoutTokens());

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s1", 111, 2, VornUtils::GetRetMsg(2))));
}

TEST_F(LoginTest, AnErrorDeliversCode9999WithItsCodeAndText) {
    Login({.seqID = "s7", .methodID = 321});
    Log().Clear();
    Answer(LoginAnswer::Failed(MakeError(@"Zugriff verweigert – später", 190)));

    EXPECT_THAT(Delivered(),
                ElementsAre(Failure("s7", 321, 9999, VornUtils::GetRetMsg(9999), 190, "Zugriff verweigert – später")));
    EXPECT_THAT(
        Log().LinesOf(kFile),
        ElementsAre(Error(kFile, kHandler, "[ s7 ] login facebook error. [error]=Zugriff verweigert – später")));
}

TEST_F(LoginTest, AnErrorsCodeIsNarrowedTo32Bits) {
    Login();
    Answer(LoginAnswer::Failed(MakeError(@"wide", (NSInteger{1} << 32) + 5)));
    Login();
    Answer(LoginAnswer::Failed(MakeError(@"negative", -(NSInteger{1} << 32) - 7)));

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s1", 111, 9999, VornUtils::GetRetMsg(9999), 5, "wide"),
                                         Failure("s1", 111, 9999, VornUtils::GetRetMsg(9999), -7, "negative")));
}

TEST_F(LoginTest, AnErrorOfTheSdkCarriesFoundationsGenericText) {
    Login();
    Answer(LoginAnswer::ErrorMessage(@"the developer's text"));

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s1", 111, 9999, VornUtils::GetRetMsg(9999), 8,
                                                 "The operation couldn’t be completed. "
                                                 "(com.facebook.sdk.core error 8.)")));
}

TEST_F(LoginTest, AnErrorWinsOverACancelledResult) {
    FBSDKLoginManagerLoginResult* const cancelled =
        [[[FBSDKLoginManagerLoginResult alloc] initWithToken:nil
                                         authenticationToken:nil
                                                 isCancelled:YES
                                          grantedPermissions:[NSSet set]
                                         declinedPermissions:[NSSet set]] autorelease];
    Login();
    Answer(LoginAnswer::Impossible(cancelled, MakeError(@"both", 3)));

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s1", 111, 9999, VornUtils::GetRetMsg(9999), 3, "both")));
}

TEST_F(LoginTest, AnErrorWinsOverASuccessfulResult) {
    FBSDKLoginManagerLoginResult* const success =
        [[[FBSDKLoginManagerLoginResult alloc] initWithToken:Host::MakeAccessToken(@"t", @"u", @[])
                                         authenticationToken:nil
                                                 isCancelled:NO
                                          grantedPermissions:[NSSet set]
                                         declinedPermissions:[NSSet set]] autorelease];
    Login();
    Answer(LoginAnswer::Impossible(success, MakeError(@"both", 3)));

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s1", 111, 9999, VornUtils::GetRetMsg(9999), 3, "both")));
}

TEST_F(LoginTest, AnErrorWithoutATextDeliversTheEmptyText) {
    Login();
    Log().Clear();
    Answer(LoginAnswer::Failed(Host::MakeError(@"com.example.test", 77, nil)));

    EXPECT_THAT(Delivered(), ElementsAre(Failure("s1", 111, 9999, VornUtils::GetRetMsg(9999), 77, "")));
    EXPECT_THAT(Log().LinesOf(kFile), ElementsAre(Error(kFile, kHandler, "[ s1 ] login facebook error. [error]=")));
}

TEST_F(LoginTest, PercentSignsInAnErrorsTextAreText) {
    Login();
    Log().Clear();
    Answer(LoginAnswer::Failed(MakeError(@"100%s%n", 1)));

    EXPECT_EQ(Log().LinesOf(kFile).at(0).text, "[ s1 ] login facebook error. [error]=100%s%n");
}

TEST_F(LoginTest, APermissionThatFacebookRefusesIsAnErrorBeforeTheCallReturns) {
    Login({.permissions = "public_profile, email"});

    EXPECT_EQ([FBSDKLoginManager pendingLoginCount], 0u);
    const auto delivered = Delivered();
    ASSERT_THAT(delivered, SizeIs(1));
    EXPECT_EQ(delivered[0].observerID, 101u);
    EXPECT_THAT(delivered[0].record, AllOf(HasSubstr("retCode: 9999"), HasSubstr("thirdCode: 2,")));
}

TEST_F(LoginTest, EveryOutcomeIsDeliveredOnTheMainThread) {
    for (const LoginAnswer& answer : {Token(@"t"), LoginAnswer::Cancelled(), LoginAnswer::UserMismatch()}) {
        Login();
        OnAnotherThread([&] { Answer(answer); });
    }
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());

    const auto delivered = Delivered();

    ASSERT_THAT(delivered, SizeIs(3));
    for (const Delivery& delivery : delivered) {
        EXPECT_EQ(delivery.thread, std::this_thread::get_id());
    }
}

TEST_F(LoginTest, AnOutcomeWithoutAnObserverIsCached) {
    RemoveObserver<InnerLoginRet>(101);
    Login({.seqID = "s7", .methodID = 321});
    Answer(LoginAnswer::Cancelled());
    DrainMainQueue();

    const auto cached = TakeCachedResult<InnerLoginRet>("s7");

    ASSERT_TRUE(cached.has_value());
    EXPECT_EQ(cached->mObserverID, 101u);
    EXPECT_EQ(RecordText(cached->mRet), Failure("s7", 321, 2, VornUtils::GetRetMsg(2)).record);
}

// ---- Lifetimes, several logins

TEST_F(LoginTest, TheRequestMayBeGoneWhenTheAnswerComes) {
    auto params = std::make_unique<VornLoginParams>(
        ParamsOf({.seqID = "a sequence ID that is longer than the short form", .methodID = 9}));
    [Plugin() login:*params];
    params->seqID.assign(params->seqID.size(), 'X');
    params.reset();
    Answer(LoginAnswer::Cancelled());

    EXPECT_THAT(Delivered(), ElementsAre(Failure("a sequence ID that is longer than the short form", 9, 2,
                                                 VornUtils::GetRetMsg(2))));
}

TEST_F(LoginTest, EachLoginReportsUnderItsOwnRequest) {
    Login({.seqID = "first", .methodID = 1});
    const auto firstHandler = [[FBSDKLoginManager pendingHandler] retain];
    Login({.seqID = "second", .methodID = 2});
    Answer(LoginAnswer::Cancelled());
    firstHandler(nil, MakeError(@"late", 5));
    [firstHandler release];

    EXPECT_THAT(Delivered(), ElementsAre(Failure("second", 2, 2, VornUtils::GetRetMsg(2)),
                                         Failure("first", 1, 9999, VornUtils::GetRetMsg(9999), 5, "late")));
}

TEST_F(LoginTest, AHandlerThatIsCalledTwiceReportsTwice) {
    Login();
    const auto handler = [[FBSDKLoginManager pendingHandler] retain];
    Answer(LoginAnswer::Cancelled());
    handler(nil, MakeError(@"again", 5));
    [handler release];

    EXPECT_THAT(Delivered(), SizeIs(2));
}

TEST_F(LoginTest, ALoginThatIsNeverAnsweredLeavesNothingBehind) {
    Login();

    [FBSDKLoginManager reset]; // The leak check at the end sees what the handler still owned.

    EXPECT_THAT(Delivered(), IsEmpty());
}

TEST_F(LoginTest, AnExceptionOfTheSdkReachesTheCallerAndTheNextLoginIsServed) {
    Host::RegisterURLSchemes(@[]); // The SDK raises for an app that forgot its URL scheme.
    NSString* raised = nil;
    @try {
        Login({.seqID = "raises"});
    } @catch (NSException* exception) {
        raised = [exception name];
    }
    Host::ResetInfoDictionary();

    Login({.seqID = "served"});
    Answer(LoginAnswer::Cancelled());

    EXPECT_STREQ([raised UTF8String], "InvalidOperationException");
    EXPECT_THAT(Delivered(), ElementsAre(Failure("served", 111, 2, VornUtils::GetRetMsg(2))));
}

// ---- Logout

TEST_F(LoginTest, KeptLogoutDeliversSuccessWithMethodID0ToObserver108) {
    Logout("s9", 112);

    EXPECT_THAT(Delivered(), ElementsAre(Delivery{108, "s9", RecordText(InnerBaseRet(0)), {}}));
    EXPECT_THAT(ResultRecorder::Deliveries()[0].record, HasSubstr("methodNameID: 0,"));
}

TEST_F(LoginTest, LogoutSaysSoAndTraces) {
    Logout("s9");

    EXPECT_THAT(Log().LinesOf(kFile), ElementsAre(Debug(kFile, kLogout, "[ s9 ] logout facebook success")));
    EXPECT_THAT(Log().Traces(),
                ElementsAre(TraceLine{kFile, kLogout, "s9", "{\"method\":\"logOut\"}", "FacebookLogin"}));
}

TEST_F(OrderTest, LogoutLogsThenLogsOutThenCommitsThenTraces) {
    Logout("s9");

    EXPECT_THAT(Log().Transcript(), ElementsAre("log [ s9 ] logout facebook success", "call logOut",
                                                "log DispatchAsyncMainThread 108", "trace {\"method\":\"logOut\"}"));
}

TEST_F(LoginTest, LogoutClearsTheCurrentTokens) {
    Login();
    Answer(Token(@"t"));
    ASSERT_NE([FBSDKAccessToken currentAccessToken], nil);

    Logout("s9");

    EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
}

TEST_F(LoginTest, LogoutIsDeliveredLaterOnTheMainThread) {
    OnAnotherThread([this] { Logout("s9"); });
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());

    const auto delivered = Delivered();

    ASSERT_THAT(delivered, SizeIs(1));
    EXPECT_EQ(delivered[0].thread, std::this_thread::get_id());
}

TEST_F(LoginTest, LogoutLeavesALoginThatIsUnderWay) {
    Login({.seqID = "login"});
    Logout("logout");
    Answer(Token(@"t"));

    const auto delivered = Delivered();

    ASSERT_THAT(delivered, SizeIs(2));
    EXPECT_EQ(delivered[0].seqID, "logout");
    EXPECT_EQ(delivered[1], Success("login", 111, "{\"access_token\":\"t\"}"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
