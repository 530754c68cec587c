// UIViewController and UIWindow: a view made when it is first asked for, and who keeps whom.
#include "UIKit/UIViewController+Control.h"

#include "ApplePlatformTest.h"

#include <array>
#include <latch>

namespace Tarvik::Vorn::Test {
namespace {

using UIViewControllerFacts = ApplePlatformTest;
using UIWindowFacts = ApplePlatformTest;

UIViewController* MakeController() {
    return [[[UIViewController alloc] init] autorelease];
}

UIView* MakeView(CGRect frame = NSZeroRect) {
    return [[[UIView alloc] initWithFrame:frame] autorelease];
}

#pragma mark - UIViewController

TEST_F(UIViewControllerFacts, TheViewIsMadeWithAnEmptyFrame) {
    UIView* const view = [MakeController() view];

    ASSERT_NE(view, nil);
    EXPECT_TRUE(NSEqualRects([view frame], NSZeroRect));
}

TEST_F(UIViewControllerFacts, TheViewStaysTheSame) {
    UIViewController* const controller = MakeController();

    EXPECT_EQ([controller view], [controller view]);
}

TEST_F(UIViewControllerFacts, ThreadsThatAskFirstGetTheSameView) {
    UIViewController* const controller = MakeController();
    std::array<RetainPtr<UIView*>, 4> views;
    std::latch start(views.size());
    std::vector<std::thread> threads;
    threads.reserve(views.size());

    for (RetainPtr<UIView*>& view : views) {
        threads.emplace_back([&] {
            @autoreleasepool {
                start.arrive_and_wait();
                view = RetainPtr([controller view]);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    for (const RetainPtr<UIView*>& view : views) {
        EXPECT_EQ(view.get(), [controller view]);
    }
}

TEST_F(UIViewControllerFacts, AViewThatIsSetIsRetained) {
    UIViewController* const controller = MakeController();
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];

    [controller setView:view];

    EXPECT_EQ([view retainCount], count + 1);
    EXPECT_EQ([controller view], view);
}

TEST_F(UIViewControllerFacts, AViewThatIsReplacedIsReleased) {
    UIViewController* const controller = MakeController();
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];
    [controller setView:view];

    [controller setView:MakeView()];

    EXPECT_EQ([view retainCount], count);
}

TEST_F(UIViewControllerFacts, SettingNilMakesANewViewTheNextTime) {
    UIViewController* const controller = MakeController();
    const RetainPtr<UIView*> former([controller view]);

    [controller setView:nil];

    EXPECT_NE([controller view], nil);
    EXPECT_NE([controller view], former.get());
}

TEST_F(UIViewControllerFacts, AControllerWithoutAViewAnswersNil) {
    UIViewController* const controller = MakeController();
    [controller view];

    Host::SetViewless(controller, true);

    EXPECT_EQ([controller view], nil);
}

TEST_F(UIViewControllerFacts, AControllerGetsItsViewBack) {
    UIViewController* const controller = MakeController();
    UIView* const view = [controller view];
    Host::SetViewless(controller, true);

    Host::SetViewless(controller, false);

    EXPECT_EQ([controller view], view);
}

TEST_F(UIViewControllerFacts, TheViewGoesWithItsController) {
    UIView* const view = MakeView();
    const NSUInteger count = [view retainCount];
    {
        const RetainPtr<UIViewController*> controller = AdoptNS([[UIViewController alloc] init]);
        [controller.get() setView:view];
    }

    EXPECT_EQ([view retainCount], count);
}

#pragma mark - UIWindow

TEST_F(UIWindowFacts, AWindowHasNoRootViewControllerAtFirst) {
    EXPECT_EQ([[[[UIWindow alloc] init] autorelease] rootViewController], nil);
}

TEST_F(UIWindowFacts, AWindowIsAViewWithAFrame) {
    UIWindow* const window = [[[UIWindow alloc] initWithFrame:CGRectMake(0, 0, 390, 844)] autorelease];

    EXPECT_TRUE([window isKindOfClass:[UIView class]]);
    EXPECT_TRUE(NSEqualRects([window frame], CGRectMake(0, 0, 390, 844)));
}

TEST_F(UIWindowFacts, AWindowRetainsItsRootViewController) {
    UIWindow* const window = [[[UIWindow alloc] init] autorelease];
    UIViewController* const controller = MakeController();
    const NSUInteger count = [controller retainCount];

    [window setRootViewController:controller];

    EXPECT_EQ([controller retainCount], count + 1);
    EXPECT_EQ([window rootViewController], controller);
}

TEST_F(UIWindowFacts, AWindowReleasesAReplacedRootViewController) {
    UIWindow* const window = [[[UIWindow alloc] init] autorelease];
    UIViewController* const controller = MakeController();
    const NSUInteger count = [controller retainCount];
    [window setRootViewController:controller];

    [window setRootViewController:nil];

    EXPECT_EQ([controller retainCount], count);
    EXPECT_EQ([window rootViewController], nil);
}

TEST_F(UIWindowFacts, ARootViewControllerIsReleasedWithItsWindow) {
    UIViewController* const controller = MakeController();
    const NSUInteger count = [controller retainCount];
    {
        const RetainPtr<UIWindow*> window = AdoptNS([[UIWindow alloc] init]);
        [window.get() setRootViewController:controller];
    }

    EXPECT_EQ([controller retainCount], count);
}

} // namespace
} // namespace Tarvik::Vorn::Test
