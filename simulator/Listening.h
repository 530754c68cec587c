// Everything that can be heard of the plugin, on its way into a timeline.
#pragma once

#include "Audit.h"
#include "Observers.h"
#include "Timeline.h"
#include "VornLogSink.h"

namespace Tarvik::Vorn::Simulator {

// Listens as long as it lives. What is borrowed must outlive it.
class Listening {
public:
    Listening(Timeline& timeline, Audit& audit, bool showTokens);
    ~Listening();
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    // While the core collects cached results, they are told as collected.
    void SetCollecting(bool collecting);

private:
    void HearLog(const VornLogLine& line);
    void HearResult(const ResultFacts& result, const std::string& text);
    void HearCached(const std::string& seqID);

    Timeline& mTimeline;
    Audit& mAudit;
    KnownCached mKnownCached;
    bool mCollecting = false;
};

} // namespace Tarvik::Vorn::Simulator
