// Share dialog and Messenger's message dialog: what they refuse and in which order, how long they are kept, and how
// they end.
#include "FacebookPlatformTest.h"

#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "UIKit/UIApplication+Control.h"

#import <UIKit/UIKit.h>

#include <atomic>
#include <stdexcept>

// Keeps what a dialog told, the calls in their order.
@interface VornShareWitness : NSObject <FBSDKSharingDelegate> {
@public
    std::vector<std::string> calls; // "complete", "fail", "cancel"
    Tarvik::Vorn::RetainPtr<NSDictionary*> results;
    Tarvik::Vorn::RetainPtr<NSError*> error;
    const void* sharer; // Compared only.
    std::thread::id thread;
    std::function<void()> whenTold; // May be empty.
}
@end

@implementation VornShareWitness

- (void)heard:(const char*)call of:(id<FBSDKSharing>)theSharer {
    calls.push_back(call);
    sharer = theSharer;
    thread = std::this_thread::get_id();
    const std::function<void()> work = whenTold; // A copy: the work may replace itself.
    if (work) {
        work();
    }
}

- (void)sharer:(id<FBSDKSharing>)theSharer didCompleteWithResults:(NSDictionary<NSString*, id>*)theResults {
    results = Tarvik::Vorn::RetainPtr<NSDictionary*>(theResults);
    [self heard:"complete" of:theSharer];
}

- (void)sharer:(id<FBSDKSharing>)theSharer didFailWithError:(NSError*)theError {
    error = Tarvik::Vorn::RetainPtr(theError);
    [self heard:"fail" of:theSharer];
}

- (void)sharerDidCancel:(id<FBSDKSharing>)theSharer {
    [self heard:"cancel" of:theSharer];
}

@end

// Content that the SDK does not know.
@interface VornForeignContent : NSObject <FBSDKSharingContent> {
@public
    int validations;
}
@end

@implementation VornForeignContent

- (NSURL*)contentURL {
    return nil;
}
- (void)setContentURL:(NSURL*)contentURL {
}
- (NSArray<NSString*>*)peopleIDs {
    return @[];
}
- (void)setPeopleIDs:(NSArray<NSString*>*)peopleIDs {
}
- (NSString*)placeID {
    return nil;
}
- (void)setPlaceID:(NSString*)placeID {
}
- (NSString*)ref {
    return nil;
}
- (void)setRef:(NSString*)ref {
}
- (NSString*)pageID {
    return nil;
}
- (void)setPageID:(NSString*)pageID {
}
- (NSString*)shareUUID {
    return nil;
}
- (BOOL)validateWithOptions:(FBSDKShareBridgeOptions)bridgeOptions error:(NSError**)errorRef {
    ++validations;
    return YES;
}

@end

namespace Tarvik::Vorn::Test {
namespace {

using Host::AnswerShare;
using Host::FacebookProfile;
using Host::InstalledApp;
using Host::PlatformCall;
using Host::SetFacebookProfile;
using Host::ShareAnswer;
using Host::ShareSurface;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kInvalid = "com.facebook.sdk.share 2";
const std::string kNotAvailable = "com.facebook.sdk.share 202";

std::string ErrorText(NSError* error) {
    return error == nil ? "no error" : Text([error domain]) + " " + std::to_string([error code]);
}

FBSDKShareLinkContent* Link(NSString* url = @"https://host/page") {
    FBSDKShareLinkContent* const content = [[[FBSDKShareLinkContent alloc] init] autorelease];
    [content setContentURL:url == nil ? nil : [NSURL URLWithString:url]];
    return content;
}

FBSDKSharePhotoContent* Photos(int count = 1, UIImage* image = [[[UIImage alloc] init] autorelease]) {
    NSMutableArray<FBSDKSharePhoto*>* const photos = [NSMutableArray array];
    for (int index = 0; index < count; ++index) {
        [photos addObject:[[[FBSDKSharePhoto alloc] initWithImage:image isUserGenerated:NO] autorelease]];
    }
    FBSDKSharePhotoContent* const content = [[[FBSDKSharePhotoContent alloc] init] autorelease];
    [content setPhotos:photos];
    return content;
}

FBSDKShareVideoContent* Video(NSString* url = @"assets-library://asset/asset.MOV?id=1") {
    FBSDKShareVideoContent* const content = [[[FBSDKShareVideoContent alloc] init] autorelease];
    [content setVideo:[[[FBSDKShareVideo alloc] initWithVideoURL:[NSURL URLWithString:url]
                                                    previewPhoto:nil] autorelease]];
    return content;
}

VornForeignContent* Foreign() {
    return [[[VornForeignContent alloc] init] autorelease];
}

class FacebookDialogs : public FacebookPlatformTest {
protected:
    ~FacebookDialogs() override { Host::ResetShareDialogs(); }

    FBSDKShareDialog* ShareDialog(id<FBSDKSharingContent> content,
                                  FBSDKShareDialogMode mode = FBSDKShareDialogModeNative,
                                  UIViewController* controller = nil) {
        FBSDKShareDialog* const dialog = [[[FBSDKShareDialog alloc] initWithViewController:controller
                                                                                   content:content
                                                                                  delegate:Witness()] autorelease];
        [dialog setMode:mode];
        return dialog;
    }

    FBSDKMessageDialog* MessageDialog(id<FBSDKSharingContent> content) {
        return [[[FBSDKMessageDialog alloc] initWithContent:content delegate:Witness()] autorelease];
    }

    // Shows and expects that it opens.
    template <class Dialog>
    Dialog* Opened(Dialog* dialog) {
        EXPECT_TRUE([dialog show]);
        EXPECT_THAT(Told(), IsEmpty());
        return dialog;
    }

    // The error with which the dialog refuses to show, told before show returns; "opened" when it does not refuse.
    std::string Refusal(id<FBSDKSharingDialog> dialog) {
        Witness()->calls.clear();
        Witness()->error = {};
        const size_t open = Host::OpenShareDialogCount();
        if ([dialog show]) {
            EXPECT_THAT(Told(), IsEmpty());
            EXPECT_EQ(Host::OpenShareDialogCount(), open + 1);
            return "opened";
        }
        EXPECT_THAT(Told(), ElementsAre("fail"));
        EXPECT_EQ(Host::OpenShareDialogCount(), open);
        EXPECT_EQ(Witness()->sharer, static_cast<const void*>(dialog));
        EXPECT_EQ([[Witness()->error.get() userInfo] objectForKey:NSLocalizedDescriptionKey], nil);
        return ErrorText(Witness()->error.get());
    }

    VornShareWitness* Witness() const { return mWitness.get(); }
    const std::vector<std::string>& Told() const { return mWitness.get()->calls; }

    static void LogIn() { Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[ @"email" ])); }

private:
    RetainPtr<VornShareWitness*> mWitness = AdoptNS([[VornShareWitness alloc] init]);
};

#pragma mark - Share dialog: what it refuses

class FacebookShareDialog : public FacebookDialogs {};

TEST_F(FacebookShareDialog, OpensEachKindOfContentInTheApp) {
    EXPECT_EQ(Refusal(ShareDialog(Link())), "opened");
    EXPECT_EQ(Refusal(ShareDialog(Link(nil))), "opened");
    EXPECT_EQ(Refusal(ShareDialog(Photos())), "opened");
    EXPECT_EQ(Refusal(ShareDialog(Video())), "opened");
}

TEST_F(FacebookShareDialog, RefusesNoContentWithAnErrorOfASwiftType) {
    const std::string refusal = Refusal(ShareDialog(nil));

    EXPECT_EQ([Witness()->error.get() code], 1);
    EXPECT_THAT(refusal, ::testing::StartsWith("FBSDKShareKit."));
}

TEST_F(FacebookShareDialog, RefusesNoContentBeforeItLooksAtTheMode) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);

    Refusal(ShareDialog(nil));

    EXPECT_EQ([Witness()->error.get() code], 1);
}

TEST_F(FacebookShareDialog, RefusesContentOfAnotherClassWithoutAskingIt) {
    VornForeignContent* const content = Foreign();

    EXPECT_EQ(Refusal(ShareDialog(content)), kInvalid);

    EXPECT_EQ(content->validations, 0);
}

TEST_F(FacebookShareDialog, RefusesALinkThatIsNoAddressOfTheWeb) {
    EXPECT_EQ(Refusal(ShareDialog(Link(@"ftp://host"))), kInvalid);
}

TEST_F(FacebookShareDialog, RefusesNoPhotosTooManyAndOnesWithoutASource) {
    EXPECT_EQ(Refusal(ShareDialog(Photos(0))), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Photos(10))), "opened");
    EXPECT_EQ(Refusal(ShareDialog(Photos(11))), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Photos(1, nil))), kInvalid);
}

TEST_F(FacebookShareDialog, RefusesTheSeventhPhotoBefore18) {
    SetFacebookProfile(FacebookProfile::k17_0);

    EXPECT_EQ(Refusal(ShareDialog(Photos(6))), "opened");
    EXPECT_EQ(Refusal(ShareDialog(Photos(7))), kInvalid);
}

class FacebookShareMode : public FacebookShareDialog, public ::testing::WithParamInterface<FBSDKShareDialogMode> {};

INSTANTIATE_TEST_SUITE_P(All, FacebookShareMode,
                         ::testing::Values(FBSDKShareDialogModeAutomatic, FBSDKShareDialogModeNative,
                                           FBSDKShareDialogModeShareSheet, FBSDKShareDialogModeBrowser,
                                           FBSDKShareDialogModeWeb, FBSDKShareDialogModeFeedBrowser,
                                           FBSDKShareDialogModeFeedWeb));

TEST_P(FacebookShareMode, RefusesVideosThatAreNotOfThePhotoLibrary) {
    EXPECT_EQ(Refusal(ShareDialog(Video(@"file:///video.mov"), GetParam())), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Video(@"https://host/video.mov"), GetParam())), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Video(@"/video.mov"), GetParam())), kInvalid);
}

TEST_P(FacebookShareMode, RefusesVideosWithoutASourceAndWithData) {
    FBSDKShareVideoContent* const withData = Video();
    [[withData video] setData:[NSData dataWithBytes:"x" length:1]];

    EXPECT_EQ(Refusal(ShareDialog([[[FBSDKShareVideoContent alloc] init] autorelease], GetParam())), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(withData, GetParam())), kInvalid);
}

TEST_P(FacebookShareMode, OpensALinkWithAURL) {
    EXPECT_EQ(Refusal(ShareDialog(Link(), GetParam())), "opened");
}

TEST_P(FacebookShareMode, NeedsTheAppOnlyWhenItIsNative) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);

    EXPECT_EQ(Refusal(ShareDialog(Link(), GetParam())),
              GetParam() == FBSDKShareDialogModeNative ? kNotAvailable : "opened");
}

TEST_P(FacebookShareMode, NeedsTrackingFrom17OnInBothWebModes) {
    Host::SetTrackingAllowed(false);
    const bool isWeb = GetParam() == FBSDKShareDialogModeWeb || GetParam() == FBSDKShareDialogModeFeedWeb;

    for (const FacebookProfile profile :
         {FacebookProfile::k17_0, FacebookProfile::k18_0, FacebookProfile::k18_1, FacebookProfile::kAsDocumented}) {
        SetFacebookProfile(profile);
        EXPECT_EQ(Refusal(ShareDialog(Link(), GetParam())), isWeb ? kInvalid : "opened");
    }
    SetFacebookProfile(FacebookProfile::k15_0);
    EXPECT_EQ(Refusal(ShareDialog(Link(), GetParam())), "opened");
}

TEST_F(FacebookShareDialog, NativeNeedsFbapiAndNotFbauth2) {
    Host::SetSchemeOpenable(@"fbauth2", false);
    EXPECT_EQ(Refusal(ShareDialog(Link())), "opened");

    Host::SetSchemeOpenable(@"fbapi", false);
    Host::SetSchemeOpenable(@"fbauth2", true);
    EXPECT_EQ(Refusal(ShareDialog(Link())), kNotAvailable);
}

TEST_F(FacebookShareDialog, NativeNeedsFbapiInTheInfoPlist) {
    Host::RegisterQueriesSchemes(@[ @"fbauth2", @"fb-messenger-share-api" ]);
    EXPECT_EQ(Refusal(ShareDialog(Link())), kNotAvailable);

    Host::RegisterQueriesSchemes(@[ @"fbapi" ]);
    EXPECT_EQ(Refusal(ShareDialog(Link())), "opened");
}

TEST_F(FacebookShareDialog, NativeLooksAtTheContentBeforeTheApp) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);

    EXPECT_EQ(Refusal(ShareDialog(Foreign())), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Link(@"ftp://host"))), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Photos(0))), kInvalid);
    EXPECT_EQ(Refusal(ShareDialog(Video(@"file:///video.mov"))), kInvalid);
}

TEST_F(FacebookShareDialog, BrowserNeedsALinksURL) {
    EXPECT_EQ(Refusal(ShareDialog(Link(nil), FBSDKShareDialogModeBrowser)), kInvalid);
}

TEST_F(FacebookShareDialog, BrowserNeedsATokenForPhotos) {
    EXPECT_EQ(Refusal(ShareDialog(Photos(), FBSDKShareDialogModeBrowser)), kInvalid);

    LogIn();

    EXPECT_EQ(Refusal(ShareDialog(Photos(), FBSDKShareDialogModeBrowser)), "opened");
}

TEST_F(FacebookShareDialog, BrowserNeedsTrackingForPhotosFrom17On) {
    LogIn();
    Host::SetTrackingAllowed(false);

    EXPECT_EQ(Refusal(ShareDialog(Photos(), FBSDKShareDialogModeBrowser)), kInvalid);
    SetFacebookProfile(FacebookProfile::k17_0);
    EXPECT_EQ(Refusal(ShareDialog(Photos(), FBSDKShareDialogModeBrowser)), kInvalid);
    SetFacebookProfile(FacebookProfile::k15_0);
    EXPECT_EQ(Refusal(ShareDialog(Photos(), FBSDKShareDialogModeBrowser)), "opened");
}

TEST_F(FacebookShareDialog, BrowserRefusesVideos) {
    LogIn();

    EXPECT_EQ(Refusal(ShareDialog(Video(), FBSDKShareDialogModeBrowser)), kInvalid);
}

TEST_F(FacebookShareDialog, RefusalWithoutADelegateIsToldNobody) {
    FBSDKShareDialog* const dialog = ShareDialog(Link(@"ftp://host"));
    [dialog setDelegate:nil];

    EXPECT_FALSE([dialog show]);

    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FacebookShareDialog, RefusalIsToldOnTheThreadOfShow) {
    std::thread::id caller;

    OnAnotherThread([&] {
        caller = std::this_thread::get_id();
        [ShareDialog(nil) show];
    });

    EXPECT_EQ(Witness()->thread, caller);
}

TEST_F(FacebookShareDialog, RefusedIsNotKept) {
    const size_t living = Host::LivingShareDialogCount();
    @autoreleasepool {
        [ShareDialog(nil) show];
    }

    EXPECT_EQ(Host::LivingShareDialogCount(), living);
}

TEST_F(FacebookShareDialog, ARefusalMayShowAnotherDialog) {
    Witness()->whenTold = [this] {
        Witness()->whenTold = nullptr;
        EXPECT_TRUE([ShareDialog(Link()) show]);
    };

    EXPECT_FALSE([ShareDialog(nil) show]);

    EXPECT_EQ(Host::OpenShareDialogCount(), 1u);
}

TEST_F(FacebookShareDialog, ValidatesAsShowDoesWithoutTellingTheDelegate) {
    NSError* error = nil;

    EXPECT_TRUE([ShareDialog(Link()) validateWithError:&error]);
    EXPECT_EQ(error, nil);
    EXPECT_FALSE([ShareDialog(Link(nil), FBSDKShareDialogModeBrowser) validateWithError:&error]);
    EXPECT_EQ(ErrorText(error), kInvalid);
    Host::SetAppInstalled(InstalledApp::kFacebook, false);
    EXPECT_FALSE([ShareDialog(Link()) validateWithError:&error]);
    EXPECT_EQ(ErrorText(error), kNotAvailable);
    EXPECT_FALSE([ShareDialog(nil) validateWithError:nullptr]);
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Host::ShownDialogs().size(), 0u);
}

TEST_F(FacebookShareDialog, CanShowWhatShowWouldOpen) {
    EXPECT_TRUE([ShareDialog(Link()) canShow]);
    EXPECT_FALSE([ShareDialog(Link(@"ftp://host")) canShow]);
    EXPECT_FALSE([ShareDialog(Video(), FBSDKShareDialogModeBrowser) canShow]);
}

TEST_F(FacebookShareDialog, WithoutContentCanShowWhereItsModeCan) {
    EXPECT_TRUE([ShareDialog(nil) canShow]);

    Host::SetAppInstalled(InstalledApp::kFacebook, false);

    EXPECT_FALSE([ShareDialog(nil) canShow]);
    EXPECT_TRUE([ShareDialog(nil, FBSDKShareDialogModeBrowser) canShow]);
}

#pragma mark - Share dialog: properties and lifetime

TEST_F(FacebookShareDialog, KeepsWhatItIsMadeWith) {
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    FBSDKShareLinkContent* const content = Link();

    const RetainPtr<FBSDKShareDialog*> dialog =
        AdoptNS([[FBSDKShareDialog alloc] initWithViewController:controller.get() content:content delegate:Witness()]);

    EXPECT_EQ([dialog.get() fromViewController], controller.get());
    EXPECT_EQ(static_cast<id>([dialog.get() shareContent]), content);
    EXPECT_EQ(static_cast<id>([dialog.get() delegate]), Witness());
    EXPECT_EQ([dialog.get() mode], FBSDKShareDialogModeAutomatic);
    EXPECT_FALSE([dialog.get() shouldFailOnDataError]);
}

TEST_F(FacebookShareDialog, KeepsWhatIsSet) {
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    FBSDKShareDialog* const dialog = ShareDialog(nil);
    FBSDKShareLinkContent* const content = Link();

    [dialog setFromViewController:controller.get()];
    [dialog setShareContent:content];
    [dialog setDelegate:nil];
    [dialog setMode:FBSDKShareDialogModeFeedBrowser];
    [dialog setShouldFailOnDataError:YES];

    EXPECT_EQ([dialog fromViewController], controller.get());
    EXPECT_EQ(static_cast<id>([dialog shareContent]), content);
    EXPECT_EQ(static_cast<id>([dialog delegate]), nil);
    EXPECT_EQ([dialog mode], FBSDKShareDialogModeFeedBrowser);
    EXPECT_TRUE([dialog shouldFailOnDataError]);
}

TEST_F(FacebookShareDialog, RetainsItsContentOnly) {
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    const RetainPtr<FBSDKShareLinkContent*> content = AdoptNS([[FBSDKShareLinkContent alloc] init]);
    const NSUInteger witness = [Witness() retainCount];
    @autoreleasepool {
        ShareDialog(content.get(), FBSDKShareDialogModeNative, controller.get());
        EXPECT_EQ([content.get() retainCount], 2u);
        EXPECT_EQ([controller.get() retainCount], 1u);
        EXPECT_EQ([Witness() retainCount], witness);
    }

    EXPECT_EQ([content.get() retainCount], 1u);
}

TEST_F(FacebookShareDialog, IsKeptWhileItIsOpenAndItsDelegateIsNot) {
    const size_t living = Host::LivingShareDialogCount();
    const NSUInteger witness = [Witness() retainCount];
    @autoreleasepool {
        Opened(ShareDialog(Link()));
    }
    EXPECT_EQ(Host::LivingShareDialogCount(), living + 1);
    EXPECT_EQ([Witness() retainCount], witness);

    AnswerShare(ShareAnswer::Cancelled());

    EXPECT_EQ(Host::LivingShareDialogCount(), living);
}

TEST_F(FacebookShareDialog, MayLoseItsDelegateWhileItIsOpen) {
    FBSDKShareDialog* const dialog = Opened(ShareDialog(Link()));

    [dialog setDelegate:nil];

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed()));
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FacebookShareDialog, MayBeShownTwice) {
    FBSDKShareDialog* const dialog = ShareDialog(Link());
    EXPECT_TRUE([dialog show]);
    EXPECT_TRUE([dialog show]);

    EXPECT_TRUE(AnswerShare(ShareAnswer::Cancelled()));
    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed()));
    EXPECT_THAT(Told(), ElementsAre("cancel", "complete"));
}

#pragma mark - Share dialog: how it ends

TEST_F(FacebookShareDialog, CompletesWithNothing) {
    FBSDKShareDialog* const dialog = Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed()));

    EXPECT_THAT(Told(), ElementsAre("complete"));
    EXPECT_TRUE([Witness()->results.get() isEqualToDictionary:@{}]);
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(dialog));
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
}

TEST_F(FacebookShareDialog, CompletesWithThePostsID) {
    Opened(ShareDialog(Link(), FBSDKShareDialogModeBrowser));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed(@"17")));

    EXPECT_TRUE([Witness()->results.get() isEqualToDictionary:@{@"postId" : @"17"}]);
}

TEST_F(FacebookShareDialog, IsCancelled) {
    FBSDKShareDialog* const dialog = Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Cancelled()));

    EXPECT_THAT(Told(), ElementsAre("cancel"));
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(dialog));
}

TEST_F(FacebookShareDialog, IsCancelledByComingBackToTheApp) {
    Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::ReturnedToApp()));

    EXPECT_THAT(Told(), ElementsAre("cancel"));
}

TEST_F(FacebookShareDialog, AnErrorOfTheAppEndsItAndIsToldNobody) {
    const size_t living = Host::LivingShareDialogCount();
    @autoreleasepool {
        Opened(ShareDialog(Link()));
    }

    EXPECT_TRUE(AnswerShare(ShareAnswer::ErrorOfTheApp()));

    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Host::LivingShareDialogCount(), living);
}

TEST_F(FacebookShareDialog, AnErrorOfTheAppIsCore14AsDocumented) {
    SetFacebookProfile(FacebookProfile::kAsDocumented);
    Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::ErrorOfTheApp()));

    EXPECT_THAT(Told(), ElementsAre("fail"));
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 14");
}

TEST_F(FacebookShareDialog, AnAppThatDoesNotOpenIsCore11) {
    FBSDKShareDialog* const dialog = Opened(ShareDialog(Photos()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_THAT(Told(), ElementsAre("fail"));
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(dialog));
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 11");
    EXPECT_EQ([[Witness()->error.get() userInfo] objectForKey:NSLocalizedDescriptionKey], nil);
}

TEST_F(FacebookShareDialog, ABrowserThatDoesNotOpenIsCore12) {
    Opened(ShareDialog(Link(), FBSDKShareDialogModeBrowser));

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 12");
}

TEST_F(FacebookShareDialog, AWebViewThatDoesNotOpenIsCore12) {
    Opened(ShareDialog(Link(), FBSDKShareDialogModeWeb));

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 12");
}

TEST_F(FacebookShareDialog, ALinkGoesToTheBrowserWhenTheAppDoesNotOpen) {
    Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Host::OpenShareDialogCount(), 1u);

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 12");
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
}

TEST_F(FacebookShareDialog, ALinkInTheBrowserInTheAppsPlaceCompletes) {
    Opened(ShareDialog(Link()));
    AnswerShare(ShareAnswer::NotOpened());

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed(@"17")));

    EXPECT_THAT(Told(), ElementsAre("complete"));
}

TEST_F(FacebookShareDialog, WithAViewControllerTheSheetComesFirst) {
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    Opened(ShareDialog(Photos(), FBSDKShareDialogModeNative, controller.get()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));
    EXPECT_THAT(Told(), IsEmpty());

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 11");
}

TEST_F(FacebookShareDialog, WithAViewControllerALinkGoesFromTheSheetToTheBrowser) {
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    Opened(ShareDialog(Link(), FBSDKShareDialogModeNative, controller.get()));

    AnswerShare(ShareAnswer::NotOpened());
    AnswerShare(ShareAnswer::NotOpened());
    EXPECT_THAT(Told(), IsEmpty());

    AnswerShare(ShareAnswer::NotOpened());
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 12");
}

TEST_F(FacebookShareDialog, AutomaticShowsInTheAppWhenThereIsOneAndInTheBrowserOtherwise) {
    Opened(ShareDialog(Photos(), FBSDKShareDialogModeAutomatic));
    AnswerShare(ShareAnswer::NotOpened());
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 11");

    Witness()->calls.clear();
    Host::SetAppInstalled(InstalledApp::kFacebook, false);
    Opened(ShareDialog(Photos(), FBSDKShareDialogModeAutomatic));
    AnswerShare(ShareAnswer::NotOpened());
    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 12");
}

TEST_F(FacebookShareDialog, WithoutAViewControllerTheBrowserDoesNotOpenAndNobodyIsTold) {
    Host::SetShareDialogsFindViewController(false);
    const size_t living = Host::LivingShareDialogCount();

    @autoreleasepool {
        EXPECT_TRUE([ShareDialog(Link(), FBSDKShareDialogModeBrowser) show]);
    }

    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
    EXPECT_EQ(Host::LivingShareDialogCount(), living);
    ASSERT_EQ(Host::ShownDialogs().size(), 1u);
    EXPECT_TRUE(Host::ShownDialogs()[0].opened);
}

TEST_F(FacebookShareDialog, WithoutAViewControllerTheAppOpensAllTheSame) {
    Host::SetShareDialogsFindViewController(false);

    EXPECT_EQ(Refusal(ShareDialog(Link())), "opened");
}

TEST_F(FacebookShareDialog, WithoutAViewControllerTheBrowserDoesNotTakeTheAppsPlace) {
    Opened(ShareDialog(Link()));
    Host::SetShareDialogsFindViewController(false);

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
}

#pragma mark - Message dialog

class FacebookMessageDialog : public FacebookDialogs {};

TEST_F(FacebookMessageDialog, OpensEachKindOfContent) {
    EXPECT_EQ(Refusal(MessageDialog(Link())), "opened");
    EXPECT_EQ(Refusal(MessageDialog(Link(nil))), "opened");
    EXPECT_EQ(Refusal(MessageDialog(Photos())), "opened");
    EXPECT_EQ(Refusal(MessageDialog(Video())), "opened");
}

TEST_F(FacebookMessageDialog, RefusesNoContent) {
    EXPECT_EQ(Refusal(MessageDialog(nil)), kInvalid);
    EXPECT_EQ(Text([[Witness()->error.get() userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]),
              "Value for shareContent is required.");
}

TEST_F(FacebookMessageDialog, RefusesContentOfAnotherClassWithoutAskingIt) {
    VornForeignContent* const content = Foreign();

    EXPECT_EQ(Refusal(MessageDialog(content)), kInvalid);

    EXPECT_EQ(content->validations, 0);
}

TEST_F(FacebookMessageDialog, RefusesContentThatIsInvalid) {
    EXPECT_EQ(Refusal(MessageDialog(Link(@"ftp://host"))), kInvalid);
    EXPECT_EQ(Refusal(MessageDialog(Photos(0))), kInvalid);
    EXPECT_EQ(Refusal(MessageDialog(Photos(11))), kInvalid);
    EXPECT_EQ(Refusal(MessageDialog(Video(@"file:///video.mov"))), kInvalid);
}

TEST_F(FacebookMessageDialog, WithoutMessengerIsNotAvailableWhateverTheContent) {
    Host::SetAppInstalled(InstalledApp::kMessenger, false);

    EXPECT_EQ(Refusal(MessageDialog(Link())), kNotAvailable);
    EXPECT_EQ(Refusal(MessageDialog(nil)), kNotAvailable);
    EXPECT_EQ(Refusal(MessageDialog(Foreign())), kNotAvailable);
    EXPECT_EQ(Refusal(MessageDialog(Photos(0))), kNotAvailable);
}

TEST_F(FacebookMessageDialog, DoesNotNeedTheAppOfFacebook) {
    Host::SetAppInstalled(InstalledApp::kFacebook, false);

    EXPECT_EQ(Refusal(MessageDialog(Link())), "opened");
}

TEST_F(FacebookMessageDialog, NeedsTheShareSchemeOfMessenger) {
    Host::SetSchemeOpenable(@"fb-messenger", false);
    EXPECT_TRUE([MessageDialog(Link()) canShow]);

    Host::SetSchemeOpenable(@"fb-messenger-share-api", false);
    EXPECT_FALSE([MessageDialog(Link()) canShow]);
    EXPECT_EQ(Refusal(MessageDialog(Link())), kNotAvailable);
}

TEST_F(FacebookMessageDialog, NeedsItsSchemeInTheInfoPlist) {
    Host::RegisterQueriesSchemes(@[ @"fbapi" ]);
    EXPECT_FALSE([MessageDialog(Link()) canShow]);
    EXPECT_EQ(Refusal(MessageDialog(Link())), kNotAvailable);

    Host::RegisterQueriesSchemes(@[ @"fb-messenger-share-api" ]);
    EXPECT_TRUE([MessageDialog(Link()) canShow]);
    EXPECT_EQ(Refusal(MessageDialog(Link())), "opened");
}

TEST_F(FacebookMessageDialog, NeedsTheServersConfiguration) {
    Host::SetMessengerAllowed(false);

    EXPECT_FALSE([MessageDialog(Link()) canShow]);
    EXPECT_EQ(Refusal(MessageDialog(Link())), kNotAvailable);
}

TEST_F(FacebookMessageDialog, CanShowWhateverTheContent) {
    EXPECT_TRUE([MessageDialog(nil) canShow]);
    EXPECT_TRUE([MessageDialog(Foreign()) canShow]);
    EXPECT_TRUE([MessageDialog(Photos(0)) canShow]);
}

TEST_F(FacebookMessageDialog, ValidatesTheContentOnly) {
    Host::SetAppInstalled(InstalledApp::kMessenger, false);
    NSError* error = nil;

    EXPECT_TRUE([MessageDialog(Link()) validateWithError:&error]);
    EXPECT_EQ(error, nil);
    EXPECT_FALSE([MessageDialog(nil) validateWithError:&error]);
    EXPECT_EQ(ErrorText(error), kInvalid);
    EXPECT_FALSE([MessageDialog(Photos(0)) validateWithError:nullptr]);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FacebookMessageDialog, KeepsItsProperties) {
    FBSDKMessageDialog* const dialog = MessageDialog(Link());
    FBSDKSharePhotoContent* const content = Photos();
    EXPECT_EQ(static_cast<id>([dialog delegate]), Witness());

    [dialog setShareContent:content];
    [dialog setDelegate:nil];
    [dialog setShouldFailOnDataError:YES];

    EXPECT_EQ(static_cast<id>([dialog shareContent]), content);
    EXPECT_EQ(static_cast<id>([dialog delegate]), nil);
    EXPECT_TRUE([dialog shouldFailOnDataError]);
}

TEST_F(FacebookMessageDialog, IsKeptWhileItIsOpenAndItsDelegateIsNot) {
    const size_t living = Host::LivingShareDialogCount();
    const NSUInteger witness = [Witness() retainCount];
    @autoreleasepool {
        Opened(MessageDialog(Link()));
    }
    EXPECT_EQ(Host::LivingShareDialogCount(), living + 1);
    EXPECT_EQ([Witness() retainCount], witness);

    AnswerShare(ShareAnswer::Completed());

    EXPECT_EQ(Host::LivingShareDialogCount(), living);
}

TEST_F(FacebookMessageDialog, CompletesWithTheWholeAnswer) {
    FBSDKMessageDialog* const dialog = Opened(MessageDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed()));

    EXPECT_THAT(Told(), ElementsAre("complete"));
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(dialog));
    EXPECT_TRUE([Witness()->results.get()
        isEqualToDictionary:(
                                @{@"didComplete" : @(YES),
                                  @"completionGesture" : @"message"})]);
}

TEST_F(FacebookMessageDialog, CompletesWithThePostsIDToo) {
    Opened(MessageDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed(@"17")));

    EXPECT_TRUE([Witness()->results.get()
        isEqualToDictionary:(
                                @{@"didComplete" : @(YES),
                                  @"completionGesture" : @"message",
                                  @"postId" : @"17"})]);
}

TEST_F(FacebookMessageDialog, IsCancelled) {
    Opened(MessageDialog(Link()));
    Opened(MessageDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Cancelled()));
    EXPECT_TRUE(AnswerShare(ShareAnswer::ReturnedToApp()));

    EXPECT_THAT(Told(), ElementsAre("cancel", "cancel"));
}

TEST_F(FacebookMessageDialog, AnAppThatDoesNotOpenIsCore11) {
    Opened(MessageDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::NotOpened()));

    EXPECT_EQ(ErrorText(Witness()->error.get()), "com.facebook.sdk.core 11");
}

TEST_F(FacebookMessageDialog, AnErrorOfTheAppIsToldNobody) {
    Opened(MessageDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::ErrorOfTheApp()));

    EXPECT_THAT(Told(), IsEmpty());
}

#pragma mark - Answers

TEST_F(FacebookDialogs, EndWithTheErrorOfTheCallersChoice) {
    NSError* const error = Host::MakeError(@"any", 1LL << 33, nil);
    Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Failed(error)));

    EXPECT_THAT(Told(), ElementsAre("fail"));
    EXPECT_EQ(Witness()->error.get(), error);
}

TEST_F(FacebookDialogs, EndWithTheResultsOfTheCallersChoice) {
    Opened(MessageDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::CompletedWith(@{@"completionGesture" : @"cancel"})));

    EXPECT_TRUE([Witness()->results.get() isEqualToDictionary:@{@"completionGesture" : @"cancel"}]);
}

TEST_F(FacebookDialogs, MayCompleteWithoutResults) {
    Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::CompletedWith(nil)));

    EXPECT_THAT(Told(), ElementsAre("complete"));
    EXPECT_EQ(Witness()->results.get(), nil);
}

TEST_F(FacebookDialogs, AreNotAnsweredWhenNoneIsOpen) {
    EXPECT_FALSE(AnswerShare(ShareAnswer::Completed()));

    Opened(ShareDialog(Link()));

    EXPECT_FALSE(AnswerShare(ShareAnswer::Completed(), 1));
    EXPECT_EQ(Host::OpenShareDialogCount(), 1u);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FacebookDialogs, AreAnsweredByTheOrderOfTheirOpening) {
    FBSDKShareDialog* const first = Opened(ShareDialog(Link()));
    FBSDKMessageDialog* const second = Opened(MessageDialog(Link()));
    FBSDKShareDialog* const third = Opened(ShareDialog(Link()));

    EXPECT_TRUE(AnswerShare(ShareAnswer::Cancelled(), 1));
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(second));
    EXPECT_TRUE(AnswerShare(ShareAnswer::Cancelled(), 1));
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(third));
    EXPECT_TRUE(AnswerShare(ShareAnswer::Cancelled(), 0));
    EXPECT_EQ(Witness()->sharer, static_cast<const void*>(first));
}

TEST_F(FacebookDialogs, AreAnsweredOnTheThreadOfTheAnswer) {
    Opened(ShareDialog(Link()));
    std::thread::id answering;

    OnAnotherThread([&answering] {
        answering = std::this_thread::get_id();
        AnswerShare(ShareAnswer::Completed());
    });

    EXPECT_EQ(Witness()->thread, answering);
}

TEST_F(FacebookDialogs, MayOpenAnotherWhenTheyEnd) {
    Opened(ShareDialog(Link()));
    Witness()->whenTold = [this] {
        Witness()->whenTold = nullptr;
        EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
        EXPECT_TRUE([MessageDialog(Link()) show]);
    };

    EXPECT_TRUE(AnswerShare(ShareAnswer::Completed()));

    EXPECT_EQ(Host::OpenShareDialogCount(), 1u);
}

TEST_F(FacebookDialogs, EndThoughTheirDelegateThrows) {
    const size_t living = Host::LivingShareDialogCount();
    @autoreleasepool {
        Opened(ShareDialog(Link()));
    }
    Witness()->whenTold = [] { throw std::runtime_error("from the delegate"); };

    EXPECT_THROW(AnswerShare(ShareAnswer::Completed()), std::runtime_error);

    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
    EXPECT_EQ(Host::LivingShareDialogCount(), living);
}

#pragma mark - Every call of show

TEST_F(FacebookDialogs, AreShownInTheOrderOfTheCalls) {
    FBSDKShareLinkContent* const link = Link();
    FBSDKSharePhotoContent* const photos = Photos();

    [ShareDialog(link, FBSDKShareDialogModeBrowser) show];
    [MessageDialog(photos) show];
    [ShareDialog(nil) show];

    const std::vector<Host::ShownDialog> shown = Host::ShownDialogs();
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[0].surface, ShareSurface::kShareDialog);
    EXPECT_EQ(shown[0].mode, FBSDKShareDialogModeBrowser);
    EXPECT_EQ(shown[0].content.get(), link);
    EXPECT_TRUE(shown[0].opened);
    EXPECT_EQ(shown[1].surface, ShareSurface::kMessageDialog);
    EXPECT_EQ(shown[1].content.get(), photos);
    EXPECT_TRUE(shown[1].opened);
    EXPECT_EQ(shown[2].mode, FBSDKShareDialogModeNative);
    EXPECT_FALSE(shown[2].content);
    EXPECT_FALSE(shown[2].opened);
}

TEST_F(FacebookDialogs, AreCountedWhetherShownOrNot) {
    const size_t living = Host::LivingShareDialogCount();
    @autoreleasepool {
        ShareDialog(nil);
        MessageDialog(nil);
        EXPECT_EQ(Host::LivingShareDialogCount(), living + 2);
    }

    EXPECT_EQ(Host::LivingShareDialogCount(), living);
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
}

TEST_F(FacebookDialogs, AreForgottenByAResetWithoutBeingTold) {
    const size_t living = Host::LivingShareDialogCount();
    const RetainPtr<FBSDKShareLinkContent*> content = AdoptNS([[FBSDKShareLinkContent alloc] init]);
    @autoreleasepool {
        Opened(ShareDialog(content.get()));
        Opened(MessageDialog(content.get()));
    }

    Host::ResetShareDialogs();

    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
    EXPECT_EQ(Host::LivingShareDialogCount(), living);
    EXPECT_EQ(Host::ShownDialogs().size(), 0u);
    EXPECT_EQ([content.get() retainCount], 1u);
}

TEST_F(FacebookDialogs, ResetBringsBackTheSettings) {
    Host::SetMessengerAllowed(false);
    Host::SetTrackingAllowed(false);
    Host::SetShareDialogsFindViewController(false);

    Host::ResetShareDialogs();

    EXPECT_TRUE([MessageDialog(nil) canShow]);
    EXPECT_EQ(Refusal(ShareDialog(Link(), FBSDKShareDialogModeWeb)), "opened");
    EXPECT_EQ(Refusal(ShareDialog(Link(), FBSDKShareDialogModeBrowser)), "opened");
}

TEST_F(FacebookDialogs, AreForgottenByAResetOfThePlatform) {
    Opened(ShareDialog(Link()));

    Host::ResetPlatform();

    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(FacebookDialogs, ErrorDomainIsTheSDKs) {
    EXPECT_EQ(Text(FBSDKShareErrorDomain), "com.facebook.sdk.share");
}

TEST_F(FacebookDialogs, AreShownAndAnsweredOnManyThreads) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 25;
    std::atomic<int> answers{0};
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&answers] {
            @autoreleasepool {
                for (int round = 0; round < kRounds; ++round) {
                    FBSDKShareDialog* const dialog =
                        [[[FBSDKShareDialog alloc] initWithViewController:nil content:Link() delegate:nil] autorelease];
                    [dialog show];
                    answers += AnswerShare(ShareAnswer::Completed()) ? 1 : 0;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(answers, kThreads * kRounds);
    EXPECT_EQ(Host::OpenShareDialogCount(), 0u);
    EXPECT_EQ(Host::ShownDialogs().size(), static_cast<size_t>(kThreads * kRounds));
}

#pragma mark - Record

TEST_F(FacebookDialogs, CallsOfAShareDialogAreRecorded) {
    const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
    FBSDKShareLinkContent* const content = Link();
    [content setPeopleIDs:@[ @"1", @"2" ]];

    FBSDKShareDialog* const dialog = [[[FBSDKShareDialog alloc] initWithViewController:controller.get()
                                                                               content:content
                                                                              delegate:Witness()] autorelease];
    [dialog setMode:FBSDKShareDialogModeBrowser];
    [dialog setDelegate:nil];
    [dialog setFromViewController:nil];
    [dialog setShouldFailOnDataError:YES];
    [dialog validateWithError:nullptr];
    [dialog show];
    [dialog setShareContent:nil];
    [dialog canShow];

    const std::string name = "FBSDKShareDialog";
    EXPECT_THAT(
        Host::PlatformCalls::All(),
        ElementsAre(PlatformCall{name, "initWithViewController:content:delegate:",
                                 "<UIViewController>, <FBSDKShareLinkContent>, <VornShareWitness>", true},
                    PlatformCall{name, "setMode:", "3", true}, PlatformCall{name, "setDelegate:", "nil", true},
                    PlatformCall{name, "setFromViewController:", "nil", true},
                    PlatformCall{name, "setShouldFailOnDataError:", "YES", true},
                    PlatformCall{name, "validateWithError:", "", true},
                    PlatformCall{name, "show",
                                 "<FBSDKShareLinkContent contentURL=\"https://host/page\" peopleIDs=[\"1\",\"2\"]>",
                                 true},
                    PlatformCall{name, "setShareContent:", "nil", true}));
}

TEST_F(FacebookDialogs, CallsOfAMessageDialogAreRecorded) {
    FBSDKMessageDialog* const dialog = [[[FBSDKMessageDialog alloc] initWithContent:nil delegate:nil] autorelease];
    [dialog setDelegate:Witness()];
    [dialog setShareContent:Photos(2)];
    [dialog canShow];
    [dialog setShouldFailOnDataError:NO];
    [dialog validateWithError:nullptr];
    OnAnotherThread([dialog] { [dialog show]; });

    const std::string name = "FBSDKMessageDialog";
    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{name, "initWithContent:delegate:", "nil, nil", true},
                            PlatformCall{name, "setDelegate:", "<VornShareWitness>", true},
                            PlatformCall{name, "setShareContent:", "<FBSDKSharePhotoContent>", true},
                            PlatformCall{name, "setShouldFailOnDataError:", "NO", true},
                            PlatformCall{name, "validateWithError:", "", true},
                            PlatformCall{name, "show", "<FBSDKSharePhotoContent contentURL=nil peopleIDs=[] photos=2>",
                                         false}));
}

TEST_F(FacebookDialogs, ShowIsRecordedWithADescriptionOfTheContent) {
    [MessageDialog(nil) show];
    [MessageDialog(Foreign()) show];
    [MessageDialog(Video(@"assets-library://asset")) show];
    [MessageDialog([[[FBSDKShareVideoContent alloc] init] autorelease]) show];

    std::vector<std::string> arguments;
    for (const PlatformCall& call : Host::PlatformCalls::All()) {
        if (call.selector == "show") {
            arguments.push_back(call.arguments);
        }
    }
    EXPECT_THAT(arguments,
                ElementsAre("nil", "<VornForeignContent>",
                            "<FBSDKShareVideoContent contentURL=nil peopleIDs=[] videoURL=\"assets-library://asset\">",
                            "<FBSDKShareVideoContent contentURL=nil peopleIDs=[] videoURL=nil>"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
