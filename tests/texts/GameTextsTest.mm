// Every hostile text wherever the game or the system hands one to the plugin as an object: events, IDs, URLs, launch
// options; and in the core's configuration.

#include "CoreCalls.h"
#include "HostileStrings.h"
#include "OpenThings.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKApplicationDelegate+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "VornApplicationDelegate.h"
#include "VornApplicationHandlers.h"
#include "VornPlugins.h"
#include "VornTraceSink.h"

#include <map>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::SizeIs;

bool IsSame(id one, id other) {
    return one == other || [one isEqual:other];
}

#pragma mark - Events

class EventTextsTest : public PluginTest, public ::testing::WithParamInterface<HostileString> {
protected:
    EventTextsTest() { Log().Clear(); }

    static NSString* TheText() { return GetParam().text.get(); }
    static std::string TheTextAsC() { return GetParam().asC(); }

    static void Report(NSString* name, NSDictionary* params, NSString* seqID, NSString* extra) {
        std::string problem;
        [FindReportPlugin("Facebook", problem) reportEvent:name params:params isRealtime:YES seqID:seqID extra:extra];
    }

    // The first of the two lines of an event, whole.
    void ExpectLogged(const std::string& seqID, const std::string& name, const std::string& params,
                      const std::string& extra) {
        const std::vector<LogLine> lines = Log().LinesOf("VornReportFacebook.mm");
        ASSERT_THAT(lines, SizeIs(2));
        EXPECT_TRUE(lines[0].text == "[ " + seqID + " ] Facebook reportEvent eventName : " + name +
                                         ", isRealTime : 1, params : " + params + " extraJson : " + extra)
            << lines[0].text;
        EXPECT_TRUE(lines[1].text.starts_with("[ " + seqID + " ] ")) << lines[1].text;
    }
};

TEST_P(EventTextsTest, AsANameIsOneEventOrOneRefusal) {
    Report(TheText(), nil, @"s1", @"");

    const auto events = [FBSDKAppEvents events];
    ASSERT_THAT(events, SizeIs([TheText() length] == 0 ? 0 : 1));
    if (!events.empty()) {
        EXPECT_TRUE(IsSame(events[0].name.get(), TheText()));
    }
    ExpectLogged("s1", TheTextAsC(), "", "");
}

TEST_P(EventTextsTest, AsASequenceIDAndExtraIsOnlyLogged) {
    Report(@"name", nil, TheText(), TheText());

    EXPECT_THAT([FBSDKAppEvents events], SizeIs(1));
    ExpectLogged(TheTextAsC(), "name", "", TheTextAsC());
}

TEST_P(EventTextsTest, AsAKeyAndAsAValueIsHandedOnAsItIs) {
    NSDictionary* const params = TheText() == nil ? nil : @{TheText() : @"value", @"key" : TheText()};
    Report(@"name", params, @"s1", @"");

    const auto events = [FBSDKAppEvents events];
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_TRUE(IsSame(params, nil) || IsSame(events[0].parameters.get(), params));
    ExpectLogged("s1", "name", CStr([VornUtilsIOS jsonStringFromDict:params prettyPrint:NO]), "");
}

INSTANTIATE_TEST_SUITE_P(Game, EventTextsTest, ::testing::ValuesIn(HostileStrings()),
                         [](const auto& info) { return info.param.name; });

#pragma mark - Questions of the core

class QuestionTextsTest : public FriendTest, public ::testing::WithParamInterface<HostileString> {};

TEST_P(QuestionTextsTest, AreAnsweredNo) {
    const VornFriendReqInfo request;
    NSString* const text = GetParam().text.get();

    EXPECT_FALSE([Plugin() isBackendSupported:1 type:2 seqId:text]);
    EXPECT_FALSE([Plugin() needOpenid2Uid:1 reqInfo:&request seqId:text]);

    EXPECT_THAT(Lines(), ElementsAre(Field(&LogLine::text, "[ " + GetParam().asC() + " ] methodID : 1, type : 2")));
}

INSTANTIATE_TEST_SUITE_P(Game, QuestionTextsTest, ::testing::ValuesIn(HostileStrings()),
                         [](const auto& info) { return info.param.name; });

#pragma mark - URLs and launch

class DelegateTextsTest : public PluginTest {
protected:
    DelegateTextsTest() : mDelegate(AdoptNS([[VornApplicationDelegate alloc] init])) {}
    ~DelegateTextsTest() override { SetApplicationHandlers({}); }

    VornApplicationDelegate* Delegate() const { return mDelegate.get(); }
    static UIApplication* App() { return [UIApplication sharedApplication]; }

private:
    RetainPtr<VornApplicationDelegate*> mDelegate;
};

class SystemTextsTest : public DelegateTextsTest, public ::testing::WithParamInterface<HostileString> {
protected:
    static NSString* TheText() { return GetParam().text.get(); }

    // The text as a URL, and as a part of a file's; whichever of them is a URL at all.
    static std::vector<NSURL*> URLs() {
        std::vector<NSURL*> urls;
        if (TheText() == nil || !GetParam().hasUtf8) {
            return urls;
        }
        for (NSURL* const url :
             {[NSURL URLWithString:TheText()], [NSURL fileURLWithPath:[@"/" stringByAppendingString:TheText()]]}) {
            if (url != nil) {
                urls.push_back(url);
            }
        }
        return urls;
    }
};

TEST_P(SystemTextsTest, OfAURLReachFacebookAndTheGameOnceEach) {
    int facebook = 0;
    int game = 0;
    NSURL* opened = nil;
    [FBSDKApplicationDelegate setURLDecision:[&](NSURL* url, NSString*, id) {
        facebook += IsSame(url, opened) ? 1 : 0;
        return false;
    }];
    SetApplicationHandlers({.openURL =
                                [&](NSURL* url, NSDictionary*) {
                                    game += IsSame(url, opened) ? 1 : 0;
                                    return true;
                                },
                            .openURLFromApplication =
                                [&](NSURL* url, NSString* source, id annotation) {
                                    const bool isWhole = IsSame(source, TheText()) && IsSame(annotation, TheText());
                                    game += IsSame(url, opened) && isWhole ? 1 : 0;
                                    return true;
                                }});
    int opens = 0;
    for (NSURL* const url : URLs()) {
        opened = url;
        EXPECT_TRUE([Delegate() application:App() openURL:url sourceApplication:TheText() annotation:TheText()]);
        EXPECT_TRUE([Delegate() application:App() openURL:url options:@{}]);
        opens += 2;
    }

    EXPECT_EQ(facebook, opens);
    EXPECT_EQ(game, opens);
}

TEST_P(SystemTextsTest, OfLaunchOptionsReachTheGameAsTheyAre) {
    NSDictionary* const options = TheText() == nil ? nil : @{TheText() : TheText()};
    int launches = 0;
    SetApplicationHandlers({.launch = [&](NSDictionary* given) {
        launches += IsSame(given, options) ? 1 : 0;
        return true;
    }});

    EXPECT_TRUE([Delegate() application:App() didFinishLaunchingWithOptions:options]);
    EXPECT_EQ(launches, 1);
}

TEST_P(SystemTextsTest, OfTheSdksVersionAreLoggedAndTracedAtLaunch) {
    [FBSDKSettings setSDKVersion:TheText()];
    std::vector<VornTraceEntry> traces;
    SetTraceSink([&](const VornTraceEntry& entry) { traces.push_back(entry); });

    [Delegate() application:App() didFinishLaunchingWithOptions:nil];
    SetTraceSink({});

    EXPECT_THAT(Log().LinesOf("VornApplicationDelegate+Facebook.mm"),
                ElementsAre(Field(&LogLine::text, HasSubstr(" version is:" + GetParam().asC() + ", TarvikVersion: "))));
    EXPECT_THAT(traces, ElementsAre(Field(&VornTraceEntry::sdkVersion, GetParam().asC())));
}

INSTANTIATE_TEST_SUITE_P(Game, SystemTextsTest, ::testing::ValuesIn(HostileStrings()),
                         [](const auto& info) { return info.param.name; });

#pragma mark - Configuration

class ConfiguredTextsTest : public DelegateTextsTest, public ::testing::WithParamInterface<HostileText> {
protected:
    static std::string Bytes() { return GetParam().bytes; }
    static std::string TextOf(NSString* text) { return text == nil ? "(nil)" : CStr(text); }
    static std::string Expected() { return AsNSString(Bytes()).value_or("(nil)"); }
};

TEST_P(ConfiguredTextsTest, AsIDAndNameAreSetAndLoggedByTheRules) {
    SetConfigValue("FACEBOOK_APP_ID", Bytes());
    SetConfigValue("FACEBOOK_DISPLAYNAME", Bytes());

    EXPECT_TRUE([Delegate() application:App() didFinishLaunchingWithOptions:nil]);

    EXPECT_EQ(TextOf([[FBSDKSettings sharedSettings] appID]), Expected());
    EXPECT_EQ(TextOf([[FBSDKSettings sharedSettings] displayName]), Expected());
    const std::string logged = AsNSString(Bytes()).value_or("");
    EXPECT_THAT(Log().LinesOf("VornApplicationDelegate+Facebook.mm"),
                ElementsAre(Field(&LogLine::text,
                                  "FACEBOOK_APP_ID : " + logged + ", FACEBOOK_DISPLAYNAME : " + logged +
                                      " version is:18.1.0, TarvikVersion: TARVIK_VERSION_VORN_FACEBOOK_5.30.001")));
}

TEST_P(ConfiguredTextsTest, AsALoginModeAreNotTheGamesMode) {
    SetConfigValue("FACEBOOK_LOGIN_MODE", Bytes());
    [FBSDKSettings setSDKVersion:@"6.5.0"];
    ResultRecorder::Observe<InnerLoginPluginRet, 109>();
    ResultRecorder::Observe<InnerBaseRet, 31>();
    std::string problem;
    VornLoginParams params;
    params.permissions = "email";
    VornBaseParams baseParams;

    [FindLoginPlugin("Facebook", problem) login:params];
    [FindFriendPlugin("Facebook", problem) addFriend:nullptr params:&baseParams observerID:31];

    EXPECT_THAT([FBSDKLoginManager loginRequests].back().permissions, ElementsAre("email"));
    SucceedWithWhatIsOpen();
    DrainMainQueue();
    EXPECT_THAT(ResultRecorder::Deliveries(),
                ::testing::UnorderedElementsAre(
                    Field(&Delivery::record, HasSubstr("retCode: 7,")), // Not 10, as in the game's mode.
                    Field(&Delivery::observerID, 109u)));
}

INSTANTIATE_TEST_SUITE_P(Core, ConfiguredTextsTest, ::testing::ValuesIn(HostileTexts()),
                         [](const auto& info) { return info.param.name; });

} // namespace
} // namespace Tarvik::Vorn::Test
