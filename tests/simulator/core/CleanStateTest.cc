// A second simulation of the process begins as the first one did.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class CleanStateTest : public PlayedWorld {
protected:
    // Asks about everything that an earlier run may have left.
    static std::vector<std::string> Probe() {
        const RunReport run = Played(
            R"({"add-friend": {"methodID": 213, "seqID": "friend", "observer": 40,
                "answers": [{"answer-friend-finder": {"outcome": "returned"}}]}}, {"collect": {}},)" +
                ShareStep("probe", ShareAnswer("completed")) + "," + ImageStep("image") + "," + VideoStep("video") +
                R"(,{"launch": {}}, {"activate": {}}, {"init-stat": {}}, {"report": {"event": "e", "seqID": "r"}},
                   {"login": {"methodID": 111, "seqID": "l", "permissions": "email"}}, {"logout": {"methodID": 112,
                   "seqID": "o"}})",
            "");
        std::vector<std::string> lines = Lines(run.entries);
        lines.insert(lines.end(), run.problem);
        return lines;
    }
};

TEST_F(CleanStateTest, NothingOfABusyRunIsLeft) {
    const std::vector<std::string> before = Probe();

    const RunReport busy =
        Played(ShareStep("open") + "," + VideoStep("saving") +
                   R"(,{"login": {"methodID": 111, "seqID": "x", "permissions": ""}},
        {"add-friend": {"methodID": 9, "seqID": "y", "observer": 77}}, {"commit": {"observer": 88, "seqID": "z", "code": 1}},
        {"remove-observer": {"record": "InnerBaseRet", "observer": 88}},
        {"commit": {"observer": 88, "seqID": "cached", "code": 1}}, {"activate": {}}, {"wait": "1 min"},
        {"throw": {"call": "FBSDKShareDialog show"}}, {"fail-allocation": {"nth": 1}})",
               R"("setting": {"info-plist": {"FacebookAppID": "1"}, "configure": {"FACEBOOK_APP_ID": "9",
        "FACEBOOK_LOGIN_MODE": "Game"}, "profile": "15.0", "sdk-version": null, "player": "gaming",
        "tracking": "denied", "view-controller": "missing", "apps": {"facebook": false, "messenger": false},
        "queries-schemes": [], "photo-permission": "denied"}, )");
    const std::vector<std::string> after = Probe();

    EXPECT_THAT(busy.problem, IsEmpty());
    EXPECT_EQ(after, before);
}

TEST_F(CleanStateTest, ARunThatIsGivenUpLeavesNothing) {
    const std::vector<std::string> before = Probe();
    {
        const World world = WorldOf(
            ShareStep("a", ShareAnswer("completed", R"("after": "1 s")")) + "," + ImageStep("b"), kFacebookPlayer);
        Simulation simulation(world);
        simulation.PlayNext();
    }

    EXPECT_EQ(Probe(), before);
}

TEST_F(CleanStateTest, ThePluginRemembersNoRequestOfAnEarlierRun) {
    Played(ShareStep("earlier"));

    const RunReport run = Played(R"({"add-friend": {"methodID": 213, "seqID": "friend", "observer": 40,
        "answers": [{"answer-friend-finder": {"outcome": "returned"}}]}})",
                                 kGamingPlayer);

    EXPECT_EQ(LinesWith(run.entries, "earlier"), 0u);
}

TEST_F(CleanStateTest, ACachedResultOfAnEarlierRunIsGone) {
    Played(R"({"commit": {"observer": 31, "seqID": "a", "code": 1}})", R"("observers": [], )");

    const RunReport run =
        Played(R"({"observe": {"record": "InnerBaseRet", "observer": 31}}, {"collect": {}})", R"("observers": [], )");

    EXPECT_THAT(Heard(run), IsEmpty());
}

TEST_F(CleanStateTest, AnObserverOfAnEarlierRunIsGone) {
    Played(R"({"observe": {"record": "InnerBaseRet", "observer": 31}})", R"("observers": [], )");

    const RunReport run = Played(R"({"commit": {"observer": 31, "seqID": "a", "code": 1}})", R"("observers": [], )");

    EXPECT_THAT(Texts(run.entries, EntryKind::kCached), SizeIs(1));
}

} // namespace
} // namespace Tarvik::Vorn::Test
