// Gaming uploads of images and videos: what is refused at once, how an upload goes on, and how it ends.
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FacebookPlatformTest.h"
#include "FacebookProfile.h"

#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace Tarvik::Vorn::Test {
namespace {

using Host::AnswerImageUpload;
using Host::FacebookProfile;
using Host::FinishVideoUpload;
using Host::FireVideoProgress;
using Host::ImageUploadAnswer;
using Host::ImageUploads;
using Host::OpenImageUploadCount;
using Host::OpenVideoUploadCount;
using Host::PlatformCall;
using Host::VideoUploadAnswer;
using Host::VideoUploads;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StrNe;

using Completion = void (^)(BOOL success, NSDictionary<NSString*, id>* result, NSError* error);
using ProgressHandler = void (^)(int64_t bytesSent, int64_t totalBytesSent, int64_t totalBytesExpectedToSend);

// What an upload's completion was called with. Lives longer than the completion.
struct UploadOutcome {
    int calls = 0;
    bool success = false;
    RetainPtr<NSDictionary*> result;
    RetainPtr<NSError*> error;
    std::thread::id thread;

    Completion Handler() {
        const Completion handler = ^(BOOL theSuccess, NSDictionary<NSString*, id>* theResult, NSError* theError) {
            ++calls;
            success = theSuccess;
            result = RetainPtr<NSDictionary*>(theResult);
            error = RetainPtr(theError);
            thread = std::this_thread::get_id();
        };
        return [[handler copy] autorelease];
    }
};

// "YES {key=value} domain code", with nil for what is not there; all calls are counted.
std::string Summary(const UploadOutcome& outcome) {
    std::string text = std::to_string(outcome.calls) + (outcome.success ? " YES " : " NO ");
    NSDictionary* const result = outcome.result.get();
    if (result == nil) {
        text += "nil";
    } else {
        text += '{';
        for (NSString* key in result) {
            text += Text(key) + '=' + Text([result objectForKey:key]);
        }
        text += '}';
    }
    NSError* const error = outcome.error.get();
    return text + (error == nil ? " nil" : ' ' + Text([error domain]) + ' ' + std::to_string([error code]));
}

std::string DeveloperMessage(const UploadOutcome& outcome) {
    return Text([[outcome.error.get() userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]);
}

// What progress was told, as "bytes/sent/expected". Lives longer than the handler.
struct ProgressRecord {
    std::vector<std::string> calls;
    std::thread::id thread;

    ProgressHandler Handler() {
        const ProgressHandler handler = ^(int64_t bytes, int64_t sent, int64_t expected) {
            calls.push_back(std::to_string(bytes) + '/' + std::to_string(sent) + '/' + std::to_string(expected));
            thread = std::this_thread::get_id();
        };
        return [[handler copy] autorelease];
    }
};

class FacebookUpload : public FacebookPlatformTest {
protected:
    FacebookUpload() { LogIn(); }

    static void LogIn() { Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[])); }
    static void LogInWithExpiredToken() {
        Host::ReplaceCurrentAccessToken(Host::MakeExpiredAccessToken(@"token", @"user", @[]));
    }
    static void LogOut() { Host::ReplaceCurrentAccessToken(nil); }
};

#pragma mark - Images

FBSDKGamingImageUploaderConfiguration* ImageConfiguration(UIImage* image, NSString* caption, BOOL mediaDialog) {
    return [[[FBSDKGamingImageUploaderConfiguration alloc] initWithImage:image
                                                                 caption:caption
                                                 shouldLaunchMediaDialog:mediaDialog] autorelease];
}

void UploadConfiguredImage(FBSDKGamingImageUploaderConfiguration* configuration, Completion completion) {
    [FBSDKGamingImageUploader uploadImageWithConfiguration:configuration andResultCompletion:completion];
}

void UploadImage(UIImage* image, NSString* caption, BOOL mediaDialog, Completion completion) {
    UploadConfiguredImage(ImageConfiguration(image, caption, mediaDialog), completion);
}

class FacebookImageUpload : public FacebookUpload {
protected:
    static UploadOutcome EndedWith(const ImageUploadAnswer& answer, BOOL mediaDialog = NO) {
        UploadOutcome outcome;
        UploadImage(OnePixel(), nil, mediaDialog, outcome.Handler());
        EXPECT_TRUE(AnswerImageUpload(answer));
        EXPECT_EQ(OpenImageUploadCount(), 0u);
        return outcome;
    }
};

TEST_F(FacebookImageUpload, ConfigurationHoldsWhatItIsMadeOf) {
    UIImage* const image = OnePixel();
    NSMutableString* const caption = [NSMutableString stringWithString:@"before"];

    FBSDKGamingImageUploaderConfiguration* const configuration = ImageConfiguration(image, caption, YES);
    [caption setString:@"after"];

    EXPECT_EQ([configuration image], image);
    EXPECT_EQ(Text([configuration caption]), "before");
    EXPECT_TRUE([configuration shouldLaunchMediaDialog]);
    EXPECT_EQ([ImageConfiguration(image, nil, NO) caption], nil);
    EXPECT_FALSE([ImageConfiguration(image, nil, NO) shouldLaunchMediaDialog]);
}

TEST_F(FacebookImageUpload, WaitsForItsAnswer) {
    UploadOutcome outcome;

    UploadImage(OnePixel(), @"caption", NO, outcome.Handler());

    EXPECT_EQ(OpenImageUploadCount(), 1u);
    EXPECT_EQ(outcome.calls, 0);
}

TEST_F(FacebookImageUpload, IsSeenWithItsImageAndCaption) {
    UIImage* const image = OnePixel();

    UploadImage(image, @"caption", YES, nil);
    UploadImage(image, nil, NO, nil);

    ASSERT_EQ(ImageUploads().size(), 2u);
    EXPECT_EQ(ImageUploads()[0].image.get(), image);
    EXPECT_EQ(ImageUploads()[0].caption, "caption");
    EXPECT_EQ(ImageUploads()[0].sentCaption, "caption");
    EXPECT_TRUE(ImageUploads()[0].shouldLaunchMediaDialog);
    EXPECT_TRUE(ImageUploads()[0].started);
    EXPECT_EQ(ImageUploads()[1].caption, std::nullopt);
    EXPECT_EQ(ImageUploads()[1].sentCaption, "");
    EXPECT_FALSE(ImageUploads()[1].shouldLaunchMediaDialog);
}

TEST_F(FacebookImageUpload, WithoutAnAccessTokenEndsWithCore10BeforeTheCallReturns) {
    LogOut();
    UploadOutcome outcome;

    UploadImage(OnePixel(), @"caption", NO, outcome.Handler());

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 10");
    EXPECT_THAT(DeveloperMessage(outcome), StrNe("(nil)"));
    EXPECT_EQ(OpenImageUploadCount(), 0u);
    ASSERT_EQ(ImageUploads().size(), 1u);
    EXPECT_FALSE(ImageUploads()[0].started);
    EXPECT_EQ(ImageUploads()[0].caption, "caption");
    EXPECT_EQ(ImageUploads()[0].sentCaption, "");
}

TEST_F(FacebookImageUpload, WithoutPixelsEndsWithCore2BeforeTheCallReturns) {
    UploadOutcome outcome;

    UploadImage([[[UIImage alloc] init] autorelease], nil, NO, outcome.Handler());

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 2");
    EXPECT_THAT(DeveloperMessage(outcome), StrNe("(nil)"));
    EXPECT_EQ(OpenImageUploadCount(), 0u);
}

TEST_F(FacebookImageUpload, WithoutAnImageEndsWithCore2) {
    UploadOutcome outcome;

    UploadImage(nil, nil, NO, outcome.Handler());

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 2");
    EXPECT_EQ(ImageUploads().at(0).image.get(), nil);
}

TEST_F(FacebookImageUpload, TheAccessTokenIsLookedAtBeforeTheImage) {
    LogOut();
    UploadOutcome outcome;

    UploadImage(nil, nil, NO, outcome.Handler());

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 10");
}

TEST_F(FacebookImageUpload, ARefusedOneIsToldOnTheCallingThread) {
    UploadOutcome outcome;
    std::thread::id caller;

    OnAnotherThread([&] {
        caller = std::this_thread::get_id();
        UploadImage(nil, nil, NO, outcome.Handler());
    });

    EXPECT_EQ(outcome.thread, caller);
}

TEST_F(FacebookImageUpload, ARefusedOneWithoutACompletionIsToldNobody) {
    UploadImage(nil, nil, NO, nil);

    EXPECT_EQ(OpenImageUploadCount(), 0u);
}

TEST_F(FacebookImageUpload, UploadedHasTheID) {
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Uploaded(@"12"))), "1 YES {id=12} nil");
}

TEST_F(FacebookImageUpload, UploadedWithTheMediaDialogHasTheIDToo) {
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Uploaded(@"12"), YES)), "1 YES {id=12} nil");
}

TEST_F(FacebookImageUpload, UploadedWithoutAnIDHasAnEmptyDictionary) {
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Uploaded(nil))), "1 YES {} nil");
}

TEST_F(FacebookImageUpload, TheMediaDialogWithoutAnIDTellsNobody) {
    EXPECT_EQ(EndedWith(ImageUploadAnswer::Uploaded(nil), YES).calls, 0);
    EXPECT_EQ(EndedWith(ImageUploadAnswer::MediaDialogNotOpened(nil), YES).calls, 0);
}

TEST_F(FacebookImageUpload, AMediaDialogThatCannotBeOpenedIsCore13) {
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::MediaDialogNotOpened(@"12"), YES)),
              "1 NO nil com.facebook.sdk.core 13");
}

TEST_F(FacebookImageUpload, WithoutTheMediaDialogItNeedNotOpen) {
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::MediaDialogNotOpened(@"12"), NO)), "1 YES {id=12} nil");
}

TEST_F(FacebookImageUpload, FailedIsCore8WithTheCause) {
    NSError* const cause = Host::MakeError(@"any", 7, nil);

    for (const BOOL mediaDialog : {static_cast<BOOL>(NO), static_cast<BOOL>(YES)}) {
        const UploadOutcome outcome = EndedWith(ImageUploadAnswer::Failed(cause), mediaDialog);

        EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 8");
        EXPECT_EQ([[outcome.error.get() userInfo] objectForKey:NSUnderlyingErrorKey], cause);
    }
}

TEST_F(FacebookImageUpload, FailedWithoutACauseHasNone) {
    const UploadOutcome outcome = EndedWith(ImageUploadAnswer::Failed(nil));

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 8");
    EXPECT_EQ([[outcome.error.get() userInfo] count], 0u);
}

TEST_F(FacebookImageUpload, CanEndWithAnyArguments) {
    NSError* const error = Host::MakeError(@"any", 7, nil);

    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Exactly(true, nil, error), YES)), "1 YES nil any 7");
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Exactly(false, @{@"x" : @"y"}, nil), YES)), "1 NO {x=y} nil");
}

TEST_F(FacebookImageUpload, WithAnExpiredTokenStartsAndEndsWithTheServersErrorUnderCore8) {
    LogInWithExpiredToken();
    UploadOutcome outcome;

    UploadImage(OnePixel(), nil, NO, outcome.Handler());
    EXPECT_EQ(outcome.calls, 0);
    EXPECT_TRUE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"photo")));

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 8");
    NSError* const cause = [[outcome.error.get() userInfo] objectForKey:NSUnderlyingErrorKey];
    EXPECT_EQ([cause code], FBSDKErrorGraphRequestGraphAPI);
    EXPECT_THAT(Text([[cause userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]), ::testing::HasSubstr("expired"));
}

TEST_F(FacebookImageUpload, WithAnExpiredTokenDoesNotComeToTheMediaDialog) {
    LogInWithExpiredToken();

    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Uploaded(nil), YES)), "1 NO nil com.facebook.sdk.core 8");
    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::MediaDialogNotOpened(@"photo"), YES)),
              "1 NO nil com.facebook.sdk.core 8");
}

TEST_F(FacebookImageUpload, WithAnExpiredTokenStillEndsWithExactArguments) {
    LogInWithExpiredToken();

    EXPECT_EQ(Summary(EndedWith(ImageUploadAnswer::Exactly(true, nil, nil))), "1 YES nil nil");
}

TEST_F(FacebookImageUpload, TheTokenOfItsStartCounts) {
    LogInWithExpiredToken();
    UploadOutcome outcome;
    UploadImage(OnePixel(), nil, NO, outcome.Handler());

    LogIn();
    AnswerImageUpload(ImageUploadAnswer::Uploaded(@"photo"));

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 8");
}

TEST_F(FacebookImageUpload, WithoutAClientTokenRaisesAndNothingStarts) {
    Host::SetInfoValue(@"FacebookClientToken", nil);
    UploadOutcome outcome;

    EXPECT_EQ(RaisedBy([&] { UploadImage(OnePixel(), nil, NO, outcome.Handler()); }), "InvalidOperationException");

    EXPECT_EQ(outcome.calls, 0);
    EXPECT_EQ(OpenImageUploadCount(), 0u);
}

TEST_F(FacebookImageUpload, TheClientTokenIsMissedOnlyByWhatIsSent) {
    Host::SetInfoValue(@"FacebookClientToken", nil);
    LogOut();
    UploadOutcome outcome;

    UploadImage(OnePixel(), nil, NO, outcome.Handler());

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 10");
}

TEST_F(FacebookImageUpload, AClientTokenThatTheAppSetsWillDo) {
    Host::SetInfoDictionary(@{@"FacebookClientToken" : @1});
    [[FBSDKSettings sharedSettings] setClientToken:@"token"];

    EXPECT_EQ(RaisedBy([] { UploadImage(OnePixel(), nil, NO, nil); }), "");
}

TEST_F(FacebookImageUpload, WithoutAnOpenOneThereIsNothingToAnswer) {
    EXPECT_FALSE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12")));
    UploadOutcome outcome;
    UploadImage(OnePixel(), nil, NO, outcome.Handler());
    EXPECT_FALSE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12"), 1));
    EXPECT_EQ(outcome.calls, 0);
    EXPECT_TRUE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12")));
    EXPECT_FALSE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12")));
    EXPECT_EQ(outcome.calls, 1);
}

TEST_F(FacebookImageUpload, UploadsAreCountedFromTheOneThatHasWaitedLongest) {
    UploadOutcome first;
    UploadOutcome second;
    UploadOutcome third;
    UploadImage(OnePixel(), nil, YES, first.Handler());
    UploadImage(OnePixel(), nil, NO, second.Handler());
    UploadImage(OnePixel(), nil, YES, third.Handler());

    AnswerImageUpload(ImageUploadAnswer::MediaDialogNotOpened(@"2"), 1);
    AnswerImageUpload(ImageUploadAnswer::Uploaded(@"3"), 1);
    AnswerImageUpload(ImageUploadAnswer::Uploaded(@"1"));

    EXPECT_EQ(Summary(first), "1 YES {id=1} nil");
    EXPECT_EQ(Summary(second), "1 YES {id=2} nil");
    EXPECT_EQ(Summary(third), "1 YES {id=3} nil");
}

TEST_F(FacebookImageUpload, IsAnsweredOnTheThreadOfTheAnswer) {
    UploadOutcome outcome;
    UploadImage(OnePixel(), nil, NO, outcome.Handler());
    std::thread::id answering;

    OnAnotherThread([&] {
        answering = std::this_thread::get_id();
        AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12"));
    });

    EXPECT_EQ(outcome.thread, answering);
}

TEST_F(FacebookImageUpload, WithoutACompletionStillEnds) {
    UploadImage(OnePixel(), nil, NO, nil);

    EXPECT_TRUE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12")));
}

TEST_F(FacebookImageUpload, KeepsACopyOfTheCompletionUntilTheAnswer) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        UploadImage(OnePixel(), nil, NO, ^(BOOL, NSDictionary*, NSError*) {
            (void)probe;
        });
    }
    EXPECT_EQ(alive, 1);

    AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12"));

    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookImageUpload, ResetReleasesTheCompletionUncalledAndForgetsWhatWasSeen) {
    int alive = 0;
    __block int calls = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        UploadImage(OnePixel(), nil, NO, ^(BOOL, NSDictionary*, NSError*) {
            (void)probe;
            ++calls;
        });
    }

    Host::ResetPlatform();

    EXPECT_EQ(alive, 0);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(OpenImageUploadCount(), 0u);
    EXPECT_TRUE(ImageUploads().empty());
}

TEST_F(FacebookImageUpload, AnExceptionOfTheCompletionPassesThroughAndEndsTheUpload) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        UploadImage(OnePixel(), nil, NO, ^(BOOL, NSDictionary*, NSError*) {
            (void)probe;
            throw std::runtime_error("from the completion");
        });
    }

    EXPECT_THROW(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12")), std::runtime_error);

    EXPECT_EQ(OpenImageUploadCount(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookImageUpload, ACompletionMayStartTheNextUpload) {
    UploadImage(OnePixel(), nil, NO, ^(BOOL, NSDictionary*, NSError*) {
        UploadImage(OnePixel(), nil, NO, nil);
    });

    AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12"));

    EXPECT_EQ(OpenImageUploadCount(), 1u);
}

TEST_F(FacebookImageUpload, EveryCallIsRecorded) {
    LogOut();
    UploadOutcome outcome;

    UploadImage(OnePixel(), @"caption", YES, outcome.Handler());
    OnAnotherThread([] { UploadImage(nil, nil, NO, nil); });

    const std::string selector = "uploadImageWithConfiguration:andResultCompletion:";
    EXPECT_THAT(
        Host::PlatformCalls::All(),
        ElementsAre(PlatformCall{"FBSDKGamingImageUploader", selector,
                                 "{\"image\":<UIImage>,\"caption\":\"caption\",\"shouldLaunchMediaDialog\":YES}"
                                 ", block",
                                 true},
                    PlatformCall{"FBSDKGamingImageUploader", selector,
                                 "{\"image\":nil,\"caption\":nil,\"shouldLaunchMediaDialog\":NO}, nil", false}));
}

using FacebookImageUploadDeathTest = FacebookImageUpload;

TEST_F(FacebookImageUploadDeathTest, WithoutAConfigurationEndsTheProcess) {
    EXPECT_DEATH(UploadConfiguredImage(nil, nil), "uploadImageWithConfiguration:andResultCompletion:.*configuration");
}

#pragma mark - Videos

FBSDKGamingVideoUploaderConfiguration* VideoConfiguration(NSURL* url, NSString* caption) {
    return [[[FBSDKGamingVideoUploaderConfiguration alloc] initWithVideoURL:url caption:caption] autorelease];
}

void UploadConfiguredVideo(FBSDKGamingVideoUploaderConfiguration* configuration, Completion completion,
                           ProgressHandler progressHandler) {
    [FBSDKGamingVideoUploader uploadVideoWithConfiguration:configuration
                                                completion:completion
                                        andProgressHandler:progressHandler];
}

void UploadVideo(NSURL* url, Completion completion, ProgressHandler progressHandler = nil) {
    UploadConfiguredVideo(VideoConfiguration(url, nil), completion, progressHandler);
}

class FacebookVideoUpload : public FacebookUpload {
protected:
    FacebookVideoUpload() {
        std::string pattern = ::testing::TempDir() + "VornGamingUploadersTest.XXXXXX";
        EXPECT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
    }
    ~FacebookVideoUpload() override { std::filesystem::remove_all(folder); }

    NSURL* FileWith(const std::string& contents) const {
        const std::filesystem::path path = folder / "a video.mp4";
        std::ofstream(path, std::ios::binary) << contents;
        return URLOf(path);
    }

    static NSURL* URLOf(const std::filesystem::path& path) {
        return [NSURL fileURLWithPath:[NSString stringWithUTF8String:path.c_str()]];
    }

    // The whole outcome of an upload that should be refused.
    static std::string Refusal(NSURL* url) {
        UploadOutcome outcome;
        UploadVideo(url, outcome.Handler());
        EXPECT_EQ(OpenVideoUploadCount(), 0u);
        EXPECT_FALSE(VideoUploads().back().started);
        EXPECT_THAT(DeveloperMessage(outcome), StrNe("(nil)"));
        return Summary(outcome);
    }

    UploadOutcome EndedWith(const VideoUploadAnswer& answer) const {
        UploadOutcome outcome;
        UploadVideo(FileWith("video"), outcome.Handler());
        EXPECT_TRUE(FinishVideoUpload(answer));
        EXPECT_EQ(OpenVideoUploadCount(), 0u);
        return outcome;
    }

    std::filesystem::path folder;
};

const char* const kVideoRefused = "1 NO nil com.facebook.sdk.core 2";

TEST_F(FacebookVideoUpload, ConfigurationHoldsWhatItIsMadeOf) {
    NSURL* const url = [NSURL URLWithString:@"https://example.com/video"];
    NSMutableString* const caption = [NSMutableString stringWithString:@"before"];

    FBSDKGamingVideoUploaderConfiguration* const configuration = VideoConfiguration(url, caption);
    [caption setString:@"after"];

    EXPECT_TRUE([[configuration videoURL] isEqual:url]);
    EXPECT_EQ(Text([configuration caption]), "before");
    EXPECT_EQ([VideoConfiguration(url, nil) caption], nil);
}

using FacebookVideoUploadDeathTest = FacebookVideoUpload;

TEST_F(FacebookVideoUploadDeathTest, AConfigurationWithoutAURLEndsTheProcess) {
    EXPECT_DEATH(VideoConfiguration(nil, @"caption"), "initWithVideoURL:caption:.*nil as the URL");
}

TEST_F(FacebookVideoUploadDeathTest, WithoutAConfigurationEndsTheProcess) {
    EXPECT_DEATH(UploadConfiguredVideo(nil, nil, nil),
                 "uploadVideoWithConfiguration:completion:andProgressHandler:.*configuration");
}

TEST_F(FacebookVideoUpload, WaitsForItsEnd) {
    UploadOutcome outcome;
    ProgressRecord progress;

    UploadVideo(FileWith("video"), outcome.Handler(), progress.Handler());

    EXPECT_EQ(OpenVideoUploadCount(), 1u);
    EXPECT_EQ(outcome.calls, 0);
    EXPECT_THAT(progress.calls, IsEmpty());
}

TEST_F(FacebookVideoUpload, IsSeenWithItsURLAndCaption) {
    NSURL* const url = FileWith("video");

    UploadConfiguredVideo(VideoConfiguration(url, @"caption"), nil, nil);
    UploadVideo(url, nil);

    ASSERT_EQ(VideoUploads().size(), 2u);
    EXPECT_EQ(VideoUploads()[0].videoURL, Text([url absoluteString]));
    EXPECT_EQ(VideoUploads()[0].caption, "caption");
    EXPECT_TRUE(VideoUploads()[0].started);
    EXPECT_EQ(VideoUploads()[1].caption, std::nullopt);
}

TEST_F(FacebookVideoUpload, WithoutAnAccessTokenEndsWithCore10BeforeTheCallReturns) {
    LogOut();

    EXPECT_EQ(Refusal(FileWith("video")), "1 NO nil com.facebook.sdk.core 10");
}

TEST_F(FacebookVideoUpload, TheAccessTokenIsLookedAtBeforeTheVideo) {
    LogOut();

    EXPECT_EQ(Refusal(FileWith("")), "1 NO nil com.facebook.sdk.core 10");
}

TEST_F(FacebookVideoUpload, MissingAccessTokenIsToldOfVideosFromTheNewestReleaseOn) {
    LogOut();
    NSURL* const url = FileWith("video");
    UploadOutcome old;
    UploadOutcome recent;

    Host::SetFacebookProfile(FacebookProfile::k18_0);
    UploadVideo(url, old.Handler());
    Host::SetFacebookProfile(FacebookProfile::k18_1);
    UploadVideo(url, recent.Handler());

    EXPECT_THAT(DeveloperMessage(old), ::testing::HasSubstr("Images"));
    EXPECT_THAT(DeveloperMessage(recent), ::testing::HasSubstr("Videos"));
}

TEST_F(FacebookVideoUpload, WithAnExpiredTokenStartsAndEndsWithTheServersError) {
    LogInWithExpiredToken();

    const UploadOutcome outcome = EndedWith(VideoUploadAnswer::Uploaded(@"video"));

    EXPECT_EQ(Summary(outcome), "1 NO nil com.facebook.sdk.core 8");
    EXPECT_THAT(DeveloperMessage(outcome), ::testing::HasSubstr("expired"));
    EXPECT_EQ([[outcome.error.get() userInfo] objectForKey:NSUnderlyingErrorKey], nil);
}

TEST_F(FacebookVideoUpload, WithAnExpiredTokenStillFailsAsItIsToldToAndEndsWithExactArguments) {
    LogInWithExpiredToken();

    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::RefusedByServer())), "1 NO nil com.facebook.sdk.core 3");
    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::Exactly(true, nil, nil))), "1 YES nil nil");
}

TEST_F(FacebookVideoUpload, TheTokenOfItsStartCounts) {
    UploadOutcome outcome;
    UploadVideo(FileWith("video"), outcome.Handler());

    LogInWithExpiredToken();
    FinishVideoUpload(VideoUploadAnswer::Uploaded(@"video"));

    EXPECT_EQ(Summary(outcome), "1 YES {video_id=video} nil");
}

TEST_F(FacebookVideoUpload, WithoutAClientTokenRaisesAndNothingStarts) {
    Host::SetInfoValue(@"FacebookClientToken", nil);
    UploadOutcome outcome;

    EXPECT_EQ(RaisedBy([&] { UploadVideo(FileWith("video"), outcome.Handler()); }), "InvalidOperationException");

    EXPECT_EQ(outcome.calls, 0);
    EXPECT_EQ(OpenVideoUploadCount(), 0u);
}

TEST_F(FacebookVideoUpload, OneByteIsEnough) {
    UploadVideo(FileWith(std::string(1, '\0')), nil);

    EXPECT_EQ(OpenVideoUploadCount(), 1u);
}

TEST_F(FacebookVideoUpload, AnEmptyFileEndsWithCore2BeforeTheCallReturns) {
    EXPECT_EQ(Refusal(FileWith("")), kVideoRefused);
}

TEST_F(FacebookVideoUpload, AMissingFileEndsWithCore2) {
    EXPECT_EQ(Refusal(URLOf(folder / "none.mp4")), kVideoRefused);
}

TEST_F(FacebookVideoUpload, AFolderEndsWithCore2) {
    EXPECT_EQ(Refusal(URLOf(folder)), kVideoRefused);
}

TEST_F(FacebookVideoUpload, AURLThatIsNoFilesEndsWithCore2) {
    FileWith("video");
    NSString* const path = [NSString stringWithUTF8String:(folder / "a%20video.mp4").c_str()];

    EXPECT_EQ(Refusal([NSURL URLWithString:[@"http://localhost" stringByAppendingString:path]]), kVideoRefused);
    EXPECT_EQ(Refusal([NSURL URLWithString:path]), kVideoRefused);
    EXPECT_EQ(Refusal([NSURL URLWithString:@"assets-library://asset/asset.mov"]), kVideoRefused);
}

TEST_F(FacebookVideoUpload, ARefusedOneIsToldOnTheCallingThread) {
    UploadOutcome outcome;
    std::thread::id caller;

    OnAnotherThread([&] {
        caller = std::this_thread::get_id();
        UploadVideo(FileWith(""), outcome.Handler());
    });

    EXPECT_EQ(outcome.thread, caller);
}

TEST_F(FacebookVideoUpload, ARefusedOneWithoutACompletionIsToldNobody) {
    UploadVideo(FileWith(""), nil);

    EXPECT_EQ(OpenVideoUploadCount(), 0u);
}

TEST_F(FacebookVideoUpload, ProgressIsToldExactlyAsItIsFired) {
    ProgressRecord progress;
    UploadVideo(FileWith("video"), nil, progress.Handler());

    EXPECT_TRUE(FireVideoProgress(0, 0, 5'000'000'000));
    EXPECT_TRUE(FireVideoProgress(3'000'000'000, 3'000'000'000, 5'000'000'000));
    EXPECT_TRUE(FireVideoProgress(-1, 7, 5));

    EXPECT_THAT(progress.calls, ElementsAre("0/0/5000000000", "3000000000/3000000000/5000000000", "-1/7/5"));
}

TEST_F(FacebookVideoUpload, ProgressIsToldOnTheThreadThatFiresIt) {
    ProgressRecord progress;
    UploadVideo(FileWith("video"), nil, progress.Handler());
    std::thread::id firing;

    OnAnotherThread([&] {
        firing = std::this_thread::get_id();
        FireVideoProgress(0, 0, 5);
    });

    EXPECT_EQ(progress.thread, firing);
    EXPECT_NE(progress.thread, std::this_thread::get_id());
}

TEST_F(FacebookVideoUpload, ProgressGoesToTheUploadOfTheIndex) {
    ProgressRecord first;
    ProgressRecord second;
    UploadVideo(FileWith("video"), nil, first.Handler());
    UploadVideo(FileWith("video"), nil, second.Handler());

    EXPECT_TRUE(FireVideoProgress(1, 1, 5, 1));
    EXPECT_TRUE(FireVideoProgress(2, 2, 5));
    EXPECT_FALSE(FireVideoProgress(3, 3, 5, 2));

    EXPECT_THAT(first.calls, ElementsAre("2/2/5"));
    EXPECT_THAT(second.calls, ElementsAre("1/1/5"));
}

TEST_F(FacebookVideoUpload, ProgressWithoutAHandlerIsToldNobody) {
    UploadVideo(FileWith("video"), nil);

    EXPECT_TRUE(FireVideoProgress(0, 0, 5));
}

TEST_F(FacebookVideoUpload, ThereIsNoProgressOnceTheUploadHasEnded) {
    ProgressRecord progress;
    UploadVideo(FileWith("video"), nil, progress.Handler());
    FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12"));

    EXPECT_FALSE(FireVideoProgress(5, 5, 5));

    EXPECT_THAT(progress.calls, IsEmpty());
}

TEST_F(FacebookVideoUpload, AProgressHandlerMayEndItsUpload) {
    int alive = 0;
    UploadOutcome outcome;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        UploadVideo(FileWith("video"), outcome.Handler(), ^(int64_t, int64_t, int64_t) {
            FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12"));
            [probe self];
        });
    }

    EXPECT_TRUE(FireVideoProgress(5, 5, 5));

    EXPECT_EQ(outcome.calls, 1);
    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookVideoUpload, UploadedHasTheID) {
    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::Uploaded(@"12"))), "1 YES {video_id=12} nil");
    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::Uploaded(nil))), "1 YES {video_id=} nil");
}

TEST_F(FacebookVideoUpload, RefusedByTheServerIsCore3) {
    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::RefusedByServer())), "1 NO nil com.facebook.sdk.core 3");
}

TEST_F(FacebookVideoUpload, AMalformedAnswerHasADomainOfItsOwn) {
    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::Malformed())), "1 NO nil com.facebook.sdk.gaming.videoupload 0");
}

TEST_F(FacebookVideoUpload, OtherErrorsArriveAsTheyAre) {
    NSError* const error = Host::MakeError(@"any", 7, nil);

    const UploadOutcome outcome = EndedWith(VideoUploadAnswer::Failed(error));

    EXPECT_EQ(Summary(outcome), "1 NO nil any 7");
    EXPECT_EQ(outcome.error.get(), error);
}

TEST_F(FacebookVideoUpload, CanEndWithAnyArguments) {
    NSError* const error = Host::MakeError(@"any", 7, nil);

    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::Exactly(true, nil, error))), "1 YES nil any 7");
    EXPECT_EQ(Summary(EndedWith(VideoUploadAnswer::Exactly(false, @{@"x" : @"y"}, nil))), "1 NO {x=y} nil");
}

TEST_F(FacebookVideoUpload, WithoutAnOpenOneThereIsNothingToFinish) {
    EXPECT_FALSE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")));
    UploadOutcome outcome;
    UploadVideo(FileWith("video"), outcome.Handler());
    EXPECT_FALSE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12"), 1));
    EXPECT_EQ(outcome.calls, 0);
    EXPECT_TRUE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")));
    EXPECT_FALSE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")));
    EXPECT_EQ(outcome.calls, 1);
}

TEST_F(FacebookVideoUpload, UploadsAreCountedFromTheOneThatHasWaitedLongest) {
    UploadOutcome first;
    UploadOutcome second;
    UploadVideo(FileWith("video"), first.Handler());
    UploadVideo(FileWith("video"), second.Handler());

    FinishVideoUpload(VideoUploadAnswer::Uploaded(@"2"), 1);
    FinishVideoUpload(VideoUploadAnswer::Uploaded(@"1"));

    EXPECT_EQ(Summary(first), "1 YES {video_id=1} nil");
    EXPECT_EQ(Summary(second), "1 YES {video_id=2} nil");
}

TEST_F(FacebookVideoUpload, IsFinishedOnTheThreadOfTheCaller) {
    UploadOutcome outcome;
    UploadVideo(FileWith("video"), outcome.Handler());
    std::thread::id finishing;

    OnAnotherThread([&] {
        finishing = std::this_thread::get_id();
        FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12"));
    });

    EXPECT_EQ(outcome.thread, finishing);
}

TEST_F(FacebookVideoUpload, WithoutACompletionStillEnds) {
    UploadVideo(FileWith("video"), nil);

    EXPECT_TRUE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")));
}

TEST_F(FacebookVideoUpload, KeepsCopiesOfItsBlocksUntilItEnds) {
    int completionAlive = 0;
    int progressAlive = 0;
    @autoreleasepool {
        VornLifeProbe* const ofCompletion = [VornLifeProbe probeOf:&completionAlive];
        VornLifeProbe* const ofProgress = [VornLifeProbe probeOf:&progressAlive];
        UploadVideo(
            FileWith("video"),
            ^(BOOL, NSDictionary*, NSError*) {
                (void)ofCompletion;
            },
            ^(int64_t, int64_t, int64_t) {
                (void)ofProgress;
            });
    }
    EXPECT_EQ(completionAlive, 1);
    EXPECT_EQ(progressAlive, 1);

    FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12"));

    EXPECT_EQ(completionAlive, 0);
    EXPECT_EQ(progressAlive, 0);
}

TEST_F(FacebookVideoUpload, ResetReleasesTheCompletionUncalledAndForgetsWhatWasSeen) {
    int alive = 0;
    __block int calls = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        UploadVideo(FileWith("video"), ^(BOOL, NSDictionary*, NSError*) {
            (void)probe;
            ++calls;
        });
    }

    Host::ResetPlatform();

    EXPECT_EQ(alive, 0);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(OpenVideoUploadCount(), 0u);
    EXPECT_TRUE(VideoUploads().empty());
}

TEST_F(FacebookVideoUpload, ExceptionsOfTheBlocksPassThrough) {
    UploadVideo(
        FileWith("video"),
        ^(BOOL, NSDictionary*, NSError*) {
            throw std::runtime_error("from the completion");
        },
        ^(int64_t, int64_t, int64_t) {
            throw std::runtime_error("from the progress handler");
        });

    EXPECT_THROW(FireVideoProgress(0, 0, 5), std::runtime_error);
    EXPECT_EQ(OpenVideoUploadCount(), 1u);
    EXPECT_THROW(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")), std::runtime_error);
    EXPECT_EQ(OpenVideoUploadCount(), 0u);
}

TEST_F(FacebookVideoUpload, EveryCallIsRecorded) {
    LogOut();
    UploadOutcome outcome;
    ProgressRecord progress;
    FBSDKGamingVideoUploaderConfiguration* const configuration =
        VideoConfiguration([NSURL URLWithString:@"file:///a%20video.mp4"], @"caption");

    UploadConfiguredVideo(configuration, outcome.Handler(), progress.Handler());
    OnAnotherThread([] { UploadVideo([NSURL URLWithString:@"file:///b"], nil, nil); });

    const std::string selector = "uploadVideoWithConfiguration:completion:andProgressHandler:";
    EXPECT_THAT(
        Host::PlatformCalls::All(),
        ElementsAre(PlatformCall{"FBSDKGamingVideoUploader", selector,
                                 "{\"videoURL\":\"file:///a%20video.mp4\",\"caption\":\"caption\"}, block, block",
                                 true},
                    PlatformCall{"FBSDKGamingVideoUploader", selector,
                                 "{\"videoURL\":\"file:///b\",\"caption\":nil}, nil, nil", false}));
}

#pragma mark - The releases whose video uploads never finish

class FacebookEndlessVideoUpload : public FacebookVideoUpload {
protected:
    FacebookEndlessVideoUpload() {
        Host::SetFacebookProfile(FacebookProfile::k15_0);
        UploadVideo(FileWith("video"), outcome.Handler(), progress.Handler());
    }

    UploadOutcome outcome;
    ProgressRecord progress;
};

TEST_F(FacebookEndlessVideoUpload, TellsTheFirstProgressAndNoOther) {
    EXPECT_TRUE(FireVideoProgress(0, 0, 5));
    EXPECT_FALSE(FireVideoProgress(0, 0, 5));
    EXPECT_FALSE(FireVideoProgress(5, 5, 5));

    EXPECT_THAT(progress.calls, ElementsAre("0/0/5"));
}

TEST_F(FacebookEndlessVideoUpload, TellsNoProgressOfBytesSentToBeginWith) {
    EXPECT_FALSE(FireVideoProgress(1, 1, 5));

    EXPECT_THAT(progress.calls, IsEmpty());
    EXPECT_TRUE(FireVideoProgress(0, 0, 5));
}

TEST_F(FacebookEndlessVideoUpload, CannotBeFinished) {
    EXPECT_FALSE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")));
    EXPECT_FALSE(FinishVideoUpload(VideoUploadAnswer::Failed(nil)));

    EXPECT_EQ(outcome.calls, 0);
    EXPECT_EQ(OpenVideoUploadCount(), 1u);
}

TEST_F(FacebookEndlessVideoUpload, HoldsForUploadsThatBeganThen) {
    UploadOutcome later;
    Host::SetFacebookProfile(FacebookProfile::k17_0);
    UploadVideo(FileWith("video"), later.Handler());

    EXPECT_FALSE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"1"), 0));
    EXPECT_TRUE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"2"), 1));

    EXPECT_EQ(outcome.calls, 0);
    EXPECT_EQ(later.calls, 1);
}

TEST_F(FacebookEndlessVideoUpload, IsRefusedAsEver) {
    UploadOutcome refused;

    UploadVideo(FileWith(""), refused.Handler());

    EXPECT_EQ(Summary(refused), kVideoRefused);
}

#pragma mark - Threads

TEST_F(FacebookVideoUpload, ManyThreadsMayUploadFireAndFinish) {
    constexpr int kThreads = 4;
    constexpr int kUploads = 50;
    NSURL* const url = FileWith("video");
    std::atomic<int> calls = 0;
    std::atomic<int>* const counter = &calls;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([=] {
            for (int upload = 0; upload < kUploads; ++upload) {
                @autoreleasepool {
                    UploadVideo(
                        url,
                        ^(BOOL, NSDictionary*, NSError*) {
                            ++*counter;
                        },
                        ^(int64_t, int64_t, int64_t) {
                            ++*counter;
                        });
                    EXPECT_TRUE(FireVideoProgress(0, 0, 5));
                    EXPECT_TRUE(FinishVideoUpload(VideoUploadAnswer::Uploaded(@"12")));
                    UploadImage(OnePixel(), nil, NO, ^(BOOL, NSDictionary*, NSError*) {
                        ++*counter;
                    });
                    EXPECT_TRUE(AnswerImageUpload(ImageUploadAnswer::Uploaded(@"12")));
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(calls.load(), 3 * kThreads * kUploads);
    EXPECT_EQ(OpenVideoUploadCount(), 0u);
    EXPECT_EQ(OpenImageUploadCount(), 0u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
