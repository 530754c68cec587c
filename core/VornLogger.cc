#include "VornConsole.h"
#include "VornLogSink.h"
#include "VornSinkSlot.h"
#include "VornUtf8.h"

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>

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

// The formatted text. When it cannot be formatted (a wide character without a form in the locale, more than 2 GiB), the
// format itself, so that the line still says where it comes from.
__attribute__((format(printf, 1, 0))) std::string Format(const char* format, va_list arguments) {
    std::array<char, 512> shortText; // Nearly every line; a longer one is formatted a second time.
    va_list again;
    va_copy(again, arguments);
    const int size = std::vsnprintf(shortText.data(), shortText.size(), format, arguments);
    std::string text;
    if (size < 0) {
        text = std::string("(cannot be formatted) ") + format;
    } else if (static_cast<size_t>(size) < shortText.size()) {
        text.assign(shortText.data(), static_cast<size_t>(size));
    } else {
        text.resize(static_cast<size_t>(size));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
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
    VornLogLine line;
    line.level = mLevel;
    line.tag = OrEmpty(mTag);
    line.file = OrEmpty(mFile);
    line.function = OrEmpty(mFunction);
    line.line = mLine;
    va_list arguments;
    va_start(arguments, format);
    line.text = Format(format, arguments);
    va_end(arguments);
    LogSlot().Write(line);
}

} // namespace Tarvik::Vorn
