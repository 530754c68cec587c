#include "FBSDKGamingServicesKit/GamingUploads.h"

#include "CallText.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "FacebookProfile.h"
#include "FatalError.h"
#include "HeldThings.h"
#include "History.h"
#include "PlatformCalls.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "FBSDKGamingVideoUploader";

using Completion = void (^)(BOOL success, NSDictionary<NSString*, id>* result, NSError* error);
using ProgressHandler = void (^)(int64_t bytesSent, int64_t totalBytesSent, int64_t totalBytesExpectedToSend);

struct OpenVideoUpload {
    RetainPtr<Completion> completion;           // May be nil.
    RetainPtr<ProgressHandler> progressHandler; // May be nil.
    RetainPtr<FBSDKAccessToken*> token;         // The one that was current at the start.
    bool canFinish;                             // Depends on the profile that held at the start.
    bool hasBegun = false;                      // Progress has been told.
};

struct Uploads {
    std::mutex mutex;
    std::vector<OpenVideoUpload> open; // In the order of their start.
    std::vector<VideoUpload> seen;
};

// Never destroyed: an upload may be open when the process ends.
Uploads& TheUploads() {
    static auto& uploads = *new Uploads;
    return uploads;
}

std::optional<OpenVideoUpload> TakeUploadToFinish(size_t index, Closing closing) {
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    if (index < uploads.open.size() && !uploads.open[index].canFinish) {
        return std::nullopt;
    }
    return TakeHeld(uploads.open, index, closing);
}

bool HasContents(NSURL* url) {
    if (![url isFileURL]) {
        return false;
    }
    const std::string path = PlainText([url path]);
    std::error_code unknown;
    if (!std::filesystem::is_regular_file(path, unknown)) { // A pipe would be waited for.
        return false;
    }
    std::ifstream file(path, std::ios::binary);
    return file.peek() != std::ifstream::traits_type::eof();
}

// Why the configuration's video cannot be sent with this token, or nil.
NSError* Refusal(FBSDKGamingVideoUploaderConfiguration* configuration, FBSDKAccessToken* token) {
    if (token == nil) {
        // Releases before 18.1.0 name images here.
        return MakeSDKError(FBSDKErrorDomain, FBSDKErrorAccessTokenRequired,
                            CurrentFacebookProfile() < FacebookProfile::k18_1
                                ? @"A valid access token is required to upload Images"
                                : @"A valid access token is required to upload Videos");
    }
    if (!HasContents([configuration videoURL])) {
        return MakeSDKError(FBSDKErrorDomain, FBSDKErrorInvalidArgument, @"Invalid value for videoURL");
    }
    return nil;
}

} // namespace

@implementation FBSDKGamingVideoUploader

- (instancetype)init {
    return [super init];
}

+ (void)uploadVideoWithConfiguration:(FBSDKGamingVideoUploaderConfiguration*)configuration
                          completion:(void (^)(BOOL success, NSDictionary<NSString*, id>* result,
                                               NSError* error))completion
                  andProgressHandler:(void (^)(int64_t bytesSent, int64_t totalBytesSent,
                                               int64_t totalBytesExpectedToSend))progressHandler {
    if (configuration == nil) {
        FatalError("+[FBSDKGamingVideoUploader uploadVideoWithConfiguration:completion:andProgressHandler:] was called "
                   "with nil as the configuration");
    }
    NSString* const url = [[configuration videoURL] absoluteString];
    NSString* const caption = [configuration caption];
    PlatformCalls::Record(
        kClassName, "uploadVideoWithConfiguration:completion:andProgressHandler:",
        JoinArguments({"{\"videoURL\":" + QuotedText(url) + ",\"caption\":" + QuotedText(caption) + '}',
                       completion == nil ? "nil" : "block", progressHandler == nil ? "nil" : "block"}));

    FBSDKAccessToken* const token = [FBSDKAccessToken currentAccessToken];
    NSError* const refusal = Refusal(configuration, token);
    if (refusal == nil) {
        RequireClientToken();
    }
    VideoUpload upload;
    upload.videoURL = PlainText(url);
    if (caption != nil) {
        upload.caption = PlainText(caption);
    }
    upload.started = refusal == nil;
    OpenVideoUpload open{AdoptNS<Completion>([completion copy]), AdoptNS<ProgressHandler>([progressHandler copy]),
                         RetainPtr(token), CurrentFacebookProfile() != FacebookProfile::k15_0};
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
        TellOpening(Opening::kVideoUpload);
    } else if (completion != nil) {
        completion(NO, nil, refusal);
    }
}

@end

namespace Tarvik::Vorn::Host {

VideoUploadAnswer VideoUploadAnswer::Uploaded(NSString* videoID) {
    VideoUploadAnswer answer = Exactly(true, @{@"video_id" : videoID == nil ? @"" : videoID}, nil);
    answer.mNeedsValidToken = true;
    return answer;
}

VideoUploadAnswer VideoUploadAnswer::RefusedByServer() {
    return Failed(MakeSDKError(FBSDKErrorDomain, FBSDKErrorUnknown, nil));
}

VideoUploadAnswer VideoUploadAnswer::Malformed() {
    return Failed(MakeSDKError(@"com.facebook.sdk.gaming.videoupload", 0, nil));
}

VideoUploadAnswer VideoUploadAnswer::Failed(NSError* error) {
    return Exactly(false, nil, error);
}

VideoUploadAnswer VideoUploadAnswer::Exactly(bool success, NSDictionary* result, NSError* error) {
    VideoUploadAnswer answer;
    answer.mSuccess = success;
    answer.mResult = RetainPtr(result);
    answer.mError = RetainPtr(error);
    return answer;
}

std::vector<VideoUpload> VideoUploads() {
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    return uploads.seen;
}

size_t OpenVideoUploadCount() {
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    return uploads.open.size();
}

bool FireVideoProgress(int64_t bytes, int64_t sent, int64_t expected, size_t index) {
    @autoreleasepool {
        RetainPtr<ProgressHandler> handler;
        {
            Uploads& uploads = TheUploads();
            const std::lock_guard lock(uploads.mutex);
            if (index >= uploads.open.size()) {
                return false;
            }
            OpenVideoUpload& upload = uploads.open[index];
            if (!upload.canFinish && (upload.hasBegun || sent != 0)) {
                return false;
            }
            upload.hasBegun = true;
            handler = upload.progressHandler;
        }
        if (handler) {
            handler.get()(bytes, sent, expected);
        }
        return true;
    }
}

bool FinishVideoUpload(const VideoUploadAnswer& givenAnswer, size_t index, Closing closing) {
    @autoreleasepool {
        const std::optional<OpenVideoUpload> upload = TakeUploadToFinish(index, closing);
        if (!upload) {
            return false;
        }
        const bool isRefusedByServer = givenAnswer.mNeedsValidToken && [upload->token.get() isExpired];
        const VideoUploadAnswer answer =
            isRefusedByServer ? VideoUploadAnswer::Failed(MakeExpiredTokenError()) : givenAnswer;
        if (upload->completion) {
            upload->completion.get()(answer.mSuccess, answer.mResult.get(), answer.mError.get());
        }
        return true;
    }
}

void ResetVideoUploads() {
    std::vector<OpenVideoUpload> forgotten;
    Uploads& uploads = TheUploads();
    const std::lock_guard lock(uploads.mutex);
    std::swap(uploads.open, forgotten);
    uploads.seen = {};
    // Released after the lock: that may run code of the caller's.
}

} // namespace Tarvik::Vorn::Host
