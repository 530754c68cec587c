// Answers as steps of their own: for what has been open longest, for a request, for an index; and when nothing is open.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class AnswerStepsTest : public PlayedWorld {
protected:
    // Which requests were answered, in order.
    static std::vector<size_t> Answered(const RunReport& run) {
        std::vector<size_t> requests;
        for (const Entry& entry : run.entries) {
            if (entry.kind == EntryKind::kAnswer) {
                requests.push_back(entry.request);
            }
        }
        return requests;
    }

    static std::string ThreeShares() { return ShareStep("a") + "," + ShareStep("b") + "," + ShareStep("c"); }
};

TEST_F(AnswerStepsTest, WhatHasBeenOpenLongestIsAnswered) {
    const RunReport run = Played(ThreeShares() + "," + ShareAnswer("cancelled") + "," + ShareAnswer("cancelled"));

    EXPECT_THAT(Answered(run), ElementsAre(0, 1));
}

TEST_F(AnswerStepsTest, AnIndexCountsFromTheOldest) {
    const RunReport run = Played(ThreeShares() + "," + ShareAnswer("cancelled", R"("dialog": 1)") + "," +
                                 ShareAnswer("cancelled", R"("dialog": 1)"));

    EXPECT_THAT(Answered(run), ElementsAre(1, 2));
}

TEST_F(AnswerStepsTest, ARequestIsAnsweredByItsSequenceID) {
    const RunReport run = Played(ThreeShares() + "," + ShareAnswer("cancelled", R"("of": "c")") + "," +
                                 ShareAnswer("cancelled", R"("of": "a")"));

    EXPECT_THAT(Answered(run), ElementsAre(2, 0));
}

TEST_F(AnswerStepsTest, OfTwoRequestsUnderOneSequenceIDTheOlderIsAnswered) {
    const RunReport run =
        Played(ShareStep("a") + "," + ShareStep("a") + "," + ShareAnswer("cancelled", R"("of": "a")"));

    EXPECT_THAT(Answered(run), ElementsAre(0));
}

TEST_F(AnswerStepsTest, ARequestThatWasMadeLongAgoCanStillBeAnswered) {
    const RunReport run = Played(ShareStep("a") + R"(,{"repeat": {"times": 4100, "steps": [)" + LogoutStep("o") +
                                 "]}}," + ShareAnswer("cancelled", R"("of": "a")"));

    EXPECT_THAT(run.problem, IsEmpty());
    EXPECT_THAT(Answered(run), ElementsAre(0));
}

TEST_F(AnswerStepsTest, MessagesAndSharesAreInOneRow) {
    const RunReport run =
        Played(R"({"send-message": {"methodID": 212, "seqID": "m", "observer": 31, "type": "link",
            "link": "https://example.com"}},)" +
               ShareStep("s") + "," + ShareAnswer("completed", R"("dialog": 1)") + "," + ShareAnswer("cancelled"));

    EXPECT_THAT(Answered(run), ElementsAre(1, 0));
}

TEST_F(AnswerStepsTest, AfterCountsFromTheStepAndTheWorldGoesOn) {
    const RunReport run = Played(ShareStep("a") + "," + ShareAnswer("cancelled", R"("after": "5 s")") +
                                 R"(,{"note": "meanwhile"}, {"wait": "10 s"}, {"note": "later"})");

    EXPECT_THAT(Heard(run), ElementsAre("5000 31 a 2"));
    EXPECT_EQ(run.entries.back().time, 10'000);
}

TEST_F(AnswerStepsTest, AStepMayAnswerTwiceOrNever) {
    const RunReport twice = Played(ShareStep("a") + "," + ShareAnswer("cancelled", R"("times": 2)"));
    const RunReport never =
        Played(ShareStep("a") + "," + ShareAnswer("cancelled", R"("times": 0)") + "," + ShareAnswer("completed"));

    EXPECT_THAT(Heard(twice), SizeIs(2));
    EXPECT_THAT(Heard(never), ElementsAre("0 31 a 0"));
}

TEST_F(AnswerStepsTest, AnAnswerToNothingIsAProblem) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("completed")) + "," + ShareAnswer("cancelled") + "," +
                                 R"({"note": "not reached"})");

    EXPECT_EQ(run.problem, "no such dialog is open; put a \"share\" or a \"send-message\" before this answer");
    EXPECT_THAT(Texts(run.entries, EntryKind::kProblem), SizeIs(1));
    EXPECT_THAT(Texts(run.entries, EntryKind::kNote), IsEmpty());
    EXPECT_FALSE(run.Holds());
}

TEST_F(AnswerStepsTest, AnIndexThatIsTooGreatIsAProblem) {
    EXPECT_THAT(Played(ShareStep("a") + "," + ShareAnswer("cancelled", R"("dialog": 1)")).problem,
                HasSubstr("no such dialog is open"));
}

TEST_F(AnswerStepsTest, ARequestThatHasNothingOpenIsAProblem) {
    EXPECT_THAT(Played(LogoutStep("o") + "," + ShareStep("a") + "," + ShareAnswer("cancelled", R"("of": "o")")).problem,
                HasSubstr("no such dialog is open"));
}

TEST_F(AnswerStepsTest, AnAnswerThatFindsNothingLaterIsAProblemThen) {
    const RunReport run = Played(ShareStep("a") + "," + ShareAnswer("cancelled", R"("after": "5 s")") + "," +
                                 ShareAnswer("completed") + R"(,{"wait": "1 min"}, {"note": "not reached"})");

    EXPECT_THAT(run.problem, HasSubstr("no such dialog is open"));
    EXPECT_EQ(run.entries.back().kind, EntryKind::kProblem);
    EXPECT_EQ(run.entries.back().time, 5000);
}

TEST_F(AnswerStepsTest, AnAnswerOfAnotherKindDoesNotFit) {
    const RunReport run = Played(ShareStep("a") + R"(,{"finish-saving": {"outcome": "saved"}})");

    EXPECT_THAT(run.problem, HasSubstr("nothing is being saved; "));
}

} // namespace
} // namespace Tarvik::Vorn::Test
