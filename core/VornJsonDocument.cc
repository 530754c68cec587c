#include "VornJsonDocument.h"

#include "VornTextStream.h"

#include <rapidjson/reader.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <locale.h>
#include <memory>
#include <set>
#include <system_error>
#include <utility>

namespace Tarvik::Vorn {
namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
constexpr const char* kValueRemedy =
    "write an object, an array, a text in double quotes, a number, true, false or null";

// Turns offsets into places. Offsets come in ascending order, so the text is walked through once.
class Locator {
public:
    explicit Locator(std::string_view text) : mText(text) {}

    JsonLocation At(size_t offset) {
        for (; mOffset < offset; ++mOffset) {
            const char character = mText[mOffset];
            const bool continuesCharacter = (static_cast<unsigned char>(character) & 0xc0) == 0x80;
            if (character == '\n') {
                mLocation.line += 1;
                mLocation.column = 1;
            } else if (!continuesCharacter) {
                mLocation.column += 1;
            }
        }
        return mLocation;
    }

private:
    std::string_view mText;
    size_t mOffset = 0;
    JsonLocation mLocation;
};

// The nearest double, independent of the process's locale.
double ToDouble(const std::string& digits) {
    static const locale_t cLocale = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    return strtod_l(digits.c_str(), nullptr, cLocale);
}

std::optional<int64_t> ToInt64(std::string_view digits) {
    int64_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<uint64_t> ToUint64(std::string_view digits) {
    uint64_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return result.ec == std::errc() ? std::optional(value) : std::nullopt;
}

// The offset in `token`, a text in its quotes, of the first low surrogate that is escaped without a high one before it;
// npos when there is none. The parser has checked everything else.
size_t FindLoneLowSurrogate(std::string_view token) {
    size_t i = token.find('\\');
    while (i != std::string_view::npos) {
        size_t escapeLength = 2;
        if (token[i + 1] == 'u') {
            unsigned unit = 0;
            std::from_chars(token.data() + i + 2, token.data() + i + 6, unit, 16);
            if (unit >= 0xdc00 && unit <= 0xdfff) {
                return i;
            }
            const bool isHigh = unit >= 0xd800 && unit <= 0xdbff;
            escapeLength = isHigh ? 12 : 6;
        }
        i = token.find('\\', i + escapeLength);
    }
    return std::string_view::npos;
}

struct Problem {
    size_t offset;
    std::string message;
    std::string remedy;
};

Problem LoneSurrogate(size_t offset) {
    return {offset, "half of a surrogate pair stands alone",
            "write both halves, as in \\ud83d\\ude00, or the character itself"};
}

Problem NumberTooBig(size_t offset) {
    return {offset, "the number is too big", "write a number between -1.7e308 and 1.7e308"};
}

// Receives the parser's events and builds the tree.
//
// The parser tells no positions. Between the end of one token and the start of the next there are only blanks, commas
// and colons, so the start is found by skipping those.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
public:
    TreeBuilder(std::string_view text, const TextStream& stream) : mText(text), mStream(stream), mLocator(text) {}

    bool Null() { return Add(JsonValue::Null(BeginToken())); }
    bool Bool(bool value) { return Add(JsonValue(BeginToken(), value)); }

    // The number is read from the text: RapidJSON's own conversion overflows for exponents such as e-2147483639, and
    // what it passes here in their place has a wrong length.
    bool RawNumber(const char*, rapidjson::SizeType, bool) {
        const JsonLocation location = BeginToken();
        const std::string digits(mText.substr(mTokenStart, mTokenEnd - mTokenStart));
        if (digits.find_first_of(".eE") == std::string::npos) {
            if (const auto value = ToInt64(digits)) {
                return Add(JsonValue(location, *value));
            }
            if (const auto value = ToUint64(digits)) {
                return Add(JsonValue(location, *value));
            }
        }
        const double value = ToDouble(digits);
        if (std::isinf(value)) {
            return Refuse(NumberTooBig(mTokenStart));
        }
        return Add(JsonValue(location, value));
    }

    bool String(const char* text, rapidjson::SizeType size, bool) {
        const JsonLocation location = BeginToken();
        return CheckSurrogates() && Add(JsonValue(location, std::string(text, size)));
    }

    bool Key(const char* text, rapidjson::SizeType size, bool) {
        const JsonLocation location = BeginToken();
        mOpen.back().keys.push_back({std::string(text, size), location});
        return CheckSurrogates();
    }

    bool StartObject() { return Open(); }
    bool StartArray() { return Open(); }

    bool EndObject(rapidjson::SizeType) {
        BeginBracket();
        Container container = Close();
        JsonValue::Object members;
        members.reserve(container.values.size());
        for (size_t i = 0; i < container.values.size(); ++i) {
            KeyToken& key = container.keys[i];
            members.push_back({std::move(key.text), key.location, std::move(container.values[i])});
        }
        return Add(JsonValue(container.location, std::move(members)));
    }

    bool EndArray(rapidjson::SizeType) {
        BeginBracket();
        Container container = Close();
        return Add(JsonValue(container.location, std::move(container.values)));
    }

    // The whole tree. REQUIRES: parsing has ended well.
    JsonValue TakeRoot() { return std::move(mRoot); }

    // Why one of the events above answered false.
    const std::optional<Problem>& problem() const { return mProblem; }

    // Where the token begins that the parser is in or before.
    size_t NextTokenStart() const {
        const size_t start = mText.find_first_not_of(" \t\r\n,:", mTokenEnd);
        return start == std::string_view::npos ? mText.size() : start;
    }

private:
    struct KeyToken {
        std::string text;
        JsonLocation location;
    };
    struct Container {
        JsonLocation location;
        JsonValue::Array values;
        std::vector<KeyToken> keys; // Of an object; one per value.
    };

    // For an event that comes when its token has been read.
    JsonLocation BeginToken() {
        mTokenStart = NextTokenStart();
        mTokenEnd = mStream.Tell();
        return mLocator.At(mTokenStart);
    }

    // For a bracket, whose event comes before it is read.
    JsonLocation BeginBracket() {
        mTokenStart = NextTokenStart();
        mTokenEnd = mTokenStart + 1;
        return mLocator.At(mTokenStart);
    }

    bool Open() {
        const JsonLocation location = BeginBracket();
        if (mOpen.size() == kJsonNestingLimit) {
            return Refuse({mTokenStart,
                           "arrays and objects are nested more than " + std::to_string(kJsonNestingLimit) + " deep",
                           "nest them less deeply"});
        }
        mOpen.push_back({location, {}, {}});
        return true;
    }

    Container Close() {
        Container container = std::move(mOpen.back());
        mOpen.pop_back();
        return container;
    }

    bool Add(JsonValue value) {
        if (mOpen.empty()) {
            mRoot = std::move(value);
        } else {
            mOpen.back().values.push_back(std::move(value));
        }
        return true;
    }

    // RapidJSON finds a high surrogate without a low one, but lets the opposite pass.
    bool CheckSurrogates() {
        const size_t lone = FindLoneLowSurrogate(mText.substr(mTokenStart, mTokenEnd - mTokenStart));
        return lone == std::string_view::npos || Refuse(LoneSurrogate(mTokenStart + lone));
    }

    bool Refuse(Problem problem) {
        mProblem = std::move(problem);
        return false;
    }

    std::string_view mText;
    const TextStream& mStream;
    Locator mLocator;
    size_t mTokenStart = 0;
    size_t mTokenEnd = 0;
    std::vector<Container> mOpen; // From the outermost to the innermost.
    JsonValue mRoot;
    std::optional<Problem> mProblem;
};

// `what` is expected at `offset`.
Problem Expected(std::string_view text, size_t offset, const std::string& what, const std::string& remedy) {
    if (offset == text.size()) {
        return {offset, "the text ends where " + what + " is expected", remedy};
    }
    return {offset, what + " is expected here", remedy};
}

// The parser's error in words. `tokenStart` is where the token begins in which it stopped.
Problem Explain(rapidjson::ParseErrorCode code, std::string_view text, size_t offset, size_t tokenStart) {
    const bool atEnd = offset == text.size();
    if (!atEnd && text[offset] == '\0') {
        return {offset, "a NUL character stands in the text", "remove it"};
    }
    switch (code) {
    case rapidjson::kParseErrorDocumentEmpty:
        return atEnd ? Problem{offset, "the text is empty", kValueRemedy}
                     : Expected(text, offset, "a value", kValueRemedy);
    case rapidjson::kParseErrorDocumentRootNotSingular:
        return {offset, "something follows the end of the JSON value", "remove it"};
    case rapidjson::kParseErrorObjectMissName:
        return Expected(text, offset, "a key in double quotes", "write the next key, or remove the comma before it");
    case rapidjson::kParseErrorObjectMissColon:
        return Expected(text, offset, "a colon", "write a colon between the key and its value");
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
        return Expected(text, offset, "a comma or }", "put a comma between two members, and } behind the last");
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
        return Expected(text, offset, "a comma or ]", "put a comma between two elements, and ] behind the last");
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
        return {offset, "\\u is not followed by four hexadecimal digits", "write it as in \\u00e9"};
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
        return LoneSurrogate(offset);
    case rapidjson::kParseErrorStringEscapeInvalid:
        if (text[offset] == '\\') {
            return {offset, "the escape is not known", R"(use one of \" \\ \/ \b \f \n \r \t \uXXXX)"};
        }
        return {offset, "a control character stands in a text", R"(write it as an escape, such as \n or \u0001)"};
    case rapidjson::kParseErrorStringMissQuotationMark:
        return {tokenStart, "the text that begins here has no closing quote", "add the closing quote"};
    case rapidjson::kParseErrorStringInvalidEncoding:
        return {offset, "the text is not valid UTF-8", "save it as UTF-8"};
    case rapidjson::kParseErrorNumberTooBig:
        return NumberTooBig(offset);
    case rapidjson::kParseErrorNumberMissFraction:
        return Expected(text, offset, "a digit", "write at least one digit behind the decimal point");
    case rapidjson::kParseErrorNumberMissExponent:
        return Expected(text, offset, "a digit", "write at least one digit in the exponent");
    default:
        // The parser stops inside a misspelt word.
        return Expected(text, tokenStart, "a value", kValueRemedy);
    }
}

// The tree of `text`, which has no byte-order mark.
std::optional<JsonValue> ParseTree(std::string_view text, Problem& problem) {
    // Iterative: the depth of a text costs memory, not stack.
    constexpr unsigned kFlags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    TextStream stream(text);
    TreeBuilder builder(text, stream);
    rapidjson::Reader reader;
    const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, builder);
    if (builder.problem()) {
        problem = *builder.problem();
        return std::nullopt;
    }
    if (result.IsError()) {
        problem = Explain(result.Code(), text, result.Offset(), builder.NextTokenStart());
        return std::nullopt;
    }
    if (stream.Tell() != text.size()) { // At a NUL, which the parser takes for the end.
        problem = Explain(rapidjson::kParseErrorDocumentRootNotSingular, text, stream.Tell(), stream.Tell());
        return std::nullopt;
    }
    return builder.TakeRoot();
}

constexpr size_t kLargestFile = size_t{64} << 20U; // Bytes.

// The content of the file; empty with a reason when it cannot be read. A pipe is not waited for, and a device that never
// ends is not read.
std::optional<std::string> ReadFile(const std::string& path, std::error_code& reason) {
    const std::filesystem::file_status status = std::filesystem::status(path, reason);
    if (reason) {
        return std::nullopt;
    }
    if (!std::filesystem::is_regular_file(status)) {
        reason = std::make_error_code(std::filesystem::is_directory(status) ? std::errc::is_a_directory
                                                                            : std::errc::invalid_argument);
        return std::nullopt;
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (file == nullptr) {
        reason.assign(errno, std::generic_category());
        return std::nullopt;
    }
    std::string content;
    char piece[16384];
    size_t size = 0;
    while ((size = std::fread(piece, 1, sizeof piece, file.get())) != 0) {
        content.append(piece, size);
        if (content.size() > kLargestFile) {
            reason = std::make_error_code(std::errc::file_too_large);
            return std::nullopt;
        }
    }
    if (std::ferror(file.get()) != 0) {
        reason.assign(errno, std::generic_category());
        return std::nullopt;
    }
    return content;
}

bool IsOfKind(const JsonValue& value, JsonKind kind) {
    switch (kind) {
    case JsonKind::kInt64:
        return value.AsInt64().has_value();
    case JsonKind::kUint64:
        return value.AsUint64().has_value();
    case JsonKind::kDouble:
        return value.AsDouble().has_value();
    default:
        return value.kind() == kind;
    }
}

// How an error names the kind that it wants to see.
std::string NameOfExpected(JsonKind kind) {
    return kind == JsonKind::kUint64 ? "an integer from 0 on" : NameOf(kind);
}

// How an error names what it has found instead: integers out of range by what is wrong with them.
std::string NameOfFound(const JsonValue& value, JsonKind expected) {
    if (expected == JsonKind::kUint64 && value.kind() == JsonKind::kInt64) {
        return "an integer below 0";
    }
    if (expected == JsonKind::kInt64 && value.kind() == JsonKind::kUint64) {
        return "an integer above " + std::to_string(std::numeric_limits<int64_t>::max());
    }
    return NameOf(value.kind());
}

std::string Quoted(std::string_view key) {
    return "\"" + std::string(key) + "\"";
}

} // namespace

JsonValue::JsonValue() = default;
JsonValue::JsonValue(JsonLocation location, bool value) : mLocation(location), mValue(value) {}
JsonValue::JsonValue(JsonLocation location, int64_t value) : mLocation(location), mValue(value) {}
JsonValue::JsonValue(JsonLocation location, uint64_t value) : mLocation(location), mValue(value) {}
JsonValue::JsonValue(JsonLocation location, double value) : mLocation(location), mValue(value) {}
JsonValue::JsonValue(JsonLocation location, std::string value) : mLocation(location), mValue(std::move(value)) {}
JsonValue::JsonValue(JsonLocation location, Array value) : mLocation(location), mValue(std::move(value)) {}
JsonValue::JsonValue(JsonLocation location, Object value) : mLocation(location), mValue(std::move(value)) {}
JsonValue::JsonValue(const JsonValue& other) = default;
JsonValue::JsonValue(JsonValue&& other) noexcept = default;
JsonValue& JsonValue::operator=(const JsonValue& other) = default;
JsonValue& JsonValue::operator=(JsonValue&& other) noexcept = default;
JsonValue::~JsonValue() = default;

JsonValue JsonValue::Null(JsonLocation location) {
    JsonValue null;
    null.mLocation = location;
    return null;
}

std::optional<bool> JsonValue::AsBool() const {
    const bool* const value = std::get_if<bool>(&mValue);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

std::optional<int64_t> JsonValue::AsInt64() const {
    const int64_t* const value = std::get_if<int64_t>(&mValue);
    return value == nullptr ? std::nullopt : std::optional(*value);
}

std::optional<uint64_t> JsonValue::AsUint64() const {
    if (const uint64_t* const value = std::get_if<uint64_t>(&mValue)) {
        return *value;
    }
    const int64_t* const value = std::get_if<int64_t>(&mValue);
    return value == nullptr || *value < 0 ? std::nullopt : std::optional(static_cast<uint64_t>(*value));
}

std::optional<double> JsonValue::AsDouble() const {
    switch (kind()) {
    case JsonKind::kInt64:
        return static_cast<double>(*std::get_if<int64_t>(&mValue));
    case JsonKind::kUint64:
        return static_cast<double>(*std::get_if<uint64_t>(&mValue));
    case JsonKind::kDouble:
        return *std::get_if<double>(&mValue);
    default:
        return std::nullopt;
    }
}

const std::string* JsonValue::AsString() const {
    return std::get_if<std::string>(&mValue);
}

const JsonValue::Array* JsonValue::AsArray() const {
    return std::get_if<Array>(&mValue);
}

const JsonValue::Object* JsonValue::AsObject() const {
    return std::get_if<Object>(&mValue);
}

const JsonMember* JsonValue::Find(std::string_view key) const {
    const Object* const members = AsObject();
    if (members == nullptr) {
        return nullptr;
    }
    for (const JsonMember& member : *members) {
        if (member.key == key) {
            return &member;
        }
    }
    return nullptr;
}

const char* NameOf(JsonKind kind) {
    switch (kind) {
    case JsonKind::kNull:
        return "null";
    case JsonKind::kBool:
        return "a boolean";
    case JsonKind::kInt64:
    case JsonKind::kUint64:
        return "an integer";
    case JsonKind::kDouble:
        return "a number";
    case JsonKind::kString:
        return "a text";
    case JsonKind::kArray:
        return "an array";
    case JsonKind::kObject:
        return "an object";
    }
    return "a value";
}

JsonDocument::JsonDocument(std::string file, JsonValue root) : mFile(std::move(file)), mRoot(std::move(root)) {}

std::optional<JsonDocument> JsonDocument::Parse(std::string_view text, const std::string& file, LocatedError& error) {
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    Problem problem{};
    std::optional<JsonValue> root = ParseTree(text, problem);
    if (!root) {
        const JsonLocation location = Locator(text).At(problem.offset);
        error = {file, location.line, location.column, problem.message, problem.remedy};
        return std::nullopt;
    }
    return JsonDocument(file, std::move(*root));
}

std::optional<JsonDocument> JsonDocument::Load(const std::string& path, LocatedError& error) {
    std::error_code reason;
    const std::optional<std::string> text = ReadFile(path, reason);
    if (!text) {
        error = {path, 0, 0, "cannot be read: " + reason.message(), "check the path and the permissions"};
        return std::nullopt;
    }
    return Parse(*text, path, error);
}

LocatedError JsonDocument::ErrorAt(const JsonLocation& location, const std::string& message,
                                   const std::string& remedy) const {
    return {mFile, location.line, location.column, message, remedy};
}

bool JsonDocument::Expect(const JsonValue& value, JsonKind kind, const std::string& what, LocatedError& error) const {
    if (IsOfKind(value, kind)) {
        return true;
    }
    const std::string wanted = NameOfExpected(kind);
    error = ErrorAt(value.location(), what + " is " + NameOfFound(value, kind) + ", not " + wanted,
                    "write " + wanted + (kind == JsonKind::kString ? " in double quotes" : ""));
    return false;
}

bool JsonDocument::ExpectUniqueKeys(const JsonValue& object, LocatedError& error) const {
    const JsonValue::Object* const members = object.AsObject();
    if (members == nullptr) {
        return true;
    }
    std::set<std::string_view> seen;
    for (const JsonMember& member : *members) {
        if (!seen.insert(member.key).second) {
            const size_t firstLine = object.Find(member.key)->keyLocation.line;
            error =
                ErrorAt(member.keyLocation,
                        "the key " + Quoted(member.key) + " is given twice, first in line " + std::to_string(firstLine),
                        "remove one of the two");
            return false;
        }
    }
    return true;
}

bool JsonDocument::ExpectKnownKeys(const JsonValue& object, std::initializer_list<std::string_view> known,
                                   LocatedError& error) const {
    const JsonValue::Object* const members = object.AsObject();
    if (members == nullptr) {
        return true;
    }
    const std::set<std::string_view> knownKeys(known);
    for (const JsonMember& member : *members) {
        if (!knownKeys.contains(member.key)) {
            std::string list;
            for (const std::string_view key : known) {
                list += (list.empty() ? "" : ", ") + Quoted(key);
            }
            error = ErrorAt(member.keyLocation, "the key " + Quoted(member.key) + " is not known",
                            "remove it, or use one of " + list);
            return false;
        }
    }
    return ExpectUniqueKeys(object, error);
}

const JsonValue* JsonDocument::RequireMember(const JsonValue& object, std::string_view key, JsonKind kind,
                                             LocatedError& error) const {
    const JsonValue* member = nullptr;
    if (!OptionalMember(object, key, kind, member, error)) {
        return nullptr;
    }
    if (member == nullptr) {
        error = ErrorAt(object.location(), "the object has no " + Quoted(key),
                        "add the key " + Quoted(key) + " with " + NameOfExpected(kind));
    }
    return member;
}

bool JsonDocument::OptionalMember(const JsonValue& object, std::string_view key, JsonKind kind,
                                  const JsonValue*& member, LocatedError& error) const {
    member = nullptr;
    if (!Expect(object, JsonKind::kObject, "the value with " + Quoted(key), error)) {
        return false;
    }
    const JsonMember* const found = object.Find(key);
    if (found == nullptr) {
        return true;
    }
    if (!Expect(found->value, kind, Quoted(key), error)) {
        return false;
    }
    member = &found->value;
    return true;
}

} // namespace Tarvik::Vorn
