// The plugin as a soak drives it: through the core's protocols, found by class name, loaded and not linked.
#pragma once

#include "Model.h"

#include <string>

namespace Tarvik::Vorn::Soak {

// Loads the plugin (tests/support/Subject.h) and finds its classes. Ends the process with a message where one is missing.
// Main thread, before all others.
void LoadPlugins();

// The game starts: it has an application delegate that was never launched. The one of the game before goes.
void StartGame();

// Sends the request as a core does, from records that die when the call returns; what the plugin raises passes through.
// Empty when what came back at once is right, otherwise what is wrong with it.
std::string SendRequest(const Request& request);

// What stands in the friend plugin's properties.
Parked ParkedByPlugin();

// Gives up the login and the report plugin's instances, as a core may between requests.
void PurgeSingletons();

} // namespace Tarvik::Vorn::Soak
