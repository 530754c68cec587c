#include "PluginSession.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FuzzTarget.h"
#include "MainQueue+Control.h"
#include "PlatformReset.h"
#include "Results.h"
#include "VornConfig.h"
#include "VornImageLoader.h"
#include "VornPlugins.h"

namespace Tarvik::Vorn::Fuzz {
namespace {

// Borrowed from their classes, which own them.
struct Plugins {
    id<VornLoginDelegate> login = nil;
    id<VornFriendDelegate> friends = nil;
    id<VornReportDelegate> report = nil;
};

Plugins Load() {
    std::string problem;
    Require(LoadPluginLibrary(VORN_PLUGIN, problem), "the plugin can be loaded", problem);
    const Plugins plugins{FindLoginPlugin("Facebook", problem), FindFriendPlugin("Facebook", problem),
                          FindReportPlugin("Facebook", problem)};
    Require(plugins.login != nil && plugins.friends != nil && plugins.report != nil, "all plugins are found", problem);
    return plugins;
}

const Plugins& ThePlugins() {
    static const Plugins plugins = Load();
    return plugins;
}

void ResetEverything() {
    Host::DiscardMainQueue();
    Host::ResetPlatform();
    ResetConfig();
    ForgetResults();
    // The friend plugin lives as long as the process and remembers its last request.
    id const friends = ThePlugins().friends;
    [friends setValue:@(-1) forKey:@"methodNameID"];
    [friends setValue:@"" forKey:@"seqID"];
    [friends setValue:@(0) forKey:@"observerID"];
}

} // namespace

PluginSession::PluginSession() : mPool([[NSAutoreleasePool alloc] init]) {
    ResetEverything();
    ObserveResults();
    mLog = std::make_unique<Test::LogRecorder>();
}

PluginSession::~PluginSession() {
    mLog.reset();
    ResetEverything();
    [mPool drain];
}

id<VornLoginDelegate> PluginSession::login() const {
    return ThePlugins().login;
}

id<VornFriendDelegate> PluginSession::friends() const {
    return ThePlugins().friends;
}

id<VornReportDelegate> PluginSession::report() const {
    return ThePlugins().report;
}

void PluginSession::Settle() {
    WaitForImageLoads();
    while (Host::MainQueueDepth() > 0) {
        Host::DrainMainQueueUntilEmpty();
        WaitForImageLoads(); // What has run may have asked for another image.
    }
}

void PluginSession::LogInWithDomain(NSString* graphDomain) {
    Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[ @"public_profile" ]));
    Host::ReplaceCurrentAuthenticationToken(Host::MakeAuthenticationToken(@"id token", graphDomain));
}

std::string MediaPath(const std::string& name) {
    return std::string(VORN_MEDIA) + "/" + name;
}

} // namespace Tarvik::Vorn::Fuzz
