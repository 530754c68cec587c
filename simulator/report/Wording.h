// What the reports for people, text and page, say with the same words. The texts may hold anything that the run holds:
// they are to be made visible before they are shown. Plain C++; any thread.
#pragma once

#include "Report.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator {

// The request of that index; null for kNoRequest.
const RequestFacts* RequestOf(const RunReport& run, size_t index);

// "1 remark", "2 remarks": `plural` is for every number but 1.
std::string Counted(size_t count, std::string_view singular, std::string_view plural);

// "share of a link, method 211, observer 31"
std::string RequestDetails(const RequestFacts& request);

// "share.world.json, seed 1, Facebook SDK 18.1"
std::string RunFacts(const RunReport& run);

// Where the world says what does not hold: "share.world.json:12:7".
std::string PlaceOf(const RunReport& run, const Mismatch& mismatch);

// "nothing" instead of an empty text.
std::string_view OrNothing(std::string_view text);

// Why the run holds or does not: "every step was played, and all that is expected came".
std::string Verdict(const RunReport& run);

} // namespace Tarvik::Vorn::Simulator
