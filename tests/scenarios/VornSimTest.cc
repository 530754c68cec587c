// vornsim as its users meet it: the tour's whole transcript, and what bad input is answered with. The program is run;
// addresses in its transcript are masked, everything else is compared to the letter.

#include "RunProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in.good()) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string WithoutAddresses(const std::string& text) {
    return std::regex_replace(text, std::regex("observer address 0x[0-9a-f]+"), "observer address 0x...");
}

class VornSimTest : public ::testing::Test {
protected:
    VornSimTest() {
        std::string pattern = ::testing::TempDir() + "vornsim-XXXXXX";
        mFolder = mkdtemp(pattern.data());
    }

    ~VornSimTest() override { std::filesystem::remove_all(mFolder); }

    // A file in this test's own folder.
    std::string Write(const std::string& name, const std::string& text) const {
        const std::filesystem::path path = mFolder / name;
        std::ofstream(path) << text;
        return path.string();
    }

    std::string PathOf(const std::string& name) const { return (mFolder / name).string(); }

    static ProgramResult Run(const std::string& config, const std::string& scenario) {
        return RunProgram({VORN_SIM, "run", "--plugin", std::getenv("VORN_SUBJECT"), "--config", config, scenario});
    }

    ProgramResult RunSteps(const std::string& steps) const {
        return Run(Write("config.json", "{}"),
                   Write("test.scenario.json", "{\n  \"title\": \"test\",\n  \"steps\": [\n" + steps + "\n  ]\n}\n"));
    }


private:
    std::filesystem::path mFolder;
};

// ---- The tour

TEST_F(VornSimTest, TheTourIsPlayedAsWrittenDown) {
    const std::string scenarios = VORN_SCENARIOS;

    const ProgramResult result = Run(scenarios + "/tour.config.json", scenarios + "/tour.scenario.json");

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.errors, IsEmpty());
    EXPECT_EQ(WithoutAddresses(result.output), ReadFile(std::string(VORN_EXPECTED) + "/tour.expected"));
}

TEST_F(VornSimTest, TheConfigurationFileReachesThePlugin) {
    const std::string scenario = Write("game.scenario.json", R"({"title": "t", "steps": [
        {"sdk-version": "6.4.0"},
        {"login": {"methodID": 1, "seqID": "s", "permissions": "email"}}]})");

    const ProgramResult game = Run(Write("game.json", R"({"FACEBOOK_LOGIN_MODE": "Game"})"), scenario);
    const ProgramResult app = Run(Write("app.json", R"({"FACEBOOK_LOGIN_MODE": "App"})"), scenario);

    EXPECT_THAT(game.output, HasSubstr("gaming_profile"));
    EXPECT_THAT(app.output, Not(HasSubstr("gaming_profile")));
}

TEST_F(VornSimTest, AnAnswerWithoutALoginCannotBePlayed) {
    const ProgramResult result = RunSteps(R"({"answer-login": {"outcome": "cancelled"}})");

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("no login is under way; put a \"login\" step before this answer"));
}

TEST_F(VornSimTest, AResultIsPrintedInOneLineWhateverItsTexts) {
    const ProgramResult result = RunSteps(R"(
      {"observe": {"record": "InnerLoginRet", "observer": 101}},
      {"login": {"methodID": 1, "seqID": "s", "permissions": "email"}},
      {"answer-login": {"outcome": "error", "domain": "d", "code": 3, "message": "two\nlines and a \"quote\""}})");

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr(R"(thirdMsg: "two\nlines and a \"quote\"")"));
}

TEST_F(VornSimTest, AnSdkWithoutAVersionCanBePlayed) {
    const ProgramResult result = RunSteps(R"(
      {"sdk-version": null},
      {"login": {"methodID": 1, "seqID": "s", "subChannel": "Game", "permissions": "email"}})");

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("facebook sdk version is too low"));
}

TEST_F(VornSimTest, ARemovedObserverLeavesResultsInTheCache) {
    const ProgramResult result = RunSteps(R"(
      {"observe": {"record": "InnerBaseRet", "observer": 108}},
      {"remove-observer": {"record": "InnerBaseRet", "observer": 108}},
      {"logout": {"methodID": 1, "seqID": "s"}},
      {"collect": {}})");

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("0 collected, 1 still wait for an observer"));
}

// ---- Bad scenarios

TEST_F(VornSimTest, AMissingScenarioIsNamed) {
    const ProgramResult result = Run(Write("config.json", "{}"), PathOf("none.json"));

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + PathOf("none.json") + ": "));
    EXPECT_THAT(result.errors, HasSubstr("; "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, InvalidJsonInAScenarioIsShownAtItsPlace) {
    const std::string path = Write("bad.json", "{\n  \"title\": \"t\",\n  \"steps\": [}\n");

    const ProgramResult result = Run(Write("config.json", "{}"), path);

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + path + ":3:13: "));
    EXPECT_THAT(result.output, IsEmpty());
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

class BadStepTest : public VornSimTest, public ::testing::WithParamInterface<BadStep> {};

INSTANTIATE_TEST_SUITE_P(
    Steps, BadStepTest,
    ::testing::Values(
        BadStep{"UnknownStep", R"({"logn": {}})", "4:2", "unknown step \"logn\"; use one of note, configure, "},
        BadStep{"NoObject", R"("login")", "4:1", "a step"},
        BadStep{"NoMember", R"({})", "4:1", "a step has 0 members; write one object per step"},
        BadStep{"TwoMembers", R"({"note": "a", "collect": {}})", "4:1", "a step has 2 members; write one object per step"},
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
        BadStep{"CollectWithMember", R"({"collect": {"seqID": "s"}})", "4:14", "\"seqID\""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(BadStepTest, IsShownAtItsPlaceAndNothingIsRun) {
    const BadStep& bad = GetParam();

    const ProgramResult result = RunSteps(bad.steps);

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr(PathOf("test.scenario.json") + ":" + bad.position + ": "));
    EXPECT_THAT(result.errors, HasSubstr(bad.message));
    EXPECT_THAT(result.errors, HasSubstr("; ")); // What to do about it.
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AScenarioWithoutStepsIsRefused) {
    const std::string path = Write("bad.json", "{\"title\": \"t\"}");

    const ProgramResult result = Run(Write("config.json", "{}"), path);

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr(path + ":1:1: "));
    EXPECT_THAT(result.errors, HasSubstr("\"steps\""));
}

// ---- Bad configurations, a bad plugin, a bad command line

TEST_F(VornSimTest, AMissingConfigurationIsNamedAndNothingIsRun) {
    const ProgramResult result = Run(PathOf("none.json"), std::string(VORN_SCENARIOS) + "/tour.scenario.json");

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + PathOf("none.json") + ": "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AConfigurationWithAWrongTypeIsShownAtItsPlace) {
    const std::string config = Write("config.json", "{\n  \"FACEBOOK_APP_ID\": 12\n}");

    const ProgramResult result = Run(config, std::string(VORN_SCENARIOS) + "/tour.scenario.json");

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + config + ":2:22: "));
    EXPECT_THAT(result.errors, HasSubstr("FACEBOOK_APP_ID"));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AConfigurationThatIsNotJsonIsShownAtItsPlace) {
    const std::string config = Write("config.json", "FACEBOOK_APP_ID=12");

    const ProgramResult result = Run(config, std::string(VORN_SCENARIOS) + "/tour.scenario.json");

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + config + ":1:1: "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AMissingPluginIsNamedAndNothingIsRun) {
    const std::string scenarios = VORN_SCENARIOS;

    const ProgramResult result = RunProgram({VORN_SIM, "run", "--plugin", PathOf("libNone.so"), "--config",
                                             scenarios + "/tour.config.json", scenarios + "/tour.scenario.json"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr(PathOf("libNone.so")));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AnUnknownOptionIsRefused) {
    const ProgramResult result = RunProgram({VORN_SIM, "run", "--colour", "x"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, Not(IsEmpty()));
}

TEST_F(VornSimTest, HelpAndVersionAreNoErrors) {
    const ProgramResult help = RunProgram({VORN_SIM, "--help"});
    const ProgramResult version = RunProgram({VORN_SIM, "--version"});

    EXPECT_EQ(help.exitStatus, 0);
    EXPECT_THAT(help.output, HasSubstr("run"));
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_EQ(version.output, "vornsim 5.30.001.7206\n");
}

} // namespace
} // namespace Tarvik::Vorn::Test
