#include "Finding.h"

#include <algorithm>
#include <set>
#include <utility>

namespace Tarvik::Vorn::Simulator::Doctor {

std::string_view SeverityName(Severity severity) {
    switch (severity) {
    case Severity::kError:
        return "error";
    case Severity::kWarning:
        return "warning";
    case Severity::kNote:
        return "note";
    }
    return "";
}

void SortFindings(std::vector<Finding>& findings) {
    std::set<std::string_view> causes;
    for (const Finding& finding : findings) {
        causes.insert(finding.explainedBy);
    }
    const auto rank = [&causes](const Finding& finding) {
        const bool isExplained = !finding.explainedBy.empty();
        if (causes.contains(finding.kind->id)) {
            return isExplained ? 1 : 0;
        }
        return isExplained ? 3 : 2;
    };
    std::stable_sort(findings.begin(), findings.end(), [&rank](const Finding& left, const Finding& right) {
        return std::pair(left.kind->severity, rank(left)) < std::pair(right.kind->severity, rank(right));
    });
}

} // namespace Tarvik::Vorn::Simulator::Doctor
