// The fixture of every test of the friend plugin. The plugin is loaded and found by its class name; its one instance lives
// for the process, so the fixture takes its properties back to what they are before the first request.
#pragma once

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FriendPlugin.h"
#include "HostError.h"
#include "PlatformCalls.h"
#include "PluginTest.h"
#include "VornConfig.h"

#include "VornPlugins.h"

#import <Foundation/Foundation.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Host {

inline void PrintTo(const PlatformCall& call, std::ostream* out) {
    *out << call.className << " " << call.selector << " (" << call.arguments << ")"
         << (call.onMainThread ? "" : " on another thread");
}

} // namespace Tarvik::Vorn::Host

namespace Tarvik::Vorn::Test {

inline constexpr const char* kFriendFile = "VornFriendFacebook.mm";

// The parameters of a call and the observer that comes with it.
struct Call {
    int methodID = 211;
    std::string seqID = "s1";
    unsigned observerID = 31;
    std::string subChannel;
};

// A request by its type; tests set the other members.
inline VornFriendReqInfo RequestOf(int type) {
    VornFriendReqInfo request;
    request.type = type;
    return request;
}

class FriendTest : public PluginTest {
protected:
    FriendTest() {
        std::string problem;
        mPlugin = static_cast<FriendPlugin>(FindFriendPlugin("Facebook", problem));
        EXPECT_NE(mPlugin, nil) << problem;
        [mPlugin setMethodNameID:-1];
        [mPlugin setSeqID:@""];
        [mPlugin setObserverID:0];
        ResultRecorder::Observe<InnerBaseRet, 31>();
        ResultRecorder::Observe<InnerBaseRet, 32>();
        ResultRecorder::Observe<InnerFriendRet, 202>();
        Log().Clear();
    }

    FriendPlugin Plugin() const { return mPlugin; }

    static VornBaseParams ParamsOf(const Call& call) {
        VornBaseParams params;
        params.methodID = call.methodID;
        params.seqID = call.seqID;
        params.channel = "not read";
        params.subChannel = call.subChannel;
        params.extraJson = "not read";
        return params;
    }

    void SendMessage(const VornFriendReqInfo& request, const Call& call = {}) const {
        VornBaseParams params = ParamsOf(call);
        [mPlugin sendMessage:&request params:&params observerID:call.observerID];
    }

    void Share(const VornFriendReqInfo& request, const Call& call = {}) const {
        VornBaseParams params = ParamsOf(call);
        [mPlugin share:&request params:&params observerID:call.observerID];
    }

    void AddFriend(const Call& call = {}) const {
        VornBaseParams params = ParamsOf(call);
        [mPlugin addFriend:nullptr params:&params observerID:call.observerID];
    }

    void QueryFriends(const Call& call = {}) const {
        VornBaseParams params = ParamsOf(call);
        [mPlugin queryFriends:nullptr params:&params];
    }

    // Leaves these IDs in the plugin, as a request that is refused does, and forgets what that request caused.
    void Park(const Call& call) {
        Share(RequestOf(0), call);
        DrainMainQueue();
        ResultRecorder::ForgetDeliveries();
        Log().Clear();
        Host::PlatformCalls::Clear();
    }

    // The current login, as Facebook's SDK knows it.
    static void LogInWithDomain(NSString* graphDomain) {
        Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[ @"public_profile" ]));
        Host::ReplaceCurrentAuthenticationToken(
            graphDomain == nil ? nil : Host::MakeAuthenticationToken(@"id token", graphDomain));
    }

    static void LogInForGaming() { LogInWithDomain(@"gaming"); }

    static void LogInWithFacebook() { LogInWithDomain(@"facebook"); }

    static std::vector<Delivery> Delivered() {
        DrainMainQueue();
        return ResultRecorder::Deliveries();
    }

    // What observer `observerID` gets as a result for a request; `ret` without its method ID.
    static Delivery Result(const Call& call, InnerBaseRet ret) {
        ret.methodNameID = call.methodID;
        return {call.observerID, call.seqID, RecordText(ret), {}};
    }

    static InnerBaseRet Coded(int code) { return InnerBaseRet(code); }

    static InnerBaseRet Refused(int code, const char* why) { return {code, code, why}; }

    std::vector<LogLine> Lines() { return Log().LinesOf(kFriendFile); }

private:
    FriendPlugin mPlugin; // Lives for the process.
};

} // namespace Tarvik::Vorn::Test
