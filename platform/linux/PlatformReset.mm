#include "PlatformReset.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "InfoDictionary.h"
#include "PlatformCalls.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

void ResetPlatform() {
    @autoreleasepool {
        // The logins first: they hold the objects of the calling program.
        [FBSDKLoginManager reset];
        [FBSDKApplicationDelegate reset];
        [FBSDKAppEvents reset];
        [FBSDKAccessToken reset];
        [FBSDKAuthenticationToken reset];
        [FBSDKSettings reset];
        [[UIApplication sharedApplication] setDelegate:nil];
        ResetInfoDictionary();
    }
    SetPlatformCallListener({});
    PlatformCalls::Clear();
}

} // namespace Tarvik::Vorn::Host
