// What requests to the friend plugin are called, for people. Plain C++.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator {

// "share of a link", "invitation", "message of type 10002". `kind` is the step's name.
std::string TitleOf(std::string_view kind, int32_t type);

} // namespace Tarvik::Vorn::Simulator
