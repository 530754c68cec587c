// Log lines of spdlog, the usual logger of C++ programs, for comparison: its synchronous logger with a mutex, as the core's
// has one. The header-only form: Debian's library is libstdc++'s.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace Tarvik::Vorn::Bench {

class SpdlogLines {
public:
    // Formats the text of each line and throws it away.
    static SpdlogLines ToNothing();

    // Writes lines to a file as the file sink of the benchmarks does, through the C library's buffer.
    static SpdlogLines ToFile(const std::string& path);

    ~SpdlogLines();
    SpdlogLines(SpdlogLines&& other) noexcept;
    SpdlogLines(const SpdlogLines&) = delete;
    SpdlogLines& operator=(const SpdlogLines&) = delete;

    // "[ seqID ] methodID = 111, login with permissions = ...,  extra = ..."
    void WriteLogin(const char* seqID, int methodID, const char* permissions, const char* extra);

    // The same on a level that is not printed.
    void WriteUnprinted(const char* seqID, int methodID, const char* permissions, const char* extra);

private:
    struct Logger;
    explicit SpdlogLines(std::unique_ptr<Logger> logger);

    std::unique_ptr<Logger> mLogger;
};

} // namespace Tarvik::Vorn::Bench
