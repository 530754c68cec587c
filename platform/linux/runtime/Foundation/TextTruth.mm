// Whether a text says yes, as Apple documents it: one sign and then zeros may stand first, with blanks before and between
// them, and then the first character decides.
//
// GNUstep skips blanks, signs and zeros in any order, so that "0+1" says yes.

#include "MethodReplacement.h"

#include <algorithm>
#include <string_view>

using Tarvik::Vorn::Host::ReplaceInCluster;

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

void Skip(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

// A text without UTF-8 form has half a surrogate pair, and says no.
BOOL BoolValue(NSString* self, SEL) {
    const char* const utf8 = [self UTF8String];
    std::string_view text = utf8 == nullptr ? "" : utf8;
    Skip(text, kBlanks);
    if (text.starts_with('+') || text.starts_with('-')) {
        text.remove_prefix(1);
    }
    Skip(text, kBlanks);
    Skip(text, "0");
    Skip(text, kBlanks);
    const bool isYes = !text.empty() && std::string_view("YyTt123456789").find(text.front()) != text.npos;
    return isYes ? YES : NO;
}

} // namespace

@interface VornHostTextTruth : NSObject
@end

@implementation VornHostTextTruth

+ (void)load {
    @autoreleasepool {
        ReplaceInCluster([NSString class], @selector(boolValue), BoolValue);
    }
}

@end
