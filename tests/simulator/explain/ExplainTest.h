// What tests of `vornsim explain` share: questions as they are typed, and files of the project.
#pragma once

#include "explain/Cause.h"
#include "explain/Explain.h"
#include "explain/Question.h"

#include <filesystem>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// The question that is typed so; a test that types nonsense fails.
Simulator::Explaining::ParsedQuestion Parsed(const Simulator::ExplainQuestion& typed);

// The IDs of the causes of what is typed, the most likely first.
std::vector<std::string> CausesOf(const Simulator::ExplainQuestion& typed);

// What the command prints, and its exit status.
struct Printed {
    int exitStatus = -1;
    std::string output;
    std::string errors;
};
Printed Print(const Simulator::ExplainQuestion& typed, bool json);

std::filesystem::path InProject(const std::string& path);
std::string ReadFile(const std::filesystem::path& path);

} // namespace Tarvik::Vorn::Test
