#include "CallText.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "FBSDKShareKit/SharingDialogs.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "UIKit/UIApplication+Control.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "FBSDKMessageDialog";

bool IsMessengerAvailable() {
    return IsMessengerAllowed() && CanOpenURL([NSURL URLWithString:@"fb-messenger-share-api:/"]);
}

NSError* MessageFault(const SharingDialogState& dialog) {
    id<FBSDKSharingContent> const content = dialog.content.get();
    return content == nil ? MissingArgument(@"shareContent") : ContentFault(content);
}

} // namespace

@implementation FBSDKMessageDialog

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<SharingDialogState>(self, zone);
}

- (instancetype)initWithContent:(id<FBSDKSharingContent>)content delegate:(id<FBSDKSharingDelegate>)delegate {
    PlatformCalls::RecordInitializer(
        self, kClassName, "initWithContent:delegate:", JoinArguments({ObjectText(content), ObjectText(delegate)}));
    self = [super init];
    if (self != nil) {
        SharingDialogState& state = StateOf<SharingDialogState>(self);
        state.content = RetainPtr(content);
        state.delegate = delegate;
    }
    return self;
}

- (void)dealloc {
    DestroyState<SharingDialogState>(self);
    [super dealloc];
}

- (id<FBSDKSharingDelegate>)delegate {
    return StateOf<SharingDialogState>(self).delegate;
}

- (void)setDelegate:(id<FBSDKSharingDelegate>)delegate {
    PlatformCalls::Record(kClassName, "setDelegate:", ObjectText(delegate));
    StateOf<SharingDialogState>(self).delegate = delegate;
}

- (id<FBSDKSharingContent>)shareContent {
    return StateOf<SharingDialogState>(self).content.get();
}

- (void)setShareContent:(id<FBSDKSharingContent>)shareContent {
    PlatformCalls::Record(kClassName, "setShareContent:", ObjectText(shareContent));
    StateOf<SharingDialogState>(self).content = RetainPtr(shareContent);
}

- (BOOL)shouldFailOnDataError {
    return StateOf<SharingDialogState>(self).shouldFailOnDataError;
}

- (void)setShouldFailOnDataError:(BOOL)shouldFailOnDataError {
    PlatformCalls::Record(kClassName, "setShouldFailOnDataError:", shouldFailOnDataError ? "YES" : "NO");
    StateOf<SharingDialogState>(self).shouldFailOnDataError = shouldFailOnDataError;
}

- (BOOL)canShow {
    return IsMessengerAvailable();
}

- (BOOL)validateWithError:(NSError**)errorRef {
    PlatformCalls::Record(kClassName, "validateWithError:");
    return Report(MessageFault(StateOf<SharingDialogState>(self)), errorRef);
}

- (BOOL)show {
    const SharingDialogState& state = StateOf<SharingDialogState>(self);
    PlatformCalls::Record(kClassName, "show", ContentText(state.content.get()));
    NSError* const error = IsMessengerAvailable()
                               ? MessageFault(state)
                               : MakeSDKError(FBSDKShareErrorDomain, FBSDKShareErrorDialogNotAvailable,
                                              @"Message dialog is not available.");
    OpenDialog dialog;
    dialog.dialog = RetainPtr<id<FBSDKSharingDialog, NSObject>>(self);
    dialog.surface = ShareSurface::kMessageDialog;
    return Show(std::move(dialog), FBSDKShareDialogModeAutomatic, error);
}

@end
