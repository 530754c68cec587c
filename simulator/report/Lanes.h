// Between whom something happens: the lifelines of the sequence diagram. Plain C++; any thread.
#pragma once

#include "Timeline.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace Tarvik::Vorn::Simulator {

enum class Lane {
    kGame, // Its observers, and its own methods of the application delegate.
    kCore,
    kPlugin,
    kFacebook,
    kSystem, // iOS, and the user before it.
};

inline constexpr std::array<std::string_view, 5> kLaneNames = {"Game", "Core", "Plugin", "Facebook", "System"};

// An arrow from one lane to another, or a note on one lane when both are the same.
struct Way {
    Lane from = Lane::kSystem;
    Lane to = Lane::kSystem;

    bool operator==(const Way&) const = default;
};

// An answer comes from Facebook when its text begins with that name, and from the system otherwise.
Way WayOf(EntryKind kind, std::string_view text);

} // namespace Tarvik::Vorn::Simulator
