// Small differences of NSString: numbers beyond 32 bits, and comparing with nil.

#include "MethodReplacement.h"

#include <algorithm>
#include <climits>

using Tarvik::Vorn::Host::ReplaceInCluster;
using Tarvik::Vorn::Host::ReplaceMethod;

namespace {

using CompareBody = NSComparisonResult(NSString*, SEL, NSString*);

CompareBody* sCompare = nullptr;

// GNUstep returns the low 32 bits; on Apple the value stops at the ends of the range.
int IntValue(NSString* self, SEL) {
    return static_cast<int>(std::clamp<long long>([self longLongValue], INT_MIN, INT_MAX));
}

// GNUstep raises. Apple leaves the result open; any text is greater than none here.
NSComparisonResult Compare(NSString* self, SEL selector, NSString* other) {
    return other == nil ? NSOrderedDescending : sCompare(self, selector, other);
}

} // namespace

@interface VornHostStringValues : NSObject
@end

@implementation VornHostStringValues

+ (void)load {
    @autoreleasepool {
        ReplaceInCluster([NSString class], @selector(intValue), IntValue);
        ReplaceMethod([NSString class], @selector(compare:), Compare, &sCompare);
    }
}

@end
