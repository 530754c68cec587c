#include "Player.h"

#include "FBSDKCoreKit/FBSDKAccessToken+Control.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKAuthenticationToken+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/LoginAnswer.h"
#include "FriendPlayer.h"
#include "MainQueue+Control.h"
#include "Observers.h"
#include "PlatformCalls.h"
#include "UIKit/UIApplication+Control.h"
#include "VornApplicationDelegate.h"
#include "VornApplicationHandlers.h"
#include "VornConfig.h"
#include "VornDefine.h"
#include "VornImageLoader.h"
#include "VornLogSink.h"
#include "VornTraceSink.h"

#include <thread>

namespace Tarvik::Vorn::Simulator {
namespace {

const char* RecordName(RecordType record) {
    switch (record) {
    case RecordType::kBase:
        return "InnerBaseRet";
    case RecordType::kFriend:
        return "InnerFriendRet";
    case RecordType::kLogin:
        return "InnerLoginRet";
    case RecordType::kLoginPlugin:
        return "InnerLoginPluginRet";
    }
    __builtin_unreachable();
}

// Sends everything that can be heard of the plugin to a transcript, as long as it lives.
class Listening {
public:
    Listening(Transcript& transcript, bool showTokens) {
        SetLogSink([&transcript](const VornLogLine& line) {
            transcript.Line(line.level == kLogDebug ? "log" : "log error",
                            line.file + " " + line.function + ": " + line.text);
        });
        SetTraceSink([&transcript](const VornTraceEntry& entry) {
            if (entry.kind == VornTraceKind::kPlugin) {
                transcript.Line("trace", "plugin " + entry.pluginName + " " + entry.pluginVersion + ", channel " +
                                             entry.channel + ", SDK " + entry.sdkVersion);
                return;
            }
            transcript.Line("trace", entry.module + " [ " + entry.seqID + " ] " + entry.extraJson);
        });
        Host::SetPlatformCallListener([&transcript](const Host::PlatformCall& call) {
            transcript.Line(call.className.starts_with("FBSDK") ? "facebook" : "ios",
                            call.className + " " + call.selector +
                                (call.arguments.empty() ? "" : " (" + call.arguments + ")"));
        });
        SetImageLoadsHeld(true); // Until the step that causes them has been told.
        SetResultListener(
            [&transcript](unsigned observerID, const std::string& seqID, const std::string& text) {
                transcript.Line("result", "observer " + std::to_string(observerID) + ", request \"" + seqID +
                                              "\", on " + ThreadName() + ": " + text);
            },
            showTokens);
    }

    ~Listening() {
        SetLogSink({});
        SetTraceSink({});
        Host::SetPlatformCallListener({});
        SetImageLoadsHeld(false);
        SetResultListener({});
    }

    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
};

Host::LoginAnswer MakeAnswer(const AnswerLoginStep& step) {
    using Outcome = AnswerLoginStep::Outcome;
    FBSDKAuthenticationToken* const authentication =
        step.graphDomain.empty()
            ? nil
            : Host::MakeAuthenticationToken(@"authentication-token", MakeNSString(step.graphDomain));
    switch (step.outcome) {
    case Outcome::kSuccess:
        return Host::LoginAnswer::Success(
            Host::MakeAccessToken(MakeNSString(step.token), @"user", @[ @"public_profile" ]), authentication);
    case Outcome::kLimited:
        return Host::LoginAnswer::LimitedLogin(authentication);
    case Outcome::kCancelled:
        return Host::LoginAnswer::Cancelled();
    case Outcome::kNothingGranted:
        return Host::LoginAnswer::NothingGranted();
    case Outcome::kBrowserNotOpened:
        return Host::LoginAnswer::BrowserNotOpened();
    case Outcome::kErrorMessage:
        return Host::LoginAnswer::ErrorMessage(MakeNSString(step.message));
    case Outcome::kError: {
        NSDictionary* const userInfo = @{NSLocalizedDescriptionKey : MakeNSString(step.message)};
        return Host::LoginAnswer::Failed([NSError errorWithDomain:MakeNSString(step.domain)
                                                             code:static_cast<NSInteger>(step.code)
                                                         userInfo:userInfo]);
    }
    }
    __builtin_unreachable();
}

std::string YesOrNo(bool answer) {
    return answer ? "YES" : "NO";
}

// The object that a parameter of an event is for Objective-C.
struct ParameterMaker {
    id operator()(const std::string& text) const { return MakeNSString(text); }
    id operator()(int64_t integer) const { return [NSNumber numberWithLongLong:integer]; }
    id operator()(double number) const { return [NSNumber numberWithDouble:number]; }
    id operator()(bool flag) const { return [NSNumber numberWithBool:flag ? YES : NO]; }
    id operator()(std::nullptr_t) const { return [NSNull null]; }
};

template <class Value>
id ParameterOf(const Value& value) {
    return std::visit(ParameterMaker(), value);
}

// Plays one kind of step each. Returns false when the step cannot be played.
class Player : public FriendPlayer {
public:
    using FriendPlayer::operator();

    Player(const Plugins& plugins, Transcript& transcript)
        : FriendPlayer(plugins.friends, transcript), mPlugins(plugins), mTranscript(transcript),
          mDelegate(AdoptNS([[VornApplicationDelegate alloc] init])) {}
    ~Player() { SetApplicationHandlers({}); }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    bool operator()(const NoteStep& step) const {
        mTranscript.Heading(step.text);
        return true;
    }

    bool operator()(const ConfigureStep& step) const {
        for (const auto& [key, value] : step.values) {
            mTranscript.Line("configure", key + " = \"" + value + "\"");
            SetConfigValue(key, value);
        }
        return true;
    }

    bool operator()(const SDKVersionStep& step) const {
        mTranscript.Line("world", "the Facebook SDK's version is " + (step.version ? *step.version : "absent"));
        [FBSDKSettings setSDKVersion:step.version ? MakeNSString(*step.version) : nil];
        return true;
    }

    bool operator()(const ObserveStep& step) const {
        mTranscript.Line("core", std::string("registers observer ") + std::to_string(step.observerID) + " for " +
                                     RecordName(step.record));
        if (!Observe(step.record, step.observerID)) {
            mTranscript.Line("error", "more than " + std::to_string(kObserverSlots) + " observers of one record type");
            return false;
        }
        return true;
    }

    bool operator()(const RemoveObserverStep& step) const {
        mTranscript.Line("core", std::string("removes observer ") + std::to_string(step.observerID) + " for " +
                                     RecordName(step.record));
        StopObserving(step.record, step.observerID);
        return true;
    }

    bool operator()(const LoginStep& step) const {
        mTranscript.Line("call", "login: request \"" + step.params.seqID + "\", permissions \"" +
                                     step.params.permissions + "\", subChannel \"" + step.params.subChannel + "\"");
        [mPlugins.login login:step.params];
        mTranscript.Line("return", "login:");
        return true;
    }

    bool operator()(const LogoutStep& step) const {
        mTranscript.Line("call", "logout: request \"" + step.params.seqID + "\"");
        [mPlugins.login logout:&step.params];
        mTranscript.Line("return", "logout:");
        return true;
    }

    bool operator()(const AnswerLoginStep& step) const {
        bool answered = false;
        const auto answer = [&step, &answered, this] {
            @autoreleasepool {
                mTranscript.Line("answer", std::string("Facebook ends the login on ") + ThreadName());
                answered = Host::AnswerLogin(MakeAnswer(step));
            }
        };
        if (step.background) {
            std::thread(answer).join();
        } else {
            answer();
        }
        if (!answered) {
            mTranscript.Line("error", "no login is under way; put a \"login\" step before this answer");
        }
        return answered;
    }

    bool operator()(const CommitStep& step) const {
        mTranscript.Line("core", "commits a result of its own for observer " + std::to_string(step.observerID));
        VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(InnerBaseRet(step.code), step.observerID, step.seqID);
        mTranscript.Line("return", "CommitToTaskQueue");
        return true;
    }

    bool operator()(const CollectStep& /*step*/) const {
        mTranscript.Line("core", "collects its cached results; " + std::to_string(CachedResults()) + " wait");
        const size_t collected = CollectCachedResults();
        mTranscript.Line("core", std::to_string(collected) + " collected, " + std::to_string(CachedResults()) +
                                     " still wait for an observer");
        return true;
    }

    bool operator()(const LaunchStep& step) const {
        NSURL* const url = step.url.empty() ? nil : [NSURL URLWithString:MakeNSString(step.url)];
        NSDictionary* const options = url == nil ? @{} : @{UIApplicationLaunchOptionsURLKey : url};
        mTranscript.Line("system", "launches the app" + (step.url.empty() ? "" : " for " + step.url));
        LetTheGameAnswer(step.answer);
        Returned("launch", [mDelegate.get() application:[UIApplication sharedApplication]
                               didFinishLaunchingWithOptions:options]);
        return true;
    }

    bool operator()(const OpenURLStep& step) const {
        NSURL* const url = [NSURL URLWithString:MakeNSString(step.url)];
        if (url == nil) {
            mTranscript.Line("error", "\"" + step.url + "\" is not a URL");
            return false;
        }
        mTranscript.Line("system", "opens " + step.url + (step.source.empty() ? "" : " for " + step.source));
        LetTheGameAnswer(step.answer);
        UIApplication* const application = [UIApplication sharedApplication];
        NSString* const source = step.source.empty() ? nil : MakeNSString(step.source);
        if (step.withSource) {
            Returned("open URL", [mDelegate.get() application:application
                                                      openURL:url
                                            sourceApplication:source
                                                   annotation:@""]);
            return true;
        }
        NSDictionary* const options = source == nil ? @{} : @{UIApplicationOpenURLOptionsSourceApplicationKey : source};
        Returned("open URL", [mDelegate.get() application:application openURL:url options:options]);
        return true;
    }

    bool operator()(const ActivateStep& /*step*/) const {
        mTranscript.Line("system", "activates the app");
        Host::BecomeActive();
        return true;
    }

    bool operator()(const InitStatStep& /*step*/) const {
        mTranscript.Line("call", "initStat");
        Returned("initStat", [mPlugins.report initStat]);
        return true;
    }

    bool operator()(const ReportStep& step) const {
        NSMutableDictionary* const params = step.hasParams ? [NSMutableDictionary dictionary] : nil;
        for (const auto& [key, value] : step.params) {
            [params setObject:ParameterOf(value) forKey:MakeNSString(key)];
        }
        mTranscript.Line("call", "reportEvent: \"" + step.event + "\", request \"" + step.seqID + "\"");
        const size_t already = [FBSDKAppEvents events].size();
        [mPlugins.report reportEvent:MakeNSString(step.event)
                              params:params
                          isRealtime:step.isRealtime ? YES : NO
                               seqID:MakeNSString(step.seqID)
                               extra:MakeNSString(step.extra)];
        mTranscript.Line("return", "reportEvent:");
        TellEvents(already);
        return true;
    }

private:
    // The game's own methods of the application delegate answer this.
    void LetTheGameAnswer(bool answer) const {
        const auto play = [this, answer](const std::string& method) {
            mTranscript.Line("game", method + " answers " + YesOrNo(answer));
            return answer;
        };
        SetApplicationHandlers(
            {.launch = [play](NSDictionary*) { return play("launch"); },
             .openURL = [play](NSURL*, NSDictionary*) { return play("open URL"); },
             .openURLFromApplication = [play](NSURL*, NSString*, id) { return play("open URL from an app"); }});
    }

    void Returned(const std::string& what, BOOL answer) const {
        mTranscript.Line("return", what + " " + YesOrNo(answer != NO));
    }

    // What Facebook made of the events since `already` many were there.
    void TellEvents(size_t already) const {
        const std::vector<Host::AppEvent> events = [FBSDKAppEvents events];
        for (size_t i = already; i < events.size(); ++i) {
            const std::string name = CStr(events[i].name.get());
            if (events[i].accepted) {
                mTranscript.Line("events", "Facebook takes \"" + name + "\"");
            } else {
                mTranscript.Line("events", "Facebook drops \"" + name + "\" because of \"" + events[i].offender +
                                               "\": " + events[i].rule);
            }
        }
    }

    Plugins mPlugins;
    Transcript& mTranscript;
    RetainPtr<VornApplicationDelegate*> mDelegate;
};

} // namespace

bool PlayScenario(const Scenario& scenario, const Plugins& plugins, Transcript& transcript, bool showTokens) {
    const Listening listening(transcript, showTokens);
    const Player player(plugins, transcript);
    transcript.Heading(scenario.title);
    for (const Step& step : scenario.steps) {
        @autoreleasepool {
            if (!std::visit(player, step)) {
                return false;
            }
            WaitForImageLoads();
            Host::RunMainLoopUntilIdle(); // What the step has posted to the main thread happens before the next one.
        }
    }
    return true;
}

} // namespace Tarvik::Vorn::Simulator
