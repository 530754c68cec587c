// How many objects of the stand-ins live: Foundation counts them by class. Main thread.
#pragma once

#include <string>

namespace Tarvik::Vorn::Test {

// Counts from now on. False when Foundation does not count.
bool CountObjects();

// Objects that live: "FBSDKShareDialog 3"; empty when there are none. Those of which there is one for the process, such as
// the settings, are not looked at.
std::string LivingObjects();

} // namespace Tarvik::Vorn::Test
