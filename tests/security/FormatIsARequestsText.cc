// Log lines that must not compile: what a request says would be the format. Part of no build.
#include "VornLog.h"

namespace Tarvik::Vorn::Test {

void LogText(const VornBaseParams& params) {
    VORN_LOG_DEBUG(params.seqID.c_str());
    VORN_LOG_ERROR(params.extraJson.c_str(), params.methodID);
    VornLogger(kLogDebug, kLogTag, "", "", 0).console().writeLog(params.channel.c_str());
}

} // namespace Tarvik::Vorn::Test
