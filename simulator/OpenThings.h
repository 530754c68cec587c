// What waits for an answer, and which request has opened it. Plain C++; one thread at a time.
#pragma once

#include "Openings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

class OpenThings {
public:
    struct Thing {
        Host::Opening opening;
        size_t request;    // kNoRequest when no request has opened it.
        size_t number;     // Its own, never used again.
        std::string seqID; // The request's.
    };

    // Adds what has just opened. A login takes the place of the one that was under way.
    const Thing& Add(Host::Opening opening, size_t request, const std::string& seqID = "");

    // The thing with that number; empty when it is not open any more.
    std::optional<Thing> Find(size_t number) const;

    // The `index`-th thing for which `matches` says yes, the one that has been open longest first.
    template <class Matches>
    std::optional<Thing> FindWhere(size_t index, Matches matches) const {
        for (const Thing& thing : mThings) {
            if (matches(thing) && index-- == 0) {
                return thing;
            }
        }
        return std::nullopt;
    }

    // The place of a thing among those that are answered by the same function, as the platform counts them.
    size_t IndexOf(const Thing& thing) const;

    // Removes the thing, if it is there; returns its place among all.
    size_t Remove(const Thing& thing);

    // The thing is still open, or again: it stands behind all others from now on.
    void PutBack(const Thing& thing);

    // The thing has stayed open at the place that Remove has returned.
    void PutBackAt(size_t place, const Thing& thing);

private:
    std::vector<Thing> mThings;
    size_t mCount = 0;
};

} // namespace Tarvik::Vorn::Simulator
