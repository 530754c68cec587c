// The plugin's sources against the table: every code and text of a result that stands there has a cause, so that a new
// refusal cannot be forgotten.

#include "ExplainTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Explaining;
using ::testing::ContainerEq;
using ::testing::IsEmpty;
using ::testing::Not;

// The sources without comments, in which codes are only spoken of.
std::string PluginSources() {
    std::istringstream lines(ReadFile(InProject("VornFacebook/VornFriendFacebook.mm")) +
                             ReadFile(InProject("VornFacebook/VornLoginFacebook.mm")));
    std::string sources;
    for (std::string line; std::getline(lines, line);) {
        sources += line.substr(0, line.find("//")) + "\n";
    }
    return sources;
}

// The capture groups of every place that matches.
std::vector<std::vector<std::string>> Matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    std::vector<std::vector<std::string>> all;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
        all.emplace_back(std::next(match->begin()), match->end());
    }
    return all;
}

// The codes by their names, from the header itself.
std::map<std::string, int32_t> ResultCodes() {
    const std::string header = ReadFile(InProject("ShareDir/Common/VornCodes.h"));
    const std::string codes = header.substr(0, header.find("} // namespace RetCode"));
    std::map<std::string, int32_t> values;
    for (const std::vector<std::string>& code : Matches(codes, R"(int32_t (k\w+) = (\d+);)")) {
        values[code[0]] = std::stoi(code[1]);
    }
    return values;
}

bool HasText(const Cause& cause, const std::string& text) {
    return std::ranges::find(cause.texts, text) != cause.texts.end();
}

template <class Predicate>
bool SomeCause(const Predicate& predicate) {
    const std::vector<const Cause*> causes = AllCauses();
    return std::ranges::any_of(causes, [&predicate](const Cause* cause) { return predicate(*cause); });
}

TEST(PluginSourcesTest, EveryRefusalWithAReasonHasACauseWithItsCodesAndText) {
    const auto refusals =
        Matches(PluginSources(), R"re(Refus(?:al|e)\(\s*(?:self,|\*job,)?\s*RetCode::(k\w+),\s*"([^"]*)")re");

    ASSERT_THAT(refusals, Not(IsEmpty()));
    EXPECT_EQ(refusals.size() + 5, Matches(PluginSources(), R"(\bRefus(?:al|e)(\())").size())
        << "Three define the helpers and two pass on what they are given.";
    for (const std::vector<std::string>& refusal : refusals) {
        const int32_t code = ResultCodes().at(refusal[0]);
        EXPECT_TRUE(SomeCause([&](const Cause& cause) {
            return cause.codes == Only(code) && cause.thirdCodes == Only(code) && HasText(cause, refusal[1]);
        })) << refusal[0]
            << ", " << refusal[1];
    }
}

TEST(PluginSourcesTest, EveryRefusalWithoutAReasonHasACauseWithItsCode) {
    const auto results = Matches(
        PluginSources(),
        R"((?:Inner(?:Base|Friend)Ret(?: ret)?\(|Answer\(self, |Fail\(complete, )RetCode::(k\w+)(?:\)|, \*params\)))");

    ASSERT_THAT(results, Not(IsEmpty()));
    for (const std::vector<std::string>& result : results) {
        const int32_t code = ResultCodes().at(result[0]);
        EXPECT_TRUE(SomeCause([code](const Cause& cause) { return cause.codes == Only(code); })) << result[0];
    }
}

TEST(PluginSourcesTest, EveryTextOfAnUploadHasACause) {
    const std::string sources = PluginSources();
    const auto successes = Matches(sources, R"re(InnerBaseRet\(RetCode::kSuccess, 0, "([^"]*)"\))re");
    const auto fallbacks = Matches(sources, R"re(SdkFailure\(error, "([^"]+)"\))re");

    ASSERT_EQ(successes.size(), 2U);
    ASSERT_EQ(fallbacks.size(), 2U);
    for (const std::vector<std::string>& success : successes) {
        EXPECT_TRUE(
            SomeCause([&](const Cause& cause) { return cause.codes == Only(0) && HasText(cause, success[0]); }));
    }
    for (const std::vector<std::string>& fallback : fallbacks) {
        EXPECT_TRUE(SomeCause([&](const Cause& cause) {
            return cause.codes == Only(9999) && cause.thirdCodes == Only(0) && HasText(cause, fallback[0]);
        })) << fallback[0];
    }
}

TEST(PluginSourcesTest, EveryCodeHasACause) {
    for (const auto& [name, code] : ResultCodes()) {
        EXPECT_TRUE(SomeCause([code = code](const Cause& cause) { return cause.codes == Only(code); })) << name;
    }
}

// A code that is used once more may be a new way to a result that the table does not know: when this fails, see whether
// the table needs a cause, then count anew.
TEST(PluginSourcesTest, NoCodeIsUsedInANewPlace) {
    std::map<std::string, int> uses;
    for (const std::vector<std::string>& use : Matches(PluginSources(), R"(RetCode::(k\w+))")) {
        uses[use[0]] += 1;
    }

    const std::map<std::string, int> known{
        {"kAppNotInstalled", 3}, {"kCancelled", 5},    {"kInvalidArgument", 9}, {"kNeedSystemPermission", 3},
        {"kNotInGamingMode", 1}, {"kNotSupported", 7}, {"kSuccess", 7},         {"kSystemRefused", 2},
        {"kThirdPartyError", 6},
    };
    EXPECT_THAT(uses, ContainerEq(known));
}

} // namespace
} // namespace Tarvik::Vorn::Test
