// What somebody may have meant who misspelt a word.

#include "NearestWord.h"

#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;

TEST(NearestWordTest, AWordOfTheListIsItsOwnNearest) {
    EXPECT_EQ(NearestWord("login", {"logout", "login", "logic"}), "login");
}

TEST(NearestWordTest, AShortWordMayHaveOneSlip) {
    EXPECT_EQ(NearestWord("nte", {"note"}), "note");
    EXPECT_EQ(NearestWord("shaee", {"share"}), "share");
    EXPECT_EQ(NearestWord("sheee", {"share"}), "");
    EXPECT_EQ(NearestWord("a", {"b"}), "b");
    EXPECT_EQ(NearestWord("ab", {"cd"}), "");
}

TEST(NearestWordTest, EveryThirdLetterOfALongerWordMayBeWrong) {
    EXPECT_EQ(NearestWord("abcdef", {"abxyef"}), "abxyef");
    EXPECT_EQ(NearestWord("abcdef", {"axyzef"}), "");
    EXPECT_EQ(NearestWord("abcdefghi", {"xyzdefghi"}), "xyzdefghi");
    EXPECT_EQ(NearestWord("abcdefghi", {"vxyzefghi"}), "");
}

TEST(NearestWordTest, LettersMayBeMissingOrTooMany) {
    EXPECT_EQ(NearestWord("steps", {"step"}), "step");
    EXPECT_EQ(NearestWord("step", {"steps"}), "steps");
    EXPECT_EQ(NearestWord("observer", {"obser"}), "");
}

TEST(NearestWordTest, UpperAndLowerCaseAreTheSame) {
    EXPECT_EQ(NearestWord("SEQid", {"seqID"}), "seqID");
}

TEST(NearestWordTest, TheNearerWordWinsAndOfEqualsTheFirst) {
    EXPECT_EQ(NearestWord("abcdefghi", {"abxyefghi", "abcdefghx"}), "abcdefghx");
    EXPECT_EQ(NearestWord("cat", {"bat", "hat"}), "bat");
}

TEST(NearestWordTest, NothingIsNearToNothing) {
    EXPECT_EQ(NearestWord("", {"share"}), "");
    EXPECT_EQ(NearestWord("share", {}), "");
}

TEST(NearestWordTest, AWordOfMoreThan64LettersIsNoSlip) {
    const std::string longest(64, 'a');
    const std::string tooLong(65, 'a');

    EXPECT_EQ(NearestWord(longest, {tooLong}), tooLong);
    EXPECT_EQ(NearestWord(tooLong, {tooLong}), "");
}

TEST(NearestWordTest, ARemedyNamesTheNearWordAndAllOthers) {
    EXPECT_EQ(MeantOrOneOf("shar", {"share", "login"}), "did you mean \"share\"? use one of share, login");
}

TEST(NearestWordTest, WithoutANearWordARemedyIsTheList) {
    EXPECT_EQ(MeantOrOneOf("zzz", {"share", "login"}), "use one of share, login");
}

} // namespace
} // namespace Tarvik::Vorn::Test
