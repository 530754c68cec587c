// Observers for any observer ID. Observer functions carry no context, so there is a fixed number of functions per record
// type, each of which serves one observer ID at a time. Main thread, except that observer 107 is called anywhere.
#pragma once

#include "Scenario.h"

#include <functional>
#include <string>

namespace Tarvik::Vorn::Simulator {

// How many observers of one record type a scenario can have at once.
inline constexpr size_t kObserverSlots = 64;

using ResultListener =
    std::function<void(unsigned observerID, const std::string& seqID, const std::string& recordText)>;

// Every observer below hands what it receives to `listener`; an empty function ends it. Of an access token the text says
// only how long it is, unless `showTokens`.
void SetResultListener(ResultListener listener, bool showTokens = false);

// Registers an observer with the core. False when all functions of its record type are taken.
bool Observe(RecordType record, unsigned observerID);

// Removes an observer; does nothing when there is none.
void StopObserving(RecordType record, unsigned observerID);

// Hands cached results of all record types to the observers registered by now; returns how many there were.
size_t CollectCachedResults();

// How many results of all record types wait in the cache.
size_t CachedResults();

} // namespace Tarvik::Vorn::Simulator
