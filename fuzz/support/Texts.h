// What texts for people and for programs must be, whatever they were made from. Plain C++.
#pragma once

#include "VornJsonDocument.h"
#include "VornLocatedError.h"

#include <string>
#include <string_view>

namespace Tarvik::Vorn::Fuzz {

bool IsUtf8(std::string_view text);

// Requires valid UTF-8 that no terminal obeys: no control characters but line feeds.
void RequirePrintable(std::string_view text);

// Requires JSON that is an object, and returns it.
JsonDocument RequireJsonObject(std::string_view text);

// Requires a message and a remedy about the file `path`, whose place, if it has one, is inside of `text`.
void RequireGoodError(const LocatedError& error, std::string_view path, std::string_view text);

} // namespace Tarvik::Vorn::Fuzz
