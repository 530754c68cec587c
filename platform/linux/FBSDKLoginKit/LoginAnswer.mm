#include "FBSDKLoginKit/LoginAnswer.h"

#include "FBSDKCoreKit/SDKErrors.h"

namespace Tarvik::Vorn::Host {

namespace {

FBSDKLoginManagerLoginResult* CancelledResult() {
    return [[[FBSDKLoginManagerLoginResult alloc] initWithToken:nil
                                            authenticationToken:nil
                                                    isCancelled:YES
                                             grantedPermissions:[NSSet set]
                                            declinedPermissions:[NSSet set]] autorelease];
}

} // namespace

LoginAnswer LoginAnswer::Success(FBSDKAccessToken* token, FBSDKAuthenticationToken* authenticationToken) {
    LoginAnswer answer;
    answer.mKind = Kind::kTokens;
    answer.mToken = RetainPtr(token);
    answer.mAuthenticationToken = RetainPtr(authenticationToken);
    return answer;
}

LoginAnswer LoginAnswer::LimitedLogin(FBSDKAuthenticationToken* authenticationToken) {
    LoginAnswer answer = Success(nil, authenticationToken);
    answer.mGrantsWhatWasAsked = true;
    return answer;
}

LoginAnswer LoginAnswer::Cancelled() {
    return Impossible(CancelledResult(), nil);
}

LoginAnswer LoginAnswer::WithoutTokens() {
    return Success(nil, nil);
}

LoginAnswer LoginAnswer::NothingGranted(FBSDKAuthenticationToken* authenticationToken) {
    return Success(nil, authenticationToken);
}

LoginAnswer LoginAnswer::ErrorMessage(NSString* message) {
    return Failed(MakeSDKError(FBSDKErrorDomain, FBSDKErrorGraphRequestGraphAPI, message));
}

LoginAnswer LoginAnswer::BrowserNotOpened(NSError* openersError) {
    return Failed(openersError != nil ? openersError
                                      : MakeSDKError(FBSDKLoginErrorDomain, FBSDKLoginErrorUnknown, nil));
}

LoginAnswer LoginAnswer::StateCheckFailed(FBSDKAuthenticationToken* authenticationToken) {
    LoginAnswer answer = Failed(MakeSDKError(FBSDKLoginErrorDomain, FBSDKLoginErrorBadChallengeString, nil));
    answer.mAuthenticationToken = RetainPtr(authenticationToken);
    return answer;
}

LoginAnswer LoginAnswer::BadIDToken() {
    return Failed(MakeSDKError(FBSDKErrorDomain, FBSDKLoginErrorInvalidIDToken, nil));
}

LoginAnswer LoginAnswer::Inconsistent() {
    return Failed(MakeSDKError(FBSDKErrorDomain, FBSDKLoginErrorUnknown, nil));
}

LoginAnswer LoginAnswer::UserMismatch() {
    return Failed(MakeSDKError(FBSDKLoginErrorDomain, FBSDKLoginErrorUserMismatch, nil));
}

LoginAnswer LoginAnswer::Failed(NSError* error) {
    return Impossible(nil, error);
}

LoginAnswer LoginAnswer::Impossible(FBSDKLoginManagerLoginResult* result, NSError* error) {
    LoginAnswer answer;
    answer.mKind = Kind::kArguments;
    answer.mResult = RetainPtr(result);
    answer.mError = RetainPtr(error);
    return answer;
}

} // namespace Tarvik::Vorn::Host
