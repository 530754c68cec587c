#include "Plugins.h"

#include "Subject.h"
#include "UIKit/UIApplication+Control.h"
#include "VornApplicationDelegate.h"
#include "VornProtocols.h"
#include "VornRetainPtr.h"
#include "VornText.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <cstdlib>

// The class methods that the core knows, and the friend plugin's own properties.
@protocol VornSoakSubject <NSObject>
+ (id)sharedInstance;
+ (void)purgeSharedInstance;
@property(nonatomic) int methodNameID;
@property(nonatomic, retain) NSString* seqID;
@property(nonatomic) unsigned int observerID;
@end

namespace Tarvik::Vorn::Soak {
namespace {

using SubjectClass = Class<VornSoakSubject>;

SubjectClass sLogin = Nil;
SubjectClass sFriend = Nil;
SubjectClass sReport = Nil;

SubjectClass Find(NSString* name) {
    const Class found = NSClassFromString(name);
    if (found == Nil) {
        std::fprintf(stderr, "the plugin has no class %s\n", CStr(name));
        std::exit(2);
    }
    return static_cast<SubjectClass>(found);
}

// The game's application delegate.
RetainPtr<VornApplicationDelegate*>& TheDelegate() {
    static auto& delegate = *new RetainPtr<VornApplicationDelegate*>;
    return delegate;
}

VornFriendReqInfo RecordOf(const Request& request) {
    VornFriendReqInfo record;
    record.type = request.type;
    record.title = request.title;
    record.desc = request.desc;
    record.link = request.link.text;
    record.imagePath = request.image.path;
    record.mediaPath = request.video.text;
    record.extraJson = request.extra.text;
    return record;
}

template <class Params>
Params ParamsOf(const Request& request) {
    Params params;
    params.methodID = request.methodID;
    params.seqID = request.seqID.text;
    params.channel = "Facebook";
    params.subChannel = request.subChannel;
    return params;
}

void LogIn(const Request& request) {
    auto params = ParamsOf<VornLoginParams>(request);
    params.permissions = request.permissions.text;
    [static_cast<id<VornLoginDelegate>>([sLogin sharedInstance]) login:params];
}

void ReportEvent(const Request& request) {
    NSDictionary* const parameters = request.hasEventParameters ? @{@"level" : @3, @"name" : @"x"} : nil;
    [static_cast<id<VornReportDelegate>>([sReport sharedInstance]) reportEvent:MakeNSString(request.eventName)
                                                                        params:parameters
                                                                    isRealtime:NO
                                                                         seqID:MakeNSString(request.seqID.text)
                                                                         extra:nil];
}

std::string SendFriendRequest(const Request& request) {
    const id<VornFriendDelegate> plugin = [sFriend sharedInstance];
    const VornFriendReqInfo record = RecordOf(request);
    auto params = ParamsOf<VornBaseParams>(request);
    switch (request.kind) {
    case RequestKind::kSendMessage:
        [plugin sendMessage:&record params:&params observerID:request.observerID];
        return {};
    case RequestKind::kShare:
        [plugin share:&record params:&params observerID:request.observerID];
        return {};
    case RequestKind::kAddFriend:
        [plugin addFriend:&record params:&params observerID:request.observerID];
        return {};
    case RequestKind::kQueryFriends:
        [plugin queryFriends:nullptr params:&params];
        return {};
    default: {
        NSString* const seqID = MakeNSString(request.seqID.text);
        const bool isAny = [plugin isBackendSupported:request.methodID type:request.type seqId:seqID] ||
                           [plugin needOpenid2Uid:request.methodID reqInfo:&record seqId:seqID];
        return isAny ? "the friend plugin says YES to a question of the core" : "";
    }
    }
}

std::string SendToApplication(const Request& request) {
    UIApplication* const application = [UIApplication sharedApplication];
    NSURL* const url = [NSURL URLWithString:@"fb4711://authorize"];
    bool answer = false;
    switch (request.kind) {
    case RequestKind::kLaunch:
        answer = [TheDelegate().get() application:application didFinishLaunchingWithOptions:nil] != NO;
        return answer ? "" : "the launch answered NO";
    case RequestKind::kOpenURL:
        answer = [TheDelegate().get() application:application openURL:url options:@{}] != NO;
        break;
    case RequestKind::kOpenURLFromApp:
        answer = [TheDelegate().get() application:application openURL:url sourceApplication:@"x" annotation:@"y"] != NO;
        break;
    default:
        Host::BecomeActive();
        break;
    }
    return answer ? "a URL open answered YES for a game that takes none" : "";
}

} // namespace

void LoadPlugins() {
    Test::LoadSubject();
    sLogin = Find(@"VornLoginFacebook");
    sFriend = Find(@"VornFriendFacebook");
    sReport = Find(@"VornReportFacebook");
}

void StartGame() {
    TheDelegate() = AdoptNS([[VornApplicationDelegate alloc] init]);
}

std::string SendRequest(const Request& request) {
    switch (request.kind) {
    case RequestKind::kLogin:
        LogIn(request);
        return {};
    case RequestKind::kLogout: {
        const auto params = ParamsOf<VornBaseParams>(request);
        [static_cast<id<VornLoginDelegate>>([sLogin sharedInstance]) logout:&params];
        return {};
    }
    case RequestKind::kReportEvent:
        ReportEvent(request);
        return {};
    case RequestKind::kLaunch:
    case RequestKind::kOpenURL:
    case RequestKind::kOpenURLFromApp:
    case RequestKind::kActivate:
        return SendToApplication(request);
    default:
        return SendFriendRequest(request);
    }
}

Parked ParkedByPlugin() {
    const id<VornSoakSubject> plugin = [sFriend sharedInstance];
    return {[plugin methodNameID], CStr([plugin seqID]), [plugin observerID]};
}

void PurgeSingletons() {
    [sLogin purgeSharedInstance];
    [sReport purgeSharedInstance];
}

} // namespace Tarvik::Vorn::Soak
