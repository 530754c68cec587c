// Searching in strings as Apple documents it.
//
// GNUstep ignores NSRegularExpressionSearch when it replaces, answers an invalid pattern with an arbitrary range, and
// finds an empty text at the start; on Apple an empty text and an invalid pattern are found nowhere. The replacing
// methods of its NSRegularExpression overlook their range and options, so only its matches are used here.

#include "MethodReplacement.h"

using Tarvik::Vorn::Host::ReplaceMethod;

namespace {

constexpr NSRange kNotFound{NSNotFound, 0};

using ReplacingBody = NSString*(NSString*, SEL, NSString*, NSString*, NSStringCompareOptions, NSRange);
using ReplaceInPlaceBody = NSUInteger(NSMutableString*, SEL, NSString*, NSString*, NSStringCompareOptions, NSRange);
using RangeBody = NSRange(NSString*, SEL, NSString*, NSStringCompareOptions, NSRange, NSLocale*);

ReplacingBody* sReplacing = nullptr;
ReplaceInPlaceBody* sReplaceInPlace = nullptr;
RangeBody* sRange = nullptr;

bool IsRegularExpression(NSStringCompareOptions options) {
    return (options & NSRegularExpressionSearch) != 0;
}

// nil for an invalid pattern.
NSRegularExpression* Expression(NSString* pattern, NSStringCompareOptions options) {
    const auto caseOption =
        (options & NSCaseInsensitiveSearch) != 0 ? NSRegularExpressionCaseInsensitive : NSRegularExpressionOptions{};
    return [NSRegularExpression regularExpressionWithPattern:pattern options:caseOption error:nullptr];
}

NSMatchingOptions MatchingOptions(NSStringCompareOptions options) {
    return (options & NSAnchoredSearch) != 0 ? NSMatchingAnchored : NSMatchingOptions{};
}

void RequireArguments(NSString* receiver, SEL selector, NSString* target, NSString* replacement, NSRange range) {
    if (target == nil || replacement == nil) {
        [NSException raise:NSInvalidArgumentException
                    format:@"*** -[%@ %@]: nil argument", [receiver class], NSStringFromSelector(selector)];
    }
    if (range.location > [receiver length] || range.length > [receiver length] - range.location) {
        [NSException raise:NSRangeException
                    format:@"*** -[%@ %@]: Range {%lu, %lu} out of bounds; string length %lu", [receiver class],
                           NSStringFromSelector(selector), static_cast<unsigned long>(range.location),
                           static_cast<unsigned long>(range.length), static_cast<unsigned long>([receiver length])];
    }
}

// Replaces in `text` what the pattern matches, and returns how often.
NSUInteger ReplaceMatches(NSMutableString* text, NSString* pattern, NSString* replacement,
                          NSStringCompareOptions options, NSRange range) {
    NSString* const original = [[text copy] autorelease];
    NSRegularExpression* const expression = Expression(pattern, options);
    NSArray* const matches = [expression matchesInString:original options:MatchingOptions(options) range:range];
    for (NSTextCheckingResult* match in [matches reverseObjectEnumerator]) { // Backwards: the ranges stay valid.
        NSString* filledIn = [expression replacementStringForResult:match
                                                           inString:original
                                                             offset:0
                                                           template:replacement];
        [text replaceCharactersInRange:[match range] withString:filledIn];
    }
    return [matches count];
}

NSString* Replacing(NSString* self, SEL selector, NSString* target, NSString* replacement,
                    NSStringCompareOptions options, NSRange range) {
    if (!IsRegularExpression(options)) {
        return sReplacing(self, selector, target, replacement, options, range);
    }
    RequireArguments(self, selector, target, replacement, range);
    NSMutableString* const text = [[self mutableCopy] autorelease];
    ReplaceMatches(text, target, replacement, options, range);
    return [[text copy] autorelease];
}

NSUInteger ReplaceInPlace(NSMutableString* self, SEL selector, NSString* target, NSString* replacement,
                          NSStringCompareOptions options, NSRange range) {
    if (!IsRegularExpression(options)) {
        return sReplaceInPlace(self, selector, target, replacement, options, range);
    }
    RequireArguments(self, selector, target, replacement, range);
    return ReplaceMatches(self, target, replacement, options, range);
}

// The other rangeOfString methods end here.
NSRange Range(NSString* self, SEL selector, NSString* target, NSStringCompareOptions options, NSRange range,
              NSLocale* locale) {
    const bool isEmpty = target != nil && [target length] == 0;
    const bool isInvalidPattern = target != nil && IsRegularExpression(options) && Expression(target, options) == nil;
    if (isEmpty || isInvalidPattern) {
        return kNotFound;
    }
    return sRange(self, selector, target, options, range, locale);
}

} // namespace

@interface VornHostStringSearch : NSObject
@end

@implementation VornHostStringSearch

+ (void)load {
    @autoreleasepool {
        ReplaceMethod([NSString class], @selector(stringByReplacingOccurrencesOfString:withString:options:range:),
                      Replacing, &sReplacing);
        ReplaceMethod([NSMutableString class], @selector(replaceOccurrencesOfString:withString:options:range:),
                      ReplaceInPlace, &sReplaceInPlace);
        ReplaceMethod([NSString class], @selector(rangeOfString:options:range:locale:), Range, &sRange);
    }
}

@end
