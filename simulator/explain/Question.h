// What somebody wants to know about a result, read and judged. Plain C++; any thread.
#pragma once

#include "Cause.h"
#include "Explain.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace Tarvik::Vorn::Simulator::Explaining {

struct ParsedQuestion {
    Requests request = 0;                // The request by its name; 0 when it was given as a number.
    std::optional<int32_t> methodNameID; // The number; none when it was given as a name.
    std::optional<int32_t> code;         // None: nothing arrived.
    std::optional<int32_t> thirdCode;    // None: not known.
    std::string text;                    // retMsg, thirdMsg or a line of the log; empty: not known. Any bytes.
};

// The question, or an error that names the argument, what was expected, and the nearest word where there is one. A third
// code with a blank in it is the text when none was given: whoever leaves the third code out types the text in its place.
std::variant<ParsedQuestion, std::string> ParseQuestion(const ExplainQuestion& typed);

} // namespace Tarvik::Vorn::Simulator::Explaining
