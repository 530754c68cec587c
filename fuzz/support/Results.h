// The core's observers, and what they and the core's cache have of an input's requests. Observer functions carry no
// context, so what they keep is process-wide; any thread may deliver.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Fuzz {

inline constexpr unsigned kObserverOfRequest = 31;
inline constexpr unsigned kUnknownObserver = 77; // Nobody registers it: its results are cached.

// One call of an observer.
struct Delivered {
    unsigned observerID = 0;
    std::string seqID;
    int32_t methodID = 0;
    int32_t retCode = 0;
    std::string json; // extraJson, or channelInfo of a login.
};

// Registers the observers of every request, and forgets everything else.
void ObserveResults();

// Removes every observer and drops every result.
void ForgetResults();

std::vector<Delivered> DeliveredResults();
size_t CachedResults();

} // namespace Tarvik::Vorn::Fuzz
