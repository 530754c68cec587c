// UIView: the tree of views, who keeps whom in it, and what the record hears.
#include "ApplePlatformTest.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class UIViewFacts : public ApplePlatformTest {
protected:
    static UIView* MakeView() { return [[[UIView alloc] init] autorelease]; }
};

std::vector<UIView*> SubviewsOf(UIView* view) {
    std::vector<UIView*> subviews;
    for (UIView* subview in [view subviews]) {
        subviews.push_back(subview);
    }
    return subviews;
}

#pragma mark - One view

TEST_F(UIViewFacts, ANewViewStandsAloneAndShows) {
    UIView* const view = MakeView();

    EXPECT_TRUE(NSEqualRects([view frame], NSZeroRect));
    EXPECT_FALSE([view isHidden]);
    EXPECT_EQ([view superview], nil);
    EXPECT_THAT(SubviewsOf(view), IsEmpty());
}

TEST_F(UIViewFacts, AViewHasTheFrameItWasMadeWith) {
    UIView* const view = [[[UIView alloc] initWithFrame:CGRectMake(1, 2, 3, 4)] autorelease];

    EXPECT_TRUE(NSEqualRects([view frame], CGRectMake(1, 2, 3, 4)));
}

TEST_F(UIViewFacts, FrameAndHidingCanBeChanged) {
    UIView* const view = MakeView();

    [view setFrame:CGRectMake(5, 6, 7, 8)];
    [view setHidden:YES];

    EXPECT_TRUE(NSEqualRects([view frame], CGRectMake(5, 6, 7, 8)));
    EXPECT_TRUE([view isHidden]);
}

#pragma mark - Adding

TEST_F(UIViewFacts, AnAddedViewStandsInFront) {
    UIView* const parent = MakeView();
    UIView* const first = MakeView();
    UIView* const second = MakeView();

    [parent addSubview:first];
    [parent addSubview:second];

    EXPECT_THAT(SubviewsOf(parent), ElementsAre(first, second));
    EXPECT_EQ([first superview], parent);
}

TEST_F(UIViewFacts, AnAddedViewIsRetained) {
    UIView* const parent = MakeView();
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];

    [parent addSubview:view];

    EXPECT_EQ([view retainCount], count + 1);
}

TEST_F(UIViewFacts, AnAddedViewLeavesItsFormerParent) {
    UIView* const former = MakeView();
    UIView* const parent = MakeView();
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];
    [former addSubview:view];

    [parent addSubview:view];

    EXPECT_EQ([view retainCount], count + 1);
    EXPECT_EQ([view superview], parent);
    @autoreleasepool {
        EXPECT_THAT(SubviewsOf(former), IsEmpty());
        EXPECT_THAT(SubviewsOf(parent), ElementsAre(view));
    }
}

TEST_F(UIViewFacts, AViewAddedAgainComesToTheFront) {
    UIView* const parent = MakeView();
    UIView* const first = MakeView();
    UIView* const second = MakeView();
    [parent addSubview:first];
    [parent addSubview:second];

    [parent addSubview:first];

    EXPECT_THAT(SubviewsOf(parent), ElementsAre(second, first));
}

TEST_F(UIViewFacts, AddingNilDoesNothing) {
    UIView* const parent = MakeView();

    [parent addSubview:Nothing()];

    EXPECT_THAT(SubviewsOf(parent), IsEmpty());
}

TEST_F(UIViewFacts, AViewCannotBeAddedToItselfOrBelowItself) {
    UIView* const parent = MakeView();
    UIView* const child = MakeView();
    UIView* const grandchild = MakeView();
    [parent addSubview:child];
    [child addSubview:grandchild];

    EXPECT_EQ(RaisedBy([&] { [parent addSubview:parent]; }), "NSInvalidArgumentException");
    EXPECT_EQ(RaisedBy([&] { [grandchild addSubview:parent]; }), "NSInvalidArgumentException");
    EXPECT_EQ([parent superview], nil);
    EXPECT_THAT(SubviewsOf(grandchild), IsEmpty());
}

TEST_F(UIViewFacts, TheListOfSubviewsIsACopy) {
    UIView* const parent = MakeView();
    NSArray* const before = [parent subviews];

    [parent addSubview:MakeView()];

    EXPECT_EQ([before count], 0u);
}

#pragma mark - Order

TEST_F(UIViewFacts, BroughtToTheFrontAViewIsLastAndTheOthersKeepTheirOrder) {
    UIView* const parent = MakeView();
    UIView* const first = MakeView();
    UIView* const second = MakeView();
    UIView* const third = MakeView();
    [parent addSubview:first];
    [parent addSubview:second];
    [parent addSubview:third];

    [parent bringSubviewToFront:first];

    EXPECT_THAT(SubviewsOf(parent), ElementsAre(second, third, first));
}

TEST_F(UIViewFacts, BringingAnotherViewsChildToTheFrontDoesNothing) {
    UIView* const parent = MakeView();
    UIView* const first = MakeView();
    [parent addSubview:first];

    [parent bringSubviewToFront:MakeView()];
    [parent bringSubviewToFront:Nothing()];

    EXPECT_THAT(SubviewsOf(parent), ElementsAre(first));
}

#pragma mark - Removing

TEST_F(UIViewFacts, ARemovedViewIsReleasedAndStandsAlone) {
    UIView* const parent = MakeView();
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];
    [parent addSubview:view];

    [view removeFromSuperview];

    EXPECT_EQ([view retainCount], count);
    EXPECT_EQ([view superview], nil);
    EXPECT_THAT(SubviewsOf(parent), IsEmpty());
}

TEST_F(UIViewFacts, RemovingAViewThatStandsAloneDoesNothing) {
    UIView* const view = MakeView();

    [view removeFromSuperview];

    EXPECT_EQ([view superview], nil);
}

TEST_F(UIViewFacts, AViewThatOnlyItsParentKeepsGoesWhenItIsRemoved) {
    int alive = 0;
    UIView* const parent = MakeView();
    UIView* view = nil;
    @autoreleasepool {
        view = MakeView();
        // A view has no place for a probe; a window below it has.
        UIWindow* const window = [[[UIWindow alloc] init] autorelease];
        [window setRootViewController:(UIViewController*)[VornLifeProbe probeOf:&alive]];
        [view addSubview:window];
        [parent addSubview:view];
    }
    EXPECT_EQ(alive, 1);

    [view removeFromSuperview];

    EXPECT_EQ(alive, 0);
}

TEST_F(UIViewFacts, AParentThatGoesLeavesItsSubviewsAlone) {
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];
    {
        const RetainPtr<UIView*> parent = AdoptNS([[UIView alloc] init]);
        [parent.get() addSubview:view];
    }

    EXPECT_EQ([view superview], nil);
    EXPECT_EQ([view retainCount], count);
}

#pragma mark - The record

TEST_F(UIViewFacts, AddingAndReorderingAreRecorded) {
    UIView* const parent = MakeView();
    UIView* const bar = [[[UIProgressView alloc] init] autorelease];

    [parent addSubview:bar];
    [parent bringSubviewToFront:bar];
    [parent addSubview:Nothing()];

    EXPECT_THAT(RecordedCalls(), ElementsAre("UIView addSubview: <UIProgressView>",
                                             "UIView bringSubviewToFront: <UIProgressView>", "UIView addSubview: nil"));
}

TEST_F(UIViewFacts, PlainViewsRecordNothingElse) {
    UIView* const view = MakeView();

    [view setFrame:CGRectMake(5, 6, 7, 8)];
    [view setHidden:YES];
    [view removeFromSuperview];
    [view subviews];
    [view superview];

    EXPECT_THAT(RecordedCalls(), IsEmpty());
}

#pragma mark - Threads

TEST_F(UIViewFacts, ThreadsThatMoveOneViewLeaveItInOnePlace) {
    UIView* const left = MakeView();
    UIView* const right = MakeView();
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];
    const auto work = [view](UIView* parent) {
        @autoreleasepool {
            for (int i = 0; i < 300; ++i) {
                [parent addSubview:view];
                [parent bringSubviewToFront:view];
                [view setFrame:CGRectMake(i, i, i, i)];
                [parent subviews];
                [view superview];
                [view removeFromSuperview];
            }
            [parent addSubview:view];
        }
    };

    std::thread other(work, left);
    work(right);
    other.join();

    EXPECT_EQ([view retainCount], count + 1);
    @autoreleasepool {
        EXPECT_EQ(SubviewsOf(left).size() + SubviewsOf(right).size(), 1u);
        EXPECT_THAT(SubviewsOf([view superview]), ElementsAre(view));
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
