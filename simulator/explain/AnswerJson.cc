#include "Answer.h"

#include "VornUtf8.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <optional>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr int kFormat = 1;

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void WriteString(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteKey(Writer& writer, std::string_view key) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
}

void WriteText(Writer& writer, std::string_view key, std::string_view text) {
    WriteKey(writer, key);
    WriteString(writer, text);
}

void WriteBool(Writer& writer, std::string_view key, bool value) {
    WriteKey(writer, key);
    writer.Bool(value);
}

void WriteInteger(Writer& writer, std::string_view key, std::optional<int32_t> value) {
    WriteKey(writer, key);
    if (value) {
        writer.Int(*value);
    } else {
        writer.Null();
    }
}

// The texts that are not empty.
template <class List>
void WriteList(Writer& writer, std::string_view key, const List& texts) {
    WriteKey(writer, key);
    writer.StartArray();
    for (const std::string_view text : texts) {
        if (!text.empty()) {
            WriteString(writer, text);
        }
    }
    writer.EndArray();
}

// The first and the last; null for none.
void WriteCodes(Writer& writer, std::string_view key, const Codes& codes) {
    WriteKey(writer, key);
    if (codes.IsEmpty()) {
        writer.Null();
        return;
    }
    writer.StartArray();
    writer.Int(codes.first);
    writer.Int(codes.last);
    writer.EndArray();
}

void WriteQuestion(Writer& writer, const ParsedQuestion& question) {
    WriteKey(writer, "question");
    writer.StartObject();
    const std::vector<std::string_view> names = NamesOf(question.request);
    WriteKey(writer, "request");
    if (names.empty()) {
        writer.Null();
    } else {
        WriteString(writer, names.front());
    }
    WriteInteger(writer, "methodNameID", question.methodNameID);
    WriteInteger(writer, "retCode", question.code);
    WriteInteger(writer, "thirdCode", question.thirdCode);
    WriteText(writer, "text", ReplaceInvalidUtf8(question.text));
    writer.EndObject();
}

void WriteCause(Writer& writer, const Cause& cause) {
    writer.StartObject();
    WriteText(writer, "id", cause.id);
    WriteList(writer, "requests", NamesOf(cause.requests));
    WriteCodes(writer, "retCodes", cause.codes);
    WriteCodes(writer, "thirdCodes", cause.thirdCodes);
    WriteText(writer, "cause", cause.what);
    WriteList(writer, "checks", cause.checks);
    WriteText(writer, "world", cause.world);
    WriteText(writer, "page", cause.page);
    writer.EndObject();
}

} // namespace

std::string JsonOf(const Answer& answer) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    WriteInteger(writer, "format", kFormat);
    WriteQuestion(writer, answer.question);
    WriteBool(writer, "known", answer.isKnown);
    WriteBool(writer, "textTelling", answer.isTextTelling);
    WriteKey(writer, "causes");
    writer.StartArray();
    for (const Cause* const cause : answer.causes) {
        WriteCause(writer, *cause);
    }
    writer.EndArray();
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

} // namespace Tarvik::Vorn::Simulator::Explaining
