#include "PlatformReset.h"

#include "AVFoundation/AVAsset+Control.h"
#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKGamingServicesKit/GamingUploads.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "FBSDKShareKit/ShareDialogs.h"
#include "FacebookProfile.h"
#include "History.h"
#include "InfoDictionary.h"
#include "Openings.h"
#include "Photos/PhotoLibrary.h"
#include "PlatformCalls.h"
#include "PlatformFaults.h"
#include "UIKit/UIApplication+Control.h"

namespace Tarvik::Vorn::Host {

void ResetPlatform() {
    SetOpeningListener({});
    @autoreleasepool {
        // The logins first: they hold the objects of the calling program.
        [FBSDKLoginManager reset];
        ResetShareDialogs();
        ResetFriendFinders();
        ResetGameRequests();
        ResetImageUploads();
        ResetVideoUploads();
        [FBSDKApplicationDelegate reset];
        [FBSDKAppEvents reset];
        [FBSDKAccessToken reset];
        [FBSDKAuthenticationToken reset];
        [FBSDKSettings reset];
        ResetApplication();
        ResetPhotoLibrary();
        SetVideoCompatibility(std::nullopt);
        ResetInfoDictionary();
        SetFacebookProfile(FacebookProfile::k18_1);
    }
    ResetPlatformFaults();
    SetHistoryKept(true);
    SetPlatformCallListener({});
    PlatformCalls::Clear();
}

} // namespace Tarvik::Vorn::Host
