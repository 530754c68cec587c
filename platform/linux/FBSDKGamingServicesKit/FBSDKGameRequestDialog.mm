#include "CallText.h"
#include "FBSDKCoreKit/SDKErrors.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FacebookProfile.h"
#include "FatalError.h"
#include "HeldThings.h"
#include "History.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "UIKit/UIApplication+Control.h"

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

constexpr const char* kClassName = "FBSDKGameRequestDialog";

struct GameRequestDialogState {
    RetainPtr<FBSDKGameRequestContent*> content;
    id<FBSDKGameRequestDialogDelegate> delegate = nil; // Not retained.
};

// A dialog that waits for its answer. It keeps the SDK's object alive.
struct OpenGameRequest {
    RetainPtr<FBSDKGameRequestDialog*> dialog;
    GameRequestRoute route;
    FacebookProfile profile; // The one that held when it was shown.
};

struct Dialogs {
    std::mutex mutex;
    std::vector<OpenGameRequest> open; // In the order of their showing.
    std::vector<GameRequest> requests;
    bool canShow = true;
};

// Never destroyed: a dialog may be open when the process ends.
Dialogs& TheDialogs() {
    static auto& dialogs = *new Dialogs;
    return dialogs;
}

std::vector<std::string> TextsOf(NSArray<NSString*>* list) {
    std::vector<std::string> texts;
    for (NSString* text in list) {
        texts.push_back(PlainText(text));
    }
    return texts;
}

std::string ContentText(FBSDKGameRequestContent* content) {
    if (content == nil) {
        return "nil";
    }
    return "{\"title\":" + QuotedText([content title]) + ",\"message\":" + QuotedText([content message]) +
           ",\"recipients\":" + QuotedList([content recipients]) + ",\"filters\":" + std::to_string([content filters]) +
           '}';
}

// Depends on the login and on the installed apps at the time of the showing, and not on the content.
GameRequestRoute ChooseRoute() {
    const bool isGamingLogin =
        [[[FBSDKAuthenticationToken currentAuthenticationToken] graphDomain] isEqualToString:@"gaming"];
    return isGamingLogin && CanOpenURL([NSURL URLWithString:@"fbapi:/"]) ? GameRequestRoute::kGaming
                                                                         : GameRequestRoute::kWeb;
}

std::optional<OpenGameRequest> TakeOpenGameRequest(size_t index, Closing closing) {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    return TakeHeld(dialogs.open, index, closing);
}

// What show does, however it was called.
BOOL Show(FBSDKGameRequestDialog* dialog) {
    FBSDKGameRequestContent* const content = [dialog content];
    GameRequest request;
    request.title = PlainText([content title]);
    request.message = PlainText([content message]);
    request.recipients = TextsOf([content recipients]);
    request.filters = [content filters];

    NSError* error = nil;
    const BOOL isValid = [content validateWithOptions:FBSDKShareBridgeOptionsDefault error:&error];
    if (isValid) {
        request.route = ChooseRoute();
        request.sentRecipients =
            request.route == GameRequestRoute::kGaming ? TextsOf([content recipientSuggestions]) : request.recipients;
    }
    OpenGameRequest open{RetainPtr(dialog), request.route, CurrentFacebookProfile()};
    bool isOpen = false;
    {
        Dialogs& dialogs = TheDialogs();
        const std::lock_guard lock(dialogs.mutex);
        isOpen = isValid && dialogs.canShow;
        if (isOpen) {
            dialogs.open.push_back(std::move(open));
        } else {
            request.route = GameRequestRoute::kNone;
            request.sentRecipients.clear();
        }
        if (IsHistoryKept()) {
            dialogs.requests.push_back(std::move(request));
        }
    }
    if (!isValid) {
        const id<FBSDKGameRequestDialogDelegate> delegate = [dialog delegate];
        const RetainPtr<id> keptDelegate((id)delegate);
        [delegate gameRequestDialog:dialog didFailWithError:error];
    }
    if (isOpen) {
        TellOpening(Opening::kGameRequest);
    }
    return isValid;
}

// The results of a request that was sent; nil when the SDK takes the page's answer for a cancelled request.
NSDictionary* SentResults(const OpenGameRequest& open, NSString* requestID, NSArray* recipients) {
    NSMutableDictionary* const results = [NSMutableDictionary dictionary];
    if (open.profile == FacebookProfile::kAsDocumented) {
        [results setValue:requestID forKey:@"request"];
        [results setObject:recipients == nil ? @[] : recipients forKey:@"to"];
        return results;
    }
    if (open.route == GameRequestRoute::kGaming) {
        if (requestID == nil) {
            return nil;
        }
        [results setObject:requestID forKey:@"request_id"];
        if ([recipients count] != 0) {
            [results setObject:recipients forKey:@"recipients"];
        }
        return results;
    }
    [results setValue:requestID forKey:@"request"];
    NSUInteger index = 0;
    for (NSString* recipient in recipients) {
        [results setObject:recipient forKey:[NSString stringWithFormat:@"to[%lu]", (unsigned long)index]];
        ++index;
    }
    [results setObject:@(YES) forKey:@"didComplete"];
    return results;
}

} // namespace

@implementation FBSDKGameRequestDialog

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<GameRequestDialogState>(self, zone);
}

- (instancetype)initWithContent:(FBSDKGameRequestContent*)content
                       delegate:(id<FBSDKGameRequestDialogDelegate>)delegate {
    if (content == nil) {
        FatalError("-[FBSDKGameRequestDialog initWithContent:delegate:] was called with nil as the content");
    }
    self = [super init];
    if (self != nil) {
        [self setContent:content];
        [self setDelegate:delegate];
    }
    return self;
}

- (void)dealloc {
    DestroyState<GameRequestDialogState>(self);
    [super dealloc];
}

+ (FBSDKGameRequestDialog*)dialogWithContent:(FBSDKGameRequestContent*)content
                                    delegate:(id<FBSDKGameRequestDialogDelegate>)delegate {
    return [[[FBSDKGameRequestDialog alloc] initWithContent:content delegate:delegate] autorelease];
}

+ (FBSDKGameRequestDialog*)showWithContent:(FBSDKGameRequestContent*)content
                                  delegate:(id<FBSDKGameRequestDialogDelegate>)delegate {
    PlatformCalls::Record(kClassName,
                          "showWithContent:delegate:", JoinArguments({ContentText(content), ObjectText((id)delegate)}));
    FBSDKGameRequestDialog* const dialog = [self dialogWithContent:content delegate:delegate];
    Show(dialog);
    return dialog;
}

- (BOOL)show {
    PlatformCalls::Record(kClassName, "show");
    return Show(self);
}

- (BOOL)canShow {
    return YES;
}

- (FBSDKGameRequestContent*)content {
    return StateOf<GameRequestDialogState>(self).content.get();
}

- (void)setContent:(FBSDKGameRequestContent*)content {
    if (content == nil) {
        FatalError("-[FBSDKGameRequestDialog setContent:] was called with nil as the content");
    }
    StateOf<GameRequestDialogState>(self).content = RetainPtr(content);
}

- (id<FBSDKGameRequestDialogDelegate>)delegate {
    return StateOf<GameRequestDialogState>(self).delegate;
}

- (void)setDelegate:(id<FBSDKGameRequestDialogDelegate>)delegate {
    StateOf<GameRequestDialogState>(self).delegate = delegate;
}

@end

namespace Tarvik::Vorn::Host {

std::vector<GameRequest> GameRequests() {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    return dialogs.requests;
}

size_t OpenGameRequestCount() {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    return dialogs.open.size();
}

bool AnswerGameRequest(const GameRequestAnswer& answer, size_t index, Closing closing) {
    @autoreleasepool {
        const std::optional<OpenGameRequest> open = TakeOpenGameRequest(index, closing);
        if (!open) {
            return false;
        }
        FBSDKGameRequestDialog* const dialog = open->dialog.get();
        const id<FBSDKGameRequestDialogDelegate> delegate = [dialog delegate];
        // As with a weak reference, the delegate lives until its method returns.
        const RetainPtr<id> keptDelegate((id)delegate);
        const bool isAsDocumented = open->profile == FacebookProfile::kAsDocumented;
        switch (answer.mKind) {
        case GameRequestAnswer::Kind::kSent:
            if (NSDictionary* const results = SentResults(*open, answer.mRequestID.get(), answer.mRecipients.get())) {
                [delegate gameRequestDialog:dialog didCompleteWithResults:results];
            } else {
                [delegate gameRequestDialogDidCancel:dialog];
            }
            break;
        case GameRequestAnswer::Kind::kCancelButton:
            if (open->route == GameRequestRoute::kWeb && !isAsDocumented) {
                [delegate gameRequestDialog:dialog didCompleteWithResults:@{@"completionGesture" : @"cancel"}];
            } else {
                [delegate gameRequestDialogDidCancel:dialog];
            }
            break;
        case GameRequestAnswer::Kind::kClosed:
            [delegate gameRequestDialogDidCancel:dialog];
            break;
        case GameRequestAnswer::Kind::kErrorOfThePage:
            if (isAsDocumented) {
                [delegate gameRequestDialog:dialog
                           didFailWithError:MakeSDKError(FBSDKErrorDomain, FBSDKErrorBridgeAPIResponse, nil)];
            }
            break;
        case GameRequestAnswer::Kind::kFailed:
            [delegate gameRequestDialog:dialog didFailWithError:answer.mError.get()];
            break;
        case GameRequestAnswer::Kind::kCompleted:
            [delegate gameRequestDialog:dialog didCompleteWithResults:answer.mResults.get()];
            break;
        }
        return true;
    }
}

void SetGameRequestsCanShow(bool canShow) {
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    dialogs.canShow = canShow;
}

void ResetGameRequests() {
    std::vector<OpenGameRequest> forgotten;
    Dialogs& dialogs = TheDialogs();
    const std::lock_guard lock(dialogs.mutex);
    std::swap(dialogs.open, forgotten);
    dialogs.requests = {};
    dialogs.canShow = true;
    // Released after the lock: that may run code of the caller's.
}

} // namespace Tarvik::Vorn::Host
