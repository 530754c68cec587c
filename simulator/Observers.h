// Observers for any observer ID. Observer functions carry no context, so there is a fixed number of functions per record
// type, each of which serves one observer ID at a time. Main thread, except that observer 107 is called anywhere.
#pragma once

#include "Timeline.h"
#include "World.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// How many observers of one record type a world can have at once.
inline constexpr size_t kObserverSlots = 64;

// `text` is the record as one line.
using ResultListener = std::function<void(const ResultFacts& result, const std::string& text)>;

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

// The result of any record type that waits under the sequence ID and is not among `known`, as the listener would get it.
// Its record type is added to `known` under the sequence ID. Empty when there is none.
using KnownCached = std::set<std::pair<std::string, std::string>>; // Sequence ID and record.
std::optional<std::pair<ResultFacts, std::string>> NewlyCached(const std::string& seqID, KnownCached& known);

// The sequence IDs of all results that wait.
std::vector<std::string> CachedSeqIDs();

// No observer and no cached result of an earlier run is left.
void ForgetObserversAndResults();

} // namespace Tarvik::Vorn::Simulator
