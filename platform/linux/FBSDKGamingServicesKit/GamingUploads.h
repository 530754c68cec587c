// What a test or the simulator sees and decides of gaming uploads.
//
// Each upload that could start is held, together with its blocks, until AnswerImageUpload or FinishVideoUpload ends it on
// the thread of its caller. An upload without a current access token, of an image without pixels or of a video that is
// no readable file with something in it never starts: its completion gets the error inside the call. Without a client
// token (FacebookClientToken in the Info.plist) the call raises InvalidOperationException, and nothing starts either.
//
// Whether the access token that was current at the start has expired is found out by the server: an upload that would
// have succeeded fails then.
//
// A nil configuration ends the process.
#pragma once

#include "HostExport.h"
#include "Openings.h"
#include "VornRetainPtr.h"

#import <Foundation/Foundation.h>
#import <UIKit/UIKit.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Host {

#pragma mark - Images

// One call of uploadImageWithConfiguration:andResultCompletion:.
struct ImageUpload {
    RetainPtr<UIImage*> image;          // May be nil.
    std::optional<std::string> caption; // Of the configuration.
    bool shouldLaunchMediaDialog = false;
    bool started = false;    // False when the upload was refused.
    std::string sentCaption; // What the server gets; empty when the upload was refused.
};

// Every image upload since the last reset, in order. Any thread.
VORN_HOST_EXPORT std::vector<ImageUpload> ImageUploads();

// How many image uploads wait for their end. Any thread.
VORN_HOST_EXPORT size_t OpenImageUploadCount();

// How an image upload ends. A value; any thread.
class VORN_HOST_EXPORT ImageUploadAnswer {
public:
    // The server took the image: YES and a dictionary with "id". Where the upload asked for the media dialog, the user
    // has come back from it as well. An answer of the server without an ID (nil) leaves that dialog without its page:
    // the upload ends and its completion is never called; without the dialog it completes with an empty dictionary.
    // With an expired token this and MediaDialogNotOpened end as Failed does, with the server's error as the cause.
    static ImageUploadAnswer Uploaded(NSString* photoID);

    // The server took the image, but the media dialog could not be opened: NO, Core 13. An upload that did not ask for
    // the dialog ends as with Uploaded.
    static ImageUploadAnswer MediaDialogNotOpened(NSString* photoID);

    // The upload failed: NO, Core 8, with the cause under NSUnderlyingErrorKey unless it is nil.
    static ImageUploadAnswer Failed(NSError* cause);

    // Exactly these arguments, also where the SDK would never pass them.
    static ImageUploadAnswer Exactly(bool success, NSDictionary* result, NSError* error);

private:
    friend VORN_HOST_EXPORT bool AnswerImageUpload(const ImageUploadAnswer& answer, size_t index, Closing closing);

    enum class Kind { kUploaded, kMediaDialogNotOpened, kExactly };

    Kind mKind = Kind::kUploaded;
    bool mSuccess = false;
    RetainPtr<NSDictionary*> mResult;
    RetainPtr<NSError*> mError;
};

// Ends an image upload, the one that has waited longest for index 0: calls its completion on this thread. Returns false,
// and does nothing, when there is no such upload. Any thread; an exception that the completion throws passes through.
VORN_HOST_EXPORT bool AnswerImageUpload(const ImageUploadAnswer& answer, size_t index = 0,
                                        Closing closing = Closing::kCloses);

// Forgets all image uploads; their completions are released uncalled.
VORN_HOST_EXPORT void ResetImageUploads();

#pragma mark - Videos

// One call of uploadVideoWithConfiguration:completion:andProgressHandler:.
struct VideoUpload {
    std::string videoURL;               // The absolute text of the URL.
    std::optional<std::string> caption; // Of the configuration. It is not sent.
    bool started = false;               // False when the upload was refused.
};

// Every video upload since the last reset, in order. Any thread.
VORN_HOST_EXPORT std::vector<VideoUpload> VideoUploads();

// How many video uploads wait for their end. Any thread.
VORN_HOST_EXPORT size_t OpenVideoUploadCount();

// Calls the progress handler of an open video upload, if it has one, with exactly these numbers on this thread: bytes
// since the call before, bytes so far, bytes in all. The SDK starts with 0 sent, and calls on a background thread for
// every chunk and on the main thread when all is sent, just before the completion; nothing of that happens by itself.
// Returns false, and does nothing, when there is no such upload; also with FacebookProfile::k15_0, unless it is the
// upload's first progress and nothing has been sent by then (bytes so far 0). Any thread; an exception that the handler
// throws passes through.
VORN_HOST_EXPORT bool FireVideoProgress(int64_t bytes, int64_t sent, int64_t expected, size_t index = 0);

// How a video upload ends. A value; any thread.
class VORN_HOST_EXPORT VideoUploadAnswer {
public:
    // YES and a dictionary with "video_id", which is empty for nil. With an expired token: NO and the server's error,
    // Core 8.
    static VideoUploadAnswer Uploaded(NSString* videoID);

    // The server says that it did not succeed: NO, Core 3.
    static VideoUploadAnswer RefusedByServer();

    // The server's answer makes no sense: NO, code 0 in the domain com.facebook.sdk.gaming.videoupload.
    static VideoUploadAnswer Malformed();

    // An error of the network or of the server, as it is: NO and this error.
    static VideoUploadAnswer Failed(NSError* error);

    // Exactly these arguments, also where the SDK would never pass them.
    static VideoUploadAnswer Exactly(bool success, NSDictionary* result, NSError* error);

private:
    friend VORN_HOST_EXPORT bool FinishVideoUpload(const VideoUploadAnswer& answer, size_t index, Closing closing);

    bool mNeedsValidToken = false;
    bool mSuccess = false;
    RetainPtr<NSDictionary*> mResult;
    RetainPtr<NSError*> mError;
};

// Ends a video upload, the one that has waited longest for index 0: calls its completion on this thread. Returns false,
// and does nothing, when there is no such upload, and for one that began with FacebookProfile::k15_0: that one stays
// open until the reset. Any thread; an exception that the completion throws passes through.
VORN_HOST_EXPORT bool FinishVideoUpload(const VideoUploadAnswer& answer, size_t index = 0,
                                        Closing closing = Closing::kCloses);

// Forgets all video uploads; their blocks are released uncalled.
VORN_HOST_EXPORT void ResetVideoUploads();

} // namespace Tarvik::Vorn::Host
