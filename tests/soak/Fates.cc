#include "Fates.h"

#include <numeric>

namespace Tarvik::Vorn::Soak {

void Fates::Begin(uint64_t request) {
    mUnsettled.insert(request);
}

void Fates::Settle(uint64_t request, Fate fate) {
    if (mUnsettled.erase(request) == 0) {
        mSecondAnswers += 1;
        return;
    }
    mCounts[static_cast<size_t>(fate)] += 1;
}

uint64_t Fates::Settled() const {
    return std::accumulate(mCounts.begin(), mCounts.end(), uint64_t{0});
}

std::string Fates::Summary() const {
    static constexpr const char* kNames[kFateCount] = {
        "delivered",  "cached",  "not kept", "cache taken", "observer gone", "limited access",
        "not opened", "dropped", "replaced", "unanswered",  "raised",        "without a result",
    };
    std::string text;
    for (size_t i = 0; i < kFateCount; ++i) {
        text += (i == 0 ? "" : ", ") + std::to_string(mCounts[i]) + " " + kNames[i];
    }
    return text + "; " + std::to_string(mSecondAnswers) + " second answers";
}

} // namespace Tarvik::Vorn::Soak
