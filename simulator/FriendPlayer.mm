#include "FriendPlayer.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "InfoDictionary.h"
#include "Photos/PhotoLibrary.h"
#include "UIKit/UIApplication+Control.h"
#include "VornDefine.h"

#include <thread>

namespace Tarvik::Vorn::Simulator {
namespace {

NSError* MakeError(const ReportedError& error) {
    return [NSError errorWithDomain:MakeNSString(error.domain)
                               code:static_cast<NSInteger>(error.code)
                           userInfo:@{NSLocalizedDescriptionKey : MakeNSString(error.message)}];
}

// Nil for an empty text.
NSString* OptionalText(const std::string& text) {
    return text.empty() ? nil : MakeNSString(text);
}

NSArray* TextList(const std::vector<std::string>& texts) {
    NSMutableArray* const list = [NSMutableArray array];
    for (const std::string& text : texts) {
        [list addObject:MakeNSString(text)];
    }
    return list;
}

PHAuthorizationStatus StatusOf(PhotoPermission permission) {
    switch (permission) {
    case PhotoPermission::kNotAsked:
        return PHAuthorizationStatusNotDetermined;
    case PhotoPermission::kRestricted:
        return PHAuthorizationStatusRestricted;
    case PhotoPermission::kDenied:
        return PHAuthorizationStatusDenied;
    case PhotoPermission::kAuthorized:
        return PHAuthorizationStatusAuthorized;
    case PhotoPermission::kLimited:
        return PHAuthorizationStatusLimited;
    }
    __builtin_unreachable();
}

const char* NameOf(PhotoPermission permission) {
    switch (permission) {
    case PhotoPermission::kNotAsked:
        return "not asked for yet";
    case PhotoPermission::kRestricted:
        return "restricted";
    case PhotoPermission::kDenied:
        return "denied";
    case PhotoPermission::kAuthorized:
        return "authorized";
    case PhotoPermission::kLimited:
        return "limited";
    }
    __builtin_unreachable();
}

Host::FriendFinderAnswer AnswerOf(const AnswerFriendFinderStep& step) {
    using Outcome = AnswerFriendFinderStep::Outcome;
    switch (step.outcome) {
    case Outcome::kReturned:
        return Host::FriendFinderAnswer::Returned();
    case Outcome::kClosed:
        return Host::FriendFinderAnswer::Closed();
    case Outcome::kNotOpened:
        return Host::FriendFinderAnswer::NotOpened();
    case Outcome::kError:
        return Host::FriendFinderAnswer::Exactly(false, MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::GameRequestAnswer AnswerOf(const AnswerGameRequestStep& step) {
    using Outcome = AnswerGameRequestStep::Outcome;
    switch (step.outcome) {
    case Outcome::kSent:
        return Host::GameRequestAnswer::Sent(MakeNSString(step.requestID), TextList(step.recipients));
    case Outcome::kCancelButton:
        return Host::GameRequestAnswer::CancelButton();
    case Outcome::kClosed:
        return Host::GameRequestAnswer::Closed();
    case Outcome::kPageError:
        return Host::GameRequestAnswer::ErrorOfThePage();
    case Outcome::kWithoutResults:
        return Host::GameRequestAnswer::WithoutResults();
    case Outcome::kError:
        return Host::GameRequestAnswer::Failed(MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::ShareAnswer AnswerOf(const AnswerShareStep& step) {
    using Outcome = AnswerShareStep::Outcome;
    switch (step.outcome) {
    case Outcome::kCompleted:
        return Host::ShareAnswer::Completed(OptionalText(step.postID));
    case Outcome::kCancelled:
        return Host::ShareAnswer::Cancelled();
    case Outcome::kReturned:
        return Host::ShareAnswer::ReturnedToApp();
    case Outcome::kAppError:
        return Host::ShareAnswer::ErrorOfTheApp();
    case Outcome::kNotOpened:
        return Host::ShareAnswer::NotOpened();
    case Outcome::kError:
        return Host::ShareAnswer::Failed(MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::PhotoChangesOutcome AnswerOf(const FinishSavingStep& step) {
    return step.outcome == FinishSavingStep::Outcome::kSaved
               ? Host::PhotoChangesOutcome::Saved(OptionalText(step.asset))
               : Host::PhotoChangesOutcome::Failed(MakeError(step.error));
}

Host::ImageUploadAnswer AnswerOf(const AnswerImageUploadStep& step) {
    using Outcome = AnswerImageUploadStep::Outcome;
    switch (step.outcome) {
    case Outcome::kUploaded:
        return Host::ImageUploadAnswer::Uploaded(MakeNSString(step.photoID));
    case Outcome::kDialogNotOpened:
        return Host::ImageUploadAnswer::MediaDialogNotOpened(MakeNSString(step.photoID));
    case Outcome::kError:
        return Host::ImageUploadAnswer::Exactly(false, nil, MakeError(step.error));
    }
    __builtin_unreachable();
}

Host::VideoUploadAnswer AnswerOf(const AnswerVideoUploadStep& step) {
    using Outcome = AnswerVideoUploadStep::Outcome;
    switch (step.outcome) {
    case Outcome::kUploaded:
        return Host::VideoUploadAnswer::Uploaded(MakeNSString(step.videoID));
    case Outcome::kServerRefused:
        return Host::VideoUploadAnswer::RefusedByServer();
    case Outcome::kMalformed:
        return Host::VideoUploadAnswer::Malformed();
    case Outcome::kError:
        return Host::VideoUploadAnswer::Failed(MakeError(step.error));
    }
    __builtin_unreachable();
}

std::string Described(const FriendRequest& request) {
    return "request \"" + request.params.seqID + "\", type " + std::to_string(request.info.type) + ", observer " +
           std::to_string(request.observerID);
}

} // namespace

const char* ThreadName() {
    return [NSThread isMainThread] ? "the main thread" : "another thread";
}

bool FriendPlayer::Answer(const std::string& what, bool background, const std::string& missing,
                          const std::function<bool()>& answer) const {
    bool answered = false;
    const auto work = [&] {
        @autoreleasepool {
            mTranscript.Line("answer", what + " on " + ThreadName());
            answered = answer();
        }
    };
    if (background) {
        std::thread(work).join();
    } else {
        work();
    }
    if (!answered) {
        mTranscript.Line("error", missing);
    }
    return answered;
}

#pragma mark - The world

bool FriendPlayer::operator()(const PlayerStep& step) const {
    if (step.login == PlayerLogin::kNobody) {
        mTranscript.Line("world", "nobody is logged in to Facebook");
        Host::ReplaceCurrentAccessToken(nil);
        Host::ReplaceCurrentAuthenticationToken(nil);
        return true;
    }
    const bool isGaming = step.login == PlayerLogin::kGaming;
    mTranscript.Line("world", isGaming ? "the player has a gaming login" : "the player is logged in to Facebook");
    Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"access-token", @"user", @[ @"public_profile" ]));
    Host::ReplaceCurrentAuthenticationToken(
        Host::MakeAuthenticationToken(@"authentication-token", isGaming ? @"gaming" : @"facebook"));
    return true;
}

bool FriendPlayer::operator()(const ProfileStep& step) const {
    using Profile = Host::FacebookProfile;
    const auto use = [this](Profile profile, const char* name) {
        mTranscript.Line("world", std::string("Facebook's dialogs behave like ") + name);
        Host::SetFacebookProfile(profile);
        return true;
    };
    switch (step.profile) {
    case SdkProfile::k15_0:
        return use(Profile::k15_0, "SDK 15.0");
    case SdkProfile::k17_0:
        return use(Profile::k17_0, "SDK 17.0");
    case SdkProfile::k18_0:
        return use(Profile::k18_0, "SDK 18.0");
    case SdkProfile::k18_1:
        return use(Profile::k18_1, "SDK 18.1");
    case SdkProfile::kAsDocumented:
        return use(Profile::kAsDocumented, "Facebook's documents");
    }
    __builtin_unreachable();
}

bool FriendPlayer::operator()(const AppsStep& step) const {
    const auto set = [this](Host::InstalledApp app, const char* name, const std::optional<bool>& installed) {
        if (installed) {
            mTranscript.Line("world", std::string(name) + (*installed ? " is installed" : " is not installed"));
            Host::SetAppInstalled(app, *installed);
        }
    };
    set(Host::InstalledApp::kFacebook, "Facebook's app", step.facebook);
    set(Host::InstalledApp::kMessenger, "Messenger", step.messenger);
    return true;
}

bool FriendPlayer::operator()(const QueriesSchemesStep& step) const {
    std::string schemes;
    for (const std::string& scheme : step.schemes) {
        schemes += (schemes.empty() ? "" : ", ") + scheme;
    }
    mTranscript.Line("world", "the Info.plist lets the app ask for " + (schemes.empty() ? "no scheme" : schemes));
    Host::RegisterQueriesSchemes(TextList(step.schemes));
    return true;
}

bool FriendPlayer::operator()(const PhotoPermissionStep& step) const {
    mTranscript.Line("world", std::string("access to the photo library is ") + NameOf(step.permission));
    Host::SetPhotoAuthorization(StatusOf(step.permission));
    return true;
}

bool FriendPlayer::operator()(const AnswerPhotoPromptStep& step) const {
    return Answer(std::string("the user's answer about the photo library is \"") + NameOf(step.permission) + "\",",
                  step.background,
                  "nobody has asked for the photo library; put a \"share\" of a video before this answer",
                  [&step] { return Host::AnswerPhotoPrompt(StatusOf(step.permission)); });
}

#pragma mark - Requests

bool FriendPlayer::operator()(const SendMessageStep& step) const {
    VornBaseParams params = step.request.params;
    mTranscript.Line("call", "sendMessage: " + Described(step.request));
    [mPlugin sendMessage:&step.request.info params:&params observerID:step.request.observerID];
    mTranscript.Line("return", "sendMessage:");
    return true;
}

bool FriendPlayer::operator()(const ShareStep& step) const {
    VornBaseParams params = step.request.params;
    mTranscript.Line("call", "share: " + Described(step.request));
    [mPlugin share:&step.request.info params:&params observerID:step.request.observerID];
    mTranscript.Line("return", "share:");
    return true;
}

bool FriendPlayer::operator()(const AddFriendStep& step) const {
    VornBaseParams params = step.params;
    const VornFriendReqInfo info;
    mTranscript.Line("call", "addFriend: request \"" + params.seqID + "\", subChannel \"" + params.subChannel +
                                 "\", observer " + std::to_string(step.observerID));
    [mPlugin addFriend:&info params:&params observerID:step.observerID];
    mTranscript.Line("return", "addFriend:");
    return true;
}

bool FriendPlayer::operator()(const QueryFriendsStep& step) const {
    VornBaseParams params = step.params;
    mTranscript.Line("call", "queryFriends: request \"" + params.seqID + "\"");
    [mPlugin queryFriends:nullptr params:&params];
    mTranscript.Line("return", "queryFriends:");
    return true;
}

#pragma mark - What comes back

bool FriendPlayer::operator()(const AnswerFriendFinderStep& step) const {
    return Answer("Facebook ends the friend finder", step.background,
                  "no friend finder is open; put an \"add-friend\" of a gaming login before this answer",
                  [&step] { return Host::AnswerFriendFinder(AnswerOf(step)); });
}

bool FriendPlayer::operator()(const AnswerGameRequestStep& step) const {
    return Answer("Facebook ends the game request", step.background,
                  "no such game request is open; put a \"send-message\" of type 10003 before this answer",
                  [&step] { return Host::AnswerGameRequest(AnswerOf(step), step.dialog); });
}

bool FriendPlayer::operator()(const AnswerShareStep& step) const {
    return Answer("Facebook ends the dialog", step.background,
                  "no such dialog is open; put a \"share\" or a \"send-message\" before this answer",
                  [&step] { return Host::AnswerShare(AnswerOf(step), step.dialog); });
}

bool FriendPlayer::operator()(const FinishSavingStep& step) const {
    return Answer("the photo library ends its change", step.background,
                  "nothing is being saved; put a \"share\" of a video file before this answer",
                  [&step] { return Host::RunPhotoChanges(AnswerOf(step)); });
}

bool FriendPlayer::operator()(const AnswerImageUploadStep& step) const {
    return Answer("Facebook ends the upload of the image", step.background,
                  "no such image is being uploaded; put a \"share\" of an image with a gaming login before this answer",
                  [&step] { return Host::AnswerImageUpload(AnswerOf(step), step.upload); });
}

bool FriendPlayer::operator()(const UploadProgressStep& step) const {
    return Answer("Facebook tells that " + std::to_string(step.sent) + " of " + std::to_string(step.expected) +
                      " bytes are uploaded,",
                  step.background,
                  "no such video is being uploaded; put a \"share\" of a video with a gaming login before this step",
                  [&step] { return Host::FireVideoProgress(step.sent, step.sent, step.expected, step.upload); });
}

bool FriendPlayer::operator()(const AnswerVideoUploadStep& step) const {
    return Answer("Facebook ends the upload of the video", step.background,
                  "no such video is being uploaded, or its upload never ends; put a \"share\" of a video with a gaming "
                  "login before this answer",
                  [&step] { return Host::FinishVideoUpload(AnswerOf(step), step.upload); });
}

} // namespace Tarvik::Vorn::Simulator
