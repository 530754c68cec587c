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

#include "FBSDKShareKit/SharingContentProperties.inc"

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
