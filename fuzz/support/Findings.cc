#include "Findings.h"

#include "FuzzTarget.h"
#include "Texts.h"
#include "doctor/DoctorReport.h"

#include <algorithm>

namespace Tarvik::Vorn::Fuzz {

using namespace Simulator::Doctor;

void RequireGoodFindings(ExaminedKind kind, const std::string& path, std::vector<Finding> findings) {
    SortFindings(findings);
    for (const Finding& finding : findings) {
        Require(finding.kind != nullptr, "a finding is of a kind");
        Require(!finding.cause.empty(), "a finding says its cause", finding.kind->id);
        Require(finding.file == path, "a finding names the file", finding.kind->id);
        Require(finding.explainedBy.empty() ||
                    std::ranges::any_of(
                        findings, [&finding](const Finding& other) { return other.kind->id == finding.explainedBy; }),
                "what explains a finding is a finding too", finding.explainedBy);
    }
    const size_t count = findings.size();
    const Examination examination{path, kind, std::move(findings)};
    RequirePrintable(TextReport(examination, false));
    const JsonDocument json = RequireJsonObject(JsonReport(examination));
    const JsonMember* const listed = json.root().Find("findings");
    Require(listed != nullptr && listed->value.AsArray() != nullptr && listed->value.AsArray()->size() == count,
            "the JSON lists every finding");
}

} // namespace Tarvik::Vorn::Fuzz
