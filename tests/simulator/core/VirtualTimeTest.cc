// Time passes in waits and at the end, and nowhere else; Facebook's clock goes with it.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::Not;

class VirtualTimeTest : public PlayedWorld {};

TEST_F(VirtualTimeTest, AWaitPassesItsTimeThoughNothingIsDue) {
    const RunReport run = Played(R"({"wait": "365 ms"}, {"wait": "525600 min"}, {"note": "x"})");

    EXPECT_EQ(run.entries.back().time, 31'536'000'365);
}

TEST_F(VirtualTimeTest, WhatFallsDueInAWaitHappensAtItsOwnTime) {
    const RunReport run =
        Played(ShareStep("a", ShareAnswer("cancelled", R"("after": "3 s")")) + R"(,{"wait": "10 s"}, {"note": "x"})");

    EXPECT_THAT(Heard(run), ElementsAre("3000 31 a 2"));
    EXPECT_EQ(run.entries.back().time, 10'000);
}

TEST_F(VirtualTimeTest, WhatIsDueWhenAWaitEndsHappensInIt) {
    const RunReport run =
        Played(ShareStep("a", ShareAnswer("cancelled", R"("after": "3 s")")) + R"(,{"wait": "3 s"}, {"note": "x"})");

    EXPECT_EQ(run.entries.back().text, "x");
}

TEST_F(VirtualTimeTest, WhatIsDueLaterHappensAfterTheLastStep) {
    const RunReport run = Played(ShareStep("a", ShareAnswer("cancelled", R"("after": "3001 ms")")) +
                                 R"(,{"wait": "3 s"}, {"note": "x"})");

    EXPECT_THAT(Heard(run), ElementsAre("3001 31 a 2"));
    EXPECT_NE(run.entries.back().text, "x");
}

TEST_F(VirtualTimeTest, WhatIsDueAtTheSameTimeHappensInTheOrderOfPlanning) {
    const RunReport run =
        Played(ShareStep("a", ShareAnswer("cancelled", R"("after": "3 s")")) + R"(,{"wait": "1 s"},)" +
               ShareStep("b", ShareAnswer("completed", R"("after": "2 s")")));

    EXPECT_THAT(Heard(run), ElementsAre("3000 31 b 2", "3000 31 b 0"));
}

TEST_F(VirtualTimeTest, ASpanBetweenTwoStaysBetweenThem) {
    for (uint64_t seed = 0; seed < 20; ++seed) {
        SimulationOptions options;
        options.seed = seed;

        const RunReport run = Played(R"({"wait": {"between": ["1 s", "2 s"]}}, {"note": "x"})", "", options);

        EXPECT_GE(run.entries.back().time, 1000);
        EXPECT_LE(run.entries.back().time, 2000);
    }
}

TEST_F(VirtualTimeTest, TheSameSeedTellsTheSame) {
    const std::string any = R"({"any-of": [)" + ShareAnswer("completed", R"("after": {"between": ["1 s", "50 s"]})") +
                            "," + ShareAnswer("cancelled", R"("after": {"between": ["1 s", "50 s"]})") + "]}";
    const std::string steps =
        R"({"repeat": {"times": 5, "steps": [)" + ShareStep("a-{n}", any) + R"(,{"wait": "1 min"}]}})";
    SimulationOptions one;
    one.seed = 1;
    SimulationOptions two;
    two.seed = 2;

    const std::vector<std::string> first = Lines(Played(steps, kFacebookPlayer, one).entries);
    const std::vector<std::string> other = Lines(Played(steps, kFacebookPlayer, two).entries);
    const std::vector<std::string> again = Lines(Played(steps, kFacebookPlayer, one).entries);

    EXPECT_EQ(first, again);
    EXPECT_THAT(first, Not(other));
}

TEST_F(VirtualTimeTest, TheSeedIsOneUnlessTheWorldOrTheCallerTells) {
    SimulationOptions nine;
    nine.seed = 9;

    EXPECT_EQ(Played("", "").seed, 1u);
    EXPECT_EQ(Played("", R"("seed": 5, )").seed, 5u);
    EXPECT_EQ(Played("", R"("seed": 5, )", nine).seed, 9u);
}

TEST_F(VirtualTimeTest, AnAppThatIsActivatedAgainWithinAMinuteHasNoNewSession) {
    const auto sessions = [](const std::string& between) {
        return LinesWith(
            Played(R"({"launch": {}}, {"activate": {}}, {"wait": ")" + between + R"("}, {"activate": {}})", "").entries,
            "Facebook takes \"fb_mobile_activate_app\"");
    };

    EXPECT_EQ(sessions("60 s"), 1u);
    EXPECT_EQ(sessions("60001 ms"), 2u);
}

TEST_F(VirtualTimeTest, ACallerMayLetTimePass) {
    const World world = WorldOf(ShareStep("a", ShareAnswer("cancelled", R"("after": "3 s")")), kFacebookPlayer);
    Simulation simulation(world);
    ASSERT_TRUE(simulation.PlayNext());

    simulation.Wait(2999);
    const size_t before = simulation.Results().size();
    simulation.Wait(1);

    EXPECT_EQ(before, 0u);
    EXPECT_EQ(simulation.Results().size(), 1u);
    EXPECT_EQ(simulation.time(), 3000);
}

} // namespace
} // namespace Tarvik::Vorn::Test
