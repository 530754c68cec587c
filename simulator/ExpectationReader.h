// Reads a world's "expect". Plain C++; the reader's rules hold.
#pragma once

#include "StepReader.h"
#include "World.h"

namespace Tarvik::Vorn::Simulator {

Expectations ReadExpectations(StepReader& reader, const JsonValue& expect);

} // namespace Tarvik::Vorn::Simulator
