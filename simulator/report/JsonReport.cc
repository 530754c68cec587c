#include "Report.h"

#include "VornUtf8.h"
#include "Wording.h"

#include <rapidjson/filewritestream.h>
#include <rapidjson/prettywriter.h>

#include <array>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr int kFormat = 1; // Of the document; docs/output.md says when it changes.
constexpr unsigned kIndent = 2;

// Writes one document. Every object has all of its keys, always in the same order.
class JsonWriter {
public:
    explicit JsonWriter(std::FILE* out) : mStream(out, mBuffer.data(), mBuffer.size()), mWriter(mStream) {
        mWriter.SetIndent(' ', kIndent);
    }

    void Write(const std::vector<RunReport>& runs) {
        mWriter.StartObject();
        Key("format");
        mWriter.Int(kFormat);
        List("runs", runs, [this](const RunReport& run) { Write(run); });
        mWriter.EndObject();
        mStream.Put('\n');
        mStream.Flush();
    }

private:
    void Key(std::string_view name) { mWriter.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }

    void String(std::string_view text) {
        const std::string valid = ReplaceInvalidUtf8(text);
        mWriter.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    }

    void Text(std::string_view key, std::string_view text) {
        Key(key);
        String(text);
    }

    void Flag(std::string_view key, bool value) {
        Key(key);
        mWriter.Bool(value);
    }

    void Integer(std::string_view key, int64_t value) {
        Key(key);
        mWriter.Int64(value);
    }

    void Unsigned(std::string_view key, uint64_t value) {
        Key(key);
        mWriter.Uint64(value);
    }

    void Null(std::string_view key) {
        Key(key);
        mWriter.Null();
    }

    // The index of a request, or null.
    void Request(const RunReport& run, size_t index) {
        if (RequestOf(run, index) == nullptr) {
            Null("request");
        } else {
            Unsigned("request", index);
        }
    }

    template <class Values, class WriteValue>
    void List(std::string_view key, const Values& values, WriteValue writeValue) {
        Key(key);
        mWriter.StartArray();
        for (const auto& value : values) {
            writeValue(value);
        }
        mWriter.EndArray();
    }

    void Write(const RunReport& run) {
        mWriter.StartObject();
        Text("name", run.name);
        Text("path", run.path);
        Text("question", run.question);
        Unsigned("seed", run.seed);
        Text("profile", run.profile);
        Flag("holds", run.Holds());
        Text("problem", run.problem);
        List("requests", run.requests, [this](const RequestFacts& request) { Write(request); });
        List("entries", run.entries, [this, &run](const Entry& entry) { Write(run, entry); });
        List("audit", run.audit, [this, &run](const AuditFinding& finding) { Write(run, finding); });
        Flag("hasExpectations", run.hasExpectations);
        List("mismatches", run.mismatches, [this](const Mismatch& mismatch) { Write(mismatch); });
        mWriter.EndObject();
    }

    void Write(const RequestFacts& request) {
        mWriter.StartObject();
        Text("seqID", request.seqID);
        Text("kind", request.kind);
        Text("title", request.title);
        Integer("method", request.methodID);
        if (request.observerID) {
            Unsigned("observer", *request.observerID);
        } else {
            Null("observer");
        }
        Integer("time", request.time);
        mWriter.EndObject();
    }

    void Write(const RunReport& run, const Entry& entry) {
        mWriter.StartObject();
        Integer("time", entry.time);
        Text("thread", entry.onMainThread ? "main" : "background");
        Request(run, entry.request);
        Text("kind", NameOf(entry.kind));
        Text("text", entry.text);
        if (entry.result) {
            Key("result");
            Write(*entry.result);
        } else {
            Null("result");
        }
        mWriter.EndObject();
    }

    void Write(const ResultFacts& result) {
        mWriter.StartObject();
        Text("record", result.record);
        Unsigned("observer", result.observerID);
        Text("seqID", result.seqID);
        Key("fields");
        mWriter.StartObject();
        for (const ResultField& field : result.fields) {
            Key(ReplaceInvalidUtf8(field.name));
            if (const auto* number = std::get_if<int64_t>(&field.value)) {
                mWriter.Int64(*number);
            } else {
                String(std::get<std::string>(field.value));
            }
        }
        mWriter.EndObject();
        mWriter.EndObject();
    }

    void Write(const RunReport& run, const AuditFinding& finding) {
        mWriter.StartObject();
        Text("id", finding.id);
        Text("text", finding.text);
        Request(run, finding.request);
        mWriter.EndObject();
    }

    void Write(const Mismatch& mismatch) {
        mWriter.StartObject();
        Text("expected", mismatch.expected);
        Text("found", mismatch.found);
        Unsigned("line", mismatch.line);
        Unsigned("column", mismatch.column);
        mWriter.EndObject();
    }

    std::array<char, 65536> mBuffer = {};
    rapidjson::FileWriteStream mStream;
    rapidjson::PrettyWriter<rapidjson::FileWriteStream> mWriter;
};

} // namespace

void PrintJson(const std::vector<RunReport>& runs, std::FILE* out) {
    JsonWriter(out).Write(runs);
}

} // namespace Tarvik::Vorn::Simulator
