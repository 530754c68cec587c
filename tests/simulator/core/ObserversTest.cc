// Who listens in a played world, and what becomes of results that find nobody.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ObserversTest : public PlayedWorld {
protected:
    static std::string Commit(const std::string& seqID, unsigned observer, int code = 5) {
        return R"({"commit": {"observer": )" + std::to_string(observer) + R"(, "seqID": ")" + seqID + R"(", "code": )" +
               std::to_string(code) + "}}";
    }

    static std::string Observe(unsigned observer, const std::string& step = "observe") {
        return "{\"" + step + R"(": {"record": "InnerBaseRet", "observer": )" + std::to_string(observer) + "}}";
    }

    static constexpr const char* kNobody = R"("observers": [], )";
};

TEST_F(ObserversTest, TheCoreObservesItsOwnFromTheBeginning) {
    const RunReport run = Played("", "");

    EXPECT_THAT(Texts(run.entries, EntryKind::kCore),
                ElementsAre("registers observer 101 for InnerLoginRet", "registers observer 108 for InnerBaseRet",
                            "registers observer 109 for InnerLoginPluginRet",
                            "registers observer 202 for InnerFriendRet"));
}

TEST_F(ObserversTest, TheObserverOfARequestIsThereBeforeItAndRegisteredOnce) {
    const RunReport run = Played(Commit("a", 31) + "," + Commit("b", 31));

    EXPECT_EQ(LinesWith(run.entries, "registers observer 31 for InnerBaseRet"), 1u);
    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 5", "0 31 b 5"));
}

TEST_F(ObserversTest, AnObserverThatTheWorldRegisteredIsNotRegisteredAgain) {
    EXPECT_EQ(LinesWith(Played(Observe(31) + "," + Commit("a", 31)).entries, "registers observer 31"), 1u);
}

TEST_F(ObserversTest, ARemovedObserverStaysRemovedUntilAStepRegistersIt) {
    const RunReport run = Played(Commit("a", 31) + "," + Observe(31, "remove-observer") + "," + Commit("b", 31) + "," +
                                 Observe(31) + "," + Commit("c", 31));

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 5", "0 31 c 5"));
    EXPECT_THAT(Remarks(run), ElementsAre("never-collected"));
}

TEST_F(ObserversTest, AnObserverThatIsRemovedBeforeItsFirstRequestStaysRemoved) {
    const RunReport run = Played(Observe(31) + "," + Observe(31, "remove-observer") + "," + Commit("a", 31));

    EXPECT_THAT(Heard(run), IsEmpty());
    EXPECT_THAT(Remarks(run), ElementsAre("never-collected"));
}

TEST_F(ObserversTest, WithAListOnlyThoseOfTheListAreThere) {
    const RunReport run = Played(Commit("a", 31) + "," + Commit("b", 32),
                                 R"("observers": [{"record": "InnerBaseRet", "observer": 32}], )");

    EXPECT_THAT(Heard(run), ElementsAre("0 32 b 5"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kCached), ElementsAre("under \"a\", for observer 31"));
}

TEST_F(ObserversTest, ACachedResultIsCollectedByAnObserverThatCameLater) {
    const RunReport run =
        Played(Commit("a", 31) + R"(,{"wait": "1 s"},)" + Observe(31) + R"(,{"collect": {}})", kNobody);

    EXPECT_THAT(Texts(run.entries, EntryKind::kCached), SizeIs(1));
    EXPECT_THAT(Texts(run.entries, EntryKind::kCollected), SizeIs(1));
    EXPECT_THAT(Heard(run), ElementsAre("1000 31 a 5"));
    EXPECT_EQ(LinesWith(run.entries, "collects its cached results; 1 wait"), 1u);
    EXPECT_EQ(LinesWith(run.entries, "1 collected, 0 still wait for an observer"), 1u);
    EXPECT_THAT(Remarks(run), IsEmpty());
}

TEST_F(ObserversTest, ACollectWithoutTheObserverCollectsNothing) {
    const RunReport run = Played(Commit("a", 31) + R"(,{"collect": {}})", kNobody);

    EXPECT_THAT(Heard(run), IsEmpty());
    EXPECT_EQ(LinesWith(run.entries, "0 collected, 1 still wait for an observer"), 1u);
    EXPECT_THAT(Remarks(run), ElementsAre("never-collected"));
}

TEST_F(ObserversTest, AfterACollectionAResultMayWaitUnderTheSameSequenceID) {
    const std::string collect = "," + Observe(31) + R"(,{"collect": {}},)" + Observe(31, "remove-observer") + ",";
    const RunReport run =
        Played(Commit("a", 31, 1) + collect + Commit("a", 31, 2) + collect + Commit("b", 31), kNobody);

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 1", "0 31 a 2"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kLost), IsEmpty());
}

TEST_F(ObserversTest, AResultWithoutASequenceIDCannotWait) {
    const RunReport run = Played(Commit("", 31), kNobody);

    EXPECT_THAT(Texts(run.entries, EntryKind::kLost),
                ElementsAre("nobody observes it, and without a sequence ID it cannot be cached"));
    EXPECT_THAT(Remarks(run), ElementsAre("lost", "unanswered"));
}

TEST_F(ObserversTest, ASecondResultCannotWaitUnderTheSameSequenceID) {
    const RunReport run =
        Played(Commit("a", 31, 1) + "," + Commit("a", 31, 2) + "," + Observe(31) + R"(,{"collect": {}})", kNobody);

    EXPECT_THAT(Texts(run.entries, EntryKind::kLost), ElementsAre("another result is cached under \"a\" already"));
    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 1"));
}

TEST_F(ObserversTest, ResultsOfDifferentRecordsWaitSideBySide) {
    const RunReport run = Played(Commit("a", 202) + R"(,{"query-friends": {"methodID": 215, "seqID": "a"}})", kNobody);

    EXPECT_THAT(Texts(run.entries, EntryKind::kCached), SizeIs(2));
    EXPECT_THAT(Texts(run.entries, EntryKind::kLost), IsEmpty());
}

TEST_F(ObserversTest, AResultWhoseObserverGoesWhileItIsOnItsWayIsNotDelivered) {
    const World world = WorldOf(
        Observe(31) + "," + Commit("a", 31) + "," + Observe(31, "remove-observer") + "," + Commit("b", 31), kNobody);

    const RunReport run = PlayWorld(world);

    EXPECT_THAT(Heard(run), ElementsAre("0 31 a 5"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kCached), ElementsAre("under \"b\", for observer 31"));
}

TEST_F(ObserversTest, SixtyFourObserversOfOneRecordAreTheMost) {
    std::string steps;
    for (unsigned i = 0; i < 64; ++i) {
        steps += Observe(1000 + i) + ",";
    }

    const RunReport most = Played(steps + Commit("a", 1063), kNobody);
    const RunReport tooMany = Played(steps + Observe(2000) + R"(,{"note": "not reached"})", kNobody);

    EXPECT_THAT(most.problem, IsEmpty());
    EXPECT_THAT(Heard(most), ElementsAre("0 1063 a 5"));
    EXPECT_EQ(tooMany.problem, "more than 64 observers of one record type");
    EXPECT_THAT(Texts(tooMany.entries, EntryKind::kNote), IsEmpty());
}

TEST_F(ObserversTest, ARemovedObserverMakesRoomForAnother) {
    std::string steps;
    for (unsigned i = 0; i < 64; ++i) {
        steps += Observe(1000 + i) + ",";
    }

    EXPECT_THAT(Played(steps + Observe(1000, "remove-observer") + "," + Observe(2000), kNobody).problem, IsEmpty());
}

TEST_F(ObserversTest, TokensAreHiddenUnlessTheyAreAskedFor) {
    const std::string login = R"({"login": {"methodID": 111, "seqID": "a", "permissions": "email", "answers": [
        {"answer-login": {"outcome": "success", "token": "very-secret-token", "graphDomain": "facebook"}}]}})";
    SimulationOptions shown;
    shown.showTokens = true;
    const auto inFields = [](const RunReport& run) {
        return std::count_if(run.entries.begin(), run.entries.end(), [](const Entry& entry) {
            const ResultField* const info = entry.result ? entry.result->Find("channelInfo") : nullptr;
            return info != nullptr && std::get<std::string>(info->value).find("very-secret") != std::string::npos;
        });
    };

    const RunReport hidden = Played(login, "");
    const RunReport open = Played(login, "", shown);

    EXPECT_THAT(Heard(hidden), ElementsAre("0 109 a"));
    EXPECT_EQ(LinesWith(hidden.entries, "very-secret"), 0u);
    EXPECT_EQ(inFields(hidden), 0);
    EXPECT_EQ(LinesWith(hidden.entries, "<17 bytes>"), 1u);
    EXPECT_GE(LinesWith(open.entries, "very-secret-token"), 1u);
    EXPECT_GE(inFields(open), 1);
}

TEST_F(ObserversTest, AWaitingTokenIsHiddenToo) {
    const std::string login = R"({"login": {"methodID": 111, "seqID": "a", "permissions": "email", "answers": [
        {"answer-login": {"outcome": "success", "token": "very-secret-token", "graphDomain": "facebook"}}]}})";

    const RunReport run =
        Played(login + R"(,{"observe": {"record": "InnerLoginPluginRet", "observer": 109}}, {"collect": {}})", kNobody);

    EXPECT_THAT(Texts(run.entries, EntryKind::kCollected), SizeIs(1));
    EXPECT_EQ(LinesWith(run.entries, "very-secret"), 0u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
