// Worlds as a whole: their members, the order of settings, the limits of their parts.

#include "World.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::HasSubstr;
using ::testing::SizeIs;

std::optional<World> Read(const std::string& members, LocatedError& error, const std::string& path = "t.world.json") {
    return ParseWorld(R"({"question": "q", )" + members + "}", path, error);
}

World Good(const std::string& members) {
    LocatedError error;
    std::optional<World> world = Read(members, error);
    EXPECT_TRUE(world.has_value()) << error.text();
    return world.value_or(World());
}

// The error without the file's name.
std::string Refusal(const std::string& members) {
    LocatedError error;
    return Read(members, error) ? "accepted" : error.text().substr(std::string("t.world.json:").size());
}

TEST(ReadWorldTest, SettingsHappenInTheirOwnOrderWhateverTheTextSays) {
    const World world = Good(R"("setting": {"photo-permission": "denied", "apps": {}, "sdk-version": "9.9",
        "player": "nobody", "profile": "15.0", "queries-schemes": [], "configure": {}, "tracking": "denied",
        "view-controller": "found", "info-plist": {}}, "steps": [])");

    ASSERT_THAT(world.setting, SizeIs(10));
    EXPECT_TRUE(std::holds_alternative<InfoPlistStep>(world.setting[0].action));
    EXPECT_TRUE(std::holds_alternative<ConfigureStep>(world.setting[1].action));
    EXPECT_TRUE(std::holds_alternative<ProfileStep>(world.setting[2].action));
    EXPECT_TRUE(std::holds_alternative<SDKVersionStep>(world.setting[3].action));
    EXPECT_TRUE(std::holds_alternative<PlayerStep>(world.setting[4].action));
    EXPECT_TRUE(std::holds_alternative<PhotoPermissionStep>(world.setting[9].action));
}

TEST(ReadWorldTest, ARequestIsNoSetting) {
    EXPECT_THAT(Refusal(R"("setting": {"logout": {"methodID": 1, "seqID": "s"}}, "steps": [])"),
                HasSubstr("setting.logout: the key \"logout\" is not known; "));
    EXPECT_THAT(Refusal(R"("setting": {"repeat": {"times": 1, "steps": []}}, "steps": [])"),
                HasSubstr("the key \"repeat\" is not known"));
}

TEST(ReadWorldTest, ObserversRegisterThemselvesUnlessTheWorldListsThem) {
    EXPECT_TRUE(Good(R"("steps": [])").registersObservers);
    EXPECT_TRUE(Good(R"("observers": "automatic", "steps": [])").registersObservers);
    EXPECT_FALSE(Good(R"("observers": [], "steps": [])").registersObservers);
}

TEST(ReadWorldTest, ListedObserversComeAfterTheSettings) {
    const World world = Good(R"("observers": [{"record": "InnerFriendRet", "observer": 202},
        {"record": "InnerBaseRet", "observer": 108}], "setting": {"player": "nobody"}, "steps": [])");

    ASSERT_THAT(world.setting, SizeIs(3));
    EXPECT_TRUE(std::holds_alternative<PlayerStep>(world.setting[0].action));
    EXPECT_EQ(std::get<ObserveStep>(world.setting[1].action).observerID, 202u);
    EXPECT_EQ(std::get<ObserveStep>(world.setting[2].action).record, RecordType::kBase);
}

TEST(ReadWorldTest, OtherObserversAreRefused) {
    EXPECT_THAT(Refusal(R"("observers": "automatc", "steps": [])"), HasSubstr("did you mean \"automatic\"? "));
    EXPECT_THAT(Refusal(R"("observers": 108, "steps": [])"), HasSubstr("observers: "));
    EXPECT_THAT(Refusal(R"("observers": [108], "steps": [])"), HasSubstr("observers[0]: "));
    EXPECT_THAT(Refusal(R"("observers": [{"record": "InnerBaseRet"}], "steps": [])"), HasSubstr("\"observer\""));
}

TEST(ReadWorldTest, ASeedIsANumberOf64BitsOrNotThere) {
    EXPECT_EQ(Good(R"("steps": [])").seed, std::nullopt);
    EXPECT_EQ(Good(R"("seed": 0, "steps": [])").seed, 0u);
    EXPECT_EQ(Good(R"("seed": 18446744073709551615, "steps": [])").seed, std::numeric_limits<uint64_t>::max());
}

TEST(ReadWorldTest, OtherSeedsAreRefused) {
    for (const char* const seed : {"-1", "18446744073709551616", "1.0", "\"1\"", "null"}) {
        EXPECT_THAT(Refusal("\"seed\": " + std::string(seed) + ", \"steps\": []"), HasSubstr("seed: ")) << seed;
    }
}

TEST(ReadWorldTest, AWorldIsNamedAfterItsFile) {
    LocatedError error;

    EXPECT_EQ(Read(R"("steps": [])", error, "/a/b.c/share-1.world.json")->name, "share-1");
    EXPECT_EQ(Read(R"("steps": [])", error, "share-1.json")->name, "share-1");
    EXPECT_EQ(Read(R"("steps": [])", error, "share-1.txt")->name, "share-1.txt");
    EXPECT_EQ(Read(R"("steps": [])", error, ".world.json")->name, ".world");
}

TEST(ReadWorldTest, TheSchemaIsForEditors) {
    Good(R"("$schema": "nowhere.json", "steps": [])");
    EXPECT_THAT(Refusal(R"("$schema": 1, "steps": [])"), HasSubstr("$schema: "));
}

TEST(ReadWorldTest, AnErrorNamesThePathInsideTheDocument) {
    EXPECT_THAT(Refusal(R"("steps": [{"note": "a"}, {"repeat": {"times": 1, "steps": [{"note": 1}]}}])"),
                HasSubstr(": steps[1].repeat.steps[0].note: "));
}

TEST(ReadWorldTest, RepeatsStandInRepeatsFourDeep) {
    const std::string begin = R"({"repeat": {"times": 1, "steps": [)";
    const std::string end = "]}}";
    const auto nested = [&](int depth) {
        std::string steps = R"({"note": "inside"})";
        for (int i = 0; i < depth; ++i) {
            steps = begin + steps + end;
        }
        return "\"steps\": [" + steps + "]";
    };

    Good(nested(4));
    EXPECT_THAT(Refusal(nested(5)), HasSubstr("steps[0].repeat.steps[0].repeat.steps[0].repeat.steps[0].repeat.steps[0]"
                                              ".repeat: repeats stand inside each other more than 4 deep; "));
}

TEST(ReadWorldTest, ARepeatHasFromOneToTenMillionRounds) {
    const auto repeated = [](const std::string& times) {
        return R"("steps": [{"repeat": {"times": )" + times + R"(, "steps": []}}])";
    };

    EXPECT_EQ(std::get<RepeatStep>(Good(repeated("1")).steps[0].action).times, 1u);
    EXPECT_EQ(std::get<RepeatStep>(Good(repeated("10000000")).steps[0].action).times, 10'000'000u);
    for (const char* const times : {"0", "-1", "10000001"}) {
        EXPECT_THAT(Refusal(repeated(times)), HasSubstr("use an integer from 1 to 10000000")) << times;
    }
}

TEST(ReadWorldTest, ARepeatNeedsTimesAndSteps) {
    EXPECT_THAT(Refusal(R"("steps": [{"repeat": {"steps": []}}])"), HasSubstr("\"times\""));
    EXPECT_THAT(Refusal(R"("steps": [{"repeat": {"times": 1}}])"), HasSubstr("\"steps\""));
    EXPECT_THAT(Refusal(R"("steps": [{"repeat": {"times": 1, "steps": [], "step": 1}}])"), HasSubstr("\"step\""));
}

TEST(ReadWorldTest, ABadStepOfARepeatIsFound) {
    EXPECT_THAT(Refusal(R"("steps": [{"repeat": {"times": 1, "steps": [{"nte": "x"}]}}])"),
                HasSubstr("unknown step \"nte\"; did you mean \"note\"? "));
}

TEST(ReadWorldTest, AThrowingCallMustExist) {
    Good(R"("steps": [{"throw": {"call": "FBSDKShareDialog show"}}])");
    EXPECT_THAT(Refusal(R"("steps": [{"throw": {"call": "FBSDKShareDialog shw"}}])"),
                HasSubstr("steps[0].throw.call: unknown call \"FBSDKShareDialog shw\"; did you mean \"FBSDKShareDialog "
                          "show\"? "));
    EXPECT_THAT(Refusal(R"("steps": [{"throw": {"call": "FBSDKShareDialog"}}])"), HasSubstr("unknown call"));
    EXPECT_THAT(Refusal(R"("steps": [{"throw": {}}])"), HasSubstr("\"call\""));
}

TEST(ReadWorldTest, AnExceptionHasANameUnlessToldTheUsualOne) {
    const World world = Good(R"("steps": [{"throw": {"call": "FBSDKShareDialog show"}},
        {"throw": {"call": "FBSDKShareDialog show", "name": "N", "reason": "r"}}])");

    EXPECT_EQ(std::get<ThrowStep>(world.steps[0].action).name, "NSInternalInconsistencyException");
    EXPECT_EQ(std::get<ThrowStep>(world.steps[1].action).name, "N");
    EXPECT_EQ(std::get<ThrowStep>(world.steps[1].action).reason, "r");
}

TEST(ReadWorldTest, AllocationsAreCountedFromOne) {
    EXPECT_EQ(std::get<FailAllocationStep>(Good(R"("steps": [{"fail-allocation": {"nth": 1}}])").steps[0].action).nth,
              1u);
    EXPECT_THAT(Refusal(R"("steps": [{"fail-allocation": {"nth": 0}}])"), HasSubstr("\"nth\" is out of range"));
}

TEST(ReadWorldTest, AMomentIsNoSpan) {
    const auto at = [](const std::string& time) {
        return R"("steps": [], "expect": {"results": [{"at": )" + time + "}]}";
    };

    EXPECT_EQ(Good(at("\"2 s\"")).expectations.results->front().time, 2000);
    EXPECT_EQ(Good(at(R"({"between": ["2 s", "2 s"]})")).expectations.results->front().time, 2000);
    EXPECT_THAT(Refusal(at(R"({"between": ["1 s", "2 s"]})")),
                HasSubstr("expect.results[0].at: \"at\" is a moment; write one time, such as \"2 s\""));
}

TEST(ReadWorldTest, WhatIsNotExpectedIsNotLookedAt) {
    EXPECT_TRUE(Good(R"("steps": [])").expectations.IsEmpty());
    EXPECT_TRUE(Good(R"("steps": [], "expect": {})").expectations.IsEmpty());
    EXPECT_FALSE(Good(R"("steps": [], "expect": {"results": []})").expectations.IsEmpty());
    EXPECT_FALSE(Good(R"("steps": [], "expect": {"unanswered": []})").expectations.IsEmpty());
    EXPECT_FALSE(Good(R"("steps": [], "expect": {"cached": []})").expectations.IsEmpty());
    EXPECT_FALSE(Good(R"("steps": [], "expect": {"audit": []})").expectations.IsEmpty());
    EXPECT_FALSE(Good(R"("steps": [], "expect": {"lines": ["x"]})").expectations.IsEmpty());
}

TEST(ReadWorldTest, AnExpectedResultHasAllItsMembers) {
    const World world = Good(R"("steps": [], "expect": {"results": [{"record": "InnerLoginPluginRet", "observer": 109,
        "seqID": "s", "at": "1 s", "methodNameID": 1, "retCode": 2, "retMsg": "a", "thirdCode": 3, "thirdMsg": "b",
        "extraJson": "c", "channelID": 4, "channel": "d", "channelInfo": "e", "friendInfoList": 5}]})");

    const ExpectedResult& result = world.expectations.results->front();
    EXPECT_EQ(result.record, "InnerLoginPluginRet");
    EXPECT_EQ(result.observerID, 109u);
    EXPECT_EQ(result.seqID, "s");
    EXPECT_EQ(result.time, 1000);
    EXPECT_THAT(result.fields, SizeIs(10));
}

TEST(ReadWorldTest, BadExpectationsAreShownAtTheirPlace) {
    const auto refusal = [](const std::string& expect) { return Refusal("\"steps\": [], \"expect\": " + expect); };

    EXPECT_THAT(refusal(R"({"result": []})"),
                HasSubstr("expect.result: the key \"result\" is not known; did you mean"));
    EXPECT_THAT(refusal(R"({"results": [1]})"), HasSubstr("expect.results[0]: "));
    EXPECT_THAT(refusal(R"({"results": [{"retcode": 1}]})"), HasSubstr("did you mean \"retCode\"? "));
    EXPECT_THAT(refusal(R"({"results": [{"retCode": "1"}]})"), HasSubstr("expect.results[0].retCode: "));
    EXPECT_THAT(refusal(R"({"results": [{"retMsg": 1}]})"), HasSubstr("expect.results[0].retMsg: "));
    EXPECT_THAT(refusal(R"({"results": [{"record": "InnerRet"}]})"), HasSubstr("unknown record \"InnerRet\"; "));
    EXPECT_THAT(refusal(R"({"results": [{"observer": -1}]})"), HasSubstr("\"observer\" is out of range"));
    EXPECT_THAT(refusal(R"({"unanswered": [1]})"), HasSubstr("expect.unanswered[0]: "));
    EXPECT_THAT(refusal(R"({"lines": "x"})"), HasSubstr("expect.lines: "));
    EXPECT_THAT(refusal(R"({"lines": ["x", 1]})"), HasSubstr("expect.lines[1]: "));
    EXPECT_THAT(refusal(R"({"audit": [1]})"), HasSubstr("expect.audit[0]: "));
    EXPECT_THAT(refusal(R"({"audit": ["lost", "unanswerd"]})"),
                HasSubstr("expect.audit[1]: unknown remark \"unanswerd\"; did you mean \"unanswered\"? "));
}

TEST(ReadWorldTest, AnswersOfARequestAreItsOwn) {
    const auto refusal = [](const std::string& answers) {
        return Refusal(R"("steps": [{"share": {"methodID": 1, "seqID": "s", "observer": 1, "type": "link",
            "answers": [)" +
                       answers + "]}}]");
    };

    EXPECT_EQ(refusal(R"({"answer-share": {"outcome": "cancelled", "inside": true, "times": 100}})"), "accepted");
    EXPECT_THAT(refusal(R"({"answer-share": {"outcome": "cancelled", "of": "s"}})"), HasSubstr("remove \"of\""));
    EXPECT_THAT(refusal(R"({"answer-share": {"outcome": "cancelled", "dialog": 0}})"), HasSubstr("remove \"dialog\""));
    EXPECT_THAT(refusal(R"({"answer-share": {"outcome": "cancelled", "inside": true, "after": "1 s"}})"),
                HasSubstr("remove \"after\" or \"inside\""));
    EXPECT_THAT(refusal(R"({"answer-share": {"outcome": "cancelled", "times": 101}})"), HasSubstr("from 0 to 100"));
    EXPECT_THAT(refusal(R"({"answer-share": {"outcome": "cancelled", "times": -1}})"), HasSubstr("from 0 to 100"));
    EXPECT_THAT(refusal(R"({"answr-share": {"outcome": "cancelled"}})"), HasSubstr("did you mean \"answer-share\"? "));
    EXPECT_THAT(refusal(R"({"note": "x"})"), HasSubstr("unknown answer \"note\""));
    EXPECT_THAT(refusal("{}"), HasSubstr("an answer has 0 members"));
    EXPECT_THAT(refusal("1"), HasSubstr("an answer"));
    EXPECT_THAT(refusal(R"({"any-of": []})"), HasSubstr("\"any-of\" has no answer"));
}

TEST(ReadWorldTest, AnyOfHasAnswersOfOneKind) {
    const auto refusal = [](const std::string& some) {
        return Refusal(R"("steps": [{"share": {"methodID": 1, "seqID": "s", "observer": 1, "type": "link",
            "answers": [{"any-of": [)" +
                       some + "]}]}}]");
    };

    EXPECT_EQ(refusal(R"({"answer-share": {"outcome": "cancelled"}}, {"answer-share": {"outcome": "completed"}})"),
              "accepted");
    EXPECT_THAT(refusal(R"({"answer-share": {"outcome": "cancelled"}}, {"finish-saving": {"outcome": "saved"}})"),
                HasSubstr("any-of[1]: \"any-of\" mixes answers of different kinds; "));
    EXPECT_THAT(refusal(R"({"any-of": [{"answer-share": {"outcome": "cancelled"}}]})"), HasSubstr("\"any-of\""));
}

} // namespace
} // namespace Tarvik::Vorn::Test
