// Saving a video file to the photo library before it is shared: what is refused, which URL the content gets in gaming mode and
// outside it, and what the log says.

#include "FriendShareTest.h"

#include "AVFoundation/AVAsset+Control.h"

namespace Tarvik::Vorn::Test {
namespace {

using Host::PhotoChangesOutcome;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kSaved = BlockOf(kSaver, 1);

class FriendVideoTest : public FriendShareTest {
protected:
    void Save(const VornFriendReqInfo& request, int methodID = 211) {
        FriendVideoTest* const test = this;
        [static_cast<id<VornSharing>>(Plugin()) saveVideoAndShare:request
                                                         methodID:methodID
                                                            seqID:"v1"
                                                         complete:^(id content, InnerBaseRet ret) {
                                                             ++test->mCalls;
                                                             test->mContent = RetainPtr<id>(content);
                                                             test->mRecord = RecordText(ret);
                                                         }];
    }

    static void Finish(const PhotoChangesOutcome& outcome) {
        ASSERT_TRUE(Host::RunPhotoChanges(outcome)) << "nothing is being saved";
    }

    int Calls() const { return mCalls; }

    std::string VideoURL() const {
        return TextOf([[static_cast<FBSDKShareVideoContent*>(mContent.get()) video] videoURL]);
    }

    id Content() const { return mContent.get(); }

    // Kept: no result of saving carries the method ID.
    void ExpectRefused(const InnerBaseRet& expected) const {
        EXPECT_EQ(mCalls, 1);
        EXPECT_EQ(mContent.get(), nil);
        EXPECT_EQ(mRecord, RecordText(expected));
    }

    void ExpectBuilt() const {
        EXPECT_EQ(mCalls, 1);
        EXPECT_NE(mContent.get(), nil);
        EXPECT_EQ(mRecord, RecordText(InnerBaseRet(0)));
    }

private:
    int mCalls = 0;
    RetainPtr<id> mContent;
    std::string mRecord;
};

// ---- Refused before the photo library is asked

TEST_F(FriendVideoTest, KeptAnEmptyPathIsRefusedWithCode11AndNoMethodID) {
    Save(VideoFileRequest(""));

    ExpectRefused(Coded(11));
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kSaver, "[ v1 ] mediaPath is empty")));
}

TEST_F(FriendVideoTest, APathThatIsNotUTF8IsRefusedWithCode11) {
    Save(VideoFileRequest("/videos/\xff.mp4"));

    ExpectRefused(Coded(11));
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kSaver, "[ v1 ] mediaPath is not a path")));
}

class FriendUnsuitableFiles : public FriendVideoTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendUnsuitableFiles, AreRefusedWithCode8AndNoMethodID) {
    Save(VideoFileRequest(MediaPath(GetParam())));

    ExpectRefused(Coded(8));
    EXPECT_THAT(Lines(),
                ElementsAre(Error(kFriendFile, kSaver, "[ v1 ] video cant be written to the saved photos album")));
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Table, FriendUnsuitableFiles,
                         ::testing::Values("picture.png", "text.png", "sound.m4a", "no such file.mp4"));

// ---- The photo library refuses

TEST_F(FriendVideoTest, KeptASaveThatFailsIsRefusedWithCode8AndNoMethodID) {
    NSError* const error = [NSError errorWithDomain:@"PHPhotosErrorDomain"
                                               code:3300
                                           userInfo:@{NSLocalizedDescriptionKey : @"for the user"}];
    Save(VideoFileRequest());

    Finish(PhotoChangesOutcome::Failed(error));

    ExpectRefused(Coded(8));
    EXPECT_THAT(Lines(),
                ElementsAre(Error(kFriendFile, kSaved,
                                  std::string("[ v1 ] save video failed: ") + [[error description] UTF8String])));
}

TEST_F(FriendVideoTest, ASaveThatFailsWithoutAnErrorIsRefusedWithCode8Too) {
    Save(VideoFileRequest());

    Finish(PhotoChangesOutcome::FailedWithoutError());

    ExpectRefused(Coded(8));
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kSaved, "[ v1 ] save video failed: ")));
}

// ---- Saved

TEST_F(FriendVideoTest, OutsideGamingModeTheContentHasTheAssetsURL) {
    LogInWithFacebook();
    Save(VideoFileRequest(), 414);
    EXPECT_EQ(Calls(), 0);

    Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001"));

    ExpectBuilt();
    EXPECT_EQ(VideoURL(), "assets-library://asset/asset.mp4?id=ABC&ext=mp4");
    EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(FriendVideoTest, TheAssetsURLTakesTheExtensionOfTheFile) {
    LogInWithFacebook();
    Save(VideoFileRequest(MediaPath("clip.mov")), 414);

    Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001"));

    EXPECT_EQ(VideoURL(), "assets-library://asset/asset.mov?id=ABC&ext=mov");
}

TEST_F(FriendVideoTest, AnIdentifierIsCutAtItsFirstSlash) {
    LogInWithFacebook();
    for (NSString* identifier in @[ @"ABC", @"ABC/", @"ABC/L0/001/x" ]) {
        Save(VideoFileRequest(), 414);
        Finish(PhotoChangesOutcome::Saved(identifier));
        EXPECT_EQ(VideoURL(), "assets-library://asset/asset.mp4?id=ABC&ext=mp4") << [identifier UTF8String];
    }
    Save(VideoFileRequest(), 414);
    Finish(PhotoChangesOutcome::Saved(@"/L0/001"));
    EXPECT_EQ(VideoURL(), "assets-library://asset/asset.mp4?id=&ext=mp4");
}

TEST_F(FriendVideoTest, AFileWithoutAnExtensionLeavesItEmptyInTheAssetsURL) {
    LogInWithFacebook();
    Host::SetVideoCompatibility(true);
    Save(VideoFileRequest(MediaPath("../../Makefile")), 414); // Any file that exists.

    Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001"));

    ExpectBuilt();
    EXPECT_EQ(VideoURL(), "assets-library://asset/asset.?id=ABC&ext=");
}

TEST_F(FriendVideoTest, InGamingModeTheContentHasTheFilesURL) {
    LogInForGaming();
    Save(VideoFileRequest(), 414);

    Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001"));

    ExpectBuilt();
    EXPECT_EQ(VideoURL(), TextOf([NSURL fileURLWithPath:MakeNSString(MediaPath("clip.mp4"))]));
}

TEST_F(FriendVideoTest, WithoutALoginTheContentHasTheAssetsURLAndTheLogSaysSo) {
    Save(VideoFileRequest(), 414);

    Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001"));

    EXPECT_EQ(VideoURL(), "assets-library://asset/asset.mp4?id=ABC&ext=mp4");
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, "-[VornFriendFacebook isInGameMode]",
                                           "facebook accessToken is nil, please login")));
}

TEST_F(FriendVideoTest, GamingModeIsLookedUpWhenTheVideoHasBeenSaved) {
    Save(VideoFileRequest(), 414);
    LogInForGaming();

    Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001"));

    EXPECT_THAT(VideoURL(), ::testing::StartsWith("file://"));
}

TEST_F(FriendVideoTest, ASuccessWithAnErrorIsASuccess) {
    LogInWithFacebook();
    Save(VideoFileRequest(), 414);

    Finish(PhotoChangesOutcome::SavedWithError(Host::MakeError(@"d", 1, @"ignored")));

    ExpectBuilt();
}

TEST_F(FriendVideoTest, AShareTagsItsFriendsOnTheSavedVideo) {
    LogInWithFacebook();
    VornFriendReqInfo request = VideoFileRequest();
    request.extraJson = R"({"isAssetURL":false,"friends":["123"]})";

    Save(request, 211);
    Finish(PhotoChangesOutcome::Saved());
    EXPECT_EQ([[Content() peopleIDs] count], 1u);

    Save(request, 414);
    Finish(PhotoChangesOutcome::Saved());
    EXPECT_EQ([[Content() peopleIDs] count], 0u);
}

TEST_F(FriendVideoTest, AnAssetThatHasNoURLIsRefusedWithCode11BecauseFacebookWouldEndTheProcess) {
    LogInWithFacebook();
    Save(VideoFileRequest(), 414);

    Finish(PhotoChangesOutcome::Saved(@"A B"));

    ExpectRefused(Coded(11));
    EXPECT_THAT(Lines(), ElementsAre(Error(kFriendFile, kSaved, "[ v1 ] the asset of mediaPath has no URL")));
}

TEST_F(FriendVideoTest, ASavedVideoWithoutAnAssetIsRefusedWithCode11) {
    LogInWithFacebook();
    Host::SetVideoCompatibility(true);
    Save(VideoFileRequest(MediaPath("gone.mp4")), 414); // The library makes no asset of a file that is not there.

    Finish(PhotoChangesOutcome::Saved());

    ExpectRefused(Coded(11));
}

TEST_F(FriendVideoTest, TheLibraryIsAskedToCreateTheAssetFromTheFile) {
    LogInWithFacebook();
    Save(VideoFileRequest(), 414);
    Finish(PhotoChangesOutcome::Saved());

    std::vector<std::string> calls;
    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        calls.push_back(call.className + " " + call.selector);
    }
    EXPECT_THAT(calls, ElementsAre("PHPhotoLibrary performChanges:completionHandler:",
                                   "PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:"));
    EXPECT_THAT(Host::PlatformCalls::All().at(1).arguments, ::testing::HasSubstr("clip.mp4"));
}

// ---- From the request to the dialog

TEST_F(FriendVideoTest, AVideoFileIsSavedAndThenSharedThroughTheDialog) {
    LogInWithFacebook();
    const Call call{.methodID = 414, .seqID = "s1", .observerID = 32};
    Share(VideoFileRequest(), call);
    Settle();
    EXPECT_THAT(Host::ShownDialogs(), IsEmpty());

    OnAnotherThread([] { Finish(PhotoChangesOutcome::Saved(@"ABC/L0/001")); });
    Settle();

    EXPECT_EQ(TextOf([[OnlyContent() video] videoURL]), "assets-library://asset/asset.mp4?id=ABC&ext=mp4");
    EXPECT_TRUE(Host::ShownDialogs().at(0).opened);
    ASSERT_TRUE(Host::AnswerShare(Host::ShareAnswer::Completed()));
    EXPECT_THAT(Delivered(), ElementsAre(Result(call, Coded(0))));
}

TEST_F(FriendVideoTest, ASaveThatFailsReachesTheObserverWithoutTheMethodID) {
    const Call call{.methodID = 211, .seqID = "s1", .observerID = 32};
    Share(VideoFileRequest(), call);

    Finish(PhotoChangesOutcome::FailedWithoutError());

    EXPECT_THAT(Delivered(), ElementsAre(ResultWithout(call, Coded(8))));
}

} // namespace
} // namespace Tarvik::Vorn::Test
