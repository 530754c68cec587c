// What a test or the simulator sees and decides of game-request dialogs.
//
// Each dialog that could be opened is held until AnswerGameRequest ends it on the thread of its caller. A dialog whose
// content is not valid never opens: its delegate gets the error inside show.
//
// A dialog's delegate is not retained; it must outlive the dialog. A dialog without content ends the process.
#pragma once

#include "HostExport.h"
#include "Openings.h"
#include "VornRetainPtr.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>
#import <Foundation/Foundation.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Host {

// Where the dialog opens.
enum class GameRequestRoute {
    kNone,   // Nowhere: the content was refused, or there is nothing to show from.
    kGaming, // In the Facebook app: the current login is a gaming one and fbapi can be opened.
    kWeb,    // In the browser.
};

// One call of show, with the content as it was then.
struct GameRequest {
    std::string title;
    std::string message;
    std::vector<std::string> recipients;
    FBSDKGameRequestFilter filters = FBSDKGameRequestFilterNone;
    GameRequestRoute route = GameRequestRoute::kNone;
    // Whom the request really goes to, as far as the page is told: the web page gets `recipients`, the Facebook app the
    // suggestions, which nobody sets here.
    std::vector<std::string> sentRecipients;
};

// Every call of show since the last reset, in order. Any thread.
VORN_HOST_EXPORT std::vector<GameRequest> GameRequests();

// How many dialogs are open. Any thread.
VORN_HOST_EXPORT size_t OpenGameRequestCount();

// How a game-request dialog ends. A value; any thread.
class VORN_HOST_EXPORT GameRequestAnswer {
public:
    // The user sent the request. The results have the form of the dialog's route:
    //   web: "request", "to[0]", "to[1]", ..., and "didComplete" as YES;
    //   gaming: "request_id", and "recipients" as a list unless there is none.
    // With FacebookProfile::kAsDocumented, on both routes: "request", and "to" as a list.
    static GameRequestAnswer Sent(NSString* requestID, NSArray<NSString*>* recipients);

    // The user cancelled with the page's button. Web: a completion with "completionGesture" as "cancel". Gaming, which
    // has no such button, and FacebookProfile::kAsDocumented: gameRequestDialogDidCancel:.
    static GameRequestAnswer CancelButton();

    // The user closed the page or came back to the app without an answer: gameRequestDialogDidCancel:.
    static GameRequestAnswer Closed();

    // The page reported an error. The SDK drops it: the dialog ends and the delegate is never called. With
    // FacebookProfile::kAsDocumented the delegate gets Core 14.
    static GameRequestAnswer ErrorOfThePage();

    // The page's answer is no dictionary at all: Share 203.
    static GameRequestAnswer WithoutResults();

    // An error of the caller's choice.
    static GameRequestAnswer Failed(NSError* error);

    // A completion with exactly these results, nil included, whatever the route.
    static GameRequestAnswer Completed(NSDictionary* results);

private:
    friend VORN_HOST_EXPORT bool AnswerGameRequest(const GameRequestAnswer& answer, size_t index, Closing closing);

    enum class Kind { kSent, kCancelButton, kClosed, kErrorOfThePage, kFailed, kCompleted };

    Kind mKind = Kind::kClosed;
    RetainPtr<NSString*> mRequestID;
    RetainPtr<NSArray*> mRecipients;
    RetainPtr<NSDictionary*> mResults;
    RetainPtr<NSError*> mError;
};

// Ends an open dialog, the one that has been open longest for index 0: tells its delegate on this thread. Returns false,
// and does nothing, when there is no such dialog. Any thread; an exception that the delegate throws passes through.
VORN_HOST_EXPORT bool AnswerGameRequest(const GameRequestAnswer& answer, size_t index = 0,
                                        Closing closing = Closing::kCloses);

// From now on no dialog finds a view controller to show from: it opens nowhere, waits for nothing and never tells its
// delegate, as with the SDK. Undone by the reset.
VORN_HOST_EXPORT void SetGameRequestsCanShow(bool canShow);

// Forgets all dialogs; their delegates are not told.
VORN_HOST_EXPORT void ResetGameRequests();

} // namespace Tarvik::Vorn::Host
