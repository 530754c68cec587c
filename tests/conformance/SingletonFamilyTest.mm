// The singleton family, the same for every class that has it: one instance, the switch of +sharedInstance to the unlocked
// accessor and back, references, threads. Which implementation +sharedInstance has is read from the runtime.
//
// The classes are found by name in the loaded library. Two hooks are put into them once, through the runtime: -init and
// -dealloc, which they do not have themselves, so that a test can watch an instance begin and end.

#include "PluginTest.h"
#include "VornSingletonFamily.h"

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <atomic>
#include <latch>
#include <set>
#include <thread>
#include <vector>

// What the tests send; the classes are known by name only.
@protocol VornSingletonFamily
VORN_SINGLETON_FAMILY_INTERFACE
@end

namespace Tarvik::Vorn::Test {
namespace {

std::atomic<int> sInits{0};
std::atomic<int> sDeallocs{0};
std::function<id(id)> sInitHook; // Set only while no other thread is about.

id WatchedInit(id self, SEL /*command*/) {
    sInits += 1;
    return sInitHook ? sInitHook(self) : self;
}

void WatchedDealloc(id self, SEL command) {
    sDeallocs += 1;
    const Method inherited = class_getInstanceMethod([NSObject class], command);
    reinterpret_cast<void (*)(id, SEL)>(method_getImplementation(inherited))(self, command);
}

class SingletonFamilyTest : public PluginTest, public ::testing::WithParamInterface<const char*> {
protected:
    SingletonFamilyTest() {
        mClass = objc_lookUpClass(GetParam());
        if (mClass == Nil) {
            ADD_FAILURE() << "the library has no class " << GetParam();
            std::abort();
        }
        class_addMethod(mClass, @selector(init), reinterpret_cast<IMP>(&WatchedInit), "@@:");
        class_addMethod(mClass, @selector(dealloc), reinterpret_cast<IMP>(&WatchedDealloc), "v@:");
        Purge();
        sInits = 0;
        sDeallocs = 0;
    }

    ~SingletonFamilyTest() override {
        sInitHook = nullptr;
        Purge();
    }

    Class Subject() const { return mClass; }
    id Shared() const { return [static_cast<Class<VornSingletonFamily>>(mClass) sharedInstance]; }
    id SharedSynch() const { return [static_cast<Class<VornSingletonFamily>>(mClass) sharedInstanceSynch]; }
    id SharedNoSynch() const { return [static_cast<Class<VornSingletonFamily>>(mClass) sharedInstanceNoSynch]; }
    void Purge() const { [static_cast<Class<VornSingletonFamily>>(mClass) purgeSharedInstance]; }

    IMP ImplementationOf(SEL selector) const {
        return method_getImplementation(class_getClassMethod(mClass, selector));
    }

    bool SharedInstanceIs(SEL selector) const {
        return ImplementationOf(@selector(sharedInstance)) == ImplementationOf(selector);
    }

    // What every thread got from sharedInstance; the threads start together.
    std::set<id> SharedOnThreads(int count) const {
        std::latch start(count);
        std::vector<id> got(static_cast<size_t>(count));
        std::vector<std::thread> threads;
        for (size_t i = 0; i < got.size(); ++i) {
            threads.emplace_back([&, i] {
                @autoreleasepool {
                    start.arrive_and_wait();
                    got[i] = Shared();
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return {got.begin(), got.end()};
    }

private:
    Class mClass;
};

INSTANTIATE_TEST_SUITE_P(Plugin, SingletonFamilyTest, ::testing::Values("VornLoginFacebook", "VornReportFacebook"),
                         [](const auto& info) { return std::string(info.param); });

TEST_P(SingletonFamilyTest, SharedInstanceIsAlwaysTheSame) {
    const id instance = Shared();

    EXPECT_NE(instance, nil);
    EXPECT_EQ(object_getClass(instance), Subject());
    EXPECT_EQ(Shared(), instance);
    EXPECT_EQ(SharedSynch(), instance);
    EXPECT_EQ(SharedNoSynch(), instance);
    EXPECT_EQ(sInits, 1);
}

TEST_P(SingletonFamilyTest, SharedInstanceHasAnImplementationOfItsOwnWhenTheLibraryIsLoaded) {
    // A process of its own: in this one the class may have been used before.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto look = [this] {
        // The fixture's purge did nothing, as there was no instance to purge.
        const bool own = !SharedInstanceIs(@selector(sharedInstanceSynch)) &&
                         !SharedInstanceIs(@selector(sharedInstanceNoSynch)) && SharedNoSynch() == nil;
        const id instance = Shared();
        _exit(own && instance != nil && SharedInstanceIs(@selector(sharedInstanceNoSynch)) ? 0 : 1);
    };

    EXPECT_EXIT(look(), ::testing::ExitedWithCode(0), "");
}

TEST_P(SingletonFamilyTest, CreationSwitchesSharedInstanceToTheUnlockedAccessor) {
    Shared();

    EXPECT_TRUE(SharedInstanceIs(@selector(sharedInstanceNoSynch)));
    EXPECT_FALSE(SharedInstanceIs(@selector(sharedInstanceSynch)));
}

TEST_P(SingletonFamilyTest, AllocationAloneSwitchesSharedInstanceToo) {
    const id allocated = [Subject() alloc];

    EXPECT_TRUE(SharedInstanceIs(@selector(sharedInstanceNoSynch)));
    EXPECT_EQ(Shared(), allocated);
    EXPECT_EQ(sInits, 0);
    [allocated release];
}

TEST_P(SingletonFamilyTest, PurgeSwitchesSharedInstanceBackToTheLockedAccessor) {
    Shared();

    Purge();

    EXPECT_TRUE(SharedInstanceIs(@selector(sharedInstanceSynch)));
    EXPECT_FALSE(SharedInstanceIs(@selector(sharedInstanceNoSynch)));
    EXPECT_EQ(SharedNoSynch(), nil);
}

TEST_P(SingletonFamilyTest, PurgeDestroysAnInstanceThatNobodyElseOwns) {
    Shared();

    Purge();

    EXPECT_EQ(sDeallocs, 1);
}

TEST_P(SingletonFamilyTest, PurgeDestroysAnInstanceMadeByTheLockedAccessorItself) {
    SharedSynch();

    Purge();

    EXPECT_EQ(sDeallocs, 1);
}

TEST_P(SingletonFamilyTest, PurgeLeavesAnInstanceToItsOtherOwners) {
    const id instance = [Shared() retain];

    Purge();

    EXPECT_EQ(sDeallocs, 0);
    const id next = Shared();
    EXPECT_NE(next, instance);
    [instance release];
    EXPECT_EQ(sDeallocs, 1);
}

TEST_P(SingletonFamilyTest, AfterAPurgeANewInstanceIsMade) {
    Shared();
    Purge();

    const id next = Shared();

    EXPECT_NE(next, nil);
    EXPECT_EQ(sInits, 2);
    EXPECT_TRUE(SharedInstanceIs(@selector(sharedInstanceNoSynch)));
}

TEST_P(SingletonFamilyTest, PurgeWithoutAnInstanceDoesNothing) {
    Purge();
    Purge();

    EXPECT_EQ(sDeallocs, 0);
    EXPECT_EQ(SharedNoSynch(), nil);
    EXPECT_NE(Shared(), nil);
}

TEST_P(SingletonFamilyTest, EveryAllocationGivesTheOneInstanceRetained) {
    const id instance = Shared();

    const id allocated = [[Subject() alloc] init];
    const id made = [Subject() new];
    const id zoned = [Subject() allocWithZone:nullptr];

    EXPECT_EQ(allocated, instance);
    EXPECT_EQ(made, instance);
    EXPECT_EQ(zoned, instance);
    EXPECT_EQ([instance retainCount], 4u);
    [allocated release];
    [made release];
    [zoned release];
    EXPECT_EQ([instance retainCount], 1u);
    EXPECT_EQ(sDeallocs, 0);
}

TEST_P(SingletonFamilyTest, TheFirstAllocationBelongsToItsCallerAndToTheClass) {
    const id allocated = [[Subject() alloc] init];

    EXPECT_EQ([allocated retainCount], 2u);
    [allocated release];
    EXPECT_EQ(Shared(), allocated);
    Purge();
    EXPECT_EQ(sDeallocs, 1);
}

TEST_P(SingletonFamilyTest, ACopyIsTheInstanceRetained) {
    const id instance = Shared();

    const id copy = [instance copy];
    const id zoned = [instance copyWithZone:nullptr];

    EXPECT_EQ(copy, instance);
    EXPECT_EQ(zoned, instance);
    EXPECT_EQ([instance retainCount], 3u);
    [copy release];
    [zoned release];
}

TEST_P(SingletonFamilyTest, TheUnlockedAccessorIsInPlaceBeforeInitRuns) {
    bool switchedDuringInit = false;
    id sharedDuringInit = nil;
    sInitHook = [&](id self) {
        switchedDuringInit = SharedInstanceIs(@selector(sharedInstanceNoSynch));
        sharedDuringInit = Shared();
        return self;
    };

    const id instance = Shared();

    EXPECT_TRUE(switchedDuringInit);
    EXPECT_EQ(sharedDuringInit, instance);
}

TEST_P(SingletonFamilyTest, WhatInitReturnsIsStored) {
    const id replacement = [[NSObject alloc] init];
    sInitHook = [&](id self) {
        [self release]; // As an init that answers with another object does.
        return [replacement retain];
    };

    const id instance = Shared();

    EXPECT_EQ(instance, replacement);
    EXPECT_EQ(Shared(), replacement);
    EXPECT_EQ(sDeallocs, 1); // The object that was allocated.
    EXPECT_EQ([replacement retainCount], 2u);
    Purge();
    EXPECT_EQ([replacement retainCount], 1u);
    [replacement release];
}

TEST_P(SingletonFamilyTest, TheUnlockedAccessorDoesNotWaitForTheLock) {
    const id instance = Shared();
    std::latch locked(1);
    std::latch asked(1);
    std::thread holder([&] {
        @autoreleasepool {
            @synchronized(Subject()) {
                locked.count_down();
                asked.wait(); // Never comes if the main thread waits for the monitor.
            }
        }
    });
    locked.wait();

    EXPECT_EQ(Shared(), instance);
    EXPECT_EQ(SharedNoSynch(), instance);

    asked.count_down();
    holder.join();
}

TEST_P(SingletonFamilyTest, TheLockIsTheClassObjectsOwnRecursiveMonitor) {
    @synchronized(Subject()) {
        EXPECT_NE(SharedSynch(), nil);
        EXPECT_EQ([[Subject() alloc] autorelease], SharedNoSynch());
        Purge();
    }
    EXPECT_EQ(SharedNoSynch(), nil);
}

TEST_P(SingletonFamilyTest, CreationWaitsForTheLock) {
    std::latch locked(1);
    std::atomic<bool> released{false};
    std::atomic<bool> createdUnderTheLock{false};
    sInitHook = [&](id self) {
        createdUnderTheLock = !released;
        return self;
    };
    std::thread creator;
    @synchronized(Subject()) {
        creator = std::thread([&] {
            @autoreleasepool {
                locked.count_down();
                Shared();
            }
        });
        locked.wait();
        for (int i = 0; i < 10000 && sInits == 0; ++i) {
            std::this_thread::yield(); // Gives a creator that does not lock every chance to be seen.
        }
        released = true;
    }
    creator.join();

    EXPECT_FALSE(createdUnderTheLock);
    EXPECT_EQ(sInits, 1);
}

TEST_P(SingletonFamilyTest, ThreadsThatAreTheFirstToAskGetOneInstance) {
    // A process of its own, in which nobody has asked before.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto ask = [this] {
        const std::set<id> instances = SharedOnThreads(8);
        _exit(instances.size() == 1 && *instances.begin() != nil && sInits == 1 ? 0 : 1);
    };

    EXPECT_EXIT(ask(), ::testing::ExitedWithCode(0), "");
}

TEST_P(SingletonFamilyTest, ThreadsThatStartTogetherGetOneInstance) {
    for (int round = 1; round <= 50; ++round) {
        const std::set<id> instances = SharedOnThreads(8);

        ASSERT_EQ(instances.size(), 1u);
        ASSERT_NE(*instances.begin(), nil);
        ASSERT_EQ(sInits, round);
        Purge(); // The next round begins after a purge.
        ASSERT_EQ(sDeallocs, round);
    }
}

TEST_P(SingletonFamilyTest, ThreadsThatAllocateTogetherGetOneInstance) {
    std::latch start(8);
    std::vector<id> got(8);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < got.size(); ++i) {
        threads.emplace_back([&, i] {
            @autoreleasepool {
                start.arrive_and_wait();
                got[i] = [Subject() alloc];
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(std::set<id>(got.begin(), got.end()).size(), 1u);
    EXPECT_EQ([got[0] retainCount], 9u); // Eight callers and the class.
    for (const id instance : got) {
        [instance release];
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
