// What can be wrong with a world whose every step is right: answers to nothing, observers that nobody registers. Plain C++.
#pragma once

#include "StepReader.h"
#include "World.h"

namespace Tarvik::Vorn::Simulator {

// Fails the reader at the first step that cannot be played, whatever happens before it.
void CheckWorld(StepReader& reader, const World& world);

} // namespace Tarvik::Vorn::Simulator
