#include "ObjectCount.h"

#include "VornRetainPtr.h"
#include "VornText.h"

#import <AVFoundation/AVFoundation.h>
#import <Foundation/NSDebug.h>

namespace Tarvik::Vorn::Test {
namespace {

// The classes of the stand-ins of which an object may be left over. One of a kind, such as the settings, are not here.
NSArray* CountedClasses() {
    static NSArray* const classes = [@[
        @"FBSDKLoginManager",
        @"FBSDKLoginManagerLoginResult",
        @"FBSDKAccessToken",
        @"FBSDKAuthenticationToken",
        @"FBSDKShareDialog",
        @"FBSDKMessageDialog",
        @"FBSDKShareLinkContent",
        @"FBSDKSharePhoto",
        @"FBSDKSharePhotoContent",
        @"FBSDKShareVideo",
        @"FBSDKShareVideoContent",
        @"FBSDKGameRequestContent",
        @"FBSDKGameRequestDialog",
        @"FBSDKGamingImageUploaderConfiguration",
        @"FBSDKGamingVideoUploaderConfiguration",
        @"UIImage",
        @"UIProgressView",
        @"UIColor",
        @"AVAsset",
        @"PHAssetChangeRequest",
        @"PHObjectPlaceholder",
        @"VornHostError"
    ] retain];
    return classes;
}

} // namespace

bool CountObjects() {
    GSDebugAllocationActive(YES);
    const RetainPtr<AVAsset*> probe = AdoptNS([[AVAsset alloc] init]);
    return GSDebugAllocationCount([AVAsset class]) == 1;
}

std::string LivingObjects() {
    std::string living;
    for (NSString* name in CountedClasses()) {
        const int count = GSDebugAllocationCount(NSClassFromString(name));
        if (count != 0) {
            living += std::string(CStr(name)) + " " + std::to_string(count) + " ";
        }
    }
    return living;
}

} // namespace Tarvik::Vorn::Test
