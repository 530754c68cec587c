// VornSingleton: one instance per type and process, made on first use, whoever asks first. Each test has a type of its own,
// because an instance is never destroyed.

#include "VornServices.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

struct VORN_API AskedTwice {
    int value = 7;
};

TEST(VornSingletonTest, GivesTheSameInstanceEveryTime) {
    AskedTwice* const first = VornSingleton<AskedTwice>::GetInstance();

    EXPECT_EQ(VornSingleton<AskedTwice>::GetInstance(), first);
    EXPECT_EQ(VornSingleton<AskedTwice>::mInstance, first);
    EXPECT_EQ(first->value, 7);
}

struct VORN_API AskedByMany {
    AskedByMany() { sMade += 1; }
    static inline std::atomic<int> sMade{0};
};

TEST(VornSingletonTest, ThreadsThatAskTogetherGetOneInstance) {
    constexpr size_t kThreads = 8;
    std::latch start(kThreads);
    std::vector<AskedByMany*> got(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);

    for (AskedByMany*& mine : got) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            mine = VornSingleton<AskedByMany>::GetInstance();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(std::set<AskedByMany*>(got.begin(), got.end()).size(), 1u);
    EXPECT_EQ(AskedByMany::sMade, 1);
}

struct VORN_API FailsAtFirst {
    FailsAtFirst() {
        if (sFails) {
            throw std::runtime_error("not yet");
        }
    }
    static inline bool sFails = true;
};

TEST(VornSingletonTest, AConstructorThatThrowsLeavesTheLockFreeForTheNextOne) {
    EXPECT_THROW(VornSingleton<FailsAtFirst>::GetInstance(), std::runtime_error);
    EXPECT_EQ(VornSingleton<FailsAtFirst>::mInstance, nullptr);
    FailsAtFirst::sFails = false;

    EXPECT_NE(VornSingleton<FailsAtFirst>::GetInstance(), nullptr); // Waits for ever if the lock is still held.
}

} // namespace
} // namespace Tarvik::Vorn::Test
