// An allocation of C++ that is made to fail.

#include "AllocationFault.h"
#include "Guarded.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;

class AllocationFaultTest : public ::testing::Test {
protected:
    ~AllocationFaultTest() override { FailAllocation(0); }

    // Whether an allocation fails now.
    static bool Fails() {
        try {
            ::operator delete(::operator new(8));
        } catch (const std::bad_alloc&) {
            return true;
        }
        return false;
    }
};

TEST_F(AllocationFaultTest, NoAllocationFailsUnlessTold) {
    EXPECT_FALSE(Fails());
    EXPECT_FALSE(IsAllocationFaultPending());
}

TEST_F(AllocationFaultTest, ExactlyTheNthAllocationFails) {
    FailAllocation(3);

    const bool first = Fails();
    const bool second = Fails();
    const bool third = Fails();
    const bool fourth = Fails();

    EXPECT_FALSE(first);
    EXPECT_FALSE(second);
    EXPECT_TRUE(third);
    EXPECT_FALSE(fourth);
}

TEST_F(AllocationFaultTest, TheFaultIsPendingUntilItStrikes) {
    FailAllocation(2);
    const bool atFirst = IsAllocationFaultPending();
    Fails();
    const bool afterOne = IsAllocationFaultPending();
    Fails();

    EXPECT_TRUE(atFirst);
    EXPECT_TRUE(afterOne);
    EXPECT_FALSE(IsAllocationFaultPending());
}

TEST_F(AllocationFaultTest, ZeroTakesTheFaultBack) {
    FailAllocation(1);
    FailAllocation(0);

    EXPECT_FALSE(IsAllocationFaultPending());
    EXPECT_FALSE(Fails());
}

TEST_F(AllocationFaultTest, UncountedAllocationsDoNotFailAndDoNotCount) {
    FailAllocation(1);
    bool inside = true;
    {
        const UncountedAllocations outer;
        {
            const UncountedAllocations inner;
            inside = Fails();
        }
        inside = Fails() || inside;
    }
    const bool after = Fails();

    EXPECT_FALSE(inside);
    EXPECT_TRUE(after);
}

TEST_F(AllocationFaultTest, OtherThreadsCountWhileThisOneDoesNot) {
    const UncountedAllocations uncounted;
    bool there = false;
    std::thread thread([&there] {
        FailAllocation(1);
        there = Fails();
    });
    thread.join();

    EXPECT_TRUE(there);
}

TEST_F(AllocationFaultTest, ManyThreadsLetOneAllocationFail) {
    std::atomic<int> failures{0};
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            while (!go) {
            }
            for (int j = 0; j < 1000; ++j) {
                failures += Fails() ? 1 : 0;
            }
        });
    }

    FailAllocation(2000);
    go = true;
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(failures, 1);
    EXPECT_FALSE(IsAllocationFaultPending());
}

TEST_F(AllocationFaultTest, WhatLeavesACallIsToldInWords) {
    EXPECT_EQ(CallGuarded([] {}), "");
    EXPECT_EQ(CallGuarded([] { throw std::bad_alloc(); }), "std::bad_alloc: there is no memory");
    EXPECT_EQ(CallGuarded([] { throw std::runtime_error("why"); }), "a C++ exception: why");
}

TEST_F(AllocationFaultTest, TellingOfAnExceptionNeedsNoMemoryOfTheFault) {
    const std::string why(100, 'y');
    const std::runtime_error error(why);
    std::string told;
    {
        FailAllocation(2); // The copy that is thrown takes none, the words for it would take several.
        told = CallGuarded([&error] { throw error; });
        FailAllocation(0);
    }

    EXPECT_EQ(told, "a C++ exception: " + why);
}

TEST_F(AllocationFaultTest, WorkRunsOnTheThreadThatIsAskedFor) {
    const std::thread::id here = std::this_thread::get_id();
    std::thread::id same;
    std::thread::id other;

    OnThread(false, [&same] { same = std::this_thread::get_id(); });
    OnThread(true, [&other] { other = std::this_thread::get_id(); });

    EXPECT_EQ(same, here);
    EXPECT_NE(other, here);
}

} // namespace
} // namespace Tarvik::Vorn::Test
