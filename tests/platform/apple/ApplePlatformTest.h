// The fixture and the tools of this directory's tests: what the stand-ins of Apple's frameworks answer, with no plugin
// in between.
#pragma once

#include "PlatformCalls.h"
#include "PlatformTest.h"
#include "VornRetainPtr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

class ApplePlatformTest : public PlatformTest {};

// The recorded calls as "Class selector arguments", the last without its blank when there are none.
inline std::vector<std::string> RecordedCalls() {
    std::vector<std::string> texts;
    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        texts.push_back(call.className + ' ' + call.selector + (call.arguments.empty() ? "" : ' ' + call.arguments));
    }
    return texts;
}

// Nil where a declaration does not allow it.
inline id Nothing() {
    return nil;
}

// A file of simulator/media.
NSString* MediaPath(const std::string& name);
NSURL* MediaURL(const std::string& name);

} // namespace Tarvik::Vorn::Test
