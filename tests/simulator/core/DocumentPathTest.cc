// Where a value stands inside a JSON document.

#include "DocumentPath.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Tarvik::Vorn::Simulator;

// The path to what begins in this column of a document of one line.
std::string PathAt(const std::string& text, size_t column, size_t line = 1) {
    LocatedError error;
    const std::optional<JsonDocument> document = JsonDocument::Parse(text, "test.json", error);
    EXPECT_TRUE(document.has_value()) << error.text();
    return document ? PathInside(document->root(), line, column) : "unread";
}

TEST(DocumentPathTest, AMemberIsNamedByItsKey) {
    EXPECT_EQ(PathAt(R"({"a": 1, "b": 2})", 15), "b");
}

TEST(DocumentPathTest, AKeyHasThePathOfItsValue) {
    EXPECT_EQ(PathAt(R"({"a": 1, "b": 2})", 10), "b");
}

TEST(DocumentPathTest, MembersOfMembersHaveADotBetween) {
    EXPECT_EQ(PathAt(R"({"a": {"b": {"c": 1}}})", 19), "a.b.c");
}

TEST(DocumentPathTest, ElementsAreCountedFromZero) {
    EXPECT_EQ(PathAt(R"({"steps": [{"x": 1}, {"x": 2}]})", 12), "steps[0]");
    EXPECT_EQ(PathAt(R"({"steps": [{"x": 1}, {"x": 2}]})", 28), "steps[1].x");
    EXPECT_EQ(PathAt("[[1, 2], [3, 4]]", 14), "[1][1]");
}

TEST(DocumentPathTest, TheLineCountsToo) {
    EXPECT_EQ(PathAt("{\"a\": 1,\n \"b\": 2}", 2, 1), "a");
    EXPECT_EQ(PathAt("{\"a\": 1,\n \"b\": 2}", 2, 2), "b");
}

TEST(DocumentPathTest, TheRootHasAnEmptyPath) {
    EXPECT_EQ(PathAt(R"({"a": 1})", 1), "");
}

TEST(DocumentPathTest, WhereNothingBeginsThereIsNoPath) {
    EXPECT_EQ(PathAt(R"({"a": [1, {"b": 2}]})", 18), "");
    EXPECT_EQ(PathAt(R"({"a": 1})", 2, 7), "");
    EXPECT_EQ(PathAt(R"({"a": 1})", 0, 0), "");
}

} // namespace
} // namespace Tarvik::Vorn::Test
