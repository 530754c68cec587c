// Which causes a result can have. Pure functions; plain C++, any thread.
#pragma once

#include "Cause.h"
#include "Question.h"

#include <vector>

namespace Tarvik::Vorn::Simulator::Explaining {

// The causes of this result, the most likely first; empty when the plugin never commits such a one.
//
// What was asked for decides in this order: the retCode and the third code must be possible; a text that belongs to some
// of the causes leaves out those that have another one; then the more telling text, the better fit of the method ID and
// the greater likelihood come first.
std::vector<const Cause*> Explain(const ParsedQuestion& question);

// For a question without causes: at most three causes of results that are near. Those with the same method and code but
// another third code; without such, those of other requests with the code, and then those of the request.
std::vector<const Cause*> NearestCauses(const ParsedQuestion& question);

// Whether the question's text tells one of these causes from others. True without a text.
bool IsTextTelling(const ParsedQuestion& question, const std::vector<const Cause*>& causes);

} // namespace Tarvik::Vorn::Simulator::Explaining
