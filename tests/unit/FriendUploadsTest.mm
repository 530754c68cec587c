// Gaming uploads: in gaming mode an image or a video goes to Facebook's uploaders instead of the share dialog. What they are
// given, what their ends become, and the progress bar of a video.

#include "FriendShareTest.h"

#include "FacebookProfile.h"
#include "UIKit/UIColor+Control.h"
#include "UIKit/UIViewController+Control.h"

#include <cmath>

namespace Tarvik::Vorn::Test {
namespace {

using Host::ImageUploadAnswer;
using Host::VideoUploadAnswer;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string kImageEnd = BlockOf(kPipeline, 2);
const std::string kVideoEnd = BlockOf(kPipeline, 2);

class FriendUploadsTest : public FriendShareTest {
protected:
    FriendUploadsTest() { LogInForGaming(); }

    void ShareImage() const {
        Share(ImageRequest(), kCall);
        Settle();
    }

    // A video whose URL is that of a file, as it is after saving.
    static VornFriendReqInfo FileVideo() {
        return VideoRequest([[[NSURL fileURLWithPath:MakeNSString(MediaPath("clip.mp4"))] absoluteString] UTF8String]);
    }

    void ShareVideo() const {
        Share(FileVideo(), kCall);
        Settle();
    }

    static void EndImage(const ImageUploadAnswer& answer) {
        ASSERT_TRUE(Host::AnswerImageUpload(answer)) << "no image is being uploaded";
    }

    static void EndVideo(const VideoUploadAnswer& answer) {
        ASSERT_TRUE(Host::FinishVideoUpload(answer)) << "no video is being uploaded";
    }

    static InnerBaseRet Failure(int thirdCode, const char* text) { return {9999, thirdCode, text}; }

    static UIView* RootView() { return [[[[UIApplication sharedApplication] keyWindow] rootViewController] view]; }

    // The bar on the root view, which is in front; nil when there is none.
    static UIProgressView* Bar() {
        UIView* const front = [[RootView() subviews] lastObject];
        return [front isKindOfClass:[UIProgressView class]] ? static_cast<UIProgressView*>(front) : nil;
    }

    static const inline Call kCall{.methodID = 414, .seqID = "u1", .observerID = 32};
};

// ---- Images

TEST_F(FriendUploadsTest, AnImageIsUploadedWithItsTitleAndTheMediaDialog) {
    ShareImage();

    const auto uploads = Host::ImageUploads();
    ASSERT_THAT(uploads, SizeIs(1));
    EXPECT_EQ([uploads[0].image.get() size].width, 64);
    EXPECT_EQ(uploads[0].caption, "A picture");
    EXPECT_TRUE(uploads[0].shouldLaunchMediaDialog);
    EXPECT_TRUE(uploads[0].started);
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());
    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

TEST_F(FriendUploadsTest, AnImageWithoutATitleHasAnEmptyCaption) {
    VornFriendReqInfo request = ImageRequest();
    request.title = "";
    Share(request);
    Settle();

    EXPECT_EQ(Host::ImageUploads().at(0).caption, "");
}

TEST_F(FriendUploadsTest, AnUploadNeedsNoFacebookApp) {
    RemoveFacebookApp();

    ShareImage();
    ShareVideo();

    EXPECT_THAT(Host::ImageUploads(), SizeIs(1));
    EXPECT_THAT(Host::VideoUploads(), SizeIs(1));
    EXPECT_THAT(Delivered(), IsEmpty());
}

TEST_F(FriendUploadsTest, AnUploadedImageIsCode0) {
    ShareImage();

    EndImage(ImageUploadAnswer::Uploaded(@"77"));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, InnerBaseRet(0, 0, "load image success"))));
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kImageEnd, "[ u1 ] load image successed: 414"));
}

TEST_F(FriendUploadsTest, KeptAFailedImageIsCode9999AndALineOfProgress) {
    ShareImage();

    EndImage(ImageUploadAnswer::Exactly(false, nil, Host::MakeError(@"d", 8, @"the server %s")));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(8, "the server %s"))));
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kImageEnd, "[ u1 ] load image error: 414"));
}

TEST_F(FriendUploadsTest, AFailedImageWithoutAnErrorHasTheTextOfThePlugin) {
    ShareImage();

    EndImage(ImageUploadAnswer::Exactly(false, nil, nil));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(0, "load image error"))));
}

TEST_F(FriendUploadsTest, AnImageWithSuccessAndAnErrorHasFailed) {
    ShareImage();

    EndImage(ImageUploadAnswer::Exactly(true, @{}, Host::MakeError(@"d", (1LL << 32) + 5, @"t")));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(5, "t"))));
}

TEST_F(FriendUploadsTest, AFailedImageWhoseErrorHasNoTextHasAnEmptyOne) {
    ShareImage();

    EndImage(ImageUploadAnswer::Exactly(false, nil, Host::MakeError(@"d", 8, nil)));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(8, ""))));
}

TEST_F(FriendUploadsTest, AnImageMayEndOnABackgroundThread) {
    ShareImage();

    OnAnotherThread([] { EndImage(ImageUploadAnswer::Uploaded(@"77")); });
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());

    ASSERT_THAT(Delivered(), SizeIs(1));
    EXPECT_EQ(ResultRecorder::Deliveries()[0].thread, std::this_thread::get_id());
}

TEST_F(FriendUploadsTest, AnUploadGoesToItsOwnRequestWhateverCameAfterIt) {
    ShareImage();
    Park({.methodID = 211, .seqID = "later", .observerID = 31});

    EndImage(ImageUploadAnswer::Uploaded(@"77"));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, InnerBaseRet(0, 0, "load image success"))));
}

TEST_F(FriendUploadsTest, AnImageThatLosesItsMediaDialogIsNeverAnswered) {
    ShareImage();

    EndImage(ImageUploadAnswer::Uploaded(nil));

    EXPECT_THAT(Delivered(), IsEmpty());
}

// ---- Videos

TEST_F(FriendUploadsTest, AVideoIsUploadedFromItsFileWithItsTitle) {
    ShareVideo();

    const auto uploads = Host::VideoUploads();
    ASSERT_THAT(uploads, SizeIs(1));
    EXPECT_THAT(uploads[0].videoURL, ::testing::EndsWith("/clip.mp4"));
    EXPECT_EQ(uploads[0].caption, "A video");
    EXPECT_TRUE(uploads[0].started);
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());
    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

TEST_F(FriendUploadsTest, AVideoFileIsSavedAndThenUploaded) {
    Share(VideoFileRequest(), kCall);
    ASSERT_TRUE(Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved()));
    Settle();

    EXPECT_THAT(Host::VideoUploads(), SizeIs(1));
    EndVideo(VideoUploadAnswer::Uploaded(@"88"));
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, InnerBaseRet(0, 0, "load image success"))));
}

TEST_F(FriendUploadsTest, KeptAnUploadedVideoIsCode0WithTheTextOfAnImage) {
    ShareVideo();

    EndVideo(VideoUploadAnswer::Uploaded(@"88"));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, InnerBaseRet(0, 0, "load image success"))));
    EXPECT_EQ(Lines().back(), Debug(kFriendFile, kVideoEnd, "[ u1 ] load video successed: 414"));
}

TEST_F(FriendUploadsTest, AFailedVideoIsCode9999AndALineOfError) {
    ShareVideo();

    EndVideo(VideoUploadAnswer::Failed(Host::MakeError(@"d", 3, @"the server %s")));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(3, "the server %s"))));
    EXPECT_EQ(Lines().back(), Error(kFriendFile, kVideoEnd, "[ u1 ] load video error: 414"));
}

TEST_F(FriendUploadsTest, AFailedVideoWithoutAnErrorHasTheTextOfThePlugin) {
    ShareVideo();

    EndVideo(VideoUploadAnswer::Exactly(false, nil, nil));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(0, "load video error"))));
}

TEST_F(FriendUploadsTest, AVideoWithSuccessAndAnErrorHasFailed) {
    ShareVideo();

    EndVideo(VideoUploadAnswer::Exactly(true, @{}, Host::MakeError(@"d", -5, @"t")));

    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, Failure(-5, "t"))));
}

TEST_F(FriendUploadsTest, AVideoThatFacebookRefusesAtOnceIsAnsweredAndItsBarIsGone) {
    Share(VideoRequest("assets-library://asset/asset.mp4?id=A&ext=mp4"), kCall); // Facebook uploads files only.

    EXPECT_THAT(Delivered(), SizeIs(1));
    EXPECT_THAT(Delivered()[0].record, HasSubstr("retCode: 9999"));
    EXPECT_EQ(Bar(), nil);
}

TEST_F(FriendUploadsTest, WithOlderSdksAVideoUploadNeverEnds) {
    Host::SetFacebookProfile(Host::FacebookProfile::k15_0);
    ShareVideo();

    EXPECT_FALSE(Host::FinishVideoUpload(VideoUploadAnswer::Uploaded(@"88")));

    EXPECT_THAT(Delivered(), IsEmpty());
    EXPECT_NE(Bar(), nil);
}

// ---- The progress bar

TEST_F(FriendUploadsTest, AVideosBarLiesAcrossTheTopOfTheRootViewInFrontOfEverything) {
    const RetainPtr<UIView*> other = AdoptNS([[UIView alloc] initWithFrame:CGRectMake(0, 0, 10, 10)]);
    [RootView() addSubview:other.get()];

    ShareVideo();

    ASSERT_NE(Bar(), nil);
    EXPECT_EQ([Bar() superview], RootView());
    EXPECT_EQ([Bar() frame].origin.x, 0);
    EXPECT_EQ([Bar() frame].origin.y, 0);
    EXPECT_EQ([Bar() frame].size.width, [RootView() frame].size.width);
    EXPECT_GT([RootView() frame].size.width, 0);
    EXPECT_EQ([Bar() frame].size.height, 20);
    EXPECT_FALSE([Bar() isHidden]);
    EXPECT_EQ([Bar() progress], 0);
}

TEST_F(FriendUploadsTest, AVideosBarHasItsStyleAndColours) {
    ShareVideo();

    EXPECT_EQ([Bar() progressViewStyle], UIProgressViewStyleBar);
    EXPECT_THAT(Host::PlatformCalls::All(),
                Contains(Host::PlatformCall{"UIProgressView", "setTrackTintColor:", "[0.94,0.94,0.94,1]", true}));
    EXPECT_THAT(Host::PlatformCalls::All(),
                Contains(Host::PlatformCall{"UIProgressView", "setProgressTintColor:", "[0.68,0.85,0.95,1]", true}));
}

TEST_F(FriendUploadsTest, TheBarIsShownAndBroughtToTheFront) {
    ShareVideo();

    EXPECT_THAT(Host::PlatformCalls::All(), Contains(Host::PlatformCall{"UIProgressView", "setHidden:", "NO", true}));
    EXPECT_THAT(Host::PlatformCalls::All(),
                Contains(Host::PlatformCall{"UIView", "bringSubviewToFront:", "<UIProgressView>", true}));
}

TEST_F(FriendUploadsTest, ProgressReachesTheBarOnTheMainThread) {
    ShareVideo();

    OnAnotherThread([] { ASSERT_TRUE(Host::FireVideoProgress(25, 25, 100)); });
    EXPECT_EQ([Bar() progress], 0.0F);

    DrainMainQueue();
    EXPECT_EQ([Bar() progress], 0.25F);
    EXPECT_EQ(Host::PlatformCalls::All().back(), (Host::PlatformCall{"UIProgressView", "setProgress:", "0.25", true}));
}

TEST_F(FriendUploadsTest, ProgressIsBytesSentSoFarOfBytesExpected) {
    ShareVideo();
    ASSERT_TRUE(Host::FireVideoProgress(25, 25, 100));
    ASSERT_TRUE(Host::FireVideoProgress(50, 75, 100));
    DrainMainQueue();

    EXPECT_EQ([Bar() progress], 0.75F);
}

TEST_F(FriendUploadsTest, BothNumbersOfTheProgressAreSinglePrecisionBeforeTheyAreDivided) {
    ShareVideo();
    ASSERT_TRUE(Host::FireVideoProgress(0, 16777217, 33554435));
    DrainMainQueue();

    EXPECT_EQ([Bar() progress], 16777216.0F / 33554436.0F);
}

TEST_F(FriendUploadsTest, KeptProgressOfNothingExpectedIsPassedOnAsItIs) {
    ShareVideo();
    ASSERT_TRUE(Host::FireVideoProgress(0, 0, 0));
    DrainMainQueue();
    EXPECT_TRUE(std::isnan([Bar() progress]));

    ASSERT_TRUE(Host::FireVideoProgress(0, 5, 0));
    DrainMainQueue();
    EXPECT_TRUE(std::isinf([Bar() progress]));
}

TEST_F(FriendUploadsTest, ProgressThatArrivesAfterTheEndDoesNoHarm) {
    ShareVideo();
    ASSERT_TRUE(Host::FireVideoProgress(50, 50, 100));
    EndVideo(VideoUploadAnswer::Uploaded(@"88"));

    DrainMainQueue(); // The block that was posted before the end.

    EXPECT_EQ(Bar(), nil);
}

class FriendUploadEnds : public FriendUploadsTest, public ::testing::WithParamInterface<bool> {};

TEST_P(FriendUploadEnds, KeptTheResultIsCommittedBeforeTheBarIsHiddenAndTakenAway) {
    ShareVideo();
    Log().Clear();
    Host::SetPlatformCallListener([this](const Host::PlatformCall& call) {
        Log().Note(call.selector + (call.arguments.empty() ? "" : " " + call.arguments));
    });

    EndVideo(GetParam() ? VideoUploadAnswer::Uploaded(@"88") : VideoUploadAnswer::Exactly(false, nil, nil));

    const auto transcript = Log().Transcript();
    ASSERT_THAT(transcript, SizeIs(4));
    EXPECT_THAT(transcript[0], HasSubstr("[ u1 ] load video "));
    EXPECT_THAT(transcript[1], HasSubstr("DispatchAsyncMainThread 32"));
    EXPECT_EQ(transcript[2], "setHidden: YES");
    EXPECT_EQ(transcript[3], "removeFromSuperview");
    EXPECT_EQ(Bar(), nil);
}

INSTANTIATE_TEST_SUITE_P(SuccessAndFailure, FriendUploadEnds, ::testing::Values(true, false));

TEST_F(FriendUploadsTest, TwoVideosAtOnceHaveTwoBars) {
    ShareVideo();
    ShareVideo();
    EXPECT_THAT(std::vector<int>([[RootView() subviews] count]), SizeIs(2));

    EndVideo(VideoUploadAnswer::Uploaded(@"1"));
    EXPECT_THAT(std::vector<int>([[RootView() subviews] count]), SizeIs(1));

    EndVideo(VideoUploadAnswer::Uploaded(@"2"));
    EXPECT_EQ([[RootView() subviews] count], 0u);
}

TEST_F(FriendUploadsTest, ARootControllerWithoutAViewLeavesTheBarWithoutWidthAndParentAndTheUploadRuns) {
    Host::SetViewless([[[UIApplication sharedApplication] keyWindow] rootViewController], true);

    ShareVideo();

    EXPECT_THAT(Host::PlatformCalls::All(),
                Contains(Host::PlatformCall{"UIProgressView", "setFrame:", "[0,0,0,20]", true}));
    ASSERT_TRUE(Host::FireVideoProgress(50, 50, 100));
    EndVideo(VideoUploadAnswer::Uploaded(@"88"));
    EXPECT_THAT(Delivered(), ElementsAre(Result(kCall, InnerBaseRet(0, 0, "load image success"))));
}

TEST_F(FriendUploadsTest, AnAppWithoutAWindowUploadsToo) {
    Host::SetKeyWindow(nil);

    ShareVideo();
    EndVideo(VideoUploadAnswer::Uploaded(@"88"));

    EXPECT_THAT(Delivered(), SizeIs(1));
}

TEST_F(FriendUploadsTest, ABarMayBeTakenAwayOnTheThreadOnWhichTheUploadEnds) {
    ShareVideo();

    OnAnotherThread([] { EndVideo(VideoUploadAnswer::Uploaded(@"88")); });

    EXPECT_EQ(Bar(), nil);
    const auto calls = Host::PlatformCalls::All();
    EXPECT_EQ(calls.back().selector, "removeFromSuperview");
    EXPECT_FALSE(calls.back().onMainThread);
}

TEST_F(FriendUploadsTest, TheRecordMayDieBeforeTheUploadStarts) {
    VornFriendReqInfo request = FileVideo();
    request.title = "a caption with a buffer of its own";
    ShareFromDyingRecord(request, {.methodID = 414, .seqID = "a sequence ID with a buffer of its own"});
    Settle();

    EXPECT_EQ(Host::VideoUploads().at(0).caption, "a caption with a buffer of its own");
    EndVideo(VideoUploadAnswer::Uploaded(@"88"));
    EXPECT_EQ(Delivered().at(0).seqID, "a sequence ID with a buffer of its own");
}

TEST_F(FriendUploadsTest, NoDialogAndNoBarOutlivesItsUpload) {
    @autoreleasepool {
        ShareImage();
        ShareVideo();
        EndImage(ImageUploadAnswer::Uploaded(@"77"));
        EndVideo(VideoUploadAnswer::Uploaded(@"88"));
        DrainMainQueue();
    }

    EXPECT_EQ(Host::LivingShareDialogCount(), 0u);
    EXPECT_EQ([[RootView() subviews] count], 0u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
