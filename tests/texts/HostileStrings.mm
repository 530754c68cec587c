#include "HostileStrings.h"

#include "HostileTexts.h"

// Has these texts and no others, nil included. (NSError always finds some text of its own, but a subclass in an app or in
// another SDK need not.)
@interface VornHostileError : NSError {
    NSString* mText;
}
- (void)setText:(NSString*)text;
@end

@implementation VornHostileError

- (void)dealloc {
    [mText release];
    [super dealloc];
}

- (void)setText:(NSString*)text {
    mText = [text copy];
}

- (NSString*)domain {
    return mText;
}

- (NSString*)description {
    return mText;
}

- (NSString*)localizedDescription {
    return mText;
}

@end

namespace Tarvik::Vorn::Test {
namespace {

// The initialisers for UTF-16 take no half of a pair; formats do.
HostileString WithoutUtf8(const std::string& name, const std::vector<unichar>& units) {
    RetainPtr<NSMutableString*> text = AdoptNS([[NSMutableString alloc] init]);
    for (const unichar unit : units) {
        [text.get() appendFormat:@"%C", unit];
    }
    return {name, AdoptNS<NSString*>([text.get() copy]), false, ""};
}

// Every text that is UTF-8, with its NULs.
void AddTexts(std::vector<HostileString>& strings) {
    for (const HostileText& text : HostileTexts()) {
        std::string withoutNuls = text.bytes;
        std::erase(withoutNuls, '\0');
        // GNUstep would drop a byte-order mark at the beginning here.
        if (!AsNSString(withoutNuls) || text.bytes.starts_with("\ufeff")) {
            continue;
        }
        strings.push_back({text.name,
                           AdoptNS([[NSString alloc] initWithBytes:text.bytes.data()
                                                            length:text.bytes.size()
                                                          encoding:NSUTF8StringEncoding]),
                           true, text.bytes});
    }
}

} // namespace

std::string HostileString::asC() const {
    return UpToNul(utf8);
}

void PrintTo(const HostileString& text, std::ostream* out) {
    *out << text.name;
}

const std::vector<HostileString>& HostileStrings() {
    static const std::vector<HostileString> strings = [] {
        std::vector<HostileString> all{{"Nil", {}, true, ""}};
        AddTexts(all);
        all.push_back(WithoutUtf8("HighSurrogate", {'a', 0xd83d, 'z'}));
        all.push_back(WithoutUtf8("LowSurrogate", {'a', 0xde00, 'z'}));
        all.push_back(WithoutUtf8("SurrogatesTurned", {0xde00, 0xd83d}));
        all.push_back(WithoutUtf8("HighSurrogateAtTheEnd", {'a', 0xd83d}));
        return all;
    }();
    return strings;
}

NSError* MakeErrorOf(NSString* text, NSInteger code) {
    VornHostileError* const error = [VornHostileError errorWithDomain:@"domain" code:code userInfo:nil];
    [error setText:text];
    return error;
}

} // namespace Tarvik::Vorn::Test
