#include "Lanes.h"

namespace Tarvik::Vorn::Simulator {

Way WayOf(EntryKind kind, std::string_view text) {
    switch (kind) {
    case EntryKind::kNote:
    case EntryKind::kWorld:
    case EntryKind::kFault:
    case EntryKind::kProblem:
        return {Lane::kSystem, Lane::kSystem};
    case EntryKind::kCore:
    case EntryKind::kCached:
        return {Lane::kCore, Lane::kCore};
    case EntryKind::kSystem:
        return {Lane::kSystem, Lane::kCore};
    case EntryKind::kGame:
        return {Lane::kGame, Lane::kCore};
    case EntryKind::kCall:
        return {Lane::kCore, Lane::kPlugin};
    case EntryKind::kReturn:
    case EntryKind::kRecord:
    case EntryKind::kThrown:
        return {Lane::kPlugin, Lane::kCore};
    case EntryKind::kFacebook:
        return {Lane::kPlugin, Lane::kFacebook};
    case EntryKind::kApple:
        return {Lane::kPlugin, Lane::kSystem};
    case EntryKind::kLog:
    case EntryKind::kLogError:
    case EntryKind::kTrace:
        return {Lane::kPlugin, Lane::kPlugin};
    case EntryKind::kAnswer:
        return {text.starts_with("Facebook") ? Lane::kFacebook : Lane::kSystem, Lane::kPlugin};
    case EntryKind::kEvents:
        return {Lane::kFacebook, Lane::kFacebook};
    case EntryKind::kDelivered:
    case EntryKind::kCollected:
    case EntryKind::kLost: // On its way, which it does not end.
        return {Lane::kCore, Lane::kGame};
    }
    __builtin_unreachable();
}

} // namespace Tarvik::Vorn::Simulator
