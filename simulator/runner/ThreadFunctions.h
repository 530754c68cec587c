// The functions of POSIX threads whose variables lie in memory otherwise on Apple's systems. Plain C++, any thread.
#pragma once

#include <string_view>

namespace Tarvik::Vorn::Runner {

// The function of that name, which has an underscore in front; null when this file has none.
void* ThreadFunction(std::string_view symbol);

} // namespace Tarvik::Vorn::Runner
