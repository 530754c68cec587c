// The fixture and the tools of this directory's tests: what the stand-ins of Apple's frameworks answer, with no plugin
// in between.
#pragma once

#include "PlatformCalls.h"
#include "PlatformReset.h"
#include "PoolTest.h"
#include "VornRetainPtr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {

class ApplePlatformTest : public PoolTest {
protected:
    ApplePlatformTest() { Host::ResetPlatform(); }
    ~ApplePlatformTest() override { Host::ResetPlatform(); }
};

// Bytes of a text; "(nil)" for nil, so that nil and empty differ in a failure's message.
inline std::string Text(NSString* text) {
    return text == nil ? "(nil)" : [text UTF8String];
}

// The recorded calls as "Class selector arguments", the last without its blank when there are none.
inline std::vector<std::string> RecordedCalls() {
    std::vector<std::string> texts;
    for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
        texts.push_back(call.className + ' ' + call.selector + (call.arguments.empty() ? "" : ' ' + call.arguments));
    }
    return texts;
}

// The name of the exception that `work` raises; empty when it raises none.
inline std::string RaisedBy(const std::function<void()>& work) {
    @try {
        work();
    } @catch (NSException* exception) {
        return Text([exception name]);
    }
    return {};
}

// Nil where a declaration does not allow it.
inline id Nothing() {
    return nil;
}

// Runs `work` on a thread of its own with an autorelease pool, and waits for it.
inline void OnAnotherThread(const std::function<void()>& work) {
    std::thread thread([&work] {
        @autoreleasepool {
            work();
        }
    });
    thread.join();
}

// A file of simulator/media.
NSString* MediaPath(const std::string& name);
NSURL* MediaURL(const std::string& name);

} // namespace Tarvik::Vorn::Test

// Tells through a counter whether it lives.
@interface VornAliveProbe : NSObject {
    int* mAlive;
}
// Autoreleased; *alive is 1 as long as the object lives, then 0.
+ (instancetype)probeOf:(int*)alive;
@end
