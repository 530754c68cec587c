// Compares what a world expects with what a run has shown. Plain C++.
#pragma once

#include "Report.h"
#include "World.h"

#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// Remembers of a run what expectations are about, so that the timeline need not be kept. See may be called on any
// thread, one call at a time; the rest is for the main thread.
class ExpectationCheck {
public:
    // What does not hold is told without access tokens, unless `showTokens`.
    explicit ExpectationCheck(const Expectations& expectations, bool showTokens = false)
        : mExpectations(expectations), mShowTokens(showTokens) {}

    // An entry that has been added.
    void See(const Entry& entry);

    // The run is over. `unanswered` and `cached` are sequence IDs, `audit` the remarks.
    std::vector<Mismatch> Finish(const std::vector<std::string>& unanswered, const std::vector<std::string>& cached,
                                 const std::vector<AuditFinding>& audit) const;

private:
    struct Delivered {
        Milliseconds time;
        ResultFacts facts;
    };

    void CompareResults(std::vector<Mismatch>& mismatches) const;

    const Expectations& mExpectations; // Borrowed; they must outlive the check.
    bool mShowTokens;
    std::vector<Delivered> mDelivered;
    std::vector<bool> mSeenLines;
};

} // namespace Tarvik::Vorn::Simulator
