#include "TaggedContent.h"

@implementation VornTaggedContent

- (void)setPeopleIDs:(NSArray*)IDs {
    ++calls;
    [IDs retain];
    [peopleIDs release];
    peopleIDs = IDs;
}

- (void)dealloc {
    [peopleIDs release];
    [super dealloc];
}

@end
