// NSURL as Apple documents it, with both ways of treating characters that no URL may contain.

#include "Foundation+Control.h"
#include "PoolTest.h"

using namespace Tarvik::Vorn::Host;

namespace {

class HostURLs : public Tarvik::Vorn::Test::PoolTest {
protected:
    void TearDown() override { SetURLParsing(URLParsing::kRejectInvalid); }
};

NSURL* Parse(const char* text) {
    return [NSURL URLWithString:[NSString stringWithUTF8String:text]];
}

const char* Text(NSString* text) {
    return text != nil ? [text UTF8String] : "nil";
}

NSString* NameOfExceptionFrom(void (^work)()) {
    @try {
        work();
    } @catch (NSException* exception) {
        return [exception name];
    }
    return @"none";
}

const char* const kInvalidTexts[] = {"a b",           "http://x/a b",      "http://x/é",   "http://x/%zz",
                                     "http://x/%",    "http://x/%2",       "http://x/\"",  "http://x/{a}",
                                     "http://x/a|b",  "http://x/a^b",      "http://x/a`b", "http://x/<a>",
                                     "http://x/a\\b", "http://x/?q=a b#f", "http://x?a b", "http://x#a b"};

TEST_F(HostURLs, ANilTextRaises) {
    NSString* const nothing = nil;
    for (void (^work)() in @[
             ^{
                 [NSURL URLWithString:nothing];
             },
             ^{
                 [NSURL URLWithString:nothing relativeToURL:[NSURL URLWithString:@"http://x/"]];
             },
             ^{
                 [[NSURL alloc] initWithString:nothing];
             },
             ^{
                 [NSURL fileURLWithPath:nothing];
             },
             ^{
                 [NSURL fileURLWithPath:nothing isDirectory:YES];
             }
         ]) {
        EXPECT_STREQ(Text(NameOfExceptionFrom(work)), "NSInvalidArgumentException");
    }
}

TEST_F(HostURLs, InvalidCharactersMakeNoURLByDefault) {
    EXPECT_EQ(CurrentURLParsing(), URLParsing::kRejectInvalid);

    for (const char* text : kInvalidTexts) {
        EXPECT_EQ(Parse(text), nil) << text;
    }
}

TEST_F(HostURLs, InvalidCharactersAreEncodedWhenBuiltWithTheNewerSDK) {
    SetURLParsing(URLParsing::kEncodeInvalid);

    EXPECT_STREQ(Text([Parse("http://x/a b") absoluteString]), "http://x/a%20b");
    EXPECT_STREQ(Text([Parse("http://x/é中") absoluteString]), "http://x/%C3%A9%E4%B8%AD");
    EXPECT_STREQ(Text([Parse("http://x/50%") absoluteString]), "http://x/50%25");
    EXPECT_STREQ(Text([Parse("http://x/%zz%2") absoluteString]), "http://x/%25zz%252");
    EXPECT_STREQ(Text([Parse("http://x/\"<>\\^`{|}") absoluteString]), "http://x/%22%3C%3E%5C%5E%60%7B%7C%7D");
    EXPECT_STREQ(Text([Parse("http://x/?q=a b&r={}#f g#h") absoluteString]), "http://x/?q=a%20b&r=%7B%7D#f%20g%23h");
    EXPECT_STREQ(Text([Parse("http://x?q=a b") absoluteString]), "http://x?q=a%20b");
    EXPECT_STREQ(Text([Parse("rel path.png") absoluteString]), "rel%20path.png");
    EXPECT_STREQ(Text([Parse("http://x/a b") path]), "/a b");
    for (const char* text : kInvalidTexts) {
        EXPECT_NE(Parse(text), nil) << text;
    }
}

TEST_F(HostURLs, EncodingLeavesValidTextsAlone) {
    SetURLParsing(URLParsing::kEncodeInvalid);

    for (const char* text : {"http://u:p@h:80/a.b;p=1,2?q=/?:@!$&'()*+,;=-._~#f?", "http://x/a%20b%C3%a9", "",
                             "mailto:a@b", "fbauth2://", "http://[::1]:80/x", "a/b?c"}) {
        EXPECT_STREQ(Text([Parse(text) absoluteString]), text);
    }
}

TEST_F(HostURLs, EncodingDoesNotMendAHost) {
    SetURLParsing(URLParsing::kEncodeInvalid);

    EXPECT_EQ(Parse("http://x y/"), nil);
    EXPECT_EQ(Parse("http://é/"), nil);
    EXPECT_EQ(Parse("http://[::1"), nil);
    EXPECT_EQ(Parse("http://h:abc/"), nil);
}

TEST_F(HostURLs, AnAuthorityWithoutAPathHasAnEmptyPath) {
    for (const char* text : {"fbauth2://", "scheme://", "http://host", "file://"}) {
        EXPECT_STREQ(Text([Parse(text) path]), "") << text;
        EXPECT_STREQ(Text([Parse(text) pathExtension]), "") << text;
        EXPECT_STREQ(Text([Parse(text) absoluteString]), text);
    }
    EXPECT_STREQ(Text([Parse("x:/") path]), "/");
    EXPECT_EQ([Parse("mailto:a@b") path], nil);
    EXPECT_EQ([Parse("mailto:a@b") pathExtension], nil);
}

TEST_F(HostURLs, PathsAreReadAsBefore) {
    EXPECT_STREQ(Text([Parse("http://h/") path]), "/");
    EXPECT_STREQ(Text([Parse("http://h/a%20b.png?q#f") path]), "/a b.png");
    EXPECT_STREQ(Text([Parse("http://h/a%20b.png?q#f") pathExtension]), "png");
    EXPECT_STREQ(Text([Parse("rel/path.mp4") pathExtension]), "mp4");
    EXPECT_STREQ(Text([[NSURL fileURLWithPath:@"/tmp/a b.png"] absoluteString]), "file:///tmp/a%20b.png");
    EXPECT_STREQ(Text([[NSURL fileURLWithPath:@"/tmp/a b.png" isDirectory:NO] path]), "/tmp/a b.png");
}

TEST_F(HostURLs, AURLWithoutABaseIsTheTextThatItWasMadeFrom) {
    for (const char* text : {"HTTP://Host/a?q#f", "hTTps://host", "FILE:///a", "A1+:b", "http://host/a?",
                             "http://host/a#", "http://host/?#", "http://host:/a;", "a?", "?", "#"}) {
        EXPECT_STREQ(Text([Parse(text) absoluteString]), text);
    }
}

TEST_F(HostURLs, AQueryOrFragmentMayStandDirectlyBehindTheHost) {
    NSURL* query = Parse("http://u:p@host:80?q=1#f");

    EXPECT_STREQ(Text([query absoluteString]), "http://u:p@host:80?q=1#f");
    EXPECT_STREQ(Text([query description]), "http://u:p@host:80?q=1#f");
    EXPECT_STREQ(Text([query host]), "host");
    EXPECT_STREQ(Text([query path]), "");
    EXPECT_STREQ(Text([query query]), "q=1");
    EXPECT_STREQ(Text([query fragment]), "f");
    EXPECT_STREQ(Text([query resourceSpecifier]), "//u:p@host:80?q=1#f");
    EXPECT_STREQ(Text([Parse("http://host#f") fragment]), "f");
    EXPECT_STREQ(Text([Parse("http://host#f") path]), "");
    EXPECT_EQ(Parse("http://h:abc?q"), nil);
}

TEST_F(HostURLs, AURLWithoutAPathIsEqualToItsLikeAndSurvivesAnArchive) {
    NSURL* url = Parse("http://host?q=1");

    NSURL* copied = [[url copy] autorelease];
    NSURL* archived = [NSKeyedUnarchiver unarchiveObjectWithData:[NSKeyedArchiver archivedDataWithRootObject:url]];

    EXPECT_TRUE([url isEqual:Parse("http://host?q=1")]);
    EXPECT_EQ([url hash], [Parse("http://host?q=1") hash]);
    EXPECT_FALSE([url isEqual:Parse("http://host/?q=1")]);
    EXPECT_TRUE([copied isEqual:url]);
    EXPECT_STREQ(Text([archived absoluteString]), "http://host?q=1");
}

TEST_F(HostURLs, RelativeURLsAreResolvedAsBefore) {
    NSURL* base = Parse("http://host/a/");

    NSURL* url = [NSURL URLWithString:@"b/c.png?q" relativeToURL:base];

    EXPECT_STREQ(Text([url absoluteString]), "http://host/a/b/c.png?q");
    EXPECT_STREQ(Text([url path]), "/a/b/c.png");
}

TEST_F(HostURLs, ATextThatIsNoUnicodeMakesNoURL) {
    NSMutableString* halfAnEmoji = [NSMutableString stringWithString:@"😀"];
    [halfAnEmoji deleteCharactersInRange:NSMakeRange(1, 1)];

    EXPECT_EQ([NSURL URLWithString:halfAnEmoji], nil);
}

} // namespace
