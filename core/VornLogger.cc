#include "VornConsole.h"
#include "VornFormat.h"
#include "VornLogSink.h"
#include "VornSinkSlot.h"
#include "VornUtf8.h"

#include <atomic>
#include <cstdarg>

namespace Tarvik::Vorn {
namespace {

std::atomic<int> sMinimumLevel{kLogDebug};

// D [Vorn] File.mm:12 -[Class method:] text
void WriteToConsole(const VornLogLine& line) {
    const char* const level = line.level <= kLogDebug ? "D " : "E ";
    WriteConsoleLine(level + line.tag + " " + line.file + ":" + std::to_string(line.line) + " " + line.function + " " +
                     line.text);
}

SinkSlot<VornLogLine>& LogSlot() {
    static auto& slot = *new SinkSlot<VornLogLine>(&WriteToConsole); // Never destroyed, as the mutex it uses.
    return slot;
}

// What a logger knows of its line.
struct Place {
    ILogLevel level;
    const char* tag;
    const char* file;
    const char* function;
    int line;
};

// Apart from writeLog, so that a line which is not printed pays nothing for the work on one that is.
__attribute__((noinline, format(printf, 2, 0))) void Print(const Place& place, const char* format, va_list arguments) {
    VornLogLine line;
    line.level = place.level;
    line.tag = OrEmpty(place.tag);
    line.file = OrEmpty(place.file);
    line.function = OrEmpty(place.function);
    line.line = place.line;
    line.text = Format(format, arguments);
    LogSlot().Write(line);
}

} // namespace

void SetLogSink(VornLogSink sink) {
    LogSlot().Replace(std::move(sink));
}

void SetMinimumLogLevel(ILogLevel level) {
    sMinimumLevel.store(level, std::memory_order_relaxed);
}

VornLogger::VornLogger(ILogLevel level, const char* tag, const char* file, const char* function, int line)
    : mLevel(level), mTag(tag), mFile(file), mFunction(function), mLine(line) {}

VornLogger::~VornLogger() {} // Nothing to dispose of; callers need the symbol.

VornLogger& VornLogger::console() {
    return *this;
}

void VornLogger::writeLog(const char* format, ...) {
    if (mLevel < sMinimumLevel.load(std::memory_order_relaxed)) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    Print({mLevel, mTag, mFile, mFunction, mLine}, format, arguments);
    va_end(arguments);
}

} // namespace Tarvik::Vorn
