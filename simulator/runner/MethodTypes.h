// Types of methods and instance variables, as an image writes them and as this system reads them. Plain C++.
#pragma once

#include <string>
#include <string_view>

namespace Tarvik::Vorn::Runner {

// The image writes a bit-field as b<bits>; here it is b<offset><type><bits>, and Foundation ends the process when it
// reads another. Everything else is the same.
std::string HostTypes(std::string_view types);

} // namespace Tarvik::Vorn::Runner
