// NSString as Apple documents it: regular expressions, searches for nothing, and numbers beyond 32 bits.

#include "PoolTest.h"

#include <gmock/gmock.h>

#include <climits>
#include <string>

using Tarvik::Vorn::Test::PoolTest;

namespace {

class HostStrings : public PoolTest {
protected:
    static NSString* Replace(NSString* text, NSString* pattern, NSString* replacement, NSStringCompareOptions options) {
        return [text stringByReplacingOccurrencesOfString:pattern
                                               withString:replacement
                                                  options:options
                                                    range:NSMakeRange(0, [text length])];
    }

    // The strings of every class that GNUstep may choose for this text.
    static NSArray* StringsOfEveryClass(const char* text) {
        NSString* fromUTF8 = [NSString stringWithUTF8String:text];
        return @[
            fromUTF8, [NSMutableString stringWithString:fromUTF8],
            [[[NSString alloc] initWithString:fromUTF8] autorelease],
            [[fromUTF8 stringByAppendingString:@"é"] substringToIndex:[fromUTF8 length]],
            [[[NSMutableString stringWithString:fromUTF8] copy] autorelease]
        ];
    }
};

void ExpectText(NSString* actual, const char* expected) {
    ASSERT_NE(actual, nil);
    EXPECT_STREQ([actual UTF8String], expected);
}

NSString* NameOfExceptionFrom(void (^work)()) {
    @try {
        work();
    } @catch (NSException* exception) {
        return [exception name];
    }
    return nil;
}

TEST_F(HostStrings, ReplacingWithARegularExpressionCutsWhatItMatches) {
    ExpectText(Replace(@"ABC-1/L0/001", @"/.*", @"", NSRegularExpressionSearch), "ABC-1");
    ExpectText(Replace(@"ABC-1", @"/.*", @"", NSRegularExpressionSearch), "ABC-1");
    ExpectText(Replace(@"", @"/.*", @"", NSRegularExpressionSearch), "");
    ExpectText(Replace(@"é中/x", @"/.*", @"", NSRegularExpressionSearch), "é中");
    ExpectText(Replace(@"a/b\nc/d", @"/.*", @"", NSRegularExpressionSearch), "a\nc");
}

TEST_F(HostStrings, ReplacingWithARegularExpressionKnowsTemplatesCaseAnchorsAndRanges) {
    ExpectText(Replace(@"key=value", @"(\\w+)=(\\w+)", @"$2=$1", NSRegularExpressionSearch), "value=key");
    ExpectText(Replace(@"aAbB", @"a", @"", NSRegularExpressionSearch | NSCaseInsensitiveSearch), "bB");
    ExpectText(Replace(@"aab", @"b", @"", NSRegularExpressionSearch | NSAnchoredSearch), "aab");
    ExpectText([@"a/b/c" stringByReplacingOccurrencesOfString:@"/."
                                                   withString:@""
                                                      options:NSRegularExpressionSearch
                                                        range:NSMakeRange(2, 3)],
               "a/b");
}

TEST_F(HostStrings, ReplacingWithAnInvalidPatternChangesNothing) {
    ExpectText(Replace(@"a[b", @"[", @"", NSRegularExpressionSearch), "a[b");
}

TEST_F(HostStrings, ReplacingWithoutTheOptionStaysLiteral) {
    ExpectText(Replace(@"a.b.c", @".", @"-", NSLiteralSearch), "a-b-c");
    ExpectText([@"a.b" stringByReplacingOccurrencesOfString:@"." withString:@"-"], "a-b");
}

TEST_F(HostStrings, ReplacingWithARegularExpressionRefusesNilAndRangesBeyondTheEnd) {
    NSString* const nothing = nil;
    NSString* nilPattern = NameOfExceptionFrom(^{
        Replace(@"abc", nothing, @"", NSRegularExpressionSearch);
    });
    NSString* nilReplacement = NameOfExceptionFrom(^{
        Replace(@"abc", @"b", nothing, NSRegularExpressionSearch);
    });
    NSString* longRange = NameOfExceptionFrom(^{
        [@"abc" stringByReplacingOccurrencesOfString:@"b"
                                          withString:@""
                                             options:NSRegularExpressionSearch
                                               range:NSMakeRange(1, 3)];
    });

    EXPECT_TRUE([nilPattern isEqualToString:NSInvalidArgumentException]);
    EXPECT_TRUE([nilReplacement isEqualToString:NSInvalidArgumentException]);
    EXPECT_TRUE([longRange isEqualToString:NSRangeException]);
}

TEST_F(HostStrings, AMutableStringReplacesRegularExpressionsInPlaceAndCountsThem) {
    NSMutableString* text = [NSMutableString stringWithString:@"a1b22c"];

    const NSUInteger count = [text replaceOccurrencesOfString:@"[0-9]+"
                                                   withString:@"-"
                                                      options:NSRegularExpressionSearch
                                                        range:NSMakeRange(0, 6)];

    EXPECT_EQ(count, 2U);
    ExpectText(text, "a-b-c");
}

TEST_F(HostStrings, AByteOrderMarkAtTheBeginningIsACharacter) {
    NSString* const text = [NSString stringWithUTF8String:"\ufeffa\ufeff"];

    EXPECT_EQ([text length], 3U);
    ExpectText(text, "\ufeffa\ufeff");
    EXPECT_EQ([NSString stringWithUTF8String:"\ufeff\xff"], nil);
    EXPECT_TRUE([[NSMutableString stringWithUTF8String:"\ufeffa"] isKindOfClass:[NSMutableString class]]);
}

TEST_F(HostStrings, AMutableStringIgnoresAnInvalidPattern) {
    NSMutableString* text = [NSMutableString stringWithString:@"a[b"];

    const NSUInteger count = [text replaceOccurrencesOfString:@"["
                                                   withString:@""
                                                      options:NSRegularExpressionSearch
                                                        range:NSMakeRange(0, 3)];

    EXPECT_EQ(count, 0U);
    ExpectText(text, "a[b");
}

TEST_F(HostStrings, AMutableStringStillReplacesLiterally) {
    NSMutableString* text = [NSMutableString stringWithString:@"a.b.c"];

    const NSUInteger count = [text replaceOccurrencesOfString:@"."
                                                   withString:@""
                                                      options:NSLiteralSearch
                                                        range:NSMakeRange(0, 5)];

    EXPECT_EQ(count, 2U);
    ExpectText(text, "abc");
}

TEST_F(HostStrings, AnEmptyTextIsFoundNowhere) {
    for (NSString* text in StringsOfEveryClass("abc")) {
        EXPECT_EQ([text rangeOfString:@""].location, static_cast<NSUInteger>(NSNotFound));
        EXPECT_EQ([text rangeOfString:@"" options:NSLiteralSearch].location, static_cast<NSUInteger>(NSNotFound));
        EXPECT_EQ([text rangeOfString:@"" options:NSLiteralSearch range:NSMakeRange(1, 2)].location,
                  static_cast<NSUInteger>(NSNotFound));
        EXPECT_EQ([text rangeOfString:@""].length, 0U);
    }
}

TEST_F(HostStrings, AnInvalidPatternIsFoundNowhere) {
    const NSRange range = [@"a[b" rangeOfString:@"[" options:NSRegularExpressionSearch];

    EXPECT_EQ(range.location, static_cast<NSUInteger>(NSNotFound));
    EXPECT_EQ(range.length, 0U);
}

TEST_F(HostStrings, SearchesStillFindTextsAndPatterns) {
    for (NSString* text in StringsOfEveryClass("abcabc")) {
        EXPECT_EQ([text rangeOfString:@"ca"].location, 2U);
        EXPECT_EQ([text rangeOfString:@"c" options:NSBackwardsSearch].location, 5U);
        EXPECT_EQ([text rangeOfString:@"c.*" options:NSRegularExpressionSearch].length, 4U);
        EXPECT_EQ([text rangeOfString:@"x"].location, static_cast<NSUInteger>(NSNotFound));
    }
}

TEST_F(HostStrings, IntValueStopsAtTheEndsOfItsRange) {
    const struct {
        const char* text;
        int value;
    } cases[] = {{"99999999999", INT_MAX},
                 {"-99999999999", INT_MIN},
                 {"99999999999999999999", INT_MAX},
                 {"2147483648", INT_MAX},
                 {"2147483647", INT_MAX},
                 {"-2147483648", INT_MIN},
                 {" 12x", 12},
                 {"-7", -7},
                 {"", 0},
                 {"abc", 0}};

    for (const auto& example : cases) {
        for (NSString* text in StringsOfEveryClass(example.text)) {
            EXPECT_EQ([text intValue], example.value) << example.text;
        }
    }
    EXPECT_EQ([@"99999999999" intValue], INT_MAX);
}

TEST_F(HostStrings, ATextWithHalfASurrogatePairHasNoUTF8Form) {
    NSMutableString* halfAnEmoji = [NSMutableString stringWithString:@"a😀b"];
    [halfAnEmoji deleteCharactersInRange:NSMakeRange(2, 1)];

    EXPECT_EQ([halfAnEmoji UTF8String], nullptr);
    EXPECT_EQ([[[halfAnEmoji copy] autorelease] UTF8String], nullptr);
}

TEST_F(HostStrings, TextsOfEveryClassHaveTheirUTF8Form) {
    for (const char* text : {"", "abc", "é中😀"}) {
        for (NSString* string in StringsOfEveryClass(text)) {
            EXPECT_STREQ([string UTF8String], text);
        }
    }
    EXPECT_STREQ([@"é中😀" UTF8String], "é中😀");
}

TEST_F(HostStrings, ComparingWithNilDoesNotRaise) {
    NSString* const nothing = nil;

    EXPECT_EQ([@"a" compare:nothing], NSOrderedDescending);
    EXPECT_EQ([@"a" compare:@"b"], NSOrderedAscending);
    EXPECT_EQ([@"a" compare:@"a"], NSOrderedSame);
}

} // namespace
