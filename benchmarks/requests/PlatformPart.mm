#include "PlatformPart.h"

#include "requests/FoundationSamples.h"
#include "support/Samples.h"

#include "MainQueue+Control.h"
#include "VornCodes.h"
#include "VornRetainPtr.h"
#include "VornText.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKLoginKit/FBSDKLoginKit.h>
#import <FBSDKLoginKit/FBSDKLoginKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>
#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>
#import <dispatch/dispatch.h>

// The delegate of the dialogs. None of them ends, so that it is never called.
@interface VornBenchDelegate : NSObject <FBSDKSharingDelegate, FBSDKGameRequestDialogDelegate>
@end

@implementation VornBenchDelegate

- (void)sharer:(id<FBSDKSharing>)sharer didCompleteWithResults:(NSDictionary<NSString*, id>*)results {
}
- (void)sharer:(id<FBSDKSharing>)sharer didFailWithError:(NSError*)error {
}
- (void)sharerDidCancel:(id<FBSDKSharing>)sharer {
}
- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog
    didCompleteWithResults:(NSDictionary<NSString*, id>*)results {
}
- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog didFailWithError:(NSError*)error {
}
- (void)gameRequestDialogDidCancel:(FBSDKGameRequestDialog*)gameRequestDialog {
}

@end

namespace Tarvik::Vorn::Bench::PlatformPart {
namespace {

VornBenchDelegate* Delegate() {
    static VornBenchDelegate* const delegate = [[VornBenchDelegate alloc] init];
    return delegate;
}

const VornFriendReqInfo& Request() {
    static const auto& request = *new VornFriendReqInfo(SampleRequest(RequestType::kLink));
    return request;
}

// What the request's extraJson is to Foundation: its text, and a dictionary of its members.
void MakeExtra() {
    MakeNSString(Request().extraJson.c_str());
    NSMutableDictionary* const extra = [NSMutableDictionary dictionaryWithCapacity:2];
    [extra setObject:MakeNSString("summer") forKey:MakeNSString("campaign")];
    [extra setObject:[NSNumber numberWithLongLong:42] forKey:MakeNSString("level")];
}

// The request's sequence ID, which the friend plugin keeps as an object.
void MakeSeqID() {
    MakeNSString(kSeqID);
}

// A result's way to its observer without the result.
void Hop() {
    dispatch_async_f(dispatch_get_main_queue(), nullptr, [](void*) {});
    Host::DrainMainQueue();
}

bool IsFacebookAppInstalled() {
    return [[UIApplication sharedApplication] canOpenURL:[NSURL URLWithString:@"fbauth2://"]];
}

void ShowShareDialog(id<FBSDKSharingContent> content) {
    const RetainPtr<FBSDKShareDialog*> dialog = AdoptNS([[FBSDKShareDialog alloc] initWithViewController:nil
                                                                                                 content:content
                                                                                                delegate:Delegate()]);
    [dialog.get() setMode:IsFacebookAppInstalled() ? FBSDKShareDialogModeNative : FBSDKShareDialogModeBrowser];
    [dialog.get() show];
}

} // namespace

void LogIn() {
    NSMutableArray* const permissions = [NSMutableArray array];
    [permissions addObjectsFromArray:[MakeNSString(kPermissions) componentsSeparatedByString:@","]];
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logOut];
    [manager.get() logInWithPermissions:permissions
                     fromViewController:nil
                                handler:^(FBSDKLoginManagerLoginResult* /*result*/, NSError* /*error*/){
                                }];
}

void LogOut() {
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logOut];
    Hop();
}

void QueryFriends() {
    Hop();
}

void AddFriendRefused() {
    [FBSDKAccessToken currentAccessToken];
    Hop();
}

void AddFriendInGameMode() {
    [FBSDKAccessToken currentAccessToken];
    [[[FBSDKAuthenticationToken currentAuthenticationToken] graphDomain] isEqualToString:@"gaming"];
    [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:^(BOOL /*success*/, NSError* /*error*/){
    }];
}

void SendLink() {
    MakeSeqID();
    const RetainPtr<FBSDKShareLinkContent*> content = AdoptNS([[FBSDKShareLinkContent alloc] init]);
    [content.get() setContentURL:[NSURL URLWithString:MakeNSString(Request().link.c_str())]];
    dispatch_async(dispatch_get_main_queue(), ^{
        const RetainPtr<FBSDKMessageDialog*> dialog = AdoptNS([[FBSDKMessageDialog alloc] initWithContent:nil
                                                                                                 delegate:nil]);
        [dialog.get() canShow];
        [dialog.get() setDelegate:Delegate()];
        [dialog.get() setShareContent:content.get()];
        [dialog.get() show];
    });
    Host::DrainMainQueue();
}

void Invite() {
    MakeSeqID();
    const RetainPtr<FBSDKGameRequestContent*> content = AdoptNS([[FBSDKGameRequestContent alloc] init]);
    [content.get() setMessage:MakeNSString(Request().desc.c_str())];
    [content.get() setTitle:MakeNSString(Request().title.c_str())];
    MakeExtra();
    [content.get() setFilters:FBSDKGameRequestFilterNone];
    [FBSDKGameRequestDialog showWithContent:content.get() delegate:Delegate()];
}

void ShareLink() {
    MakeSeqID();
    const RetainPtr<FBSDKShareLinkContent*> content = AdoptNS([[FBSDKShareLinkContent alloc] init]);
    [content.get() setContentURL:[NSURL URLWithString:MakeNSString(Request().link.c_str())]];
    dispatch_async(dispatch_get_main_queue(), ^{
        ShowShareDialog(content.get());
    });
    Host::DrainMainQueue();
}

void ShareVideo() {
    MakeSeqID();
    MakeExtra();
    NSURL* const url = [NSURL URLWithString:MakeNSString(Request().mediaPath.c_str())];
    const RetainPtr<FBSDKShareVideo*> video = AdoptNS([[FBSDKShareVideo alloc] initWithVideoURL:url previewPhoto:nil]);
    const RetainPtr<FBSDKShareVideoContent*> content = AdoptNS([[FBSDKShareVideoContent alloc] init]);
    [content.get() setVideo:video.get()];
    dispatch_async(dispatch_get_main_queue(), ^{
        const RetainPtr<FBSDKShareDialog*> dialog =
            AdoptNS([[FBSDKShareDialog alloc] initWithViewController:nil content:content.get() delegate:Delegate()]);
        [FBSDKAccessToken currentAccessToken];
        IsFacebookAppInstalled();
        [dialog.get() setMode:FBSDKShareDialogModeNative];
        [dialog.get() show];
    });
    Host::DrainMainQueue();
}

void ShareRefused() {
    MakeSeqID();
    Hop();
}

void ReportEvent() {
    [[FBSDKAppEvents shared] logEvent:EventName()];
}

void ReportEventWithParameters() {
    CStr(MakeNSString(R"({"level":42,"world":"sunken_city"})")); // The text of the parameters, for the log.
    [[FBSDKAppEvents shared] logEvent:EventName() parameters:EventParameters()];
}

void OpenURL() {
    [[FBSDKApplicationDelegate sharedInstance] application:[UIApplication sharedApplication]
                                                   openURL:OpenedURL()
                                                   options:@{}];
}

void Nothing() {}

} // namespace Tarvik::Vorn::Bench::PlatformPart
