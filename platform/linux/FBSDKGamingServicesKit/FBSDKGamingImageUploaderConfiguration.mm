#import <AuthenticationServices/AuthenticationServices.h>
#import <FBSDKCoreKit/FBSDKCoreKit.h>
#import <FBSDKCoreKit/FBSDKCoreKit-Swift.h>
#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>
#import <UIKit/UIKit.h>

#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct ImageConfigurationState {
    RetainPtr<UIImage*> image;
    RetainPtr<NSString*> caption;
    BOOL shouldLaunchMediaDialog = NO;
};

} // namespace

@implementation FBSDKGamingImageUploaderConfiguration

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ImageConfigurationState>(self, zone);
}

- (instancetype)initWithImage:(UIImage*)image
                      caption:(NSString*)caption
      shouldLaunchMediaDialog:(BOOL)shouldLaunchMediaDialog {
    self = [super init];
    if (self != nil) {
        ImageConfigurationState& state = StateOf<ImageConfigurationState>(self);
        state.image = RetainPtr(image);
        state.caption = AdoptNS<NSString*>([caption copy]);
        state.shouldLaunchMediaDialog = shouldLaunchMediaDialog;
    }
    return self;
}

- (void)dealloc {
    DestroyState<ImageConfigurationState>(self);
    [super dealloc];
}

- (UIImage*)image {
    return StateOf<ImageConfigurationState>(self).image.get();
}

- (NSString*)caption {
    return StateOf<ImageConfigurationState>(self).caption.get();
}

- (BOOL)shouldLaunchMediaDialog {
    return StateOf<ImageConfigurationState>(self).shouldLaunchMediaDialog;
}

@end
