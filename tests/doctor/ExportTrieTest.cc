// The tree of names in which a Mach-O image says what it exports.

#include "ByteReader.h"
#include "ExportTrie.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using namespace Simulator::Doctor;
using ::testing::ElementsAre;
using ::testing::Pair;

// A node: what it says of a symbol, and its children as labels with the places of their nodes.
std::string Node(const std::string& symbol, const std::string& children) {
    return static_cast<char>(symbol.size()) + symbol + children;
}

TEST(ExportTrie, NamesAreTheLabelsOnTheWayToTheirNodes) {
    const std::string trie = Node("", std::string("\x01_a\0\x06", 5)) +
                             Node("A", std::string("\x01"
                                                   "b\0\x0c",
                                                   4)) +
                             Node("B", std::string(1, '\0'));
    ByteReader reader(trie);

    EXPECT_THAT(ReadExportTrie(reader), ElementsAre(Pair("_a", "A"), Pair("_ab", "B")));
    EXPECT_FALSE(reader.failed());
}

// So the loader finds it, which takes the first label that fits.
TEST(ExportTrie, OfTwoEqualNamesTheFirstCounts) {
    const std::string children = std::string("\x02"
                                             "a\0\x08"
                                             "a\0\x0b",
                                             7);
    const std::string trie = Node("", children) + Node("1", std::string(1, '\0')) + Node("2", std::string(1, '\0'));
    ByteReader reader(trie);

    EXPECT_THAT(ReadExportTrie(reader), ElementsAre(Pair("a", "1")));
    EXPECT_FALSE(reader.failed());
}

} // namespace
} // namespace Tarvik::Vorn::Test
