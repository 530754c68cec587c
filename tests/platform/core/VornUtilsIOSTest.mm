// JSON text to and from Foundation objects: what each becomes, what is refused, and that nothing is lost on the way.

#include "VornUtilsIOS.h"

#include "PoolTest.h"
#include "VornJsonDocument.h"
#include "VornText.h"

#import <Foundation/Foundation.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

class DictFromJson : public PoolTest {
protected:
    static NSDictionary* Parse(NSString* json) { return [VornUtilsIOS dictFromJsonString:json]; }

    // The value of "k" in an object with this text as that value.
    static id ValueOf(NSString* text) {
        return [Parse([NSString stringWithFormat:@"{\"k\":%@}", text]) objectForKey:@"k"];
    }
};

class JsonFromDict : public PoolTest {
protected:
    // The text of a dictionary; "(nil)" when there is none.
    static std::string TextOf(NSDictionary* dict, BOOL pretty = NO) {
        NSString* const json = [VornUtilsIOS jsonStringFromDict:dict prettyPrint:pretty];
        return json == nil ? "(nil)" : std::string(CStr(json));
    }

    static std::string TextOfValue(id value) { return TextOf([NSDictionary dictionaryWithObject:value forKey:@"k"]); }
};

// A text of these two characters, each of which may be half of a surrogate pair.
NSString* FromUnits(unichar first, unichar second) {
    return [NSString stringWithFormat:@"%C%C", first, second]; // GNUstep's other ways refuse halves.
}

// ---- Reading

TEST_F(DictFromJson, ObjectBecomesADictionary) {
    NSDictionary* const dict = Parse(@"{\"a\": \"text\", \"b\": [1, \"two\"], \"c\": {\"d\": {}}}");

    NSDictionary* const expected = @{
        @"a" : @"text",
        @"b" : @[ [NSNumber numberWithInt:1], @"two" ],
        @"c" : @{@"d" : @{}},
    };
    EXPECT_TRUE([dict isEqual:expected]) << CStr([dict description]);
}

TEST_F(DictFromJson, EmptyObjectBecomesAnEmptyDictionary) {
    NSDictionary* const dict = Parse(@" {} ");

    ASSERT_NE(dict, nil);
    EXPECT_EQ([dict count], 0u);
}

TEST_F(DictFromJson, WhatIsNoObjectIsNil) {
    EXPECT_EQ(Parse(nil), nil);
    EXPECT_EQ(Parse(@""), nil);
    EXPECT_EQ(Parse(@"null"), nil);
    EXPECT_EQ(Parse(@"true"), nil);
    EXPECT_EQ(Parse(@"5"), nil);
    EXPECT_EQ(Parse(@"\"text\""), nil);
    EXPECT_EQ(Parse(@"[]"), nil);
    EXPECT_EQ(Parse(@"[{}]"), nil);
}

TEST_F(DictFromJson, WhatIsNotJsonIsNil) {
    for (NSString* const text : {@"{", @"{}x", @"{} {}", @"{\"a\":1,}", @"{'a':1}", @"{a:1}", @"{\"a\":01}",
                                 @"{\"a\":[1,]}", @"{\"a\":NaN}", @"{\"a\":\"\n\"}", @"// c\n{}", @"{\"a\":1e400}"}) {
        EXPECT_EQ(Parse(text), nil) << CStr(text);
    }
}

TEST_F(DictFromJson, IntegersOf64BitsAreExact) {
    EXPECT_STREQ(CStr([ValueOf(@"100000123456789012") stringValue]), "100000123456789012");
    EXPECT_EQ([ValueOf(@"9223372036854775807") longLongValue], std::numeric_limits<long long>::max());
    EXPECT_EQ([ValueOf(@"-9223372036854775808") longLongValue], std::numeric_limits<long long>::min());
    EXPECT_EQ([ValueOf(@"18446744073709551615") unsignedLongLongValue], std::numeric_limits<unsigned long long>::max());
    EXPECT_STREQ(CStr([ValueOf(@"18446744073709551615") stringValue]), "18446744073709551615");
}

TEST_F(DictFromJson, OtherNumbersAreDoubles) {
    EXPECT_EQ([ValueOf(@"0.1") doubleValue], 0.1);
    EXPECT_EQ([ValueOf(@"1.0") objCType][0], 'd');
    EXPECT_EQ([ValueOf(@"18446744073709551616") doubleValue], 18446744073709551616.0);
}

TEST_F(DictFromJson, BooleansAreBooleanNumbers) {
    NSNumber* const yes = ValueOf(@"true");
    NSNumber* const no = ValueOf(@"false");

    EXPECT_EQ([yes class], [[NSNumber numberWithBool:YES] class]);
    EXPECT_NE([ValueOf(@"1") class], [yes class]);
    EXPECT_EQ([yes boolValue], YES);
    EXPECT_EQ([no boolValue], NO);
}

TEST_F(DictFromJson, NullIsNSNull) {
    EXPECT_EQ(ValueOf(@"null"), [NSNull null]);
}

TEST_F(DictFromJson, TextsAreUnescaped) {
    EXPECT_TRUE([ValueOf(@"\"\\\"\\\\\\/\\n\\u00e9\\ud83d\\ude00 é😀\"") isEqual:@"\"\\/\né😀 é😀"]);
}

TEST_F(DictFromJson, TextMayHoldANul) {
    NSString* const text = ValueOf(@"\"a\\u0000b\"");

    ASSERT_EQ([text length], 3u);
    EXPECT_EQ([text characterAtIndex:1], 0);
    EXPECT_EQ([text characterAtIndex:2], 'b');
}

TEST_F(DictFromJson, ByteOrderMarkInATextIsKept) {
    NSString* const text = ValueOf(@"\"\\ufeffa\"");

    ASSERT_EQ([text length], 2u);
    EXPECT_EQ([text characterAtIndex:0], 0xfeff);
}

TEST_F(DictFromJson, LaterOfTwoMembersWithOneKeyCounts) {
    NSDictionary* const dict = Parse(@"{\"a\": 1, \"b\": 2, \"a\": 3}");

    EXPECT_EQ([dict count], 2u);
    EXPECT_EQ([[dict objectForKey:@"a"] intValue], 3);
}

TEST_F(DictFromJson, HalfASurrogatePairIsNotJson) {
    NSString* const json = [NSString stringWithFormat:@"{\"a\":\"%C\"}", unichar{0xd83d}];
    ASSERT_EQ([json length], 9u);

    EXPECT_EQ(Parse(json), nil);
    EXPECT_EQ(ValueOf(@"\"\\ud83d\""), nil);
    EXPECT_EQ(ValueOf(@"\"\\ude00\""), nil);
}

TEST_F(DictFromJson, NulInTheTextIsNotJson) {
    const unichar units[] = {'{', '}', 0};
    NSString* const json = [NSString stringWithCharacters:units length:3];
    ASSERT_EQ([json length], 3u);

    EXPECT_EQ(Parse(json), nil);
}

TEST_F(DictFromJson, NestingBeyondTheLimitIsRefused) {
    const auto nested = [](size_t depth) {
        return MakeNSString("{\"k\":" + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}");
    };

    EXPECT_NE(Parse(nested(kJsonNestingLimit)), nil);
    EXPECT_EQ(Parse(nested(kJsonNestingLimit + 1)), nil);
}

TEST_F(DictFromJson, ResultIsAutoreleased) {
    NSDictionary* dict = nil;
    NSUInteger countInPool = 0;
    @autoreleasepool {
        dict = [Parse(@"{\"a\": {\"b\": [1.5]}}") retain];
        countInPool = [dict retainCount];
    }
    const NSUInteger countAfterwards = [dict retainCount];
    [dict release];

    EXPECT_EQ(countInPool, 2u);
    EXPECT_EQ(countAfterwards, 1u);
}

// ---- Writing

TEST_F(JsonFromDict, CompactTextHasNoBlanks) {
    NSDictionary* const dict = @{
        @"a" : @"text",
        @"b" : @[ [NSNumber numberWithInt:1], @"two", @[], @{} ],
        @"c" : @{@"d" : [NSNull null]},
    };

    EXPECT_EQ(TextOf(dict), R"({"a":"text","b":[1,"two",[],{}],"c":{"d":null}})");
}

TEST_F(JsonFromDict, PrettyTextIndentsByTwoBlanks) {
    NSDictionary* const dict = @{
        @"a" : @[ [NSNumber numberWithInt:1], @"two" ],
        @"b" : @{@"c" : @{}},
        @"d" : @[],
    };

    EXPECT_EQ(TextOf(dict, YES), "{\n"
                                 "  \"a\": [\n"
                                 "    1,\n"
                                 "    \"two\"\n"
                                 "  ],\n"
                                 "  \"b\": {\n"
                                 "    \"c\": {}\n"
                                 "  },\n"
                                 "  \"d\": []\n"
                                 "}");
}

TEST_F(JsonFromDict, EmptyDictionaryIsAnEmptyObject) {
    EXPECT_EQ(TextOf(@{}), "{}");
    EXPECT_EQ(TextOf(@{}, YES), "{}");
}

TEST_F(JsonFromDict, NilAndOtherObjectsAreNil) {
    EXPECT_EQ(TextOf(nil), "(nil)");
    EXPECT_EQ(TextOf(static_cast<id>(@[])), "(nil)");
    EXPECT_EQ(TextOf(static_cast<id>(@"text")), "(nil)");
}

TEST_F(JsonFromDict, TextsOfEveryLengthAreWholeWhateverTheyEndWith) {
    for (const size_t length : {0u, 1u, 255u, 256u, 257u}) {
        for (const char* last : {"", "z", "\x7f", "\u0080", "é", "😀"}) {
            const std::string text = std::string(length, 'x') + last;

            EXPECT_EQ(TextOf(@{@"k" : MakeNSString(text)}), "{\"k\":\"" + text + "\"}");
        }
    }
}

TEST_F(JsonFromDict, MembersStandInTheOrderOfTheirKeys) {
    NSMutableDictionary* const dict = [NSMutableDictionary dictionary];
    for (NSString* const key : {@"b", @"a", @"", @"é", @"B", @"ab", @"a1", @"😀", @"\uffff"}) {
        [dict setObject:@"" forKey:key];
    }

    EXPECT_EQ(TextOf(dict), "{\"\":\"\",\"B\":\"\",\"a\":\"\",\"a1\":\"\",\"ab\":\"\",\"b\":\"\",\"é\":\"\","
                            "\"\uffff\":\"\",\"😀\":\"\"}");
}

TEST_F(JsonFromDict, NumbersKeepTheirKindAndEveryDigit) {
    EXPECT_EQ(TextOfValue([NSNumber numberWithInt:-5]), R"({"k":-5})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithUnsignedInt:4000000000u]), R"({"k":4000000000})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithLongLong:std::numeric_limits<long long>::max()]),
              R"({"k":9223372036854775807})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithLongLong:std::numeric_limits<long long>::min()]),
              R"({"k":-9223372036854775808})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithUnsignedLongLong:std::numeric_limits<unsigned long long>::max()]),
              R"({"k":18446744073709551615})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithDouble:0.1]), R"({"k":0.1})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithDouble:1]), R"({"k":1.0})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithDouble:1e21]), R"({"k":1e21})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithFloat:0.5f]), R"({"k":0.5})");
}

TEST_F(JsonFromDict, BooleansAreNoNumbers) {
    EXPECT_EQ(TextOfValue([NSNumber numberWithBool:YES]), R"({"k":true})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithBool:NO]), R"({"k":false})");
    EXPECT_EQ(TextOfValue(@(YES)), R"({"k":true})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithInt:1]), R"({"k":1})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithInt:0]), R"({"k":0})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithChar:1]), R"({"k":1})");
    EXPECT_EQ(TextOfValue([NSNumber numberWithUnsignedChar:1]), R"({"k":1})");
}

TEST_F(JsonFromDict, DecimalNumbersKeepTheirDigits) {
    const auto textOf = [](NSString* digits) { return TextOfValue([NSDecimalNumber decimalNumberWithString:digits]); };

    EXPECT_EQ(textOf(@"12345678901234567890.123456789"), R"({"k":12345678901234567890.123456789})");
    EXPECT_EQ(textOf(@"-0.5"), R"({"k":-0.5})");
    EXPECT_EQ(textOf(@"120"), R"({"k":120})");
    EXPECT_EQ(TextOfValue([NSDecimalNumber notANumber]), "(nil)");
}

TEST_F(JsonFromDict, NumbersThatAreNoneAreNil) {
    EXPECT_EQ(TextOfValue([NSNumber numberWithDouble:std::nan("")]), "(nil)");
    EXPECT_EQ(TextOfValue([NSNumber numberWithDouble:HUGE_VAL]), "(nil)");
    EXPECT_EQ(TextOfValue([NSNumber numberWithFloat:-HUGE_VALF]), "(nil)");
}

TEST_F(JsonFromDict, TextsAreUtf8WithFewEscapes) {
    EXPECT_EQ(TextOfValue(@"\" \\ / \b\f\n\r\t \x01 é 😀"), "{\"k\":\"\\\" \\\\ / \\b\\f\\n\\r\\t \\u0001 é 😀\"}");
    EXPECT_EQ(TextOf(@{@"\"é" : @""}), "{\"\\\"é\":\"\"}");
}

TEST_F(JsonFromDict, NulAndByteOrderMarkAreKept) {
    const unichar units[] = {'a', 0, 'b'};

    EXPECT_EQ(TextOfValue([NSString stringWithCharacters:units length:3]), R"({"k":"a\u0000b"})");
    EXPECT_EQ(TextOfValue(FromUnits(0xfeff, 'a')), "{\"k\":\"\ufeffa\"}");
}

TEST_F(JsonFromDict, HalfASurrogatePairIsNil) {
    EXPECT_EQ(TextOfValue(FromUnits('a', 0xd83d)), "(nil)");
    EXPECT_EQ(TextOfValue(FromUnits(0xd83d, 'a')), "(nil)");
    EXPECT_EQ(TextOfValue(FromUnits(0xde00, 'a')), "(nil)");
    EXPECT_EQ(TextOf([NSDictionary dictionaryWithObject:@"" forKey:FromUnits(0xd83d, 'a')]), "(nil)");
    EXPECT_EQ(TextOfValue(FromUnits(0xd83d, 0xde00)), "{\"k\":\"😀\"}");
}

TEST_F(JsonFromDict, MutableTextsAreTexts) {
    EXPECT_EQ(TextOfValue([NSMutableString stringWithString:@"a"]), R"({"k":"a"})");
}

TEST_F(JsonFromDict, OtherObjectsAreNilWhereverTheyStand) {
    NSDate* const date = [NSDate dateWithTimeIntervalSince1970:0];

    EXPECT_EQ(TextOfValue(date), "(nil)");
    EXPECT_EQ(TextOfValue([NSData data]), "(nil)");
    EXPECT_EQ(TextOfValue(@[ @"a", date ]), "(nil)");
    EXPECT_EQ(TextOfValue(@{@"a" : date}), "(nil)");
    EXPECT_EQ(TextOfValue([NSSet setWithObject:@"a"]), "(nil)");
}

TEST_F(JsonFromDict, KeysThatAreNoTextsAreNil) {
    EXPECT_EQ(TextOf([NSDictionary dictionaryWithObject:@"" forKey:[NSNumber numberWithInt:1]]), "(nil)");
    EXPECT_EQ(TextOf([NSDictionary dictionaryWithObject:@"" forKey:[NSNull null]]), "(nil)");
}

TEST_F(JsonFromDict, NestingBeyondTheLimitIsRefused) {
    const auto nested = [](size_t depth) {
        id value = @[];
        for (size_t i = 2; i < depth; ++i) {
            value = @[ value ];
        }
        return @{@"k" : value};
    };

    EXPECT_NE(TextOf(nested(kJsonNestingLimit)), "(nil)");
    EXPECT_EQ(TextOf(nested(kJsonNestingLimit + 1)), "(nil)");
}

TEST_F(JsonFromDict, DictionaryThatHoldsItselfIsRefused) {
    NSMutableDictionary* const dict = [NSMutableDictionary dictionary];
    [dict setObject:@[ dict ] forKey:@"self"];

    const std::string text = TextOf(dict);
    [dict removeAllObjects];

    EXPECT_EQ(text, "(nil)");
}

TEST_F(JsonFromDict, SiblingsDoNotCountAsNesting) {
    NSMutableArray* const siblings = [NSMutableArray array];
    for (size_t i = 0; i < 2 * kJsonNestingLimit; ++i) {
        [siblings addObject:@[]];
    }

    EXPECT_NE(TextOfValue(siblings), "(nil)");
}

TEST_F(JsonFromDict, WhatItWritesIsReadAgain) {
    NSDictionary* const dict = @{
        @"text" : @"\" \\ / \n é 😀",
        @"numbers" : @[
            [NSNumber numberWithLongLong:std::numeric_limits<long long>::min()],
            [NSNumber numberWithUnsignedLongLong:std::numeric_limits<unsigned long long>::max()],
            [NSNumber numberWithDouble:0.1]
        ],
        @"flags" : @[ [NSNumber numberWithBool:YES], [NSNumber numberWithBool:NO], [NSNull null] ],
        @"nested" : @{@"empty" : @{}},
    };

    for (const BOOL pretty : {YES, NO}) {
        NSString* const json = [VornUtilsIOS jsonStringFromDict:dict prettyPrint:pretty];
        EXPECT_TRUE([[VornUtilsIOS dictFromJsonString:json] isEqual:dict]) << CStr(json);
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
