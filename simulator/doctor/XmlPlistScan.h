// Looks through an XML property list before libplist reads it, because libplist tells no line. Plain C++, any thread.
#pragma once

#include "VornLocatedError.h"

#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {

// The first thing in `text` that no property list has: tags that are unknown or not closed, keys without values,
// entities that are not XML's own, nesting beyond kMaxPlistDepth. Empty when there is none; the text is then safe to
// hand to a parser that recurses. `path` is for the error.
std::optional<LocatedError> ScanXmlPlist(const std::string& path, std::string_view text);

} // namespace Tarvik::Vorn::Simulator::Doctor
