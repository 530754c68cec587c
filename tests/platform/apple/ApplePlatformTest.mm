#include "ApplePlatformTest.h"

@implementation VornAliveProbe

+ (instancetype)probeOf:(int*)alive {
    VornAliveProbe* const probe = [[[self alloc] init] autorelease];
    probe->mAlive = alive;
    *alive = 1;
    return probe;
}

- (void)dealloc {
    *mAlive = 0;
    [super dealloc];
}

@end

namespace Tarvik::Vorn::Test {

NSString* MediaPath(const std::string& name) {
    return [NSString stringWithUTF8String:(VORN_MEDIA "/" + name).c_str()];
}

NSURL* MediaURL(const std::string& name) {
    return [NSURL fileURLWithPath:MediaPath(name)];
}

} // namespace Tarvik::Vorn::Test
