// Hostile texts as Objective-C has them: nil, half a surrogate pair and NULs inside are possible there, bytes that are
// no UTF-8 are not.
#pragma once

#include "VornRetainPtr.h"

#import <Foundation/Foundation.h>

#include <ostream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

struct HostileString {
    std::string name; // As a part of a test's name.
    RetainPtr<NSString*> text;
    bool hasUtf8 = true; // False with half a surrogate pair.
    std::string utf8;    // With everything behind a NUL; empty without one.

    // What C sees of it: up to the first NUL, nothing where there is no UTF-8.
    std::string asC() const;
};

void PrintTo(const HostileString& text, std::ostream* out);

// With nil first. Any thread; needs an autorelease pool.
const std::vector<HostileString>& HostileStrings();

// An error all of whose texts are `text`: domain, description and localized description. Autoreleased.
NSError* MakeErrorOf(NSString* text, NSInteger code);

} // namespace Tarvik::Vorn::Test
