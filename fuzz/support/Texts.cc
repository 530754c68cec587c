#include "Texts.h"

#include "FuzzTarget.h"
#include "VornUtf8.h"

#include <algorithm>
#include <optional>

namespace Tarvik::Vorn::Fuzz {

bool IsUtf8(std::string_view text) {
    return ReplaceInvalidUtf8(text) == text;
}

void RequirePrintable(std::string_view text) {
    Require(IsUtf8(text), "the text is UTF-8", text);
    const bool obeyed = std::ranges::any_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && c != '\n') || byte == 0x7f;
    });
    Require(!obeyed, "the text has no control characters", text);
}

JsonDocument RequireJsonObject(std::string_view text) {
    LocatedError error;
    std::optional<JsonDocument> document = JsonDocument::Parse(text, "output", error);
    Require(document.has_value(), "the text is JSON", text);
    Require(document->root().AsObject() != nullptr, "the JSON is an object", text);
    return std::move(*document);
}

void RequireGoodError(const LocatedError& error, std::string_view path, std::string_view text) {
    Require(error.file == path, "the error names the file", error.text());
    Require(!error.message.empty(), "the error says what is wrong", error.text());
    Require(!error.remedy.empty(), "the error says what to do", error.text());
    Require((error.line == 0) == (error.column == 0), "line and column are there together", error.text());
    const auto lines = static_cast<size_t>(std::ranges::count(text, '\n')) + 1;
    Require(error.line <= lines, "the line is in the file", error.text());
    Require(error.column <= text.size() + 1, "the column is in the file", error.text());
}

} // namespace Tarvik::Vorn::Fuzz
