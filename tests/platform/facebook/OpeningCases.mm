#include "OpeningCases.h"

#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "Photos/PhotoLibrary.h"

@implementation VornAnswerCounter

- (void)sharer:(id<FBSDKSharing>)sharer didCompleteWithResults:(NSDictionary<NSString*, id>*)results {
    ++answers;
}
- (void)sharer:(id<FBSDKSharing>)sharer didFailWithError:(NSError*)error {
    ++answers;
}
- (void)sharerDidCancel:(id<FBSDKSharing>)sharer {
    ++answers;
}
- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog
    didCompleteWithResults:(NSDictionary<NSString*, id>*)results {
    ++answers;
}
- (void)gameRequestDialog:(FBSDKGameRequestDialog*)gameRequestDialog didFailWithError:(NSError*)error {
    ++answers;
}
- (void)gameRequestDialogDidCancel:(FBSDKGameRequestDialog*)gameRequestDialog {
    ++answers;
}

@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::Closing;

FBSDKShareLinkContent* Link() {
    FBSDKShareLinkContent* const content = [[[FBSDKShareLinkContent alloc] init] autorelease];
    [content setContentURL:[NSURL URLWithString:@"https://host/page"]];
    return content;
}

bool OpenLogin(VornAnswerCounter* counter) {
    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
    [manager.get() logInWithPermissions:@[ @"email" ]
                     fromViewController:nil
                                handler:^(FBSDKLoginManagerLoginResult*, NSError*) {
                                    ++counter->answers;
                                }];
    return true;
}

bool OpenShareDialog(VornAnswerCounter* counter) {
    const RetainPtr<FBSDKShareDialog*> dialog = AdoptNS([[FBSDKShareDialog alloc] initWithViewController:nil
                                                                                                 content:Link()
                                                                                                delegate:counter]);
    return [dialog.get() show];
}

bool OpenMessageDialog(VornAnswerCounter* counter) {
    const RetainPtr<FBSDKMessageDialog*> dialog = AdoptNS([[FBSDKMessageDialog alloc] initWithContent:Link()
                                                                                             delegate:counter]);
    return [dialog.get() show];
}

bool OpenGameRequest(VornAnswerCounter* counter) {
    const RetainPtr<FBSDKGameRequestContent*> content = AdoptNS([[FBSDKGameRequestContent alloc] init]);
    [content.get() setMessage:@"Message"];
    return [[FBSDKGameRequestDialog dialogWithContent:content.get() delegate:counter] show];
}

bool OpenFriendFinder(VornAnswerCounter* counter) {
    [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:^(BOOL, NSError*) {
        ++counter->answers;
    }];
    return true;
}

bool OpenPhotoPrompt(VornAnswerCounter* counter) {
    [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus) {
        ++counter->answers;
    }];
    return true;
}

bool OpenPhotoChanges(VornAnswerCounter* counter) {
    [[PHPhotoLibrary sharedPhotoLibrary]
        performChanges:^{
        }
        completionHandler:^(BOOL, NSError*) {
            ++counter->answers;
        }];
    return true;
}

bool OpenImageUpload(VornAnswerCounter* counter) {
    const RetainPtr<FBSDKGamingImageUploaderConfiguration*> configuration =
        AdoptNS([[FBSDKGamingImageUploaderConfiguration alloc] initWithImage:OnePixel()
                                                                     caption:nil
                                                     shouldLaunchMediaDialog:NO]);
    [FBSDKGamingImageUploader uploadImageWithConfiguration:configuration.get()
                                       andResultCompletion:^(BOOL, NSDictionary<NSString*, id>*, NSError*) {
                                           ++counter->answers;
                                       }];
    return true;
}

bool OpenVideoUpload(VornAnswerCounter* counter) {
    // Nobody looks into the video: any file with something in it will do, such as this program.
    NSURL* const video = [NSURL fileURLWithPath:@"/proc/self/exe"];
    const RetainPtr<FBSDKGamingVideoUploaderConfiguration*> configuration =
        AdoptNS([[FBSDKGamingVideoUploaderConfiguration alloc] initWithVideoURL:video caption:nil]);
    [FBSDKGamingVideoUploader uploadVideoWithConfiguration:configuration.get()
                                                completion:^(BOOL, NSDictionary<NSString*, id>*, NSError*) {
                                                    ++counter->answers;
                                                }
                                        andProgressHandler:nil];
    return true;
}

bool AnswerShareDialog(size_t index, Closing closing) {
    return Host::AnswerShare(Host::ShareAnswer::Completed(), index, closing);
}

size_t PendingLogins() {
    return [FBSDKLoginManager pendingLoginCount];
}

} // namespace

std::vector<OpeningCase> OpeningCases() {
    using Host::Opening;
    return {
        {"Login", Opening::kLogin, "FBSDKLoginManager", "logInWithPermissions:fromViewController:handler:", OpenLogin,
         [](size_t, Closing closing) { return Host::AnswerLogin(Host::LoginAnswer::Cancelled(), closing); },
         PendingLogins},
        {"ShareDialog", Opening::kShareDialog, "FBSDKShareDialog", "show", OpenShareDialog, AnswerShareDialog,
         Host::OpenShareDialogCount},
        {"MessageDialog", Opening::kMessageDialog, "FBSDKMessageDialog", "show", OpenMessageDialog, AnswerShareDialog,
         Host::OpenShareDialogCount},
        {"GameRequest", Opening::kGameRequest, "FBSDKGameRequestDialog", "show", OpenGameRequest,
         [](size_t index, Closing closing) {
             return Host::AnswerGameRequest(Host::GameRequestAnswer::Sent(@"request", @[]), index, closing);
         },
         Host::OpenGameRequestCount},
        {"FriendFinder", Opening::kFriendFinder, "FBSDKFriendFinderDialog",
         "launchFriendFinderDialogWithCompletionHandler:", OpenFriendFinder,
         [](size_t index, Closing closing) {
             return Host::AnswerFriendFinder(Host::FriendFinderAnswer::Returned(), index, closing);
         },
         Host::OpenFriendFinderCount},
        {"PhotoPrompt", Opening::kPhotoPrompt, "PHPhotoLibrary", "requestAuthorization:", OpenPhotoPrompt,
         [](size_t index, Closing closing) {
             return Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied, index, closing);
         },
         Host::PendingPhotoPromptCount},
        {"PhotoChanges", Opening::kPhotoChanges, "PHPhotoLibrary",
         "performChanges:completionHandler:", OpenPhotoChanges,
         [](size_t index, Closing closing) {
             return Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved(), index, closing);
         },
         Host::PendingPhotoChangesCount},
        {"ImageUpload", Opening::kImageUpload, "FBSDKGamingImageUploader",
         "uploadImageWithConfiguration:andResultCompletion:", OpenImageUpload,
         [](size_t index, Closing closing) {
             return Host::AnswerImageUpload(Host::ImageUploadAnswer::Uploaded(@"photo"), index, closing);
         },
         Host::OpenImageUploadCount},
        {"VideoUpload", Opening::kVideoUpload, "FBSDKGamingVideoUploader",
         "uploadVideoWithConfiguration:completion:andProgressHandler:", OpenVideoUpload,
         [](size_t index, Closing closing) {
             return Host::FinishVideoUpload(Host::VideoUploadAnswer::Uploaded(@"video"), index, closing);
         },
         Host::OpenVideoUploadCount},
    };
}

} // namespace Tarvik::Vorn::Test
