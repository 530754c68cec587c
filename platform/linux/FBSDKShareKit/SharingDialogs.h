// What share dialog and message dialog have in common. For the stand-ins' own use.
#pragma once

#include "FBSDKShareKit/ShareDialogs.h"
#include "FBSDKShareKit/SharingContent.h"

namespace Tarvik::Vorn::Host {

// The properties of FBSDKSharing. Counted by LivingShareDialogCount. No locks: a dialog belongs to one thread at a
// time.
struct SharingDialogState {
    id<FBSDKSharingDelegate> delegate = nil; // Not retained, and not cleared when it ends.
    RetainPtr<id<FBSDKSharingContent>> content;
    BOOL shouldFailOnDataError = NO;

    SharingDialogState();
    virtual ~SharingDialogState();
    SharingDialogState(const SharingDialogState&) = delete;
    SharingDialogState& operator=(const SharingDialogState&) = delete;
};

// Where an open dialog shows.
enum class ShareWindow { kApp, kSheet, kBrowser, kWebView };

// An open dialog, which the SDK keeps alive, and what becomes of it when the app that it should show in is not opened.
struct OpenDialog {
    RetainPtr<id<FBSDKSharingDialog, NSObject>> dialog;
    ShareSurface surface = ShareSurface::kShareDialog;
    ShareWindow window = ShareWindow::kApp;
    bool mayShowSheet = false;
    bool mayShowFeed = false;
};

// The end of show: enters the call in ShownDialogs. Without an error the dialog is open from now on, or, when it needs
// a view controller and none is found, is forgotten; otherwise the delegate gets the error on this thread. The
// listener of Openings.h is told of an open dialog last. Returns what show answers.
BOOL Show(OpenDialog dialog, FBSDKShareDialogMode mode, NSError* error);

bool IsMessengerAllowed();
bool IsTrackingAllowed();

} // namespace Tarvik::Vorn::Host
