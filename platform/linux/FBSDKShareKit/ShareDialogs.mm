#include "FBSDKShareKit/ShareDialogs.h"

#include "FBSDKCoreKit/SDKErrors.h"
#include "FBSDKShareKit/SharingDialogs.h"
#include "FacebookProfile.h"
#include "HeldThings.h"
#include "History.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <utility>

namespace Tarvik::Vorn::Host {

namespace {

struct Dialogs {
    std::mutex mutex;
    std::vector<OpenDialog> open;
    std::vector<ShownDialog> shown;
};

// Never destroyed: dialogs may be open when the process ends.
Dialogs& TheDialogs() {
    static auto& dialogs = *new Dialogs;
    return dialogs;
}

std::atomic<size_t> sLivingDialogs{0};
std::atomic<bool> sIsMessengerAllowed{true};
std::atomic<bool> sIsTrackingAllowed{true};
std::atomic<bool> sFindsViewController{true};

// Keeps the dialog, unless it shows over a view controller and there is none: then its delegate will never be called.
// Returns whether it is open.
bool Open(OpenDialog dialog) {
    if (dialog.window == ShareWindow::kBrowser && !sFindsViewController.load()) {
        return false;
    }
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    dialogs.open.push_back(std::move(dialog));
    return true;
}

// Where the dialog shows when it cannot show where it was meant to.
std::optional<ShareWindow> NextWindow(const OpenDialog& dialog) {
    if (dialog.window == ShareWindow::kApp && dialog.mayShowSheet) {
        return ShareWindow::kSheet;
    }
    if ((dialog.window == ShareWindow::kApp || dialog.window == ShareWindow::kSheet) && dialog.mayShowFeed) {
        return ShareWindow::kBrowser;
    }
    return std::nullopt;
}

// The open dialog at this place; a copy when it stays open there. `isNotOpened`: the system would not open its window,
// so that it leaves the place in any case if it goes on in another one.
std::optional<OpenDialog> TakeOpenDialog(size_t index, bool isNotOpened, Closing closing) {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    const bool goesOn = isNotOpened && index < dialogs.open.size() && NextWindow(dialogs.open[index]);
    return TakeHeld(dialogs.open, index, goesOn ? Closing::kCloses : closing);
}

void Complete(const OpenDialog& open, NSDictionary* results) {
    id<FBSDKSharingDialog> const dialog = open.dialog.get();
    [[dialog delegate] sharer:dialog didCompleteWithResults:results];
}

void Cancel(const OpenDialog& open) {
    id<FBSDKSharingDialog> const dialog = open.dialog.get();
    [[dialog delegate] sharerDidCancel:dialog];
}

void Fail(const OpenDialog& open, NSError* error) {
    id<FBSDKSharingDialog> const dialog = open.dialog.get();
    [[dialog delegate] sharer:dialog didFailWithError:error];
}

void NotOpened(OpenDialog dialog) {
    if (const std::optional<ShareWindow> next = NextWindow(dialog)) {
        dialog.window = *next;
        Open(std::move(dialog));
        return;
    }
    const bool isWeb = dialog.window == ShareWindow::kBrowser || dialog.window == ShareWindow::kWebView;
    Fail(dialog,
         MakeSDKError(FBSDKErrorDomain, isWeb ? FBSDKErrorBrowserUnavailable : FBSDKErrorAppVersionUnsupported, nil));
}

NSDictionary* Results(ShareSurface surface, NSString* postID) {
    NSMutableDictionary* const results = [NSMutableDictionary dictionary];
    if (surface == ShareSurface::kMessageDialog) {
        [results setObject:@(YES) forKey:@"didComplete"];
        [results setObject:@"message" forKey:@"completionGesture"];
    }
    if (postID != nil) {
        [results setObject:postID forKey:@"postId"];
    }
    return results;
}

} // namespace

SharingDialogState::SharingDialogState() {
    ++sLivingDialogs;
}

SharingDialogState::~SharingDialogState() {
    --sLivingDialogs;
}

BOOL Show(OpenDialog dialog, FBSDKShareDialogMode mode, NSError* error) {
    const bool opens = error == nil;
    if (IsHistoryKept()) {
        Dialogs& dialogs = TheDialogs();
        const std::lock_guard lock(dialogs.mutex);
        dialogs.shown.push_back({dialog.surface, mode, RetainPtr<id>([dialog.dialog.get() shareContent]), opens});
    }
    if (!opens) {
        Fail(dialog, error);
        return NO;
    }
    const bool isMessage = dialog.surface == ShareSurface::kMessageDialog;
    if (Open(std::move(dialog))) {
        TellOpening(isMessage ? Opening::kMessageDialog : Opening::kShareDialog);
    }
    return YES;
}

bool IsMessengerAllowed() {
    return sIsMessengerAllowed.load();
}

bool IsTrackingAllowed() {
    return sIsTrackingAllowed.load();
}

#pragma mark - Control

std::vector<ShownDialog> ShownDialogs() {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    return dialogs.shown;
}

size_t OpenShareDialogCount() {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    return dialogs.open.size();
}

size_t LivingShareDialogCount() {
    return sLivingDialogs.load();
}

ShareAnswer ShareAnswer::Completed(NSString* postID) {
    ShareAnswer answer;
    answer.mKind = Kind::kCompleted;
    answer.mPostID = CopyOf(postID);
    return answer;
}

ShareAnswer ShareAnswer::Cancelled() {
    return {};
}

ShareAnswer ShareAnswer::ReturnedToApp() {
    return Cancelled();
}

ShareAnswer ShareAnswer::ErrorOfTheApp() {
    ShareAnswer answer;
    answer.mKind = Kind::kErrorOfTheApp;
    return answer;
}

ShareAnswer ShareAnswer::NotOpened() {
    ShareAnswer answer;
    answer.mKind = Kind::kNotOpened;
    return answer;
}

ShareAnswer ShareAnswer::Failed(NSError* error) {
    ShareAnswer answer;
    answer.mKind = Kind::kFailed;
    answer.mError = RetainPtr(error);
    return answer;
}

ShareAnswer ShareAnswer::CompletedWith(NSDictionary* results) {
    ShareAnswer answer;
    answer.mKind = Kind::kCompletedWith;
    answer.mResults = CopyOf(results);
    return answer;
}

bool AnswerShare(const ShareAnswer& answer, size_t index, Closing closing) {
    @autoreleasepool {
        const bool isNotOpened = answer.mKind == ShareAnswer::Kind::kNotOpened;
        std::optional<OpenDialog> dialog = TakeOpenDialog(index, isNotOpened, closing);
        if (!dialog) {
            return false;
        }
        switch (answer.mKind) {
        case ShareAnswer::Kind::kCompleted:
            Complete(*dialog, Results(dialog->surface, answer.mPostID.get()));
            break;
        case ShareAnswer::Kind::kCompletedWith:
            Complete(*dialog, answer.mResults.get());
            break;
        case ShareAnswer::Kind::kCancelled:
            Cancel(*dialog);
            break;
        case ShareAnswer::Kind::kErrorOfTheApp:
            if (CurrentFacebookProfile() == FacebookProfile::kAsDocumented) {
                Fail(*dialog, MakeSDKError(FBSDKErrorDomain, FBSDKErrorBridgeAPIResponse, nil));
            }
            break;
        case ShareAnswer::Kind::kNotOpened:
            NotOpened(std::move(*dialog));
            break;
        case ShareAnswer::Kind::kFailed:
            Fail(*dialog, answer.mError.get());
            break;
        }
        return true;
    }
}

void SetMessengerAllowed(bool allowed) {
    sIsMessengerAllowed = allowed;
}

void SetTrackingAllowed(bool allowed) {
    sIsTrackingAllowed = allowed;
}

void SetShareDialogsFindViewController(bool find) {
    sFindsViewController = find;
}

void ResetShareDialogs() {
    std::vector<OpenDialog> open;
    std::vector<ShownDialog> shown;
    {
        Dialogs& dialogs = TheDialogs();
        const std::lock_guard lock(dialogs.mutex);
        std::swap(open, dialogs.open);
        std::swap(shown, dialogs.shown);
    }
    SetMessengerAllowed(true);
    SetTrackingAllowed(true);
    SetShareDialogsFindViewController(true);
    // Dialogs and contents are released here, outside the lock: that may run code of the caller's.
}

} // namespace Tarvik::Vorn::Host
