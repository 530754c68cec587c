// What can be shared: the properties of links, photos and videos, what they make of nil, and what they find wrong with
// themselves.
#include "FacebookPlatformTest.h"

#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Test {
namespace {

using Host::FacebookProfile;
using Host::SetFacebookProfile;
using ::testing::IsEmpty;

NSURL* URL(NSString* text) {
    return text == nil ? nil : [NSURL URLWithString:text];
}

UIImage* Image() {
    return [[[UIImage alloc] init] autorelease];
}

FBSDKSharePhoto* Photo(UIImage* image = Image()) {
    return [[[FBSDKSharePhoto alloc] initWithImage:image isUserGenerated:NO] autorelease];
}

NSArray<FBSDKSharePhoto*>* Photos(int count) {
    NSMutableArray<FBSDKSharePhoto*>* const photos = [NSMutableArray array];
    for (int index = 0; index < count; ++index) {
        [photos addObject:Photo()];
    }
    return photos;
}

FBSDKShareVideo* Video(NSString* url, FBSDKSharePhoto* preview = nil) {
    return [[[FBSDKShareVideo alloc] initWithVideoURL:URL(url) previewPhoto:preview] autorelease];
}

FBSDKShareLinkContent* Link(NSString* url) {
    FBSDKShareLinkContent* const content = [[[FBSDKShareLinkContent alloc] init] autorelease];
    [content setContentURL:URL(url)];
    return content;
}

FBSDKSharePhotoContent* PhotoContent(NSArray<FBSDKSharePhoto*>* photos) {
    FBSDKSharePhotoContent* const content = [[[FBSDKSharePhotoContent alloc] init] autorelease];
    [content setPhotos:photos];
    return content;
}

FBSDKShareVideoContent* VideoContent(FBSDKShareVideo* video) {
    FBSDKShareVideoContent* const content = [[[FBSDKShareVideoContent alloc] init] autorelease];
    [content setVideo:video];
    return content;
}

// Domain and code of what is wrong with the content; empty for nothing.
std::string FaultOf(id<FBSDKSharingContent> content) {
    NSError* error = nil;
    const BOOL isValid = [content validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error];
    EXPECT_EQ(isValid, error == nil);
    return error == nil ? "" : Text([error domain]) + " " + std::to_string([error code]);
}

const std::string kInvalid = "com.facebook.sdk.share 2";

#pragma mark - What the three have in common

class FacebookContent : public FacebookPlatformTest, public ::testing::WithParamInterface<const char*> {
protected:
    RetainPtr<id<FBSDKSharingContent>> mContent =
        AdoptNS<id<FBSDKSharingContent>>([[NSClassFromString([NSString stringWithUTF8String:GetParam()]) alloc] init]);
};

INSTANTIATE_TEST_SUITE_P(All, FacebookContent,
                         ::testing::Values("FBSDKShareLinkContent", "FBSDKSharePhotoContent",
                                           "FBSDKShareVideoContent"));

TEST_P(FacebookContent, IsEmptyAtFirst) {
    ASSERT_TRUE(mContent);
    EXPECT_EQ([mContent.get() contentURL], nil);
    ASSERT_NE([mContent.get() peopleIDs], nil);
    EXPECT_EQ([[mContent.get() peopleIDs] count], 0u);
    EXPECT_EQ([mContent.get() placeID], nil);
    EXPECT_EQ([mContent.get() ref], nil);
    EXPECT_EQ([mContent.get() pageID], nil);
}

TEST_P(FacebookContent, KeepsWhatIsSet) {
    [mContent.get() setContentURL:URL(@"https://host/page")];
    [mContent.get() setPeopleIDs:@[ @"1", @"2" ]];
    [mContent.get() setPlaceID:@"place"];
    [mContent.get() setRef:@"ref"];
    [mContent.get() setPageID:@"page"];

    EXPECT_EQ(Text([[mContent.get() contentURL] absoluteString]), "https://host/page");
    EXPECT_TRUE([[mContent.get() peopleIDs] isEqualToArray:(@[ @"1", @"2" ])]);
    EXPECT_EQ(Text([mContent.get() placeID]), "place");
    EXPECT_EQ(Text([mContent.get() ref]), "ref");
    EXPECT_EQ(Text([mContent.get() pageID]), "page");
}

TEST_P(FacebookContent, TakesNilForWhatIsNullable) {
    [mContent.get() setContentURL:URL(@"https://host/page")];
    [mContent.get() setPlaceID:@"place"];
    [mContent.get() setRef:@"ref"];
    [mContent.get() setPageID:@"page"];

    [mContent.get() setContentURL:nil];
    [mContent.get() setPlaceID:nil];
    [mContent.get() setRef:nil];
    [mContent.get() setPageID:nil];

    EXPECT_EQ([mContent.get() contentURL], nil);
    EXPECT_EQ([mContent.get() placeID], nil);
    EXPECT_EQ([mContent.get() ref], nil);
    EXPECT_EQ([mContent.get() pageID], nil);
}

TEST_P(FacebookContent, MakesAnEmptyListOfNilPeople) {
    NSArray<NSString*>* nobody = nil; // Not const: the compiler would see the nil.
    [mContent.get() setPeopleIDs:@[ @"1" ]];

    [mContent.get() setPeopleIDs:nobody];

    ASSERT_NE([mContent.get() peopleIDs], nil);
    EXPECT_EQ([[mContent.get() peopleIDs] count], 0u);
}

TEST_P(FacebookContent, CopiesWhatIsSet) {
    NSMutableArray<NSString*>* const people = [NSMutableArray arrayWithObject:@"1"];
    NSMutableString* const place = [NSMutableString stringWithString:@"place"];
    [mContent.get() setPeopleIDs:people];
    [mContent.get() setPlaceID:place];
    [mContent.get() setRef:place];
    [mContent.get() setPageID:place];

    [people addObject:@"2"];
    [place appendString:@" and more"];

    EXPECT_EQ([[mContent.get() peopleIDs] count], 1u);
    EXPECT_EQ(Text([mContent.get() placeID]), "place");
    EXPECT_EQ(Text([mContent.get() ref]), "place");
    EXPECT_EQ(Text([mContent.get() pageID]), "place");
}

TEST_P(FacebookContent, HasAnIDOfItsOwn) {
    const RetainPtr<id<FBSDKSharingContent>> other =
        AdoptNS<id<FBSDKSharingContent>>([[[mContent.get() class] alloc] init]);

    EXPECT_NE([[mContent.get() shareUUID] length], 0u);
    EXPECT_EQ(Text([mContent.get() shareUUID]), Text([mContent.get() shareUUID]));
    EXPECT_NE(Text([mContent.get() shareUUID]), Text([other.get() shareUUID]));
}

TEST_P(FacebookContent, IsNotRecorded) {
    [mContent.get() setPeopleIDs:@[ @"1" ]];
    [mContent.get() setContentURL:nil];
    FaultOf(mContent.get());

    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

#pragma mark - Links

class FacebookLink : public FacebookPlatformTest {};

TEST_F(FacebookLink, HasAQuote) {
    FBSDKShareLinkContent* const content = Link(nil);
    EXPECT_EQ([content quote], nil);
    NSMutableString* const quote = [NSMutableString stringWithString:@"quote"];

    [content setQuote:quote];
    [quote appendString:@" and more"];

    EXPECT_EQ(Text([content quote]), "quote");
    [content setQuote:nil];
    EXPECT_EQ([content quote], nil);
}

TEST_F(FacebookLink, IsValidWithoutAURL) {
    EXPECT_EQ(FaultOf(Link(nil)), "");
}

TEST_F(FacebookLink, IsValidWithAnAddressOfTheWeb) {
    EXPECT_EQ(FaultOf(Link(@"http://host/page")), "");
    EXPECT_EQ(FaultOf(Link(@"https://host/page")), "");
    EXPECT_EQ(FaultOf(Link(@"HTTPS://host/page")), "");
}

TEST_F(FacebookLink, IsInvalidWithAnyOtherURL) {
    for (NSString* url in @[ @"ftp://host/page", @"file:///page", @"page", @"www.host.com", @"httpx://host" ]) {
        EXPECT_EQ(FaultOf(Link(url)), kInvalid) << Text(url);
    }
}

TEST_F(FacebookLink, TellsWhichArgumentIsInvalidAndNothingForUsers) {
    FBSDKShareLinkContent* const content = Link(@"ftp://host/page");
    NSError* error = nil;

    EXPECT_FALSE([content validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error]);

    NSDictionary* const userInfo = [error userInfo];
    EXPECT_EQ(Text([userInfo objectForKey:FBSDKErrorDeveloperMessageKey]),
              "Invalid value for contentURL: ftp://host/page");
    EXPECT_EQ(Text([userInfo objectForKey:FBSDKErrorArgumentNameKey]), "contentURL");
    EXPECT_EQ([userInfo objectForKey:FBSDKErrorArgumentValueKey], [content contentURL]);
    EXPECT_EQ([userInfo objectForKey:NSLocalizedDescriptionKey], nil);
}

TEST_F(FacebookLink, MayBeValidatedWithoutAPlaceForTheError) {
    EXPECT_FALSE([Link(@"ftp://host") validateWithOptions:FBSDKShareBridgeOptionsDefault error:nullptr]);
    EXPECT_TRUE([Link(nil) validateWithOptions:FBSDKShareBridgeOptionsDefault error:nullptr]);
}

TEST_F(FacebookLink, LeavesTheErrorAloneWhenNothingIsWrong) {
    NSError* const former = [NSError errorWithDomain:@"former" code:1 userInfo:nil];
    NSError* error = former;

    EXPECT_TRUE([Link(nil) validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error]);

    EXPECT_EQ(error, former);
}

#pragma mark - Photos

class FacebookPhoto : public FacebookPlatformTest {};

TEST_F(FacebookPhoto, KeepsItsImageAndWhoMadeIt) {
    UIImage* const image = Image();

    const RetainPtr<FBSDKSharePhoto*> photo = AdoptNS([[FBSDKSharePhoto alloc] initWithImage:image
                                                                             isUserGenerated:YES]);

    EXPECT_EQ([photo.get() image], image);
    EXPECT_TRUE([photo.get() isUserGenerated]);
    EXPECT_EQ([photo.get() imageURL], nil);
    EXPECT_EQ([photo.get() caption], nil);
}

TEST_F(FacebookPhoto, IsNotUserGeneratedWhenItSaysSo) {
    FBSDKSharePhoto* const photo = Photo();
    EXPECT_FALSE([photo isUserGenerated]);

    [photo setIsUserGenerated:YES];

    EXPECT_TRUE([photo isUserGenerated]);
}

TEST_F(FacebookPhoto, RetainsItsImage) {
    const RetainPtr<UIImage*> image = AdoptNS([[UIImage alloc] init]);
    @autoreleasepool {
        FBSDKSharePhoto* const photo = Photo(image.get());
        EXPECT_EQ([image.get() retainCount], 2u);
        [photo setImage:nil];
    }

    EXPECT_EQ([image.get() retainCount], 1u);
}

TEST_F(FacebookPhoto, HasNoSourceWhenMadeOfNil) {
    FBSDKSharePhoto* const photo = Photo(nil);

    ASSERT_NE(photo, nil);
    EXPECT_EQ([photo image], nil);
    EXPECT_EQ([photo imageURL], nil);
}

TEST_F(FacebookPhoto, AnImageURLTakesTheImagesPlace) {
    FBSDKSharePhoto* const photo = Photo();

    [photo setImageURL:URL(@"file:///photo.png")];

    EXPECT_EQ([photo image], nil);
    EXPECT_EQ(Text([[photo imageURL] absoluteString]), "file:///photo.png");
}

TEST_F(FacebookPhoto, AnImageTakesTheImageURLsPlace) {
    FBSDKSharePhoto* const photo = Photo(nil);
    UIImage* const image = Image();
    [photo setImageURL:URL(@"file:///photo.png")];

    [photo setImage:image];

    EXPECT_EQ([photo image], image);
    EXPECT_EQ([photo imageURL], nil);
}

TEST_F(FacebookPhoto, ASourceOfNilLeavesNone) {
    FBSDKSharePhoto* const photo = Photo();

    [photo setImageURL:nil];

    EXPECT_EQ([photo image], nil);
}

TEST_F(FacebookPhoto, CopiesItsCaption) {
    FBSDKSharePhoto* const photo = Photo();
    NSMutableString* const caption = [NSMutableString stringWithString:@"caption"];

    [photo setCaption:caption];
    [caption appendString:@" and more"];

    EXPECT_EQ(Text([photo caption]), "caption");
}

class FacebookPhotoContent : public FacebookPlatformTest {};

TEST_F(FacebookPhotoContent, HasNoPhotosAtFirst) {
    const RetainPtr<FBSDKSharePhotoContent*> content = AdoptNS([[FBSDKSharePhotoContent alloc] init]);

    ASSERT_NE([content.get() photos], nil);
    EXPECT_EQ([[content.get() photos] count], 0u);
}

TEST_F(FacebookPhotoContent, MakesAnEmptyListOfNil) {
    NSArray<FBSDKSharePhoto*>* nothing = nil; // Not const: the compiler would see the nil.
    FBSDKSharePhotoContent* const content = PhotoContent(Photos(2));

    [content setPhotos:nothing];

    ASSERT_NE([content photos], nil);
    EXPECT_EQ([[content photos] count], 0u);
}

TEST_F(FacebookPhotoContent, CopiesTheList) {
    NSMutableArray<FBSDKSharePhoto*>* const photos = [NSMutableArray arrayWithArray:Photos(2)];
    FBSDKSharePhotoContent* const content = PhotoContent(photos);

    [photos removeAllObjects];

    EXPECT_EQ([[content photos] count], 2u);
}

TEST_F(FacebookPhotoContent, IsInvalidWithoutPhotos) {
    EXPECT_EQ(FaultOf(PhotoContent(@[])), kInvalid);
}

class FacebookMostPhotos : public FacebookPlatformTest,
                           public ::testing::WithParamInterface<std::pair<FacebookProfile, int>> {};

INSTANTIATE_TEST_SUITE_P(All, FacebookMostPhotos,
                         ::testing::Values(std::pair(FacebookProfile::k15_0, 6), std::pair(FacebookProfile::k17_0, 6),
                                           std::pair(FacebookProfile::k18_0, 10), std::pair(FacebookProfile::k18_1, 10),
                                           std::pair(FacebookProfile::kAsDocumented, 10)));

TEST_P(FacebookMostPhotos, AreValidAndOneMoreIsNot) {
    const auto [profile, most] = GetParam();
    SetFacebookProfile(profile);

    EXPECT_EQ(FaultOf(PhotoContent(Photos(1))), "");
    EXPECT_EQ(FaultOf(PhotoContent(Photos(most))), "");
    EXPECT_EQ(FaultOf(PhotoContent(Photos(most + 1))), kInvalid);
}

TEST_F(FacebookPhotoContent, IsInvalidWhenAnyPhotoHasNoSource) {
    EXPECT_EQ(FaultOf(PhotoContent(@[ Photo(), Photo(nil) ])), kInvalid);
    EXPECT_EQ(FaultOf(PhotoContent(@[ Photo(nil), Photo() ])), kInvalid);
}

TEST_F(FacebookPhotoContent, IsValidWithAnImageURLAsTheSource) {
    FBSDKSharePhoto* const photo = Photo(nil);
    [photo setImageURL:URL(@"file:///photo.png")];

    EXPECT_EQ(FaultOf(PhotoContent(@[ photo ])), "");
}

TEST_F(FacebookPhotoContent, IsNotAskedForAnAddressOfTheWeb) {
    FBSDKSharePhotoContent* const content = PhotoContent(Photos(1));
    [content setContentURL:URL(@"ftp://host")];

    EXPECT_EQ(FaultOf(content), "");
}

#pragma mark - Videos

class FacebookVideo : public FacebookPlatformTest {};

TEST_F(FacebookVideo, KeepsItsURLAndItsPreview) {
    FBSDKSharePhoto* const preview = Photo();

    FBSDKShareVideo* const video = Video(@"assets-library://asset?id=1", preview);

    EXPECT_EQ(Text([[video videoURL] absoluteString]), "assets-library://asset?id=1");
    EXPECT_EQ([video previewPhoto], preview);
    EXPECT_EQ([video data], nil);
}

TEST_F(FacebookVideo, NeedsNoPreview) {
    EXPECT_EQ([Video(@"assets-library://asset") previewPhoto], nil);
}

TEST_F(FacebookVideo, EndsTheProcessWhenMadeOfNil) {
    EXPECT_DEATH(Video(nil), "initWithVideoURL:previewPhoto:");
    EXPECT_DEATH(Video(nil, Photo()), "initWithVideoURL:previewPhoto:");
}

TEST_F(FacebookVideo, AnotherURLClearsThePreview) {
    FBSDKShareVideo* const video = Video(@"assets-library://asset", Photo());

    [video setVideoURL:URL(@"assets-library://other")];

    EXPECT_EQ(Text([[video videoURL] absoluteString]), "assets-library://other");
    EXPECT_EQ([video previewPhoto], nil);
}

TEST_F(FacebookVideo, DataTakeTheURLsPlaceAndClearThePreview) {
    FBSDKShareVideo* const video = Video(@"assets-library://asset", Photo());
    NSData* const data = [NSData dataWithBytes:"x" length:1];

    [video setData:data];

    EXPECT_TRUE([[video data] isEqualToData:data]);
    EXPECT_EQ([video videoURL], nil);
    EXPECT_EQ([video previewPhoto], nil);
}

TEST_F(FacebookVideo, AURLTakesTheDatasPlace) {
    FBSDKShareVideo* const video = Video(@"assets-library://asset");
    [video setData:[NSData dataWithBytes:"x" length:1]];

    [video setVideoURL:URL(@"assets-library://other")];

    EXPECT_EQ([video data], nil);
    EXPECT_EQ(Text([[video videoURL] absoluteString]), "assets-library://other");
}

TEST_F(FacebookVideo, APreviewLeavesTheSource) {
    FBSDKShareVideo* const video = Video(@"assets-library://asset");
    FBSDKSharePhoto* const preview = Photo();

    [video setPreviewPhoto:preview];

    EXPECT_EQ([video previewPhoto], preview);
    EXPECT_NE([video videoURL], nil);
}

class FacebookVideoContent : public FacebookPlatformTest {};

TEST_F(FacebookVideoContent, HasAVideoWithoutASourceAtFirst) {
    const RetainPtr<FBSDKShareVideoContent*> content = AdoptNS([[FBSDKShareVideoContent alloc] init]);

    ASSERT_NE([content.get() video], nil);
    EXPECT_EQ([[content.get() video] videoURL], nil);
    EXPECT_EQ([[content.get() video] data], nil);
}

TEST_F(FacebookVideoContent, HasAVideoOfItsOwnAtFirst) {
    const RetainPtr<FBSDKShareVideoContent*> one = AdoptNS([[FBSDKShareVideoContent alloc] init]);
    const RetainPtr<FBSDKShareVideoContent*> other = AdoptNS([[FBSDKShareVideoContent alloc] init]);

    EXPECT_NE([one.get() video], [other.get() video]);
}

TEST_F(FacebookVideoContent, KeepsTheVideo) {
    FBSDKShareVideo* const video = Video(@"assets-library://asset");

    EXPECT_EQ([VideoContent(video) video], video);
}

TEST_F(FacebookVideoContent, IsInvalidWithoutASource) {
    const RetainPtr<FBSDKShareVideoContent*> content = AdoptNS([[FBSDKShareVideoContent alloc] init]);
    NSError* error = nil;

    EXPECT_EQ(FaultOf(content.get()), kInvalid);
    [content.get() validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error];
    EXPECT_EQ(Text([[error userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]), "Value for video is required.");
    EXPECT_EQ(FaultOf(VideoContent(nil)), kInvalid);
}

TEST_F(FacebookVideoContent, IsValidWithAVideoOfThePhotoLibrary) {
    EXPECT_EQ(FaultOf(VideoContent(Video(@"assets-library://asset/asset.MOV?id=1&ext=MOV"))), "");
    EXPECT_EQ(FaultOf(VideoContent(Video(@"ASSETS-LIBRARY://asset"))), "");
}

TEST_F(FacebookVideoContent, IsInvalidWithAnyOtherURL) {
    for (NSString* url in @[
             @"file:///video.mov", @"https://host/video.mov", @"/video.mov", @"video.mov", @"assets-library2://asset"
         ]) {
        EXPECT_EQ(FaultOf(VideoContent(Video(url))), kInvalid) << Text(url);
    }
    const RetainPtr<FBSDKShareVideo*> file =
        AdoptNS([[FBSDKShareVideo alloc] initWithVideoURL:[NSURL fileURLWithPath:@"/video.mov"] previewPhoto:nil]);
    EXPECT_EQ(FaultOf(VideoContent(file.get())), kInvalid);
}

TEST_F(FacebookVideoContent, IsInvalidWithData) {
    FBSDKShareVideo* const video = Video(@"assets-library://asset");
    [video setData:[NSData dataWithBytes:"x" length:1]];

    EXPECT_EQ(FaultOf(VideoContent(video)), kInvalid);
}

} // namespace
} // namespace Tarvik::Vorn::Test
