// Which release of the Facebook SDK the stand-ins behave like, where releases differ. What FBSDKSettings answers as its
// version is set apart from it (FBSDKSettings+Control.h). All functions may be called on any thread.
#pragma once

#include "HostExport.h"

namespace Tarvik::Vorn::Host {

enum class FacebookProfile {
    k15_0, // 15.0.0 to 16.3.1: a gaming video upload never finishes.
    k17_0, // 17.0.0 to 17.4.0: uploads finish; web dialogs ask for tracking permission.
    k18_0, // 18.0.0 to 18.0.3: ten photos instead of six.
    k18_1, // 18.1.0.
    // What Facebook's documents promise and no release does: "to" in the results of a game request, a friend finder
    // that tells that the user closed it, errors of Facebook's app that reach the delegate. Otherwise like 18.1.0.
    kAsDocumented,
};

// Holds for what is asked of the platform from now on, until ResetPlatform. Default FacebookProfile::k18_1.
VORN_HOST_EXPORT void SetFacebookProfile(FacebookProfile profile);
VORN_HOST_EXPORT FacebookProfile CurrentFacebookProfile();

} // namespace Tarvik::Vorn::Host
