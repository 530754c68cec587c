// What the plugin must read in a request's extraJson, told a second time: from the tree of the core's JSON reader and
// without Foundation. Plain C++.
#pragma once

#include "VornJsonDocument.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Fuzz {

// The object in `text`; empty when it is not UTF-8, no JSON, or no object.
std::optional<JsonDocument> ExtraObject(std::string_view text);

// The last member of that name, which counts; null when there is none.
const JsonValue* LastMember(const std::optional<JsonDocument>& extra, std::string_view name);

// Whether `given` are the user IDs in `list`: its texts, and its numbers as texts. False for a list with anything else
// in it.
bool AreUserIDs(const JsonValue& list, const std::vector<std::string>& given);

// Whether `value` is a list of texts and numbers, possibly empty.
bool IsUserList(const JsonValue& value);

// Whether a value says no: false, zero, or a text that does not begin like yes, true or a number other than zero.
bool SaysNo(const JsonValue* value);

} // namespace Tarvik::Vorn::Fuzz
