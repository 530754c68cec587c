// The functions of Apple's Objective-C runtime that GCC's has not, or has otherwise. Code compiled for automatic reference
// counting needs more of them and is refused. Any thread.
#pragma once

#include <string_view>

namespace Tarvik::Vorn::Runner {

// The function of that name, which has an underscore in front; null when this file has none.
void* RuntimeFunction(std::string_view symbol);

} // namespace Tarvik::Vorn::Runner
