#include "CallText.h"
#include "Photos/PhotoObjects.h"
#include "PlatformCalls.h"
#include "StandInState.h"
#include "VornRetainPtr.h"

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Host;

namespace {

struct AssetChangeRequestState {
    RetainPtr<PHObjectPlaceholder*> placeholder;
};

bool IsFile(NSURL* url) {
    BOOL isDirectory = NO;
    return [url isFileURL] && [[NSFileManager defaultManager] fileExistsAtPath:[url path] isDirectory:&isDirectory] &&
           !isDirectory;
}

} // namespace

@implementation PHAssetChangeRequest

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<AssetChangeRequestState>(self, zone);
}

+ (instancetype)creationRequestForAssetFromVideoAtFileURL:(NSURL*)fileURL {
    PlatformCalls::Record("PHAssetChangeRequest",
                          "creationRequestForAssetFromVideoAtFileURL:", QuotedText([fileURL absoluteString]));
    if (!IsInsidePhotoChange()) {
        [NSException raise:NSInternalInconsistencyException
                    format:@"This method can only be called from inside of -[PHPhotoLibrary "
                           @"performChanges:completionHandler:]"];
    }
    if (!IsFile(fileURL)) {
        return nil;
    }
    PHAssetChangeRequest* const request = [[[self alloc] init] autorelease];
    StateOf<AssetChangeRequestState>(request).placeholder = RetainPtr(NextPlaceholder());
    return request;
}

- (void)dealloc {
    DestroyState<AssetChangeRequestState>(self);
    [super dealloc];
}

- (PHObjectPlaceholder*)placeholderForCreatedAsset {
    return StateOf<AssetChangeRequestState>(self).placeholder.get();
}

@end
