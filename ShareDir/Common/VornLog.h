// Log and trace statements. A line carries the source file and the method in which the statement is written, so it is
// written there and not in a helper. In a block the method's name ends in _block_invoke, _block_invoke_2 and so on.
#pragma once

#include "VornServices.h"

namespace Tarvik::Vorn {

inline constexpr const char* kLogTag = "[Vorn]";

// The file name in `path`, when the source is compiled: what follows the last '/', else what follows the last '\\', else all of it.
consteval const char* FileNameOf(const char* path) {
    const char* slash = nullptr;
    const char* backslash = nullptr;
    for (const char* p = path; *p != '\0'; ++p) {
        if (*p == '/') {
            slash = p;
        } else if (*p == '\\') {
            backslash = p;
        }
    }
    if (slash != nullptr) {
        return slash + 1;
    }
    return backslash != nullptr ? backslash + 1 : path;
}

// What is constant about a log statement, kept as data so that the statement itself stays small. Not the function: in the
// initialiser of a constant the compiler gives every block the name of the outermost.
struct LogPlace {
    const char* file;
    int line;
    ILogLevel level;
};

#pragma clang diagnostic push
// The compiler checks the format against the arguments here, as it does at writeLog itself.
#pragma clang diagnostic ignored "-Wgcc-compat"

// Writes one line. Not for use but by the macros below. Out of line: statements of one kind share its code.
template <class... Arguments>
__attribute__((noinline, format(printf, 3, 4))) void WriteLogLine(const LogPlace& place, const char* function,
                                                                  const char* format, Arguments... arguments) {
    VornLogger(place.level, kLogTag, place.file, function, place.line).console().writeLog(format, arguments...);
}

#pragma clang diagnostic pop

} // namespace Tarvik::Vorn

#define VORN_LOG_AT(level, ...)                                                                                        \
    do {                                                                                                               \
        static constexpr ::Tarvik::Vorn::LogPlace kPlace{::Tarvik::Vorn::FileNameOf(__FILE_NAME__), __LINE__, level};  \
        ::Tarvik::Vorn::WriteLogLine(kPlace, __func__, __VA_ARGS__);                                                   \
    } while (false)

// One line of progress; one line about an error or a refusal. The first argument is a literal printf format.
#define VORN_LOG_DEBUG(...) VORN_LOG_AT(::Tarvik::Vorn::kLogDebug, __VA_ARGS__)
#define VORN_LOG_ERROR(...) VORN_LOG_AT(::Tarvik::Vorn::kLogError, __VA_ARGS__)

// A trace of a call into the channel's SDK: VORN_TRACE(seqID, "{\"method\":\"logOut\"}").traceLog("FacebookLogin").
#define VORN_TRACE(seqID, extraJson)                                                                                   \
    ::Tarvik::Vorn::VornTrace(::Tarvik::Vorn::FileNameOf(__FILE_NAME__), __func__, __LINE__, seqID, extraJson)
