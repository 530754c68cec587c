// The command as its users meet it: text, JSON, errors and exit status. Also the helpers of all tests of the folder.

#include "ExplainTest.h"

#include "explain/Explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string_view>

namespace Tarvik::Vorn::Test {

using Simulator::ExplainQuestion;
using namespace Simulator::Explaining;

ParsedQuestion Parsed(const ExplainQuestion& typed) {
    const std::variant<ParsedQuestion, std::string> parsed = ParseQuestion(typed);
    if (const auto* const problem = std::get_if<std::string>(&parsed)) {
        ADD_FAILURE() << *problem;
        return {};
    }
    return std::get<ParsedQuestion>(parsed);
}

std::vector<std::string> CausesOf(const ExplainQuestion& typed) {
    std::vector<std::string> ids;
    for (const Cause* const cause : Explain(Parsed(typed))) {
        ids.emplace_back(cause->id);
    }
    return ids;
}

namespace {

// A file in memory; the text that was written to it.
class MemoryFile {
public:
    MemoryFile() : mFile(open_memstream(&mText, &mSize)) {}
    ~MemoryFile() {
        std::fclose(mFile);
        std::free(mText); // NOLINT(cppcoreguidelines-no-malloc): open_memstream says so.
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::FILE* Get() const { return mFile; }
    std::string Text() const {
        std::fflush(mFile);
        return {mText, mSize};
    }

private:
    char* mText = nullptr;
    size_t mSize = 0;
    std::FILE* mFile;
};

} // namespace

Printed Print(const ExplainQuestion& typed, bool json) {
    const MemoryFile out;
    const MemoryFile err;
    const int exitStatus = Simulator::RunExplain(typed, json, out.Get(), err.Get());
    return {exitStatus, out.Text(), err.Text()};
}

std::filesystem::path InProject(const std::string& path) {
    return std::filesystem::path(VORN_SOURCE_DIRECTORY) / path;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in.good()) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::vector<std::string> KeysOf(const rapidjson::Value& object) {
    std::vector<std::string> keys;
    for (const auto& member : object.GetObject()) {
        keys.emplace_back(member.name.GetString());
    }
    return keys;
}

rapidjson::Document Json(const ExplainQuestion& typed) {
    rapidjson::Document document;
    document.Parse(Print(typed, true).output.c_str());
    EXPECT_FALSE(document.HasParseError());
    return document;
}

TEST(ExplainTest, TextNamesTheQuestionAndEachCauseWithChecksWorldAndPage) {
    const Printed printed = Print({"logout", "0", "", ""}, false);

    EXPECT_EQ(printed.exitStatus, 0);
    EXPECT_THAT(printed.errors, IsEmpty());
    EXPECT_EQ(printed.output,
              "logout, retCode 0\n"
              "There is one possible cause.\n"
              "\n"
              "1. logout-done (logout)\n"
              "   The player is logged out, whether or not anybody was logged in: a logout only forgets the\n"
              "   tokens of the device and cannot fail. Its result goes to observer 108 and has methodNameID 0.\n"
              "   Check: Nothing: this is a logout's only result.\n"
              "   See:   vornsim run logout\n"
              "   Read:  docs/ARCHITECTURE.md#kept-behaviours\n");
}

TEST(ExplainTest, TextCountsSeveralCausesAndNumbersThem) {
    const Printed printed = Print({"212", "15", "15", "Messenger isn't installed"}, false);

    EXPECT_THAT(printed.output, StartsWith("methodNameID 212, retCode 15, thirdCode 15\n"
                                           "text: Messenger isn't installed\n"
                                           "3 possible causes, the most likely first.\n"
                                           "\n"
                                           "1. messenger-not-installed (send-message)\n"));
    EXPECT_THAT(printed.output, HasSubstr("\n2. messenger-scheme-missing (send-message)\n"));
}

TEST(ExplainTest, TextIsNeverWiderThanALine) {
    for (const char* const method :
         {"login", "logout", "share", "send-message", "invite", "add-friend", "query-friends"}) {
        for (const char* const code : {"0", "2", "7", "8", "10", "11", "12", "15", "9999", "none"}) {
            std::istringstream lines(Print({method, code, "", ""}, false).output);
            for (std::string line; std::getline(lines, line);) {
                EXPECT_LE(line.size(), 96U) << line;
            }
        }
    }
}

TEST(ExplainTest, UnknownResultsAreSaidToBeSomebodyElsesAndShowTheNearestWithTheirCodes) {
    const Printed printed = Print({"login", "9999", "0", ""}, false);
    const Printed unknown = Print({"logout", "9999", "", ""}, false);

    EXPECT_THAT(printed.output, Not(HasSubstr("never commits")));
    EXPECT_EQ(unknown.exitStatus, 0);
    EXPECT_THAT(unknown.output, StartsWith("logout, retCode 9999\n"
                                           "The plugin never commits such a result. A core or a game of its own may"));
    EXPECT_THAT(unknown.output, HasSubstr(": retCode 9999, thirdCode 8)\n"));
}

TEST(ExplainTest, TextThatTellsNothingIsSaidToTellNothing) {
    const Printed telling = Print({"share", "2", "", "cancelled by the user"}, false);
    const Printed strange = Print({"share", "2", "", "what else"}, false);

    EXPECT_THAT(telling.output, Not(HasSubstr("The text told nothing")));
    EXPECT_THAT(strange.output, HasSubstr("The text told nothing"));
}

TEST(ExplainTest, ControlCharactersOfATextDoNotReachTheTerminal) {
    const Printed printed = Print({"share", "2", "0", "\x1b[2J"}, false);

    EXPECT_THAT(printed.output, HasSubstr("text: \\x1b[2J\n"));
}

TEST(ExplainTest, JsonHasAllKeysInTheirOrder) {
    const rapidjson::Document document = Json({"share", "12", "", ""});

    EXPECT_THAT(KeysOf(document), ElementsAre("format", "question", "known", "textTelling", "causes"));
    EXPECT_THAT(KeysOf(document["question"]), ElementsAre("request", "methodNameID", "retCode", "thirdCode", "text"));
    EXPECT_THAT(KeysOf(document["causes"][0]),
                ElementsAre("id", "requests", "retCodes", "thirdCodes", "cause", "checks", "world", "page"));
}

TEST(ExplainTest, JsonHasTheQuestionAndTheCauses) {
    const rapidjson::Document document = Json({"-1", "0", "0", "finder \xff"});

    EXPECT_EQ(document["format"].GetInt(), 1);
    EXPECT_TRUE(document["question"]["request"].IsNull());
    EXPECT_EQ(document["question"]["methodNameID"].GetInt(), -1);
    EXPECT_EQ(document["question"]["retCode"].GetInt(), 0);
    EXPECT_EQ(document["question"]["thirdCode"].GetInt(), 0);
    EXPECT_STREQ(document["question"]["text"].GetString(), "finder \xEF\xBF\xBD");
    EXPECT_TRUE(document["known"].GetBool());
    EXPECT_FALSE(document["textTelling"].GetBool());
    const rapidjson::Value& cause = document["causes"][0];
    EXPECT_STREQ(cause["id"].GetString(), "friend-finder-before-any-request");
    EXPECT_STREQ(cause["requests"][0].GetString(), "add-friend");
    EXPECT_EQ(cause["retCodes"][0].GetInt(), 0);
    EXPECT_EQ(cause["retCodes"][1].GetInt(), 0);
    EXPECT_EQ(cause["thirdCodes"][1].GetInt(), 0);
    EXPECT_EQ(cause["checks"].Size(), 1U);
    EXPECT_STREQ(cause["world"].GetString(), "friend-finder-before-any-request");
    EXPECT_STREQ(cause["page"].GetString(), "docs/ARCHITECTURE.md#kept-behaviours");
}

TEST(ExplainTest, JsonHasNullForWhatDoesNotExist) {
    const rapidjson::Document document = Json({"login", "none", "", ""});

    EXPECT_STREQ(document["question"]["request"].GetString(), "login");
    EXPECT_TRUE(document["question"]["methodNameID"].IsNull());
    EXPECT_TRUE(document["question"]["retCode"].IsNull());
    EXPECT_TRUE(document["question"]["thirdCode"].IsNull());
    EXPECT_TRUE(document["causes"][0]["retCodes"].IsNull());
    EXPECT_TRUE(document["causes"][0]["thirdCodes"].IsNull());
}

TEST(ExplainTest, BadArgumentsPrintAnErrorAloneAndExitWith2) {
    const Printed printed = Print({"shar", "2", "", ""}, true);

    EXPECT_EQ(printed.exitStatus, 2);
    EXPECT_THAT(printed.output, IsEmpty());
    EXPECT_THAT(printed.errors, StartsWith("vornsim: explain: METHOD \"shar\": expected "));
}

} // namespace
} // namespace Tarvik::Vorn::Test
