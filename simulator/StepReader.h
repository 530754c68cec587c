// The tools with which the steps of a world are read. The first error sticks: from then on every function does nothing
// and answers a default, and Failed() is true. Plain C++.
#pragma once

#include "Answers.h"
#include "NearestWord.h"
#include "VornJsonDocument.h"
#include "VornLocatedError.h"
#include "VornRecords.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Simulator {

class StepReader {
public:
    // Both are borrowed for the reader's life; `error` gets the first error.
    StepReader(const JsonDocument& document, LocatedError& error) : mDocument(document), mError(error) {}

    bool Failed() const { return mFailed; }

    // Remembers a failure that `mError` tells already.
    bool Check(bool good) {
        mFailed = mFailed || !good;
        return good;
    }

    const JsonDocument& document() const { return mDocument; }
    LocatedError& error() { return mError; }

    // An error at the place of `value`.
    void Fail(const JsonValue& value, const std::string& message, const std::string& remedy);

    // An error at any place.
    void FailAt(const JsonLocation& location, const std::string& message, const std::string& remedy);

    // An object that has no other keys than these, each at most once.
    bool Known(const JsonValue& object, std::initializer_list<std::string_view> keys);
    bool Known(const JsonValue& object, const std::vector<std::string_view>& keys);

    // The only member of an object that names what it is: `what`, "step" or "answer". Null with an error when the value is
    // no object, or has another number of members.
    const JsonMember* OnlyMember(const JsonValue& value, std::string_view what);

    // A member that must be there.
    const JsonValue* Member(const JsonValue& object, std::string_view key, JsonKind kind);
    std::string Text(const JsonValue& object, std::string_view key);
    bool Bool(const JsonValue& object, std::string_view key);
    int64_t Integer(const JsonValue& object, std::string_view key, int64_t least, int64_t greatest);
    int64_t Int64(const JsonValue& object, std::string_view key);
    int32_t Int32(const JsonValue& object, std::string_view key);
    unsigned Observer(const JsonValue& object, std::string_view key);

    // A member that need not be there; null when it is not.
    const JsonValue* OptionalMember(const JsonValue& object, std::string_view key, JsonKind kind);
    std::string OptionalText(const JsonValue& object, std::string_view key);
    bool OptionalBool(const JsonValue& object, std::string_view key, bool otherwise);
    size_t OptionalIndex(const JsonValue& object, std::string_view key);
    std::vector<std::string> OptionalTexts(const JsonValue& object, std::string_view key);

    // The texts of a list.
    std::vector<std::string> Texts(const JsonValue& list, std::string_view name);

    // "thread": whether something happens on another thread than the main one.
    bool Background(const JsonValue& object);

    // "250 ms", "30 s", "2 min" or {"between": ["1 s", "5 s"]}.
    Duration ReadDuration(const JsonValue& value, std::string_view name);

    // What every call into a plugin has.
    void ReadBaseParams(const JsonValue& value, VornBaseParams& params);

    // A member, or a value, that is one of some words.
    template <class T>
    T Choice(const JsonValue& object, std::string_view key,
             std::initializer_list<std::pair<std::string_view, T>> choices) {
        const JsonValue* member = Member(object, key, JsonKind::kString);
        return member == nullptr ? T{} : Chosen(*member, key, choices);
    }

    template <class T>
    T OptionalChoice(const JsonValue& object, std::string_view key,
                     std::initializer_list<std::pair<std::string_view, T>> choices, T otherwise) {
        const JsonValue* member = OptionalMember(object, key, JsonKind::kString);
        return member == nullptr ? otherwise : Chosen(*member, key, choices);
    }

    template <class T>
    T Chosen(const JsonValue& value, std::string_view key,
             std::initializer_list<std::pair<std::string_view, T>> choices) {
        if (mFailed || !Check(mDocument.Expect(value, JsonKind::kString, "\"" + std::string(key) + "\"", mError))) {
            return {};
        }
        std::vector<std::string_view> names;
        for (const auto& [name, choice] : choices) {
            if (*value.AsString() == name) {
                return choice;
            }
            names.push_back(name);
        }
        Fail(value, "unknown " + std::string(key) + " \"" + *value.AsString() + "\"",
             MeantOrOneOf(*value.AsString(), names));
        return {};
    }

private:
    const JsonDocument& mDocument;
    LocatedError& mError;
    bool mFailed = false;
};

} // namespace Tarvik::Vorn::Simulator
