// Where a value stands inside a JSON document, for people. Plain C++; any thread.
#pragma once

#include "VornJsonDocument.h"

#include <cstddef>
#include <string>

namespace Tarvik::Vorn::Simulator {

// "steps[3].share.type": the path to the value, or to the key, that begins at this place. Empty for the root and when
// nothing begins there.
std::string PathInside(const JsonValue& root, size_t line, size_t column);

} // namespace Tarvik::Vorn::Simulator
