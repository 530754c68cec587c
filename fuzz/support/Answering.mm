#include "Answering.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "Photos/PhotoLibrary.h"
#include "VornText.h"

namespace Tarvik::Vorn::Fuzz {
namespace {

using namespace Host;

// Errors of Facebook's pages and apps reach the delegate in Facebook's documents only.
bool IsSilentAboutErrors() {
    return CurrentFacebookProfile() != FacebookProfile::kAsDocumented;
}

NSDictionary* TakeResults(FuzzedDataProvider& bytes) {
    NSMutableDictionary* const results = [NSMutableDictionary dictionary];
    for (int left = bytes.ConsumeIntegralInRange(0, 3); left > 0; --left) {
        NSString* const key = bytes.ConsumeBool() ? @"to" : TakeString(bytes);
        NSString* const value = TakeString(bytes);
        if (key != nil && value != nil) {
            [results setObject:bytes.ConsumeBool() ? static_cast<id>(@[ value ]) : value forKey:key];
        }
    }
    return bytes.ConsumeBool() ? results : nil;
}

bool AnswerOpenLogin(FuzzedDataProvider& bytes) {
    NSString* const tokenText = TakeString(bytes);
    FBSDKAccessToken* const token = MakeAccessToken(tokenText == nil ? @"token" : tokenText, @"user", @[]);
    const auto answer = [&] {
        switch (bytes.ConsumeIntegralInRange(0, 7)) {
        case 0:
            return LoginAnswer::Success(token);
        case 1:
            return LoginAnswer::LimitedLogin(MakeAuthenticationToken(@"id token", @"gaming"));
        case 2:
            return LoginAnswer::Cancelled();
        case 3:
            return LoginAnswer::NothingGranted();
        case 4:
            return LoginAnswer::ErrorMessage(TakeString(bytes));
        case 5:
            return LoginAnswer::BrowserNotOpened(TakeError(bytes));
        case 6:
            return LoginAnswer::Failed(TakeError(bytes));
        default:
            return LoginAnswer::Impossible(nil, TakeError(bytes));
        }
    };
    AnswerLogin(answer());
    return false;
}

bool AnswerOpenShare(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 5)) {
    case 0:
        AnswerShare(ShareAnswer::Completed(TakeString(bytes)));
        return false;
    case 1:
        AnswerShare(ShareAnswer::CompletedWith(TakeResults(bytes)));
        return false;
    case 2:
        AnswerShare(ShareAnswer::Cancelled());
        return false;
    case 3:
        AnswerShare(ShareAnswer::ErrorOfTheApp());
        return IsSilentAboutErrors();
    case 4:
        AnswerShare(ShareAnswer::NotOpened());
        return false;
    default:
        AnswerShare(ShareAnswer::Failed(TakeError(bytes)));
        return false;
    }
}

bool AnswerOpenGameRequest(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 6)) {
    case 0: {
        NSString* const recipient = TakeString(bytes);
        AnswerGameRequest(GameRequestAnswer::Sent(TakeString(bytes), recipient == nil ? nil : @[ recipient ]));
        return false;
    }
    case 1:
        AnswerGameRequest(GameRequestAnswer::CancelButton());
        return false;
    case 2:
        AnswerGameRequest(GameRequestAnswer::Closed());
        return false;
    case 3:
        AnswerGameRequest(GameRequestAnswer::ErrorOfThePage());
        return IsSilentAboutErrors();
    case 4:
        AnswerGameRequest(GameRequestAnswer::WithoutResults());
        return false;
    case 5:
        AnswerGameRequest(GameRequestAnswer::Failed(TakeError(bytes)));
        return false;
    default:
        AnswerGameRequest(GameRequestAnswer::Completed(TakeResults(bytes)));
        return false;
    }
}

bool AnswerOpenFriendFinder(FuzzedDataProvider& bytes) {
    const bool success = bytes.ConsumeBool();
    AnswerFriendFinder(bytes.ConsumeBool() ? FriendFinderAnswer::Closed()
                                           : FriendFinderAnswer::Exactly(success, TakeError(bytes)));
    return false;
}

bool AnswerOpenPrompt(FuzzedDataProvider& bytes) {
    AnswerPhotoPrompt(bytes.PickValueInArray({PHAuthorizationStatusAuthorized, PHAuthorizationStatusDenied,
                                              PHAuthorizationStatusRestricted, PHAuthorizationStatusLimited}));
    return false;
}

bool AnswerOpenChanges(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        RunPhotoChanges(PhotoChangesOutcome::Saved(TakeString(bytes)));
        return false;
    case 1:
        RunPhotoChanges(PhotoChangesOutcome::Failed(TakeError(bytes)));
        return false;
    case 2:
        RunPhotoChanges(PhotoChangesOutcome::SavedWithError(TakeError(bytes)));
        return false;
    default:
        RunPhotoChanges(PhotoChangesOutcome::FailedWithoutError());
        return false;
    }
}

// The plugin always asks for the media dialog, which has no page for an image without an ID.
bool AnswerOpenImageUpload(FuzzedDataProvider& bytes) {
    NSString* const photoID = TakeString(bytes);
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        AnswerImageUpload(ImageUploadAnswer::Uploaded(photoID));
        return photoID == nil;
    case 1:
        AnswerImageUpload(ImageUploadAnswer::MediaDialogNotOpened(@"1"));
        return false;
    case 2:
        AnswerImageUpload(ImageUploadAnswer::Failed(TakeError(bytes)));
        return false;
    default:
        AnswerImageUpload(ImageUploadAnswer::Exactly(bytes.ConsumeBool(), nil, TakeError(bytes)));
        return false;
    }
}

bool AnswerOpenVideoUpload(FuzzedDataProvider& bytes) {
    FireVideoProgress(1, bytes.ConsumeIntegral<int64_t>(), bytes.ConsumeIntegral<int64_t>());
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        FinishVideoUpload(VideoUploadAnswer::Uploaded(TakeString(bytes)));
        return false;
    case 1:
        FinishVideoUpload(VideoUploadAnswer::RefusedByServer());
        return false;
    case 2:
        FinishVideoUpload(VideoUploadAnswer::Failed(TakeError(bytes)));
        return false;
    default:
        FinishVideoUpload(VideoUploadAnswer::Exactly(bytes.ConsumeBool(), nil, TakeError(bytes)));
        return false;
    }
}

} // namespace

std::string TakeText(FuzzedDataProvider& bytes, size_t longest) {
    return bytes.ConsumeRandomLengthString(longest);
}

NSString* TakeString(FuzzedDataProvider& bytes) {
    const std::string text = TakeText(bytes);
    return bytes.ConsumeBool() ? MakeNSString(text) : nil;
}

NSError* TakeError(FuzzedDataProvider& bytes) {
    NSString* const description = TakeString(bytes);
    NSDictionary* const userInfo = description == nil ? nil : @{NSLocalizedDescriptionKey : description};
    NSString* const domain = TakeString(bytes);
    const auto code = bytes.ConsumeIntegral<NSInteger>();
    return domain == nil ? nil : [NSError errorWithDomain:domain code:code userInfo:userInfo];
}

size_t OpenThings() {
    return [FBSDKLoginManager pendingLoginCount] + OpenShareDialogCount() + OpenGameRequestCount() +
           OpenFriendFinderCount() + PendingPhotoPromptCount() + PendingPhotoChangesCount() + OpenImageUploadCount() +
           OpenVideoUploadCount();
}

bool AnswerSomething(FuzzedDataProvider& bytes) {
    if ([FBSDKLoginManager pendingLoginCount] > 0) {
        return AnswerOpenLogin(bytes);
    }
    if (OpenShareDialogCount() > 0) {
        return AnswerOpenShare(bytes);
    }
    if (OpenGameRequestCount() > 0) {
        return AnswerOpenGameRequest(bytes);
    }
    if (OpenFriendFinderCount() > 0) {
        return AnswerOpenFriendFinder(bytes);
    }
    if (PendingPhotoPromptCount() > 0) {
        return AnswerOpenPrompt(bytes);
    }
    if (PendingPhotoChangesCount() > 0) {
        return AnswerOpenChanges(bytes);
    }
    if (OpenImageUploadCount() > 0) {
        return AnswerOpenImageUpload(bytes);
    }
    return OpenVideoUploadCount() > 0 && AnswerOpenVideoUpload(bytes);
}

} // namespace Tarvik::Vorn::Fuzz
