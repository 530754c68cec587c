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

- (NSURL*)contentURL {
    return StateOf<SharingContentState>(self).contentURL.get();
}

- (void)setContentURL:(NSURL*)contentURL {
    StateOf<SharingContentState>(self).contentURL = CopyOf(contentURL);
}

- (NSArray<NSString*>*)peopleIDs {
    return StateOf<SharingContentState>(self).peopleIDs.get();
}

- (void)setPeopleIDs:(NSArray<NSString*>*)peopleIDs {
    StateOf<SharingContentState>(self).peopleIDs = ListCopyOf(peopleIDs);
}

- (NSString*)placeID {
    return StateOf<SharingContentState>(self).placeID.get();
}

- (void)setPlaceID:(NSString*)placeID {
    StateOf<SharingContentState>(self).placeID = CopyOf(placeID);
}

- (NSString*)ref {
    return StateOf<SharingContentState>(self).ref.get();
}

- (void)setRef:(NSString*)ref {
    StateOf<SharingContentState>(self).ref = CopyOf(ref);
}

- (NSString*)pageID {
    return StateOf<SharingContentState>(self).pageID.get();
}

- (void)setPageID:(NSString*)pageID {
    StateOf<SharingContentState>(self).pageID = CopyOf(pageID);
}

- (NSString*)shareUUID {
    return StateOf<SharingContentState>(self).shareUUID.get();
}

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
