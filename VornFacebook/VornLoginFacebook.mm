#include "VornLoginFacebook.h"

#include "VornDefine.h"
#include "VornFacebookSDK.h"

#import <FBSDKLoginKit/FBSDKLoginKit.h>
#import <FBSDKLoginKit/FBSDKLoginKit-Swift.h>

#include <cstring>
#include <string_view>

using namespace Tarvik::Vorn;

namespace {

constexpr const char* kChannelName = "Facebook";
constexpr int32_t kChannelID = 4;

constexpr const char* kLoginModeKey = "FACEBOOK_LOGIN_MODE";
constexpr const char* kDefaultLoginMode = "App";
constexpr std::string_view kGameLoginMode = "Game";

constexpr const char* kAccessTokenKey = "access_token";

// The order of characters decides, not the order of version numbers. Kept: the core's login modes are built on it, and
// so every Facebook SDK from 10.0.0 on counts as too old.
bool SupportsGaming(NSString* sdkVersion) {
    return std::strcmp(CStr(sdkVersion), "6.4.0") >= 0;
}

// One entry per comma-separated piece, empty pieces included and blanks untouched; no entry when the text is not UTF-8.
NSMutableArray* PermissionList(const std::string& permissions) {
    NSMutableArray* const list = [NSMutableArray array];
    NSString* const text = MakeNSString(permissions);
    if (text != nil) {
        [list addObjectsFromArray:[text componentsSeparatedByString:@","]];
    }
    return list;
}

void AppendOnce(NSString* permission, NSMutableArray* list) {
    if (![list containsObject:permission]) {
        [list addObject:permission];
    }
}

void UseGamingPermissions(NSMutableArray* list) {
    [list removeObject:@"public_profile"];
    AppendOnce(@"gaming_profile", list);
    AppendOnce(@"gaming_user_picture", list);
}

} // namespace

@implementation VornLoginFacebook

VORN_SINGLETON_FAMILY(VornLoginFacebook)

#pragma mark - Requests from the core

- (void)login:(VornLoginParams)params {
    const std::string loginMode =
        VornSingleton<VornConfigManager>::GetInstance()->Get(kLoginModeKey, kDefaultLoginMode);
    VORN_LOG_DEBUG("[ %s ] methodID = %d, login with permissions = %s,  extra = %s", params.seqID.c_str(),
                   params.methodID, params.permissions.c_str(), params.extraJson.c_str());

    NSMutableArray* const permissions = PermissionList(params.permissions);
    if (params.subChannel == kGameLoginMode || loginMode == kGameLoginMode) {
        if (SupportsGaming([[FBSDKSettings sharedSettings] sdkVersion])) {
            UseGamingPermissions(permissions);
        } else {
            VORN_LOG_ERROR("facebook sdk version is too low to support Gaming, please update your sdk !");
        }
    }

    // Shared by this call and the handler; lives until both are done with it.
    __block const VornLoginParams pending(params);

    const FBSDKLoginManagerLoginResultBlock answer = ^(FBSDKLoginManagerLoginResult* result, NSError* error) {
        InnerLoginRet ret;
        ret.methodNameID = pending.methodID;
        ret.channel = kChannelName;
        ret.channelID = kChannelID;

        if (error != nil) {
            VORN_LOG_ERROR("[ %s ] login facebook error. [error]=%s", pending.seqID.c_str(),
                           CStr([error localizedDescription]));
            ret.retCode = RetCode::kThirdPartyError;
            ret.retMsg = VornUtils::GetRetMsg(RetCode::kThirdPartyError);
            ret.thirdCode = static_cast<int32_t>([error code]);
            ret.thirdMsg = CStr([error localizedDescription]);
            VornInnerObserverHolder<InnerLoginRet>::CommitToTaskQueue(ret, ObserverID::kLogin, pending.seqID);
            return;
        }
        if ([result isCancelled]) {
            VORN_LOG_DEBUG("[ %s ] login facebook cancel", pending.seqID.c_str());
            ret.retCode = RetCode::kCancelled;
            ret.retMsg = VornUtils::GetRetMsg(RetCode::kCancelled);
            VornInnerObserverHolder<InnerLoginRet>::CommitToTaskQueue(ret, ObserverID::kLogin, pending.seqID);
            return;
        }

        // An answer with neither result nor error comes here too: a success without a token.
        InnerLoginPluginRet reply;
        reply.methodNameID = pending.methodID;
        reply.channelID = kChannelID;
        reply.channel = kChannelName;
        VornJsonWriter writer;
        writer.StartJsonConvert();
        writer.convert(kAccessTokenKey, [[[result token] tokenString] UTF8String], kJsonTextFlag);
        writer.EndJsonConvert();
        reply.channelInfo = writer.GetJsonString().toString();
        VornInnerObserverHolder<InnerLoginPluginRet>::CommitToTaskQueue(reply, ObserverID::kLoginPlugin, pending.seqID);
    };

    // The SDK keeps the manager until it has answered.
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logOut]; // Every login starts logged out.
    [manager.get() logInWithPermissions:permissions fromViewController:nil handler:answer];
    VORN_TRACE(params.seqID.c_str(), "{\"method\":\"logInWithReadPermissions\"}").traceLog("FacebookLogin");
}

- (void)logout:(const VornBaseParams*)params {
    VORN_LOG_DEBUG("[ %s ] logout facebook success", params->seqID.c_str());

    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logOut];

    // Kept: the result's methodNameID stays 0; the core knows a logout by its observer.
    const InnerBaseRet ret(RetCode::kSuccess);
    VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(ret, ObserverID::kLogout, params->seqID);
    VORN_TRACE(params->seqID.c_str(), "{\"method\":\"logOut\"}").traceLog("FacebookLogin");
}

@end
