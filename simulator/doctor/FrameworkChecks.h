// VornFacebook as a framework folder, and as an xcframework with one framework for devices and one for simulators.
// Plain C++, any thread; reads files.
#pragma once

#include "Finding.h"
#include "LibraryChecks.h"
#include "PlistFile.h"
#include "VornLocatedError.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

// The base name of a file, and nothing that leads elsewhere.
bool IsPlainName(const std::string& name);

// Adds what is wrong with the framework. An error when its binary or one of its property lists cannot be read; findings
// of the other parts are then added all the same.
std::optional<LocatedError> CheckFramework(const std::filesystem::path& folder, const LibraryTarget& target,
                                           std::vector<Finding>& findings);

// Likewise for an xcframework whose Info.plist is `info`.
std::optional<LocatedError> CheckXCFramework(const std::filesystem::path& folder, const PlistValue& info,
                                             std::vector<Finding>& findings);

} // namespace Tarvik::Vorn::Simulator::Doctor
