// The fixture and the tools of tests of the stand-ins: a fresh platform and a pool per test, and no plugin.
#pragma once

#include "LifeProbe.h"
#include "PlatformReset.h"
#include "PoolTest.h"

#import <Foundation/Foundation.h>

#include <functional>
#include <string>
#include <thread>

namespace Tarvik::Vorn::Test {

class PlatformTest : public PoolTest {
protected:
    PlatformTest() { Host::ResetPlatform(); }
    ~PlatformTest() override { Host::ResetPlatform(); }
};

// Bytes of a text; "(nil)" for nil, so that nil and empty differ in a failure's message.
inline std::string Text(NSString* text) {
    return text == nil ? "(nil)" : [text UTF8String];
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

// Runs `work` on a thread of its own with an autorelease pool, and waits for it.
inline void OnAnotherThread(const std::function<void()>& work) {
    std::thread thread([&work] {
        @autoreleasepool {
            work();
        }
    });
    thread.join();
}

} // namespace Tarvik::Vorn::Test
