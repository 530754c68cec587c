#include "EntryPoints.h"

#include "requests/FoundationSamples.h"
#include "requests/PlatformPart.h"
#include "support/Samples.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "History.h"
#include "MainQueue+Control.h"
#include "PlatformCalls.h"
#include "PlatformReset.h"
#include "VornApplicationDelegate.h"
#include "VornCodes.h"
#include "VornPlugins.h"
#include "VornText.h"

#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>

#include <cstdio>
#include <cstdlib>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr unsigned kObserver = 31;

struct Plugins {
    id<VornLoginDelegate> login;
    id<VornFriendDelegate> friends;
    id<VornReportDelegate> report;
    VornApplicationDelegate* application;
};

template <class Plugin>
Plugin OrExit(Plugin plugin, const std::string& error) {
    if (plugin == nil) {
        std::fprintf(stderr, "vorn-bench: VORN_SUBJECT is not the plugin: %s\n", error.c_str());
        std::exit(2);
    }
    return plugin;
}

const Plugins& ThePlugins() {
    static const Plugins plugins = [] {
        std::string error;
        Plugins found{};
        found.login = OrExit(FindLoginPlugin("Facebook", error), error);
        found.friends = OrExit(FindFriendPlugin("Facebook", error), error);
        found.report = OrExit(FindReportPlugin("Facebook", error), error);
        found.application = [[VornApplicationDelegate alloc] init];
        return found;
    }();
    return plugins;
}

VornBaseParams MakeParams(int methodID) {
    VornBaseParams params;
    params.methodID = methodID;
    params.seqID = kSeqID;
    params.channel = "Facebook";
    return params;
}

template <int kMethodID>
VornBaseParams& Params() {
    static auto& params = *new VornBaseParams(MakeParams(kMethodID));
    return params;
}

template <int kType>
const VornFriendReqInfo* Request() {
    static const auto& request = *new VornFriendReqInfo(SampleRequest(kType));
    return &request;
}

#pragma mark - Calls as a core makes them

void LogIn() {
    static const VornLoginParams& params = *[] {
        auto* const made = new VornLoginParams;
        static_cast<VornBaseParams&>(*made) = MakeParams(111);
        made->permissions = kPermissions;
        return made;
    }();
    [ThePlugins().login login:params];
}

void LogOut() {
    [ThePlugins().login logout:&Params<117>()];
    Host::DrainMainQueue();
}

void QueryFriends() {
    [ThePlugins().friends queryFriends:nullptr params:&Params<213>()];
    Host::DrainMainQueue();
}

void AddFriend() {
    [ThePlugins().friends addFriend:Request<RequestType::kLink>() params:&Params<215>() observerID:kObserver];
    Host::DrainMainQueue();
}

template <int kType>
void Send() {
    [ThePlugins().friends sendMessage:Request<kType>() params:&Params<MethodID::kSendMessage>() observerID:kObserver];
    Host::DrainMainQueue();
}

template <int kType>
void Share() {
    [ThePlugins().friends share:Request<kType>() params:&Params<MethodID::kShareByPipeline>() observerID:kObserver];
    Host::DrainMainQueue();
}

void AskWhetherBackendCan() {
    [ThePlugins().friends isBackendSupported:MethodID::kShare type:RequestType::kLink seqId:@"e1b2c3d4"];
}

void InitStat() {
    [ThePlugins().report initStat];
}

void ReportEvent() {
    [ThePlugins().report reportEvent:EventName() params:nil isRealtime:NO seqID:@"e1b2c3d4" extra:nil];
}

void ReportEventWithParameters() {
    [ThePlugins().report reportEvent:EventName() params:EventParameters() isRealtime:NO seqID:@"e1b2c3d4" extra:nil];
}

void OpenURL() {
    [ThePlugins().application application:[UIApplication sharedApplication] openURL:OpenedURL() options:@{}];
}

#pragma mark - Worlds

void ForgetPlatform() {
    Host::ResetPlatform();
    Host::SetHistoryKept(false); // What is timed many times must not pile up.
}

void LogInForGaming() {
    ForgetPlatform();
    @autoreleasepool {
        Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[ @"gaming_profile" ]));
        Host::ReplaceCurrentAuthenticationToken(Host::MakeAuthenticationToken(@"id", @"gaming"));
    }
}

template <void (*kCall)()>
void InPool() {
    @autoreleasepool {
        kCall();
    }
}

} // namespace

std::vector<EntryPoint> EntryPoints() {
    ThePlugins();
    const auto forget = &ForgetPlatform;
    return {
        {"login", false, &InPool<LogIn>, &InPool<PlatformPart::LogIn>, forget},
        {"logout", false, &InPool<LogOut>, &InPool<PlatformPart::LogOut>, forget},
        {"query friends", false, &InPool<QueryFriends>, &InPool<PlatformPart::QueryFriends>, forget},
        {"add friend, refused", false, &InPool<AddFriend>, &InPool<PlatformPart::AddFriendRefused>, forget},
        {"add friend, gaming", false, &InPool<AddFriend>, &InPool<PlatformPart::AddFriendInGameMode>, &LogInForGaming},
        {"send a link", false, &InPool<Send<RequestType::kLink>>, &InPool<PlatformPart::SendLink>, forget},
        {"invite", false, &InPool<Send<RequestType::kInvite>>, &InPool<PlatformPart::Invite>, forget},
        {"share a link", false, &InPool<Share<RequestType::kLink>>, &InPool<PlatformPart::ShareLink>, forget},
        {"share a video", false, &InPool<Share<RequestType::kVideo>>, &InPool<PlatformPart::ShareVideo>, forget},
        {"share, refused", false, &InPool<Share<0>>, &InPool<PlatformPart::ShareRefused>, forget},
        {"backend question", false, &InPool<AskWhetherBackendCan>, &InPool<PlatformPart::Nothing>, forget},
        {"URL open", false, &InPool<OpenURL>, &InPool<PlatformPart::OpenURL>, forget},
        {"start of reporting", false, &InPool<InitStat>, &InPool<PlatformPart::Nothing>, forget},
        {"event", true, &InPool<ReportEvent>, &InPool<PlatformPart::ReportEvent>, forget},
        {"event with parameters", true, &InPool<ReportEventWithParameters>,
         &InPool<PlatformPart::ReportEventWithParameters>, forget},
    };
}

void SendInvitation(const VornFriendReqInfo& request) {
    @autoreleasepool {
        [ThePlugins().friends sendMessage:&request params:&Params<MethodID::kSendMessage>() observerID:kObserver];
        Host::DrainMainQueue();
    }
}

size_t ForgetWhatIsOpen() {
    const size_t open = Host::OpenShareDialogCount() + Host::OpenGameRequestCount() + Host::OpenFriendFinderCount() +
                        [FBSDKLoginManager pendingLoginCount];
    Host::ResetShareDialogs();
    Host::ResetGameRequests();
    Host::ResetFriendFinders();
    [FBSDKLoginManager reset];
    return open;
}

std::vector<std::string> TakePlatformCalls() {
    std::vector<std::string> calls;
    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        calls.push_back(call.className + " " + call.selector);
    }
    Host::PlatformCalls::Clear();
    calls.push_back(std::to_string(ForgetWhatIsOpen()) + " open");
    return calls;
}

} // namespace Tarvik::Vorn::Bench
