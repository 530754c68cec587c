// The simulator as a library: step by step, with steps of the caller's own, and the report at the end.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

class SimulationTest : public PlayedWorld {};

TEST_F(SimulationTest, LoadingTheChannelAgainDoesNothing) {
    EXPECT_EQ(LoadChannel("/nowhere/lib.so"), "");
}

TEST_F(SimulationTest, TheSettingHoldsBeforeTheFirstStep) {
    const World world = WorldOf(R"({"note": "x"})", kFacebookPlayer);

    const Simulation simulation(world);

    EXPECT_EQ(LinesWith(simulation.timeline().entries(), "the player is logged in to Facebook"), 1u);
    EXPECT_THAT(Texts(simulation.timeline().entries(), EntryKind::kNote), IsEmpty());
}

TEST_F(SimulationTest, StepsArePlayedOneByOne) {
    const World world = WorldOf(R"({"note": "a"}, {"note": "b"})");
    Simulation simulation(world);

    EXPECT_TRUE(simulation.PlayNext());
    EXPECT_THAT(Texts(simulation.timeline().entries(), EntryKind::kNote), ElementsAre("a"));
    EXPECT_TRUE(simulation.PlayNext());
    EXPECT_FALSE(simulation.PlayNext());
    EXPECT_THAT(Texts(simulation.timeline().entries(), EntryKind::kNote), ElementsAre("a", "b"));
    EXPECT_THAT(simulation.problem(), IsEmpty());
}

TEST_F(SimulationTest, ACallerMayPlayStepsOfItsOwn) {
    const World world;
    Simulation simulation(world);
    CommitStep commit;
    commit.observerID = 31;
    commit.seqID = "mine";
    commit.code = 5;

    EXPECT_TRUE(simulation.Play(commit));

    ASSERT_THAT(simulation.Results(), SizeIs(1));
    EXPECT_EQ(simulation.Results()[0].seqID, "mine");
    EXPECT_EQ(simulation.Results()[0].observerID, 31u);
    EXPECT_EQ(simulation.Results()[0].record, "InnerBaseRet");
}

TEST_F(SimulationTest, AStepOfTheCallersMayHavePlannedAnswers) {
    const World world = WorldOf("", kFacebookPlayer);
    Simulation simulation(world);
    {
        Simulator::ShareStep share;
        share.request.params.methodID = 211;
        share.request.params.seqID = "mine";
        share.request.observerID = 31;
        share.request.info.type = 10001;
        share.request.info.link = "https://example.com";
        AnswerShareStep answer;
        answer.outcome = AnswerShareStep::Outcome::kCancelled;
        answer.manner.after = {1000, 1000};
        share.request.answers.push_back({{answer}});
        EXPECT_TRUE(simulation.Play(share));
    }

    simulation.PlayAll();

    EXPECT_EQ(simulation.time(), 1000);
    EXPECT_THAT(simulation.Results(), SizeIs(1));
}

TEST_F(SimulationTest, AnAnswerOfTheCallersToNothingIsAProblem) {
    const World world = WorldOf(R"({"note": "x"})");
    Simulation simulation(world);

    EXPECT_FALSE(simulation.Play(AnswerShareStep()));

    EXPECT_THAT(simulation.problem(), HasSubstr("no such dialog is open"));
    EXPECT_FALSE(simulation.PlayNext());
    EXPECT_FALSE(simulation.Play(NoteStep{"y"}));
    EXPECT_THAT(Texts(simulation.timeline().entries(), EntryKind::kNote), IsEmpty());
    EXPECT_THAT(Texts(simulation.timeline().entries(), EntryKind::kProblem), SizeIs(1));
}

TEST_F(SimulationTest, AProblemEndsWhatIsPlanned) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("after": "5 s")")) +
                                 R"(,{"open-url": {"url": "not a url"}}, {"wait": "10 s"})");

    EXPECT_EQ(run.problem, "\"not a url\" is not a URL");
    EXPECT_THAT(Heard(run), IsEmpty());
    EXPECT_THAT(Texts(run.entries, EntryKind::kProblem), SizeIs(1));
}

TEST_F(SimulationTest, AnAppIsNotLaunchedForWhatIsNoUrl) {
    EXPECT_EQ(Played(R"({"launch": {"url": "not a url"}})").problem, "\"not a url\" is not a URL");
    EXPECT_THAT(Played(R"({"launch": {"url": "fb1://x"}})").problem, IsEmpty());
}

TEST_F(SimulationTest, ABadConfigurationIsAProblemBeforeTheFirstStep) {
    SimulationOptions options;
    options.config = "/nowhere/config.json";

    const RunReport run = Played(R"({"note": "x"})", kFacebookPlayer, options);

    EXPECT_THAT(run.problem, HasSubstr("/nowhere/config.json"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kNote), IsEmpty());
    EXPECT_THAT(Texts(run.entries, EntryKind::kProblem), SizeIs(1));
}

TEST_F(SimulationTest, WithoutATimelineNothingIsKeptAndAllIsJudged) {
    SimulationOptions options;
    options.keepsTimeline = false;
    const std::string expect = R"("expect": {"results": [{"seqID": "a"}], "lines": ["Facebook ends the dialog"],
        "audit": ["unanswered"]}, )";

    const RunReport run =
        Played(ShareStep("a", ShareAnswer("cancelled")) + "," + ShareStep("b"), kFacebookPlayer + expect, options);
    const RunReport wrong = Played(ShareStep("b", ShareAnswer("cancelled")), kFacebookPlayer + expect, options);

    EXPECT_THAT(run.entries, IsEmpty());
    EXPECT_THAT(run.requests, IsEmpty());
    EXPECT_THAT(Remarks(run), ElementsAre("unanswered"));
    EXPECT_TRUE(run.Holds());
    EXPECT_THAT(wrong.mismatches, SizeIs(2));
}

TEST_F(SimulationTest, WithoutATimelineAnswersStillFindTheirRequests) {
    SimulationOptions options;
    options.keepsTimeline = false;

    const RunReport run =
        Played(ShareStep("a") + "," + ShareStep("b") + "," + ShareAnswer("cancelled", R"("of": "b")"),
               std::string(kFacebookPlayer) + R"("expect": {"results": [{"seqID": "b"}]}, )", options);

    EXPECT_TRUE(run.Holds());
}

TEST_F(SimulationTest, AReportHasTheFactsOfItsRun) {
    LocatedError error;
    const auto world = ParseWorld(R"({"question": "Why?", "seed": 5, "setting": {"profile": "17.0"}, "steps": [)" +
                                      ShareStep("a") + R"(], "expect": {"unanswered": []}})",
                                  "/a/b.world.json", error);
    ASSERT_TRUE(world.has_value()) << error.text();

    const RunReport run = PlayWorld(*world);

    EXPECT_EQ(run.name, "b");
    EXPECT_EQ(run.path, "/a/b.world.json");
    EXPECT_EQ(run.question, "Why?");
    EXPECT_EQ(run.seed, 5u);
    EXPECT_EQ(run.profile, "17.0");
    EXPECT_THAT(run.requests, SizeIs(1));
    EXPECT_TRUE(run.hasExpectations);
    EXPECT_THAT(run.mismatches, SizeIs(1));
    EXPECT_FALSE(run.Holds());
}

TEST_F(SimulationTest, AReportOfAnEmptyWorldHolds) {
    const RunReport run = Played("", "");

    EXPECT_FALSE(run.hasExpectations);
    EXPECT_EQ(run.profile, "18.1");
    EXPECT_THAT(run.audit, IsEmpty());
    EXPECT_TRUE(run.Holds());
}

TEST_F(SimulationTest, EveryStepIsCounted) {
    std::vector<uint64_t> played;
    SimulationOptions options;
    options.played = [&played](uint64_t count) { played.push_back(count); };

    Played(R"({"note": "a"}, {"note": "b"})", "", options);

    EXPECT_THAT(played, ElementsAre(1, 2));
}

TEST_F(SimulationTest, WhatIsShownOffTheMainThreadIsRemarked) {
    const RunReport there = Played(
        R"({"add-friend": {"methodID": 1, "seqID": "a", "observer": 31, "thread": "background",
           "answers": [{"answer-friend-finder": {"outcome": "returned"}}]}})",
        kGamingPlayer);
    const RunReport here = Played(R"({"add-friend": {"methodID": 1, "seqID": "a", "observer": 31,
           "answers": [{"answer-friend-finder": {"outcome": "returned"}}]}})",
                                  kGamingPlayer);

    EXPECT_THAT(Remarks(there), ::testing::Contains("off-main-thread"));
    EXPECT_THAT(Remarks(here), Not(::testing::Contains("off-main-thread")));
}

} // namespace
} // namespace Tarvik::Vorn::Test
