// docs/doctor.md says what the code says, and the pages that findings name exist.

#include "FindingKinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Doctor;
using ::testing::Contains;
using ::testing::ElementsAreArray;

std::vector<std::string> LinesOf(const std::string& document) {
    std::ifstream file(std::string(VORN_SOURCE_DIRECTORY) + "/" + document);
    EXPECT_TRUE(file) << document << " cannot be read";
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

// "### `a` and b." is found as #a-and-b.
std::string AnchorOf(const std::string& heading) {
    std::string anchor;
    for (const char character : heading.substr(heading.find_first_not_of("# "))) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || character == '-' || character == '_') {
            anchor += static_cast<char>(std::tolower(byte));
        } else if (character == ' ') {
            anchor += '-';
        }
    }
    return anchor;
}

// The target of "[text](target)".
std::string TargetOf(const std::string& link) {
    const size_t open = link.find("](");
    const size_t close = link.find(')', open);
    return open == std::string::npos || close == std::string::npos ? "" : link.substr(open + 2, close - open - 2);
}

// The rows "| `id` | severity | ... | [page](target) |" as "id severity docs/target".
std::vector<std::string> RowsOfTheDocument() {
    std::vector<std::string> rows;
    for (const std::string& line : LinesOf("docs/doctor.md")) {
        const bool isFinding = line.starts_with("| `") && TargetOf(line).find(".md#") != std::string::npos;
        if (!isFinding) {
            continue;
        }
        std::istringstream cells(line);
        std::string none;
        std::string id;
        std::string severity;
        std::getline(cells, none, '|');
        std::getline(cells, id, '|');
        std::getline(cells, severity, '|');
        rows.push_back(id.substr(2, id.size() - 4) + severity + "docs/" + TargetOf(line));
    }
    return rows;
}

TEST(DoctorDocument, ItsTableIsThatOfTheCode) {
    std::vector<std::string> rows;
    rows.reserve(std::size(kFindingKinds));
    for (const FindingKind& kind : kFindingKinds) {
        rows.push_back(std::string(kind.id) + " " + std::string(SeverityName(kind.severity)) + " " +
                       std::string(kind.page));
    }

    EXPECT_THAT(RowsOfTheDocument(), ElementsAreArray(rows));
}

TEST(DoctorDocument, PagesOfFindingsExist) {
    for (const FindingKind& kind : kFindingKinds) {
        const std::string page(kind.page);
        const size_t hash = page.find('#');
        std::vector<std::string> anchors;
        for (const std::string& line : LinesOf(page.substr(0, hash))) {
            if (line.starts_with('#')) {
                anchors.push_back(AnchorOf(line));
            }
        }

        EXPECT_THAT(anchors, Contains(page.substr(hash + 1))) << kind.id;
    }
}

TEST(FindingKinds, EachIDIsThereOnceAndInLowerCaseWithHyphens) {
    std::set<std::string_view> ids;
    for (const FindingKind& kind : kFindingKinds) {
        EXPECT_TRUE(ids.insert(kind.id).second) << kind.id;
        EXPECT_EQ(kind.id.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), std::string_view::npos)
            << kind.id;
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
