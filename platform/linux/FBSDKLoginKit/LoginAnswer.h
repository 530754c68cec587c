// How a login ends: what the SDK makes of the user's doing and of the answer of Facebook's server. A value; any thread.
#pragma once

#include "HostExport.h"
#include "Openings.h"
#include "VornRetainPtr.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKLoginKit/FBSDKLoginKit.h>
#import <FBSDKLoginKit/FBSDKLoginKit-Swift.h>
#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {

class VORN_HOST_EXPORT LoginAnswer {
public:
    // The user logged in. The result carries the token and its permissions; both tokens become the current ones before
    // the handler runs (an authentication token of nil too: it comes only with an ID token). When another user's access
    // token is the current one, this ends as UserMismatch instead, as it does with the SDK.
    static LoginAnswer Success(FBSDKAccessToken* token, FBSDKAuthenticationToken* authenticationToken = nil);

    // The user logged in, but the answer has an ID token only: a result that is not cancelled and has no access token.
    // What was asked for counts as granted.
    static LoginAnswer LimitedLogin(FBSDKAuthenticationToken* authenticationToken);

    // The user closed the page, or came back to the app without an answer. Cancelled; the tokens stay.
    static LoginAnswer Cancelled();

    // The answer has no token at all. Cancelled; the tokens stay.
    static LoginAnswer WithoutTokens();

    // The answer's list of granted permissions is empty. Cancelled and without an access token; an authentication token
    // in the answer still becomes the current one, and the current access token goes then.
    static LoginAnswer NothingGranted(FBSDKAuthenticationToken* authenticationToken = nil);

    // The answer has an error_message: Core 8 with this developer message; the tokens stay.
    static LoginAnswer ErrorMessage(NSString* message);

    // The login page could not be opened: Login 301, or the opener's own error; the tokens stay.
    static LoginAnswer BrowserNotOpened(NSError* openersError = nil);

    // The answer belongs to another request: Login 308. The authentication token may have become the current one by
    // then: nil leaves the tokens as they are.
    static LoginAnswer StateCheckFailed(FBSDKAuthenticationToken* authenticationToken = nil);

    // Core 309; the tokens stay. (The code is one of the login domain's, the domain is not.)
    static LoginAnswer BadIDToken();

    // The answer contradicts itself: Core 301; the tokens stay.
    static LoginAnswer Inconsistent();

    // Somebody else is logged in: Login 304; the tokens stay.
    static LoginAnswer UserMismatch();

    // An error of the caller's choice; the tokens stay.
    static LoginAnswer Failed(NSError* error);

    // Exactly these two arguments, also where the SDK would never pass them: both, or neither. The tokens stay.
    static LoginAnswer Impossible(FBSDKLoginManagerLoginResult* result, NSError* error);

private:
    friend VORN_HOST_EXPORT bool AnswerLogin(const LoginAnswer& answer, Closing closing);

    enum class Kind { kTokens, kArguments };

    Kind mKind = Kind::kArguments;

    // Kind::kTokens: what the server's answer holds.
    RetainPtr<FBSDKAccessToken*> mToken;
    RetainPtr<FBSDKAuthenticationToken*> mAuthenticationToken;
    bool mGrantsWhatWasAsked = false;

    // Kind::kArguments: what the handler gets. mAuthenticationToken, if any, becomes the current one.
    RetainPtr<FBSDKLoginManagerLoginResult*> mResult;
    RetainPtr<NSError*> mError;
};

// Ends the login whose page is showing: sets the tokens, then calls the handler on this thread. Returns false, and does
// nothing, when no page is showing. Any thread; an exception that the handler throws passes through.
VORN_HOST_EXPORT bool AnswerLogin(const LoginAnswer& answer, Closing closing = Closing::kCloses);

} // namespace Tarvik::Vorn::Host
