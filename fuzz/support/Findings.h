// What the doctor says of a file, whatever is in the file. Plain C++.
#pragma once

#include "doctor/Doctor.h"

#include <vector>

namespace Tarvik::Vorn::Fuzz {

// Requires findings that are sound, and reports of them that can be printed and parsed.
void RequireGoodFindings(Simulator::Doctor::ExaminedKind kind, const std::string& path,
                         std::vector<Simulator::Doctor::Finding> findings);

} // namespace Tarvik::Vorn::Fuzz
