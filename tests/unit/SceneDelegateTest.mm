// The snippet of docs/scene-delegate.md: it compiles, the document shows it to the letter, and with it URLs that the system
// hands to a scene reach Facebook and the game.

#include "PluginTest.h"

#import "GameSceneDelegate.h"

#include "PlatformCalls.h"
#include "UIKit/UIScene+Control.h"
#include "VornApplicationDelegate.h"
#include "VornApplicationHandlers.h"

#include <fstream>
#include <iterator>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class SceneDelegateTest : public PluginTest {
protected:
    SceneDelegateTest() {
        mApplicationDelegate = AdoptNS([[VornApplicationDelegate alloc] init]);
        [[UIApplication sharedApplication] setDelegate:mApplicationDelegate.get()];
        SetApplicationHandlers({.openURL = [this](NSURL* url, NSDictionary* options) {
            mOpened.push_back(std::string([[url absoluteString] UTF8String]) + " " +
                              CStr([options objectForKey:UIApplicationOpenURLOptionsSourceApplicationKey]) + " " +
                              CStr([options objectForKey:UIApplicationOpenURLOptionsAnnotationKey]));
            return true;
        }});
    }

    ~SceneDelegateTest() override { SetApplicationHandlers({}); }

    static NSSet* Contexts(NSString* url, NSString* source, id annotation) {
        return [NSSet setWithObject:Host::MakeOpenURLContext([NSURL URLWithString:url], source, annotation)];
    }

    static GameSceneDelegate* MakeSceneDelegate() { return [[[GameSceneDelegate alloc] init] autorelease]; }
    static UIScene* MakeScene() { return [[[UIScene alloc] init] autorelease]; }

    const std::vector<std::string>& Opened() const { return mOpened; }

private:
    RetainPtr<VornApplicationDelegate*> mApplicationDelegate;
    std::vector<std::string> mOpened;
};

TEST_F(SceneDelegateTest, AURLOpenedInASceneReachesFacebookAndTheGame) {
    [MakeSceneDelegate() scene:MakeScene() openURLContexts:Contexts(@"fb1://authorize", @"com.example", @"note")];

    const auto calls = Host::PlatformCalls::All();
    ASSERT_THAT(calls, SizeIs(1));
    EXPECT_EQ(calls[0].selector, "application:openURL:options:");
    EXPECT_THAT(calls[0].arguments, HasSubstr("fb1://authorize"));
    EXPECT_THAT(Opened(), ElementsAre("fb1://authorize com.example note"));
}

TEST_F(SceneDelegateTest, AURLForWhichTheAppWasLaunchedReachesThemToo) {
    UISceneSession* const session = [[[UISceneSession alloc] init] autorelease];

    [MakeSceneDelegate() scene:MakeScene()
          willConnectToSession:session
                       options:Host::MakeConnectionOptions(Contexts(@"fb1://authorize", nil, nil))];

    EXPECT_THAT(Host::PlatformCalls::All(), SizeIs(1));
    EXPECT_THAT(Opened(), ElementsAre("fb1://authorize  "));
}

TEST_F(SceneDelegateTest, TheDocumentShowsTheSnippetToTheLetter) {
    const auto read = [](const std::string& path) {
        std::ifstream in(path);
        EXPECT_TRUE(in.good()) << path;
        return std::string(std::istreambuf_iterator<char>(in), {});
    };

    const std::string document = read(VORN_DOCS "/scene-delegate.md");
    const std::string snippet = read(VORN_DOCS "/snippets/GameSceneDelegate.mm");

    EXPECT_THAT(document, HasSubstr("```objc\n" + snippet + "```"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
