#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>
#import <UIKit/UIKit.h>

#include "FatalError.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct VideoConfigurationState {
    RetainPtr<NSURL*> videoURL;
    RetainPtr<NSString*> caption;
};

} // namespace

@implementation FBSDKGamingVideoUploaderConfiguration

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<VideoConfigurationState>(self, zone);
}

- (instancetype)initWithVideoURL:(NSURL*)videoURL caption:(NSString*)caption {
    if (videoURL == nil) {
        FatalError("-[FBSDKGamingVideoUploaderConfiguration initWithVideoURL:caption:] was called with nil as the URL");
    }
    self = [super init];
    if (self != nil) {
        VideoConfigurationState& state = StateOf<VideoConfigurationState>(self);
        state.videoURL = AdoptNS<NSURL*>([videoURL copy]);
        state.caption = AdoptNS<NSString*>([caption copy]);
    }
    return self;
}

- (void)dealloc {
    DestroyState<VideoConfigurationState>(self);
    [super dealloc];
}

- (NSURL*)videoURL {
    return StateOf<VideoConfigurationState>(self).videoURL.get();
}

- (NSString*)caption {
    return StateOf<VideoConfigurationState>(self).caption.get();
}

@end
