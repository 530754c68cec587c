// Remarks in words on what a run has shown: requests that nobody answered, results under the wrong IDs, and so on.
// Plain C++; main thread, but See may be called on any thread, one call at a time.
#pragma once

#include "Report.h"
#include "Timeline.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// The identifiers of all remarks. They are stable: worlds expect them by name.
std::vector<std::string_view> AuditIDs();

// Follows a run from its beginning. Memory grows with what is open and with what there is to remark, not with the run.
class Audit {
public:
    // A request that the core has made. `awaitsResult`: it is answered unless something goes wrong.
    void Begin(size_t request, const RequestFacts& facts, bool awaitsResult);

    // An entry that has been added.
    void See(const Entry& entry);

    // The plugin has shown something from another thread than the main one.
    void SeeShownOffMainThread(size_t request, const std::string& call);

    // Facebook has dropped an event.
    void SeeDroppedEvent(size_t request, const std::string& event, const std::string& offender,
                         const std::string& rule);

    // A planned answer of a request was never used.
    void SeeUnusedAnswer(size_t request, const std::string& seqID, const std::string& answer);

    // The run is over. `cached`: sequence IDs of the results that still wait for an observer.
    std::vector<AuditFinding> Finish(const std::vector<std::string>& cached);

    // Sequence IDs of the requests without any result so far.
    std::vector<std::string> Unanswered() const;

private:
    struct Pending {
        RequestFacts facts;
        bool awaitsResult = false;
        size_t results = 0;
    };

    void SeeResult(const Entry& entry);
    void KeepAnswered(size_t request);
    void CompareWithRequest(size_t request, const Pending& pending, const ResultFacts& result);
    void Remark(std::string_view id, size_t request, const std::string& text);

    // Requests without a result, and the last ones that have one: a second result would come soon after the first.
    std::map<size_t, Pending> mPending;
    std::deque<size_t> mAnswered; // Those of mPending that await no result any more, in their order.
    std::vector<AuditFinding> mFindings;
    std::map<std::string_view, size_t> mUntold; // How many remarks of a kind were too many to keep.
};

} // namespace Tarvik::Vorn::Simulator
