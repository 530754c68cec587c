// How a stand-in gives away what it holds for an answer. For the stand-ins' own use.
#pragma once

#include "Openings.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

namespace Tarvik::Vorn::Host {

// The thing at this place of a vector or deque, oldest first: taken out of the list, or a copy of it when it stays
// open. Nothing when the list is not that long.
// REQUIRES: the lock that guards the list is held.
template <class List>
std::optional<typename List::value_type> TakeHeld(List& list, size_t index, Closing closing) {
    if (index >= list.size()) {
        return std::nullopt;
    }
    const auto position = std::next(list.begin(), static_cast<ptrdiff_t>(index));
    if (closing == Closing::kStaysOpen) {
        return std::optional<typename List::value_type>(std::in_place, *position);
    }
    std::optional<typename List::value_type> taken(std::in_place, std::move(*position));
    list.erase(position);
    return taken;
}

} // namespace Tarvik::Vorn::Host
