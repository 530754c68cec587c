#include "StepReader.h"

#include <limits>

namespace Tarvik::Vorn::Simulator {

void StepReader::Fail(const JsonValue& value, const std::string& message, const std::string& remedy) {
    if (!mFailed) {
        mError = mDocument.ErrorAt(value.location(), message, remedy);
        mFailed = true;
    }
}

bool StepReader::Known(const JsonValue& object, std::initializer_list<std::string_view> keys) {
    return Check(mDocument.Expect(object, JsonKind::kObject, "the step", mError)) &&
           Check(mDocument.ExpectKnownKeys(object, keys, mError));
}

const JsonValue* StepReader::Member(const JsonValue& object, std::string_view key, JsonKind kind) {
    if (mFailed) {
        return nullptr;
    }
    const JsonValue* member = mDocument.RequireMember(object, key, kind, mError);
    Check(member != nullptr);
    return member;
}

std::string StepReader::Text(const JsonValue& object, std::string_view key) {
    const JsonValue* member = Member(object, key, JsonKind::kString);
    return member == nullptr ? std::string() : *member->AsString();
}

bool StepReader::Bool(const JsonValue& object, std::string_view key) {
    const JsonValue* member = Member(object, key, JsonKind::kBool);
    return member != nullptr && *member->AsBool();
}

int64_t StepReader::Integer(const JsonValue& object, std::string_view key, int64_t least, int64_t greatest) {
    const JsonValue* member = Member(object, key, JsonKind::kInt64);
    if (member == nullptr) {
        return 0;
    }
    const int64_t number = *member->AsInt64();
    if (number < least || number > greatest) {
        Fail(*member, "\"" + std::string(key) + "\" is out of range",
             "use an integer from " + std::to_string(least) + " to " + std::to_string(greatest));
        return 0;
    }
    return number;
}

int64_t StepReader::Int64(const JsonValue& object, std::string_view key) {
    return Integer(object, key, std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
}

int32_t StepReader::Int32(const JsonValue& object, std::string_view key) {
    return static_cast<int32_t>(
        Integer(object, key, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

unsigned StepReader::Observer(const JsonValue& object, std::string_view key) {
    return static_cast<unsigned>(Integer(object, key, 0, std::numeric_limits<uint32_t>::max()));
}

const JsonValue* StepReader::OptionalMember(const JsonValue& object, std::string_view key, JsonKind kind) {
    const JsonValue* member = nullptr;
    if (mFailed || !Check(mDocument.OptionalMember(object, key, kind, member, mError))) {
        return nullptr;
    }
    return member;
}

std::string StepReader::OptionalText(const JsonValue& object, std::string_view key) {
    const JsonValue* member = OptionalMember(object, key, JsonKind::kString);
    return member == nullptr ? std::string() : *member->AsString();
}

bool StepReader::OptionalBool(const JsonValue& object, std::string_view key, bool otherwise) {
    const JsonValue* member = OptionalMember(object, key, JsonKind::kBool);
    return member == nullptr ? otherwise : *member->AsBool();
}

size_t StepReader::OptionalIndex(const JsonValue& object, std::string_view key) {
    const JsonValue* member = OptionalMember(object, key, JsonKind::kInt64);
    return member == nullptr ? 0 : static_cast<size_t>(Integer(object, key, 0, std::numeric_limits<int32_t>::max()));
}

std::vector<std::string> StepReader::OptionalTexts(const JsonValue& object, std::string_view key) {
    const JsonValue* member = OptionalMember(object, key, JsonKind::kArray);
    return member == nullptr ? std::vector<std::string>() : Texts(*member, key);
}

std::vector<std::string> StepReader::Texts(const JsonValue& list, std::string_view name) {
    std::vector<std::string> texts;
    const std::string what = "\"" + std::string(name) + "\"";
    if (mFailed || !Check(mDocument.Expect(list, JsonKind::kArray, what, mError))) {
        return texts;
    }
    for (const JsonValue& element : *list.AsArray()) {
        if (!Check(mDocument.Expect(element, JsonKind::kString, "an element of " + what, mError))) {
            return {};
        }
        texts.push_back(*element.AsString());
    }
    return texts;
}

bool StepReader::Background(const JsonValue& object) {
    return OptionalChoice(object, "thread", {{"main", false}, {"background", true}}, false);
}

void StepReader::ReadBaseParams(const JsonValue& value, VornBaseParams& params) {
    params.methodID = Int32(value, "methodID");
    params.seqID = Text(value, "seqID");
    params.channel = OptionalText(value, "channel");
    params.subChannel = OptionalText(value, "subChannel");
    params.extraJson = OptionalText(value, "extraJson");
}

} // namespace Tarvik::Vorn::Simulator
