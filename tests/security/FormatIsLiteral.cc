// Log lines as they must be written. Compiled, never run.
#include "VornLog.h"

namespace Tarvik::Vorn::Test {

void LogText(const VornBaseParams& params) {
    VORN_LOG_DEBUG("%s", params.seqID.c_str());
    VORN_LOG_ERROR("[ %s ] failed", params.seqID.c_str());
    VornLogger(kLogDebug, kLogTag, "", "", 0).console().writeLog("%d", params.methodID);
}

} // namespace Tarvik::Vorn::Test
