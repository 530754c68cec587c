// World files: every step with all it can say, and how a file that cannot be used is refused.

#include "WorldTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Pair;
using ::testing::SizeIs;

// ---- Good files

TEST_F(WorldTest, QuestionAndStepsAreReadInOrder) {
    LocatedError error;

    const auto world =
        Load(R"({"steps": [{"note": "first"}, {"collect": {}}, {"note": "last"}], "question": "A question"})", error);

    ASSERT_TRUE(world.has_value()) << error.text();
    EXPECT_EQ(world->question, "A question");
    ASSERT_THAT(world->steps, SizeIs(3));
    EXPECT_EQ(std::get<NoteStep>(world->steps[0].action).text, "first");
    EXPECT_TRUE(std::holds_alternative<CollectStep>(world->steps[1].action));
    EXPECT_EQ(std::get<NoteStep>(world->steps[2].action).text, "last");
}

TEST_F(WorldTest, AWorldMayHaveNoSteps) {
    LocatedError error;

    const auto world = Load(R"({"question": "t", "steps": []})", error);

    ASSERT_TRUE(world.has_value()) << error.text();
    EXPECT_THAT(world->steps, IsEmpty());
}

TEST_F(WorldTest, ConfigureTakesAnyKeys) {
    const auto step = TheStep<ConfigureStep>(R"({"configure": {"FACEBOOK_LOGIN_MODE": "Game", "OTHER": ""}})");

    EXPECT_THAT(step.values, ElementsAre(Pair("FACEBOOK_LOGIN_MODE", "Game"), Pair("OTHER", "")));
}

TEST_F(WorldTest, TheSdkMayHaveAVersionOrNone) {
    EXPECT_EQ(TheStep<SDKVersionStep>(R"({"sdk-version": "6.4.0"})").version, "6.4.0");
    EXPECT_EQ(TheStep<SDKVersionStep>(R"({"sdk-version": null})").version, std::nullopt);
}

TEST_F(WorldTest, ObserversHaveARecordAndAnIDOf32Bits) {
    const auto observe = TheStep<ObserveStep>(R"({"observe": {"record": "InnerFriendRet", "observer": 4294967295}})");
    const auto remove = TheStep<RemoveObserverStep>(R"({"observe": {"record": "InnerLoginRet", "observer": 0}},
            {"remove-observer": {"record": "InnerLoginRet", "observer": 0}})");

    EXPECT_EQ(observe.record, RecordType::kFriend);
    EXPECT_EQ(observe.observerID, 4294967295u);
    EXPECT_EQ(remove.record, RecordType::kLogin);
    EXPECT_EQ(remove.observerID, 0u);
}

TEST_F(WorldTest, ALoginHasAllItsParameters) {
    const auto step = TheStep<LoginStep>(R"({"login": {"methodID": -2147483648, "seqID": "s", "channel": "c",
        "subChannel": "Game", "extraJson": "{}", "permissions": "a,b"}})");

    EXPECT_EQ(step.params.methodID, -2147483647 - 1);
    EXPECT_EQ(step.params.seqID, "s");
    EXPECT_EQ(step.params.channel, "c");
    EXPECT_EQ(step.params.subChannel, "Game");
    EXPECT_EQ(step.params.extraJson, "{}");
    EXPECT_EQ(step.params.permissions, "a,b");
}

TEST_F(WorldTest, ALogoutHasParametersWithoutPermissions) {
    const auto step = TheStep<LogoutStep>(R"({"logout": {"methodID": 2147483647, "seqID": "s"}})");

    EXPECT_EQ(step.params.methodID, 2147483647);
    EXPECT_EQ(step.params.seqID, "s");
    EXPECT_EQ(step.params.subChannel, "");
}

TEST_F(WorldTest, AnAnswerHasWhatItsOutcomeNeeds) {
    using Outcome = AnswerLoginStep::Outcome;

    const auto success = TheAnswer<AnswerLoginStep>(
        R"({"answer-login": {"outcome": "success", "token": "t", "graphDomain": "gaming", "thread": "background"}})");
    const auto error = TheAnswer<AnswerLoginStep>(
        R"({"answer-login": {"outcome": "error", "domain": "d", "code": -9007199254740993, "message": "m"}})");
    const auto message = TheAnswer<AnswerLoginStep>(
        R"({"answer-login": {"outcome": "error-message", "message": "m", "thread": "main"}})");

    EXPECT_EQ(success.outcome, Outcome::kSuccess);
    EXPECT_EQ(success.token, "t");
    EXPECT_EQ(success.graphDomain, "gaming");
    EXPECT_TRUE(success.manner.background);
    EXPECT_EQ(error.outcome, Outcome::kError);
    EXPECT_EQ(error.domain, "d");
    EXPECT_EQ(error.code, -9007199254740993);
    EXPECT_EQ(error.message, "m");
    EXPECT_EQ(message.outcome, Outcome::kErrorMessage);
    EXPECT_EQ(message.message, "m");
    EXPECT_FALSE(message.manner.background);
}

TEST_F(WorldTest, EveryOutcomeHasAName) {
    using Outcome = AnswerLoginStep::Outcome;
    const auto outcome = [this](const std::string& name) {
        return TheAnswer<AnswerLoginStep>("{\"answer-login\": {\"outcome\": \"" + name + "\"}}").outcome;
    };

    EXPECT_EQ(outcome("limited"), Outcome::kLimited);
    EXPECT_EQ(outcome("cancelled"), Outcome::kCancelled);
    EXPECT_EQ(outcome("nothing-granted"), Outcome::kNothingGranted);
    EXPECT_EQ(outcome("browser-not-opened"), Outcome::kBrowserNotOpened);
}

TEST_F(WorldTest, ACommitHasObserverRequestAndCode) {
    const auto step = TheStep<CommitStep>(R"({"commit": {"observer": 107, "seqID": "s", "code": 9999}})");

    EXPECT_EQ(step.observerID, 107u);
    EXPECT_EQ(step.seqID, "s");
    EXPECT_EQ(step.code, 9999);
}

TEST_F(WorldTest, LaunchesAndURLOpensHaveAnAnswerOfTheGame) {
    const auto launch = TheStep<LaunchStep>(R"({"launch": {"url": "fb1://x", "game": "NO"}})");
    const auto plain = TheStep<LaunchStep>(R"({"launch": {}})");
    const auto open = TheStep<OpenURLStep>(R"({"open-url": {"url": "fb1://x", "source": "a", "method": "source"}})");

    EXPECT_EQ(launch.url, "fb1://x");
    EXPECT_FALSE(launch.answer);
    EXPECT_EQ(plain.url, "");
    EXPECT_TRUE(plain.answer);
    EXPECT_EQ(open.url, "fb1://x");
    EXPECT_EQ(open.source, "a");
    EXPECT_TRUE(open.withSource);
    EXPECT_TRUE(open.answer);
}

TEST_F(WorldTest, ActivationAndStartOfReportingHaveNoMembers) {
    TheStep<ActivateStep>(R"({"activate": {}})");
    TheStep<InitStatStep>(R"({"init-stat": {}})");
}

TEST_F(WorldTest, AnEventHasParametersOfEveryScalarType) {
    const auto step = TheStep<ReportStep>(R"({"report": {"event": "e", "seqID": "s", "extra": "x", "realtime": true,
        "params": {"text": "t", "integer": -9007199254740993, "number": 0.5, "flag": false, "nothing": null}}})");

    EXPECT_EQ(step.event, "e");
    EXPECT_EQ(step.seqID, "s");
    EXPECT_EQ(step.extra, "x");
    EXPECT_TRUE(step.isRealtime);
    EXPECT_TRUE(step.hasParams);
    ASSERT_THAT(step.params, SizeIs(5));
    EXPECT_EQ(std::get<std::string>(step.params.at("text")), "t");
    EXPECT_EQ(std::get<int64_t>(step.params.at("integer")), -9007199254740993);
    EXPECT_EQ(std::get<double>(step.params.at("number")), 0.5);
    EXPECT_FALSE(std::get<bool>(step.params.at("flag")));
    EXPECT_TRUE(std::holds_alternative<std::nullptr_t>(step.params.at("nothing")));
}

TEST_F(WorldTest, AnEventMayHaveNoParametersOrEmptyOnes) {
    EXPECT_FALSE(TheStep<ReportStep>(R"({"report": {"event": "e", "seqID": "s"}})").hasParams);
    EXPECT_TRUE(TheStep<ReportStep>(R"({"report": {"event": "e", "seqID": "s", "params": {}}})").hasParams);
}

// ---- Bad files

TEST_F(WorldTest, AMissingFileIsNamed) {
    LocatedError error;

    const auto world = LoadWorld(Path(), error);

    EXPECT_FALSE(world.has_value());
    EXPECT_THAT(error.text(), HasSubstr(Path() + ": "));
    EXPECT_THAT(error.remedy, Not(IsEmpty()));
}

TEST_F(WorldTest, AFileThatIsNotJsonIsShownAtItsPlace) {
    LocatedError error;

    const auto world = Load("{\n  \"question\": \"t\",\n  \"steps\": [}\n", error);

    EXPECT_FALSE(world.has_value());
    EXPECT_THAT(error.text(), HasSubstr(Path() + ":3:13: "));
}

TEST_F(WorldTest, AMissingMemberOfTheWorldIsNamed) {
    LocatedError noSteps;
    LocatedError noQuestion;

    EXPECT_FALSE(Load(R"({"question": "t"})", noSteps).has_value());
    EXPECT_FALSE(Load(R"({"steps": []})", noQuestion).has_value());

    EXPECT_THAT(noSteps.text(), HasSubstr(":1:1: "));
    EXPECT_THAT(noSteps.text(), HasSubstr("\"steps\""));
    EXPECT_THAT(noQuestion.text(), HasSubstr("\"question\""));
}

TEST_F(WorldTest, AnUnknownMemberOfTheWorldIsShownAtItsPlace) {
    LocatedError error;

    EXPECT_FALSE(Load(R"({"question": "t", "steps": [], "stepz": []})", error).has_value());

    EXPECT_THAT(error.text(), HasSubstr(":1:32: stepz: the key \"stepz\" is not known; did you mean \"steps\"? "));
}

TEST_F(WorldTest, TheFirstErrorIsTold) {
    LocatedError error;

    EXPECT_FALSE(Load(StepsOf("{\"note\": 1},\n{\"note\": 2}"), error).has_value());

    EXPECT_EQ(error.line, 4u);
}

struct BadStep {
    const char* name;
    const char* steps;    // From line 4 of the file on.
    const char* position; // LINE:COLUMN.
    const char* message;  // Of the error.
};

void PrintTo(const BadStep& bad, std::ostream* out) {
    *out << bad.name;
}

class BadStepTest : public WorldTest, public ::testing::WithParamInterface<BadStep> {};

INSTANTIATE_TEST_SUITE_P(
    Steps, BadStepTest,
    ::testing::Values(
        BadStep{"UnknownStep", R"({"logn": {}})", "4:2",
                "unknown step \"logn\"; did you mean \"login\"? use one of note, info-plist, configure, "},
        BadStep{"NoObject", R"("login")", "4:1", "a step"},
        BadStep{"NoMember", R"({})", "4:1", "a step has 0 members; write one object per step"},
        BadStep{"TwoMembers", R"({"note": "a", "collect": {}})", "4:1",
                "a step has 2 members; write one object per step"},
        BadStep{"SecondStep", "{\"note\": \"a\"},\n  {\"nte\": \"b\"}", "5:4", "unknown step \"nte\""},
        BadStep{"WrongType", R"({"note": 5})", "4:10", "\"note\""},
        BadStep{"WrongMemberType", R"({"login": {"methodID": "1", "seqID": "s", "permissions": ""}})", "4:24",
                "\"methodID\""},
        BadStep{"MissingMember", R"({"login": {"methodID": 1, "permissions": ""}})", "4:11", "\"seqID\""},
        BadStep{"UnknownMember", R"({"logout": {"methodID": 1, "seqID": "s", "seqid": "s"}})", "4:42", "\"seqid\""},
        BadStep{"RepeatedMember", R"({"logout": {"methodID": 1, "seqID": "s", "seqID": "s"}})", "4:42", "\"seqID\""},
        BadStep{"OutOfRange", R"({"logout": {"methodID": 2147483648, "seqID": "s"}})", "4:25",
                "\"methodID\" is out of range; use an integer from -2147483648 to 2147483647"},
        BadStep{"Fraction", R"({"logout": {"methodID": 1.5, "seqID": "s"}})", "4:25", "\"methodID\""},
        BadStep{"NegativeObserver", R"({"commit": {"observer": -1, "seqID": "s", "code": 0}})", "4:25",
                "\"observer\" is out of range; use an integer from 0 to 4294967295"},
        BadStep{"UnknownRecord", R"({"observe": {"record": "Ret", "observer": 1}})", "4:24",
                "unknown record \"Ret\"; use one of InnerBaseRet, InnerFriendRet, InnerLoginRet, InnerLoginPluginRet"},
        BadStep{"UnknownOutcome", R"({"answer-login": {"outcome": "maybe"}})", "4:30",
                "unknown outcome \"maybe\"; use one of success, "},
        BadStep{"UnknownThread", R"({"answer-login": {"outcome": "cancelled", "thread": "third"}})", "4:53",
                "unknown thread \"third\"; use one of main, background"},
        BadStep{"SuccessWithoutToken", R"({"answer-login": {"outcome": "success"}})", "4:18", "\"token\""},
        BadStep{"ErrorWithoutCode", R"({"answer-login": {"outcome": "error", "message": "m", "domain": "d"}})", "4:18",
                "\"code\""},
        BadStep{"ConfiguredNumber", R"({"configure": {"FACEBOOK_APP_ID": 12}})", "4:35", "\"FACEBOOK_APP_ID\""},
        BadStep{"CollectWithMember", R"({"collect": {"seqID": "s"}})", "4:14", "\"seqID\""},
        BadStep{"ListAsParameter", R"({"report": {"event": "e", "seqID": "s", "params": {"k": [1]}}})", "4:57",
                "the parameter \"k\" is an array; use a text, a number, true, false or null"},
        BadStep{"UnknownAnswer", R"({"launch": {"game": "maybe"}})", "4:21",
                "unknown game \"maybe\"; use one of YES, NO"},
        BadStep{"PlayerThatIsNone", R"({"player": "guest"})", "4:12",
                "unknown player \"guest\"; use one of nobody, facebook, gaming"},
        BadStep{"PlayerThatIsNoText", R"({"player": 1})", "4:12", "\"player\""},
        BadStep{"UnknownProfile", R"({"profile": "16.0"})", "4:13",
                "unknown profile \"16.0\"; did you mean \"15.0\"? use one of 15.0, 17.0, 18.0, 18.1, as-documented"},
        BadStep{"UnknownApp", R"({"apps": {"whatsapp": true}})", "4:11", "\"whatsapp\""},
        BadStep{"AppThatIsNoFlag", R"({"apps": {"facebook": 1}})", "4:23", "\"facebook\""},
        BadStep{"SchemesThatAreNoList", R"({"queries-schemes": "fbapi"})", "4:21", "\"queries-schemes\""},
        BadStep{"SchemeThatIsNoText", R"({"queries-schemes": ["fbapi", 5]})", "4:31",
                "an element of \"queries-schemes\""},
        BadStep{"UnknownPermission", R"({"photo-permission": "maybe"})", "4:22",
                "unknown photo-permission \"maybe\"; use one of not-asked, restricted, denied, authorized, limited"},
        BadStep{"PromptWithoutAnswer", R"({"answer-photo-prompt": {}})", "4:25", "\"permission\""},
        BadStep{"ShareWithoutType", R"({"share": {"methodID": 1, "seqID": "s", "observer": 1}})", "4:11", "\"type\""},
        BadStep{"ShareWithoutObserver", R"({"share": {"methodID": 1, "seqID": "s", "type": 1}})", "4:11",
                "\"observer\""},
        BadStep{"MessageWithUnknownMember", R"({"send-message": {"url": ""}})", "4:19", "\"url\""},
        BadStep{"SentWithoutRequest", R"({"answer-game-request": {"outcome": "sent"}})", "4:25", "\"request\""},
        BadStep{"RecipientThatIsNoText",
                R"({"answer-game-request": {"outcome": "sent", "request": "9", "recipients": [1]}})", "4:76",
                "an element of \"recipients\""},
        BadStep{"NegativeDialog", R"({"answer-share": {"outcome": "completed", "dialog": -1}})", "4:53",
                "\"dialog\" is out of range; use an integer from 0 to 2147483647"},
        BadStep{"ShareErrorWithoutText", R"({"answer-share": {"outcome": "error", "domain": "d", "code": 1}})", "4:18",
                "\"message\""},
        BadStep{"ProgressWithoutTotal", R"({"upload-progress": {"sent": 1}})", "4:21", "\"expected\""},
        BadStep{"UploadedWithoutPhoto", R"({"answer-image-upload": {"outcome": "uploaded"}})", "4:25", "\"photoID\""},
        BadStep{"UploadedWithoutVideo", R"({"answer-video-upload": {"outcome": "uploaded"}})", "4:25", "\"videoID\""},
        BadStep{"WrongFlag", R"({"report": {"event": "e", "seqID": "s", "realtime": 1}})", "4:53", "\"realtime\""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(BadStepTest, IsShownAtItsPlaceWithARemedy) {
    const BadStep& bad = GetParam();
    LocatedError error;

    const auto world = Load(StepsOf(bad.steps), error);

    EXPECT_FALSE(world.has_value());
    EXPECT_EQ(std::to_string(error.line) + ":" + std::to_string(error.column), bad.position);
    EXPECT_THAT(error.message + "; " + error.remedy, HasSubstr(bad.message));
    EXPECT_EQ(error.file, Path());
    EXPECT_THAT(error.remedy, Not(IsEmpty()));
}

} // namespace
} // namespace Tarvik::Vorn::Test
