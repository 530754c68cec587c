// Where log lines go, and which of them: the host side of VornLogger. Plain C++; every function may be called on any
// thread.
#pragma once

#include "VornExport.h"
#include "VornServices.h"

#include <functional>
#include <string>

namespace Tarvik::Vorn {

// One line as it was written. Texts that were null are empty here.
struct VORN_API VornLogLine {
    ILogLevel level = kLogDebug;
    std::string tag;
    std::string file;
    std::string function;
    int line = 0;
    std::string text; // Formatted; of any length; line breaks as they were written.
};

// Called for one line at a time: calls of several threads do not overlap, with each other or with the trace sink's.
//
// A sink may log: such a line goes to the console, for the sink is busy. A sink must not wait for another thread that
// logs or traces. An exception that leaves the sink reaches whoever logged.
using VornLogSink = std::function<void(const VornLogLine&)>;

// Sends every line to `sink` from now on; an empty function stands for the console.
//
// When this returns, the sink that was there before is not running any more and will not be called again. The one
// exception is a sink that calls this itself: it runs to its end.
VORN_API void SetLogSink(VornLogSink sink);

// Lines below `level` are neither formatted nor written. kLogDebug, the initial value, lets everything pass.
VORN_API void SetMinimumLogLevel(ILogLevel level);

} // namespace Tarvik::Vorn
