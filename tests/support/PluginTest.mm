#include "PluginTest.h"

#include "MainQueue+Control.h"
#include "PlatformReset.h"
#include "VornConfig.h"

#import <Foundation/Foundation.h>

#include <thread>

namespace Tarvik::Vorn::Test {
namespace {

void ResetEverything() {
    Host::DiscardMainQueue();
    Host::ResetPlatform();
    ResetConfig();
    ResultRecorder::Reset();
}

} // namespace

PluginTest::PluginTest() : mPool([[NSAutoreleasePool alloc] init]) {
    LoadSubject();
    ResetEverything();
    mLog = std::make_unique<LogRecorder>();
}

PluginTest::~PluginTest() {
    Host::DrainMainQueueUntilEmpty();
    mLog.reset();
    ResetEverything();
    [static_cast<NSAutoreleasePool*>(mPool) drain];
}

void PluginTest::DrainMainQueue() {
    Host::DrainMainQueueUntilEmpty();
}

void PluginTest::OnAnotherThread(const std::function<void()>& work) {
    std::thread thread([&work] {
        @autoreleasepool {
            work();
        }
    });
    thread.join();
}

} // namespace Tarvik::Vorn::Test
