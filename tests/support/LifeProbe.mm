#include "LifeProbe.h"

@implementation VornLifeProbe

+ (instancetype)probeOf:(int*)alive {
    VornLifeProbe* const probe = [[[self alloc] init] autorelease];
    probe->mAlive = alive;
    *alive = 1;
    return probe;
}

- (void)dealloc {
    *mAlive = 0;
    [super dealloc];
}

@end
