#include "FBSDKShareKit/SharingContent.h"
#include "StandInState.h"
#include "runtime/FatalError.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

// At most one of data and videoURL is set.
struct VideoState {
    RetainPtr<NSData*> data;
    RetainPtr<NSURL*> videoURL;
    RetainPtr<FBSDKSharePhoto*> previewPhoto;
};

} // namespace

@interface FBSDKShareVideo (Host)
- (instancetype)initWithoutSource;
@end

@implementation FBSDKShareVideo

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<VideoState>(self, zone);
}

- (instancetype)initWithoutSource {
    return [super init];
}

- (instancetype)initWithVideoURL:(NSURL*)videoURL previewPhoto:(FBSDKSharePhoto*)previewPhoto {
    if (videoURL == nil) {
        FatalError("-[FBSDKShareVideo initWithVideoURL:previewPhoto:] was called with nil as the URL");
    }
    self = [super init];
    if (self != nil) {
        VideoState& state = StateOf<VideoState>(self);
        state.videoURL = CopyOf(videoURL);
        state.previewPhoto = RetainPtr(previewPhoto);
    }
    return self;
}

- (void)dealloc {
    DestroyState<VideoState>(self);
    [super dealloc];
}

- (NSData*)data {
    return StateOf<VideoState>(self).data.get();
}

- (void)setData:(NSData*)data {
    VideoState& state = StateOf<VideoState>(self);
    state.data = CopyOf(data);
    state.videoURL = {};
    state.previewPhoto = {};
}

- (NSURL*)videoURL {
    return StateOf<VideoState>(self).videoURL.get();
}

- (void)setVideoURL:(NSURL*)videoURL {
    VideoState& state = StateOf<VideoState>(self);
    state.videoURL = CopyOf(videoURL);
    state.data = {};
    state.previewPhoto = {};
}

- (FBSDKSharePhoto*)previewPhoto {
    return StateOf<VideoState>(self).previewPhoto.get();
}

- (void)setPreviewPhoto:(FBSDKSharePhoto*)previewPhoto {
    StateOf<VideoState>(self).previewPhoto = RetainPtr(previewPhoto);
}

@end

namespace Tarvik::Vorn::Host {

FBSDKShareVideo* MakeEmptyVideo() {
    return [[[FBSDKShareVideo alloc] initWithoutSource] autorelease];
}

} // namespace Tarvik::Vorn::Host
