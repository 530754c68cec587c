// Calls of the plugin whose exceptions do not end the program.
#pragma once

#include <functional>
#include <string>

namespace Tarvik::Vorn::Simulator {

// Calls `work`. What exception left it, of Objective-C or of C++, in words; empty when none did.
std::string CallGuarded(const std::function<void()>& work);

// Calls `work` here or, for `background`, on another thread, and returns when it is done. It must not throw.
void OnThread(bool background, const std::function<void()>& work);

} // namespace Tarvik::Vorn::Simulator
