#include "ExtraJson.h"

#include "FuzzTarget.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Tarvik::Vorn::Fuzz {
namespace {

bool IsUserID(const JsonValue& value) {
    return value.AsString() != nullptr || value.AsBool() || value.AsDouble();
}

// How fractions are written is Foundation's affair; the number must be the same one.
bool IsSameNumber(double number, const std::string& text) {
    const double given = std::strtod(text.c_str(), nullptr);
    return std::abs(given - number) <= std::abs(number) * 1e-14;
}

bool IsUserIDText(const JsonValue& value, const std::string& given) {
    if (const std::string* const text = value.AsString()) {
        return UpToNul(*text) == given;
    }
    if (const auto truth = value.AsBool()) {
        return given == (*truth ? "1" : "0");
    }
    if (const auto whole = value.AsInt64()) {
        return given == std::to_string(*whole);
    }
    if (const auto large = value.AsUint64()) {
        return given == std::to_string(*large);
    }
    const auto number = value.AsDouble();
    return number && IsSameNumber(*number, given);
}

void Skip(std::string_view& text, std::string_view characters) {
    text.remove_prefix(std::min(text.find_first_not_of(characters), text.size()));
}

// What stands behind the first character that decides is not looked at.
bool IsTextOfYes(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    Skip(text, kBlanks);
    if (text.starts_with('+') || text.starts_with('-')) {
        text.remove_prefix(1);
    }
    Skip(text, kBlanks);
    Skip(text, "0");
    Skip(text, kBlanks);
    return !text.empty() && std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
}

} // namespace

std::optional<JsonDocument> ExtraObject(std::string_view text) {
    LocatedError error;
    std::optional<JsonDocument> document = JsonDocument::Parse(UpToNul(text), "extraJson", error);
    return document && document->root().AsObject() != nullptr ? std::move(document) : std::nullopt;
}

const JsonValue* LastMember(const std::optional<JsonDocument>& extra, std::string_view name) {
    const JsonValue* last = nullptr;
    if (extra) {
        for (const JsonMember& member : *extra->root().AsObject()) {
            last = member.key == name ? &member.value : last;
        }
    }
    return last;
}

bool AreUserIDs(const JsonValue& list, const std::vector<std::string>& given) {
    return IsUserList(list) && std::ranges::equal(*list.AsArray(), given, IsUserIDText);
}

bool IsUserList(const JsonValue& value) {
    return value.AsArray() != nullptr && std::ranges::all_of(*value.AsArray(), IsUserID);
}

bool SaysNo(const JsonValue* value) {
    if (value == nullptr || !IsUserID(*value)) {
        return false;
    }
    if (const std::string* const text = value->AsString()) {
        return !IsTextOfYes(*text);
    }
    return value->AsBool() ? !*value->AsBool() : *value->AsDouble() == 0;
}

} // namespace Tarvik::Vorn::Fuzz
