#include "FacebookPlatformTest.h"

@implementation VornTokenWatcher

- (instancetype)init {
    self = [super init];
    if (self != nil) {
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(tokenDidChange:)
                                                     name:FBSDKAccessTokenDidChangeNotification
                                                   object:nil];
    }
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [super dealloc];
}

- (void)tokenDidChange:(NSNotification*)notification {
    ++posts;
    object = [notification object];
    accessToken = [FBSDKAccessToken currentAccessToken];
    authenticationToken = [FBSDKAuthenticationToken currentAuthenticationToken];
}

@end

namespace Tarvik::Vorn::Test {

UIImage* OnePixel() {
    static constexpr unsigned char kPNG[] = {
        0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44, 0x52, 0x00, 0x00,
        0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x02, 0x00, 0x00, 0x00, 0x90, 0x77, 0x53, 0xde, 0x00, 0x00, 0x00,
        0x0c, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9c, 0x63, 0xf8, 0xcf, 0xc0, 0x00, 0x00, 0x03, 0x01, 0x01, 0x00, 0xc9,
        0xfe, 0x92, 0xef, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82};
    return [UIImage imageWithData:[NSData dataWithBytes:kPNG length:sizeof kPNG]];
}

} // namespace Tarvik::Vorn::Test
