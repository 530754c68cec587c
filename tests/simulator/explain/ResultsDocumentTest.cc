// docs/results.md against the table: the rows of the document are those of the table, in its order.

#include "ExplainTest.h"

#include "explain/Answer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Explaining;
using ::testing::ElementsAreArray;

std::string RequestsInWords(Requests requests) {
    if (requests == kEveryRequest) {
        return "every";
    }
    std::string text;
    for (const std::string_view name : NamesOf(requests)) {
        text += (text.empty() ? "" : ", ") + std::string(name);
    }
    return text;
}

std::string MethodInWords(const Cause& cause) {
    if (cause.codes.IsEmpty()) {
        return "";
    }
    switch (cause.reported) {
    case ReportedID::kServed:
        if (cause.requests == kDialogs) {
            return "211, 414, 212";
        }
        return cause.requests == kShare ? "211, 414" : "212";
    case ReportedID::kUnserved:
        return "any other";
    case ReportedID::kOwn:
    case ReportedID::kOwnOfCore:
        return "own";
    case ReportedID::kMessage:
        return "212";
    case ReportedID::kZero:
        return "0";
    case ReportedID::kLastRequest:
        return "of the last";
    case ReportedID::kUnset:
        return "-1";
    }
    return "";
}

std::string RowOf(const Cause& cause) {
    return "| " + RequestsInWords(cause.requests) + " | " + MethodInWords(cause) + " | " + CodesInWords(cause.codes) +
           " | " + CodesInWords(cause.thirdCodes) + " | `" + std::string(cause.id) + "` | " + std::string(cause.what) +
           " | `" + std::string(cause.world) + "` |";
}

TEST(ResultsDocumentTest, HasTheRowsOfTheTable) {
    std::vector<std::string> rows;
    for (const Cause* const cause : AllCauses()) {
        rows.push_back(RowOf(*cause));
    }

    std::vector<std::string> documented;
    std::istringstream lines(ReadFile(InProject("docs/results.md")));
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with("` |") && line.find(" | `") != std::string::npos) {
            documented.push_back(line);
        }
    }

    EXPECT_THAT(documented, ElementsAreArray(rows));
}

} // namespace
} // namespace Tarvik::Vorn::Test
