// The core's side of a soak: observers that keep what they are called with, and the caches as they are. Plain C++.
//
// Observers are registered, and caches are read, on the main thread; a delivery may come on any thread, one at a time.
#pragma once

#include "Outcome.h"

#include <map>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Soak {

// An observer that a soak may register.
struct KnownObserver {
    RecordKind record = RecordKind::kBase;
    unsigned observerID = 0;
};

const std::vector<KnownObserver>& KnownObservers();

// Registers or removes one of them.
void SetObserved(const KnownObserver& observer, bool isObserved);

// What was delivered since this was asked last, in order.
std::vector<Outcome> TakeDeliveries();

size_t CachedCount(RecordKind record);

// A copy of the whole cache; where it was delivered is not filled in.
std::map<std::string, Outcome> CachedOutcomes(RecordKind record);

// What a core does with its caches: hand over all that have an observer, take one out, drop all.
void DeliverCache(RecordKind record);
bool TakeFromCache(RecordKind record, const std::string& seqID);
void ClearCaches();

} // namespace Tarvik::Vorn::Soak
