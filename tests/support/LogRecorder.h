// Keeps every log line and every trace that is written while it lives, in order; any thread may write.
#pragma once

#include "VornServices.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// A log line without its source line number.
struct LogLine {
    ILogLevel level;
    std::string file;
    std::string function;
    std::string text;

    bool operator==(const LogLine&) const = default;
};

inline LogLine Debug(std::string file, std::string function, std::string text) {
    return {kLogDebug, std::move(file), std::move(function), std::move(text)};
}

inline LogLine Error(std::string file, std::string function, std::string text) {
    return {kLogError, std::move(file), std::move(function), std::move(text)};
}

struct TraceLine {
    std::string file;
    std::string function;
    std::string seqID;
    std::string extraJson;
    std::string module;

    bool operator==(const TraceLine&) const = default;
};

void PrintTo(const LogLine& line, std::ostream* out);
void PrintTo(const TraceLine& line, std::ostream* out);

// Takes the core's log and trace sinks; gives them back to the console when destroyed. One at a time.
class LogRecorder {
public:
    LogRecorder();
    ~LogRecorder();
    LogRecorder(const LogRecorder&) = delete;
    LogRecorder& operator=(const LogRecorder&) = delete;

    std::vector<LogLine> Lines() const;
    std::vector<TraceLine> Traces() const;

    // The lines written in `file`, such as "VornLoginFacebook.mm".
    std::vector<LogLine> LinesOf(const std::string& file) const;

    // Everything written so far, log lines, traces and notes together, one text each, in order.
    std::vector<std::string> Transcript() const;

    // Adds an entry of the test's own to the transcript.
    void Note(const std::string& text);

    void Clear();

private:
    struct State;
    std::shared_ptr<State> mState;
};

} // namespace Tarvik::Vorn::Test
