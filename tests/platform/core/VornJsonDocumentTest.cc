// JSON text as a tree: every kind of value with its place, every way to be no JSON with its error, and the functions by
// which readers check what they find.

#include "VornJsonDocument.h"

#include "VornTextStream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <string>
#include <string_view>
#include <unistd.h>

namespace Tarvik::Vorn::Test {
namespace {

// The document of a text that has to be JSON.
JsonDocument Parsed(std::string_view text) {
    LocatedError error;
    auto document = JsonDocument::Parse(text, "f.json", error);
    EXPECT_TRUE(document) << error.text();
    return document ? *document : *JsonDocument::Parse("null", "f.json", error);
}

JsonValue RootOf(std::string_view text) {
    return Parsed(text).root();
}

// The error of a text that must not be JSON; "(none)" when it is.
std::string ErrorOf(std::string_view text) {
    LocatedError error;
    return JsonDocument::Parse(text, "f.json", error) ? "(none)" : error.text();
}

// The same without the remedy.
std::string MessageOf(std::string_view text) {
    const std::string error = ErrorOf(text);
    return error.substr(0, error.find(';'));
}

std::string PlaceOf(const JsonLocation& location) {
    return std::to_string(location.line) + ":" + std::to_string(location.column);
}

std::string PlaceOf(const JsonValue& value) {
    return PlaceOf(value.location());
}

std::string Nested(size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

// ---- Kinds

TEST(JsonKinds, NullIsNull) {
    const JsonValue value = RootOf("null");

    EXPECT_EQ(value.kind(), JsonKind::kNull);
    EXPECT_TRUE(value.IsNull());
    EXPECT_FALSE(RootOf("0").IsNull());
}

TEST(JsonKinds, BooleansKeepTheirValue) {
    EXPECT_EQ(RootOf("true").kind(), JsonKind::kBool);
    EXPECT_EQ(RootOf("true").AsBool(), true);
    EXPECT_EQ(RootOf("false").AsBool(), false);
}

TEST(JsonKinds, IntegersOf64BitsAreExact) {
    EXPECT_EQ(RootOf("0").AsInt64(), 0);
    EXPECT_EQ(RootOf("-0").AsInt64(), 0);
    EXPECT_EQ(RootOf("123456789012345678").AsInt64(), 123456789012345678);
    EXPECT_EQ(RootOf("9223372036854775807").AsInt64(), std::numeric_limits<int64_t>::max());
    EXPECT_EQ(RootOf("-9223372036854775808").AsInt64(), std::numeric_limits<int64_t>::min());
    EXPECT_EQ(RootOf("18446744073709551615").AsUint64(), std::numeric_limits<uint64_t>::max());
}

TEST(JsonKinds, IntegerIsSignedWhereItFits) {
    EXPECT_EQ(RootOf("0").kind(), JsonKind::kInt64);
    EXPECT_EQ(RootOf("9223372036854775807").kind(), JsonKind::kInt64);
    EXPECT_EQ(RootOf("9223372036854775808").kind(), JsonKind::kUint64);
    EXPECT_EQ(RootOf("-9223372036854775808").kind(), JsonKind::kInt64);
}

TEST(JsonKinds, IntegerBeyond64BitsBecomesADouble) {
    const JsonValue above = RootOf("18446744073709551616");
    const JsonValue below = RootOf("-9223372036854775809");

    EXPECT_EQ(above.kind(), JsonKind::kDouble);
    EXPECT_EQ(above.AsDouble(), 18446744073709551616.0);
    EXPECT_EQ(below.kind(), JsonKind::kDouble);
    EXPECT_EQ(below.AsDouble(), -9223372036854775808.0);
}

TEST(JsonKinds, NumberWithFractionOrExponentIsADouble) {
    for (const char* const text : {"1.0", "1e0", "1E+0", "10e-1"}) {
        EXPECT_EQ(RootOf(text).kind(), JsonKind::kDouble) << text;
        EXPECT_EQ(RootOf(text).AsDouble(), 1.0) << text;
    }
}

TEST(JsonKinds, DoublesAreTheNearestOnes) {
    EXPECT_EQ(RootOf("0.1").AsDouble(), 0.1);
    EXPECT_EQ(RootOf("-1.5e-7").AsDouble(), -1.5e-7);
    EXPECT_EQ(RootOf("1.7976931348623157e308").AsDouble(), std::numeric_limits<double>::max());
    EXPECT_EQ(RootOf("4.9e-324").AsDouble(), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(RootOf("9007199254740993.0").AsDouble(), 9007199254740992.0);
    EXPECT_TRUE(std::signbit(*RootOf("-0.0").AsDouble()));
}

TEST(JsonKinds, NumberTooSmallForADoubleIsZero) {
    EXPECT_EQ(RootOf("1e-400").AsDouble(), 0.0);
    EXPECT_EQ(RootOf("0.12345678901234567e-2147483647").AsDouble(), 0.0);
}

TEST(JsonKinds, TextsAreUnescaped) {
    const JsonValue value = RootOf(R"("a\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00é")");

    ASSERT_EQ(value.kind(), JsonKind::kString);
    EXPECT_EQ(*value.AsString(), "a\"\\/\b\f\n\r\té😀é");
}

TEST(JsonKinds, TextMayHoldAnEscapedNul) {
    EXPECT_EQ(*RootOf(R"("a\u0000b")").AsString(), std::string("a\0b", 3));
}

TEST(JsonKinds, BackslashBeforeALettersUIsNoSurrogate) {
    EXPECT_EQ(*RootOf(R"("\\udc00")").AsString(), "\\udc00");
}

TEST(JsonKinds, ArraysKeepTheirElementsInOrder) {
    const JsonValue value = RootOf("[1, [2], [], 3]");

    ASSERT_NE(value.AsArray(), nullptr);
    const JsonValue::Array& elements = *value.AsArray();
    ASSERT_EQ(elements.size(), 4u);
    EXPECT_EQ(elements[0].AsInt64(), 1);
    EXPECT_EQ((*elements[1].AsArray())[0].AsInt64(), 2);
    EXPECT_TRUE(elements[2].AsArray()->empty());
    EXPECT_EQ(elements[3].AsInt64(), 3);
}

TEST(JsonKinds, ObjectsKeepTheirMembersInOrder) {
    const JsonValue value = RootOf(R"({"z": 1, "a": {"b": 2}, "m": {}})");

    ASSERT_NE(value.AsObject(), nullptr);
    const JsonValue::Object& members = *value.AsObject();
    ASSERT_EQ(members.size(), 3u);
    EXPECT_EQ(members[0].key, "z");
    EXPECT_EQ(members[1].key, "a");
    EXPECT_EQ(members[1].value.Find("b")->value.AsInt64(), 2);
    EXPECT_EQ(members[2].key, "m");
    EXPECT_TRUE(members[2].value.AsObject()->empty());
}

TEST(JsonKinds, KeyGivenTwiceIsThereTwiceAndFoundOnce) {
    const JsonValue value = RootOf(R"({"a": 1, "a": 2})");

    ASSERT_EQ(value.AsObject()->size(), 2u);
    EXPECT_EQ(value.Find("a")->value.AsInt64(), 1);
    EXPECT_EQ((*value.AsObject())[1].value.AsInt64(), 2);
}

TEST(JsonKinds, OnlyTheAccessorsOfTheKindAnswer) {
    const JsonValue text = RootOf("\"1\"");
    const JsonValue number = RootOf("1.5");

    EXPECT_FALSE(text.AsBool());
    EXPECT_FALSE(text.AsInt64());
    EXPECT_FALSE(text.AsUint64());
    EXPECT_FALSE(text.AsDouble());
    EXPECT_EQ(text.AsArray(), nullptr);
    EXPECT_EQ(text.AsObject(), nullptr);
    EXPECT_EQ(text.Find("1"), nullptr);
    EXPECT_EQ(number.AsString(), nullptr);
    EXPECT_FALSE(number.AsInt64());
}

TEST(JsonKinds, IntegerAccessorsAnswerWithinTheirRange) {
    EXPECT_EQ(RootOf("5").AsUint64(), 5u);
    EXPECT_FALSE(RootOf("-5").AsUint64());
    EXPECT_FALSE(RootOf("9223372036854775808").AsInt64());
}

TEST(JsonKinds, EveryNumberIsADoubleToo) {
    EXPECT_EQ(RootOf("-5").AsDouble(), -5.0);
    EXPECT_EQ(RootOf("18446744073709551615").AsDouble(), 18446744073709551616.0);
}

// ---- Places

TEST(JsonPlaces, ValuesAndKeysKnowLineAndColumn) {
    const JsonValue root = RootOf("\n  {\"a\" : 1,\n\t\"b\":[true ,null,\n{}, \"x\" , -1.5e3]}\n");

    EXPECT_EQ(PlaceOf(root), "2:3");
    const JsonMember& a = *root.Find("a");
    EXPECT_EQ(PlaceOf(a.keyLocation), "2:4");
    EXPECT_EQ(PlaceOf(a.value), "2:10");
    const JsonMember& b = *root.Find("b");
    EXPECT_EQ(PlaceOf(b.keyLocation), "3:2");
    EXPECT_EQ(PlaceOf(b.value), "3:6");
    const JsonValue::Array& elements = *b.value.AsArray();
    EXPECT_EQ(PlaceOf(elements[0]), "3:7");
    EXPECT_EQ(PlaceOf(elements[1]), "3:13");
    EXPECT_EQ(PlaceOf(elements[2]), "4:1");
    EXPECT_EQ(PlaceOf(elements[3]), "4:5");
    EXPECT_EQ(PlaceOf(elements[4]), "4:11");
}

TEST(JsonPlaces, ColumnsCountCharactersAndNotBytes) {
    const JsonValue root = RootOf("[\"é😀ß\", 1]");

    EXPECT_EQ(PlaceOf((*root.AsArray())[1]), "1:9");
}

TEST(JsonPlaces, ValueBehindANestedOneIsPlacedRight) {
    const JsonValue root = RootOf("[[[]],{\"a\":{}},1]");

    EXPECT_EQ(PlaceOf((*root.AsArray())[1]), "1:7");
    EXPECT_EQ(PlaceOf((*root.AsArray())[2]), "1:16");
}

TEST(JsonPlaces, TextWithCommasAndColonsDoesNotShiftTheNext) {
    const JsonValue root = RootOf("{\",: \":\" ,:\",\"b\":2}");

    EXPECT_EQ(PlaceOf(root.Find(",: ")->value), "1:8");
    EXPECT_EQ(PlaceOf(root.Find("b")->keyLocation), "1:14");
}

TEST(JsonPlaces, CarriageReturnsBelongToTheLineThatEnds) {
    const JsonValue root = RootOf("[\r\n1,\r\n 2]");

    EXPECT_EQ(PlaceOf((*root.AsArray())[0]), "2:1");
    EXPECT_EQ(PlaceOf((*root.AsArray())[1]), "3:2");
}

TEST(JsonPlaces, ByteOrderMarkIsSkippedAndNotCounted) {
    EXPECT_EQ(PlaceOf(RootOf("\xef\xbb\xbf[1]")), "1:1");
    EXPECT_EQ(MessageOf("\xef\xbb\xbf[1"), "f.json:1:3: the text ends where a comma or ] is expected");
}

// ---- Errors

TEST(JsonErrors, TellFileLineColumnMessageAndRemedy) {
    LocatedError error;
    const auto document = JsonDocument::Parse("[1,\n2", "dir/f.json", error);

    EXPECT_FALSE(document);
    EXPECT_EQ(error.file, "dir/f.json");
    EXPECT_EQ(error.line, 2u);
    EXPECT_EQ(error.column, 2u);
    EXPECT_EQ(error.text(), "dir/f.json:2:2: the text ends where a comma or ] is expected; "
                            "put a comma between two elements, and ] behind the last");
}

TEST(JsonErrors, ColumnsCountCharactersAndNotBytes) {
    EXPECT_EQ(MessageOf("[\"é😀\" 1]"), "f.json:1:7: a comma or ] is expected here");
}

TEST(JsonErrors, TextWithoutAValue) {
    EXPECT_EQ(ErrorOf(""), "f.json:1:1: the text is empty; write an object, an array, a text in double quotes, "
                           "a number, true, false or null");
    EXPECT_EQ(MessageOf(" \n "), "f.json:2:2: the text is empty");
    EXPECT_EQ(MessageOf("\xef\xbb\xbf"), "f.json:1:1: the text is empty");
}

TEST(JsonErrors, SomethingElseThanAValue) {
    EXPECT_EQ(MessageOf("x"), "f.json:1:1: a value is expected here");
    EXPECT_EQ(MessageOf("[1,x]"), "f.json:1:4: a value is expected here");
    EXPECT_EQ(MessageOf("{\"a\":}"), "f.json:1:6: a value is expected here");
    EXPECT_EQ(MessageOf("{\"a\":"), "f.json:1:6: the text ends where a value is expected");
    EXPECT_EQ(MessageOf("[1,]"), "f.json:1:4: a value is expected here");
    EXPECT_EQ(MessageOf("'a'"), "f.json:1:1: a value is expected here");
    EXPECT_EQ(MessageOf("/* c */ 1"), "f.json:1:1: a value is expected here");
    EXPECT_EQ(MessageOf("NaN"), "f.json:1:1: a value is expected here");
    EXPECT_EQ(MessageOf("+1"), "f.json:1:1: a value is expected here");
    EXPECT_EQ(MessageOf(".5"), "f.json:1:1: a value is expected here");
}

TEST(JsonErrors, MisspeltWordIsShownWhereItBegins) {
    EXPECT_EQ(MessageOf("[ trie]"), "f.json:1:3: a value is expected here");
    EXPECT_EQ(MessageOf("nul"), "f.json:1:1: a value is expected here");
    EXPECT_EQ(MessageOf("-x"), "f.json:1:1: a value is expected here");
}

TEST(JsonErrors, SomethingBehindTheValue) {
    EXPECT_EQ(ErrorOf("[1] [2]"), "f.json:1:5: something follows the end of the JSON value; remove it");
    EXPECT_EQ(MessageOf("{}x"), "f.json:1:3: something follows the end of the JSON value");
    EXPECT_EQ(MessageOf("01"), "f.json:1:2: something follows the end of the JSON value");
}

TEST(JsonErrors, ObjectWithoutItsPunctuation) {
    EXPECT_EQ(ErrorOf("{a: 1}"), "f.json:1:2: a key in double quotes is expected here; write the next key, "
                                 "or remove the comma before it");
    EXPECT_EQ(MessageOf("{\"a\":1,}"), "f.json:1:8: a key in double quotes is expected here");
    EXPECT_EQ(MessageOf("{"), "f.json:1:2: the text ends where a key in double quotes is expected");
    EXPECT_EQ(ErrorOf("{\"a\" 1}"),
              "f.json:1:6: a colon is expected here; write a colon between the key and its value");
    EXPECT_EQ(MessageOf("{\"a\""), "f.json:1:5: the text ends where a colon is expected");
    EXPECT_EQ(MessageOf("{\"a\":1 \"b\":2}"), "f.json:1:8: a comma or } is expected here");
    EXPECT_EQ(MessageOf("{\"a\":1]"), "f.json:1:7: a comma or } is expected here");
}

TEST(JsonErrors, ArrayWithoutItsPunctuation) {
    EXPECT_EQ(MessageOf("[1 2]"), "f.json:1:4: a comma or ] is expected here");
    EXPECT_EQ(MessageOf("[01]"), "f.json:1:3: a comma or ] is expected here");
    EXPECT_EQ(MessageOf("["), "f.json:1:2: the text ends where a value is expected");
}

TEST(JsonErrors, TextWithoutAClosingQuoteIsShownWhereItBegins) {
    EXPECT_EQ(ErrorOf("[1,\n \"abc]"), "f.json:2:2: the text that begins here has no closing quote; "
                                       "add the closing quote");
    EXPECT_EQ(MessageOf("{\"abc"), "f.json:1:2: the text that begins here has no closing quote");
}

TEST(JsonErrors, UnknownEscape) {
    EXPECT_EQ(ErrorOf(R"("ab\x")"),
              "f.json:1:4: the escape is not known; use one of \\\" \\\\ \\/ \\b \\f \\n \\r \\t \\uXXXX");
    EXPECT_EQ(MessageOf(R"("\u12g4")"), "f.json:1:2: \\u is not followed by four hexadecimal digits");
    EXPECT_EQ(MessageOf(R"("\u12)"), "f.json:1:2: \\u is not followed by four hexadecimal digits");
}

TEST(JsonErrors, ControlCharacterInAText) {
    EXPECT_EQ(ErrorOf("\"a\nb\""),
              "f.json:1:3: a control character stands in a text; write it as an escape, such as \\n or \\u0001");
    EXPECT_EQ(MessageOf("\"\x01\""), "f.json:1:2: a control character stands in a text");
    EXPECT_EQ(MessageOf("\"\t\""), "f.json:1:2: a control character stands in a text");
}

TEST(JsonErrors, HalfASurrogatePair) {
    const std::string message = "half of a surrogate pair stands alone";

    EXPECT_EQ(MessageOf(R"(["a\ud83d"])"), "f.json:1:4: " + message);
    EXPECT_EQ(MessageOf(R"(["\ud83d\u0041"])"), "f.json:1:3: " + message);
    EXPECT_EQ(MessageOf(R"(["a\ude00"])"), "f.json:1:4: " + message);
    EXPECT_EQ(MessageOf(R"(["\n\u00e9\ud83d\ude00\udc00"])"), "f.json:1:23: " + message);
    EXPECT_EQ(MessageOf(R"({"\udfff": 1})"), "f.json:1:3: " + message);
}

TEST(JsonErrors, InvalidUtf8) {
    const std::string message = "the text is not valid UTF-8";

    EXPECT_EQ(ErrorOf("[\"a\xff\"]"), "f.json:1:4: " + message + "; save it as UTF-8");
    EXPECT_EQ(MessageOf("\"\x80\""), "f.json:1:2: " + message);             // A byte that continues nothing.
    EXPECT_EQ(MessageOf("\"\xc0\x80\""), "f.json:1:2: " + message);         // Longer than need be.
    EXPECT_EQ(MessageOf("\"\xed\xa0\x80\""), "f.json:1:2: " + message);     // A surrogate.
    EXPECT_EQ(MessageOf("\"\xf4\x90\x80\x80\""), "f.json:1:2: " + message); // Above U+10FFFF.
    EXPECT_EQ(MessageOf("\"\xe2\x82"), "f.json:1:2: " + message);           // Cut short by the end of the text.
    EXPECT_EQ(MessageOf("\"\xf0"), "f.json:1:2: " + message);
}

TEST(JsonErrors, NulCharacter) {
    EXPECT_EQ(ErrorOf(std::string_view("[1]\0", 4)), "f.json:1:4: a NUL character stands in the text; remove it");
    EXPECT_EQ(MessageOf(std::string_view("[1,\0 2]", 7)), "f.json:1:4: a NUL character stands in the text");
    EXPECT_EQ(MessageOf(std::string_view("\"a\0b\"", 5)), "f.json:1:3: a NUL character stands in the text");
}

TEST(JsonErrors, NumberWithoutDigits) {
    EXPECT_EQ(MessageOf("[1.]"), "f.json:1:4: a digit is expected here");
    EXPECT_EQ(MessageOf("1e"), "f.json:1:3: the text ends where a digit is expected");
    EXPECT_EQ(MessageOf("[1e+]"), "f.json:1:5: a digit is expected here");
}

TEST(JsonErrors, NumberTooBigForADouble) {
    EXPECT_EQ(MessageOf("[1e309]"), "f.json:1:2: the number is too big");
    EXPECT_EQ(MessageOf("[-1.8e308]"), "f.json:1:2: the number is too big");
    EXPECT_EQ(MessageOf("[1e99999999999]"), "f.json:1:2: the number is too big");
    EXPECT_EQ(MessageOf("[1" + std::string(400, '0') + "]"), "f.json:1:2: the number is too big");
}

TEST(JsonErrors, NestingBeyondTheLimit) {
    EXPECT_EQ(ErrorOf(Nested(kJsonNestingLimit)), "(none)");
    EXPECT_EQ(ErrorOf(Nested(kJsonNestingLimit + 1)),
              "f.json:1:513: arrays and objects are nested more than 512 deep; nest them less deeply");
}

TEST(JsonErrors, NestingCountsObjectsAndArraysTogether) {
    std::string text;
    for (size_t i = 0; i < kJsonNestingLimit / 2; ++i) {
        text += "[{\"a\":";
    }

    EXPECT_EQ(MessageOf(text + "{}"),
              "f.json:1:" + std::to_string(text.size() + 1) + ": arrays and objects are nested more than 512 deep");
}

TEST(JsonErrors, VeryDeepTextCostsNoStack) {
    const std::string text = std::string(5'000'000, '[');

    EXPECT_EQ(MessageOf(text), "f.json:1:513: arrays and objects are nested more than 512 deep");
}

TEST(JsonErrors, SiblingsDoNotCountAsNesting) {
    std::string text = "[";
    for (int i = 0; i < 2000; ++i) {
        text += "[],{},";
    }

    EXPECT_EQ(RootOf(text + "1]").AsArray()->size(), 4001u);
}

// ---- The stream beneath

TEST(TextStreams, StandStillAtTheEndOfTheText) {
    TextStream stream("a");

    EXPECT_EQ(stream.Peek(), 'a');
    EXPECT_EQ(stream.Take(), 'a');
    EXPECT_EQ(stream.Peek(), '\0');
    EXPECT_EQ(stream.Take(), '\0');
    EXPECT_EQ(stream.Take(), '\0');
    EXPECT_EQ(stream.Tell(), 1u);
}

// ---- Located errors

TEST(LocatedErrors, TextIsFilePlaceMessageAndRemedy) {
    const LocatedError error{"f.json", 3, 14, "it is wrong", "make it right"};

    EXPECT_EQ(error.text(), "f.json:3:14: it is wrong; make it right");
}

TEST(LocatedErrors, TextAboutAWholeFileHasNoPlace) {
    const LocatedError error{"f.json", 0, 0, "it is missing", "make it"};

    EXPECT_EQ(error.text(), "f.json: it is missing; make it");
}

// ---- Documents

TEST(JsonDocuments, AreLoadedFromFiles) {
    const std::string path = ::testing::TempDir() + "/VornJsonDocumentTest." + std::to_string(getpid());
    std::ofstream(path, std::ios::binary) << "[1, " << std::string(100'000, ' ') << "2]";
    LocatedError error;
    const auto document = JsonDocument::Load(path, error);
    std::remove(path.c_str());

    ASSERT_TRUE(document) << error.text();
    EXPECT_EQ(document->file(), path);
    EXPECT_EQ((*document->root().AsArray())[1].AsInt64(), 2);
}

TEST(JsonDocuments, FileThatCannotBeReadIsAnErrorWithoutAPlace) {
    LocatedError error;

    EXPECT_FALSE(JsonDocument::Load("/missing/f.json", error));
    EXPECT_EQ(error.text(), "/missing/f.json: cannot be read: No such file or directory; "
                            "check the path and the permissions");
}

TEST(JsonDocuments, MakeErrorsAtTheirPlaces) {
    const JsonDocument document = Parsed("[\n 1]");

    const LocatedError error =
        document.ErrorAt((*document.root().AsArray())[0].location(), "1 is too little", "write 2");

    EXPECT_EQ(error.text(), "f.json:2:2: 1 is too little; write 2");
}

// ---- Expectations

std::string ExpectationOf(std::string_view text, JsonKind kind) {
    const JsonDocument document = Parsed(text);
    LocatedError error;
    return document.Expect(document.root(), kind, "it", error) ? "(none)" : error.text();
}

TEST(JsonExpectations, EveryKindAcceptsItself) {
    EXPECT_EQ(ExpectationOf("null", JsonKind::kNull), "(none)");
    EXPECT_EQ(ExpectationOf("true", JsonKind::kBool), "(none)");
    EXPECT_EQ(ExpectationOf("-1", JsonKind::kInt64), "(none)");
    EXPECT_EQ(ExpectationOf("9223372036854775808", JsonKind::kUint64), "(none)");
    EXPECT_EQ(ExpectationOf("1.5", JsonKind::kDouble), "(none)");
    EXPECT_EQ(ExpectationOf("\"\"", JsonKind::kString), "(none)");
    EXPECT_EQ(ExpectationOf("[]", JsonKind::kArray), "(none)");
    EXPECT_EQ(ExpectationOf("{}", JsonKind::kObject), "(none)");
}

TEST(JsonExpectations, NumbersAcceptWhatTheyCanHold) {
    EXPECT_EQ(ExpectationOf("1", JsonKind::kUint64), "(none)");
    EXPECT_EQ(ExpectationOf("1", JsonKind::kDouble), "(none)");
    EXPECT_EQ(ExpectationOf("18446744073709551615", JsonKind::kDouble), "(none)");
}

TEST(JsonExpectations, OtherKindsAreNamedWithARemedy) {
    EXPECT_EQ(ExpectationOf(" 1", JsonKind::kString),
              "f.json:1:2: it is an integer, not a text; write a text in double quotes");
    EXPECT_EQ(ExpectationOf("\"1\"", JsonKind::kInt64), "f.json:1:1: it is a text, not an integer; write an integer");
    EXPECT_EQ(ExpectationOf("1.5", JsonKind::kInt64), "f.json:1:1: it is a number, not an integer; write an integer");
    EXPECT_EQ(ExpectationOf("null", JsonKind::kObject), "f.json:1:1: it is null, not an object; write an object");
    EXPECT_EQ(ExpectationOf("{}", JsonKind::kNull), "f.json:1:1: it is an object, not null; write null");
    EXPECT_EQ(ExpectationOf("[]", JsonKind::kBool), "f.json:1:1: it is an array, not a boolean; write a boolean");
    EXPECT_EQ(ExpectationOf("true", JsonKind::kDouble), "f.json:1:1: it is a boolean, not a number; write a number");
}

TEST(JsonExpectations, IntegersOutOfRangeAreCalledSo) {
    EXPECT_EQ(ExpectationOf("-1", JsonKind::kUint64),
              "f.json:1:1: it is an integer below 0, not an integer from 0 on; write an integer from 0 on");
    EXPECT_EQ(ExpectationOf("9223372036854775808", JsonKind::kInt64),
              "f.json:1:1: it is an integer above 9223372036854775807, not an integer; write an integer");
}

std::string UniquenessOf(std::string_view text) {
    const JsonDocument document = Parsed(text);
    LocatedError error;
    return document.ExpectUniqueKeys(document.root(), error) ? "(none)" : error.text();
}

TEST(JsonExpectations, KeyGivenTwiceIsShownAtItsSecondPlace) {
    EXPECT_EQ(UniquenessOf(R"({"a": 1, "b": 2})"), "(none)");
    EXPECT_EQ(UniquenessOf("[1, 1]"), "(none)");
    EXPECT_EQ(UniquenessOf("{\"a\": 1,\n\"b\": 2, \"a\": 3, \"b\": 4}"),
              "f.json:2:9: the key \"a\" is given twice, first in line 1; remove one of the two");
}

std::string KnownKeysOf(std::string_view text) {
    const JsonDocument document = Parsed(text);
    LocatedError error;
    return document.ExpectKnownKeys(document.root(), {"name", "steps"}, error) ? "(none)" : error.text();
}

TEST(JsonExpectations, UnknownKeyIsShownWithTheKnownOnes) {
    EXPECT_EQ(KnownKeysOf(R"({"steps": 1, "name": 2})"), "(none)");
    EXPECT_EQ(KnownKeysOf("{}"), "(none)");
    EXPECT_EQ(KnownKeysOf("1"), "(none)");
    EXPECT_EQ(KnownKeysOf(R"({"name": 1, "stepz": 2})"),
              "f.json:1:13: the key \"stepz\" is not known; remove it, or use one of \"name\", \"steps\"");
    EXPECT_EQ(KnownKeysOf(R"({"name": 1, "name": 2})"),
              "f.json:1:13: the key \"name\" is given twice, first in line 1; remove one of the two");
}

TEST(JsonExpectations, RequiredMemberIsGivenOrItsAbsenceExplained) {
    const JsonDocument document = Parsed(R"([{"a": 1}, 2])");
    const JsonValue& object = (*document.root().AsArray())[0];
    const JsonValue& number = (*document.root().AsArray())[1];
    LocatedError error;

    const JsonValue* const member = document.RequireMember(object, "a", JsonKind::kInt64, error);
    ASSERT_NE(member, nullptr);
    EXPECT_EQ(member->AsInt64(), 1);

    EXPECT_EQ(document.RequireMember(object, "b", JsonKind::kArray, error), nullptr);
    EXPECT_EQ(error.text(), "f.json:1:2: the object has no \"b\"; add the key \"b\" with an array");
    EXPECT_EQ(document.RequireMember(object, "a", JsonKind::kString, error), nullptr);
    EXPECT_EQ(error.text(), "f.json:1:8: \"a\" is an integer, not a text; write a text in double quotes");
    EXPECT_EQ(document.RequireMember(number, "a", JsonKind::kString, error), nullptr);
    EXPECT_EQ(error.text(), "f.json:1:12: the value with \"a\" is an integer, not an object; write an object");
}

TEST(JsonExpectations, OptionalMemberMayBeAbsentButNotOfAnotherKind) {
    const JsonDocument document = Parsed(R"({"a": 1})");
    LocatedError error;
    const JsonValue* present = nullptr;
    const JsonValue* absent = &document.root();
    const JsonValue* wrong = &document.root();

    EXPECT_TRUE(document.OptionalMember(document.root(), "a", JsonKind::kInt64, present, error));
    EXPECT_TRUE(document.OptionalMember(document.root(), "b", JsonKind::kInt64, absent, error));
    EXPECT_FALSE(document.OptionalMember(document.root(), "a", JsonKind::kBool, wrong, error));

    ASSERT_NE(present, nullptr);
    EXPECT_EQ(present->AsInt64(), 1);
    EXPECT_EQ(absent, nullptr);
    EXPECT_EQ(wrong, nullptr);
    EXPECT_EQ(error.text(), "f.json:1:7: \"a\" is an integer, not a boolean; write a boolean");
}

} // namespace
} // namespace Tarvik::Vorn::Test
