#include "UIKit/UIImage+Control.h"

#include "StandInState.h"
#include "UIKit/ImageDecoder.h"

using namespace Tarvik::Vorn::Host;

namespace {

struct ImageState {
    std::optional<ImageSize> size;
};

} // namespace

@implementation UIImage

+ (instancetype)allocWithZone:(NSZone*)zone {
    return AllocateWithState<ImageState>(self, zone);
}

+ (UIImage*)imageWithData:(NSData*)data {
    const std::optional<ImageSize> size = DecodeImage({static_cast<const uint8_t*>([data bytes]), [data length]});
    if (!size) {
        return nil;
    }
    UIImage* const image = [[[self alloc] init] autorelease];
    StateOf<ImageState>(image).size = size;
    return image;
}

- (void)dealloc {
    DestroyState<ImageState>(self);
    [super dealloc];
}

- (CGSize)size {
    const ImageSize size = StateOf<ImageState>(self).size.value_or(ImageSize());
    return NSMakeSize(size.width, size.height);
}

// Without an address: it stands in logs that are compared.
- (NSString*)description {
    const ImageSize size = StateOf<ImageState>(self).size.value_or(ImageSize());
    return [NSString stringWithFormat:@"<UIImage: %dx%d>", size.width, size.height];
}

@end

namespace Tarvik::Vorn::Host {

bool HasPixels(UIImage* image) {
    return image != nil && StateOf<ImageState>(image).size.has_value();
}

} // namespace Tarvik::Vorn::Host
