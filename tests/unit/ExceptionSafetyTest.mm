// What happens when a call into iOS or Facebook's SDK raises an Objective-C exception: to whom it goes, what still reaches the
// core, what stays behind, and that the next request is served. One row for each call that the plugin makes and each place
// from which it does; the plugin's sources are read, so that a call without a row fails. The rows stand in
// docs/RELIABILITY.md, too.
//
// Calls that the stand-ins record raise through PlatformFaults.h; others through a method put in the place of theirs.

#include "FriendShareTest.h"

#include "ExceptionTable.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "MainQueue+Control.h"
#include "MessageSends.h"
#include "ObjectCount.h"
#include "PlatformFaults.h"
#include "PlatformReset.h"
#include "VornApplicationDelegate.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

// The plugin's method that the notification centre calls.
@protocol VornActivation
- (void)handleBecomeActive:(NSNotification*)notification;
@end

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;

constexpr const char* kExceptionName = "VornTestException";

constexpr Receiver kCore = Receiver::kCore;
constexpr Receiver kMain = Receiver::kMainQueue;
constexpr Receiver kLoader = Receiver::kImageLoader;
constexpr Receiver kPhotos = Receiver::kPhotos;
constexpr Receiver kFacebook = Receiver::kFacebook;
constexpr Receiver kSystem = Receiver::kSystem;

#pragma mark - Raising in calls that are not recorded

// A method that raises instead of its own work, once, and then has it back.
class RaisingMethod {
public:
    explicit RaisingMethod(const ExceptionRow& row) {
        const Class cls = NSClassFromString(MakeNSString(row.className));
        const SEL selector = NSSelectorFromString(MakeNSString(SelectorOf(row)));
        sMethod = IsClassMethod(row) ? class_getClassMethod(cls, selector) : class_getInstanceMethod(cls, selector);
        sLeft = row.nth;
        sIsInitializer = SelectorOf(row).starts_with("init");
        sOwn = method_setImplementation(sMethod, reinterpret_cast<IMP>(&RaiseOrAnswer));
    }
    ~RaisingMethod() { method_setImplementation(sMethod, sOwn); }
    RaisingMethod(const RaisingMethod&) = delete;
    RaisingMethod& operator=(const RaisingMethod&) = delete;

private:
    // Looks at its arguments for objects' methods only: a method that answers a structure gets others.
    static id RaiseOrAnswer(id self, SEL selector, ...) {
        sLeft -= 1;
        if (sLeft > 0) {
            return reinterpret_cast<id (*)(id, SEL)>(sOwn)(self, selector);
        }
        method_setImplementation(sMethod, sOwn);
        if (sIsInitializer) {
            [self release]; // As the stand-ins' initializers do: nobody else can.
        }
        [NSException raise:MakeNSString(kExceptionName) format:@"raised by the test"];
        return nil;
    }

    static inline Method sMethod = nullptr;
    static inline IMP sOwn = nullptr;
    static inline int sLeft = 0;
    static inline bool sIsInitializer = false;
};

bool IsRecorded(const ExceptionRow& row) {
    const auto recorded = Host::RecordedSelectors();
    return std::find(recorded.begin(), recorded.end(), std::pair(std::string(row.className), SelectorOf(row))) !=
           recorded.end();
}

#pragma mark - The fixture

struct Step {
    Receiver receiver;
    std::function<void()> run;
};

class ExceptionSafetyTest : public FriendShareTest, public ::testing::WithParamInterface<ExceptionRow> {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(CountObjects()) << "Foundation does not count objects"; }

    ExceptionSafetyTest() {
        std::string problem;
        mLogin = FindLoginPlugin("Facebook", problem);
        mReport = FindReportPlugin("Facebook", problem);
        mDelegate = AdoptNS([[VornApplicationDelegate alloc] init]);
        ResultRecorder::Observe<InnerLoginRet, 101>();
        ResultRecorder::Observe<InnerLoginPluginRet, 109>();
        ResultRecorder::Observe<InnerBaseRet, 108>();
        SetConfigValue("FACEBOOK_APP_ID", "4711");
        SetImageLoadsHeld(true);
        SetImageLoadRunner([this](const std::function<void()>& load) { mLoaderRaised = Raises(load); });
        Park(kParked);
    }

    ~ExceptionSafetyTest() override {
        SetImageLoadRunner({});
        SetImageLoadsHeld(false);
    }

    // Whether `work` raises the test's exception. Another one is the test's own mistake.
    static bool Raises(const std::function<void()>& work) {
        @autoreleasepool {
            @try {
                work();
                return false;
            } @catch (NSException* exception) {
                EXPECT_STREQ(CStr([exception name]), kExceptionName) << CStr([exception reason]);
                return true;
            }
        }
    }

    // Does the work step by step; the row's call raises in the first step of its receiver. Returns in which step an
    // exception came out, as a list: the others are done all the same, as Facebook and the system would.
    std::vector<Receiver> DoRaising(const ExceptionRow& row, const Call& call) {
        std::vector<Receiver> raisedIn;
        bool isArmed = false;
        for (const Step& step : StepsOf(row.work, call)) {
            std::unique_ptr<RaisingMethod> raising;
            if (!isArmed && step.receiver == row.receiver) {
                isArmed = true;
                if (IsRecorded(row)) {
                    Host::RaiseAtNextCall(row.className, SelectorOf(row), kExceptionName, "raised by the test");
                } else {
                    raising = std::make_unique<RaisingMethod>(row);
                }
            }
            mLoaderRaised = false;
            const bool raised = Raises(step.run);
            if (raised || mLoaderRaised) {
                raisedIn.push_back(step.receiver);
            }
        }
        return raisedIn;
    }

    // Does the work; nothing may come out.
    void DoUndisturbed(Work work, const Call& call) {
        for (const Step& step : StepsOf(work, call)) {
            mLoaderRaised = false;
            EXPECT_FALSE(Raises(step.run) || mLoaderRaised) << NameOf(work) << ": " << NameOf(step.receiver);
        }
    }

    static void PrepareLogin(Work work) {
        const bool isGaming = work == Work::kImageUpload || work == Work::kVideoUpload || work == Work::kFriendFinder;
        if (isGaming) {
            LogInForGaming();
        } else {
            LogInWithFacebook();
        }
        Host::SetPhotoAuthorization(work == Work::kAskedVideo ? PHAuthorizationStatusNotDetermined
                                                              : PHAuthorizationStatusAuthorized);
    }

    std::vector<Step> StepsOf(Work work, const Call& call) {
        PrepareLogin(work);
        switch (work) {
        case Work::kLogin:
        case Work::kLogout:
        case Work::kEvent:
        case Work::kEventWithParameters:
            return PlainSteps(work, call);
        case Work::kLaunch:
        case Work::kURLOpen:
        case Work::kURLOpenFromApp:
        case Work::kActivation:
            return HookSteps(work);
        case Work::kInvitation:
        case Work::kBatchInvitation:
        case Work::kFriendFinder:
            return FriendSteps(work, call);
        default:
            return ShareSteps(work, call);
        }
    }

    // What the core gets of work that is not disturbed.
    static std::vector<Delivery> ResultOf(Work work, const Call& call) {
        switch (work) {
        case Work::kLogin: {
            InnerLoginPluginRet reply;
            reply.methodNameID = call.methodID;
            reply.channelID = 4;
            reply.channel = "Facebook";
            reply.channelInfo = R"({"access_token":"T"})";
            return {{109, call.seqID, RecordText(reply), {}}};
        }
        case Work::kLogout:
            return {{108, call.seqID, RecordText(InnerBaseRet(0)), {}}};
        case Work::kImageUpload:
        case Work::kVideoUpload:
            return {Result(call, InnerBaseRet(0, 0, "load image success"))};
        case Work::kInvitation:
        case Work::kBatchInvitation:
            return {Result(call, Coded(2))};
        case Work::kFriendFinder: // Under the IDs that were parked before.
            return {Result({kParked.methodID, kParked.seqID, call.observerID, ""}, Coded(0))};
        case Work::kLinkShare:
        case Work::kLinkMessage:
        case Work::kImageShare:
        case Work::kVideoShare:
        case Work::kSavedVideo:
        case Work::kAskedVideo:
            return {Result(call, Coded(0))};
        default:
            return {};
        }
    }

    static bool IsParking(Work work) { return work >= Work::kLinkShare && work <= Work::kBatchInvitation; }

    static size_t BarCount() {
        return [[[[[[UIApplication sharedApplication] keyWindow] rootViewController] view] subviews] count];
    }

    static size_t CachedCount() {
        return VornInnerObserverHolder<InnerBaseRet>::mTaskParamsHolder.size() +
               VornInnerObserverHolder<InnerFriendRet>::mTaskParamsHolder.size() +
               VornInnerObserverHolder<InnerLoginRet>::mTaskParamsHolder.size() +
               VornInnerObserverHolder<InnerLoginPluginRet>::mTaskParamsHolder.size();
    }

    static size_t ObserverCount() {
        return VornInnerObserverHolder<InnerBaseRet>::mObserverHolder.size() +
               VornInnerObserverHolder<InnerFriendRet>::mObserverHolder.size() +
               VornInnerObserverHolder<InnerLoginRet>::mObserverHolder.size() +
               VornInnerObserverHolder<InnerLoginPluginRet>::mObserverHolder.size();
    }

    VornApplicationDelegate* Delegate() const { return mDelegate.get(); }

    // What the row says that stays behind.
    void ExpectLeft(const ExceptionRow& row) const {
        const std::string left = row.staysBehind;
        EXPECT_EQ(BarCount(), left == kBar ? 1u : 0u);
        if (left == kLoggedOut) {
            EXPECT_EQ([FBSDKAccessToken currentAccessToken], nil);
        }
        if (row.work == Work::kLaunch) {
            EXPECT_EQ(std::string(CStr([[FBSDKSettings sharedSettings] appID])) == "4711", left == kNoActivations);
            const NSUInteger before = [FBSDKAppEvents activateAppCount];
            Host::BecomeActive();
            EXPECT_EQ([FBSDKAppEvents activateAppCount], before);
        }
    }

    static const inline Call kRaised{.methodID = 211, .seqID = "raised", .observerID = 31};
    static const inline Call kNext{.methodID = 211, .seqID = "next", .observerID = 32};
    static const inline Call kParked{.methodID = 414, .seqID = "parked", .observerID = 31};

private:
    static Step Drain() {
        return {kMain, [] { Host::DrainMainQueueUntilEmpty(); }};
    }

    static Step AnswerDialog() {
        return {kFacebook, [] { AnswerShare(Host::ShareAnswer::Completed()); }};
    }

    static VornFriendReqInfo Tagged(VornFriendReqInfo request) {
        if (request.extraJson.empty()) {
            request.extraJson = R"({"friends":["1"]})";
        }
        return request;
    }

    static VornFriendReqInfo ShareRequest(Work work) {
        switch (work) {
        case Work::kImageShare:
        case Work::kImageUpload:
            return Tagged(ImageRequest());
        case Work::kVideoShare:
            return Tagged(VideoRequest());
        case Work::kSavedVideo:
        case Work::kAskedVideo:
            return VideoFileRequest();
        case Work::kVideoUpload:
            return VideoRequest(CStr([[NSURL fileURLWithPath:MakeNSString(MediaPath("clip.mp4"))] absoluteString]));
        default:
            return Tagged(LinkRequest());
        }
    }

    std::vector<Step> ShareSteps(Work work, const Call& call) const {
        const VornFriendReqInfo request = ShareRequest(work);
        const Step share{kCore, [=, this] { Share(request, call); }};
        const Step load{kLoader, [] { WaitForImageLoads(); }};
        const Step save{kPhotos, [] { RunPhotoChanges(Host::PhotoChangesOutcome::Saved()); }};
        switch (work) {
        case Work::kLinkMessage: {
            Call message = call;
            message.methodID = 212;
            return {{kCore, [=, this] { SendMessage(request, message); }}, Drain(), AnswerDialog(), Drain()};
        }
        case Work::kImageShare:
            return {share, load, Drain(), AnswerDialog(), Drain()};
        case Work::kImageUpload:
            return {share,
                    load,
                    Drain(),
                    {kFacebook, [] { AnswerImageUpload(Host::ImageUploadAnswer::Uploaded(@"1")); }},
                    Drain()};
        case Work::kVideoUpload:
            // Facebook tells progress before the queue is run.
            return {share,
                    {kMain,
                     [] {
                         Host::DrainMainQueue();
                         Host::FireVideoProgress(1, 1, 2);
                         Host::DrainMainQueue();
                     }},
                    {kFacebook, [] { FinishVideoUpload(Host::VideoUploadAnswer::Uploaded(@"1")); }},
                    Drain()};
        case Work::kSavedVideo:
            return {share, save, Drain(), AnswerDialog(), Drain()};
        case Work::kAskedVideo:
            return {share,          {kPhotos, [] { Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized); }},
                    save,           Drain(),
                    AnswerDialog(), Drain()};
        default:
            return {share, Drain(), AnswerDialog(), Drain()};
        }
    }

    std::vector<Step> FriendSteps(Work work, const Call& call) const {
        if (work == Work::kFriendFinder) {
            return {{kCore, [=, this] { AddFriend(call); }},
                    {kFacebook, [] { AnswerFriendFinder(Host::FriendFinderAnswer::Returned()); }},
                    Drain()};
        }
        VornFriendReqInfo request = RequestOf(10003);
        request.title = "A title";
        request.desc = "A description";
        if (work == Work::kBatchInvitation) {
            request.extraJson = R"({"inviteType":"batch","userList":["1"]})";
        }
        return {{kCore, [=, this] { SendMessage(request, call); }},
                {kFacebook, [] { AnswerGameRequest(Host::GameRequestAnswer::Closed()); }},
                Drain()};
    }

    std::vector<Step> PlainSteps(Work work, const Call& call) const {
        if (work == Work::kLogin) {
            VornLoginParams params;
            params.methodID = call.methodID;
            params.seqID = call.seqID;
            params.subChannel = "Game";
            params.permissions = "email";
            const auto answer = [] {
                AnswerLogin(Host::LoginAnswer::Success(Host::MakeAccessToken(@"T", @"user", @[ @"email" ])));
            };
            return {{kCore, [=, this] { [mLogin login:params]; }}, {kFacebook, answer}, Drain()};
        }
        if (work == Work::kLogout) {
            const VornBaseParams params = ParamsOf(call);
            return {{kCore, [=, this] { [mLogin logout:&params]; }}, Drain()};
        }
        NSDictionary* const parameters = work == Work::kEventWithParameters ? @{@"level" : @1} : nil;
        return {
            {kCore, [=, this] { [mReport reportEvent:@"e" params:parameters isRealtime:NO seqID:@"s" extra:@""]; }}};
    }

    std::vector<Step> HookSteps(Work work) const {
        UIApplication* const application = [UIApplication sharedApplication];
        NSURL* const url = [NSURL URLWithString:@"game://open"];
        VornApplicationDelegate* const delegate = Delegate();
        switch (work) {
        case Work::kLaunch:
            SetConfigValue("FACEBOOK_DISPLAYNAME", "The Game");
            return {{kSystem, [=] { [delegate application:application didFinishLaunchingWithOptions:nil]; }}};
        case Work::kURLOpen:
            return {{kSystem, [=] { [delegate application:application openURL:url options:@{}]; }}};
        case Work::kURLOpenFromApp:
            return {{kSystem,
                     [=] { [delegate application:application openURL:url sourceApplication:@"x" annotation:@"y"]; }}};
        default:
            return {{kSystem, [=] { [static_cast<id<VornActivation>>(delegate) handleBecomeActive:nil]; }}};
        }
    }

    id<VornLoginDelegate> mLogin = nil;
    id<VornReportDelegate> mReport = nil;
    RetainPtr<VornApplicationDelegate*> mDelegate;
    bool mLoaderRaised = false;
};

#pragma mark - Each call raises once

TEST_P(ExceptionSafetyTest, GoesToWhoeverCalledAndLeavesWhatTheTableSays) {
    const ExceptionRow& row = GetParam();
    const size_t observers = ObserverCount();

    EXPECT_THAT(DoRaising(row, kRaised), ElementsAre(row.receiver));

    const bool reachesCore = std::string(row.reachesCore) == kResult;
    EXPECT_EQ(Delivered(), reachesCore ? ResultOf(row.work, kRaised) : std::vector<Delivery>());
    EXPECT_EQ(CachedCount(), 0u);
    EXPECT_EQ(ObserverCount(), observers);
    EXPECT_EQ(Host::MainQueueDepth(), 0u);
    ExpectLeft(row);
}

TEST_P(ExceptionSafetyTest, LeavesTheIDsOfTheRequestThatWasParkedLast) {
    const ExceptionRow& row = GetParam();

    DoRaising(row, kRaised);

    const Call& parked = IsParking(row.work) ? kRaised : kParked;
    const int methodID = row.work == Work::kLinkMessage ? 212 : parked.methodID;
    EXPECT_EQ([Plugin() methodNameID], methodID);
    EXPECT_STREQ(CStr([Plugin() seqID]), parked.seqID.c_str());
    EXPECT_EQ([Plugin() observerID], parked.observerID);
}

TEST_P(ExceptionSafetyTest, TheNextRequestOfTheSameKindIsServed) {
    const ExceptionRow& row = GetParam();
    DoRaising(row, kRaised);
    Delivered();
    ResultRecorder::ForgetDeliveries();
    if (row.work == Work::kFriendFinder) {
        Park(kParked);
    }
    Host::PlatformCalls::Clear();

    DoUndisturbed(row.work, kNext);

    std::vector<Delivery> expected = ResultOf(row.work, kNext);
    if (row.work == Work::kLinkMessage) {
        Call message = kNext;
        message.methodID = 212;
        expected = {Result(message, Coded(0))};
    }
    EXPECT_EQ(Delivered(), expected);
    EXPECT_FALSE(Host::PlatformCalls::All().empty());
}

TEST_P(ExceptionSafetyTest, TheNextRequestOfAnotherKindIsServed) {
    const ExceptionRow& row = GetParam();
    DoRaising(row, kRaised);
    Delivered();
    ResultRecorder::ForgetDeliveries();

    const Work other = row.work == Work::kLogout ? Work::kLinkShare : Work::kLogout;
    DoUndisturbed(other, kNext);

    EXPECT_EQ(Delivered(), ResultOf(other, kNext));
}

TEST_P(ExceptionSafetyTest, LeaksNothing) {
    const std::string before = LivingObjects();
    @autoreleasepool {
        DoRaising(GetParam(), kRaised);
        Delivered();
        Host::ResetPlatform(); // What is open, and the screen.
    }

    EXPECT_EQ(LivingObjects(), before);
}

std::string RowName(const ::testing::TestParamInfo<ExceptionRow>& info) {
    std::string name = std::to_string(info.index) + "_" + info.param.className + "_" + SelectorOf(info.param);
    std::replace_if(
        name.begin(), name.end(), [](char character) { return std::isalnum(character) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Calls, ExceptionSafetyTest, ::testing::ValuesIn(ExceptionRows()), RowName);

#pragma mark - The table is complete

std::string TextOfFile(const std::string& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_FALSE(text.str().empty()) << path;
    return text.str();
}

std::map<std::string, int> SendsOfThePlugin() {
    std::map<std::string, int> sends;
    for (const char* name : {"VornApplicationDelegate+Facebook.mm", "VornFriendFacebook.mm", "VornLoginFacebook.mm",
                             "VornReportFacebook.mm"}) {
        for (const std::string& selector : MessageSends(TextOfFile(std::string(VORN_PLUGIN_SOURCES) + "/" + name))) {
            sends[selector] += 1;
        }
    }
    return sends;
}

TEST(ExceptionTableTest, HasEachCallOfThePluginAsOftenAsTheSourcesMakeIt) {
    std::map<std::string, int> platformSends = SendsOfThePlugin();
    std::erase_if(platformSends, [](const auto& send) { return NotPlatform().contains(send.first); });

    std::map<std::string, int> rows;
    for (const ExceptionRow& row : ExceptionRows()) {
        if (!NotPlatform().contains(SelectorOf(row))) {
            rows[SelectorOf(row)] += row.places;
        }
    }

    EXPECT_EQ(rows, platformSends);
}

TEST(ExceptionTableTest, HasNoNameThatThePluginDoesNotSend) {
    const std::map<std::string, int> sends = SendsOfThePlugin();

    for (const std::string& selector : NotPlatform()) {
        EXPECT_TRUE(sends.contains(selector)) << selector;
    }
}

TEST(ExceptionTableTest, StandsInTheDocument) {
    const std::string heading = "## When a platform call raises\n";
    const std::string document = TextOfFile(VORN_RELIABILITY);
    const size_t start = document.find(heading);
    ASSERT_NE(start, std::string::npos);
    const size_t end = document.find("\n## ", start);
    std::stringstream section(document.substr(start, end == std::string::npos ? end : end - start));

    std::vector<std::string> documented;
    for (std::string line; std::getline(section, line);) {
        if (line.starts_with("| `")) {
            documented.push_back(line);
        }
    }

    std::vector<std::string> rows;
    std::string table;
    for (const ExceptionRow& row : ExceptionRows()) {
        rows.push_back(TextOf(row));
        table += TextOf(row) + "\n";
    }
    EXPECT_EQ(documented, rows) << "the document must have these rows:\n" << table;
}

TEST(MessageSendsTest, FindsSelectorsOfNestedSendsAndSkipsTextsAndComments) {
    EXPECT_THAT(MessageSends("[[a b:[c d] e:^{ [f g]; }] h]; // [no]\n@\"[no]\"; x[1]; @[ [i j] ];\n#pragma mark - "
                             "a's\n [k l:m ? n : o::p];"),
                ::testing::UnorderedElementsAre("h", "b:e:", "d", "g", "j", "l:"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
