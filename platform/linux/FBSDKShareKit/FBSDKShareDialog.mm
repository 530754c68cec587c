#include "CallText.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "FBSDKShareKit/SharingDialogs.h"
#include "FacebookProfile.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "UIKit/UIApplication+Control.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "FBSDKShareDialog";

// What the error of a dialog without content is named after: a type of the SDK's own.
NSString* const kValidationErrorDomain = @"FBSDKShareKit.ShareDialog.ValidationError";

struct ShareDialogState : SharingDialogState {
    UIViewController* fromViewController = nil; // Not retained, and not cleared when it ends.
    FBSDKShareDialogMode mode = FBSDKShareDialogModeAutomatic;
};

bool IsFacebookOpenable() {
    return CanOpenURL([NSURL URLWithString:@"fbapi:/"]);
}

NSError* TrackingFault() {
    const bool isAsked = CurrentFacebookProfile() >= FacebookProfile::k17_0;
    return isAsked && !IsTrackingAllowed() ? MakeSDKError(FBSDKShareErrorDomain, FBSDKErrorInvalidArgument,
                                                          @"Web dialogs need the user's permission to track.")
                                           : nil;
}

// What is wrong with the mode itself, whatever the content.
NSError* ModeFault(FBSDKShareDialogMode mode) {
    switch (mode) {
    case FBSDKShareDialogModeNative:
        return IsFacebookOpenable() ? nil
                                    : MakeSDKError(FBSDKShareErrorDomain, FBSDKShareErrorDialogNotAvailable,
                                                   @"Native share dialog is not available.");
    case FBSDKShareDialogModeWeb:
    case FBSDKShareDialogModeFeedWeb:
        return TrackingFault();
    default:
        return nil;
    }
}

// Why a browser cannot show the content, which is one of the three.
NSError* BrowserFault(id<FBSDKSharingContent> content) {
    if ([content isKindOfClass:[FBSDKShareLinkContent class]]) {
        return [content contentURL] == nil ? InvalidArgument(@"shareContent", content) : nil;
    }
    if ([content isKindOfClass:[FBSDKSharePhotoContent class]]) {
        return [FBSDKAccessToken currentAccessToken] == nil ? InvalidArgument(@"shareContent", content)
                                                            : TrackingFault();
    }
    return InvalidArgument(@"shareContent", content);
}

NSError* DialogFault(const ShareDialogState& dialog) {
    id<FBSDKSharingContent> const content = dialog.content.get();
    if (content == nil) {
        return MakeSDKError(kValidationErrorDomain, 1, nil);
    }
    if (NSError* const error = ContentFault(content)) {
        return error;
    }
    return dialog.mode == FBSDKShareDialogModeBrowser ? BrowserFault(content) : ModeFault(dialog.mode);
}

ShareWindow WindowFor(FBSDKShareDialogMode mode) {
    switch (mode) {
    case FBSDKShareDialogModeNative:
        return ShareWindow::kApp;
    case FBSDKShareDialogModeShareSheet:
        return ShareWindow::kSheet;
    case FBSDKShareDialogModeBrowser:
    case FBSDKShareDialogModeFeedBrowser:
        return ShareWindow::kBrowser;
    case FBSDKShareDialogModeWeb:
    case FBSDKShareDialogModeFeedWeb:
        return ShareWindow::kWebView;
    default:
        return IsFacebookOpenable() ? ShareWindow::kApp : ShareWindow::kBrowser;
    }
}

} // namespace

@implementation FBSDKShareDialog

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ShareDialogState>(self, zone);
}

- (instancetype)initWithViewController:(UIViewController*)viewController
                               content:(id<FBSDKSharingContent>)content
                              delegate:(id<FBSDKSharingDelegate>)delegate {
    PlatformCalls::RecordInitializer(
        self, kClassName, "initWithViewController:content:delegate:",
        JoinArguments({ObjectText(viewController), ObjectText(content), ObjectText(delegate)}));
    self = [super init];
    if (self != nil) {
        ShareDialogState& state = StateOf<ShareDialogState>(self);
        state.fromViewController = viewController;
        state.content = RetainPtr(content);
        state.delegate = delegate;
    }
    return self;
}

- (void)dealloc {
    DestroyState<ShareDialogState>(self);
    [super dealloc];
}

- (id<FBSDKSharingDelegate>)delegate {
    return StateOf<ShareDialogState>(self).delegate;
}

- (void)setDelegate:(id<FBSDKSharingDelegate>)delegate {
    PlatformCalls::Record(kClassName, "setDelegate:", ObjectText(delegate));
    StateOf<ShareDialogState>(self).delegate = delegate;
}

- (id<FBSDKSharingContent>)shareContent {
    return StateOf<ShareDialogState>(self).content.get();
}

- (void)setShareContent:(id<FBSDKSharingContent>)shareContent {
    PlatformCalls::Record(kClassName, "setShareContent:", ObjectText(shareContent));
    StateOf<ShareDialogState>(self).content = RetainPtr(shareContent);
}

- (BOOL)shouldFailOnDataError {
    return StateOf<ShareDialogState>(self).shouldFailOnDataError;
}

- (void)setShouldFailOnDataError:(BOOL)shouldFailOnDataError {
    PlatformCalls::Record(kClassName, "setShouldFailOnDataError:", shouldFailOnDataError ? "YES" : "NO");
    StateOf<ShareDialogState>(self).shouldFailOnDataError = shouldFailOnDataError;
}

- (UIViewController*)fromViewController {
    return StateOf<ShareDialogState>(self).fromViewController;
}

- (void)setFromViewController:(UIViewController*)fromViewController {
    PlatformCalls::Record(kClassName, "setFromViewController:", ObjectText(fromViewController));
    StateOf<ShareDialogState>(self).fromViewController = fromViewController;
}

- (FBSDKShareDialogMode)mode {
    return StateOf<ShareDialogState>(self).mode;
}

- (void)setMode:(FBSDKShareDialogMode)mode {
    PlatformCalls::Record(kClassName, "setMode:", std::to_string(mode));
    StateOf<ShareDialogState>(self).mode = mode;
}

- (BOOL)canShow {
    const ShareDialogState& state = StateOf<ShareDialogState>(self);
    return (state.content ? DialogFault(state) : ModeFault(state.mode)) == nil;
}

- (BOOL)validateWithError:(NSError**)errorRef {
    PlatformCalls::Record(kClassName, "validateWithError:");
    return Report(DialogFault(StateOf<ShareDialogState>(self)), errorRef);
}

- (BOOL)show {
    const ShareDialogState& state = StateOf<ShareDialogState>(self);
    id<FBSDKSharingContent> const content = state.content.get();
    PlatformCalls::Record(kClassName, "show", ContentText(content));
    OpenDialog dialog;
    dialog.dialog = RetainPtr<id<FBSDKSharingDialog, NSObject>>(self);
    dialog.surface = ShareSurface::kShareDialog;
    dialog.window = WindowFor(state.mode);
    dialog.mayShowSheet = state.fromViewController != nil;
    dialog.mayShowFeed = [content isKindOfClass:[FBSDKShareLinkContent class]];
    return Show(std::move(dialog), state.mode, DialogFault(state));
}

@end
