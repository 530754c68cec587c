// vornsim as its users meet it: a whole timeline of everything, and what bad input is answered with. The program is run;
// the project's own folder is masked in its output, everything else is compared to the letter.

#include "RunProgram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in.good()) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// Without the line that tells where the binary that ships lies.
std::string WithoutImage(const std::string& errors) {
    return errors.starts_with("image ") ? errors.substr(errors.find('\n') + 1) : errors;
}

// Without what differs from one machine to the next: where the project lies.
std::string Masked(std::string text) {
    const std::string here = VORN_EXPECTED;
    for (size_t at = text.find(here); at != std::string::npos; at = text.find(here, at)) {
        text.replace(at, here.size(), "...");
    }
    return text;
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

    // Plays worlds with the subject of the tests.
    static ProgramResult Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {VORN_SIM, "run", "--plugin", std::getenv("VORN_SUBJECT")});
        return RunProgram(arguments);
    }

    // A world with these steps, and with nobody listening unless a step says so.
    std::string WorldOf(const std::string& steps, const std::string& more = "") const {
        return Write("test.world.json", "{\n  \"question\": \"test\",\n  \"observers\": [],\n  \"steps\": [\n" + steps +
                                            "\n  ]" + more + "\n}\n");
    }

    ProgramResult RunSteps(const std::string& steps, const std::string& more = "") const {
        return Run({"--order", "time", WorldOf(steps, more)});
    }

private:
    std::filesystem::path mFolder;
};

// ---- Everything

TEST_F(VornSimTest, EverythingIsPlayedAsWrittenDown) {
    const std::string folder = VORN_EXPECTED;

    const ProgramResult result = Run({"--order", "time", folder + "/everything.world.json"});

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(WithoutImage(result.errors), IsEmpty());
    EXPECT_EQ(Masked(result.output), ReadFile(folder + "/everything.expected"));
}

TEST_F(VornSimTest, AReplayIsEqualToTheByte) {
    const std::string world = std::string(VORN_EXPECTED) + "/everything.world.json";

    const ProgramResult first = Run({"--format", "json", world});
    const ProgramResult second = Run({"--format", "json", world});

    EXPECT_EQ(first.output, second.output);
}

TEST_F(VornSimTest, WithoutAWorldTheTourIsPlayed) {
    const ProgramResult result = Run({});

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("share-completed: "));
    EXPECT_THAT(result.output, HasSubstr("video-upload-progress: "));
}

TEST_F(VornSimTest, TheConfigurationFileReachesThePluginBeforeTheWorldsOwn) {
    const std::string world = WorldOf(R"(
        {"sdk-version": "6.4.0"},
        {"login": {"methodID": 1, "seqID": "s", "permissions": "email"}},
        {"configure": {"FACEBOOK_LOGIN_MODE": "App"}},
        {"login": {"methodID": 1, "seqID": "t", "permissions": "public_profile"}})");

    const ProgramResult game = Run({"--config", Write("game.json", R"({"FACEBOOK_LOGIN_MODE": "Game"})"), world});
    const ProgramResult app = Run({"--config", Write("app.json", R"({"FACEBOOK_LOGIN_MODE": "App"})"), world});

    EXPECT_THAT(game.output, HasSubstr(R"(["email","gaming_profile","gaming_user_picture"])"));
    EXPECT_THAT(game.output, HasSubstr(R"(["public_profile"])"));
    EXPECT_THAT(app.output, Not(HasSubstr("gaming_profile")));
}

TEST_F(VornSimTest, AnAccessTokenIsShownOnlyWhenAskedFor) {
    const std::string world = WorldOf(R"(
        {"observe": {"record": "InnerLoginPluginRet", "observer": 109}},
        {"login": {"methodID": 1, "seqID": "s", "permissions": "email"}},
        {"answer-login": {"outcome": "success", "token": "EAAB-secret"}})");

    const ProgramResult hidden = Run({world});
    const ProgramResult shown = Run({"--show-tokens", world});

    EXPECT_THAT(hidden.output, Not(HasSubstr("EAAB-secret")));
    EXPECT_THAT(hidden.output, HasSubstr(R"(channelInfo: "{\"access_token\":\"<11 bytes>\"}")"));
    EXPECT_THAT(shown.output, HasSubstr(R"(channelInfo: "{\"access_token\":\"EAAB-secret\"}")"));
}

// ---- What cannot be played

// A request whose dialog does not open, and then an answer to it.
struct Unanswerable {
    const char* name;
    const char* request;
    const char* answer;
    const char* reason;
};

class VornSimUnanswerable : public VornSimTest, public ::testing::WithParamInterface<Unanswerable> {};

TEST_P(VornSimUnanswerable, IsSaidWithWhatIsMissing) {
    const ProgramResult result = RunSteps(std::string(GetParam().request) + ", " + GetParam().answer);

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr(std::string("problem    ") + GetParam().reason));
}

constexpr const char* kRefusedShare =
    R"({"share": {"methodID": 414, "seqID": "s", "observer": 1, "type": "link", "link": ""}})";

INSTANTIATE_TEST_SUITE_P(
    Answers, VornSimUnanswerable,
    ::testing::Values(
        Unanswerable{"Login", R"({"login": {"methodID": 1, "seqID": "l", "permissions": "NO"}})",
                     R"({"answer-login": {"outcome": "cancelled"}})",
                     "no login is under way; put a \"login\" step before this answer"},
        Unanswerable{"FriendFinder", R"({"add-friend": {"methodID": 1, "seqID": "a", "observer": 1}})",
                     R"({"answer-friend-finder": {"outcome": "returned"}})",
                     "no friend finder is open; put an \"add-friend\" of a gaming login before this answer"},
        Unanswerable{"GameRequest",
                     R"({"send-message": {"methodID": 1, "seqID": "i", "observer": 1, "type": "invitation"}})",
                     R"({"answer-game-request": {"outcome": "closed"}})",
                     "no such game request is open; put a \"send-message\" of type \"invitation\" before this answer"},
        Unanswerable{"Share", kRefusedShare, R"({"answer-share": {"outcome": "completed"}})",
                     "no such dialog is open; put a \"share\" or a \"send-message\" before this answer"},
        Unanswerable{"Prompt", kRefusedShare, R"({"answer-photo-prompt": {"permission": "denied"}})",
                     "nobody has asked for the photo library; put a \"share\" of a video before this answer"},
        Unanswerable{"Saving", kRefusedShare, R"({"finish-saving": {"outcome": "saved"}})",
                     "nothing is being saved; put a \"share\" of a video file before this answer"},
        Unanswerable{"ImageUpload", kRefusedShare,
                     R"({"answer-image-upload": {"outcome": "uploaded", "photoID": "7"}})",
                     "no such image is being uploaded; put a \"share\" of an image with a gaming login before this "
                     "answer"},
        Unanswerable{"Progress", kRefusedShare, R"({"upload-progress": {"sent": 1, "expected": 2}})",
                     "no such video is being uploaded; put a \"share\" of a video with a gaming login before this "
                     "step"},
        Unanswerable{"VideoUpload", kRefusedShare, R"({"answer-video-upload": {"outcome": "server-refused"}})",
                     "no such video is being uploaded, or its upload never ends; put a \"share\" of a video with a "
                     "gaming login before this answer"}),
    [](const auto& info) { return std::string(info.param.name); });

// ---- Worlds

TEST_F(VornSimTest, FilesOfAWorldAreLookedForBesideIt) {
    std::filesystem::copy_file(std::string(VORN_WORLDS) + "/../media/picture.png", PathOf("mine.png"));

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

// ---- Expectations

constexpr const char* kCancelledShare = R"(
      {"observe": {"record": "InnerBaseRet", "observer": 31}},
      {"share": {"methodID": 211, "seqID": "s", "observer": 31, "type": "link", "link": "https://example.com",
                 "answers": [{"answer-share": {"outcome": "cancelled", "after": "2 s"}}]}})";

TEST_F(VornSimTest, ExpectationsThatHoldEndWell) {
    const ProgramResult result = RunSteps(
        kCancelledShare, R"(, "expect": {"results": [{"observer": 31, "retCode": 2, "at": "2 s"}], "audit": []})");

    EXPECT_EQ(result.exitStatus, 0) << result.output;
}

TEST_F(VornSimTest, AnExpectationThatDoesNotHoldIsShownWithTheNearestResultAndTheFieldThatDiffers) {
    const ProgramResult result = RunSteps(kCancelledShare, R"(,
  "expect": {"results": [{"observer": 31, "seqID": "s", "retCode": 0}]})");

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, HasSubstr("test.world.json:10:26"));
    EXPECT_THAT(result.output, HasSubstr("expected: result 1: a result with observer 31, seqID \"s\", retCode 0"));
    EXPECT_THAT(result.output, HasSubstr("found:    the nearest is result 1, whose retCode is 2 instead of 0"));
}

TEST_F(VornSimTest, WithoutOutputWhatDoesNotHoldIsToldAsAnError) {
    const ProgramResult result = Run({"--format", "none", WorldOf(kCancelledShare, R"(, "expect": {"results": []})")});

    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.output, IsEmpty());
    EXPECT_THAT(result.errors, HasSubstr("expected 0 results; found one more: InnerBaseRet for observer 31"));
}

TEST_F(VornSimTest, OneWorldThatDoesNotHoldIsEnough) {
    const std::string bad = WorldOf(kCancelledShare, R"(, "expect": {"results": []})");

    EXPECT_EQ(Run({"--format", "none", bad, "share-cancelled"}).exitStatus, 1);
    EXPECT_EQ(Run({"--format", "none", "share-cancelled", bad}).exitStatus, 1);
}

// ---- Bad worlds

TEST_F(VornSimTest, AMissingWorldIsNamedWithTheNearestName) {
    const ProgramResult result = Run({"share-canceled"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              "vornsim: share-canceled: there is no such file and no shipped world of that name; did you "
              "mean \"share-cancelled\"? `vornsim worlds` lists them\n");
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, InvalidJsonInAWorldIsShownAtItsPlace) {
    const std::string path = Write("bad.json", "{\n  \"question\": \"t\",\n  \"steps\": [}\n");

    const ProgramResult result = Run({path});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + path + ":3:13: "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, ABadStepIsShownAtItsPlaceAndNothingIsRun) {
    const ProgramResult result = RunSteps("    {\"note\": \"played\"},\n    {\"shar\": {}}");

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, StartsWith("vornsim: " + PathOf("test.world.json") +
                                          ":6:6: steps[1].shar: unknown step \"shar\"; did you mean \"share\"? "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, ABadWorldAmongGoodOnesLetsNothingRun) {
    const ProgramResult result = Run({"share-cancelled", Write("bad.json", "{}")});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AWorldOfManyMegabytesIsRefused) {
    const std::string path = Write("great.world.json", std::string(size_t{17} * 1024 * 1024, ' '));

    const ProgramResult result = Run({path});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.errors,
              "vornsim: " + path + ": is greater than 16 MiB; use \"repeat\" instead of writing steps again\n");
}

TEST_F(VornSimTest, ADeeplyNestedWorldIsRefused) {
    const std::string path = Write("deep.world.json", std::string(100000, '['));

    const ProgramResult result = Run({path});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("nested more than 512 deep"));
}

TEST_F(VornSimTest, AFolderIsNoWorld) {
    const ProgramResult result = Run({"/tmp"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("/tmp: is not a file; "));
}

// ---- Bad configurations, a bad plugin, a bad command line

TEST_F(VornSimTest, AMissingConfigurationIsNamedAndNothingIsRun) {
    const ProgramResult result = Run({"--config", PathOf("none.json"), "share-cancelled"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + PathOf("none.json") + ": "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AConfigurationWithAWrongTypeIsShownAtItsPlace) {
    const std::string config = Write("config.json", "{\n  \"FACEBOOK_APP_ID\": 12\n}");

    const ProgramResult result = Run({"--config", config, "share-cancelled"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + config + ":2:22: "));
    EXPECT_THAT(result.errors, HasSubstr("FACEBOOK_APP_ID"));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, AConfigurationThatIsNotJsonIsShownAtItsPlace) {
    const std::string config = Write("config.json", "FACEBOOK_APP_ID=12");

    const ProgramResult result = Run({"--config", config, "share-cancelled"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("vornsim: " + config + ":1:1: "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, WithoutAPluginOptionThePluginOfTheSameBuildIsLoaded) {
    const ProgramResult result = RunProgram({VORN_SIM, "run", WorldOf(R"({"init-stat": {}})")});

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("Facebook Report init"));
}

TEST_F(VornSimTest, AMissingPluginIsNamedAndNothingIsRun) {
    const ProgramResult result = RunProgram({VORN_SIM, "run", "--plugin", PathOf("libNone.so"), "share-cancelled"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr(PathOf("libNone.so")));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST_F(VornSimTest, ABadSeedIsRefused) {
    const ProgramResult result = Run({"--seed", "one", "share-cancelled"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr("\"one\" is no seed; use an integer from 0 on, or random"));
}

TEST_F(VornSimTest, AnUnknownOptionIsRefused) {
    const ProgramResult result = RunProgram({VORN_SIM, "run", "--colour", "x"});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, Not(IsEmpty()));
}

TEST_F(VornSimTest, WithoutATerminalThereIsNoColour) {
    EXPECT_THAT(Run({"share-cancelled"}).output, Not(HasSubstr("\x1b")));
}

// ---- Other commands

TEST_F(VornSimTest, TheShippedWorldsAreListedWithTheirQuestions) {
    const ProgramResult text = RunProgram({VORN_SIM, "worlds"});
    const ProgramResult json = RunProgram({VORN_SIM, "worlds", "--format", "json"});

    EXPECT_EQ(text.exitStatus, 0) << text.errors;
    EXPECT_THAT(text.output, HasSubstr("share-cancelled "));
    EXPECT_THAT(json.output, StartsWith(R"({"format":1,"worlds":[)"));
    EXPECT_THAT(json.output, HasSubstr(R"("name":"share-cancelled")"));
}

TEST_F(VornSimTest, ANewWorldCanBePlayedAndHolds) {
    const ProgramResult written = RunProgram({VORN_SIM, "new", PathOf("mine")});
    const ProgramResult played = Run({PathOf("mine.world.json")});

    EXPECT_EQ(written.exitStatus, 0) << written.errors;
    EXPECT_EQ(played.exitStatus, 0) << played.output;
}

TEST_F(VornSimTest, ANewWorldReplacesNothing) {
    const std::string path = Write("mine.world.json", "precious");

    const ProgramResult result = RunProgram({VORN_SIM, "new", PathOf("mine")});

    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_THAT(result.errors, HasSubstr(path + ": File exists; choose another name"));
    EXPECT_EQ(ReadFile(path), "precious");
}

TEST_F(VornSimTest, AResultIsExplained) {
    const ProgramResult result = RunProgram({VORN_SIM, "explain", "211", "15"});

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("fbauth2"));
}

TEST_F(VornSimTest, TheDoctorReadsAnInfoPlist) {
    const std::string path = Write("Info.plist", "<plist version=\"1.0\"><dict/></plist>");

    const ProgramResult result = RunProgram({VORN_SIM, "doctor", path});

    EXPECT_EQ(result.exitStatus, 1) << result.errors;
    EXPECT_THAT(result.output, HasSubstr("FacebookAppID"));
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
