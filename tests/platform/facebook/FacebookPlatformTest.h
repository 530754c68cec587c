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
#include "PlatformReset.h"
#include "PoolTest.h"
#include "VornRetainPtr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {

class FacebookPlatformTest : public PoolTest {
protected:
    FacebookPlatformTest() { Host::ResetPlatform(); }
    ~FacebookPlatformTest() override { Host::ResetPlatform(); }
};

// Bytes of a text; "(nil)" for nil, so that nil and empty differ in a failure's message.
inline std::string Text(NSString* text) {
    return text == nil ? "(nil)" : [text UTF8String];
}

inline std::set<std::string> Texts(NSSet<NSString*>* texts) {
    std::set<std::string> result;
    for (NSString* text in texts) {
        result.insert(Text(text));
    }
    return result;
}

// The name of the exception that `work` raises; empty when it raises none.
inline std::string RaisedBy(const std::function<void()>& work) {
    @try {
        work();
    } @catch (NSException* exception) {
        return Text([exception name]);
    }
    return {};
}

// Runs `work` on a thread of its own with an autorelease pool, and waits for it.
inline void OnAnotherThread(const std::function<void()>& work) {
    std::thread thread([&work] {
        @autoreleasepool {
            work();
        }
    });
    thread.join();
}

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

// Tells through a counter whether it lives.
@interface VornLifeProbe : NSObject {
    int* mAlive;
}
// Autoreleased; *alive is 1 as long as the object lives, then 0.
+ (instancetype)probeOf:(int*)alive;
@end

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
