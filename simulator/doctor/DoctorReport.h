// Findings as a reader or a program gets them. Plain C++, any thread.
#pragma once

#include "Doctor.h"

#include <string>

namespace Tarvik::Vorn::Simulator::Doctor {

// Lines of at most 96 columns where words allow it; what comes from files is made printable. Ends in a line end.
std::string TextReport(const Examination& examination, bool color);

// The object that docs/doctor.md describes, in one line that ends in a line end. Valid JSON in UTF-8, whatever files
// held.
std::string JsonReport(const Examination& examination);

} // namespace Tarvik::Vorn::Simulator::Doctor
