#include "SystemPlayer.h"

#include "UIKit/UIApplication+Control.h"
#include "VornApplicationDelegate.h"
#include "VornApplicationHandlers.h"
#include "VornDefine.h"

namespace Tarvik::Vorn::Simulator {
namespace {

// The object that a parameter of an event is for Objective-C.
struct ParameterMaker {
    id operator()(const std::string& text) const { return MakeNSString(text); }
    id operator()(int64_t integer) const { return [NSNumber numberWithLongLong:integer]; }
    id operator()(double number) const { return [NSNumber numberWithDouble:number]; }
    id operator()(bool flag) const { return [NSNumber numberWithBool:flag ? YES : NO]; }
    id operator()(std::nullptr_t) const { return [NSNull null]; }
};

} // namespace

NSDictionary* ParametersOf(const ReportStep& step) {
    if (!step.hasParams) {
        return nil;
    }
    NSMutableDictionary* const parameters = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : step.params) {
        [parameters setObject:std::visit(ParameterMaker(), value) forKey:MakeNSString(key)];
    }
    return parameters;
}

SystemPlayer::SystemPlayer(Timeline& timeline)
    : mTimeline(timeline), mDelegate(AdoptNS([[VornApplicationDelegate alloc] init])) {}

SystemPlayer::~SystemPlayer() {
    SetApplicationHandlers({});
}

void SystemPlayer::operator()(const LaunchStep& step) {
    NSURL* const url = step.url.empty() ? nil : [NSURL URLWithString:MakeNSString(step.url)];
    if (url == nil && !step.url.empty()) {
        mTimeline.Add(EntryKind::kProblem, "\"" + step.url + "\" is not a URL");
        return;
    }
    NSDictionary* const options = url == nil ? @{} : @{UIApplicationLaunchOptionsURLKey : url};
    mTimeline.Add(EntryKind::kSystem, "launches the app" + (step.url.empty() ? "" : " for " + step.url));
    LetTheGameAnswer(step.answer);
    Returned("launch", [mDelegate.get() application:[UIApplication sharedApplication]
                           didFinishLaunchingWithOptions:options]);
}

void SystemPlayer::operator()(const OpenURLStep& step) {
    NSURL* const url = [NSURL URLWithString:MakeNSString(step.url)];
    if (url == nil) {
        mTimeline.Add(EntryKind::kProblem, "\"" + step.url + "\" is not a URL");
        return;
    }
    mTimeline.Add(EntryKind::kSystem, "opens " + step.url + (step.source.empty() ? "" : " for " + step.source));
    if (step.toScene) {
        mTimeline.Add(EntryKind::kSystem, "the app has scenes: its scene delegate gets the URL, and the application "
                                          "delegate hears of it only if the game passes it on");
        return;
    }
    LetTheGameAnswer(step.answer);
    UIApplication* const application = [UIApplication sharedApplication];
    NSString* const source = step.source.empty() ? nil : MakeNSString(step.source);
    if (step.withSource) {
        Returned("open URL", [mDelegate.get() application:application
                                                  openURL:url
                                        sourceApplication:source
                                               annotation:@""]);
        return;
    }
    NSDictionary* const options = source == nil ? @{} : @{UIApplicationOpenURLOptionsSourceApplicationKey : source};
    Returned("open URL", [mDelegate.get() application:application openURL:url options:options]);
}

void SystemPlayer::operator()(const ActivateStep& /*step*/) {
    mTimeline.Add(EntryKind::kSystem, "activates the app");
    Host::BecomeActive();
}

// The game's own methods of the application delegate answer this.
void SystemPlayer::LetTheGameAnswer(bool answer) {
    const auto play = [this, answer](const std::string& method) {
        mTimeline.Add(EntryKind::kGame, method + " answers " + (answer ? "YES" : "NO"));
        return answer;
    };
    SetApplicationHandlers(
        {.launch = [play](NSDictionary*) { return play("launch"); },
         .openURL = [play](NSURL*, NSDictionary*) { return play("open URL"); },
         .openURLFromApplication = [play](NSURL*, NSString*, id) { return play("open URL from an app"); }});
}

void SystemPlayer::Returned(const std::string& what, BOOL answer) {
    mTimeline.Add(EntryKind::kReturn, what + (answer == NO ? " NO" : " YES"));
}

} // namespace Tarvik::Vorn::Simulator
