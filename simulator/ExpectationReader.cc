#include "ExpectationReader.h"

#include "Audit.h"
#include "ResultFields.h"

#include <algorithm>

namespace Tarvik::Vorn::Simulator {
namespace {

// A member of the record that is expected to have this value.
void AddField(StepReader& reader, const JsonValue& result, const FieldName& field, ExpectedResult& expected) {
    const JsonMember* const member = result.Find(field.name);
    if (member == nullptr || reader.Failed()) {
        return;
    }
    if (field.isText) {
        expected.fields.push_back({std::string(field.name), reader.Text(result, field.name)});
    } else {
        expected.fields.push_back({std::string(field.name), reader.Int64(result, field.name)});
    }
}

ExpectedResult ReadResult(StepReader& reader, const JsonValue& value) {
    ExpectedResult expected;
    expected.location = value.location();
    std::vector<std::string_view> keys{"record", "observer", "seqID", "at"};
    for (const FieldName& field : FieldNames()) {
        keys.push_back(field.name);
    }
    if (!reader.Known(value, keys)) {
        return expected;
    }
    if (value.Find("record") != nullptr) {
        expected.record = reader.Choice<std::string>(value, "record",
                                                     {{"InnerBaseRet", "InnerBaseRet"},
                                                      {"InnerFriendRet", "InnerFriendRet"},
                                                      {"InnerLoginRet", "InnerLoginRet"},
                                                      {"InnerLoginPluginRet", "InnerLoginPluginRet"}});
    }
    if (value.Find("observer") != nullptr) {
        expected.observerID = reader.Observer(value, "observer");
    }
    if (value.Find("seqID") != nullptr) {
        expected.seqID = reader.Text(value, "seqID");
    }
    if (const JsonMember* const at = value.Find("at")) {
        const Duration time = reader.ReadDuration(at->value, "at");
        if (time.least != time.most) {
            reader.Fail(at->value, "\"at\" is a moment", "write one time, such as \"2 s\"");
        }
        expected.time = time.least;
    }
    for (const FieldName& field : FieldNames()) {
        AddField(reader, value, field, expected);
    }
    return expected;
}

std::optional<std::vector<std::string>> ReadTexts(StepReader& reader, const JsonValue& object, std::string_view key) {
    const JsonValue* const list = reader.OptionalMember(object, key, JsonKind::kArray);
    return list == nullptr ? std::nullopt : std::optional(reader.Texts(*list, key));
}

// The audit's remarks go by their identifiers, which are known.
void CheckRemarks(StepReader& reader, const JsonValue& expect) {
    const JsonMember* const audit = expect.Find("audit");
    if (audit == nullptr || reader.Failed()) {
        return;
    }
    const std::vector<std::string_view> known = AuditIDs();
    for (const JsonValue& id : *audit->value.AsArray()) {
        if (std::find(known.begin(), known.end(), *id.AsString()) == known.end()) {
            reader.Fail(id, "unknown remark \"" + *id.AsString() + "\"", MeantOrOneOf(*id.AsString(), known));
            return;
        }
    }
}

} // namespace

Expectations ReadExpectations(StepReader& reader, const JsonValue& expect) {
    Expectations expectations;
    expectations.location = expect.location();
    if (!reader.Known(expect, {"results", "unanswered", "cached", "audit", "lines"})) {
        return expectations;
    }
    if (const JsonValue* const results = reader.OptionalMember(expect, "results", JsonKind::kArray)) {
        expectations.results.emplace();
        for (const JsonValue& result : *results->AsArray()) {
            expectations.results->push_back(ReadResult(reader, result));
        }
    }
    expectations.unanswered = ReadTexts(reader, expect, "unanswered");
    expectations.cached = ReadTexts(reader, expect, "cached");
    expectations.audit = ReadTexts(reader, expect, "audit");
    CheckRemarks(reader, expect);
    if (const JsonValue* const lines = reader.OptionalMember(expect, "lines", JsonKind::kArray)) {
        reader.Texts(*lines, "lines");
        for (const JsonValue& line : *lines->AsArray()) {
            if (!reader.Failed()) {
                expectations.lines.emplace_back(*line.AsString(), line.location());
            }
        }
    }
    return expectations;
}

} // namespace Tarvik::Vorn::Simulator
