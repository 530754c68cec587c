// docs/simulator-library.md shows the example that is compiled and run here.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::HasSubstr;

std::string ReadFile(const std::string& path) {
    std::ifstream in(path);
    EXPECT_TRUE(in.good()) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(SimulatorLibraryDocumentTest, TheDocumentShowsTheExampleToTheLetter) {
    const std::string document = ReadFile(VORN_DOCS "/simulator-library.md");
    const std::string example = ReadFile(VORN_DOCS "/snippets/GameTest.cc");

    EXPECT_THAT(document, HasSubstr("```cpp\n" + example + "```"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
