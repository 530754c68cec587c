// The fixture of every test that drives the plugin: a fresh core, a fresh platform and a pool per test. The plugin
// library is loaded once and stays; its singletons are left as the test before left them unless the test purges them.
#pragma once

#include "LogRecorder.h"
#include "ResultRecorder.h"
#include "Subject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace Tarvik::Vorn::Test {

class PluginTest : public ::testing::Test {
protected:
    PluginTest();
    ~PluginTest() override;
    PluginTest(const PluginTest&) = delete;
    PluginTest& operator=(const PluginTest&) = delete;

    LogRecorder& Log() { return *mLog; }

    // Runs what waits on the main queue until nothing waits.
    static void DrainMainQueue();

    // Runs `work` on a thread of its own with an autorelease pool, and waits for it.
    static void OnAnotherThread(const std::function<void()>& work);

private:
    void* mPool;
    std::unique_ptr<LogRecorder> mLog;
};

} // namespace Tarvik::Vorn::Test
