// Arguments as they are typed: what is understood, and what errors say.

#include "ExplainTest.h"

#include "VornCodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <variant>

namespace Tarvik::Vorn::Test {
namespace {

using Simulator::ExplainQuestion;
using namespace Simulator::Explaining;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string ErrorOf(const ExplainQuestion& typed) {
    const std::variant<ParsedQuestion, std::string> parsed = ParseQuestion(typed);
    return std::holds_alternative<std::string>(parsed) ? std::get<std::string>(parsed) : "(none)";
}

TEST(QuestionTest, EveryRequestHasItsName) {
    EXPECT_EQ(Parsed({"login", "0", "", ""}).request, kLogin);
    EXPECT_EQ(Parsed({"logout", "0", "", ""}).request, kLogout);
    EXPECT_EQ(Parsed({"share", "0", "", ""}).request, kShare);
    EXPECT_EQ(Parsed({"send-message", "0", "", ""}).request, kSendMessage);
    EXPECT_EQ(Parsed({"invite", "0", "", ""}).request, kInvite);
    EXPECT_EQ(Parsed({"add-friend", "0", "", ""}).request, kAddFriend);
    EXPECT_EQ(Parsed({"query-friends", "0", "", ""}).request, kQueryFriends);
}

TEST(QuestionTest, NumbersAreTakenAsTheyStand) {
    const ParsedQuestion question = Parsed({"-2147483648", "2147483647", "-1001", "text"});

    EXPECT_EQ(question.request, 0U);
    EXPECT_EQ(question.methodNameID, std::optional(-2147483647 - 1));
    EXPECT_EQ(question.code, std::optional(2147483647));
    EXPECT_EQ(question.thirdCode, std::optional(-1001));
    EXPECT_EQ(question.text, "text");
}

TEST(QuestionTest, NoneAndADashMeanThatNothingArrived) {
    EXPECT_EQ(Parsed({"share", "none", "", ""}).code, std::nullopt);
    EXPECT_EQ(Parsed({"share", "-", "", ""}).code, std::nullopt);
}

TEST(QuestionTest, AThirdCodeMayBeLeftOut) {
    EXPECT_EQ(Parsed({"share", "2", "", ""}).thirdCode, std::nullopt);
    EXPECT_EQ(Parsed({"share", "2", "-", "text"}).thirdCode, std::nullopt);
}

TEST(QuestionTest, ATextMayStandInThePlaceOfTheThirdCode) {
    const ParsedQuestion question = Parsed({"share", "2", "Error Domain=x Code=2", ""});

    EXPECT_EQ(question.thirdCode, std::nullopt);
    EXPECT_EQ(question.text, "Error Domain=x Code=2");
}

TEST(QuestionTest, ALineOfTheLogMayBelongToSilence) {
    EXPECT_EQ(Parsed({"share", "none", "-", "Call Facebook API"}).text, "Call Facebook API");
}

TEST(QuestionTest, AMisspeltRequestIsAnsweredWithTheNearestName) {
    const std::string error = ErrorOf({"send-mesage", "0", "", ""});

    EXPECT_THAT(error,
                StartsWith("METHOD \"send-mesage\": expected a methodNameID, an integer from -2147483648 to "
                           "2147483647, or a request's name; did you mean \"send-message\"? use one of login, "));
}

TEST(QuestionTest, AnEmptyMethodIsAnError) {
    EXPECT_THAT(ErrorOf({"", "0", "", ""}), StartsWith("METHOD \"\": expected "));
}

TEST(QuestionTest, ACodeThatIsNoIntegerIsAnError) {
    EXPECT_THAT(ErrorOf({"share", "two", "", ""}), StartsWith("CODE \"two\": expected a retCode, an integer from "));
    EXPECT_THAT(ErrorOf({"share", "", "", ""}), StartsWith("CODE \"\": expected "));
    EXPECT_THAT(ErrorOf({"share", "2.5", "", ""}), StartsWith("CODE \"2.5\": expected "));
    EXPECT_THAT(ErrorOf({"share", "2147483648", "", ""}), StartsWith("CODE \"2147483648\": expected "));
}

TEST(QuestionTest, AMisspeltNoneIsAnsweredWithNone) {
    EXPECT_THAT(ErrorOf({"share", "nome", "", ""}), HasSubstr("did you mean \"none\"?"));
    EXPECT_THAT(ErrorOf({"share", "2a", "", ""}), Not(HasSubstr("did you mean")));
}

TEST(QuestionTest, AThirdCodeThatIsNoIntegerIsAnError) {
    EXPECT_THAT(ErrorOf({"share", "2", "x", ""}),
                StartsWith("THIRDCODE \"x\": expected a thirdCode, an integer from "));
    EXPECT_THAT(ErrorOf({"share", "2", "a b", "text"}), StartsWith("THIRDCODE \"a b\": expected "));
}

TEST(QuestionTest, WhatHasNotArrivedHasNoThirdCode) {
    EXPECT_THAT(ErrorOf({"share", "none", "2", ""}), StartsWith("THIRDCODE \"2\": expected - behind the CODE none"));
}

TEST(QuestionTest, ErrorsDoNotRepeatControlCharacters) {
    EXPECT_THAT(ErrorOf({"\x1b[2J", "0", "", ""}), StartsWith("METHOD \"\\x1b[2J\": "));
}

} // namespace
} // namespace Tarvik::Vorn::Test
