#include "OpenThings.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "Photos/PhotoLibrary.h"

namespace Tarvik::Vorn::Test {

size_t OpenThingCount() {
    return [FBSDKLoginManager pendingLoginCount] + Host::OpenFriendFinderCount() + Host::OpenGameRequestCount() +
           Host::OpenShareDialogCount() + Host::OpenImageUploadCount() + Host::OpenVideoUploadCount() +
           Host::PendingPhotoPromptCount() + Host::PendingPhotoChangesCount();
}

void SucceedWithWhatIsOpen() {
    if ([FBSDKLoginManager pendingLoginCount] > 0) {
        Host::AnswerLogin(Host::LoginAnswer::Success(Host::MakeAccessToken(@"token", @"user", @[ @"email" ])));
    }
    Host::AnswerFriendFinder(Host::FriendFinderAnswer::Returned());
    Host::AnswerGameRequest(Host::GameRequestAnswer::Sent(@"1", @[ @"2" ]));
    Host::AnswerShare(Host::ShareAnswer::Completed());
    Host::AnswerImageUpload(Host::ImageUploadAnswer::Uploaded(@"1"));
    Host::FinishVideoUpload(Host::VideoUploadAnswer::Uploaded(@"1"));
    if (Host::PendingPhotoPromptCount() > 0) {
        Host::AnswerPhotoPrompt();
    }
    Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved());
}

} // namespace Tarvik::Vorn::Test
