#include "FBSDKGamingServicesKit/GamingUploads.h"

#include "CallText.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "FatalError.h"
#include "HeldThings.h"
#include "History.h"
#include "PlatformCalls.h"
#include "UIKit/UIImage+Control.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <mutex>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "FBSDKGamingImageUploader";

using Completion = void (^)(BOOL success, NSDictionary<NSString*, id>* result, NSError* error);

struct OpenImageUpload {
    RetainPtr<Completion> completion;   // May be nil.
    RetainPtr<FBSDKAccessToken*> token; // The one that was current at the start.
    bool shouldLaunchMediaDialog;
};

struct Uploads {
    std::mutex mutex;
    std::vector<OpenImageUpload> open; // In the order of their start.
    std::vector<ImageUpload> seen;
};

// Never destroyed: an upload may be open when the process ends.
Uploads& TheUploads() {
    static auto& uploads = *new Uploads;
    return uploads;
}

std::optional<OpenImageUpload> TakeUpload(size_t index, Closing closing) {
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    return TakeHeld(uploads.open, index, closing);
}

// Why the configuration's image cannot be sent with this token, or nil.
NSError* Refusal(FBSDKGamingImageUploaderConfiguration* configuration, FBSDKAccessToken* token) {
    if (token == nil) {
        return MakeSDKError(FBSDKErrorDomain, FBSDKErrorAccessTokenRequired,
                            @"A valid access token is required to upload Images");
    }
    if (!HasPixels([configuration image])) {
        return MakeSDKError(FBSDKErrorDomain, FBSDKErrorInvalidArgument, @"Value for image is required.");
    }
    return nil;
}

NSDictionary* ResultFor(NSString* photoID) {
    return photoID == nil ? @{} : @{@"id" : photoID};
}

} // namespace

@implementation FBSDKGamingImageUploader

- (instancetype)init {
    return [super init];
}

+ (void)uploadImageWithConfiguration:(FBSDKGamingImageUploaderConfiguration*)configuration
                 andResultCompletion:
                     (void (^)(BOOL success, NSDictionary<NSString*, id>* result, NSError* error))completion {
    if (configuration == nil) {
        FatalError("+[FBSDKGamingImageUploader uploadImageWithConfiguration:andResultCompletion:] was called with nil "
                   "as the configuration");
    }
    NSString* const caption = [configuration caption];
    const BOOL shouldLaunchMediaDialog = [configuration shouldLaunchMediaDialog];
    PlatformCalls::Record(
        kClassName, "uploadImageWithConfiguration:andResultCompletion:",
        JoinArguments({"{\"image\":" + ObjectText([configuration image]) + ",\"caption\":" + QuotedText(caption) +
                           ",\"shouldLaunchMediaDialog\":" + (shouldLaunchMediaDialog ? "YES" : "NO") + '}',
                       completion == nil ? "nil" : "block"}));

    FBSDKAccessToken* const token = [FBSDKAccessToken currentAccessToken];
    NSError* const refusal = Refusal(configuration, token);
    if (refusal == nil) {
        RequireClientToken();
    }
    ImageUpload upload;
    upload.image = RetainPtr([configuration image]);
    if (caption != nil) {
        upload.caption = PlainText(caption);
    }
    upload.shouldLaunchMediaDialog = shouldLaunchMediaDialog;
    upload.started = refusal == nil;
    if (upload.started) {
        upload.sentCaption = PlainText(caption);
    }
    OpenImageUpload open{AdoptNS<Completion>([completion copy]), RetainPtr(token), upload.shouldLaunchMediaDialog};
    {
        Uploads& uploads = TheUploads();
        const std::lock_guard lock(uploads.mutex);
        if (upload.started) {
            uploads.open.push_back(std::move(open));
        }
        if (IsHistoryKept()) {
            uploads.seen.push_back(std::move(upload));
        }
    }
    if (refusal == nil) {
        TellOpening(Opening::kImageUpload);
    } else if (completion != nil) {
        completion(NO, nil, refusal);
    }
}

@end

namespace Tarvik::Vorn::Host {

ImageUploadAnswer ImageUploadAnswer::Uploaded(NSString* photoID) {
    ImageUploadAnswer answer;
    answer.mKind = Kind::kUploaded;
    answer.mResult = RetainPtr(ResultFor(photoID));
    return answer;
}

ImageUploadAnswer ImageUploadAnswer::MediaDialogNotOpened(NSString* photoID) {
    ImageUploadAnswer answer = Uploaded(photoID);
    answer.mKind = Kind::kMediaDialogNotOpened;
    return answer;
}

ImageUploadAnswer ImageUploadAnswer::Failed(NSError* cause) {
    NSDictionary* const userInfo = cause == nil ? @{} : @{NSUnderlyingErrorKey : cause};
    return Exactly(false, nil,
                   [NSError errorWithDomain:FBSDKErrorDomain code:FBSDKErrorGraphRequestGraphAPI userInfo:userInfo]);
}

ImageUploadAnswer ImageUploadAnswer::Exactly(bool success, NSDictionary* result, NSError* error) {
    ImageUploadAnswer answer;
    answer.mKind = Kind::kExactly;
    answer.mSuccess = success;
    answer.mResult = RetainPtr(result);
    answer.mError = RetainPtr(error);
    return answer;
}

std::vector<ImageUpload> ImageUploads() {
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    return uploads.seen;
}

size_t OpenImageUploadCount() {
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    return uploads.open.size();
}

bool AnswerImageUpload(const ImageUploadAnswer& givenAnswer, size_t index, Closing closing) {
    @autoreleasepool {
        const std::optional<OpenImageUpload> upload = TakeUpload(index, closing);
        if (!upload) {
            return false;
        }
        const bool isRefusedByServer =
            givenAnswer.mKind != ImageUploadAnswer::Kind::kExactly && [upload->token.get() isExpired];
        const ImageUploadAnswer answer =
            isRefusedByServer ? ImageUploadAnswer::Failed(MakeExpiredTokenError()) : givenAnswer;
        bool success = answer.mSuccess;
        NSDictionary* result = answer.mResult.get();
        NSError* error = answer.mError.get();
        if (answer.mKind != ImageUploadAnswer::Kind::kExactly) {
            success = true;
            if (upload->shouldLaunchMediaDialog) {
                if ([result objectForKey:@"id"] == nil) {
                    return true;
                }
                if (answer.mKind == ImageUploadAnswer::Kind::kMediaDialogNotOpened) {
                    success = false;
                    result = nil;
                    error = MakeSDKError(FBSDKErrorDomain, FBSDKErrorBridgeAPIInterruption, nil);
                }
            }
        }
        if (upload->completion) {
            upload->completion.get()(success, result, error);
        }
        return true;
    }
}

void ResetImageUploads() {
    std::vector<OpenImageUpload> forgottenOpen;
    std::vector<ImageUpload> forgottenSeen;
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    std::swap(uploads.open, forgottenOpen);
    std::swap(uploads.seen, forgottenSeen);
    // Released after the lock: that may run code of the caller's.
}

} // namespace Tarvik::Vorn::Host
