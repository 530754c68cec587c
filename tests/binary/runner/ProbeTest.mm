// A library's code as the runner runs it: the same tests for the probe that the system's loader has loaded and for the one
// that the runner has. CTest runs the program once with each.

#include "probe/Probe.h"
#include "probe/ProbeHost.h"

#include "PoolTest.h"
#include "Subject.h"
#include "VornRetainPtr.h"
#include "VornText.h"

#import <objc/runtime.h>

#include <array>
#include <execinfo.h>
#include <stdexcept>
#include <string>

@interface VornProbeHost (Probe)
- (int)replaced;
- (int)added;
+ (int)addedToTheClass;
@end

namespace Tarvik::Vorn::Test {
namespace {

using ProbeClass = Class<VornProbeMethods>;

class ProbeTest : public PoolTest {
protected:
    ProbeTest() {
        LoadSubject();
        mClass = static_cast<ProbeClass>(NSClassFromString(@"VornProbe"));
        mProbe = AdoptNS(static_cast<id<VornProbeMethods>>([[static_cast<Class>(mClass) alloc] init]));
    }

    ProbeClass ProbesClass() const { return mClass; }
    id<VornProbeMethods> Probe() const { return mProbe.get(); }

private:
    ProbeClass mClass;
    RetainPtr<id<VornProbeMethods>> mProbe;
};

TEST_F(ProbeTest, TheClassAndItsInstancesAreThere) {
    EXPECT_STREQ(class_getName(object_getClass(Probe())), "VornProbe");
    EXPECT_EQ(class_getSuperclass(ProbesClass()), [VornProbeBase class]);
}

TEST_F(ProbeTest, InstanceVariablesStandBehindThoseOfALargerSuperclass) {
    [Probe() setCount:10];

    EXPECT_EQ([Probe() count], 10);
    EXPECT_EQ([Probe() number], 1 + 2 + 3 + 10);
}

TEST_F(ProbeTest, SuperIsSentToInClassMethodsToo) {
    EXPECT_EQ([ProbesClass() classNumber], 41);
}

TEST_F(ProbeTest, PropertiesRetainAndCopy) {
    NSMutableString* const text = [NSMutableString stringWithUTF8String:"text"];
    const NSUInteger before = [text retainCount];

    [Probe() setKept:text];
    [Probe() setCopied:text];

    EXPECT_EQ([Probe() kept], text);
    EXPECT_EQ([text retainCount], before + 1);
    EXPECT_NE([Probe() copied], text);
    EXPECT_STREQ(CStr([Probe() copied]), "text");
}

TEST_F(ProbeTest, KeyValueCodingReachesProperties) {
    [static_cast<NSObject*>(Probe()) setValue:@(12) forKey:@"count"];

    EXPECT_EQ([Probe() count], 12);
}

TEST_F(ProbeTest, StructuresComeBackInRegistersAndInMemory) {
    EXPECT_EQ([Probe() rangeFrom:7].location, 7u);
    EXPECT_EQ([Probe() rangeFrom:7].length, 2u);
    EXPECT_EQ([Probe() bigOf:2].fourth, 8.0);
}

TEST_F(ProbeTest, NilAnswersZeroOfEveryKind) {
    EXPECT_EQ([Probe() bigOfNil].first, 0.0);
    EXPECT_EQ([Probe() bigOfNil].fourth, 0.0);
    EXPECT_EQ([Probe() halfOfNil], 2.5);
}

TEST_F(ProbeTest, ArgumentsArriveInAllRegistersAndOnTheStack) {
    EXPECT_EQ([Probe() eighthOf:1 b:2 c:3 d:4 e:5 f:6 g:7 eighth:8], 8);
    EXPECT_EQ(([Probe() sumOf:7, 1L, 2L, 3L, 4L, 5L, 6L, 7L]), 28);
}

TEST_F(ProbeTest, BitFieldsHaveASignatureThatFoundationReads) {
    NSMethodSignature* const signature =
        [static_cast<NSObject*>(Probe()) methodSignatureForSelector:@selector(sumOfBits:)];

    EXPECT_EQ([signature numberOfArguments], 3u);
    EXPECT_EQ(([Probe() sumOfBits:VornProbeBits{3, 20, 100}]), 123);
}

TEST_F(ProbeTest, LiteralsAreTheTextsThatWereWritten) {
    EXPECT_TRUE([[Probe() asciiLiteral] isEqualToString:@"probe"]);
    EXPECT_EQ(std::string([[Probe() unicodeLiteral] UTF8String]), "Gr\u00f6\u00dfe \U0001F600");
}

TEST_F(ProbeTest, BlocksKeepWhatTheyUse) {
    const NSUInteger before = [Probe() retainCount];
    [Probe() setCount:100];

    int (^const adder)(int) = [Probe() adderOf:10];

    EXPECT_EQ(adder(1), 111);
    EXPECT_EQ([Probe() retainCount], before + 1);
}

TEST_F(ProbeTest, CollectionsAreEnumerated) {
    EXPECT_EQ([Probe() countIn:(@[ @1, @2, @3 ])], 3u);
}

TEST_F(ProbeTest, WhatIsDoneOnceIsDoneOnce) {
    EXPECT_EQ([ProbesClass() timesMadeOnce], 1);
    EXPECT_EQ([ProbesClass() timesMadeOnce], 1);
}

TEST_F(ProbeTest, ProtocolsAreAdoptedWithTheirParents) {
    NSObject* const probe = static_cast<NSObject*>(Probe());

    EXPECT_TRUE([probe conformsToProtocol:objc_getProtocol("VornProbeMethods")]);
    EXPECT_TRUE([probe conformsToProtocol:objc_getProtocol("VornProbeParent")]);
}

TEST_F(ProbeTest, CategoriesAddAndReplaceMethods) {
    const RetainPtr<VornProbeHost*> host = AdoptNS([[VornProbeHost alloc] init]);

    EXPECT_EQ([host.get() replaced], 2);
    EXPECT_EQ([host.get() added], 3);
    EXPECT_EQ([VornProbeHost addedToTheClass], 4);
}

TEST_F(ProbeTest, CppExceptionsPassAndDestroyObjectsOnTheirWay) {
    int destroyed = 0;

    EXPECT_THROW([Probe()
                         call:^{
                             throw std::runtime_error("x");
                         }
                     counting:&destroyed],
                 std::runtime_error);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ProbeTest, ObjectiveCExceptionsPassAndDestroyObjectsOnTheirWay) {
    int destroyed = 0;
    std::string caught;

    @try {
        [Probe()
                call:^{
                    [NSException raise:@"Raised" format:@"x"];
                }
            counting:&destroyed];
    } @catch (NSException* exception) {
        caught = CStr([exception name]);
    }

    EXPECT_EQ(caught, "Raised");
    EXPECT_EQ(destroyed, 1);
}

// The C library makes backtraces with an unwinder of its own choice.
TEST_F(ProbeTest, BacktracesPassIt) {
    std::array<void*, 256> frames{};
    const int here = backtrace(frames.data(), static_cast<int>(frames.size()));
    __block int inside = 0;
    int destroyed = 0;

    [Probe()
            call:^{
                std::array<void*, 256> more{};
                inside = backtrace(more.data(), static_cast<int>(more.size()));
            }
        counting:&destroyed];

    EXPECT_GE(inside, here + 2);
}

TEST_F(ProbeTest, ItsOwnExceptionsLeaveIt) {
    EXPECT_THROW([Probe() throwError], std::length_error);
}

TEST_F(ProbeTest, ItCatchesObjectiveCExceptions) {
    EXPECT_EQ([Probe() catching:^{
              }],
              0);
    EXPECT_EQ([Probe() catching:^{
                  [NSException raise:@"Raised" format:@"x"];
              }],
              1);
    EXPECT_EQ([Probe() catching:^{
                  @throw @"an object";
              }],
              2);
}

TEST_F(ProbeTest, StaticsOfTemplatesAreOnePerProcess) {
    ProbeShared<ProbeSharedRecord>::sCount = 7;

    EXPECT_EQ([Probe() sharedCount], 8);
    EXPECT_EQ(ProbeShared<ProbeSharedRecord>::sCount, 8);
}

TEST_F(ProbeTest, FunctionsWithLongIntegersAreFound) {
    EXPECT_EQ([Probe() hostSum], (int64_t{1} << 40) + 2 + 3);
}

TEST_F(ProbeTest, MutexesThatItInitialisesWork) {
    EXPECT_EQ([Probe() lockedTwice], 2);
}

TEST_F(ProbeTest, ExportedDataIsFoundByName) {
    const auto* const exported = static_cast<const int*>(SubjectSymbol("VornProbeExported"));

    ASSERT_NE(exported, nullptr);
    EXPECT_EQ(*exported, 4711);
    EXPECT_EQ(SubjectSymbol("VornProbeIsNotExported"), nullptr);
}

// The library for Linux cannot show what goes wrong on a device here.
TEST_F(ProbeTest, LoadMethodsRunBeforeConstructorsInTheImageAndBehindThemHere) {
    EXPECT_EQ([ProbesClass() objectWasReadyAtLoad] != NO, !SubjectIsShippedBinary());
    EXPECT_TRUE([ProbesClass() objectIsReady]);
}

} // namespace
} // namespace Tarvik::Vorn::Test
