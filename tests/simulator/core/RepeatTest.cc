// Repeated steps as they are played.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class RepeatTest : public PlayedWorld {
protected:
    static std::string Repeated(int times, const std::string& steps) {
        return R"({"repeat": {"times": )" + std::to_string(times) + R"(, "steps": [)" + steps + "]}}";
    }

    static std::vector<std::string> SeqIDs(const RunReport& run) {
        std::vector<std::string> seqIDs;
        seqIDs.reserve(run.requests.size());
        for (const RequestFacts& request : run.requests) {
            seqIDs.push_back(request.seqID);
        }
        return seqIDs;
    }
};

TEST_F(RepeatTest, TheRoundStandsInEverySequenceID) {
    const RunReport run = Played(
        Repeated(2, LogoutStep("o-{n}") + "," + ShareStep("s-{n}") + R"(,{"login": {"methodID": 1, "seqID": "l-{n}",
        "permissions": ""}}, {"send-message": {"methodID": 212, "seqID": "m-{n}", "observer": 31, "type": "link"}},
        {"add-friend": {"methodID": 1, "seqID": "a-{n}", "observer": 31}},
        {"query-friends": {"methodID": 1, "seqID": "q-{n}"}}, {"commit": {"observer": 31, "seqID": "c-{n}", "code": 0}},
        {"report": {"event": "e", "seqID": "r-{n}"}})"));

    EXPECT_THAT(SeqIDs(run), ElementsAre("o-1", "s-1", "l-1", "m-1", "a-1", "q-1", "c-1", "r-1", "o-2", "s-2", "l-2",
                                         "m-2", "a-2", "q-2", "c-2", "r-2"));
}

TEST_F(RepeatTest, TheRoundMayStandInASequenceIDSeveralTimes) {
    EXPECT_THAT(SeqIDs(Played(Repeated(1, LogoutStep("{n}x{n}")))), ElementsAre("1x1"));
}

TEST_F(RepeatTest, OutsideOfARepeatThePlaceStaysAsItIs) {
    EXPECT_THAT(SeqIDs(Played(LogoutStep("x-{n}"))), ElementsAre("x-{n}"));
}

TEST_F(RepeatTest, InARepeatInsideARepeatTheInnerRoundCounts) {
    EXPECT_THAT(SeqIDs(Played(Repeated(2, Repeated(2, LogoutStep("{n}"))))), ElementsAre("1", "2", "1", "2"));
}

TEST_F(RepeatTest, AnAnswerNamesTheRequestOfItsRound) {
    const RunReport run =
        Played(Repeated(2, ShareStep("s-{n}")) + "," + Repeated(2, ShareAnswer("cancelled", R"("of": "s-{n}")")));

    EXPECT_THAT(run.problem, IsEmpty());
    EXPECT_THAT(Texts(run.entries, EntryKind::kAnswer), SizeIs(2));
}

TEST_F(RepeatTest, AnAnswerNamesTheRequestOfAnEarlierRound) {
    const RunReport run = Played(Repeated(3, ShareStep("s-{n}")) + "," + ShareAnswer("cancelled", R"("of": "s-2")"));

    const auto answer = std::find_if(run.entries.begin(), run.entries.end(),
                                     [](const Entry& entry) { return entry.kind == EntryKind::kAnswer; });
    ASSERT_NE(answer, run.entries.end());
    EXPECT_EQ(answer->request, 1u);
}

TEST_F(RepeatTest, AProblemEndsAllRounds) {
    const RunReport run =
        Played(ShareStep("a") + "," + Repeated(5, Repeated(5, R"({"note": "x"},)" + ShareAnswer("cancelled"))));

    EXPECT_THAT(Texts(run.entries, EntryKind::kNote), SizeIs(2));
    EXPECT_THAT(Texts(run.entries, EntryKind::kProblem), SizeIs(1));
    EXPECT_THAT(run.problem, HasSubstr("no such dialog is open"));
}

TEST_F(RepeatTest, ManyRequestsWithoutAnAnswerArePlayedToTheEnd) {
    SimulationOptions options;
    options.keepsTimeline = false;

    const RunReport run = Played(
        Repeated(30'000, R"({"login": {"methodID": 1, "seqID": "l-{n}", "permissions": "email"}})"), "", options);

    EXPECT_THAT(run.audit, SizeIs(101));
}

} // namespace
} // namespace Tarvik::Vorn::Test
