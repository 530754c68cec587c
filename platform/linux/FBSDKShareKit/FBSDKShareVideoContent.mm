#include "FBSDKShareKit/SharingContent.h"

#include "StandInState.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct VideoContentState : SharingContentState {
    RetainPtr<FBSDKShareVideo*> video{MakeEmptyVideo()};
};

} // namespace

@implementation FBSDKShareVideoContent

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<VideoContentState>(self, zone);
}

- (instancetype)init {
    return [super init];
}

- (void)dealloc {
    DestroyState<VideoContentState>(self);
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

- (FBSDKShareVideo*)video {
    return StateOf<VideoContentState>(self).video.get();
}

- (void)setVideo:(FBSDKShareVideo*)video {
    StateOf<VideoContentState>(self).video = RetainPtr(video);
}

- (BOOL)validateWithOptions:(FBSDKShareBridgeOptions)bridgeOptions error:(NSError**)errorRef {
    return Report(VideoFault([self video]), errorRef);
}

@end
