#include "LogRecorder.h"

#include "VornLogSink.h"
#include "VornTraceSink.h"

#include <mutex>

namespace Tarvik::Vorn::Test {

struct LogRecorder::State {
    std::mutex mutex;
    std::vector<LogLine> lines;
    std::vector<TraceLine> traces;
    std::vector<std::string> transcript;
};

void PrintTo(const LogLine& line, std::ostream* out) {
    *out << (line.level == kLogDebug ? "debug " : "error ") << line.file << " " << line.function << " \"" << line.text
         << "\"";
}

void PrintTo(const TraceLine& line, std::ostream* out) {
    *out << line.file << " " << line.function << " " << line.seqID << " " << line.extraJson << " " << line.module;
}

LogRecorder::LogRecorder() : mState(std::make_shared<State>()) {
    SetLogSink([state = mState](const VornLogLine& line) {
        const std::lock_guard lock(state->mutex);
        state->lines.push_back(
            {line.level, std::string(line.file), std::string(line.function), std::string(line.text)});
        state->transcript.push_back("log " + std::string(line.text));
    });
    SetTraceSink([state = mState](const VornTraceEntry& entry) {
        const std::lock_guard lock(state->mutex);
        state->traces.push_back({std::string(entry.file), std::string(entry.function), std::string(entry.seqID),
                                 std::string(entry.extraJson), std::string(entry.module)});
        state->transcript.push_back("trace " + std::string(entry.extraJson));
    });
}

LogRecorder::~LogRecorder() {
    SetLogSink({});
    SetTraceSink({});
}

std::vector<LogLine> LogRecorder::Lines() const {
    const std::lock_guard lock(mState->mutex);
    return mState->lines;
}

std::vector<TraceLine> LogRecorder::Traces() const {
    const std::lock_guard lock(mState->mutex);
    return mState->traces;
}

std::vector<LogLine> LogRecorder::LinesOf(const std::string& file) const {
    std::vector<LogLine> lines = Lines();
    std::erase_if(lines, [&](const LogLine& line) { return line.file != file; });
    return lines;
}

std::vector<std::string> LogRecorder::Transcript() const {
    const std::lock_guard lock(mState->mutex);
    return mState->transcript;
}

void LogRecorder::Note(const std::string& text) {
    const std::lock_guard lock(mState->mutex);
    mState->transcript.push_back(text);
}

void LogRecorder::Clear() {
    const std::lock_guard lock(mState->mutex);
    mState->lines.clear();
    mState->traces.clear();
    mState->transcript.clear();
}

} // namespace Tarvik::Vorn::Test
