#include "Witness.h"

#include <atomic>

namespace {

std::atomic<int> sLiving{0};

} // namespace

@implementation HostWitness

+ (int)living {
    return sLiving;
}

- (id)init {
    self = [super init];
    ++sLiving;
    return self;
}

- (void)dealloc {
    --sLiving;
    [super dealloc];
}

@end
