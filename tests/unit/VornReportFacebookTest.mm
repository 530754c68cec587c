// Event reporting: what reaches Facebook App Events, every log line, what is refused. The plugin is loaded and found by its
// class name; the stand-in keeps every event with the SDK's verdict.

#include "PluginTest.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "PlatformCalls.h"
#include "VornPlugins.h"

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Test {
namespace {

using Host::AppEventForm;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kFile = "VornReportFacebook.mm";
constexpr const char* kInit = "-[VornReportFacebook initStat]";
constexpr const char* kReport = "-[VornReportFacebook reportEvent:params:isRealtime:seqID:extra:]";

class ReportTest : public PluginTest {
protected:
    ReportTest() {
        std::string problem;
        mPlugin = FindReportPlugin("Facebook", problem);
        EXPECT_NE(mPlugin, nil) << problem;
        Log().Clear();
    }

    id<VornReportDelegate> Plugin() const { return mPlugin; }

    void Report(NSString* name, NSDictionary* params, BOOL isRealtime = NO, NSString* seqID = @"s1",
                NSString* extra = @"") const {
        [mPlugin reportEvent:name params:params isRealtime:isRealtime seqID:seqID extra:extra];
    }

    static std::vector<Host::AppEvent> Events() { return [FBSDKAppEvents events]; }

    std::vector<LogLine> Lines() { return Log().LinesOf(kFile); }

private:
    id<VornReportDelegate> mPlugin;
};

TEST_F(ReportTest, InitSaysSoAndAnswersYesWithoutCallingFacebook) {
    EXPECT_TRUE([Plugin() initStat]);

    EXPECT_THAT(Lines(), ElementsAre(Debug(kFile, kInit, "Facebook Report init")));
    EXPECT_THAT(Host::PlatformCalls::All(), IsEmpty());
}

TEST_F(ReportTest, AnEventWithParametersIsPassedOnAsItIs) {
    NSDictionary* const params = @{@"level" : @(7), @"name" : @"Ada"};

    Report(@"level_up", params, YES, @"s7", @"{\"k\":1}");

    const auto events = Events();
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].form, AppEventForm::kWithParameters);
    EXPECT_TRUE([events[0].name.get() isEqual:@"level_up"]);
    EXPECT_TRUE([events[0].parameters.get() isEqual:params]);
    EXPECT_TRUE(events[0].accepted);
    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFile, kReport,
                                  "[ s7 ] Facebook reportEvent eventName : level_up, isRealTime : 1, "
                                  "params : {\"level\":7,\"name\":\"Ada\"} extraJson : {\"k\":1}"),
                            Debug(kFile, kReport, "[ s7 ] report with eventName : level_up and has parameters")));
}

TEST_F(ReportTest, AnEventWithoutParametersUsesTheFormWithout) {
    Report(@"opened", nil, NO, @"s7", @"x");

    const auto events = Events();
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].form, AppEventForm::kNameOnly);
    EXPECT_TRUE([events[0].name.get() isEqual:@"opened"]);
    EXPECT_THAT(Lines(),
                ElementsAre(Debug(kFile, kReport,
                                  "[ s7 ] Facebook reportEvent eventName : opened, isRealTime : 0, "
                                  "params :  extraJson : x"),
                            Debug(kFile, kReport, "[ s7 ] report with eventName : opened and has no parameter")));
}

TEST_F(ReportTest, EmptyParametersUseTheFormWithout) {
    Report(@"opened", @{});

    const auto events = Events();
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].form, AppEventForm::kNameOnly);
    EXPECT_EQ(Lines().at(0).text,
              "[ s1 ] Facebook reportEvent eventName : opened, isRealTime : 0, params : {} extraJson : ");
    EXPECT_EQ(Lines().at(1).text, "[ s1 ] report with eventName : opened and has no parameter");
}

TEST_F(ReportTest, ANilEventNameIsRefused) {
    Report(nil, @{@"k" : @"v"}, NO, @"s7");

    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_THAT(Lines(), ElementsAre(Debug(kFile, kReport,
                                           "[ s7 ] Facebook reportEvent eventName : , isRealTime : 0, "
                                           "params : {\"k\":\"v\"} extraJson : "),
                                     Error(kFile, kReport, "[ s7 ] must specify the eventName")));
}

TEST_F(ReportTest, AnEmptyEventNameIsRefused) {
    Report(@"", nil);

    EXPECT_THAT(Events(), IsEmpty());
    ASSERT_THAT(Lines(), SizeIs(2));
    EXPECT_EQ(Lines()[1], Error(kFile, kReport, "[ s1 ] must specify the eventName"));
}

TEST_F(ReportTest, ABlankEventNameIsPassedOn) {
    Report(@" ", nil);

    EXPECT_THAT(Events(), SizeIs(1)); // Facebook drops it; that is its business.
}

TEST_F(ReportTest, NilTextsPrintAsEmpty) {
    Report(@"e", nil, NO, nil, nil);

    EXPECT_THAT(Lines(), ElementsAre(Debug(kFile, kReport,
                                           "[  ] Facebook reportEvent eventName : e, isRealTime : 0, params :  "
                                           "extraJson : "),
                                     Debug(kFile, kReport, "[  ] report with eventName : e and has no parameter")));
}

TEST_F(ReportTest, ANilSequenceIDPrintsAsEmptyInARefusal) {
    Report(nil, nil, NO, nil);

    EXPECT_EQ(Lines().at(1).text, "[  ] must specify the eventName");
}

TEST_F(ReportTest, ParametersWithoutAJsonFormAreLoggedAsEmptyAndPassedOn) {
    NSDictionary* const params = @{@"when" : [NSDate dateWithTimeIntervalSince1970:0]};

    Report(@"e", params);

    const auto events = Events();
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_TRUE([events[0].parameters.get() isEqual:params]);
    EXPECT_FALSE(events[0].accepted); // Facebook takes texts and numbers only.
    EXPECT_EQ(Lines().at(0).text, "[ s1 ] Facebook reportEvent eventName : e, isRealTime : 0, params :  extraJson : ");
    EXPECT_EQ(Lines().at(1).text, "[ s1 ] report with eventName : e and has parameters");
}

TEST_F(ReportTest, OneParameterIsEnough) {
    Report(
        @"e",
        @{@"k" : @(0)});

    EXPECT_EQ(Events().at(0).form, AppEventForm::kWithParameters);
}

TEST_F(ReportTest, PercentSignsAreText) {
    Report(@"%s%n", nil, NO, @"%d", @"%@");

    EXPECT_EQ(Lines().at(0).text,
              "[ %d ] Facebook reportEvent eventName : %s%n, isRealTime : 0, params :  extraJson : %@");
    EXPECT_EQ(Lines().at(1).text, "[ %d ] report with eventName : %s%n and has no parameter");
}

TEST_F(ReportTest, RealtimeSequenceIDAndExtraChangeNothingThatIsSent) {
    Report(@"e", @{@"k" : @"v"}, NO, @"one", @"x");
    Report(@"e", @{@"k" : @"v"}, YES, @"two", @"y");

    const auto calls = Host::PlatformCalls::All();
    ASSERT_THAT(calls, SizeIs(2));
    EXPECT_EQ(calls[0], calls[1]);
}

TEST_F(ReportTest, RunsOnTheCallersThread) {
    OnAnotherThread([this] { Report(@"e", nil); });

    const auto calls = Host::PlatformCalls::All();
    ASSERT_THAT(calls, SizeIs(1));
    EXPECT_FALSE(calls[0].onMainThread);
}

TEST_F(ReportTest, NothingIsReportedBack) {
    ResultRecorder::Observe<InnerBaseRet, 107>();

    Report(@"e", nil);
    Report(nil, nil);
    DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
    EXPECT_EQ(CachedResultCount<InnerBaseRet>(), 0u);
    EXPECT_THAT(Log().Traces(), IsEmpty());
}

TEST_F(ReportTest, DoesNotAnswerWhatTheChannelDoesNotHave) {
    EXPECT_FALSE([Plugin() respondsToSelector:@selector(setPushToken:)]);
    EXPECT_FALSE([Plugin() respondsToSelector:@selector(getInstanceID:)]);
}

} // namespace
} // namespace Tarvik::Vorn::Test
