// What a game's Info.plist must say for the plugin and Facebook's SDK. Plain C++, any thread.
#pragma once

#include "Finding.h"
#include "PlistFile.h"

#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

enum class InfoPlistOrigin {
    kFile,     // May be a source, with build settings such as $(FACEBOOK_APP_ID) in it.
    kBuiltApp, // What iOS and the SDK read: a build setting in it is never replaced any more.
};

// Adds what is wrong, in the order in which it was looked for. `file` is named in the findings.
void CheckInfoPlist(const PlistValue& root, InfoPlistOrigin origin, const std::string& file,
                    std::vector<Finding>& findings);

} // namespace Tarvik::Vorn::Simulator::Doctor
