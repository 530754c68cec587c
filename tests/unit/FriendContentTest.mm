// Share content: what is built for a link, an image and a video, who is tagged, which requests are refused before there is
// any content, and the photo library's permission. The builder is asked directly; its completion is what it answers with.

#include "FriendShareTest.h"

#include "AVFoundation/AVAsset+Control.h"

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

// What the completion was called with. Lives longer than the completion.
struct BuiltContent {
    int calls = 0;
    RetainPtr<id> content;
    std::string record;
    std::thread::id thread;
};

class FriendContentTest : public FriendShareTest {
protected:
    void Build(const VornFriendReqInfo& request, int methodID = 211) {
        BuiltContent* const built = &mBuilt;
        [static_cast<id<VornSharing>>(Plugin()) createFacebookLinkOrImageContent:request
                                                                        methodID:methodID
                                                                           seqID:"c1"
                                                                        complete:^(id content, InnerBaseRet ret) {
                                                                            ++built->calls;
                                                                            built->content = RetainPtr<id>(content);
                                                                            built->record = RecordText(ret);
                                                                            built->thread = std::this_thread::get_id();
                                                                        }];
    }

    void BuildAndSettle(const VornFriendReqInfo& request, int methodID = 211) {
        Build(request, methodID);
        Settle();
    }

    const BuiltContent& Built() const { return mBuilt; }

    id Content() const { return mBuilt.content.get(); }

    void ExpectRefused(InnerBaseRet expected, int methodID) const {
        expected.methodNameID = methodID;
        EXPECT_EQ(mBuilt.calls, 1);
        EXPECT_EQ(Content(), nil);
        EXPECT_EQ(mBuilt.record, RecordText(expected));
    }

    void ExpectBuilt(const char* className) const {
        EXPECT_EQ(mBuilt.calls, 1);
        ASSERT_NE(Content(), nil);
        EXPECT_STREQ(class_getName(object_getClass(Content())), className);
        EXPECT_EQ(mBuilt.record, RecordText(InnerBaseRet(0)));
    }

    std::vector<std::string> People() const {
        std::vector<std::string> people;
        for (NSString* person in [static_cast<id<FBSDKSharingContent>>(Content()) peopleIDs]) {
            people.emplace_back([person UTF8String]);
        }
        return people;
    }

    UIImage* OnlyImage() const {
        NSArray* const photos = [static_cast<FBSDKSharePhotoContent*>(Content()) photos];
        EXPECT_EQ([photos count], 1u);
        return [[photos objectAtIndex:0] image];
    }

    std::string VideoURL() const { return TextOf([[static_cast<FBSDKShareVideoContent*>(Content()) video] videoURL]); }

private:
    BuiltContent mBuilt;
};

// ---- The entry

TEST_F(FriendContentTest, TheEntryLogsTheRequestAndItsMethod) {
    const VornFriendReqInfo request = LinkRequest();

    Build(request, 414);

    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFriendFile, kBuilder,
                                  "[ c1 ] reqInfo : " + VornJsonManager::ToJson(request, "") + ", methodID : 414")));
}

class FriendContentTypes : public FriendContentTest, public ::testing::WithParamInterface<int> {};

TEST_P(FriendContentTypes, ThatAreNotSharedAreRefusedWithCode7AndTheMethodID) {
    Build(RequestOf(GetParam()), 414);

    ExpectRefused(Coded(7), 414);
    EXPECT_THAT(LinesAfterEntry(),
                ElementsAre(Error(kFriendFile, kBuilder,
                                  "[ c1 ] createSendOrShareContent not support type : " + std::to_string(GetParam()))));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendContentTypes, ::testing::Values(10003, 10004, 10000, 10006, 0, -1));

// ---- Who is tagged

struct TagCase {
    const char* name;
    VornFriendReqInfo (*request)();
};

class FriendContentTags : public FriendContentTest, public ::testing::WithParamInterface<TagCase> {
protected:
    static VornFriendReqInfo Tagged() {
        VornFriendReqInfo request = GetParam().request();
        request.extraJson = R"({"friends":["123",456]})";
        return request;
    }
};

TEST_P(FriendContentTags, AShareTagsItsFriends) {
    BuildAndSettle(Tagged(), 211);

    EXPECT_THAT(People(), ElementsAre("123", "456"));
}

TEST_P(FriendContentTags, OtherMethodsNeverDo) {
    for (const int methodID : {212, 414, 213, 0}) {
        BuildAndSettle(Tagged(), methodID);

        EXPECT_THAT(People(), IsEmpty()) << methodID;
    }
    EXPECT_THAT(Lines(), Not(Contains(::testing::Field(&LogLine::function, kTagger))));
}

TEST_P(FriendContentTags, AListThatCannotBeUsedLeavesTheContentUntagged) {
    VornFriendReqInfo request = GetParam().request();
    request.extraJson = R"({"friends":["123",{}]})";

    BuildAndSettle(request, 211);

    EXPECT_EQ(Built().record, RecordText(InnerBaseRet(0)));
    EXPECT_THAT(People(), IsEmpty());
    EXPECT_THAT(Lines(), Contains(Error(kFriendFile, kTagger, "[ c1 ] friends in extraJson is not number or string")));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, FriendContentTags,
                         ::testing::Values(TagCase{"Link", [] { return LinkRequest(); }},
                                           TagCase{"Image", [] { return ImageRequest(); }},
                                           TagCase{"Video", [] { return VideoRequest(); }}),
                         [](const auto& info) { return std::string(info.param.name); });

// ---- Links

TEST_F(FriendContentTest, ALinkBecomesALinkContentBeforeTheCallReturns) {
    Build(LinkRequest("https://example.com/a?b=c#d"), 414);

    ExpectBuilt("FBSDKShareLinkContent");
    EXPECT_EQ(TextOf([Content() contentURL]), "https://example.com/a?b=c#d");
}

TEST_F(FriendContentTest, AnEmptyLinkIsRefusedWithCode11AndTheMethodID) {
    Build(LinkRequest(""), 212);

    ExpectRefused(Refused(11, "the link is null when share/send link, please check!"), 212);
    EXPECT_THAT(LinesAfterEntry(), ElementsAre(Error(kFriendFile, kBuilder,
                                                     "[ c1 ] the link is null when share/send link, please check!")));
}

TEST_F(FriendContentTest, ALinkThatIsNoURLLeavesTheContentWithoutOne) {
    Build(LinkRequest("no url"), 414);
    ExpectBuilt("FBSDKShareLinkContent");
    EXPECT_EQ([Content() contentURL], nil);
}

TEST_F(FriendContentTest, ALinkThatIsNotUTF8LeavesTheContentWithoutOne) {
    Build(LinkRequest("https://example.com/\xff"), 414);

    ExpectBuilt("FBSDKShareLinkContent");
    EXPECT_EQ([Content() contentURL], nil);
}

// ---- Images

TEST_F(FriendContentTest, AnImageBecomesAPhotoContentWithTheRequestsLink) {
    BuildAndSettle(ImageRequest(), 414);

    ExpectBuilt("FBSDKSharePhotoContent");
    EXPECT_EQ(TextOf([Content() contentURL]), "https://example.com/picture");
    EXPECT_EQ([OnlyImage() size].width, 64);
    EXPECT_EQ([OnlyImage() size].height, 48);
}

TEST_F(FriendContentTest, TheOnePhotoCountsAsTheUsersOwn) {
    BuildAndSettle(ImageRequest(), 414);

    FBSDKSharePhoto* const photo = [[static_cast<FBSDKSharePhotoContent*>(Content()) photos] objectAtIndex:0];
    EXPECT_TRUE([photo isUserGenerated]);
}

TEST_F(FriendContentTest, AJpegIsAnImageToo) {
    BuildAndSettle(ImageRequest(MediaPath("picture.jpg")), 414);

    ExpectBuilt("FBSDKSharePhotoContent");
    EXPECT_EQ([OnlyImage() size].width, 64);
}

TEST_F(FriendContentTest, AnImageWithoutALinkOrWithABadOneIsSharedNevertheless) {
    VornFriendReqInfo request = ImageRequest();
    request.link = "no url";
    BuildAndSettle(request, 414);
    ExpectBuilt("FBSDKSharePhotoContent");
    EXPECT_EQ([Content() contentURL], nil);

    request.link = "\xff";
    BuildAndSettle(request, 414);
    EXPECT_EQ([Content() contentURL], nil);
}

TEST_F(FriendContentTest, AnImagesLineTellsTheBytesAndTheImage) {
    BuildAndSettle(ImageRequest(), 414);

    NSData* const data = [NSData dataWithContentsOfFile:MakeNSString(MediaPath("picture.png"))];
    EXPECT_THAT(LinesAfterEntry(), ElementsAre(Debug(kFriendFile, BlockOf(kBuilder, 1),
                                                     "[ c1 ] data size : " + std::to_string([data length]) +
                                                         ", image : " + [[OnlyImage() description] UTF8String])));
}

TEST_F(FriendContentTest, AnImageIsBuiltOnTheLoadersThread) {
    Build(ImageRequest());
    WaitForImageLoads();

    EXPECT_EQ(Built().calls, 1);
    EXPECT_NE(Built().thread, std::this_thread::get_id());
}

class FriendBadImages : public FriendContentTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendBadImages, AreRefusedWithCode11AndTheMethodID) {
    const std::string path = MediaPath(GetParam());
    NSData* const data = [NSData dataWithContentsOfFile:MakeNSString(path)];

    BuildAndSettle(ImageRequest(path), 211);

    ExpectRefused(Refused(11, "illegal image data"), 211);
    EXPECT_THAT(LinesAfterEntry(),
                ElementsAre(Debug(kFriendFile, BlockOf(kBuilder, 1),
                                  "[ c1 ] data size : " + std::to_string([data length]) + ", image : "),
                            Error(kFriendFile, BlockOf(kBuilder, 1), "[ c1 ] illegal image data")));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendBadImages,
                         ::testing::Values("truncated.png", "text.png", "clip.mp4", "no such file.png"));

TEST_F(FriendContentTest, AnEmptyImagePathIsNoImage) {
    BuildAndSettle(ImageRequest(""), 211);

    ExpectRefused(Refused(11, "illegal image data"), 211);
}

TEST_F(FriendContentTest, AnImagePathThatIsNotUTF8IsNoImage) {
    BuildAndSettle(ImageRequest("\xff.png"), 211);

    ExpectRefused(Refused(11, "illegal image data"), 211);
}

// ---- Videos that need no saving

class FriendVideoURLs : public FriendContentTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendVideoURLs, AreSharedAsTheyStandWhateverThePermission) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusDenied);
    VornFriendReqInfo request = VideoRequest("assets-library://asset/asset.mp4?id=A&ext=mp4");
    request.extraJson = GetParam();

    Build(request, 414);

    ExpectBuilt("FBSDKShareVideoContent");
    EXPECT_EQ(VideoURL(), "assets-library://asset/asset.mp4?id=A&ext=mp4");
    EXPECT_THAT(LinesAfterEntry(), IsEmpty());
    EXPECT_EQ(Host::PendingPhotoPromptCount() + Host::PendingPhotoChangesCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Table, FriendVideoURLs,
                         ::testing::Values("", "{}", "no json", "[]", R"({"isAssetURL":true})", R"({"isAssetURL":1})",
                                           R"({"isAssetURL":0.5})", R"({"isAssetURL":"true"})",
                                           R"({"isAssetURL":"YES"})", R"({"isasseturl":false})",
                                           // Neither a number nor a text: it does not say no, and nothing raises.
                                           R"({"isAssetURL":null})", R"({"isAssetURL":[]})", R"({"isAssetURL":{}})"));

class FriendVideoFiles : public FriendContentTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendVideoFiles, AreSavedFirst) {
    VornFriendReqInfo request = VideoRequest(MediaPath("clip.mp4"));
    request.extraJson = GetParam();

    Build(request);

    EXPECT_EQ(Built().calls, 0);
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Table, FriendVideoFiles,
                         ::testing::Values(R"({"isAssetURL":false})", R"({"isAssetURL":0})", R"({"isAssetURL":0.0})",
                                           R"({"isAssetURL":"false"})", R"({"isAssetURL":"NO"})",
                                           R"({"isAssetURL":"0"})", R"({"isAssetURL":""})"));

TEST_F(FriendContentTest, KeptAVideoWithoutAPathIsRefusedWithCode11AndNoMethodID) {
    Build(VideoRequest(""), 211);

    ExpectRefused(Coded(11), 0);
    EXPECT_THAT(LinesAfterEntry(), ElementsAre(Error(kFriendFile, kBuilder, "[ c1 ] mediaPath is empty")));
}

class FriendBadVideoURLs : public FriendContentTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FriendBadVideoURLs, AreRefusedWithCode11BecauseFacebookWouldEndTheProcess) {
    Build(VideoRequest(GetParam()), 211);

    ExpectRefused(Coded(11), 0);
    EXPECT_THAT(LinesAfterEntry(), ElementsAre(Error(kFriendFile, kBuilder, "[ c1 ] mediaPath is not a URL")));
}

INSTANTIATE_TEST_SUITE_P(Table, FriendBadVideoURLs,
                         ::testing::Values("/videos/my clip.mp4", "a b", "%zz", "https://example.com/\xff"));

TEST_F(FriendContentTest, APlainPathIsAURLWithoutASchemeAndSharedAsItStands) {
    Build(VideoRequest("/videos/clip.mp4"), 414);

    ExpectBuilt("FBSDKShareVideoContent");
    EXPECT_EQ(VideoURL(), "/videos/clip.mp4"); // Facebook refuses it when the dialog shows.
}

// ---- The photo library's permission

TEST_F(FriendContentTest, KeptWithRestrictedAccessAVideoFileIsRefusedWithCode12AndNoMethodID) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusRestricted);

    Build(VideoFileRequest());

    ExpectRefused(Coded(12), 0);
    EXPECT_THAT(LinesAfterEntry(),
                ElementsAre(Error(kFriendFile, kBuilder, "[ c1 ] not authorized to access photo data")));
}

TEST_F(FriendContentTest, KeptWithDeniedAccessAVideoFileIsRefusedWithCode12AndNoMethodID) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusDenied);

    Build(VideoFileRequest());

    ExpectRefused(Coded(12), 0);
    EXPECT_THAT(LinesAfterEntry(), ElementsAre(Error(kFriendFile, kBuilder, "[ c1 ] denied to access photo data")));
    EXPECT_EQ(Host::PendingPhotoPromptCount(), 0u);
}

TEST_F(FriendContentTest, WithoutPermissionNoVideoFileIsSaved) {
    for (const PHAuthorizationStatus status : {PHAuthorizationStatusRestricted, PHAuthorizationStatusDenied}) {
        Host::SetPhotoAuthorization(status);

        Build(VideoFileRequest());

        EXPECT_EQ(Host::PendingPhotoChangesCount(), 0u) << status;
    }
}

TEST_F(FriendContentTest, KeptWithLimitedAccessAVideoFileIsNeverAnswered) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusLimited);

    BuildAndSettle(VideoFileRequest());

    EXPECT_EQ(Built().calls, 0);
    EXPECT_THAT(LinesAfterEntry(), IsEmpty());
    EXPECT_EQ(Host::PendingPhotoPromptCount() + Host::PendingPhotoChangesCount(), 0u);
}

TEST_F(FriendContentTest, AStatusFromALaterSystemIsNeverAnsweredEither) {
    Host::SetPhotoAuthorization(static_cast<PHAuthorizationStatus>(5));

    BuildAndSettle(VideoFileRequest());

    EXPECT_EQ(Built().calls, 0);
}

TEST_F(FriendContentTest, WithFullAccessAVideoFileIsSavedAtOnceWithoutAPrompt) {
    Build(VideoFileRequest());

    EXPECT_EQ(Host::PendingPhotoPromptCount(), 0u);
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 1u);
}

TEST_F(FriendContentTest, TheFirstTimeTheUserIsAskedAndSavingGoesOnWhenTheyAllowIt) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);
    Build(VideoFileRequest());
    EXPECT_EQ(Host::PendingPhotoPromptCount(), 1u);
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 0u);

    ASSERT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized));

    EXPECT_EQ(Host::PendingPhotoChangesCount(), 1u);
    ASSERT_TRUE(Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved()));
    ExpectBuilt("FBSDKShareVideoContent");
}

class FriendPromptAnswers : public FriendContentTest, public ::testing::WithParamInterface<PHAuthorizationStatus> {};

TEST_P(FriendPromptAnswers, OtherThanFullAccessAreRefusedWithCode12AndNoMethodID) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);
    Build(VideoFileRequest());

    OnAnotherThread([] { ASSERT_TRUE(Host::AnswerPhotoPrompt(GetParam())); });

    ExpectRefused(Coded(12), 0);
    EXPECT_THAT(LinesAfterEntry(),
                ElementsAre(Error(kFriendFile, BlockOf(kBuilder, 1), "[ c1 ] need system permission")));
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Table, FriendPromptAnswers,
                         ::testing::Values(PHAuthorizationStatusNotDetermined, PHAuthorizationStatusRestricted,
                                           PHAuthorizationStatusDenied, PHAuthorizationStatusLimited));

// ---- What outlives the call

TEST_F(FriendContentTest, TheRecordMayDieWhileItsImageLoads) {
    VornFriendReqInfo request = ImageRequest();
    request.extraJson = R"({"friends":["a person with a buffer of their own"]})";

    ShareFromDyingRecord(request, {.methodID = 211, .seqID = "a sequence ID with a buffer of its own"});
    Settle();

    EXPECT_EQ(TextOf([OnlyContent() contentURL]), "https://example.com/picture");
    EXPECT_EQ([[OnlyContent() peopleIDs] count], 1u);
}

TEST_F(FriendContentTest, TheRecordMayDieWhileTheUserIsAsked) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);
    VornFriendReqInfo request = VideoFileRequest();
    request.extraJson = R"({"isAssetURL":false,"friends":["a person with a buffer of their own"]})";
    ShareFromDyingRecord(request, {.methodID = 211, .seqID = "a sequence ID with a buffer of its own"});

    OnAnotherThread([] {
        ASSERT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized));
        ASSERT_TRUE(Host::RunPhotoChanges(Host::PhotoChangesOutcome::Saved(@"A/L0/001")));
    });
    Settle();

    EXPECT_EQ(TextOf([[OnlyContent() video] videoURL]), "assets-library://asset/asset.mp4?id=A&ext=mp4");
    EXPECT_EQ([[OnlyContent() peopleIDs] count], 1u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
