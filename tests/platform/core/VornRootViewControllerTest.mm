// The app's root view controller, as the core finds it.

#include "VornUtilsIOS.h"

#include "PlatformReset.h"
#include "PoolTest.h"
#include "UIKit/UIApplication+Control.h"

#include <gtest/gtest.h>

namespace Tarvik::Vorn::Test {
namespace {

class RootViewController : public PoolTest {
protected:
    RootViewController() { Host::ResetPlatform(); }
    ~RootViewController() override { Host::ResetPlatform(); }

    static UIWindow* MakeWindow() { return [[[UIWindow alloc] init] autorelease]; }
};

TEST_F(RootViewController, IsTheKeyWindows) {
    UIWindow* const window = MakeWindow();
    UIViewController* const controller = [[[UIViewController alloc] init] autorelease];
    [window setRootViewController:controller];
    Host::SetKeyWindow(window);

    EXPECT_EQ([VornUtilsIOS getRootViewController], controller);
}

TEST_F(RootViewController, IsThereByDefault) {
    EXPECT_NE([VornUtilsIOS getRootViewController], nil);
}

TEST_F(RootViewController, IsNilWithoutAKeyWindow) {
    Host::SetKeyWindow(nil);

    EXPECT_EQ([VornUtilsIOS getRootViewController], nil);
}

TEST_F(RootViewController, IsNilWhenTheKeyWindowHasNone) {
    Host::SetKeyWindow(MakeWindow());

    EXPECT_EQ([VornUtilsIOS getRootViewController], nil);
}

} // namespace
} // namespace Tarvik::Vorn::Test
