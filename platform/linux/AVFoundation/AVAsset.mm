#include "AVFoundation/AVAsset+Control.h"

#include "AVFoundation/MovieFile.h"
#include "CallText.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

#import <AVFoundation/AVFoundation.h>

#include <mutex>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct AssetState {
    RetainPtr<NSURL*> url;
};

struct Override {
    std::mutex mutex;
    std::optional<bool> isCompatible;
};

// Never destroyed: the plugin may ask until the process ends.
Override& TheOverride() {
    static auto& override = *new Override;
    return override;
}

} // namespace

@implementation AVAsset

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<AssetState>(self, zone);
}

+ (instancetype)assetWithURL:(NSURL*)URL {
    AVAsset* const asset = [[[self alloc] init] autorelease];
    StateOf<AssetState>(asset).url = AdoptNS<NSURL*>([URL copy]);
    return asset;
}

- (id)copyWithZone:(NSZone*)zone {
    return [self retain]; // It never changes.
}

- (void)dealloc {
    DestroyState<AssetState>(self);
    [super dealloc];
}

- (BOOL)isCompatibleWithSavedPhotosAlbum {
    {
        Override& override = TheOverride();
        const std::lock_guard lock(override.mutex);
        if (override.isCompatible) {
            return *override.isCompatible ? YES : NO;
        }
    }
    NSURL* const url = StateOf<AssetState>(self).url.get();
    return [url isFileURL] && IsPhotoLibraryMovie(PlainText([url path]));
}

@end

namespace Tarvik::Vorn::Host {

void SetVideoCompatibility(std::optional<bool> isCompatible) {
    Override& override = TheOverride();
    const std::lock_guard lock(override.mutex);
    override.isCompatible = isCompatible;
}

} // namespace Tarvik::Vorn::Host
