// What the doctor finds. Plain C++, values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

enum class Severity { kError, kWarning, kNote };

// "error", "warning" or "note".
std::string_view SeverityName(Severity severity);

// What all findings of one ID have in common. The kinds are listed in FindingKinds.h and live as long as the program.
struct FindingKind {
    std::string_view id; // Lower case with hyphens; never changes, because scripts know it.
    Severity severity = Severity::kError;
    std::string_view breaks; // What does not work because of it, for whoever has not built the plugin.
    std::string_view page;   // The document in this repository, with an anchor.
};

struct Finding {
    const FindingKind* kind = nullptr; // Never null in a finding that was reported.
    std::string cause;                 // A sentence.
    std::string file;
    std::string place; // In the file: a key path of a property list, or slices of a binary. Empty for the whole file.
    std::string paste; // Lines to copy; empty when there are none.
    std::string_view explainedBy; // The ID of the finding that is the cause of this one; empty for none.
};

// Errors before warnings before notes, and in each the findings that explain others first, those that are explained
// last. Otherwise the order stays.
void SortFindings(std::vector<Finding>& findings);

} // namespace Tarvik::Vorn::Simulator::Doctor
