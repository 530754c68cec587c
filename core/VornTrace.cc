#include "VornConsole.h"
#include "VornSinkSlot.h"
#include "VornUtf8.h"
#include "VornTraceSink.h"

namespace Tarvik::Vorn {
namespace {

// T [Vorn] File.mm:12 -[Class method:] [ seqID ] FacebookLogin {"method":"logOut"}
// T [Vorn] File.mm:12 -[Class method:] plugin VornFacebook 1.0, channel Facebook, SDK 10.0.0
void WriteToConsole(const VornTraceEntry& entry) {
    std::string text = "T [Vorn] " + entry.file + ":" + std::to_string(entry.line) + " " + entry.function + " ";
    if (entry.kind == VornTraceKind::kPlugin) {
        text += "plugin " + entry.pluginName + " " + entry.pluginVersion + ", channel " + entry.channel + ", SDK " +
                entry.sdkVersion;
    } else {
        text += "[ " + entry.seqID + " ] " + entry.module + " " + entry.extraJson;
    }
    WriteConsoleLine(text);
}

SinkSlot<VornTraceEntry>& TraceSlot() {
    static auto& slot = *new SinkSlot<VornTraceEntry>(&WriteToConsole); // Never destroyed, as the mutex it uses.
    return slot;
}

// What both kinds of trace have.
VornTraceEntry MakeEntry(const char* file, const char* function, int line, const char* seqID, const char* extraJson) {
    VornTraceEntry entry;
    entry.file = OrEmpty(file);
    entry.function = OrEmpty(function);
    entry.line = line;
    entry.seqID = OrEmpty(seqID);
    entry.extraJson = OrEmpty(extraJson);
    return entry;
}

} // namespace

void SetTraceSink(VornTraceSink sink) {
    TraceSlot().Replace(std::move(sink));
}

VornTrace::VornTrace(const char* file, const char* function, int line, const char* seqID, const char* extraJson)
    : mFile(file), mFunction(function), mLine(line), mSeqID(seqID), mExtraJson(extraJson) {}

void VornTrace::traceLog(const char* module) {
    VornTraceEntry entry = MakeEntry(mFile, mFunction, mLine, mSeqID, mExtraJson);
    entry.kind = VornTraceKind::kLog;
    entry.module = OrEmpty(module);
    TraceSlot().Write(entry);
}

void VornTrace::tracePlugin(const char* name, const char* version, const char* channel, const char* sdkVersion) {
    VornTraceEntry entry = MakeEntry(mFile, mFunction, mLine, mSeqID, mExtraJson);
    entry.kind = VornTraceKind::kPlugin;
    entry.pluginName = OrEmpty(name);
    entry.pluginVersion = OrEmpty(version);
    entry.channel = OrEmpty(channel);
    entry.sdkVersion = OrEmpty(sdkVersion);
    TraceSlot().Write(entry);
}

} // namespace Tarvik::Vorn
