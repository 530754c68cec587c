// What must hold for every row of the table of causes.

#include "ExplainTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Explaining;
using ::testing::Contains;
using ::testing::MatchesRegex;

// The anchors of a document's headings, as Markdown's readers make them.
std::set<std::string> AnchorsOf(const std::string& document) {
    std::set<std::string> anchors;
    std::istringstream lines(ReadFile(InProject(document)));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("#")) {
            continue;
        }
        std::string anchor;
        for (const char letter : line.substr(std::min(line.find_first_not_of("# "), line.size()))) {
            if (std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-' || letter == ' ') {
                anchor += letter == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
            }
        }
        anchors.insert(anchor);
    }
    return anchors;
}

TEST(CauseTableTest, IDsAreWordsWithHyphensAndUnique) {
    std::set<std::string_view> ids;

    for (const Cause* const cause : AllCauses()) {
        EXPECT_THAT(std::string(cause->id), MatchesRegex("[a-z0-9]+(-[a-z0-9]+)*"));
        EXPECT_TRUE(ids.insert(cause->id).second) << cause->id;
    }
}

TEST(CauseTableTest, EveryCauseIsComplete) {
    for (const Cause* const cause : AllCauses()) {
        EXPECT_NE(cause->requests, 0U) << cause->id;
        EXPECT_GT(cause->rank, 0) << cause->id;
        EXPECT_EQ(cause->codes.IsEmpty(), cause->thirdCodes.IsEmpty()) << cause->id;
        EXPECT_FALSE(cause->what.empty()) << cause->id;
        EXPECT_FALSE(cause->checks.front().empty()) << cause->id;
        EXPECT_FALSE(cause->world.empty()) << cause->id;
    }
}

TEST(CauseTableTest, SentencesAreASCIIAndEnd) {
    for (const Cause* const cause : AllCauses()) {
        for (const std::string_view text :
             {cause->what, cause->checks[0], cause->checks[1], cause->checks[2], cause->checks[3]}) {
            EXPECT_TRUE(std::ranges::all_of(text, [](char byte) { return byte >= ' ' && byte <= '~'; })) << text;
            EXPECT_TRUE(text.empty() || text.ends_with('.') || text.ends_with('?')) << text;
        }
    }
}

TEST(CauseTableTest, EveryPageExists) {
    std::map<std::string, std::set<std::string>> anchors; // By their document.
    for (const Cause* const cause : AllCauses()) {
        const std::string page(cause->page);
        const size_t hash = page.find('#');

        ASSERT_NE(hash, std::string::npos) << page;
        const std::string document = page.substr(0, hash);
        if (!anchors.contains(document)) {
            anchors[document] = AnchorsOf(document);
        }
        EXPECT_THAT(anchors[document], Contains(page.substr(hash + 1))) << cause->id;
    }
}

TEST(CauseTableTest, EveryWorldIsShipped) {
    for (const Cause* const cause : AllCauses()) {
        const std::filesystem::path world = InProject("simulator/worlds/" + std::string(cause->world) + ".world.json");

        EXPECT_TRUE(std::filesystem::exists(world)) << cause->id << " is shown by " << world;
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
