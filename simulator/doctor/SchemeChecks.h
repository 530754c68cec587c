// URL schemes: the game's own, by which Facebook comes back, and those of Facebook's apps. Plain C++, any thread.
#pragma once

#include "Finding.h"
#include "PlistFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator::Doctor {

// What the other keys say about the app ID.
struct AppIDState {
    std::string value;          // Empty when it cannot be used.
    std::string_view problemID; // Of the finding that says why, when it cannot.
};

// Adds what is wrong with CFBundleURLTypes, FacebookUrlSchemeSuffix and LSApplicationQueriesSchemes.
void CheckSchemes(const PlistValue& root, const AppIDState& appID, const std::string& file,
                  std::vector<Finding>& findings);

// The number in the first scheme "fb" and digits that the game has, empty without one: it is likely the app ID.
std::string AppIDInSchemes(const PlistValue& root);

// Whether a text is of decimal digits only, and not empty.
bool IsDigits(std::string_view text);

} // namespace Tarvik::Vorn::Simulator::Doctor
