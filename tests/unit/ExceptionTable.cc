#include "ExceptionTable.h"

#include <iterator>

namespace Tarvik::Vorn::Test {
namespace {

constexpr Receiver kCore = Receiver::kCore;
constexpr Receiver kMain = Receiver::kMainQueue;
constexpr Receiver kLoader = Receiver::kImageLoader;
constexpr Receiver kPhotos = Receiver::kPhotos;
constexpr Receiver kFacebook = Receiver::kFacebook;
constexpr Receiver kSystem = Receiver::kSystem;

constexpr ExceptionRow kRows[] = {
    // Login
    {"FBSDKSettings", "+sharedSettings", Work::kLogin, kCore},
    {"FBSDKSettings", "sdkVersion", Work::kLogin, kCore},
    {"FBSDKLoginManager", "init", Work::kLogin, kCore},
    {"FBSDKLoginManager", "logOut", Work::kLogin, kCore},
    {"FBSDKLoginManager", "logInWithPermissions:fromViewController:handler:", Work::kLogin, kCore, kNothing,
     kLoggedOut},
    {"FBSDKLoginManagerLoginResult", "isCancelled", Work::kLogin, kFacebook},
    {"FBSDKLoginManagerLoginResult", "token", Work::kLogin, kFacebook},
    {"FBSDKAccessToken", "tokenString", Work::kLogin, kFacebook},
    {"FBSDKLoginManager", "init", Work::kLogout, kCore},
    {"FBSDKLoginManager", "logOut", Work::kLogout, kCore},
    // Links
    {"FBSDKShareLinkContent", "init", Work::kLinkShare, kCore},
    {"FBSDKShareLinkContent", "setContentURL:", Work::kLinkShare, kCore},
    {"FBSDKShareLinkContent", "setPeopleIDs:", Work::kLinkShare, kCore},
    {"FBSDKShareDialog", "initWithViewController:content:delegate:", Work::kLinkShare, kMain},
    {"UIApplication", "+sharedApplication", Work::kLinkShare, kMain},
    {"UIApplication", "canOpenURL:", Work::kLinkShare, kMain},
    {"FBSDKShareDialog", "setMode:", Work::kLinkShare, kMain},
    {"FBSDKShareDialog", "show", Work::kLinkShare, kMain},
    {"FBSDKMessageDialog", "initWithContent:delegate:", Work::kLinkMessage, kMain},
    {"FBSDKMessageDialog", "canShow", Work::kLinkMessage, kMain},
    {"FBSDKMessageDialog", "setDelegate:", Work::kLinkMessage, kMain},
    {"FBSDKMessageDialog", "setShareContent:", Work::kLinkMessage, kMain},
    {"FBSDKMessageDialog", "show", Work::kLinkMessage, kMain},
    // Images
    {"UIImage", "+imageWithData:", Work::kImageShare, kLoader},
    {"UIImage", "description", Work::kImageShare, kLoader},
    {"FBSDKSharePhotoContent", "init", Work::kImageShare, kLoader},
    {"FBSDKSharePhotoContent", "setContentURL:", Work::kImageShare, kLoader},
    {"FBSDKSharePhoto", "initWithImage:isUserGenerated:", Work::kImageShare, kLoader},
    {"FBSDKSharePhotoContent", "setPhotos:", Work::kImageShare, kLoader},
    {"FBSDKSharePhotoContent", "setPeopleIDs:", Work::kImageShare, kLoader, kNothing, kNothing, 1, 0},
    {"FBSDKAccessToken", "+currentAccessToken", Work::kImageShare, kMain},
    {"UIApplication", "canOpenURL:", Work::kImageShare, kMain, kNothing, kNothing, 1, 0},
    {"FBSDKShareDialog", "setMode:", Work::kImageShare, kMain},
    {"FBSDKSharePhotoContent", "photos", Work::kImageUpload, kMain},
    {"FBSDKSharePhoto", "image", Work::kImageUpload, kMain},
    {"FBSDKAuthenticationToken", "+currentAuthenticationToken", Work::kImageUpload, kMain},
    {"FBSDKAuthenticationToken", "graphDomain", Work::kImageUpload, kMain},
    {"FBSDKGamingImageUploaderConfiguration", "initWithImage:caption:shouldLaunchMediaDialog:", Work::kImageUpload,
     kMain},
    {"FBSDKGamingImageUploader", "+uploadImageWithConfiguration:andResultCompletion:", Work::kImageUpload, kMain},
    // Videos
    {"FBSDKShareVideo", "initWithVideoURL:previewPhoto:", Work::kVideoShare, kCore},
    {"FBSDKShareVideoContent", "init", Work::kVideoShare, kCore},
    {"FBSDKShareVideoContent", "setVideo:", Work::kVideoShare, kCore},
    {"FBSDKShareVideoContent", "setPeopleIDs:", Work::kVideoShare, kCore, kNothing, kNothing, 1, 0},
    {"FBSDKAccessToken", "+currentAccessToken", Work::kVideoShare, kMain, kNothing, kNothing, 1, 0},
    {"UIApplication", "canOpenURL:", Work::kVideoShare, kMain, kNothing, kNothing, 1, 0},
    {"FBSDKShareDialog", "setMode:", Work::kVideoShare, kMain},
    {"PHPhotoLibrary", "+authorizationStatus", Work::kSavedVideo, kCore},
    {"AVAsset", "+assetWithURL:", Work::kSavedVideo, kCore},
    {"AVAsset", "isCompatibleWithSavedPhotosAlbum", Work::kSavedVideo, kCore},
    {"PHPhotoLibrary", "+sharedPhotoLibrary", Work::kSavedVideo, kCore},
    {"PHPhotoLibrary", "performChanges:completionHandler:", Work::kSavedVideo, kCore},
    {"PHAssetChangeRequest", "+creationRequestForAssetFromVideoAtFileURL:", Work::kSavedVideo, kPhotos},
    {"PHAssetChangeRequest", "placeholderForCreatedAsset", Work::kSavedVideo, kPhotos},
    {"PHObjectPlaceholder", "localIdentifier", Work::kSavedVideo, kPhotos},
    {"FBSDKAccessToken", "+currentAccessToken", Work::kSavedVideo, kPhotos, kNothing, kNothing, 1, 0},
    {"FBSDKShareVideo", "initWithVideoURL:previewPhoto:", Work::kSavedVideo, kPhotos, kNothing, kNothing, 1, 0},
    {"PHPhotoLibrary", "+requestAuthorization:", Work::kAskedVideo, kCore},
    {"PHPhotoLibrary", "performChanges:completionHandler:", Work::kAskedVideo, kPhotos, kNothing, kNothing, 1, 0},
    {"UIViewController", "view", Work::kVideoUpload, kMain},
    {"UIProgressView", "initWithProgressViewStyle:", Work::kVideoUpload, kMain},
    {"UIColor", "+colorWithRed:green:blue:alpha:", Work::kVideoUpload, kMain, kNothing, kNothing, 1, 2},
    {"UIProgressView", "setTrackTintColor:", Work::kVideoUpload, kMain},
    {"UIProgressView", "setProgressTintColor:", Work::kVideoUpload, kMain},
    {"UIView", "frame", Work::kVideoUpload, kMain},
    {"UIProgressView", "setFrame:", Work::kVideoUpload, kMain},
    {"UIProgressView", "setHidden:", Work::kVideoUpload, kMain},
    {"UIView", "addSubview:", Work::kVideoUpload, kMain},
    {"UIView", "bringSubviewToFront:", Work::kVideoUpload, kMain, kNothing, kBar},
    {"FBSDKShareVideoContent", "video", Work::kVideoUpload, kMain, kNothing, kBar},
    {"FBSDKShareVideo", "videoURL", Work::kVideoUpload, kMain, kNothing, kBar},
    {"FBSDKGamingVideoUploaderConfiguration", "initWithVideoURL:caption:", Work::kVideoUpload, kMain, kNothing, kBar},
    {"FBSDKGamingVideoUploader", "+uploadVideoWithConfiguration:completion:andProgressHandler:", Work::kVideoUpload,
     kMain, kNothing, kBar},
    {"UIProgressView", "setProgress:", Work::kVideoUpload, kMain, kResult, kNoProgress},
    {"UIProgressView", "setHidden:", Work::kVideoUpload, kFacebook, kResult, kBar},
    {"UIProgressView", "removeFromSuperview", Work::kVideoUpload, kFacebook, kResult, kBar},
    // Friends
    {"FBSDKGameRequestContent", "init", Work::kInvitation, kCore},
    {"FBSDKGameRequestContent", "setMessage:", Work::kInvitation, kCore},
    {"FBSDKGameRequestContent", "setTitle:", Work::kInvitation, kCore},
    {"FBSDKGameRequestContent", "setFilters:", Work::kInvitation, kCore},
    {"FBSDKGameRequestContent", "setRecipients:", Work::kBatchInvitation, kCore},
    {"FBSDKGameRequestDialog", "+showWithContent:delegate:", Work::kInvitation, kCore},
    {"FBSDKAccessToken", "+currentAccessToken", Work::kFriendFinder, kCore, kNothing, kNothing, 1, 0},
    {"FBSDKFriendFinderDialog", "+launchFriendFinderDialogWithCompletionHandler:", Work::kFriendFinder, kCore},
    // Events
    {"FBSDKAppEvents", "+shared", Work::kEvent, kCore},
    {"FBSDKAppEvents", "logEvent:", Work::kEvent, kCore},
    {"FBSDKAppEvents", "+shared", Work::kEventWithParameters, kCore},
    {"FBSDKAppEvents", "logEvent:parameters:", Work::kEventWithParameters, kCore},
    // Hooks
    {"FBSDKApplicationDelegate", "+sharedInstance", Work::kLaunch, kSystem, kNothing, kUnset, 1, 1},
    {"FBSDKApplicationDelegate", "application:didFinishLaunchingWithOptions:", Work::kLaunch, kSystem, kNothing,
     kUnset},
    {"FBSDKSettings", "+sharedSettings", Work::kLaunch, kSystem, kNothing, kUnset, 1, 1},
    {"FBSDKSettings", "sdkVersion", Work::kLaunch, kSystem, kNothing, kUnset, 1, 1},
    {"FBSDKSettings", "+sharedSettings", Work::kLaunch, kSystem, kNothing, kUnset, 2, 1},
    {"FBSDKSettings", "setAppID:", Work::kLaunch, kSystem, kNothing, kUnset},
    {"FBSDKSettings", "+sharedSettings", Work::kLaunch, kSystem, kNothing, kNoActivations, 3, 1},
    {"FBSDKSettings", "setDisplayName:", Work::kLaunch, kSystem, kNothing, kNoActivations},
    {"FBSDKAppEvents", "+shared", Work::kLaunch, kSystem, kNothing, kNoActivations},
    {"FBSDKAppEvents", "activateApp", Work::kLaunch, kSystem, kNothing, kNoActivations},
    {"FBSDKSettings", "+sharedSettings", Work::kLaunch, kSystem, kNothing, kNoActivations, 4, 1},
    {"FBSDKSettings", "sdkVersion", Work::kLaunch, kSystem, kNothing, kNoActivations, 2, 1},
    {"FBSDKApplicationDelegate", "+sharedInstance", Work::kURLOpen, kSystem},
    {"FBSDKApplicationDelegate", "application:openURL:options:", Work::kURLOpen, kSystem},
    {"FBSDKApplicationDelegate", "+sharedInstance", Work::kURLOpenFromApp, kSystem},
    {"FBSDKApplicationDelegate", "application:openURL:sourceApplication:annotation:", Work::kURLOpenFromApp, kSystem},
    {"FBSDKAppEvents", "+shared", Work::kActivation, kSystem},
    {"FBSDKAppEvents", "activateApp", Work::kActivation, kSystem},
};

constexpr const char* kNotPlatform[] = {
    "addObject:",
    "addObjectsFromArray:",
    "addObserver:selector:name:object:",
    "alloc",
    "allocWithZone:",
    "array",
    "arrayWithCapacity:",
    "autorelease",
    "boolValue",
    "class",
    "code",
    "componentsSeparatedByString:",
    "containsObject:",
    "copy",
    "count",
    "createFacebookLinkOrImageContent:methodID:seqID:complete:",
    "dealloc",
    "defaultCenter",
    "description",
    "dictFromJsonString:",
    "fb_application:openURL:options:",
    "fb_application:openURL:sourceApplication:annotation:",
    "fb_application:options:",
    "fileURLWithPath:",
    "firstObject",
    "getInviteUserList:seqID:",
    "getRootViewController",
    "handleInnerCallbacks:",
    "handleInnerCallbacks:params:",
    "init",
    "initSingleton",
    "invite:params:",
    "isBatchInvite:seqID:",
    "isEqualToString:",
    "isInGameMode",
    "isKindOfClass:",
    "jsonStringFromDict:prettyPrint:",
    "length",
    "loadImageWithUri:complete:",
    "localizedDescription",
    "methodNameID",
    "objectForKey:",
    "observerID",
    "pathExtension",
    "removeObject:",
    "removeObserver:",
    "retain",
    "saveVideoAndShare:methodID:seqID:complete:",
    "sendOrShareLinkOrIMG:methodID:seqID:observerID:",
    "seqID",
    "setMethodNameID:",
    "setObserverID:",
    "setSeqID:",
    "setShareTaggablePeople:reqInfo:seqID:",
    "sharedInstance",
    "stringByReplacingOccurrencesOfString:withString:options:range:",
    "stringValue",
    "stringWithFormat:",
    "swizzlingOriginalClass:swizzledClass:originalSEL:swizzledSEL:",
    "URLWithString:",
    "UTF8String",
};

} // namespace

const char* NameOf(Receiver receiver) {
    static constexpr const char* kNames[] = {
        "the core's call",          "the main queue",  "the image loader's thread",
        "the photo library's call", "Facebook's call", "the system's call",
    };
    return kNames[static_cast<size_t>(receiver)];
}

const char* NameOf(Work work) {
    static constexpr const char* kNames[] = {
        "login",
        "logout",
        "share of a link",
        "link through Messenger",
        "share of an image",
        "share of a video",
        "share of a video file",
        "the same, with a prompt",
        "upload of an image",
        "upload of a video",
        "invitation",
        "invitation to listed users",
        "friend finder",
        "event",
        "event with parameters",
        "launch",
        "URL open",
        "URL open from an app",
        "activation",
    };
    return kNames[static_cast<size_t>(work)];
}

bool IsClassMethod(const ExceptionRow& row) {
    return row.selector[0] == '+';
}

std::string SelectorOf(const ExceptionRow& row) {
    return IsClassMethod(row) ? row.selector + 1 : row.selector;
}

std::string TextOf(const ExceptionRow& row) {
    const std::string order = row.nth == 1 ? "" : " (call " + std::to_string(row.nth) + ")";
    return "| `" + std::string(IsClassMethod(row) ? "+" : "-") + "[" + row.className + " " + SelectorOf(row) + "]`" +
           order + " | " + NameOf(row.work) + " | " + NameOf(row.receiver) + " | " + row.reachesCore + " | " +
           row.staysBehind + " |";
}

void PrintTo(const ExceptionRow& row, std::ostream* out) {
    *out << TextOf(row);
}

const std::vector<ExceptionRow>& ExceptionRows() {
    static const auto& rows = *new std::vector<ExceptionRow>(std::begin(kRows), std::end(kRows));
    return rows;
}

const std::set<std::string>& NotPlatform() {
    static const auto& names = *new std::set<std::string>(std::begin(kNotPlatform), std::end(kNotPlatform));
    return names;
}

} // namespace Tarvik::Vorn::Test
