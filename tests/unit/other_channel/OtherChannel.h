// What the hooks of the other channel's library have been called for.
#pragma once

#include "VornExport.h"

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// "launch", "open" or "open from", in order. Main thread.
VORN_API std::vector<std::string>& OtherChannelCalls();

} // namespace Tarvik::Vorn::Test
