// What a soak does in the place of Facebook, the system and the user: with the stand-ins' control functions.
#pragma once

#include "Scene.h"

#include <cstddef>

namespace Tarvik::Vorn::Soak {

// Makes the stand-ins be like `world`. Main thread.
void ApplyWorld(const World& world);

// The platform, the configuration and the main queue as at first, without a history. Main thread.
void ResetWorld();

// Answers the thing at this place; what the plugin raises passes through. False when there is none.
bool GiveAnswer(Waiting kind, size_t index, const Answer& answer);

size_t WaitingCount(Waiting kind);

// How many progress bars are on the screen. Main thread.
size_t BarCount();

} // namespace Tarvik::Vorn::Soak
