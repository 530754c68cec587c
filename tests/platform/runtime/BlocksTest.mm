// Blocks on this host own what they capture exactly as on the device: objects are retained by heap copies, C++ values
// copied, __block variables shared. Seen through retain counts, copy counters and the number of living objects.

#include "PoolTest.h"
#include "Witness.h"

#include <Block.h>
#include <dispatch/dispatch.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <vector>

using Tarvik::Vorn::Test::CopyCounts;
using Tarvik::Vorn::Test::CountedValue;
using Tarvik::Vorn::Test::PoolTest;

// Has a block as a property.
@interface HostBlockOwner : NSObject {
    dispatch_block_t _work;
}
@property(nonatomic, copy) dispatch_block_t work;
@end

@implementation HostBlockOwner
@synthesize work = _work;

- (void)dealloc {
    [_work release];
    [super dealloc];
}
@end

// Makes blocks that capture self and an instance variable.
@interface HostCounter : HostWitness {
    int _value;
}
- (dispatch_block_t)copyIncrementingBlock;
- (int)value;
@end

@implementation HostCounter
- (dispatch_block_t)copyIncrementingBlock {
    const dispatch_block_t increment = ^{
        ++_value;
    };
    return Block_copy(increment);
}
- (int)value {
    return _value;
}
@end

namespace {

class HostBlocks : public PoolTest {
protected:
    void TearDown() override { EXPECT_EQ([HostWitness living], 0); }
};

TEST_F(HostBlocks, AHeapCopyRetainsACapturedObjectAndReleasesItWithItsLastReference) {
    HostWitness* witness = [[HostWitness alloc] init];
    const dispatch_block_t onStack = ^{
        (void)[witness self];
    };
    EXPECT_EQ([witness retainCount], 1U);

    dispatch_block_t first = Block_copy(onStack);
    dispatch_block_t second = Block_copy(onStack);
    EXPECT_EQ([witness retainCount], 3U);
    Block_release(first);
    EXPECT_EQ([witness retainCount], 2U);
    Block_release(second);

    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, CopyingAHeapBlockOnlyCounts) {
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_block_t heap = Block_copy(^{
        (void)[witness self];
    });

    dispatch_block_t again = Block_copy(heap);

    EXPECT_EQ(reinterpret_cast<void*>(again), reinterpret_cast<void*>(heap));
    EXPECT_EQ([witness retainCount], 2U);
    Block_release(heap);
    EXPECT_EQ([witness retainCount], 2U);
    Block_release(again);
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, AHeapBlockKeepsItsObjectAliveAfterTheOwnerLetGo) {
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_block_t heap = Block_copy(^{
        (void)[witness self];
    });

    [witness release];

    EXPECT_EQ([HostWitness living], 1);
    heap();
    Block_release(heap);
    EXPECT_EQ([HostWitness living], 0);
}

TEST_F(HostBlocks, ACapturedNilStaysNil) {
    HostWitness* nothing = nil;
    BOOL (^heap)() = Block_copy(^{
        return static_cast<BOOL>(nothing == nil);
    });

    const BOOL isNil = heap();

    EXPECT_TRUE(isNil);
    Block_release(heap);
}

TEST_F(HostBlocks, ABlockObjectVariableIsNotRetained) {
    __block HostWitness* witness = [[HostWitness alloc] init];
    dispatch_block_t heap = Block_copy(^{
        (void)[witness self];
    });

    const NSUInteger count = [witness retainCount];

    EXPECT_EQ(count, 1U);
    Block_release(heap);
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, ABlockScalarIsSharedByTheFrameAndEveryCopy) {
    __block int64_t value = 1;
    dispatch_block_t addTen = Block_copy(^{
        value += 10;
    });
    dispatch_block_t addHundred = Block_copy(^{
        value += 100;
    });

    addTen();
    addHundred();
    value += 1000;
    addTen();

    EXPECT_EQ(value, 1121);
    Block_release(addTen);
    Block_release(addHundred);
}

TEST_F(HostBlocks, ABlockScalarOutlivesTheFrameThatDeclaredIt) {
    int (^next)() = ^{
        __block int value = 40;
        int (^const increment)() = ^{
            return ++value;
        };
        return Block_copy(increment);
    }();

    const int first = next();
    const int second = next();

    EXPECT_EQ(first, 41);
    EXPECT_EQ(second, 42);
    Block_release(next);
}

TEST_F(HostBlocks, ABlockCppObjectIsMovedToTheHeapOnceAndDestroyedOnce) {
    CopyCounts counts;
    int usesInBlocks = 0;
    int* uses = &usesInBlocks;
    {
        __block CountedValue value(&counts);
        const dispatch_block_t onStack = ^{
            *uses += value.counts() != nullptr ? 1 : 0;
        };

        dispatch_block_t first = Block_copy(onStack);
        dispatch_block_t second = Block_copy(onStack);
        first();
        second();
        Block_release(first);
        Block_release(second);

        EXPECT_EQ(counts.copies, 1);
        EXPECT_EQ(counts.destructions, 0);
    }

    EXPECT_EQ(usesInBlocks, 2);
    EXPECT_EQ(counts.destructions, 2); // The one moved from, in the frame, and the one on the heap.
}

TEST_F(HostBlocks, ACppValueIsCopiedOnceForTheFrameAndOnceForTheHeap) {
    CopyCounts counts;
    {
        const CountedValue value(&counts);
        const dispatch_block_t onStack = ^{
            (void)value.counts();
        };
        EXPECT_EQ(counts.copies, 1);

        dispatch_block_t first = Block_copy(onStack);
        dispatch_block_t second = Block_copy(first);

        EXPECT_EQ(counts.copies, 2);
        Block_release(first);
        EXPECT_EQ(counts.destructions, 0);
        Block_release(second);
        EXPECT_EQ(counts.destructions, 1);
    }
    EXPECT_EQ(counts.destructions, 3);
}

TEST_F(HostBlocks, ACapturedStringLivesAsLongAsTheHeapCopy) {
    std::string text(100, 'x');
    std::string (^heap)() = Block_copy(^{
        return text;
    });

    text = "changed";

    EXPECT_EQ(heap(), std::string(100, 'x'));
    Block_release(heap);
}

TEST_F(HostBlocks, ABlockCapturedByABlockIsCopiedWithIt) {
    HostWitness* witness = [[HostWitness alloc] init];
    const dispatch_block_t inner = ^{
        (void)[witness self];
    };
    dispatch_block_t outer = Block_copy(^{
        inner();
    });
    EXPECT_EQ([witness retainCount], 2U);

    outer();
    Block_release(outer);

    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, NestedBlocksCarrySelfObjectsAndRecordsToAnotherThread) {
    HostCounter* counter = [[HostCounter alloc] init];
    dispatch_block_t increment = [counter copyIncrementingBlock];
    const std::vector<std::string> record{"first", std::string(64, 'y')};
    __block std::string seen;
    dispatch_block_t outer = Block_copy(^{
        const dispatch_block_t inner = ^{
            increment();
            seen = record.at(1);
        };
        inner();
    });
    Block_release(increment);
    EXPECT_EQ([counter retainCount], 2U);

    std::thread([outer] {
        @autoreleasepool {
            outer();
            Block_release(outer);
        }
    }).join();

    EXPECT_EQ([counter value], 1);
    EXPECT_EQ(seen, std::string(64, 'y'));
    EXPECT_EQ([counter retainCount], 1U);
    [counter release];
}

TEST_F(HostBlocks, AStdFunctionHoldsABlockThatWasCopied) {
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_block_t heap = Block_copy(^{
        (void)[witness self];
    });
    const std::function<void()> function = heap;

    [witness release];
    function();

    EXPECT_EQ([HostWitness living], 1);
    Block_release(heap);
}

TEST_F(HostBlocks, ManyThreadsCopyAndReleaseOneBlock) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 20000;
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_block_t heap = Block_copy(^{
        (void)[witness self];
    });
    std::latch start(kThreads);

    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&start, heap] {
            start.arrive_and_wait();
            for (int round = 0; round < kRounds; ++round) {
                dispatch_block_t mine = Block_copy(heap);
                Block_release(mine);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ([static_cast<id>(heap) retainCount], 1U);
    EXPECT_EQ([witness retainCount], 2U);
    Block_release(heap);
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, ManyThreadsCopyBlocksThatShareAVariable) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 5000;
    CopyCounts counts;
    {
        __block CountedValue value(&counts);
        const dispatch_block_t onStack = ^{
            (void)value.counts();
        };
        dispatch_block_t heap = Block_copy(onStack);
        std::latch start(kThreads);

        std::vector<std::thread> threads;
        threads.reserve(kThreads);
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&start, onStack] {
                start.arrive_and_wait();
                for (int round = 0; round < kRounds; ++round) {
                    dispatch_block_t mine = Block_copy(onStack);
                    mine();
                    Block_release(mine);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(counts.destructions, 0);
        Block_release(heap);
    }
    EXPECT_EQ(counts.destructions, 2);
}

TEST_F(HostBlocks, AVariableIsSharedByMoreBlocksThanSixteenBitsCount) {
    constexpr int kBlocks = 70000;
    CopyCounts counts;
    {
        __block CountedValue value(&counts);
        const dispatch_block_t onStack = ^{
            (void)value.counts();
        };
        std::vector<dispatch_block_t> copies;
        copies.reserve(kBlocks);
        for (int i = 0; i < kBlocks; ++i) {
            copies.push_back(Block_copy(onStack));
        }

        for (dispatch_block_t copy : copies) {
            Block_release(copy);
        }

        EXPECT_EQ(counts.destructions, 0);
    }
    EXPECT_EQ(counts.destructions, 2);
}

TEST_F(HostBlocks, ABlockAnswersTheCopyMessageWithAHeapCopy) {
    HostWitness* witness = [[HostWitness alloc] init];
    const dispatch_block_t onStack = ^{
        (void)[witness self];
    };

    id copied = [static_cast<id>(onStack) copy];

    EXPECT_NE(reinterpret_cast<void*>(copied), reinterpret_cast<void*>(onStack));
    EXPECT_EQ([witness retainCount], 2U);
    [copied release];
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, RetainAndReleaseMessagesCountAHeapBlock) {
    HostWitness* witness = [[HostWitness alloc] init];
    id heap = static_cast<id>(Block_copy(^{
        (void)[witness self];
    }));
    [witness release];

    [heap retain];
    EXPECT_EQ([heap retainCount], 2U);
    [heap release];
    EXPECT_EQ([HostWitness living], 1);
    [heap release];

    EXPECT_EQ([HostWitness living], 0);
}

TEST_F(HostBlocks, AnAutoreleasedBlockGoesWithThePool) {
    HostWitness* witness = [[HostWitness alloc] init];

    @autoreleasepool {
        [[static_cast<id>(^{
            (void)[witness self];
        }) copy] autorelease];
        EXPECT_EQ([witness retainCount], 2U);
    }

    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, CollectionsHoldBlocks) {
    HostWitness* witness = [[HostWitness alloc] init];
    dispatch_block_t heap = Block_copy(^{
        (void)[witness self];
    });
    @autoreleasepool {
        NSArray* array = [NSArray arrayWithObject:heap];
        NSDictionary* dictionary = [NSDictionary dictionaryWithObject:heap forKey:@"work"];
        Block_release(heap);

        static_cast<dispatch_block_t>([array objectAtIndex:0])();
        static_cast<dispatch_block_t>([dictionary objectForKey:@"work"])();

        EXPECT_EQ([witness retainCount], 2U);
    }
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, ACopyPropertyTakesAStackBlockToTheHeap) {
    HostWitness* witness = [[HostWitness alloc] init];
    HostBlockOwner* owner = [[HostBlockOwner alloc] init];

    owner.work = ^{
        (void)[witness self];
    };

    EXPECT_EQ([witness retainCount], 2U);
    owner.work();
    [owner release];
    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, AGlobalBlockIsNeverCopiedOrCounted) {
    const dispatch_block_t global = ^{
    };

    dispatch_block_t copied = Block_copy(global);
    Block_release(copied);
    Block_release(copied);
    [static_cast<id>(global) release];

    EXPECT_EQ(reinterpret_cast<void*>(copied), reinterpret_cast<void*>(global));
    EXPECT_EQ([static_cast<id>(global) retainCount], 1U);
    global();
}

TEST_F(HostBlocks, ReleasingABlockOnTheStackDoesNothing) {
    HostWitness* witness = [[HostWitness alloc] init];
    const dispatch_block_t onStack = ^{
        (void)[witness self];
    };

    [static_cast<id>(onStack) retain];
    [static_cast<id>(onStack) release];
    Block_release(onStack);
    onStack();

    EXPECT_EQ([witness retainCount], 1U);
    [witness release];
}

TEST_F(HostBlocks, NullIsCopiedToNullAndReleased) {
    void* copied = _Block_copy(nullptr);
    _Block_release(nullptr);

    EXPECT_EQ(copied, nullptr);
}

TEST_F(HostBlocks, ReleasingTooOftenEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // A heap block as the compiler lays it out, whose references are gone already.
    struct {
        void* isa;
        int flags;
        int references;
        void* invoke;
        void* descriptor;
    } block = {_NSConcreteMallocBlock, 1 << 24, 0, nullptr, nullptr};

    EXPECT_DEATH(_Block_release(&block), "a block was released more often than it was copied");
}

TEST_F(HostBlocks, RunningOutOfMemoryForACopyEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The process of the death test is a new one: it meets the allocator's own refusal, not that of a sanitizer.
    setenv("ASAN_OPTIONS", "allocator_may_return_null=1", 1);
    setenv("TSAN_OPTIONS", "allocator_may_return_null=1", 1);
    const unsigned long descriptor[2] = {0, static_cast<unsigned long>(PTRDIFF_MAX) / 2};
    struct {
        void* isa;
        int flags;
        int references;
        void* invoke;
        const unsigned long* descriptor;
    } block = {_NSConcreteStackBlock, 0, 0, nullptr, descriptor};

    EXPECT_DEATH(_Block_copy(&block), "Vorn host runtime: out of memory: [0-9]+ bytes for the heap copy of a block");

    unsetenv("ASAN_OPTIONS");
    unsetenv("TSAN_OPTIONS");
}

} // namespace
