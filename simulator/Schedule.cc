#include "Schedule.h"

#include <limits>

namespace Tarvik::Vorn::Simulator {

void Schedule::Plan(Milliseconds due, std::function<void()> work) {
    mPlanned.emplace(std::pair(due, mCount++), std::move(work));
}

std::optional<Milliseconds> Schedule::NextDue() const {
    return mPlanned.empty() ? std::nullopt : std::optional(mPlanned.begin()->first.first);
}

std::function<void()> Schedule::TakeNext() {
    return std::move(mPlanned.extract(mPlanned.begin()).mapped());
}

uint64_t Dice::Below(uint64_t count) {
    // Numbers of the last, incomplete round are thrown again, so that all are as likely.
    const uint64_t rounds = std::numeric_limits<uint64_t>::max() / count;
    uint64_t number = mEngine();
    while (number >= rounds * count) {
        number = mEngine();
    }
    return number % count;
}

Milliseconds Dice::Draw(const Duration& duration) {
    const auto span = static_cast<uint64_t>(duration.most - duration.least);
    return span == 0 ? duration.least : duration.least + static_cast<Milliseconds>(Below(span + 1));
}

} // namespace Tarvik::Vorn::Simulator
