// Where traces go: the host side of VornTrace. Plain C++; every function may be called on any thread.
#pragma once

#include "VornExport.h"
#include "VornServices.h"

#include <functional>
#include <string>

namespace Tarvik::Vorn {

enum class VornTraceKind {
    kLog,    // From traceLog: a call into the channel's SDK.
    kPlugin, // From tracePlugin: a plugin has started.
};

// One trace as it was written. Texts that were null, or that the kind does not have, are empty.
struct VORN_API VornTraceEntry {
    VornTraceKind kind = VornTraceKind::kLog;
    std::string file;
    std::string function;
    int line = 0;
    std::string seqID;
    std::string extraJson;
    std::string module;     // kLog only.
    std::string pluginName; // These four: kPlugin only.
    std::string pluginVersion;
    std::string channel;
    std::string sdkVersion;
};

// Called for one trace at a time: calls of several threads do not overlap, with each other or with the log sink's.
//
// A sink may trace: such a trace goes to the console, for the sink is busy. A sink must not wait for another thread
// that logs or traces. An exception that leaves the sink reaches whoever traced.
using VornTraceSink = std::function<void(const VornTraceEntry&)>;

// Sends every trace to `sink` from now on; an empty function stands for the console.
//
// When this returns, the sink that was there before is not running any more and will not be called again. The one
// exception is a sink that calls this itself: it runs to its end.
VORN_API void SetTraceSink(VornTraceSink sink);

} // namespace Tarvik::Vorn
