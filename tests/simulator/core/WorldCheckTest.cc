// What can be wrong with a world whose every step is right.

#include "World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// The error for a world with these steps, one to a line from line 2 on; empty when it is good.
std::string Refusal(const std::string& steps, const std::string& more = "") {
    LocatedError error;
    const auto world = ParseWorld(R"({"question": "q", "steps": [)"
                                  "\n" +
                                      steps + "\n]" + more + "}",
                                  "t.world.json", error);
    return world ? "" : error.text();
}

constexpr const char* kLogin = R"({"login": {"methodID": 1, "seqID": "l", "permissions": ""}},)"
                               "\n";
constexpr const char* kAddFriend = R"({"add-friend": {"methodID": 1, "seqID": "a", "observer": 32}},)"
                                   "\n";
constexpr const char* kInvitation =
    R"({"send-message": {"methodID": 212, "seqID": "i", "observer": 33, "type": "invitation"}},)"
    "\n";
constexpr const char* kShare = R"({"share": {"methodID": 211, "seqID": "s", "observer": 31, "type": "link"}},)"
                               "\n";
constexpr const char* kShareAnswer = R"({"answer-share": {"outcome": "cancelled"}})";

struct NeedyAnswer {
    const char* name;
    const char* answer;
    const char* request; // That opens what the answer ends.
    const char* other;   // Another request, which does not.
    const char* remedy;
};

void PrintTo(const NeedyAnswer& answer, std::ostream* out) {
    *out << answer.name;
}

class NeedyAnswerTest : public ::testing::TestWithParam<NeedyAnswer> {};

constexpr const char* kPutShare = "put a \"share\" of an image or a video before this answer";

INSTANTIATE_TEST_SUITE_P(
    Answers, NeedyAnswerTest,
    ::testing::Values(
        NeedyAnswer{"Login", R"({"answer-login": {"outcome": "cancelled"}})", kLogin, kShare,
                    "put a \"login\" step before this answer"},
        NeedyAnswer{"FriendFinder", R"({"answer-friend-finder": {"outcome": "returned"}})", kAddFriend, kInvitation,
                    "put an \"add-friend\" of a gaming login before this answer"},
        NeedyAnswer{"GameRequest", R"({"answer-game-request": {"outcome": "closed"}})", kInvitation, kShare,
                    "put a \"send-message\" of type \"invitation\" before this answer"},
        NeedyAnswer{"Share", kShareAnswer, kShare, kInvitation,
                    "put a \"share\" or a \"send-message\" before this answer"},
        NeedyAnswer{"PhotoPrompt", R"({"answer-photo-prompt": {"permission": "denied"}})", kShare, kLogin, kPutShare},
        NeedyAnswer{"Saving", R"({"finish-saving": {"outcome": "saved"}})", kShare, kAddFriend, kPutShare},
        NeedyAnswer{"ImageUpload", R"({"answer-image-upload": {"outcome": "without-id"}})", kShare, kLogin, kPutShare},
        NeedyAnswer{"Progress", R"({"upload-progress": {"sent": 0, "expected": 1}})", kShare, kLogin, kPutShare},
        NeedyAnswer{"VideoUpload", R"({"answer-video-upload": {"outcome": "malformed"}})", kShare, kLogin, kPutShare}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(NeedyAnswerTest, IsRefusedBeforeAnythingCanHaveOpened) {
    const NeedyAnswer& needy = GetParam();

    const std::string alone = Refusal(needy.answer);
    const std::string afterOther = Refusal(needy.other + std::string(needy.answer));
    const std::string tooEarly =
        Refusal(needy.answer + (",\n" + std::string(needy.request)) + R"({"note": "the request came too late"})");

    EXPECT_EQ(alone,
              "t.world.json:2:1: steps[0]: nothing can be waiting for this answer; " + std::string(needy.remedy));
    EXPECT_THAT(afterOther, StartsWith("t.world.json:3:1: steps[1]: nothing can be waiting for this answer; "));
    EXPECT_THAT(tooEarly, StartsWith("t.world.json:2:1: steps[0]: nothing can be waiting for this answer; "));
}

TEST_P(NeedyAnswerTest, IsGoodAfterARequestThatMayHaveOpenedIt) {
    const NeedyAnswer& needy = GetParam();

    EXPECT_EQ(Refusal(needy.request + std::string(needy.answer)), "");
}

TEST(WorldCheckTest, AnAnswerMayStandInARepeatAfterItsRequest) {
    EXPECT_EQ(Refusal(R"({"repeat": {"times": 2, "steps": [)" + std::string(kShare) + kShareAnswer + "]}}"), "");
    EXPECT_EQ(Refusal(kShare + std::string(R"({"repeat": {"times": 2, "steps": [)") + kShareAnswer + "]}}"), "");
    EXPECT_THAT(Refusal(R"({"repeat": {"times": 2, "steps": [)" + std::string(kShareAnswer) + "]}}"),
                HasSubstr("steps[0].repeat.steps[0]: nothing can be waiting"));
}

TEST(WorldCheckTest, AnAnswerNamesARequestThatWasMade) {
    EXPECT_EQ(Refusal(kShare + std::string(R"({"answer-share": {"outcome": "cancelled", "of": "s"}})")), "");
    EXPECT_EQ(Refusal(kShare + std::string(R"({"answer-share": {"outcome": "cancelled", "of": "z"}})")),
              "t.world.json:3:1: steps[1]: no request \"z\" has been made before this answer; did you mean \"s\"? use "
              "one of s");
    EXPECT_THAT(Refusal(R"({"answer-share": {"outcome": "cancelled", "of": "s"}})"),
                HasSubstr("put the request before"));
}

TEST(WorldCheckTest, AnAnswerMayNameARequestOfItsRound) {
    const std::string share = R"({"share": {"methodID": 211, "seqID": "s-{n}", "observer": 31, "type": "link"}},)";

    EXPECT_EQ(Refusal(R"({"repeat": {"times": 2, "steps": [)" + share +
                      R"({"answer-share": {"outcome": "cancelled", "of": "s-{n}"}}]}})"),
              "");
}

TEST(WorldCheckTest, AnAnswerMayNameARequestOfAFormerRound) {
    const std::string shares =
        R"({"repeat": {"times": 3, "steps": [{"share": {"methodID": 211, "seqID": "s-{n}!", "observer": 31,
           "type": "link"}}]}},)"
        "\n";
    const auto answer = [&shares](const std::string& of) {
        return Refusal(shares + R"({"answer-share": {"outcome": "cancelled", "of": ")" + of + "\"}}");
    };

    EXPECT_EQ(answer("s-2!"), "");
    EXPECT_THAT(answer("s-two!"), HasSubstr("no request \"s-two!\" has been made"));
    EXPECT_THAT(answer("s-!"), HasSubstr("no request \"s-!\" has been made"));
    EXPECT_THAT(answer("t-2!"), HasSubstr("no request \"t-2!\" has been made"));
    EXPECT_THAT(answer("s-2"), HasSubstr("no request \"s-2\" has been made"));
}

TEST(WorldCheckTest, EveryKindOfRequestCanBeNamed) {
    const std::string requests =
        R"({"logout": {"methodID": 1, "seqID": "o"}}, {"query-friends": {"methodID": 1, "seqID": "q"}},
           {"commit": {"observer": 31, "seqID": "c", "code": 0}},)" +
        std::string(kLogin) + kAddFriend + kInvitation + kShare;

    for (const char* const seqID : {"o", "q", "c", "l", "a", "i", "s"}) {
        EXPECT_EQ(Refusal(requests + R"({"answer-share": {"outcome": "cancelled", "of": ")" + seqID + "\"}}"), "")
            << seqID;
    }
}

TEST(WorldCheckTest, AStepCannotAnswerInsideTheCall) {
    EXPECT_EQ(Refusal(kShare + std::string(R"({"answer-share": {"outcome": "cancelled", "inside": true}})")),
              "t.world.json:3:1: steps[1]: a step cannot answer inside the call, which is over; write the answer among "
              "the request's \"answers\", or remove \"inside\"");
    EXPECT_EQ(Refusal(kShare + std::string(R"({"answer-share": {"outcome": "cancelled", "inside": false}})")), "");
}

std::string Removal(unsigned observer) {
    return R"({"remove-observer": {"record": "InnerBaseRet", "observer": )" + std::to_string(observer) + "}}";
}

TEST(WorldCheckTest, AnObserverThatNobodyHasNamedCannotBeRemoved) {
    EXPECT_EQ(Refusal(Removal(31)), "t.world.json:2:1: steps[0]: nobody has registered observer 31; put an \"observe\" "
                                    "of it before this step, or remove the step");
    EXPECT_THAT(Refusal(Removal(31) + ",\n" + kShare + R"({"note": "too late"})"), HasSubstr("observer 31"));
}

TEST(WorldCheckTest, AnObserverThatSomethingHasNamedCanBeRemoved) {
    EXPECT_EQ(Refusal(kShare + Removal(31)), "");
    EXPECT_EQ(Refusal(kAddFriend + Removal(32)), "");
    EXPECT_EQ(Refusal(kInvitation + Removal(33)), "");
    EXPECT_EQ(Refusal(R"({"commit": {"observer": 34, "seqID": "c", "code": 0}},)" + Removal(34)), "");
    EXPECT_EQ(Refusal(R"({"observe": {"record": "InnerBaseRet", "observer": 35}},)" + Removal(35)), "");
    EXPECT_EQ(Refusal(Removal(36), R"(, "observers": [{"record": "InnerBaseRet", "observer": 36}])"), "");
}

TEST(WorldCheckTest, ObserversOfTheCoreAreAlwaysKnown) {
    for (const unsigned observer : {101U, 107U, 108U, 109U, 202U}) {
        EXPECT_EQ(Refusal(Removal(observer)), "") << observer;
    }
    EXPECT_THAT(Refusal(Removal(100)), HasSubstr("observer 100"));
}

TEST(WorldCheckTest, AResultIsExpectedForSomebodyWhoIsThere) {
    const auto expecting = [](unsigned observer) {
        return R"(, "expect": {"results": [{}, {"observer": )" + std::to_string(observer) + "}]}";
    };

    EXPECT_EQ(Refusal(kShare + std::string(R"({"note": "x"})"), expecting(31)), "");
    EXPECT_EQ(Refusal("", expecting(107)), "");
    EXPECT_THAT(Refusal(kShare + std::string(R"({"note": "x"})"), expecting(32)),
                HasSubstr("expect.results[1]: no request is for observer 32; use the observer of a request, or one of "
                          "101, 107, 108, 109, 202"));
}

TEST(WorldCheckTest, RequestsOfRepeatsCount) {
    const std::string repeat = R"({"repeat": {"times": 1, "steps": [)" + std::string(kShare) + R"({"note": "x"}]}})";

    EXPECT_EQ(Refusal(repeat + "," + Removal(31)), "");
    EXPECT_EQ(Refusal(repeat, R"(, "expect": {"results": [{"observer": 31}]})"), "");
}

TEST(WorldCheckTest, AnErrorOfAStepComesFirst) {
    EXPECT_THAT(Refusal(Removal(31) + ",\n{\"nte\": 1}"), HasSubstr("unknown step"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
