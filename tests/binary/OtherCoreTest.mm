// The plugin needs nothing of core/: its very objects, linked against another core that defines what ShareDir/Common
// declares and no more, log in and out. That this program links is half of the test.

#include "minimal_core/MinimalCore.h"

#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "FBSDKLoginKit/LoginAnswer.h"
#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "PlatformReset.h"
#include "PoolTest.h"
#include "VornDefine.h"
#include "VornLoginFacebook.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <link.h>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// What the observers of these tests were called with: "observer, request, what the record says".
std::vector<std::string> sDeliveries;

void OnLogin(const InnerLoginPluginRet& ret, const char* seqID) {
    sDeliveries.push_back("109 " + std::string(seqID) + " " + std::to_string(ret.methodNameID) + " " +
                          std::to_string(ret.channelID) + " " + ret.channel + " " + ret.channelInfo);
}

void OnFailedLogin(const InnerLoginRet& ret, const char* seqID) {
    sDeliveries.push_back("101 " + std::string(seqID) + " " + std::to_string(ret.methodNameID) + " " +
                          std::to_string(ret.retCode) + " " + ret.retMsg.toString() + " " + ret.channel.toString());
}

void OnLogout(const InnerBaseRet& ret, const char* seqID) {
    sDeliveries.push_back("108 " + std::string(seqID) + " " + std::to_string(ret.retCode) + " " +
                          ret.retMsg.toString());
}

class OtherCore : public PoolTest {
protected:
    OtherCore() {
        Host::ResetPlatform();
        VornInnerObserverHolder<InnerLoginPluginRet>::mObserverHolder[109] = &OnLogin;
        VornInnerObserverHolder<InnerLoginRet>::mObserverHolder[101] = &OnFailedLogin;
        VornInnerObserverHolder<InnerBaseRet>::mObserverHolder[108] = &OnLogout;
        sDeliveries.clear();
        TakeCoreCalls();
    }
    ~OtherCore() override {
        RunMainThreadCalls();
        Host::ResetPlatform();
    }

    static void Login() {
        VornLoginParams params;
        params.methodID = 111;
        params.seqID = "s1";
        params.permissions = "email";
        [[VornLoginFacebook sharedInstance] login:params];
    }

    static void Logout() {
        VornBaseParams params;
        params.seqID = "s2";
        [[VornLoginFacebook sharedInstance] logout:&params];
    }

    static void AnswerWithToken() {
        FBSDKAccessToken* const token = Host::MakeAccessToken(@"token-1", @"user-1", @[ @"email" ]);
        ASSERT_TRUE(Host::AnswerLogin(Host::LoginAnswer::Success(token)));
    }
};

TEST_F(OtherCore, IsTheOnlyOneInThisProcess) {
    std::vector<std::string> libraries;
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* list) {
            static_cast<std::vector<std::string>*>(list)->push_back(info->dlpi_name);
            return 0;
        },
        &libraries);

    EXPECT_THAT(libraries, ::testing::Contains(HasSubstr("libVornPlatform.so")));
    EXPECT_THAT(libraries, Not(::testing::Contains(HasSubstr("libVornCore"))));
    EXPECT_THAT(libraries, Not(::testing::Contains(HasSubstr("libVornFacebook"))));
}

TEST_F(OtherCore, LogsIn) {
    Login();
    AnswerWithToken();
    const std::vector<std::string> before = sDeliveries;
    RunMainThreadCalls();

    EXPECT_THAT(before, IsEmpty());
    EXPECT_THAT(sDeliveries, ElementsAre("109 s1 111 4 Facebook <access_token=token-1/5;>"));
}

TEST_F(OtherCore, FailsToLogIn) {
    Login();
    ASSERT_TRUE(Host::AnswerLogin(Host::LoginAnswer::Cancelled()));
    RunMainThreadCalls();

    EXPECT_THAT(sDeliveries, ElementsAre("101 s1 111 2 text of 2 Facebook"));
}

TEST_F(OtherCore, LogsOut) {
    Logout();
    RunMainThreadCalls();

    EXPECT_THAT(sDeliveries, ElementsAre("108 s2 0 text of 0"));
}

TEST_F(OtherCore, IsAskedInTheOrderOfTheRequest) {
    VornSingleton<VornConfigManager>::GetInstance(); // Made before: whichever request is the first one makes it.
    TakeCoreCalls();

    Login();
    const std::vector<std::string> login = WithoutLogger(TakeCoreCalls());
    AnswerWithToken();
    const std::vector<std::string> answer = WithoutLogger(TakeCoreCalls());
    Logout();
    const std::vector<std::string> logout = WithoutLogger(TakeCoreCalls());

    EXPECT_THAT(login, ElementsAre("config get FACEBOOK_LOGIN_MODE App",
                                   "trace VornLoginFacebook.mm -[VornLoginFacebook login:] s1 "
                                   "{\"method\":\"logInWithReadPermissions\"} FacebookLogin"));
    EXPECT_THAT(answer, ElementsAre("main thread"));
    EXPECT_THAT(logout, ElementsAre("main thread", "trace VornLoginFacebook.mm -[VornLoginFacebook logout:] s2 "
                                                   "{\"method\":\"logOut\"} FacebookLogin"));
}

TEST_F(OtherCore, IsGivenEveryLineByALoggerOfItsOwn) {
    Login();
    AnswerWithToken();
    Logout();
    RunMainThreadCalls();
    const std::vector<std::string> calls = OnlyLogger(TakeCoreCalls());

    ASSERT_GE(calls.size(), 4u);
    ASSERT_EQ(calls.size() % 4, 0u);
    for (size_t i = 0; i < calls.size(); i += 4) {
        EXPECT_EQ(calls[i], "logger made");
        EXPECT_EQ(calls[i + 1], "logger console");
        EXPECT_THAT(calls[i + 2], ::testing::MatchesRegex("logger writes [01] \\[Vorn\\] Vorn[A-Za-z]+\\.(mm|h) .+"));
        EXPECT_THAT(calls[i + 2], Not(HasSubstr("without a line")));
        EXPECT_EQ(calls[i + 3], "logger destroyed");
    }
    EXPECT_EQ(calls[2],
              "logger writes 0 [Vorn] VornLoginFacebook.mm -[VornLoginFacebook login:] [ s1 ] methodID = 111, "
              "login with permissions = email,  extra = ");
}

} // namespace
} // namespace Tarvik::Vorn::Test
