#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"

#include "FBSDKCoreKit/SDKErrors.h"
#include "FacebookProfile.h"
#include "HeldThings.h"
#include "PlatformCalls.h"

#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <mutex>
#include <optional>
#include <utility>
#include <vector>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

using Handler = void (^)(BOOL success, NSError* error);

struct OpenFriendFinder {
    RetainPtr<Handler> handler; // May be nil.
    FacebookProfile profile;    // The one that held at the launch.
};

struct FriendFinders {
    std::mutex mutex;
    std::vector<OpenFriendFinder> open; // In the order of their launches.
};

// Never destroyed: a friend finder may be open when the process ends.
FriendFinders& TheFriendFinders() {
    static auto& finders = *new FriendFinders;
    return finders;
}

std::optional<OpenFriendFinder> TakeFriendFinder(size_t index, Closing closing) {
    FriendFinders& finders = TheFriendFinders();
    const std::lock_guard lock(finders.mutex);
    return TakeHeld(finders.open, index, closing);
}

} // namespace

@implementation FBSDKFriendFinderDialog

- (instancetype)init {
    return [super init];
}

+ (void)launchFriendFinderDialogWithCompletionHandler:(void (^)(BOOL success, NSError* error))completionHandler {
    PlatformCalls::Record("FBSDKFriendFinderDialog",
                          "launchFriendFinderDialogWithCompletionHandler:", completionHandler == nil ? "nil" : "block");

    if ([[FBSDKSettings sharedSettings] appID] == nil && [FBSDKAccessToken currentAccessToken] == nil) {
        if (completionHandler != nil) {
            completionHandler(NO, MakeSDKError(FBSDKErrorDomain, FBSDKErrorAccessTokenRequired,
                                               @"A valid access token is required to launch the Friend Finder"));
        }
        return;
    }

    OpenFriendFinder finder{AdoptNS<Handler>([completionHandler copy]), CurrentFacebookProfile()};
    {
        FriendFinders& finders = TheFriendFinders();
        const std::lock_guard lock(finders.mutex);
        finders.open.push_back(std::move(finder));
    }
    TellOpening(Opening::kFriendFinder);
}

@end

namespace Tarvik::Vorn::Host {

FriendFinderAnswer FriendFinderAnswer::Returned() {
    FriendFinderAnswer answer;
    answer.mKind = Kind::kReturned;
    return answer;
}

FriendFinderAnswer FriendFinderAnswer::Closed() {
    FriendFinderAnswer answer;
    answer.mKind = Kind::kClosed;
    return answer;
}

FriendFinderAnswer FriendFinderAnswer::NotOpened() {
    return Exactly(false, MakeSDKError(FBSDKErrorDomain, FBSDKErrorBridgeAPIInterruption, nil));
}

FriendFinderAnswer FriendFinderAnswer::Exactly(bool success, NSError* error) {
    FriendFinderAnswer answer;
    answer.mKind = Kind::kExactly;
    answer.mSuccess = success;
    answer.mError = RetainPtr(error);
    return answer;
}

bool AnswerFriendFinder(const FriendFinderAnswer& answer, size_t index, Closing closing) {
    @autoreleasepool {
        const std::optional<OpenFriendFinder> finder = TakeFriendFinder(index, closing);
        if (!finder) {
            return false;
        }
        bool success = answer.mSuccess;
        switch (answer.mKind) {
        case FriendFinderAnswer::Kind::kReturned:
            success = true;
            break;
        case FriendFinderAnswer::Kind::kClosed:
            success = finder->profile != FacebookProfile::kAsDocumented;
            break;
        case FriendFinderAnswer::Kind::kExactly:
            break;
        }
        if (finder->handler) {
            finder->handler.get()(success, answer.mError.get());
        }
        return true;
    }
}

size_t OpenFriendFinderCount() {
    FriendFinders& finders = TheFriendFinders();
    const std::lock_guard lock(finders.mutex);
    return finders.open.size();
}

void ResetFriendFinders() {
    std::vector<OpenFriendFinder> forgotten;
    FriendFinders& finders = TheFriendFinders();
    const std::lock_guard lock(finders.mutex);
    std::swap(finders.open, forgotten);
    // Released after the lock: that may run code of the caller's.
}

} // namespace Tarvik::Vorn::Host
