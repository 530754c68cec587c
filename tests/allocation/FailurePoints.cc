// The table that the program prints at its end.

#include "FailEveryAllocation.h"

#include <cinttypes>
#include <cstdio>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using Row = std::pair<std::string, uint64_t>;

std::vector<Row>& Rows() {
    static std::vector<Row> rows;
    return rows;
}

class TablePrinter : public ::testing::Environment {
public:
    void TearDown() override {
        uint64_t sum = 0;
        for (const auto& [operation, points] : Rows()) {
            std::printf("%6" PRIu64 "  %s\n", points, operation.c_str());
            sum += points;
        }
        std::printf("%6" PRIu64 "  failure points in %zu operations, all survived\n", sum, Rows().size());
    }
};

// Owned by the test framework.
[[maybe_unused]] const ::testing::Environment* const kPrinter = ::testing::AddGlobalTestEnvironment(new TablePrinter);

} // namespace

void NoteFailurePoints(uint64_t points) {
    const ::testing::TestInfo& test = *::testing::UnitTest::GetInstance()->current_test_info();
    Rows().emplace_back(std::string(test.test_suite_name()) + "." + test.name(), points);
}

} // namespace Tarvik::Vorn::Test
