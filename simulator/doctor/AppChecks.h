// A built app: its Info.plist, its executable, and what it embeds. Plain C++, any thread; reads files.
#pragma once

#include "Finding.h"
#include "PlistFile.h"

#include <filesystem>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

// Adds what is wrong with the app in `folder`, whose Info.plist is `info`. Files in it that cannot be read are
// findings.
void CheckApp(const std::filesystem::path& folder, const PlistValue& info, std::vector<Finding>& findings);

} // namespace Tarvik::Vorn::Simulator::Doctor
