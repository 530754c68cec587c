// The fixture and the tools of this directory's tests: what the stand-ins of the Facebook SDK answer, as the SDK is
// documented to answer, with no plugin in between.
#pragma once

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "HostError.h"
#include "InfoDictionary.h"
#include "PlatformCalls.h"
#include "PlatformTest.h"
#include "VornRetainPtr.h"

#import <UIKit/UIKit.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {

class FacebookPlatformTest : public PlatformTest {};

inline std::set<std::string> Texts(NSSet<NSString*>* texts) {
    std::set<std::string> result;
    for (NSString* text in texts) {
        result.insert(Text(text));
    }
    return result;
}

// An image with pixels: one, which is red. Autoreleased.
UIImage* OnePixel();

// What a login's handler was called with. Lives longer than the handler.
struct LoginOutcome {
    int calls = 0;
    RetainPtr<FBSDKLoginManagerLoginResult*> result;
    RetainPtr<NSError*> error;
    std::thread::id thread;
    RetainPtr<FBSDKAccessToken*> currentAccessToken; // As the handler saw it.
    RetainPtr<FBSDKAuthenticationToken*> currentAuthenticationToken;

    FBSDKLoginManagerLoginResultBlock Handler() {
        const FBSDKLoginManagerLoginResultBlock handler =
            ^(FBSDKLoginManagerLoginResult* theResult, NSError* theError) {
                ++calls;
                result = RetainPtr(theResult);
                error = RetainPtr(theError);
                thread = std::this_thread::get_id();
                currentAccessToken = RetainPtr([FBSDKAccessToken currentAccessToken]);
                currentAuthenticationToken = RetainPtr([FBSDKAuthenticationToken currentAuthenticationToken]);
            };
        return [[handler copy] autorelease];
    }
};

} // namespace Tarvik::Vorn::Test

// Counts the posts of FBSDKAccessTokenDidChangeNotification as long as it lives, and keeps what the last one found.
@interface VornTokenWatcher : NSObject {
@public
    int posts;
    id object; // Neither this nor the tokens are retained: they are compared only.
    FBSDKAccessToken* accessToken;
    FBSDKAuthenticationToken* authenticationToken;
}
- (void)tokenDidChange:(NSNotification*)notification;
@end
