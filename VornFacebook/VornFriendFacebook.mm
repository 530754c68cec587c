#include "VornFriendFacebook.h"

#include "VornDefine.h"

#import <AVFoundation/AVFoundation.h>
#import <Photos/Photos.h>
#import <dispatch/dispatch.h>

#include <memory>
#include <string>

using namespace Tarvik::Vorn;

namespace {

constexpr const char* kLoginModeKey = "FACEBOOK_LOGIN_MODE";
constexpr const char* kDefaultLoginMode = "App";

// Takes the content, or nil and why there is none. Called on any thread.
using ContentCompletion = void (^)(id<FBSDKSharingContent> content, InnerBaseRet built);

using ContentBlock = void (^)(id<FBSDKSharingContent> content);
using UploadCompletion = void (^)(BOOL success, NSDictionary<NSString*, id>* result, NSError* error);
using UploadProgress = void (^)(int64_t bytesSent, int64_t totalBytesSent, int64_t totalBytesExpectedToSend);

// What the later stages of a share need. The caller's record may be gone by then.
struct ShareJob {
    ShareJob(const VornFriendReqInfo& requested, int method, const std::string& sequence, int observer)
        : reqInfo(requested), methodID(method), seqID(sequence), observerID(observer) {}

    VornFriendReqInfo reqInfo;
    int methodID;
    std::string seqID;
    int observerID;
};

constexpr int kNoObserver = 0; // Of a job that is answered through a ContentCompletion.

std::shared_ptr<const ShareJob> MakeShareJob(const VornFriendReqInfo& reqInfo, int methodID, const std::string& seqID,
                                             int observerID) {
    return std::make_shared<const ShareJob>(reqInfo, methodID, seqID, observerID);
}

#pragma mark - Results

// Of the plugin's own: the third code repeats the code.
InnerBaseRet Refusal(int code, const char* why) {
    return {code, code, why};
}

// Of a call into the SDK. Without an error the third code is 0 and the text the fallback.
InnerBaseRet SdkFailure(NSError* error, const char* fallback) {
    if (error == nil) {
        return {RetCode::kThirdPartyError, 0, fallback};
    }
    return {RetCode::kThirdPartyError, static_cast<int32_t>([error code]), CStr([error localizedDescription])};
}

void Commit(const InnerBaseRet& ret, const ShareJob& job) {
    VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(ret, static_cast<unsigned int>(job.observerID), job.seqID);
}

// Commits `ret` as the outcome of the job's method.
void Answer(const ShareJob& job, InnerBaseRet ret) {
    ret.methodNameID = job.methodID;
    Commit(ret, job);
}

void Refuse(const ShareJob& job, int code, const char* why) {
    Answer(job, Refusal(code, why));
}

#pragma mark - Results of making a content

void Succeed(ContentCompletion complete, id<FBSDKSharingContent> content) {
    complete(content, InnerBaseRet(RetCode::kSuccess));
}

// Kept: without the method ID. So is every failure to make a video's content.
void Fail(ContentCompletion complete, int code) {
    complete(nil, InnerBaseRet(code));
}

void Fail(ContentCompletion complete, int methodID, InnerBaseRet ret) {
    ret.methodNameID = methodID;
    complete(nil, ret);
}

#pragma mark - Requests

// The order is behaviour: whoever watches the properties sees it.
void Park(VornFriendFacebook* plugin, const VornBaseParams& params, unsigned int observerID) {
    [plugin setObserverID:observerID];
    [plugin setSeqID:MakeNSString(params.seqID)];
    [plugin setMethodNameID:params.methodID];
}

bool IsGameLogin(const VornBaseParams& params) {
    if ([@"Game" isEqualToString:MakeNSString(params.subChannel)]) {
        return true;
    }
    const std::string configured =
        VornSingleton<VornConfigManager>::GetInstance()->Get(kLoginModeKey, kDefaultLoginMode);
    return [@"Game" isEqualToString:MakeNSString(configured)];
}

std::string JsonText(const VornFriendReqInfo& reqInfo) {
    return VornJsonManager::ToJson(reqInfo, "");
}

#pragma mark - Values of extraJson

// A user ID as Facebook takes it; nil when `value` is neither a text nor a number.
NSString* UserIDText(id value) {
    if ([value isKindOfClass:[NSString class]]) {
        return value;
    }
    return [value isKindOfClass:[NSNumber class]] ? [value stringValue] : nil;
}

// The user IDs in their order; nil when one of the values is none.
NSArray* UserIDTexts(NSArray* values) {
    NSMutableArray* const userIDs = [NSMutableArray arrayWithCapacity:[values count]];
    for (id value in values) {
        NSString* const userID = UserIDText(value);
        if (userID == nil) {
            return nil;
        }
        [userIDs addObject:userID];
    }
    return [[userIDs copy] autorelease];
}

// Whether `value` says no: a number or a text that stands for false. Nothing else does, nor does a missing value.
bool IsFalse(id value) {
    return ([value isKindOfClass:[NSNumber class]] || [value isKindOfClass:[NSString class]]) && ![value boolValue];
}

#pragma mark - URLs

// Nil when the text is no URL.
NSURL* MakeURL(NSString* text) {
    return text == nil ? nil : [NSURL URLWithString:text];
}

NSURL* MakeURL(const String& text) {
    return MakeURL(MakeNSString(text.c_str()));
}

// Nil when the text is not UTF-8.
NSURL* MakeFileURL(const String& path) {
    NSString* const text = MakeNSString(path.c_str());
    return text == nil ? nil : [NSURL fileURLWithPath:text];
}

// Under which URL the share dialog finds a video in the photo library. Photos counts views and versions behind the first
// slash of an identifier; the URL names the asset alone. Nil when there is no asset.
NSString* AssetURLText(NSURL* file, NSString* localIdentifier) {
    if (localIdentifier == nil) {
        return nil;
    }
    NSString* const extension = [file pathExtension];
    NSString* const assetID =
        [localIdentifier stringByReplacingOccurrencesOfString:@"/.*"
                                                   withString:@""
                                                      options:NSRegularExpressionSearch
                                                        range:NSMakeRange(0, [localIdentifier length])];
    return [NSString stringWithFormat:@"assets-library://asset/asset.%@?id=%@&ext=%@", extension, assetID, extension];
}

#pragma mark - Facebook's objects

RetainPtr<FBSDKShareLinkContent*> MakeLinkContent(NSURL* link) {
    RetainPtr<FBSDKShareLinkContent*> content = AdoptNS([[FBSDKShareLinkContent alloc] init]);
    [content.get() setContentURL:link];
    return content;
}

RetainPtr<FBSDKSharePhotoContent*> MakePhotoContent(UIImage* image, NSURL* link) {
    RetainPtr<FBSDKSharePhotoContent*> content = AdoptNS([[FBSDKSharePhotoContent alloc] init]);
    [content.get() setContentURL:link];
    const RetainPtr<FBSDKSharePhoto*> photo = AdoptNS([[FBSDKSharePhoto alloc] initWithImage:image
                                                                             isUserGenerated:YES]);
    [content.get() setPhotos:@[ photo.get() ]];
    return content;
}

// REQUIRES: `video` is not nil; the SDK ends the process otherwise.
RetainPtr<FBSDKShareVideoContent*> MakeVideoContent(NSURL* video) {
    const RetainPtr<FBSDKShareVideo*> shareVideo = AdoptNS([[FBSDKShareVideo alloc] initWithVideoURL:video
                                                                                        previewPhoto:nil]);
    RetainPtr<FBSDKShareVideoContent*> content = AdoptNS([[FBSDKShareVideoContent alloc] init]);
    [content.get() setVideo:shareVideo.get()];
    return content;
}

// The Info.plist must list the scheme, or the system says no whatever is installed.
bool IsFacebookAppInstalled() {
    return [[UIApplication sharedApplication] canOpenURL:[NSURL URLWithString:@"fbauth2://"]];
}

// A bar across the top of `parent`, in front of everything else there. Without a parent it has no width.
RetainPtr<UIProgressView*> MakeUploadBar(UIView* parent) {
    RetainPtr<UIProgressView*> bar = AdoptNS([[UIProgressView alloc] initWithProgressViewStyle:UIProgressViewStyleBar]);
    [bar.get() setTrackTintColor:[UIColor colorWithRed:0.94 green:0.94 blue:0.94 alpha:1.0]];
    [bar.get() setProgressTintColor:[UIColor colorWithRed:0.68 green:0.85 blue:0.95 alpha:1.0]];
    const CGFloat width = parent == nil ? 0 : [parent frame].size.width;
    [bar.get() setFrame:CGRectMake(0, 0, width, 20)];
    [bar.get() setHidden:NO];
    [parent addSubview:bar.get()];
    [parent bringSubviewToFront:bar.get()];
    return bar;
}

void TakeAway(UIView* bar) {
    [bar setHidden:YES];
    [bar removeFromSuperview];
}

} // namespace

// The private methods in the order in which they stand below.
@interface VornFriendFacebook ()

- (instancetype)initSingleton;

- (BOOL)isInGameMode;
- (void)handleInnerCallbacks:(InnerBaseRet*)ret;
- (void)handleInnerCallbacks:(InnerBaseRet*)ret params:(const VornBaseParams*)params;

- (void)invite:(const VornFriendReqInfo*)reqInfo params:(const VornBaseParams*)params;
- (BOOL)isBatchInvite:(NSString*)extraJson seqID:(std::string)seqID;
- (NSArray*)getInviteUserList:(NSString*)extraJson seqID:(std::string)seqID;
- (void)setShareTaggablePeople:(id<FBSDKSharingContent>)content
                       reqInfo:(const VornFriendReqInfo*)reqInfo
                         seqID:(std::string)seqID;

- (void)sendOrShareLinkOrIMG:(const VornFriendReqInfo&)reqInfo
                    methodID:(int)methodID
                       seqID:(std::string)seqID
                  observerID:(int)observerID;
- (void)createFacebookLinkOrImageContent:(const VornFriendReqInfo&)reqInfo
                                methodID:(int)methodID
                                   seqID:(std::string)seqID
                                complete:(ContentCompletion)complete;
- (void)saveVideoAndShare:(const VornFriendReqInfo&)reqInfo
                 methodID:(int)methodID
                    seqID:(std::string)seqID
                 complete:(ContentCompletion)complete;

@end

namespace {

#pragma mark - Answers to the request in flight

void Answer(VornFriendFacebook* plugin, int code) {
    InnerBaseRet ret(code);
    [plugin handleInnerCallbacks:&ret];
}

void Answer(VornFriendFacebook* plugin, int code, const VornBaseParams& params) {
    InnerBaseRet ret(code);
    [plugin handleInnerCallbacks:&ret params:&params];
}

void Refuse(VornFriendFacebook* plugin, int code, const char* why, const VornBaseParams& params) {
    InnerBaseRet ret = Refusal(code, why);
    [plugin handleInnerCallbacks:&ret params:&params];
}

#pragma mark - Parts of a content

// Only a share tags people.
void TagPeople(VornFriendFacebook* plugin, id<FBSDKSharingContent> content, const VornFriendReqInfo& reqInfo,
               int methodID, const std::string& seqID) {
    if (methodID == MethodID::kShare) {
        [plugin setShareTaggablePeople:content reqInfo:&reqInfo seqID:seqID];
    }
}

} // namespace

@implementation VornFriendFacebook

@synthesize methodNameID = _methodNameID;
@synthesize seqID = _seqID;
@synthesize observerID = _observerID;

#pragma mark - Lifetime

+ (instancetype)sharedInstance {
    static VornFriendFacebook* _instance = nil;
    static dispatch_once_t onceToken;
    dispatch_once(&onceToken, ^{
        _instance = [[super allocWithZone:nullptr] initSingleton];
    });
    return _instance;
}

+ (instancetype)allocWithZone:(NSZone*)zone {
    return [[VornFriendFacebook sharedInstance] retain];
}

- (id)copyWithZone:(NSZone*)zone {
    return [[VornFriendFacebook sharedInstance] retain];
}

- (instancetype)initSingleton {
    self = [super init];
    if (self != nil) {
        _methodNameID = -1;
        _seqID = @"";
    }
    return self;
}

#pragma mark - Requests from the core

- (void)sendMessage:(const VornFriendReqInfo*)reqInfo
             params:(VornBaseParams*)params
         observerID:(unsigned int)observerID {
    VORN_LOG_DEBUG("[ %s ] reqInfo : %s, observerID : %d", params->seqID.c_str(), JsonText(*reqInfo).c_str(),
                   static_cast<int>(observerID));
    Park(self, *params, observerID);
    switch (reqInfo->type) {
    case RequestType::kLink:
        [self sendOrShareLinkOrIMG:*reqInfo
                          methodID:params->methodID
                             seqID:params->seqID
                        observerID:static_cast<int>(observerID)];
        return;
    case RequestType::kInvite:
        [self invite:reqInfo params:params];
        return;
    default:
        VORN_LOG_ERROR("[ %s ] sendMessage type is error!", params->seqID.c_str());
        Refuse(self, RetCode::kNotSupported, "not support the sendMessage type", *params);
        return;
    }
}

- (void)share:(const VornFriendReqInfo*)reqInfo params:(VornBaseParams*)params observerID:(unsigned int)observerID {
    VORN_LOG_DEBUG("[ %s ] reqInfo : %s, observerID : %d", params->seqID.c_str(), JsonText(*reqInfo).c_str(),
                   static_cast<int>(observerID));
    Park(self, *params, observerID);
    switch (reqInfo->type) {
    case RequestType::kLink:
    case RequestType::kImage:
    case RequestType::kVideo:
        [self sendOrShareLinkOrIMG:*reqInfo
                          methodID:params->methodID
                             seqID:params->seqID
                        observerID:static_cast<int>(observerID)];
        return;
    default: // An invitation is a message, not a share.
        VORN_LOG_ERROR("[ %s ] share type is error!", params->seqID.c_str());
        Refuse(self, RetCode::kNotSupported, "not support the share type", *params);
        return;
    }
}

- (void)addFriend:(const VornFriendReqInfo*)reqInfo params:(VornBaseParams*)params observerID:(unsigned int)observerID {
    if ([self isInGameMode]) {
        // Kept: the finder's outcome goes out under the IDs that the last sendMessage: or share: left, to this call's
        // observer. Adding friends parks nothing.
        void (^const answer)(BOOL, NSError*) = ^(BOOL success, NSError* error) {
            if (success) { // Whatever the error says.
                VORN_LOG_DEBUG("facebook game player finder successed");
                [self setObserverID:observerID];
                Answer(self, RetCode::kSuccess);
                return;
            }
            if (error == nil) {
                VORN_LOG_DEBUG("facebook game player finder cancel");
                [self setObserverID:observerID];
                Answer(self, RetCode::kCancelled);
                return;
            }
            VORN_LOG_DEBUG("facebook game player finder error: %s", CStr([error localizedDescription]));
            [self setObserverID:observerID];
            InnerBaseRet ret = SdkFailure(error, "");
            [self handleInnerCallbacks:&ret];
        };
        [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:answer];
        return;
    }
    if (IsGameLogin(*params)) {
        [self setObserverID:observerID];
        Answer(self, RetCode::kNotInGamingMode, *params);
        return;
    }
    VORN_LOG_DEBUG("[ %s ] no support, observerID : %d", params->seqID.c_str(), static_cast<int>(observerID));
    [self setObserverID:observerID];
    Answer(self, RetCode::kNotSupported, *params);
}

- (void)queryFriends:(const void*)request params:(VornBaseParams*)params {
    VORN_LOG_DEBUG("[ %s ] no support", params->seqID.c_str());
    InnerFriendRet ret(RetCode::kNotSupported);
    ret.methodNameID = params->methodID;
    VornInnerObserverHolder<InnerFriendRet>::CommitToTaskQueue(ret, ObserverID::kQueryFriends, params->seqID);
}

- (BOOL)isBackendSupported:(int)methodID type:(int)type seqId:(NSString*)seqID {
    VORN_LOG_DEBUG("[ %s ] methodID : %d, type : %d", CStr(seqID), methodID, type);
    return NO;
}

- (BOOL)needOpenid2Uid:(int)methodID reqInfo:(const VornFriendReqInfo*)reqInfo seqId:(NSString*)seqID {
    return NO;
}

#pragma mark - Game mode and the ways of a result

- (BOOL)isInGameMode {
    if ([FBSDKAccessToken currentAccessToken] == nil) {
        VORN_LOG_ERROR("facebook accessToken is nil, please login");
        return NO;
    }
    return [[[FBSDKAuthenticationToken currentAuthenticationToken] graphDomain] isEqualToString:@"gaming"];
}

- (void)handleInnerCallbacks:(InnerBaseRet*)ret {
    ret->methodNameID = [self methodNameID];
    VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(*ret, [self observerID], CStr([self seqID]));
}

- (void)handleInnerCallbacks:(InnerBaseRet*)ret params:(const VornBaseParams*)params {
    ret->methodNameID = params->methodID;
    VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(*ret, [self observerID], params -> seqID);
}

#pragma mark - Outcomes of share and message dialogs

- (void)sharer:(id<FBSDKSharing>)sharer didCompleteWithResults:(NSDictionary<NSString*, id>*)results {
    VORN_LOG_DEBUG("[ %s ]  results : %s", CStr([self seqID]), CStr([results description]));
    Answer(self, RetCode::kSuccess);
}

- (void)sharer:(id<FBSDKSharing>)sharer didFailWithError:(NSError*)error {
    VORN_LOG_DEBUG("[ %s ]error : %s", CStr([self seqID]), CStr([error description]));
    InnerBaseRet ret(RetCode::kThirdPartyError);
    // Kept: Facebook's own code and text take the place of the plugin's. A failed game request keeps 9999 and has them
    // beside it; games tell the two apart by that.
    ret.retCode = static_cast<int32_t>([error code]);
    ret.retMsg = CStr([error description]);
    [self handleInnerCallbacks:&ret];
}

- (void)sharerDidCancel:(id<FBSDKSharing>)sharer {
    VORN_LOG_DEBUG("[ %s ] cancel", CStr([self seqID]));
    Answer(self, RetCode::kCancelled);
}

#pragma mark - Outcomes of game requests

- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog
    didCompleteWithResults:(NSDictionary<NSString*, id>*)results {
    VORN_LOG_DEBUG("facebook gameRequestDialog success : %s", CStr([results description]));
    InnerBaseRet ret(RetCode::kSuccess);
    id const recipients = [results objectForKey:@"to"];
    if (recipients != nil) {
        ret.extraJson = CStr([VornUtilsIOS jsonStringFromDict:@{@"RequestRecipients" : recipients} prettyPrint:NO]);
    }
    [self handleInnerCallbacks:&ret];
}

- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog didFailWithError:(NSError*)error {
    VORN_LOG_DEBUG("facebook gameRequestDialog error : %s", CStr([error description]));
    InnerBaseRet ret(RetCode::kThirdPartyError);
    ret.thirdCode = static_cast<int32_t>([error code]);
    ret.thirdMsg = CStr([error description]);
    [self handleInnerCallbacks:&ret];
}

- (void)gameRequestDialogDidCancel:(FBSDKGameRequestDialog*)gameRequestDialog {
    VORN_LOG_DEBUG("facebook gameRequestDialog cancel");
    Answer(self, RetCode::kCancelled);
}

#pragma mark - Invitations

- (void)invite:(const VornFriendReqInfo*)reqInfo params:(const VornBaseParams*)params {
    if (reqInfo->title.empty() || reqInfo->desc.empty()) {
        VORN_LOG_ERROR("[ %s ] title or desc in reqInfo is empty", params->seqID.c_str());
        Refuse(self, RetCode::kInvalidArgument, "title or desc in reqInfo is empty", *params);
        return;
    }
    const RetainPtr<FBSDKGameRequestContent*> content = AdoptNS([[FBSDKGameRequestContent alloc] init]);
    [content.get() setMessage:MakeNSString(reqInfo->desc.c_str())];
    [content.get() setTitle:MakeNSString(reqInfo->title.c_str())];
    NSString* const extraJson = MakeNSString(reqInfo->extraJson.c_str());
    if ([self isBatchInvite:extraJson seqID:params->seqID]) {
        NSArray* const userList = [self getInviteUserList:extraJson seqID:params->seqID];
        if ([userList count] == 0) {
            VORN_LOG_ERROR("[ %s ] user list is not a array or is empty", params->seqID.c_str());
            Refuse(self, RetCode::kInvalidArgument, "user list is not a array or is empty", *params);
            return;
        }
        [content.get() setRecipients:userList];
    } else {
        [content.get() setFilters:FBSDKGameRequestFilterNone]; // The player picks.
    }
    [FBSDKGameRequestDialog showWithContent:content.get() delegate:self];
    VORN_LOG_DEBUG("[ %s ] Call Facebook API", params->seqID.c_str());
    VORN_TRACE(params->seqID.c_str(), "{\"method\":\"showWithContent\"}").traceLog("FacebookFriend");
}

- (BOOL)isBatchInvite:(NSString*)extraJson seqID:(std::string)seqID {
    VORN_LOG_DEBUG("[ %s ] extendJson : %s", seqID.c_str(), CStr(extraJson)); // Kept: log tools know "extendJson".
    if ([extraJson length] == 0) {
        return NO;
    }
    id const inviteType = [[VornUtilsIOS dictFromJsonString:extraJson] objectForKey:@"inviteType"];
    return [inviteType isKindOfClass:[NSString class]] && [inviteType isEqualToString:@"batch"];
}

- (NSArray*)getInviteUserList:(NSString*)extraJson seqID:(std::string)seqID {
    VORN_LOG_DEBUG("[ %s ] extraJson : %s", seqID.c_str(), CStr(extraJson));
    NSArray* const userList = [[VornUtilsIOS dictFromJsonString:extraJson] objectForKey:@"userList"];
    if (![userList isKindOfClass:[NSArray class]]) {
        return nil;
    }
    NSArray* const userIDs = UserIDTexts(userList);
    if (userIDs == nil) {
        VORN_LOG_ERROR("[ %s ] %s in extraJson is not number or string", seqID.c_str(), "userList");
    }
    return userIDs;
}

#pragma mark - Tagged people

- (void)setShareTaggablePeople:(id<FBSDKSharingContent>)content
                       reqInfo:(const VornFriendReqInfo*)reqInfo
                         seqID:(std::string)seqID {
    NSDictionary* const extra = [VornUtilsIOS dictFromJsonString:MakeNSString(reqInfo->extraJson.c_str())];
    NSArray* const friends = [extra objectForKey:@"friends"];
    if (friends == nil) {
        VORN_LOG_DEBUG("[ %s ] friends in extraJson is null, not set taggable people", seqID.c_str());
        return;
    }
    if (![friends isKindOfClass:[NSArray class]]) {
        VORN_LOG_ERROR("[ %s ] friends in extraJson is not array", seqID.c_str());
        return;
    }
    NSArray* const userIDs = UserIDTexts(friends);
    if (userIDs == nil) {
        VORN_LOG_ERROR("[ %s ] friends in extraJson is not number or string", seqID.c_str());
        return;
    }
    [content setPeopleIDs:userIDs];
}

#pragma mark - Send and share

// Long, because every line that it logs carries its name: the blocks are its steps, from the last to the first.
- (void)sendOrShareLinkOrIMG:(const VornFriendReqInfo&)reqInfo
                    methodID:(int)methodID
                       seqID:(std::string)seqID
                  observerID:(int)observerID {
    VORN_LOG_DEBUG("[ %s ] reqInfo : %s, methodID : %d, observerID: %d", seqID.c_str(), JsonText(reqInfo).c_str(),
                   methodID, observerID);
    const auto job = MakeShareJob(reqInfo, methodID, seqID, observerID);

    // In gaming mode. The dialog's delegate is not asked; the upload's completion answers.
    const auto uploadImage = ^(FBSDKSharePhotoContent* content) {
        // Asked for before the configuration is allocated, which would be lost if that raised.
        UIImage* const image = [[[content photos] firstObject] image];
        const RetainPtr<FBSDKGamingImageUploaderConfiguration*> configuration = AdoptNS(
            [[FBSDKGamingImageUploaderConfiguration alloc] initWithImage:image
                                                                 caption:MakeNSString(job->reqInfo.title.c_str())
                                                 shouldLaunchMediaDialog:YES]);
        const UploadCompletion answer = ^(BOOL success, NSDictionary<NSString*, id>* /*result*/, NSError* error) {
            if (success && error == nil) {
                VORN_LOG_DEBUG("[ %s ] load image successed: %d", job->seqID.c_str(), job->methodID);
                Answer(*job, InnerBaseRet(RetCode::kSuccess, 0, "load image success"));
                return;
            }
            // Kept: a failed image is progress to the log, a failed video an error.
            VORN_LOG_DEBUG("[ %s ] load image error: %d", job->seqID.c_str(), job->methodID);
            Answer(*job, SdkFailure(error, "load image error"));
        };
        [FBSDKGamingImageUploader uploadImageWithConfiguration:configuration.get() andResultCompletion:answer];
    };

    const auto uploadVideo = ^(FBSDKShareVideoContent* content) {
        UIView* const rootView = [[VornUtilsIOS getRootViewController] view];
        const RetainPtr<UIProgressView*> bar = MakeUploadBar(rootView);
        NSURL* const video = [[content video] videoURL]; // Before the configuration is allocated, as above.
        const RetainPtr<FBSDKGamingVideoUploaderConfiguration*> configuration = AdoptNS(
            [[FBSDKGamingVideoUploaderConfiguration alloc] initWithVideoURL:video
                                                                    caption:MakeNSString(job->reqInfo.title.c_str())]);
        // Kept: the result goes out before the bar goes away.
        const UploadCompletion answer = ^(BOOL success, NSDictionary<NSString*, id>* /*result*/, NSError* error) {
            if (success && error == nil) {
                VORN_LOG_DEBUG("[ %s ] load video successed: %d", job->seqID.c_str(), job->methodID);
                Answer(*job, InnerBaseRet(RetCode::kSuccess, 0, "load image success")); // Kept: the text of the image.
                TakeAway(bar.get());
                return;
            }
            VORN_LOG_ERROR("[ %s ] load video error: %d", job->seqID.c_str(), job->methodID);
            Answer(*job, SdkFailure(error, "load video error"));
            TakeAway(bar.get());
        };
        const UploadProgress show = ^(int64_t /*bytesSent*/, int64_t totalBytesSent, int64_t totalBytesExpectedToSend) {
            // Kept: not finite when nothing is expected; the bar takes it as it is.
            const float progress = static_cast<float>(totalBytesSent) / static_cast<float>(totalBytesExpectedToSend);
            dispatch_async(dispatch_get_main_queue(), ^{
                [bar.get() setProgress:progress];
            });
        };
        [FBSDKGamingVideoUploader uploadVideoWithConfiguration:configuration.get()
                                                    completion:answer
                                            andProgressHandler:show];
    };

    const ContentBlock share = ^(id<FBSDKSharingContent> content) {
        const RetainPtr<FBSDKShareDialog*> dialog = AdoptNS([[FBSDKShareDialog alloc] initWithViewController:nil
                                                                                                     content:content
                                                                                                    delegate:self]);
        switch (job->reqInfo.type) {
        case RequestType::kVideo:
            if ([self isInGameMode]) {
                uploadVideo(static_cast<FBSDKShareVideoContent*>(content));
                return;
            }
            if (!IsFacebookAppInstalled()) {
                VORN_LOG_ERROR("[ %s ] canOpenURL return NO, Facebook share vedio need app installed",
                               job->seqID.c_str()); // Kept: "vedio"; log tools know it so.
                Refuse(*job, RetCode::kAppNotInstalled, "Facebook share video need app installed");
                return;
            }
            [dialog.get() setMode:FBSDKShareDialogModeNative];
            break;
        case RequestType::kImage:
            if ([self isInGameMode]) {
                uploadImage(static_cast<FBSDKSharePhotoContent*>(content));
                return;
            }
            if (!IsFacebookAppInstalled()) {
                // Kept: progress to the log, unlike with a video.
                VORN_LOG_DEBUG("[ %s ] canOpenURL return NO, Facebook share image need app installed",
                               job->seqID.c_str());
                Refuse(*job, RetCode::kAppNotInstalled, "Facebook share image need app installed");
                return;
            }
            [dialog.get() setMode:FBSDKShareDialogModeNative];
            break;
        case RequestType::kLink: // Needs no app.
            [dialog.get() setMode:IsFacebookAppInstalled() ? FBSDKShareDialogModeNative : FBSDKShareDialogModeBrowser];
            break;
        default: // The builder makes no content for another type.
            VORN_LOG_ERROR("[ %s ] sendOrShareLinkAndIMG not support type: %d", job->seqID.c_str(), job->reqInfo.type);
            Answer(*job, InnerBaseRet(RetCode::kNotSupported));
            return;
        }
        [dialog.get() show];
        VORN_LOG_DEBUG("[ %s ] Call Facebook API", job->seqID.c_str());
        VORN_TRACE(job->seqID.c_str(), "{\"method\":\"FBSDKShareDialog\"}").traceLog("FacebookFriend");
    };

    const ContentBlock send = ^(id<FBSDKSharingContent> content) {
        const RetainPtr<FBSDKMessageDialog*> dialog = AdoptNS([[FBSDKMessageDialog alloc] initWithContent:nil
                                                                                                 delegate:nil]);
        if (![dialog.get() canShow]) {
            VORN_LOG_ERROR("[ %s ] Messenger isn't installed", job->seqID.c_str());
            Refuse(*job, RetCode::kAppNotInstalled, "Messenger isn't installed");
            return;
        }
        [dialog.get() setDelegate:self];
        [dialog.get() setShareContent:content];
        [dialog.get() show];
        VORN_LOG_DEBUG("[ %s ] Call Facebook API", job->seqID.c_str());
        VORN_TRACE(job->seqID.c_str(), "{\"method\":\"setShareContent\"}").traceLog("FacebookFriend");
    };

    const ContentCompletion decide = ^(id<FBSDKSharingContent> content, InnerBaseRet built) {
        const dispatch_block_t showOrRefuse = ^{
            if (content == nil) {
                VORN_LOG_ERROR("[ %s ] sendOrShareLinkAndIMG content is nil", job->seqID.c_str());
                Commit(built, *job); // As it stands; the builder set the method ID or left it.
                return;
            }
            switch (job->methodID) {
            case MethodID::kShare:
            case MethodID::kShareByPipeline:
                share(content);
                return;
            case MethodID::kSendMessage:
                send(content);
                return;
            default:
                VORN_LOG_ERROR("[ %s ] sendOrShareLinkAndIMG not support methodID: %d", job->seqID.c_str(),
                               job->methodID);
                Answer(*job, InnerBaseRet(RetCode::kNotSupported));
                return;
            }
        };
        dispatch_async(dispatch_get_main_queue(), showOrRefuse); // Always: it presents dialogs.
    };
    [self createFacebookLinkOrImageContent:reqInfo methodID:methodID seqID:seqID complete:decide];
}

#pragma mark - Share content

- (void)createFacebookLinkOrImageContent:(const VornFriendReqInfo&)reqInfo
                                methodID:(int)methodID
                                   seqID:(std::string)seqID
                                complete:(ContentCompletion)complete {
    VORN_LOG_DEBUG("[ %s ] reqInfo : %s, methodID : %d", seqID.c_str(), JsonText(reqInfo).c_str(), methodID);
    switch (reqInfo.type) {
    case RequestType::kLink: {
        if (reqInfo.link.empty()) {
            VORN_LOG_ERROR("[ %s ] the link is null when share/send link, please check!", seqID.c_str());
            Fail(complete, methodID,
                 Refusal(RetCode::kInvalidArgument, "the link is null when share/send link, please check!"));
            return;
        }
        const RetainPtr<FBSDKShareLinkContent*> content = MakeLinkContent(MakeURL(reqInfo.link));
        TagPeople(self, content.get(), reqInfo, methodID, seqID);
        Succeed(complete, content.get());
        return;
    }
    case RequestType::kImage: {
        const auto job = MakeShareJob(reqInfo, methodID, seqID, kNoObserver);
        void (^const build)(BOOL, NSData*, NSError*) = ^(BOOL /*success*/, NSData* data, NSError* /*error*/) {
            UIImage* const image = data == nil ? nil : [UIImage imageWithData:data]; // Only the bytes decide.
            VORN_LOG_DEBUG("[ %s ] data size : %lu, image : %s", job->seqID.c_str(),
                           static_cast<unsigned long>([data length]), CStr([image description]));
            if (image == nil) {
                VORN_LOG_ERROR("[ %s ] illegal image data", job->seqID.c_str());
                Fail(complete, job->methodID, Refusal(RetCode::kInvalidArgument, "illegal image data"));
                return;
            }
            const RetainPtr<FBSDKSharePhotoContent*> content = MakePhotoContent(image, MakeURL(job->reqInfo.link));
            TagPeople(self, content.get(), job->reqInfo, job->methodID, job->seqID);
            Succeed(complete, content.get());
        };
        [VornUtilsIOS loadImageWithUri:MakeNSString(reqInfo.imagePath.c_str()) complete:build];
        return;
    }
    case RequestType::kVideo: {
        if (reqInfo.mediaPath.empty()) {
            VORN_LOG_ERROR("[ %s ] mediaPath is empty", seqID.c_str());
            Fail(complete, RetCode::kInvalidArgument); // Kept: without the method ID, as all of video's.
            return;
        }
        NSDictionary* const extra = [VornUtilsIOS dictFromJsonString:MakeNSString(reqInfo.extraJson.c_str())];
        if (!IsFalse([extra objectForKey:@"isAssetURL"])) {
            NSURL* const video = MakeURL(reqInfo.mediaPath);
            if (video == nil) {
                VORN_LOG_ERROR("[ %s ] mediaPath is not a URL", seqID.c_str());
                Fail(complete, RetCode::kInvalidArgument);
                return;
            }
            const RetainPtr<FBSDKShareVideoContent*> content = MakeVideoContent(video);
            TagPeople(self, content.get(), reqInfo, methodID, seqID);
            Succeed(complete, content.get());
            return;
        }
        switch ([PHPhotoLibrary authorizationStatus]) {
        case PHAuthorizationStatusNotDetermined: {
            const auto job = MakeShareJob(reqInfo, methodID, seqID, kNoObserver);
            void (^const saveIfAllowed)(PHAuthorizationStatus) = ^(PHAuthorizationStatus status) {
                if (status == PHAuthorizationStatusAuthorized) {
                    [self saveVideoAndShare:job->reqInfo methodID:job->methodID seqID:job->seqID complete:complete];
                    return;
                }
                VORN_LOG_ERROR("[ %s ] need system permission", job->seqID.c_str());
                Fail(complete, RetCode::kNeedSystemPermission);
            };
            [PHPhotoLibrary requestAuthorization:saveIfAllowed];
            return;
        }
        case PHAuthorizationStatusRestricted:
            VORN_LOG_ERROR("[ %s ] not authorized to access photo data", seqID.c_str());
            Fail(complete, RetCode::kNeedSystemPermission);
            return;
        case PHAuthorizationStatusDenied:
            VORN_LOG_ERROR("[ %s ] denied to access photo data", seqID.c_str());
            Fail(complete, RetCode::kNeedSystemPermission);
            return;
        case PHAuthorizationStatusAuthorized:
            [self saveVideoAndShare:reqInfo methodID:methodID seqID:seqID complete:complete];
            return;
        default: // Kept: limited access is never answered; the core gives such a request up by itself.
            return;
        }
    }
    default:
        VORN_LOG_ERROR("[ %s ] createSendOrShareContent not support type : %d", seqID.c_str(), reqInfo.type);
        Fail(complete, methodID, InnerBaseRet(RetCode::kNotSupported));
        return;
    }
}

#pragma mark - Saving a video

- (void)saveVideoAndShare:(const VornFriendReqInfo&)reqInfo
                 methodID:(int)methodID
                    seqID:(std::string)seqID
                 complete:(ContentCompletion)complete {
    if (reqInfo.mediaPath.empty()) {
        VORN_LOG_ERROR("[ %s ] mediaPath is empty", seqID.c_str());
        Fail(complete, RetCode::kInvalidArgument); // Kept: no result of this method has the method ID.
        return;
    }
    const RetainPtr<NSURL*> file(MakeFileURL(reqInfo.mediaPath));
    if (!file) {
        VORN_LOG_ERROR("[ %s ] mediaPath is not a path", seqID.c_str());
        Fail(complete, RetCode::kInvalidArgument);
        return;
    }
    if (![[AVAsset assetWithURL:file.get()] isCompatibleWithSavedPhotosAlbum]) {
        VORN_LOG_ERROR("[ %s ] video cant be written to the saved photos album", seqID.c_str());
        Fail(complete, RetCode::kSystemRefused);
        return;
    }

    const auto job = MakeShareJob(reqInfo, methodID, seqID, kNoObserver);
    __block RetainPtr<PHObjectPlaceholder*> created; // Written by the change, read once it has been made.
    const dispatch_block_t create = ^{
        PHAssetChangeRequest* const request =
            [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:file.get()];
        created = RetainPtr([request placeholderForCreatedAsset]);
    };
    void (^const share)(BOOL, NSError*) = ^(BOOL success, NSError* error) {
        if (!success) {
            VORN_LOG_ERROR("[ %s ] save video failed: %s", job->seqID.c_str(), CStr([error description]));
            Fail(complete, RetCode::kSystemRefused);
            return;
        }
        NSString* const assetURL = AssetURLText(file.get(), [created.get() localIdentifier]);
        // Facebook's uploader reads the file, its share dialog the photo library.
        NSURL* const video = [self isInGameMode] ? file.get() : MakeURL(assetURL);
        if (video == nil) {
            VORN_LOG_ERROR("[ %s ] the asset of mediaPath has no URL", job->seqID.c_str());
            Fail(complete, RetCode::kInvalidArgument);
            return;
        }
        const RetainPtr<FBSDKShareVideoContent*> content = MakeVideoContent(video);
        TagPeople(self, content.get(), job->reqInfo, job->methodID, job->seqID);
        Succeed(complete, content.get());
    };
    [[PHPhotoLibrary sharedPhotoLibrary] performChanges:create completionHandler:share];
}

@end
