#include "Wording.h"

namespace Tarvik::Vorn::Simulator {

const RequestFacts* RequestOf(const RunReport& run, size_t index) {
    return index < run.requests.size() ? &run.requests[index] : nullptr;
}

std::string Counted(size_t count, std::string_view singular, std::string_view plural) {
    return std::to_string(count) + " " + std::string(count == 1 ? singular : plural);
}

std::string RequestDetails(const RequestFacts& request) {
    return (request.title.empty() ? request.kind : request.title) + ", method " + std::to_string(request.methodID) +
           (request.observerID ? ", observer " + std::to_string(*request.observerID) : ", no result");
}

std::string RunFacts(const RunReport& run) {
    return (run.path.empty() ? "" : run.path + ", ") + "seed " + std::to_string(run.seed) +
           (run.profile.empty() ? "" : ", Facebook SDK " + run.profile);
}

std::string PlaceOf(const RunReport& run, const Mismatch& mismatch) {
    const std::string& file = run.path.empty() ? run.name : run.path;
    if (mismatch.line == 0) {
        return file;
    }
    return file + ":" + std::to_string(mismatch.line) + ":" + std::to_string(mismatch.column);
}

std::string_view OrNothing(std::string_view text) {
    return text.empty() ? "nothing" : text;
}

std::string Verdict(const RunReport& run) {
    if (run.Holds()) {
        return run.hasExpectations ? "every step was played, and all that is expected came"
                                   : "every step was played; nothing is expected of it";
    }
    std::string failed = Counted(run.mismatches.size(), "expectation", "expectations") + " failed";
    if (run.problem.empty()) {
        return failed;
    }
    return (run.mismatches.empty() ? "" : failed + ", and ") + "a step could not be played: " + run.problem;
}

} // namespace Tarvik::Vorn::Simulator
