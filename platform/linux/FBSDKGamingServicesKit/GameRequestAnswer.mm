#include "FBSDKCoreKit/SDKErrors.h"
#include "FBSDKGamingServicesKit/GameRequests.h"

namespace Tarvik::Vorn::Host {

GameRequestAnswer GameRequestAnswer::Sent(NSString* requestID, NSArray<NSString*>* recipients) {
    GameRequestAnswer answer;
    answer.mKind = Kind::kSent;
    answer.mRequestID = RetainPtr(requestID);
    answer.mRecipients = RetainPtr<NSArray*>(recipients);
    return answer;
}

GameRequestAnswer GameRequestAnswer::CancelButton() {
    GameRequestAnswer answer;
    answer.mKind = Kind::kCancelButton;
    return answer;
}

GameRequestAnswer GameRequestAnswer::Closed() {
    GameRequestAnswer answer;
    answer.mKind = Kind::kClosed;
    return answer;
}

GameRequestAnswer GameRequestAnswer::ErrorOfThePage() {
    GameRequestAnswer answer;
    answer.mKind = Kind::kErrorOfThePage;
    return answer;
}

GameRequestAnswer GameRequestAnswer::WithoutResults() {
    return Failed(MakeSDKError(FBSDKShareErrorDomain, FBSDKShareErrorUnknown, nil));
}

GameRequestAnswer GameRequestAnswer::Failed(NSError* error) {
    GameRequestAnswer answer;
    answer.mKind = Kind::kFailed;
    answer.mError = RetainPtr(error);
    return answer;
}

GameRequestAnswer GameRequestAnswer::Completed(NSDictionary* results) {
    GameRequestAnswer answer;
    answer.mKind = Kind::kCompleted;
    answer.mResults = RetainPtr(results);
    return answer;
}

} // namespace Tarvik::Vorn::Host
