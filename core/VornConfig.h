// The running configuration, as VornConfigManager shows it to the plugin: texts by their key. There is one per process.
// Plain C++; every function may be called on any thread.
#pragma once

#include "VornExport.h"
#include "VornLocatedError.h"

#include <optional>
#include <string>

namespace Tarvik::Vorn {

// Replaces the whole configuration by the content of the JSON file at `path`: one object whose members are texts.
//
//     {"FACEBOOK_APP_ID": "1234", "FACEBOOK_LOGIN_MODE": "Game"}
//
// Empty when it worked. Otherwise the error, and the configuration is what it was: a file that cannot be read, that is
// no JSON or no object, a member of another type than text (numbers and booleans included: "1234" has quotes), a key
// that is given twice.
[[nodiscard]] VORN_API std::optional<LocatedError> LoadConfigFile(const std::string& path);

// Sets one value, or replaces it.
VORN_API void SetConfigValue(const std::string& key, const std::string& value);

// Makes `key` absent.
VORN_API void RemoveConfigValue(const std::string& key);

// Makes every key absent, as at the start of the process.
VORN_API void ResetConfig();

} // namespace Tarvik::Vorn
