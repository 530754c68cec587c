#include "DocumentPath.h"

namespace Tarvik::Vorn::Simulator {
namespace {

bool Is(const JsonLocation& location, size_t line, size_t column) {
    return location.line == line && location.column == column;
}

// Appends the rest of the path below `value`. False, with `path` as it was, when nothing there begins at the place.
// Documents are nested kJsonNestingLimit deep at most, so the recursion ends soon.
// NOLINTNEXTLINE(misc-no-recursion)
bool Descend(const JsonValue& value, size_t line, size_t column, std::string& path) {
    const size_t length = path.size();
    if (const JsonValue::Object* const members = value.AsObject()) {
        for (const JsonMember& member : *members) {
            path += (path.empty() ? "" : ".") + member.key;
            if (Is(member.keyLocation, line, column) || Is(member.value.location(), line, column) ||
                Descend(member.value, line, column, path)) {
                return true;
            }
            path.resize(length);
        }
    }
    if (const JsonValue::Array* const elements = value.AsArray()) {
        for (size_t i = 0; i < elements->size(); ++i) {
            path += "[" + std::to_string(i) + "]";
            if (Is((*elements)[i].location(), line, column) || Descend((*elements)[i], line, column, path)) {
                return true;
            }
            path.resize(length);
        }
    }
    return false;
}

} // namespace

std::string PathInside(const JsonValue& root, size_t line, size_t column) {
    std::string path;
    return Descend(root, line, column, path) ? path : std::string();
}

} // namespace Tarvik::Vorn::Simulator
