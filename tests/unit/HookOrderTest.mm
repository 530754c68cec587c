// Two channels hook the same three methods of the application delegate. VORN_LOAD_ORDER says which library this process
// loads first, "other-first" or "other-last"; CTest runs the program once with each. In both orders each hook and the
// game's own method run exactly once.

#include "PluginTest.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "PlatformCalls.h"
#include "VornApplicationDelegate.h"
#include "VornApplicationHandlers.h"

#import <Foundation/Foundation.h>

#include <cstdlib>
#include <dlfcn.h>
#include <string_view>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;

using CallsFunction = std::vector<std::string>& (*)();

void* LoadOtherChannel() {
    void* const library = dlopen(VORN_OTHER_CHANNEL, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << dlerror();
    return library;
}

// Loads both libraries in the order of this process, once, and returns the other channel's record of its calls.
std::vector<std::string>& LoadBoth() {
    static const CallsFunction calls = [] {
        const char* const order = std::getenv("VORN_LOAD_ORDER");
        const bool otherFirst = order != nullptr && std::string_view(order) == "other-first";
        void* library = otherFirst ? LoadOtherChannel() : nullptr;
        LoadSubject();
        library = library == nullptr ? LoadOtherChannel() : library;
        return reinterpret_cast<CallsFunction>(dlsym(library, "_ZN6Tarvik4Vorn4Test17OtherChannelCallsEv"));
    }();
    return calls();
}

// A base class that stands before the fixture, so that the libraries are loaded in the right order.
struct BothLoaded {
    BothLoaded() { LoadBoth().clear(); }
};

class HookOrderTest : private BothLoaded, public PluginTest {
protected:
    HookOrderTest() {
        mDelegate = AdoptNS([[VornApplicationDelegate alloc] init]);
        SetApplicationHandlers({.launch = [this](NSDictionary*) { return Note("launch"); },
                                .openURL = [this](NSURL*, NSDictionary*) { return Note("open"); },
                                .openURLFromApplication = [this](NSURL*, NSString*, id) { return Note("open from"); }});
    }

    ~HookOrderTest() override { SetApplicationHandlers({}); }

    VornApplicationDelegate* Delegate() const { return mDelegate.get(); }
    static UIApplication* App() { return [UIApplication sharedApplication]; }
    const std::vector<std::string>& GameCalls() const { return mGameCalls; }

    // The selectors that FBSDKApplicationDelegate was sent.
    static std::vector<std::string> FacebookCalls() {
        std::vector<std::string> selectors;
        for (const Host::PlatformCall& call : Host::PlatformCalls::All()) {
            if (call.className == "FBSDKApplicationDelegate") {
                selectors.push_back(call.selector);
            }
        }
        return selectors;
    }

private:
    bool Note(const char* call) {
        mGameCalls.emplace_back(call);
        return true;
    }

    RetainPtr<VornApplicationDelegate*> mDelegate;
    std::vector<std::string> mGameCalls;
};

TEST_F(HookOrderTest, LaunchRunsEachHookAndTheGameOnce) {
    EXPECT_TRUE([Delegate() application:App() didFinishLaunchingWithOptions:nil]);

    EXPECT_THAT(LoadBoth(), ElementsAre("launch"));
    EXPECT_THAT(FacebookCalls(), ElementsAre("application:didFinishLaunchingWithOptions:"));
    EXPECT_EQ([FBSDKAppEvents activateAppCount], 1u);
    EXPECT_THAT(GameCalls(), ElementsAre("launch"));
}

TEST_F(HookOrderTest, AURLOpenRunsEachHookAndTheGameOnce) {
    EXPECT_TRUE([Delegate() application:App() openURL:[NSURL URLWithString:@"fb1://x"] options:@{}]);

    EXPECT_THAT(LoadBoth(), ElementsAre("open"));
    EXPECT_THAT(FacebookCalls(), ElementsAre("application:openURL:options:"));
    EXPECT_THAT(GameCalls(), ElementsAre("open"));
}

TEST_F(HookOrderTest, AURLOpenWithItsSourceRunsEachHookAndTheGameOnce) {
    EXPECT_TRUE([Delegate() application:App()
                                openURL:[NSURL URLWithString:@"fb1://x"]
                      sourceApplication:@"s"
                             annotation:@"a"]);

    EXPECT_THAT(LoadBoth(), ElementsAre("open from"));
    EXPECT_THAT(FacebookCalls(), ElementsAre("application:openURL:sourceApplication:annotation:"));
    EXPECT_THAT(GameCalls(), ElementsAre("open from"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
