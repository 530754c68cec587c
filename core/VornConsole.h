// The console. Inside the core only.
#pragma once

#include <string>

namespace Tarvik::Vorn {

// Writes `text` and a line break to the standard error stream, in one piece. Control characters in `text` are written
// as escapes (\n, \x1b), so that one entry is one line. REQUIRES: the caller holds SinkMutex().
void WriteConsoleLine(const std::string& text);

} // namespace Tarvik::Vorn
