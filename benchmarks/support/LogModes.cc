#include "LogModes.h"

#include "VornLogSink.h"
#include "VornTraceSink.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr auto kNoLevel = static_cast<ILogLevel>(kLogError + 1);

// A temporary file that has no name; it goes when it is closed.
std::shared_ptr<std::FILE> OpenFile() {
    std::FILE* const file = std::tmpfile();
    if (file == nullptr) {
        std::perror("vorn-bench: no temporary file; set TMPDIR to a folder that can be written");
        std::exit(2);
    }
    return {file, &std::fclose};
}

// D [Vorn] File.mm:12 -[Class method:] text
void WriteLine(std::FILE* file, const VornLogLine& line) {
    std::string text;
    text.reserve(line.tag.size() + line.file.size() + line.function.size() + line.text.size() + 32);
    text += line.level <= kLogDebug ? "D " : "E ";
    text += line.tag;
    text += ' ';
    text += line.file;
    text += ':';
    text += std::to_string(line.line);
    text += ' ';
    text += line.function;
    text += ' ';
    text += line.text;
    text += '\n';
    std::fwrite(text.data(), 1, text.size(), file);
}

void WriteTrace(std::FILE* file, const VornTraceEntry& trace) {
    const std::string text = "T " + trace.file + " " + trace.function + " " + trace.seqID + " " + trace.module + " " +
                             trace.extraJson + "\n";
    std::fwrite(text.data(), 1, text.size(), file);
}

void ThrowAway() {
    SetLogSink([](const VornLogLine&) {});
    SetTraceSink([](const VornTraceEntry&) {});
}

} // namespace

LogModeSetting::LogModeSetting(LogMode mode) {
    ThrowAway();
    SetMinimumLogLevel(mode == LogMode::kOff ? kNoLevel : kLogDebug);
    if (mode == LogMode::kFile) {
        const std::shared_ptr<std::FILE> file = OpenFile();
        SetLogSink([file](const VornLogLine& line) { WriteLine(file.get(), line); });
        SetTraceSink([file](const VornTraceEntry& trace) { WriteTrace(file.get(), trace); });
    }
}

LogModeSetting::~LogModeSetting() {
    ThrowAway();
    SetMinimumLogLevel(kLogDebug);
}

} // namespace Tarvik::Vorn::Bench
