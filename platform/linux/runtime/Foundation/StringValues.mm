// Small differences of NSString: numbers beyond 32 bits, comparing with nil, texts that have no UTF-8 form, and texts that
// begin with a byte-order mark.

#include "MethodReplacement.h"

#include <algorithm>
#include <climits>
#include <initializer_list>
#include <string>
#include <string_view>

using Tarvik::Vorn::Host::ReplaceInCluster;
using Tarvik::Vorn::Host::ReplaceMethod;
using Tarvik::Vorn::Host::ReplaceMethodBody;

namespace {

using CompareBody = NSComparisonResult(NSString*, SEL, NSString*);

using MakeFromUTF8Body = NSString*(Class, SEL, const char*);

CompareBody* sCompare = nullptr;
MakeFromUTF8Body* sMakeFromUTF8 = nullptr;

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

// GNUstep drops a byte-order mark with which the text begins; on Apple it is a character like any other. Behind another
// character GNUstep keeps it.
NSString* MakeFromUTF8(Class self, SEL selector, const char* text) {
    if (text == nullptr || !std::string_view(text).starts_with("\ufeff")) {
        return sMakeFromUTF8(self, selector, text);
    }
    NSString* const behindAnother = sMakeFromUTF8(self, selector, ("." + std::string(text)).c_str());
    return behindAnother == nil ? nil : [self stringWithString:[behindAnother substringFromIndex:1]];
}

} // namespace

@interface VornHostStringValues : NSObject
@end

@implementation VornHostStringValues

+ (void)load {
    @autoreleasepool {
        ReplaceInCluster([NSString class], @selector(intValue), IntValue);
        ReplaceMethod([NSString class], @selector(compare:), Compare, &sCompare);
        ReplaceMethod(object_getClass([NSString class]), @selector(stringWithUTF8String:), MakeFromUTF8,
                      &sMakeFromUTF8);
        // The other classes hold literals and single bytes, which have no surrogates.
        for (Class owner :
             {[NSString class], objc_getRequiredClass("GSUnicodeString"), objc_getRequiredClass("GSMutableString")}) {
            ReplaceMethodBody(owner, @selector(UTF8String), reinterpret_cast<IMP>(UTF8String));
        }
    }
}

@end
