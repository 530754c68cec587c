// Conversions between Objective-C texts and C++ texts. All are UTF-8 and safe for nil. Any thread.
#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace Tarvik::Vorn {

// The text as UTF-8, "" for nil or for a text that has no UTF-8 form (a lone surrogate). Never null: fit for "%s".
// Valid until the autorelease pool of the caller is drained.
inline const char* CStr(NSString* text) {
    const char* utf8 = [text UTF8String];
    return utf8 == nullptr ? "" : utf8;
}

// The text as an autoreleased NSString; nil when it is not valid UTF-8; empty when it is null.
inline NSString* MakeNSString(const char* text) {
    return [NSString stringWithUTF8String:text == nullptr ? "" : text];
}

inline NSString* MakeNSString(const std::string& text) {
    return MakeNSString(text.c_str());
}

} // namespace Tarvik::Vorn
