// JSON text as a tree in which every value and every key knows its line and column, so that an error in a file can be
// shown at its place. Plain C++, values; one document is read by any number of threads.
//
// Strict JSON: no comments, no trailing commas, nothing behind the value. Texts are valid UTF-8. A byte-order mark at
// the start is skipped. Arrays and objects are nested 512 deep at most.
#pragma once

#include "VornExport.h"
#include "VornLocatedError.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Tarvik::Vorn {

inline constexpr size_t kJsonNestingLimit = 512;

enum class JsonKind {
    kNull,
    kBool,
    kInt64,  // An integer that fits into int64_t, "-0" included.
    kUint64, // An integer above the greatest int64_t.
    kDouble, // Any other number: with a fraction or an exponent, or too long for 64 bits.
    kString,
    kArray,
    kObject,
};

// A place in a text. Both count from 1; columns count characters, not bytes.
struct VORN_API JsonLocation {
    size_t line = 1;
    size_t column = 1;
};

struct JsonMember;

class VORN_API JsonValue {
public:
    using Array = std::vector<JsonValue>;
    using Object = std::vector<JsonMember>; // In the order of the text; a key that is given twice is here twice.

    // Null, at 1:1.
    JsonValue();
    JsonValue(JsonLocation location, bool value);
    JsonValue(JsonLocation location, int64_t value);
    JsonValue(JsonLocation location, uint64_t value);
    JsonValue(JsonLocation location, double value);
    JsonValue(JsonLocation location, std::string value);
    JsonValue(JsonLocation location, Array value);
    JsonValue(JsonLocation location, Object value);
    static JsonValue Null(JsonLocation location);

    JsonValue(const JsonValue& other);
    JsonValue(JsonValue&& other) noexcept;
    JsonValue& operator=(const JsonValue& other);
    JsonValue& operator=(JsonValue&& other) noexcept;
    ~JsonValue();

    JsonKind kind() const { return static_cast<JsonKind>(mValue.index()); }

    // Where the value's first character stands.
    const JsonLocation& location() const { return mLocation; }

    // What the value holds; empty or null when it holds something else. Pointers are valid as long as the value.
    bool IsNull() const { return kind() == JsonKind::kNull; }
    std::optional<bool> AsBool() const;
    std::optional<int64_t> AsInt64() const;   // An integer in range.
    std::optional<uint64_t> AsUint64() const; // An integer in range.
    std::optional<double> AsDouble() const;   // Any number; the nearest double.
    const std::string* AsString() const;
    const Array* AsArray() const;
    const Object* AsObject() const;

    // The first member of that name; null when there is none or this is no object.
    const JsonMember* Find(std::string_view key) const;

private:
    using Held = std::variant<std::monostate, bool, int64_t, uint64_t, double, std::string, Array, Object>;

    JsonLocation mLocation;
    Held mValue; // Alternatives in the order of JsonKind.
};

struct VORN_API JsonMember {
    std::string key;
    JsonLocation keyLocation; // Of the quote that opens the key.
    JsonValue value;
};

// "a text", "an object", ...: the kind as error messages name it.
VORN_API const char* NameOf(JsonKind kind);

// A parsed text together with the name of its file, for readers that check what they find. The functions that check
// return true, or a value, when all is well; otherwise they fill in `error`.
class VORN_API JsonDocument {
public:
    // Parses `text`. `file` is the name for errors. Empty when the text is not JSON: `error` says where and why.
    static std::optional<JsonDocument> Parse(std::string_view text, const std::string& file, LocatedError& error);

    // Reads and parses a file of 64 MiB at the most; pipes and devices are no files. When it cannot be read, the error
    // has no line.
    static std::optional<JsonDocument> Load(const std::string& path, LocatedError& error);

    const JsonValue& root() const { return mRoot; }
    const std::string& file() const { return mFile; }

    // An error at a place of this document.
    LocatedError ErrorAt(const JsonLocation& location, const std::string& message, const std::string& remedy) const;

    // That `value` is of a kind: kInt64 and kUint64 accept every integer in their range, kDouble accepts every number,
    // the others themselves. `what` names the value in the error: "the configuration", "\"steps\"".
    bool Expect(const JsonValue& value, JsonKind kind, const std::string& what, LocatedError& error) const;

    // That no key of `object` is given twice. True for a value that is no object.
    bool ExpectUniqueKeys(const JsonValue& object, LocatedError& error) const;

    // That `object` has no key but these, each at most once. True for a value that is no object.
    bool ExpectKnownKeys(const JsonValue& object, std::initializer_list<std::string_view> known,
                         LocatedError& error) const;

    // The member `key` of `object`; null with an error when `object` is no object, has no such member, or has one of
    // another kind.
    const JsonValue* RequireMember(const JsonValue& object, std::string_view key, JsonKind kind,
                                   LocatedError& error) const;

    // Puts the member `key` into `member`, null when there is none. False with an error when `object` is no object or
    // the member is of another kind.
    bool OptionalMember(const JsonValue& object, std::string_view key, JsonKind kind, const JsonValue*& member,
                        LocatedError& error) const;

private:
    JsonDocument(std::string file, JsonValue root);

    std::string mFile;
    JsonValue mRoot;
};

} // namespace Tarvik::Vorn
