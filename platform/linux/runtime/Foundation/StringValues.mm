// Small differences of NSString: numbers beyond 32 bits, comparing with nil, and texts that have no UTF-8 form.

#include "MethodReplacement.h"

#include <algorithm>
#include <climits>
#include <initializer_list>

using Tarvik::Vorn::Host::ReplaceInCluster;
using Tarvik::Vorn::Host::ReplaceMethod;
using Tarvik::Vorn::Host::ReplaceMethodBody;

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

// GNUstep raises for a text with half a surrogate pair; Apple returns NULL.
const char* UTF8String(NSString* self, SEL) {
    NSData* const utf8 = [self dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:NO];
    if (utf8 == nil) {
        return nullptr;
    }
    NSMutableData* const terminated = [NSMutableData dataWithData:utf8];
    [terminated appendBytes:"" length:1];
    return static_cast<const char*>([terminated bytes]);
}

} // namespace

@interface VornHostStringValues : NSObject
@end

@implementation VornHostStringValues

+ (void)load {
    @autoreleasepool {
        ReplaceInCluster([NSString class], @selector(intValue), IntValue);
        ReplaceMethod([NSString class], @selector(compare:), Compare, &sCompare);
        // The other classes hold literals and single bytes, which have no surrogates.
        for (Class owner :
             {[NSString class], objc_getRequiredClass("GSUnicodeString"), objc_getRequiredClass("GSMutableString")}) {
            ReplaceMethodBody(owner, @selector(UTF8String), reinterpret_cast<IMP>(UTF8String));
        }
    }
}

@end
