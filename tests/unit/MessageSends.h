// What a source text in Objective-C++ sends: for tests that hold a table against the sources. Plain C++.
#pragma once

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// The selector of each message send in `source`, outer before inner. Comments, texts and subscripts are no sends.
std::vector<std::string> MessageSends(const std::string& source);

} // namespace Tarvik::Vorn::Test
