#include "SpdlogLines.h"

#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>

#include <utility>

namespace Tarvik::Vorn::Bench {

struct SpdlogLines::Logger {
    explicit Logger(const spdlog::sink_ptr& sink) : logger("Vorn", sink) {
        logger.set_level(spdlog::level::debug);
        logger.set_pattern("%L [%n] %s:%# %! %v"); // What a line of the core's console shows.
    }

    spdlog::logger logger;
};

SpdlogLines::SpdlogLines(std::unique_ptr<Logger> logger) : mLogger(std::move(logger)) {}
SpdlogLines::~SpdlogLines() = default;
SpdlogLines::SpdlogLines(SpdlogLines&& other) noexcept = default;

SpdlogLines SpdlogLines::ToNothing() {
    return SpdlogLines(std::make_unique<Logger>(std::make_shared<spdlog::sinks::null_sink_mt>()));
}

SpdlogLines SpdlogLines::ToFile(const std::string& path) {
    return SpdlogLines(std::make_unique<Logger>(std::make_shared<spdlog::sinks::basic_file_sink_mt>(path, true)));
}

void SpdlogLines::WriteLogin(const char* seqID, int methodID, const char* permissions, const char* extra) {
    const spdlog::source_loc place{__FILE_NAME__, __LINE__, "-[VornLoginFacebook login:]"};
    mLogger->logger.log(place, spdlog::level::debug, "[ {} ] methodID = {}, login with permissions = {},  extra = {}",
                        seqID, methodID, permissions, extra);
}

void SpdlogLines::WriteUnprinted(const char* seqID, int methodID, const char* permissions, const char* extra) {
    const spdlog::source_loc place{__FILE_NAME__, __LINE__, "-[VornLoginFacebook login:]"};
    mLogger->logger.log(place, spdlog::level::trace, "[ {} ] methodID = {}, login with permissions = {},  extra = {}",
                        seqID, methodID, permissions, extra);
}

} // namespace Tarvik::Vorn::Bench
