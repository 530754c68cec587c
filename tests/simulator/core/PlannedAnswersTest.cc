// Answers among a request's own: which is used, when, where, how often, and what becomes of those that are not.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

#include <set>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class PlannedAnswersTest : public PlayedWorld {};

TEST_F(PlannedAnswersTest, AnAnswerComesAtOnceUnlessTold) {
    EXPECT_THAT(Heard(Played(ShareStep("a", ShareAnswer("cancelled")))), ElementsAre("0 31 a 2"));
}

TEST_F(PlannedAnswersTest, AfterCountsFromTheMomentWhenItOpens) {
    const RunReport run =
        Played(R"({"wait": "10 s"},)" + ShareStep("a", ShareAnswer("cancelled", R"("after": "3 s")")));

    EXPECT_THAT(Heard(run), ElementsAre("13000 31 a 2"));
}

TEST_F(PlannedAnswersTest, AnAnswerInsideTheCallComesBeforeTheDialogHasReturned) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("inside": true)")));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 2"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kAnswer), ElementsAre("Facebook ends the dialog inside the call"));
}

TEST_F(PlannedAnswersTest, AnAnswerMayComeOnAnotherThread) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("thread": "background")")));

    const auto answer = std::find_if(run.entries.begin(), run.entries.end(),
                                     [](const Entry& entry) { return entry.kind == EntryKind::kAnswer; });
    ASSERT_NE(answer, run.entries.end());
    EXPECT_FALSE(answer->onMainThread);
    EXPECT_EQ(answer->text, "Facebook ends the dialog on another thread");
    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 2"));
}

TEST_F(PlannedAnswersTest, AnAnswerInsideTheCallMayComeOnAnotherThread) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("inside": true, "thread": "background")")));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 2"));
}

TEST_F(PlannedAnswersTest, NoTimesIsNever) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("times": 0)")));

    EXPECT_THAT(Heard(run), IsEmpty());
    EXPECT_EQ(LinesWith(run.entries, "this is never answered"), 1u);
    EXPECT_THAT(Remarks(run), ElementsAre("unanswered"));
}

TEST_F(PlannedAnswersTest, TwoTimesAreTwoAnswersAndThenItIsClosed) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("times": 2)")) +
                                 R"(,{"wait": "1 s"}, {"answer-share": {"outcome": "completed"}})");

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 2", "0 31 a 2"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kAnswer),
                ElementsAre("Facebook ends the dialog", "Facebook ends the dialog, again"));
    EXPECT_THAT(Remarks(run), ElementsAre("given-twice"));
    EXPECT_THAT(run.problem, HasSubstr("no such dialog is open"));
}

TEST_F(PlannedAnswersTest, TwoTimesInsideTheCallAreTwoAnswers) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("times": 2, "inside": true)")));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 2", "0 31 a 2"));
}

TEST_F(PlannedAnswersTest, EachAnswerIsForTheNextThingThatOpens) {
    const RunReport run = Played(VideoStep("a", R"({"finish-saving": {"outcome": "saved", "after": "1 s"}},)" +
                                                    ShareAnswer("completed", R"("after": "5 s")")));

    EXPECT_THAT(Heard(run), ElementsAre("6000 31 a 0"));
    EXPECT_THAT(Remarks(run), IsEmpty());
}

TEST_F(PlannedAnswersTest, AChainMayComeInsideItsCalls) {
    const RunReport run =
        Played(VideoStep("a", R"({"answer-photo-prompt": {"permission": "authorized", "inside": true}},
            {"finish-saving": {"outcome": "saved", "inside": true}},)" +
                                  ShareAnswer("completed", R"("inside": true)")),
               R"("setting": {"player": "facebook", "photo-permission": "not-asked"}, )");

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 0"));
    EXPECT_THAT(Remarks(run), IsEmpty());
}

TEST_F(PlannedAnswersTest, AnswersAreUsedInTheirOrderOnly) {
    const RunReport run =
        Played(VideoStep("a", ShareAnswer("completed") + R"(,{"finish-saving": {"outcome": "saved"}})"));

    EXPECT_THAT(Heard(run), IsEmpty());
    EXPECT_THAT(Remarks(run), ElementsAre("unused-answer", "unused-answer", "unanswered"));
}

TEST_F(PlannedAnswersTest, AnAnswerThatNothingAsksForIsRemarked) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("completed") + "," + ShareAnswer("cancelled")));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 0"));
    EXPECT_THAT(Remarks(run), ElementsAre("unused-answer"));
    EXPECT_EQ(run.audit.front().request, 0u);
}

TEST_F(PlannedAnswersTest, AnAnswerIsForItsOwnRequestOnly) {
    const RunReport run = Played(ShareStep("a") + "," + ShareStep("b", ShareAnswer("cancelled")));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 b 2"));
    EXPECT_THAT(run.problem, IsEmpty());
    EXPECT_THAT(Remarks(run), ElementsAre("unanswered"));
    EXPECT_EQ(run.audit.front().request, 0u);
}

TEST_F(PlannedAnswersTest, ADialogThatGoesOnInTheBrowserIsAnsweredAgain) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("not-opened", R"("after": "1 s")") + "," +
                                                    ShareAnswer("completed", R"("after": "8 s")")));

    EXPECT_THAT(Heard(run), ElementsAre("9000 31 a 0"));
    EXPECT_THAT(Remarks(run), IsEmpty());
}

TEST_F(PlannedAnswersTest, ADialogMayGoOnInTheBrowserInsideTheCall) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("not-opened", R"("inside": true)") + "," +
                                                    ShareAnswer("completed", R"("after": "8 s")")));

    EXPECT_THAT(Heard(run), ElementsAre("8000 31 a 0"));
    EXPECT_THAT(Remarks(run), IsEmpty());
}

TEST_F(PlannedAnswersTest, ADialogThatGoesOnInTheBrowserStandsBehindLaterOnes) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("not-opened", R"("after": "1 s")")) + "," + ShareStep("b") +
                                 R"(,{"wait": "2 s"}, {"answer-share": {"outcome": "cancelled", "of": "a"}})");

    EXPECT_THAT(Texts(run.entries, EntryKind::kProblem), IsEmpty());
    EXPECT_THAT(Heard(run), SizeIs(1));
    EXPECT_EQ(
        std::count_if(run.entries.begin(), run.entries.end(),
                      [](const Entry& entry) { return entry.kind == EntryKind::kDelivered && entry.request == 0; }),
        1);
}

constexpr const char* kSaved = R"({"finish-saving": {"outcome": "saved"}})";

TEST_F(PlannedAnswersTest, ProgressIsToldBeforeTheEndAndEndsNothing) {
    const RunReport run =
        Played(VideoStep("a", std::string(kSaved) + R"(,{"upload-progress": {"sent": 0, "expected": 4, "after": "1 s"}},
            {"upload-progress": {"sent": 2, "expected": 4, "after": "2 s"}},
            {"answer-video-upload": {"outcome": "uploaded", "videoID": "8", "after": "3 s"}})"),
               kGamingPlayer);

    EXPECT_EQ(LinesWith(run.entries, "setProgress: (0.5)"), 1u);
    EXPECT_THAT(Heard(run), ElementsAre("3000 31 a 0"));
    EXPECT_THAT(Remarks(run), IsEmpty());
}

TEST_F(PlannedAnswersTest, ProgressAndItsEndMayComeInsideTheCall) {
    const RunReport run =
        Played(VideoStep("a", std::string(kSaved) + R"(,{"upload-progress": {"sent": 2, "expected": 4, "inside": true}},
            {"answer-video-upload": {"outcome": "uploaded", "videoID": "8", "inside": true}})"),
               kGamingPlayer);

    EXPECT_EQ(LinesWith(run.entries, "setProgress: (0.5)"), 1u);
    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 0"));
}

TEST_F(PlannedAnswersTest, ProgressAfterTheEndIsNotTold) {
    const RunReport run =
        Played(VideoStep("a", std::string(kSaved) + R"(,{"upload-progress": {"sent": 2, "expected": 4, "after": "9 s"}},
            {"answer-video-upload": {"outcome": "uploaded", "videoID": "8", "after": "3 s"}})"),
               kGamingPlayer);

    EXPECT_EQ(LinesWith(run.entries, "setProgress: (0.5)"), 0u);
    EXPECT_THAT(run.problem, IsEmpty());
}

TEST_F(PlannedAnswersTest, WithTheOldReleaseAnUploadNeverEnds) {
    const RunReport run = Played(VideoStep("a", std::string(kSaved) +
                                                    R"(,{"answer-video-upload": {"outcome": "uploaded", "videoID": "8",
            "times": 2}})"),
                                 R"("setting": {"player": "gaming", "profile": "15.0"}, )");

    EXPECT_THAT(Heard(run), IsEmpty());
    EXPECT_EQ(LinesWith(run.entries, "it has no effect: the upload never ends"), 1u);
    EXPECT_THAT(run.problem, IsEmpty());
    EXPECT_THAT(Remarks(run), ElementsAre("unanswered"));
}

TEST_F(PlannedAnswersTest, AnUploadThatNeverEndsKeepsItsPlaceAmongOthers) {
    const RunReport run = Played(VideoStep("a", kSaved) + R"(,{"profile": "18.1"},)" + VideoStep("b", kSaved) +
                                     R"(,{"answer-video-upload": {"outcome": "uploaded", "videoID": "8", "of": "a"}},
            {"answer-video-upload": {"outcome": "uploaded", "videoID": "9", "of": "b"}})",
                                 R"("setting": {"player": "gaming", "profile": "15.0"}, )");

    EXPECT_THAT(Heard(run), ElementsAre("0 31 b 0"));
    EXPECT_EQ(LinesWith(run.entries, "the upload never ends"), 1u);
}

TEST_F(PlannedAnswersTest, OneOfSeveralIsPickedByTheSeed) {
    const std::string any = R"({"any-of": [)" + ShareAnswer("completed") + "," + ShareAnswer("cancelled") + "]}";
    std::set<std::string> heard;

    for (uint64_t seed = 0; seed < 20; ++seed) {
        SimulationOptions options;
        options.seed = seed;
        const RunReport run = Played(ShareStep("a", any), kFacebookPlayer, options);
        ASSERT_THAT(Heard(run), SizeIs(1));
        EXPECT_THAT(Remarks(run), IsEmpty());
        heard.insert(Heard(run).front());
    }

    EXPECT_THAT(heard, ElementsAre("0 31 a 0", "0 31 a 2"));
}

TEST_F(PlannedAnswersTest, ALoginThatIsReplacedIsNotAnsweredAnyMore) {
    const auto login = [](const std::string& seqID) {
        return R"({"login": {"methodID": 111, "seqID": ")" + seqID +
               R"(", "permissions": "email", "answers": [{"answer-login": {"outcome": "cancelled", "after": "9 s"}}]}})";
    };

    const RunReport run = Played(login("a") + "," + login("b"));

    EXPECT_THAT(Heard(run), ElementsAre("9000 101 b 2"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kAnswer), SizeIs(1));
    EXPECT_THAT(Remarks(run), ElementsAre("unanswered"));
}

TEST_F(PlannedAnswersTest, WhatAStepHasAnsweredIsNotAnsweredAgain) {
    const RunReport run =
        Played(ShareStep("a", ShareAnswer("completed", R"("after": "9 s")")) + "," + ShareAnswer("cancelled"));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 2"));
    EXPECT_THAT(run.problem, IsEmpty());
}

} // namespace
} // namespace Tarvik::Vorn::Test
