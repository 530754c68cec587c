// Exceptions and lack of memory: what is told, and that the next request is served.

#include "PlayedWorld.h"

#include <gmock/gmock.h>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class FaultsTest : public PlayedWorld {
protected:
    static std::string Throw(const std::string& call, const std::string& more = "") {
        return R"({"throw": {"call": ")" + call + "\"" + more + "}}";
    }

    // Plays the request with the first, second, third, ... allocation failing, until it needs fewer. Each run ends well,
    // and the logout after it is served. Returns how many allocations failed.
    static uint64_t FailEach(const std::string& request, const char* setting) {
        for (uint64_t nth = 1; nth < 2000; ++nth) {
            const RunReport run = Played(R"({"fail-allocation": {"nth": )" + std::to_string(nth) + "}}," + request +
                                             "," + LogoutStep("next"),
                                         setting);

            EXPECT_THAT(run.problem, IsEmpty()) << nth;
            EXPECT_THAT(Heard(run), Contains("0 108 next 0")) << nth;
            EXPECT_LE(LinesWith(run.entries, "std::bad_alloc"), 1u) << nth;
            if (LinesWith(run.entries, "the request needs fewer than " + std::to_string(nth) + " allocations") == 1) {
                EXPECT_EQ(LinesWith(run.entries, "std::bad_alloc"), 0u) << nth;
                return nth - 1;
            }
        }
        ADD_FAILURE() << "the request needs more allocations than were tried";
        return 0;
    }
};

TEST_F(FaultsTest, AnExceptionIsToldAndTheNextRequestIsServed) {
    const RunReport run = Played(Throw("FBSDKShareDialog show", R"(, "name": "MyException", "reason": "why")") + "," +
                                 ShareStep("a") + "," + ShareStep("b", ShareAnswer("completed")));

    EXPECT_THAT(Texts(run.entries, EntryKind::kFault),
                ElementsAre("the next FBSDKShareDialog show raises MyException"));
    EXPECT_THAT(Texts(run.entries, EntryKind::kThrown), ElementsAre("MyException: why"));
    EXPECT_THAT(Heard(run), ElementsAre("0 31 b 0"));
    EXPECT_THAT(Remarks(run), ElementsAre("exception", "unanswered"));
    EXPECT_THAT(run.problem, IsEmpty());
}

TEST_F(FaultsTest, AnExceptionBelongsToTheRequestThatMetIt) {
    const RunReport run = Played(Throw("FBSDKShareDialog show") + "," + LogoutStep("o") + "," + ShareStep("a"));

    const auto thrown = std::find_if(run.entries.begin(), run.entries.end(),
                                     [](const Entry& entry) { return entry.kind == EntryKind::kThrown; });
    ASSERT_NE(thrown, run.entries.end());
    EXPECT_EQ(thrown->request, 1u);
}

TEST_F(FaultsTest, AnExceptionInsideTheCallIsTold) {
    const RunReport run = Played(Throw("FBSDKLoginManager logOut") + "," + LogoutStep("a") + "," + LogoutStep("b"));

    EXPECT_THAT(Texts(run.entries, EntryKind::kThrown), SizeIs(1));
    EXPECT_THAT(Heard(run), ElementsAre("0 108 b 0"));
}

TEST_F(FaultsTest, AnExceptionOnAnotherThreadIsTold) {
    const RunReport run =
        Played(Throw("FBSDKLoginManager logOut") +
               R"(,{"logout": {"methodID": 112, "seqID": "a", "thread": "background"}},)" + LogoutStep("b"));

    EXPECT_THAT(Texts(run.entries, EntryKind::kThrown), SizeIs(1));
    EXPECT_THAT(Heard(run), ElementsAre("0 108 b 0"));
}

TEST_F(FaultsTest, AnExceptionWhileTheSystemCallsTheAppIsTold) {
    const RunReport run = Played(Throw("FBSDKAppEvents activateApp") + R"(,{"activate": {}}, {"note": "x"})", "");

    EXPECT_THAT(run.problem, IsEmpty());
    EXPECT_THAT(Texts(run.entries, EntryKind::kNote), SizeIs(1));
}

TEST_F(FaultsTest, ExceptionsOfOneCallStrikeOneAfterTheOther) {
    const RunReport run =
        Played(Throw("FBSDKShareDialog show") + "," + Throw("FBSDKShareDialog show") + "," + ShareStep("a") + "," +
               ShareStep("b") + "," + ShareStep("c", ShareAnswer("completed")));

    EXPECT_THAT(Texts(run.entries, EntryKind::kThrown), SizeIs(2));
    EXPECT_THAT(Heard(run), ElementsAre("0 31 c 0"));
}

TEST_F(FaultsTest, AnExceptionThatNoCallMetDoesNotOutliveTheRun) {
    Played(Throw("FBSDKShareDialog show"));

    EXPECT_THAT(Heard(Played(ShareStep("a", ShareAnswer("completed")))), ElementsAre("0 31 a 0"));
}

TEST_F(FaultsTest, TheFaultIsForTheNextRequestOnly) {
    const RunReport run = Played(R"({"fail-allocation": {"nth": 1}}, {"note": "x"}, {"wait": "1 s"},)" +
                                 LogoutStep("a") + "," + LogoutStep("b"));

    EXPECT_THAT(Texts(run.entries, EntryKind::kThrown), ElementsAre("std::bad_alloc: there is no memory"));
    EXPECT_THAT(Heard(run), ElementsAre("1000 108 b 0"));
    EXPECT_THAT(Remarks(run), ElementsAre("exception", "unanswered"));
}

TEST_F(FaultsTest, EveryAllocationOfALoginMayFail) {
    EXPECT_GT(FailEach(R"({"login": {"methodID": 111, "seqID": "a", "permissions": "email,public_profile"}})", ""), 1u);
}

TEST_F(FaultsTest, EveryAllocationOfARequestOnAnotherThreadMayFail) {
    EXPECT_GT(FailEach(R"({"add-friend": {"methodID": 1, "seqID": "a", "observer": 31, "thread": "background"}})",
                       kGamingPlayer),
              1u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
