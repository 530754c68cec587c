// The JSON writer of the reference core: what its text looks like, and that no order of calls makes it crash or write
// what is not the beginning of one JSON object.

#include "VornJsonDocument.h"
#include "VornServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

// The text after `write` has been given a writer with an open document.
template <class Write>
std::string DocumentOf(Write write) {
    VornJsonWriter writer;
    writer.StartJsonConvert();
    write(writer);
    writer.EndJsonConvert();
    return writer.GetJsonString().toString();
}

std::string TextMember(const char* text) {
    return DocumentOf([&](VornJsonWriter& writer) { writer.convert("k", text, kJsonTextFlag); });
}

TEST(VornJsonWriterTest, WritesMembersCompactlyInTheOrderOfTheCalls) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.convert("z", "text", kJsonTextFlag);
        writer.convert("a", String("record text"), kJsonTextFlag);
        writer.convert("m", 7);
    });

    EXPECT_EQ(text, R"({"z":"text","a":"record text","m":7})");
}

TEST(VornJsonWriterTest, EmptyDocumentIsAnEmptyObject) {
    EXPECT_EQ(DocumentOf([](VornJsonWriter&) {}), "{}");
}

TEST(VornJsonWriterTest, WritesEveryInteger) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.convert("least", std::numeric_limits<int>::min());
        writer.convert("zero", 0);
        writer.convert("greatest", std::numeric_limits<int>::max());
    });

    EXPECT_EQ(text, R"({"least":-2147483648,"zero":0,"greatest":2147483647})");
}

TEST(VornJsonWriterTest, NestedObjectHasTheNameThatWasSet) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.setKey("outer");
        writer.objectBegin();
        writer.setKey("inner");
        writer.objectBegin();
        writer.convert("k", 1);
        writer.objectEnd();
        writer.objectEnd();
        writer.convert("last", 2);
    });

    EXPECT_EQ(text, R"({"outer":{"inner":{"k":1}},"last":2})");
}

TEST(VornJsonWriterTest, RecordIsANestedObject) {
    VornFriendReqInfo request;
    request.type = 10001;
    request.title = "t";

    const std::string text = DocumentOf([&](VornJsonWriter& writer) { writer.convert("req", request); });

    EXPECT_EQ(text, R"({"req":{"type":10001,"title":"t","desc":"","user":"","imagePath":"","thumbPath":"",)"
                    R"("mediaPath":"","link":"","extraJson":""}})");
}

TEST(VornJsonWriterTest, RecordOutsideAnyObjectStandsAloneWithoutItsName) {
    const std::string unnamed = VornJsonManager::ToJson(VornFriendReqInfo{}, "");
    const std::string named = VornJsonManager::ToJson(VornFriendReqInfo{}, "req");

    EXPECT_EQ(unnamed, R"({"type":0,"title":"","desc":"","user":"","imagePath":"","thumbPath":"","mediaPath":"",)"
                       R"("link":"","extraJson":""})");
    EXPECT_EQ(named, unnamed);
}

// ---- Texts

TEST(VornJsonWriterTest, NullTextsCountAsEmpty) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.convert("k", static_cast<const char*>(nullptr), kJsonTextFlag);
        writer.convert(static_cast<const char*>(nullptr), 1);
        writer.setKey(nullptr);
        writer.objectBegin();
        writer.objectEnd();
    });

    EXPECT_EQ(text, R"({"k":"","":1,"":{}})");
}

TEST(VornJsonWriterTest, EscapesQuotesBackslashesAndControlCharactersOnly) {
    EXPECT_EQ(TextMember("\" \\ \b\f\n\r\t \x01\x1f / é 😀 \x7f"),
              "{\"k\":\"\\\" \\\\ \\b\\f\\n\\r\\t \\u0001\\u001F / é 😀 \x7f\"}");
}

TEST(VornJsonWriterTest, FindsWhatMustBeEscapedAtEveryPlaceOfTextsOfEveryLength) {
    const std::string special[][2] = {
        {"\"", "\\\""},   {"\\", "\\\\"}, {"\x1f", "\\u001F"},      {"\n", "\\n"},
        {"\x7f", "\x7f"}, {"é", "é"},     {"\xff", "\xef\xbf\xbd"},
    };
    for (size_t length = 0; length <= 35; ++length) {
        EXPECT_EQ(TextMember(std::string(length, '~').c_str()), "{\"k\":\"" + std::string(length, '~') + "\"}");
        for (size_t place = 0; place <= length; ++place) {
            const std::string before(place, ' ');
            const std::string behind(length - place, '~');
            for (const auto& [character, written] : special) {
                EXPECT_EQ(TextMember((before + character + behind).c_str()),
                          "{\"k\":\"" + before + written + behind + "\"}");
            }
        }
    }
}

// The writer's own room ends somewhere below a kilobyte: each kind of character is met right there.
TEST(VornJsonWriterTest, WritesTextsOfEveryLengthUpToTwoKilobytes) {
    const std::string kinds[][2] = {
        {"~", "~"}, {"\"", "\\\""}, {"\x1f", "\\u001F"}, {"é", "é"}, {"\xff", "\xef\xbf\xbd"},
    };
    for (size_t length = 0; length <= 2048; ++length) {
        const std::string before(length, 'a');
        for (const auto& [character, written] : kinds) {
            ASSERT_EQ(TextMember((before + character + "b").c_str()), "{\"k\":\"" + before + written + "b\"}");
        }
    }
}

TEST(VornJsonWriterTest, WritesNumbersAndNamesAtEveryPlaceOfALongText) {
    const std::string number = std::to_string(std::numeric_limits<int>::min());
    for (size_t length = 850; length <= 950; ++length) {
        const std::string before(length, 'a');
        const std::string text = DocumentOf([&](VornJsonWriter& writer) {
            writer.convert("k", before.c_str(), kJsonTextFlag);
            writer.convert("n", std::numeric_limits<int>::min());
            writer.setKey("o");
            writer.objectBegin();
            writer.objectEnd();
        });
        ASSERT_EQ(text, "{\"k\":\"" + before + "\",\"n\":" + number + ",\"o\":{}}");
    }
}

TEST(VornJsonWriterTest, EscapesKeysLikeTexts) {
    EXPECT_EQ(DocumentOf([](VornJsonWriter& writer) { writer.convert("\"é\n", 1); }), "{\"\\\"é\\n\":1}");
}

TEST(VornJsonWriterTest, EveryByteOfInvalidUtf8IsReplaced) {
    EXPECT_EQ(TextMember("a\xff"
                         "b"),
              "{\"k\":\"a\uFFFDb\"}");
    EXPECT_EQ(TextMember("\x80\x80"), "{\"k\":\"\uFFFD\uFFFD\"}");
    EXPECT_EQ(TextMember("\xc0\x80"), "{\"k\":\"\uFFFD\uFFFD\"}");                     // Longer than need be.
    EXPECT_EQ(TextMember("\xed\xa0\x80"), "{\"k\":\"\uFFFD\uFFFD\uFFFD\"}");           // A surrogate.
    EXPECT_EQ(TextMember("\xf4\x90\x80\x80"), "{\"k\":\"\uFFFD\uFFFD\uFFFD\uFFFD\"}"); // Above U+10FFFF.
    EXPECT_EQ(TextMember("\xe2\x82"), "{\"k\":\"\uFFFD\uFFFD\"}");          // Cut short by the end of the text.
    EXPECT_EQ(TextMember("\xe2\x82\xc3\xa9"), "{\"k\":\"\uFFFD\uFFFDé\"}"); // Cut short by the next character.
    EXPECT_EQ(TextMember("\xf0\x9f\x98"), "{\"k\":\"\uFFFD\uFFFD\uFFFD\"}");
}

TEST(VornJsonWriterTest, ValidUtf8OfEveryLengthIsKept) {
    EXPECT_EQ(TextMember("a\u00e9\u0800\uffff\U00010000\U0010ffff"),
              "{\"k\":\"a\u00e9\u0800\uffff\U00010000\U0010ffff\"}");
}

TEST(VornJsonWriterTest, InvalidUtf8InAKeyIsReplaced) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.convert("\xff", 1);
        writer.setKey("\xfe");
        writer.objectBegin();
        writer.objectEnd();
    });

    EXPECT_EQ(text, "{\"\uFFFD\":1,\"\uFFFD\":{}}");
}

TEST(VornJsonWriterTest, RecordTextEndsAtItsFirstNul) {
    const std::string text = DocumentOf(
        [](VornJsonWriter& writer) { writer.convert("k", String(std::string("ab\0cd", 5)), kJsonTextFlag); });

    EXPECT_EQ(text, R"({"k":"ab"})");
}

TEST(VornJsonWriterTest, FlagHasNoMeaning) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.convert("a", "1", 0);
        writer.convert("b", "1", -1);
    });

    EXPECT_EQ(text, R"({"a":"1","b":"1"})");
}

// ---- Calls in an unexpected order

TEST(VornJsonWriterTest, NewWriterHasNoText) {
    VornJsonWriter writer;

    EXPECT_EQ(writer.GetJsonString().toString(), "");
}

TEST(VornJsonWriterTest, TextSoFarIsTheBeginningOfTheDocument) {
    VornJsonWriter writer;
    writer.StartJsonConvert();
    writer.convert("a", 1);
    const std::string first = writer.GetJsonString().toString();
    writer.setKey("b");
    writer.objectBegin();
    const std::string second = writer.GetJsonString().toString();

    EXPECT_EQ(first, R"({"a":1)");
    EXPECT_EQ(second, R"({"a":1,"b":{)");
}

TEST(VornJsonWriterTest, MemberOutsideEveryObjectIsDropped) {
    VornJsonWriter writer;
    writer.convert("a", 1);
    writer.convert("b", "text", kJsonTextFlag);
    const std::string before = writer.GetJsonString().toString();
    writer.StartJsonConvert();
    writer.EndJsonConvert();
    writer.convert("c", 1);

    EXPECT_EQ(before, "");
    EXPECT_EQ(writer.GetJsonString().toString(), "{}");
}

TEST(VornJsonWriterTest, EndWithoutABeginningDoesNothing) {
    VornJsonWriter writer;
    writer.EndJsonConvert();
    writer.objectEnd();
    const std::string before = writer.GetJsonString().toString();
    writer.StartJsonConvert();
    writer.EndJsonConvert();
    writer.EndJsonConvert();
    writer.objectEnd();

    EXPECT_EQ(before, "");
    EXPECT_EQ(writer.GetJsonString().toString(), "{}");
}

TEST(VornJsonWriterTest, EndOfTheDocumentEndsEveryOpenObject) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.setKey("a");
        writer.objectBegin();
        writer.setKey("b");
        writer.objectBegin();
    });

    EXPECT_EQ(text, R"({"a":{"b":{}}})");
}

TEST(VornJsonWriterTest, EndOfAnObjectMayEndTheDocument) {
    VornJsonWriter writer;
    writer.StartJsonConvert();
    writer.objectEnd();
    writer.EndJsonConvert();

    EXPECT_EQ(writer.GetJsonString().toString(), "{}");
}

TEST(VornJsonWriterTest, DocumentThatStartsAgainReplacesTheFirst) {
    VornJsonWriter writer;
    writer.StartJsonConvert();
    writer.convert("first", 1);
    writer.setKey("open");
    writer.objectBegin();
    writer.StartJsonConvert();
    writer.convert("second", 2);
    writer.EndJsonConvert();

    EXPECT_EQ(writer.GetJsonString().toString(), R"({"second":2})");
}

TEST(VornJsonWriterTest, ObjectBehindTheDocumentReplacesIt) {
    VornJsonWriter writer;
    writer.StartJsonConvert();
    writer.convert("first", 1);
    writer.EndJsonConvert();
    writer.setKey("dropped");
    writer.objectBegin();
    writer.convert("second", 2);
    writer.objectEnd();

    EXPECT_EQ(writer.GetJsonString().toString(), R"({"second":2})");
}

TEST(VornJsonWriterTest, NestedObjectWithoutANameHasTheEmptyOne) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.objectBegin();
        writer.objectEnd();
    });

    EXPECT_EQ(text, R"({"":{}})");
}

TEST(VornJsonWriterTest, LastOfSeveralNamesCounts) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.setKey("a");
        writer.setKey("b");
        writer.objectBegin();
        writer.objectEnd();
    });

    EXPECT_EQ(text, R"({"b":{}})");
}

TEST(VornJsonWriterTest, MembersOwnNameCountsMoreThanOneSetBefore) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.setKey("a");
        writer.convert("b", 1);
        writer.objectBegin();
        writer.objectEnd();
    });

    EXPECT_EQ(text, R"({"b":1,"":{}})");
}

TEST(VornJsonWriterTest, NameWithoutAValueIsDroppedAtTheEndOfItsObject) {
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        writer.setKey("a");
        writer.objectBegin();
        writer.setKey("dropped");
        writer.objectEnd();
        writer.objectBegin();
        writer.objectEnd();
    });

    EXPECT_EQ(text, R"({"a":{},"":{}})");
}

TEST(VornJsonWriterTest, WriterMayBeLeftInTheMiddle) {
    VornJsonWriter writer;
    writer.StartJsonConvert();
    writer.setKey("a");

    EXPECT_EQ(writer.GetJsonString().toString(), "{");
}

TEST(VornJsonWriterTest, VeryDeepNestingIsWritten) {
    constexpr int kDepth = 100'000;
    const std::string text = DocumentOf([](VornJsonWriter& writer) {
        for (int i = 0; i < kDepth; ++i) {
            writer.setKey("a");
            writer.objectBegin();
        }
    });

    EXPECT_EQ(text.size(), size_t{kDepth} * 6 + 2);
}

TEST(VornJsonWriterTest, WhatItWritesIsRead) {
    const std::string all = "\x01\x1f\" \\ / é 😀 \xff end";

    LocatedError error;
    const auto document = JsonDocument::Parse(TextMember(all.c_str()), "written", error);

    ASSERT_TRUE(document) << error.text();
    EXPECT_EQ(*document->root().Find("k")->value.AsString(), "\x01\x1f\" \\ / é 😀 \uFFFD end");
}

} // namespace
} // namespace Tarvik::Vorn::Test
