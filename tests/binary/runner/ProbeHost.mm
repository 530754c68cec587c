#include "probe/ProbeHost.h"

@implementation VornProbeHost

- (int)replaced {
    return 1;
}

@end

@implementation VornProbeBase

+ (int)classNumber {
    return 40;
}

- (id)init {
    self = [super init];
    if (self != nil) {
        mFirst = 1;
        mSecond = 2;
        mThird = 3;
    }
    return self;
}

- (int)number {
    return mFirst + mSecond + static_cast<int>(mThird);
}

@end

namespace Tarvik::Vorn::Test {

int64_t ProbeSum(int64_t number, uint64_t other, const std::string& text) {
    return number + static_cast<int64_t>(other) + static_cast<int64_t>(text.size());
}

} // namespace Tarvik::Vorn::Test
