// The tool that corrects GNUstep's classes, on classes of the test's own. The host runtime does not export it; its
// source is built into this program.

#include "Foundation/MethodReplacement.h"
#include "PoolTest.h"

using namespace Tarvik::Vorn::Host;

@interface HostParent : NSObject
- (int)number;
- (int)size;
@end
@implementation HostParent
- (int)number {
    return 1;
}
- (int)size {
    return 2;
}
@end

@interface HostOverridingChild : HostParent
@end
@implementation HostOverridingChild
- (int)size {
    return 3;
}
@end

@interface HostInheritingChild : HostParent
@end
@implementation HostInheritingChild
@end

namespace {

class HostMethodReplacement : public Tarvik::Vorn::Test::PoolTest {};

using IntBody = int(id, SEL);

IntBody* sOriginal = nullptr;

int TenTimesTheOriginal(id self, SEL selector) {
    return sOriginal(self, selector) * 10;
}

int Hundred(id, SEL) {
    return 100;
}

TEST_F(HostMethodReplacement, TheNewBodyCanCallTheOldOne) {
    HostParent* parent = [[[HostParent alloc] init] autorelease];
    EXPECT_EQ([parent number], 1);

    ReplaceMethod([HostParent class], @selector(number), TenTimesTheOriginal, &sOriginal);

    EXPECT_EQ([parent number], 10);
    ReplaceMethodBody([HostParent class], @selector(number), reinterpret_cast<IMP>(sOriginal));
    EXPECT_EQ([parent number], 1);
}

TEST_F(HostMethodReplacement, AClusterIsReplacedInEveryClassThatOverrides) {
    ReplaceInCluster([HostParent class], @selector(size), Hundred);

    EXPECT_EQ([[[[HostParent alloc] init] autorelease] size], 100);
    EXPECT_EQ([[[[HostOverridingChild alloc] init] autorelease] size], 100);
    EXPECT_EQ([[[[HostInheritingChild alloc] init] autorelease] size], 100);
}

TEST_F(HostMethodReplacement, AMethodThatIsOnlyInheritedOrMissingEndsTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_DEATH(ReplaceMethodBody([HostInheritingChild class], @selector(number), nullptr),
                 "HostInheritingChild has no method number to correct");
    EXPECT_DEATH(ReplaceMethodBody([HostParent class], @selector(lastPathComponent), nullptr),
                 "HostParent has no method lastPathComponent to correct");
}

} // namespace
