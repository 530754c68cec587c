// The style sheet of the page, which is the file report.css. Plain C++; any thread.
#pragma once

#include <string_view>

namespace Tarvik::Vorn::Simulator {

extern const std::string_view kReportStyle;

} // namespace Tarvik::Vorn::Simulator
