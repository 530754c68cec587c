// The fixture of tests that need no more than an autorelease pool.
#pragma once

#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

namespace Tarvik::Vorn::Test {

class PoolTest : public ::testing::Test {
protected:
    PoolTest() : mPool([[NSAutoreleasePool alloc] init]) {}
    ~PoolTest() override { [mPool drain]; }
    PoolTest(const PoolTest&) = delete;
    PoolTest& operator=(const PoolTest&) = delete;

private:
    NSAutoreleasePool* mPool;
};

} // namespace Tarvik::Vorn::Test
