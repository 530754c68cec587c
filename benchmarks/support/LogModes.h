// Where log lines and traces go while something is measured.
#pragma once

#include <array>

namespace Tarvik::Vorn::Bench {

enum class LogMode {
    kOff,  // No level is printed.
    kNull, // Every line is formatted and thrown away.
    kFile, // Every line is formatted and goes to a temporary file, through a buffer.
};

struct NamedLogMode {
    LogMode mode;
    const char* name;
};

inline constexpr std::array<NamedLogMode, 3> kLogModes{
    {{LogMode::kOff, "off"}, {LogMode::kNull, "null sink"}, {LogMode::kFile, "file"}}};

// Sets the mode while it lives; afterwards everything is thrown away. Traces have no level: with kOff they are thrown away.
// One at a time, main thread.
class LogModeSetting {
public:
    explicit LogModeSetting(LogMode mode);
    ~LogModeSetting();
    LogModeSetting(const LogModeSetting&) = delete;
    LogModeSetting& operator=(const LogModeSetting&) = delete;
};

} // namespace Tarvik::Vorn::Bench
