// vornsim as its users meet it: the tour's whole transcript, and what bad input is answered with. The program is run;
// addresses and the project's own folder are masked in its transcript, everything else is compared to the letter.

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

// Without what differs from one machine to the next: addresses, and where the project lies.
std::string Masked(const std::string& text) {
    const std::string withoutAddresses =
        std::regex_replace(text, std::regex("observer address 0x[0-9a-f]+"), "observer address 0x...");
    const std::string here = std::string("file://") + VORN_SCENARIOS;
    std::string masked = withoutAddresses;
    for (size_t at = masked.find(here); at != std::string::npos; at = masked.find(here, at)) {
        masked.replace(at, here.size(), "file://...");
    }
    return masked;
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
    EXPECT_EQ(Masked(result.output), ReadFile(std::string(VORN_EXPECTED) + "/tour.expected"));
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

TEST_F(VornSimTest, AnAccessTokenIsShownOnlyWhenAskedFor) {
    const std::string config = Write("config.json", "{}");
    const std::string scenario = Write("token.scenario.json", R"({"title": "t", "steps": [
        {"observe": {"record": "InnerLoginPluginRet", "observer": 109}},
        {"login": {"methodID": 1, "seqID": "s", "permissions": "email"}},
        {"answer-login": {"outcome": "success", "token": "EAAB-secret"}}]})");

    const ProgramResult hidden = Run(config, scenario);
    const ProgramResult shown = RunProgram(
        {VORN_SIM, "run", "--show-tokens", "--plugin", std::getenv("VORN_SUBJECT"), "--config", config, scenario});

    EXPECT_THAT(hidden.output, Not(HasSubstr("EAAB-secret")));
    EXPECT_THAT(hidden.output, HasSubstr(R"(channelInfo: "{\"access_token\":\"<11 bytes>\"}")"));
    EXPECT_THAT(shown.output, HasSubstr(R"(channelInfo: "{\"access_token\":\"EAAB-secret\"}")"));
}

TEST_F(VornSimTest, AnAnswerWithoutALoginCannotBePlayed) {
    const ProgramResult result = RunSteps(R"({"answer-login": {"outcome": "cancelled"}})");

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("no login is under way; put a \"login\" step before this answer"));
}

struct Unanswerable {
    const char* name;
    const char* step;
    const char* reason;
};

class VornSimUnanswerable : public VornSimTest, public ::testing::WithParamInterface<Unanswerable> {};

TEST_P(VornSimUnanswerable, IsSaidWithWhatIsMissing) {
    const ProgramResult result = RunSteps(GetParam().step);

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr(std::string("  error     ") + GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Answers, VornSimUnanswerable,
    ::testing::Values(
        Unanswerable{"FriendFinder", R"({"answer-friend-finder": {"outcome": "returned"}})",
                     "no friend finder is open; put an \"add-friend\" of a gaming login before this answer"},
        Unanswerable{"GameRequest", R"({"answer-game-request": {"outcome": "closed"}})",
                     "no such game request is open; put a \"send-message\" of type 10003 before this answer"},
        Unanswerable{"Share", R"({"answer-share": {"outcome": "completed"}})",
                     "no such dialog is open; put a \"share\" or a \"send-message\" before this answer"},
        Unanswerable{"Prompt", R"({"answer-photo-prompt": {"permission": "denied"}})",
                     "nobody has asked for the photo library; put a \"share\" of a video before this answer"},
        Unanswerable{"Saving", R"({"finish-saving": {"outcome": "saved"}})",
                     "nothing is being saved; put a \"share\" of a video file before this answer"},
        Unanswerable{"ImageUpload", R"({"answer-image-upload": {"outcome": "uploaded", "photoID": "7"}})",
                     "no such image is being uploaded; put a \"share\" of an image with a gaming login before this "
                     "answer"},
        Unanswerable{"Progress", R"({"upload-progress": {"sent": 1, "expected": 2}})",
                     "no such video is being uploaded; put a \"share\" of a video with a gaming login before this "
                     "step"},
        Unanswerable{"VideoUpload", R"({"answer-video-upload": {"outcome": "server-refused"}})",
                     "no such video is being uploaded, or its upload never ends; put a \"share\" of a video with a "
                     "gaming login before this answer"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(VornSimTest, FilesOfAScenarioAreLookedForBesideIt) {
    std::filesystem::copy_file(std::string(VORN_SCENARIOS) + "/../media/picture.png", PathOf("mine.png"));

    const ProgramResult result = RunSteps(
        R"({"share": {"methodID": 414, "seqID": "s", "observer": 1, "type": 10002, "imagePath": "mine.png"}})");

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, HasSubstr("image : <UIImage: 64x48>"));
}

TEST_F(VornSimTest, NoTokenOfAPlayerIsShown) {
    const ProgramResult result = RunSteps(R"(
      {"player": "gaming"},
      {"add-friend": {"methodID": 1, "seqID": "s", "observer": 1}},
      {"share": {"methodID": 414, "seqID": "s", "observer": 1, "type": 10001, "link": "https://example.com"}})");

    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, Not(HasSubstr("access-token")));
    EXPECT_THAT(result.output, Not(HasSubstr("authentication-token")));
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

TEST_F(VornSimTest, ABadStepIsShownAtItsPlaceAndNothingIsRun) {
    const ProgramResult result = RunSteps("    {\"note\": \"played\"},\n    {\"logn\": {}}");

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              "vornsim: " + PathOf("test.scenario.json") +
                  ":5:6: unknown step \"logn\"; use one of note, configure, sdk-version, observe, "
                  "remove-observer, login, answer-login, logout, commit, collect, launch, open-url, activate, "
                  "init-stat, report, player, profile, apps, queries-schemes, photo-permission, answer-photo-prompt, "
                  "send-message, share, add-friend, query-friends, answer-friend-finder, answer-game-request, "
                  "answer-share, finish-saving, answer-image-upload, upload-progress, answer-video-upload\n");
    EXPECT_THAT(result.output, IsEmpty());
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

TEST_F(VornSimTest, WithoutAPluginOptionThePluginOfTheSameBuildIsLoaded) {
    const std::string scenario = Write("one.scenario.json", R"({"title": "t", "steps": [{"init-stat": {}}]})");

    const ProgramResult result = RunProgram({VORN_SIM, "run", "--config", Write("config.json", "{}"), scenario});

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("Facebook Report init"));
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
