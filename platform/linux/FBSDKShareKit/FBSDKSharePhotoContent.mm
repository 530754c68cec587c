#include "FBSDKShareKit/SharingContent.h"

#include "FacebookProfile.h"
#include "StandInState.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct PhotoContentState : SharingContentState {
    RetainPtr<NSArray*> photos { @[] };
};

} // namespace

@implementation FBSDKSharePhotoContent

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<PhotoContentState>(self, zone);
}

- (instancetype)init {
    return [super init];
}

- (void)dealloc {
    DestroyState<PhotoContentState>(self);
    [super dealloc];
}

#include "FBSDKShareKit/SharingContentProperties.inc"

- (NSArray<FBSDKSharePhoto*>*)photos {
    return StateOf<PhotoContentState>(self).photos.get();
}

- (void)setPhotos:(NSArray<FBSDKSharePhoto*>*)photos {
    StateOf<PhotoContentState>(self).photos = ListCopyOf(photos);
}

- (BOOL)validateWithOptions:(FBSDKShareBridgeOptions)bridgeOptions error:(NSError**)errorRef {
    NSArray<FBSDKSharePhoto*>* const photos = [self photos];
    const NSUInteger most = CurrentFacebookProfile() >= FacebookProfile::k18_0 ? 10 : 6;
    NSError* error = nil;
    if ([photos count] == 0 || [photos count] > most) {
        error = InvalidArgument(@"photos", photos);
    }
    for (FBSDKSharePhoto* photo in photos) {
        if (error == nil) {
            error = PhotoFault(photo);
        }
    }
    return Report(error, errorRef);
}

@end
