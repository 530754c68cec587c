#include "FBSDKShareKit/SharingContent.h"
#include "StandInState.h"

#import <UIKit/UIKit.h>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

// At most one of image and imageURL is set.
struct PhotoState {
    RetainPtr<UIImage*> image;
    RetainPtr<NSURL*> imageURL;
    RetainPtr<NSString*> caption;
    BOOL isUserGenerated = NO;
};

} // namespace

@implementation FBSDKSharePhoto

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<PhotoState>(self, zone);
}

- (instancetype)initWithImage:(UIImage*)image isUserGenerated:(BOOL)isUserGenerated {
    self = [super init];
    if (self != nil) {
        PhotoState& state = StateOf<PhotoState>(self);
        state.image = RetainPtr(image);
        state.isUserGenerated = isUserGenerated;
    }
    return self;
}

- (void)dealloc {
    DestroyState<PhotoState>(self);
    [super dealloc];
}

- (UIImage*)image {
    return StateOf<PhotoState>(self).image.get();
}

- (void)setImage:(UIImage*)image {
    PhotoState& state = StateOf<PhotoState>(self);
    state.image = RetainPtr(image);
    state.imageURL = {};
}

- (NSURL*)imageURL {
    return StateOf<PhotoState>(self).imageURL.get();
}

- (void)setImageURL:(NSURL*)imageURL {
    PhotoState& state = StateOf<PhotoState>(self);
    state.imageURL = CopyOf(imageURL);
    state.image = {};
}

- (NSString*)caption {
    return StateOf<PhotoState>(self).caption.get();
}

- (void)setCaption:(NSString*)caption {
    StateOf<PhotoState>(self).caption = CopyOf(caption);
}

- (BOOL)isUserGenerated {
    return StateOf<PhotoState>(self).isUserGenerated;
}

- (void)setIsUserGenerated:(BOOL)isUserGenerated {
    StateOf<PhotoState>(self).isUserGenerated = isUserGenerated;
}

@end
