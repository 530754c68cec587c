#include "Question.h"

#include "NearestWord.h"
#include "report/VisibleText.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>
#include <vector>

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr std::string_view kNone = "none";
constexpr std::string_view kDash = "-"; // Short for none, and for a third code that is not known.
constexpr std::string_view kIntegers = "an integer from -2147483648 to 2147483647";

// Decimal digits, with a minus before them or not, and nothing else.
std::optional<int32_t> ReadInteger(std::string_view text) {
    int32_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = failure == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::string Problem(std::string_view argument, std::string_view typed, const std::string& expected) {
    return std::string(argument) + " \"" + VisibleLine(typed) + "\": expected " + expected;
}

// False when it is neither a number nor a name.
bool ReadMethod(const std::string& typed, ParsedQuestion& question) {
    question.methodNameID = ReadInteger(typed);
    const auto* const named = std::ranges::find(kRequestNames, typed, &NamedRequest::name);
    if (named != kRequestNames.end()) {
        question.request = named->request;
    }
    return question.methodNameID || question.request != 0;
}

std::string MethodProblem(const std::string& typed) {
    std::vector<std::string_view> names;
    names.reserve(kRequestNames.size());
    for (const NamedRequest& named : kRequestNames) {
        names.push_back(named.name);
    }
    return Problem("METHOD", typed,
                   "a methodNameID, " + std::string(kIntegers) + ", or a request's name; " +
                       MeantOrOneOf(typed, names));
}

std::string CodeProblem(const std::string& typed) {
    const bool isNearNone = !NearestWord(typed, {kNone}).empty();
    return Problem("CODE", typed,
                   "a retCode, " + std::string(kIntegers) + ", or none (-) when nothing arrived" +
                       (isNearNone ? "; did you mean \"none\"?" : ""));
}

} // namespace

std::variant<ParsedQuestion, std::string> ParseQuestion(const ExplainQuestion& typed) {
    ParsedQuestion question;
    if (!ReadMethod(typed.method, question)) {
        return MethodProblem(typed.method);
    }
    const bool isSilence = typed.code == kNone || typed.code == kDash;
    question.code = ReadInteger(typed.code);
    if (!isSilence && !question.code) {
        return CodeProblem(typed.code);
    }
    const bool isTextInItsPlace = typed.text.empty() && typed.thirdCode.find(' ') != std::string::npos;
    question.text = isTextInItsPlace ? typed.thirdCode : typed.text;
    const bool hasThirdCode = !isTextInItsPlace && !typed.thirdCode.empty() && typed.thirdCode != kDash;
    if (isSilence && hasThirdCode) {
        return Problem("THIRDCODE", typed.thirdCode, "- behind the CODE none: what has not arrived has no third code");
    }
    if (hasThirdCode) {
        question.thirdCode = ReadInteger(typed.thirdCode);
        if (!question.thirdCode) {
            return Problem("THIRDCODE", typed.thirdCode,
                           "a thirdCode, " + std::string(kIntegers) + ", or - when it is not known");
        }
    }
    return question;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
