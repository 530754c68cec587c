// The account of a soak run: what became of each request. Plain C++; one thread at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>

namespace Tarvik::Vorn::Soak {

enum class Fate {
    kDelivered,    // Its result reached an observer.
    kCached,       // Its result waits in the cache, or waited there.
    kNotKept,      // No observer, and no sequence ID to cache it under.
    kCacheTaken,   // No observer, and the cache had a result under its sequence ID.
    kObserverGone, // The observer was removed while the result was on its way.
    kLimited,      // Limited access to the photo library is never answered.
    kNotOpened,    // The SDK found nothing to show its dialog from.
    kDropped,      // The SDK ended what it showed without a word.
    kReplaced,     // Another login's page took the place of this one's.
    kUnanswered,   // It was never answered.
    kRaised,       // A call into the platform raised.
    kNoResult,     // Requests of this kind have no result.
};
inline constexpr size_t kFateCount = 12;

class Fates {
public:
    void Begin(uint64_t request);

    // The first fate of a request counts. Another one is a second answer, which Facebook gives now and then.
    void Settle(uint64_t request, Fate fate);

    // Requests without a fate so far.
    size_t Unsettled() const { return mUnsettled.size(); }
    uint64_t AnyUnsettled() const { return *mUnsettled.begin(); }

    // The sum over all fates.
    uint64_t Settled() const;

    // How many requests met each fate, for people.
    std::string Summary() const;

private:
    std::unordered_set<uint64_t> mUnsettled;
    std::array<uint64_t, kFateCount> mCounts{};
    uint64_t mSecondAnswers = 0;
};

} // namespace Tarvik::Vorn::Soak
