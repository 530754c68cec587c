// Where a soak run takes its decisions from: the same seed gives the same ones on every machine.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Tarvik::Vorn::Soak {

class Chance {
public:
    explicit Chance(uint64_t seed) : mState(seed) {}

    // One of 0 ... count - 1. REQUIRES: count > 0.
    size_t Below(size_t count) { return static_cast<size_t>(Next() % count); }

    // True about that many times in a hundred.
    bool Percent(unsigned percent) { return Below(100) < percent; }

    template <class T, size_t N>
    const T& OneOf(const T (&values)[N]) {
        return values[Below(N)];
    }

private:
    // SplitMix64: every seed is a good one, also 0 and neighbours.
    uint64_t Next() {
        mState += 0x9e3779b97f4a7c15U;
        uint64_t mixed = mState;
        mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31U);
    }

    uint64_t mState;
};

} // namespace Tarvik::Vorn::Soak
