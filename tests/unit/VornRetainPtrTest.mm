// The owning handle: who holds how many references after each of its operations.

#include "VornRetainPtr.h"

#include "PoolTest.h"

#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using VornRetainPtrTest = PoolTest;

TEST_F(VornRetainPtrTest, HoldsNothingByDefault) {
    const RetainPtr<NSString*> handle;

    EXPECT_EQ(handle.get(), nil);
    EXPECT_FALSE(handle);
}

TEST_F(VornRetainPtrTest, RetainsWhatItIsMadeFromAndReleasesIt) {
    NSObject* const object = [[NSObject alloc] init];
    {
        const RetainPtr<NSObject*> handle(object);
        EXPECT_EQ([object retainCount], 2u);
        EXPECT_TRUE(handle);
        EXPECT_EQ(handle.get(), object);
    }

    EXPECT_EQ([object retainCount], 1u);
    [object release];
}

TEST_F(VornRetainPtrTest, AdoptionTakesTheReferenceOver) {
    NSObject* const object = [[[NSObject alloc] init] retain];
    {
        const RetainPtr<NSObject*> handle = AdoptNS(object);
        EXPECT_EQ([object retainCount], 2u);
    }

    EXPECT_EQ([object retainCount], 1u);
    [object release];
}

TEST_F(VornRetainPtrTest, CopyingRetainsAndMovingDoesNot) {
    RetainPtr<NSObject*> handle = AdoptNS([[NSObject alloc] init]);
    NSObject* const object = handle.get();

    const RetainPtr<NSObject*> copy(handle);
    EXPECT_EQ([object retainCount], 2u);

    const RetainPtr<NSObject*> moved(std::move(handle));
    EXPECT_EQ([object retainCount], 2u);
    EXPECT_EQ(handle.get(), nil); // NOLINT(bugprone-use-after-move): what a move leaves is the point.
    EXPECT_EQ(moved.get(), object);
}

TEST_F(VornRetainPtrTest, AssignmentReleasesTheOldObject) {
    const RetainPtr<NSObject*> first = AdoptNS([[NSObject alloc] init]);
    const RetainPtr<NSObject*> second = AdoptNS([[NSObject alloc] init]);
    RetainPtr<NSObject*> handle(first);

    handle = second;

    EXPECT_EQ([first.get() retainCount], 1u);
    EXPECT_EQ([second.get() retainCount], 2u);
    EXPECT_EQ(handle.get(), second.get());
}

TEST_F(VornRetainPtrTest, AssignmentToItselfKeepsTheObject) {
    RetainPtr<NSObject*> handle = AdoptNS([[NSObject alloc] init]);
    const RetainPtr<NSObject*>& same = handle;

    handle = same;

    EXPECT_EQ([handle.get() retainCount], 1u);
}

TEST_F(VornRetainPtrTest, WorksInsideContainers) {
    const RetainPtr<id> object = AdoptNS(static_cast<id>([[NSObject alloc] init]));
    {
        const std::vector<RetainPtr<id>> handles(10, object);
        EXPECT_EQ([object.get() retainCount], 11u);
    }

    EXPECT_EQ([object.get() retainCount], 1u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
