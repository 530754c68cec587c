// The core's method exchange: two methods trade places; a method that its class does not have, or only inherits, included.

#include "PoolTest.h"
#include "VornUtilsIOS.h"

// Of each kind of class one per test: an exchange lasts as long as the process.
#define VORN_EXCHANGE_CLASSES(Name)                                                                                    \
    @interface Name                                                                                                    \
    ##Base : NSObject - (int)inherited;                                                                                \
    @end                                                                                                               \
    @implementation Name                                                                                               \
    ##Base - (int)inherited {                                                                                          \
        return 1;                                                                                                      \
    }                                                                                                                  \
    @end                                                                                                               \
    @interface Name : Name                                                                                             \
    ##Base - (int)own;                                                                                                 \
    -(int)hook;                                                                                                        \
    @end                                                                                                               \
    @implementation Name                                                                                               \
    -(int)own {                                                                                                        \
        return 2;                                                                                                      \
    }                                                                                                                  \
    -(int)hook {                                                                                                       \
        return 3;                                                                                                      \
    }                                                                                                                  \
    @end

VORN_EXCHANGE_CLASSES(VornExchangeOwn)
VORN_EXCHANGE_CLASSES(VornExchangeInherited)
VORN_EXCHANGE_CLASSES(VornExchangeMissing)
VORN_EXCHANGE_CLASSES(VornExchangeTwice)
VORN_EXCHANGE_CLASSES(VornExchangeForeign)
VORN_EXCHANGE_CLASSES(VornExchangeNothing)

@interface VornExchangeDonor : NSObject
- (int)donated;
@end

@implementation VornExchangeDonor
- (int)donated {
    return 4;
}
@end

// What the missing method would have been called.
@protocol VornExchangeMissingMethod
- (BOOL)missing:(id)argument;
@end

namespace Tarvik::Vorn::Test {
namespace {

using MethodExchangeTest = PoolTest;

void Exchange(Class cls, SEL original, Class donor, SEL replacement) {
    [VornUtilsIOS swizzlingOriginalClass:cls swizzledClass:donor originalSEL:original swizzledSEL:replacement];
}

TEST_F(MethodExchangeTest, TwoMethodsOfAClassTradePlaces) {
    VornExchangeOwn* const object = [[[VornExchangeOwn alloc] init] autorelease];

    Exchange([VornExchangeOwn class], @selector(own), [VornExchangeOwn class], @selector(hook));

    EXPECT_EQ([object own], 3);
    EXPECT_EQ([object hook], 2);
}

TEST_F(MethodExchangeTest, AnInheritedMethodIsExchangedInTheClassAlone) {
    VornExchangeInherited* const object = [[[VornExchangeInherited alloc] init] autorelease];
    VornExchangeInheritedBase* const base = [[[VornExchangeInheritedBase alloc] init] autorelease];

    Exchange([VornExchangeInherited class], @selector(inherited), [VornExchangeInherited class], @selector(hook));

    EXPECT_EQ([object inherited], 3);
    EXPECT_EQ([object hook], 1);
    EXPECT_EQ([base inherited], 1);
}

TEST_F(MethodExchangeTest, InPlaceOfAMissingMethodTheHookRunsAndItsOriginalAnswersNo) {
    id const object = [[[VornExchangeMissing alloc] init] autorelease];

    Exchange([VornExchangeMissing class], @selector(missing:), [VornExchangeMissing class], @selector(hook));

    EXPECT_TRUE([object respondsToSelector:@selector(missing:)]);
    EXPECT_EQ([object missing:@"argument"], static_cast<BOOL>(3));
    EXPECT_EQ([object hook], 0);
}

TEST_F(MethodExchangeTest, TheSameExchangeASecondTimeUndoesIt) {
    VornExchangeTwice* const object = [[[VornExchangeTwice alloc] init] autorelease];

    Exchange([VornExchangeTwice class], @selector(own), [VornExchangeTwice class], @selector(hook));
    Exchange([VornExchangeTwice class], @selector(own), [VornExchangeTwice class], @selector(hook));

    EXPECT_EQ([object own], 2);
    EXPECT_EQ([object hook], 3);
}

TEST_F(MethodExchangeTest, AReplacementOfAnotherClassIsTakenIn) {
    VornExchangeForeign* const object = [[[VornExchangeForeign alloc] init] autorelease];
    VornExchangeDonor* const donor = [[[VornExchangeDonor alloc] init] autorelease];

    Exchange([VornExchangeForeign class], @selector(own), [VornExchangeDonor class], @selector(donated));

    EXPECT_EQ([object own], 4);
    EXPECT_EQ([static_cast<id>(object) donated], 2);
    EXPECT_EQ([donor donated], 4);
}

TEST_F(MethodExchangeTest, WithoutAReplacementOrAClassNothingChanges) {
    VornExchangeNothing* const object = [[[VornExchangeNothing alloc] init] autorelease];

    Exchange([VornExchangeNothing class], @selector(own), [VornExchangeNothing class], @selector(donated));
    Exchange([VornExchangeNothing class], @selector(own), Nil, @selector(hook));
    Exchange(Nil, @selector(own), [VornExchangeNothing class], @selector(hook));

    EXPECT_EQ([object own], 2);
    EXPECT_EQ([object hook], 3);
}

} // namespace
} // namespace Tarvik::Vorn::Test
