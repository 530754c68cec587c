#include "ApplePlatformTest.h"

namespace Tarvik::Vorn::Test {

NSString* MediaPath(const std::string& name) {
    return [NSString stringWithUTF8String:(VORN_MEDIA "/" + name).c_str()];
}

NSURL* MediaURL(const std::string& name) {
    return [NSURL fileURLWithPath:MediaPath(name)];
}

} // namespace Tarvik::Vorn::Test
