// Virtual time: what happens later, in its order, and what chance decides. Plain C++; one thread at a time.
#pragma once

#include "Answers.h"
#include "Timeline.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <utility>

namespace Tarvik::Vorn::Simulator {

class Schedule {
public:
    // What falls due at the same time happens in the order in which it was planned.
    void Plan(Milliseconds due, std::function<void()> work);

    // When the next thing is due; empty when nothing is planned.
    std::optional<Milliseconds> NextDue() const;

    // Takes the next thing out. REQUIRES: something is planned.
    std::function<void()> TakeNext();

private:
    std::map<std::pair<Milliseconds, uint64_t>, std::function<void()>> mPlanned;
    uint64_t mCount = 0;
};

// Numbers that are the same for the same seed, on every machine.
class Dice {
public:
    explicit Dice(uint64_t seed) : mEngine(seed) {}

    // From 0 to `count` - 1. REQUIRES: `count` is not 0.
    uint64_t Below(uint64_t count);

    Milliseconds Draw(const Duration& duration);

private:
    std::mt19937_64 mEngine; // Its numbers are laid down by the standard, those of the distributions are not.
};

} // namespace Tarvik::Vorn::Simulator
