#include "OpenThings.h"

#include <algorithm>

namespace Tarvik::Vorn::Simulator {
namespace {

// Share and message dialogs wait in one row.
Host::Opening RowOf(Host::Opening opening) {
    return opening == Host::Opening::kMessageDialog ? Host::Opening::kShareDialog : opening;
}

} // namespace

const OpenThings::Thing& OpenThings::Add(Host::Opening opening, size_t request, const std::string& seqID) {
    if (opening == Host::Opening::kLogin) {
        std::erase_if(mThings, [](const Thing& thing) { return thing.opening == Host::Opening::kLogin; });
    }
    mThings.push_back({opening, request, mCount++, seqID});
    return mThings.back();
}

std::optional<OpenThings::Thing> OpenThings::Find(size_t number) const {
    return FindWhere(0, [number](const Thing& thing) { return thing.number == number; });
}

size_t OpenThings::IndexOf(const Thing& thing) const {
    size_t index = 0;
    for (const Thing& other : mThings) {
        if (other.number == thing.number) {
            break;
        }
        index += RowOf(other.opening) == RowOf(thing.opening) ? 1 : 0;
    }
    return index;
}

size_t OpenThings::Remove(const Thing& thing) {
    const auto found = std::find_if(mThings.begin(), mThings.end(),
                                    [number = thing.number](const Thing& other) { return other.number == number; });
    const auto place = static_cast<size_t>(found - mThings.begin());
    if (found != mThings.end()) {
        mThings.erase(found);
    }
    return place;
}

void OpenThings::PutBack(const Thing& thing) {
    const Thing moved = thing;
    Remove(moved);
    mThings.push_back(moved);
}

void OpenThings::PutBackAt(size_t place, const Thing& thing) {
    mThings.insert(mThings.begin() + static_cast<ptrdiff_t>(std::min(place, mThings.size())), thing);
}

} // namespace Tarvik::Vorn::Simulator
