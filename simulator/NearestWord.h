// What somebody may have meant who misspelt a word. Plain C++; any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// The word that `word` is likely to be a slip for; empty when none is near enough.
std::string_view NearestWord(std::string_view word, const std::vector<std::string_view>& words);

// "did you mean "share"? use one of share, login": for the remedy of an error. Without a near word the list alone.
std::string MeantOrOneOf(std::string_view word, const std::vector<std::string_view>& words);

} // namespace Tarvik::Vorn::Simulator
