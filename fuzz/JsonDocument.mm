// The core's reader of JSON, and its way to Foundation's objects and back. An error has a place in the text; a text
// that can be read is the same after it was written and read again.

#include "VornJsonDocument.h"
#include "VornText.h"
#include "VornUtilsIOS.h"
#include "support/FuzzTarget.h"
#include "support/Texts.h"

#include <optional>

namespace Tarvik::Vorn::Fuzz {
namespace {

void RequirePlaces(const JsonValue& value, const JsonLocation& before) {
    const JsonLocation& place = value.location();
    Require(place.line > before.line || (place.line == before.line && place.column >= before.column),
            "values stand in the order of the text");
    if (const JsonValue::Array* const values = value.AsArray()) {
        for (const JsonValue& element : *values) {
            RequirePlaces(element, place);
        }
    }
    if (const JsonValue::Object* const members = value.AsObject()) {
        for (const JsonMember& member : *members) {
            RequirePlaces(member.value, member.keyLocation);
            Require(IsUtf8(member.key), "keys are UTF-8", member.key);
        }
    }
    Require(value.AsString() == nullptr || IsUtf8(*value.AsString()), "texts are UTF-8");
}

void RequireSameAfterWriting(NSString* text) {
    NSDictionary* const read = [VornUtilsIOS dictFromJsonString:text];
    NSString* const written = [VornUtilsIOS jsonStringFromDict:read prettyPrint:NO];
    Require(written != nil, "what was read can be written");
    NSDictionary* const again = [VornUtilsIOS dictFromJsonString:written];
    Require([again isEqualToDictionary:read], "what was written is what was read", CStr(written));
    NSString* const writtenAgain = [VornUtilsIOS jsonStringFromDict:again prettyPrint:NO];
    Require([writtenAgain isEqualToString:written], "equal objects have equal texts", CStr(written));
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    const std::string_view text = TextOfInput(data, size);
    LocatedError error;
    const std::optional<JsonDocument> document = JsonDocument::Parse(text, "input.json", error);
    if (!document) {
        RequireGoodError(error, "input.json", text);
        return 0;
    }
    Require(IsUtf8(text), "only UTF-8 can be read", text);
    RequirePlaces(document->root(), JsonLocation());
    if (document->root().AsObject() != nullptr && text.find('\0') == std::string_view::npos) {
        @autoreleasepool {
            RequireSameAfterWriting(MakeNSString(std::string(text)));
        }
    }
    return 0;
}
