#include "Platform.h"

#include "AVFoundation/AVAsset+Control.h"
#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "History.h"
#include "HostError.h"
#include "InfoDictionary.h"
#include "Photos/PhotoLibrary.h"
#include "PlatformReset.h"
#include "UIKit/UIApplication+Control.h"
#include "VornConfig.h"
#include "VornText.h"

namespace Tarvik::Vorn::Soak {
namespace {

using Host::Closing;

Closing ClosingOf(const Answer& answer) {
    return answer.staysOpen ? Closing::kStaysOpen : Closing::kCloses;
}

NSError* ErrorOf(const Answer& answer) {
    return Host::MakeError(@"soak", answer.code, MakeNSString(answer.text));
}

bool GiveLogin(const Answer& answer) {
    using Host::LoginAnswer;
    switch (answer.ending) {
    case Ending::kSuccess: {
        NSString* const text = [NSString stringWithFormat:@"T%d", answer.code];
        FBSDKAuthenticationToken* const gaming =
            answer.code % 2 == 0 ? nil : Host::MakeAuthenticationToken(@"id", @"gaming");
        return AnswerLogin(LoginAnswer::Success(Host::MakeAccessToken(text, @"u", @[ @"email" ]), gaming),
                           ClosingOf(answer));
    }
    case Ending::kCancel:
        return AnswerLogin(LoginAnswer::Cancelled(), ClosingOf(answer));
    case Ending::kError:
        return AnswerLogin(LoginAnswer::Failed(ErrorOf(answer)), ClosingOf(answer));
    case Ending::kOdd:
        return AnswerLogin(LoginAnswer::Impossible(nil, nil), ClosingOf(answer));
    }
}

bool GiveShare(size_t index, const Answer& answer) {
    using Host::ShareAnswer;
    switch (answer.ending) {
    case Ending::kSuccess:
        return AnswerShare(ShareAnswer::Completed(@"post"), index, ClosingOf(answer));
    case Ending::kCancel:
        return AnswerShare(ShareAnswer::Cancelled(), index, ClosingOf(answer));
    case Ending::kError:
        return AnswerShare(ShareAnswer::Failed(ErrorOf(answer)), index, ClosingOf(answer));
    case Ending::kOdd:
        return AnswerShare(ShareAnswer::ErrorOfTheApp(), index, ClosingOf(answer));
    }
}

bool GiveGameRequest(size_t index, const Answer& answer) {
    using Host::GameRequestAnswer;
    switch (answer.ending) {
    case Ending::kSuccess: {
        NSArray* const recipients = @[ @"1", [NSString stringWithFormat:@"%d", answer.code] ];
        NSDictionary* const results = answer.code % 2 == 1 ? @{@"request" : @"r", @"to" : recipients} : @{};
        return AnswerGameRequest(GameRequestAnswer::Completed(results), index, ClosingOf(answer));
    }
    case Ending::kCancel:
        return AnswerGameRequest(GameRequestAnswer::Closed(), index, ClosingOf(answer));
    case Ending::kError:
        return AnswerGameRequest(GameRequestAnswer::Failed(ErrorOf(answer)), index, ClosingOf(answer));
    case Ending::kOdd:
        return AnswerGameRequest(GameRequestAnswer::ErrorOfThePage(), index, ClosingOf(answer));
    }
}

bool GiveFriendFinder(size_t index, const Answer& answer) {
    const bool isSuccess = answer.ending == Ending::kSuccess || answer.ending == Ending::kOdd;
    const bool hasError = answer.ending == Ending::kError || answer.ending == Ending::kOdd;
    NSError* const error = hasError ? ErrorOf(answer) : nil;
    return AnswerFriendFinder(Host::FriendFinderAnswer::Exactly(isSuccess, error), index, ClosingOf(answer));
}

bool GivePhotoPrompt(size_t index, const Answer& answer) {
    switch (answer.ending) {
    case Ending::kSuccess:
        return Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized, index, ClosingOf(answer));
    case Ending::kCancel:
        return Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied, index, ClosingOf(answer));
    case Ending::kError:
        return Host::AnswerPhotoPrompt(PHAuthorizationStatusRestricted, index, ClosingOf(answer));
    case Ending::kOdd:
        return Host::AnswerPhotoPrompt(PHAuthorizationStatusLimited, index, ClosingOf(answer));
    }
}

bool GivePhotoChanges(size_t index, const Answer& answer) {
    using Host::PhotoChangesOutcome;
    switch (answer.ending) {
    case Ending::kSuccess:
        return RunPhotoChanges(PhotoChangesOutcome::Saved(), index, ClosingOf(answer));
    case Ending::kCancel:
        return RunPhotoChanges(PhotoChangesOutcome::FailedWithoutError(), index, ClosingOf(answer));
    case Ending::kError:
        return RunPhotoChanges(PhotoChangesOutcome::Failed(ErrorOf(answer)), index, ClosingOf(answer));
    case Ending::kOdd:
        return RunPhotoChanges(PhotoChangesOutcome::SavedWithError(ErrorOf(answer)), index, ClosingOf(answer));
    }
}

bool GiveImageUpload(size_t index, const Answer& answer) {
    using Host::ImageUploadAnswer;
    switch (answer.ending) {
    case Ending::kSuccess:
        return AnswerImageUpload(ImageUploadAnswer::Uploaded(@"photo"), index, ClosingOf(answer));
    case Ending::kCancel:
        return AnswerImageUpload(ImageUploadAnswer::Exactly(false, nil, nil), index, ClosingOf(answer));
    case Ending::kError:
        return AnswerImageUpload(ImageUploadAnswer::Exactly(true, @{}, ErrorOf(answer)), index, ClosingOf(answer));
    case Ending::kOdd:
        return AnswerImageUpload(ImageUploadAnswer::Uploaded(nil), index, ClosingOf(answer));
    }
}

bool GiveVideoUpload(size_t index, const Answer& answer) {
    using Host::VideoUploadAnswer;
    switch (answer.ending) {
    case Ending::kSuccess:
        return FinishVideoUpload(VideoUploadAnswer::Uploaded(@"video"), index, ClosingOf(answer));
    case Ending::kCancel:
        return FinishVideoUpload(VideoUploadAnswer::Exactly(false, nil, nil), index, ClosingOf(answer));
    case Ending::kError:
        return FinishVideoUpload(VideoUploadAnswer::Failed(ErrorOf(answer)), index, ClosingOf(answer));
    case Ending::kOdd:
        return FinishVideoUpload(VideoUploadAnswer::Exactly(true, @{}, ErrorOf(answer)), index, ClosingOf(answer));
    }
}

// The window that is put away while there is none, and its view. Main thread.
RetainPtr<UIWindow*>& TheWindow() {
    static auto& window = *new RetainPtr<UIWindow*>;
    return window;
}

} // namespace

void ApplyWorld(const World& world) {
    Host::ReplaceCurrentAccessToken(
        world.hasToken ? Host::MakeAccessToken(@"soak", MakeNSString(world.user), @[ @"email" ]) : nil);
    NSString* const domain = world.domain == Domain::kGaming ? @"gaming" : @"facebook";
    Host::ReplaceCurrentAuthenticationToken(
        world.domain == Domain::kNone ? nil : Host::MakeAuthenticationToken(@"id", domain));
    Host::SetAppInstalled(Host::InstalledApp::kFacebook, world.hasFacebook);
    Host::SetAppInstalled(Host::InstalledApp::kMessenger, world.hasMessenger);
    Host::SetMessengerAllowed(world.isMessengerAllowed);
    Host::SetPhotoAuthorization(static_cast<PHAuthorizationStatus>(world.photos));
    Host::SetVideoCompatibility(world.isVideoCompatible);
    Host::SetKeyWindow(world.hasWindow ? TheWindow().get() : nil);
    Host::SetShareDialogsFindViewController(world.findsViewController);
    Host::SetGameRequestsCanShow(world.canShowGameRequests);
    Host::SetInfoValue(@"CFBundleURLTypes", world.isSchemeRegistered ? nil : @[]);
    SetConfigValue("FACEBOOK_LOGIN_MODE", world.isGameConfigured ? "Game" : "App");
    [FBSDKSettings setSDKVersion:world.supportsGaming ? @"9.3.0" : @"18.1.0"];
}

void ResetWorld() {
    TheWindow() = {};
    Host::ResetPlatform();
    ResetConfig();
    SetConfigValue("FACEBOOK_APP_ID", "4711");
    Host::SetHistoryKept(false);
    TheWindow() = RetainPtr([[UIApplication sharedApplication] keyWindow]);
}

bool GiveAnswer(Waiting kind, size_t index, const Answer& answer) {
    switch (kind) {
    case Waiting::kLogin:
        return GiveLogin(answer);
    case Waiting::kShareDialog:
        return GiveShare(index, answer);
    case Waiting::kGameRequest:
        return GiveGameRequest(index, answer);
    case Waiting::kFriendFinder:
        return GiveFriendFinder(index, answer);
    case Waiting::kPhotoPrompt:
        return GivePhotoPrompt(index, answer);
    case Waiting::kPhotoChanges:
        return GivePhotoChanges(index, answer);
    case Waiting::kImageUpload:
        return GiveImageUpload(index, answer);
    case Waiting::kVideoUpload:
        return GiveVideoUpload(index, answer);
    }
}

size_t WaitingCount(Waiting kind) {
    switch (kind) {
    case Waiting::kLogin:
        return [FBSDKLoginManager pendingLoginCount];
    case Waiting::kShareDialog:
        return Host::OpenShareDialogCount();
    case Waiting::kGameRequest:
        return Host::OpenGameRequestCount();
    case Waiting::kFriendFinder:
        return Host::OpenFriendFinderCount();
    case Waiting::kPhotoPrompt:
        return Host::PendingPhotoPromptCount();
    case Waiting::kPhotoChanges:
        return Host::PendingPhotoChangesCount();
    case Waiting::kImageUpload:
        return Host::OpenImageUploadCount();
    case Waiting::kVideoUpload:
        return Host::OpenVideoUploadCount();
    }
}

size_t BarCount() {
    @autoreleasepool { // The list keeps the bars.
        return [[[[TheWindow().get() rootViewController] view] subviews] count];
    }
}

} // namespace Tarvik::Vorn::Soak
