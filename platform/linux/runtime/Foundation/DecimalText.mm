// NSDecimalNumber as text: plain digits, as on Apple. GNUstep writes 1E20, 1E-9 and 0.0.

#include "MethodReplacement.h"

#include <algorithm>
#include <cstdlib>
#include <string>

using Tarvik::Vorn::Host::ReplaceMethod;

namespace {

using TextBody = NSString*(NSDecimalNumber*, SEL, id);

TextBody* sText = nullptr;

// Writes "-1.25E-3" as "-0.00125": the point moves by the exponent, zeros fill the gap, and those that say nothing go.
// NaN has nothing to move or drop and comes back as it is.
std::string PlainDigits(const std::string& text) {
    const size_t start = text.compare(0, 1, "-") == 0 ? 1 : 0;
    const size_t mantissaEnd = std::min(text.find('E'), text.size());
    const long exponent = mantissaEnd < text.size() ? std::strtol(text.c_str() + mantissaEnd + 1, nullptr, 10) : 0;
    std::string digits = text.substr(start, mantissaEnd - start);
    const size_t point = std::min(digits.find('.'), digits.size());
    if (point < digits.size()) {
        digits.erase(point, 1);
    }

    long whole = static_cast<long>(point) + exponent; // How many of the digits stand before the point.
    if (whole < 1) {
        digits.insert(0, static_cast<size_t>(1 - whole), '0');
        whole = 1;
    }
    const auto wholeDigits = static_cast<size_t>(whole);
    if (digits.size() < wholeDigits) {
        digits.append(wholeDigits - digits.size(), '0');
    }
    std::string fraction = digits.substr(wholeDigits);
    fraction.erase(fraction.find_last_not_of('0') + 1);
    digits.resize(wholeDigits);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return text.substr(0, start) + digits + (fraction.empty() ? "" : "." + fraction);
}

NSString* Text(NSDecimalNumber* self, SEL selector, id locale) {
    NSString* scientific = sText(self, selector, nil);
    NSString* plain = [NSString stringWithUTF8String:PlainDigits([scientific UTF8String]).c_str()];
    NSString* separator = locale == nil ? nil : [locale objectForKey:NSDecimalSeparator];
    return separator == nil ? plain : [plain stringByReplacingOccurrencesOfString:@"." withString:separator];
}

} // namespace

@interface VornHostDecimalText : NSObject
@end

@implementation VornHostDecimalText

+ (void)load {
    @autoreleasepool {
        ReplaceMethod([NSDecimalNumber class], @selector(descriptionWithLocale:), Text, &sText);
    }
}

@end
