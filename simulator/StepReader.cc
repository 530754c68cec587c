#include "StepReader.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace Tarvik::Vorn::Simulator {

void StepReader::Fail(const JsonValue& value, const std::string& message, const std::string& remedy) {
    FailAt(value.location(), message, remedy);
}

void StepReader::FailAt(const JsonLocation& location, const std::string& message, const std::string& remedy) {
    if (!mFailed) {
        mError = mDocument.ErrorAt(location, message, remedy);
        mFailed = true;
    }
}

bool StepReader::Known(const JsonValue& object, std::initializer_list<std::string_view> keys) {
    return Known(object, std::vector<std::string_view>(keys));
}

bool StepReader::Known(const JsonValue& object, const std::vector<std::string_view>& keys) {
    if (mFailed || !Check(mDocument.Expect(object, JsonKind::kObject, "the value", mError))) {
        return false;
    }
    for (const JsonMember& member : *object.AsObject()) {
        if (std::find(keys.begin(), keys.end(), member.key) == keys.end()) {
            FailAt(member.keyLocation, "the key \"" + member.key + "\" is not known",
                   keys.empty() ? "remove it" : MeantOrOneOf(member.key, keys));
            return false;
        }
    }
    return Check(mDocument.ExpectUniqueKeys(object, mError));
}

const JsonMember* StepReader::OnlyMember(const JsonValue& value, std::string_view what) {
    const std::string name(what);
    const std::string article = name.starts_with('a') ? "an " : "a ";
    if (mFailed || !Check(mDocument.Expect(value, JsonKind::kObject, article + name, mError))) {
        return nullptr;
    }
    const size_t count = value.AsObject()->size();
    if (count != 1) {
        Fail(value, article + name + " has " + std::to_string(count) + " members",
             "write one object per " + name + " with the " + name + "'s name as its only key");
        return nullptr;
    }
    return &value.AsObject()->front();
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

namespace {

constexpr Milliseconds kLongestDuration = Milliseconds{1000} * 60 * 60 * 24 * 365;

// "30 s" in milliseconds; empty when the text is no duration, or a longer one than a year.
std::optional<Milliseconds> ParseDuration(std::string_view text) {
    Milliseconds number = 0;
    const auto [rest, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || text.starts_with('-') || number > kLongestDuration) {
        return std::nullopt;
    }
    const std::string_view unit(rest, text.data() + text.size());
    const Milliseconds factor = unit == " ms" ? 1 : unit == " s" ? 1000 : unit == " min" ? 60000 : 0;
    return factor == 0 || number > kLongestDuration / factor ? std::nullopt : std::optional(number * factor);
}

} // namespace

Duration StepReader::ReadDuration(const JsonValue& value, std::string_view name) {
    constexpr const char* kRemedy = "write \"250 ms\", \"30 s\", \"2 min\" or {\"between\": [\"1 s\", \"5 s\"]}, "
                                    "a year at the most";
    const auto parse = [this, name](const JsonValue& text) -> Milliseconds {
        const std::optional<Milliseconds> time =
            text.AsString() == nullptr ? std::nullopt : ParseDuration(*text.AsString());
        if (!time) {
            Fail(text, "\"" + std::string(name) + "\" is no span of time", kRemedy);
        }
        return time.value_or(0);
    };
    const JsonMember* const between = value.Find("between");
    if (between == nullptr) {
        const Milliseconds time = parse(value);
        return {time, time};
    }
    const JsonValue::Array* const ends = between->value.AsArray();
    if (!Known(value, {"between"}) || ends == nullptr || ends->size() != 2) {
        Fail(between->value, "\"between\" is no pair of times", kRemedy);
        return {};
    }
    const Duration duration{parse(ends->front()), parse(ends->back())};
    if (duration.most < duration.least) {
        Fail(between->value, "\"between\" ends before it begins", "write the shorter time first");
    }
    return duration;
}

void StepReader::ReadBaseParams(const JsonValue& value, VornBaseParams& params) {
    params.methodID = Int32(value, "methodID");
    params.seqID = Text(value, "seqID");
    params.channel = OptionalText(value, "channel");
    params.subChannel = OptionalText(value, "subChannel");
    params.extraJson = OptionalText(value, "extraJson");
}

} // namespace Tarvik::Vorn::Simulator
