// What a test or the simulator sees and decides of share dialogs and Messenger's message dialogs.
//
// Each dialog that could be opened is held until AnswerShare ends it on the thread of its caller. A dialog that is
// refused tells its delegate the error inside show. Delegates and view controllers are not retained, as with the SDK,
// and must outlive their dialogs: there is nothing here that would notice their end. Which apps are installed is
// decided in UIApplication+Control.h. A share dialog of the automatic mode shows in Facebook's app if that can be
// opened, otherwise in the browser.
#pragma once

#include "HostExport.h"
#include "Openings.h"
#include "VornRetainPtr.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <Foundation/Foundation.h>

#include <cstddef>
#include <vector>

namespace Tarvik::Vorn::Host {

enum class ShareSurface { kShareDialog, kMessageDialog };

// One call of show.
struct ShownDialog {
    ShareSurface surface = ShareSurface::kShareDialog;
    FBSDKShareDialogMode mode = FBSDKShareDialogModeAutomatic; // Of a share dialog.
    RetainPtr<id> content;                                     // The object itself; an empty handle for none.
    bool opened = false;                                       // What show answered.
};

// Every call of show since the last reset, in order. Any thread.
VORN_HOST_EXPORT std::vector<ShownDialog> ShownDialogs();

// How many dialogs are open. Any thread.
VORN_HOST_EXPORT size_t OpenShareDialogCount();

// How many share and message dialogs exist, shown or not. Any thread.
VORN_HOST_EXPORT size_t LivingShareDialogCount();

// How a dialog ends. A value; any thread.
class VORN_HOST_EXPORT ShareAnswer {
public:
    // Completed. Share dialog: results {} or {"postId": postID}. Message dialog: {"didComplete": YES,
    // "completionGesture": "message"}, and "postId" if there is one.
    static ShareAnswer Completed(NSString* postID = nil);

    // The user cancelled: sharerDidCancel:.
    static ShareAnswer Cancelled();

    // The user came back to the app without an answer: sharerDidCancel:.
    static ShareAnswer ReturnedToApp();

    // The Facebook app or the page reported an error. The SDK drops it: the dialog ends and the delegate is never
    // called. With FacebookProfile::kAsDocumented the delegate gets Core 14.
    static ShareAnswer ErrorOfTheApp();

    // The system would not open the app or the browser. A share dialog in Facebook's app then shows the share sheet if
    // it has a view controller, and after that the feed dialog in the browser if its content is a link: it stays open,
    // and may be answered again. Otherwise Core 11 for the app and the sheet, Core 12 for the browser.
    static ShareAnswer NotOpened();

    // An error of the caller's choice; a completion with exactly these results, nil included.
    static ShareAnswer Failed(NSError* error);
    static ShareAnswer CompletedWith(NSDictionary* results);

private:
    friend VORN_HOST_EXPORT bool AnswerShare(const ShareAnswer& answer, size_t index, Closing closing);

    enum class Kind { kCompleted, kCompletedWith, kCancelled, kErrorOfTheApp, kNotOpened, kFailed };

    Kind mKind = Kind::kCancelled;
    RetainPtr<NSString*> mPostID;
    RetainPtr<NSDictionary*> mResults;
    RetainPtr<NSError*> mError;
};

// Ends an open dialog, the one that has been open longest for index 0: tells its delegate on this thread. Returns
// false, and does nothing, when there is no such dialog. A dialog that was not opened and goes on in another window is
// open there afterwards, as the youngest, whatever `closing` says. Any thread; an exception that the delegate throws
// passes through.
VORN_HOST_EXPORT bool AnswerShare(const ShareAnswer& answer, size_t index = 0, Closing closing = Closing::kCloses);

// Whether the server's configuration lets Messenger be used. Default true; false makes a message dialog's canShow NO.
VORN_HOST_EXPORT void SetMessengerAllowed(bool allowed);

// Whether the user lets the app track them (matters from FacebookProfile::k17_0 on). Default true.
VORN_HOST_EXPORT void SetTrackingAllowed(bool allowed);

// Whether a dialog finds a view controller to show the browser over. Default true. Without one, show answers YES and
// the dialog does not open: its delegate is never called.
VORN_HOST_EXPORT void SetShareDialogsFindViewController(bool find);

// Forgets all dialogs, whose delegates are not told, and takes the settings back to their defaults.
VORN_HOST_EXPORT void ResetShareDialogs();

} // namespace Tarvik::Vorn::Host
