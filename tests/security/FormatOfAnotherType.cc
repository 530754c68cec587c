// Log lines that must not compile: their arguments are not what the format says. Part of no build.
#include "VornLog.h"

namespace Tarvik::Vorn::Test {

void LogText(const VornBaseParams& params) {
    VORN_LOG_DEBUG("%s", params.methodID);
    VORN_LOG_DEBUG("%s %d", params.seqID.c_str());
}

} // namespace Tarvik::Vorn::Test
