// NSURL as Apple documents it.
//
// GNUstep returns nil for a nil text, which raises on Apple; rejects "http://host?query", where the query stands
// directly behind the host; has no path where Apple's is empty; and tells another text than it was made from, such as
// "Http://host" for "HTTP://host" and "http://host/" for "http://host/?". Texts with characters that no URL may contain are
// rejected or percent-encoded, as Foundation+Control.h says.

#include "Foundation+Control.h"
#include "MethodReplacement.h"

#include <atomic>
#include <string>
#include <string_view>

using Tarvik::Vorn::Host::CurrentURLParsing;
using Tarvik::Vorn::Host::ReplaceMethod;
using Tarvik::Vorn::Host::URLParsing;

@interface NSURL (VornHost)
- (NSString*)vornHostText;
- (void)setVornHostText:(NSString*)text;
@end

namespace {

using InitBody = NSURL*(NSURL*, SEL, NSString*, NSURL*);
using InitFileBody = NSURL*(NSURL*, SEL, NSString*);
using InitDirectoryBody = NSURL*(NSURL*, SEL, NSString*, BOOL);
using TextBody = NSString*(NSURL*, SEL);

InitBody* sInit = nullptr;
InitFileBody* sInitFile = nullptr;
InitDirectoryBody* sInitDirectory = nullptr;
TextBody* sAbsoluteString = nullptr;
TextBody* sPath = nullptr;

std::atomic<URLParsing> sParsing{URLParsing::kRejectInvalid};

constexpr std::string_view kAlphanumeric = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::string_view kMarks = "-._~!$&'()*+,;="; // Allowed unencoded in every part behind the scheme.

// The parts of a URL text as RFC 3986 splits it, each with the delimiters that belong to it.
struct Parts {
    std::string_view scheme;    // "http:" or empty.
    std::string_view authority; // "//user@host:80" or empty.
    std::string_view path;
    std::string_view query;    // "?query" or empty.
    std::string_view fragment; // "#fragment" or empty.
};

std::string_view TakeUntil(std::string_view& rest, size_t end) {
    const std::string_view taken = rest.substr(0, end);
    rest.remove_prefix(taken.size());
    return taken;
}

Parts Split(std::string_view text) {
    Parts parts;
    const size_t colon = text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-.");
    if (colon != 0 && colon != text.npos && text[colon] == ':' && kAlphanumeric.find(text[0]) < 52) {
        parts.scheme = TakeUntil(text, colon + 1);
    }
    if (text.substr(0, 2) == "//") {
        parts.authority = TakeUntil(text, text.find_first_of("/?#", 2));
    }
    parts.path = TakeUntil(text, text.find_first_of("?#"));
    parts.query = TakeUntil(text, text.find('#'));
    parts.fragment = text;
    return parts;
}

bool IsHexDigit(char character) {
    return std::string_view("0123456789ABCDEFabcdef").find(character) != std::string_view::npos;
}

// Percent-encodes what may not stand in this part; encoded characters stay as they are.
void AppendEncoded(std::string& result, std::string_view part, std::string_view alsoAllowed) {
    for (size_t i = 0; i < part.size(); ++i) {
        const char character = part[i];
        const bool isEscape =
            character == '%' && i + 2 < part.size() && IsHexDigit(part[i + 1]) && IsHexDigit(part[i + 2]);
        if (isEscape || kAlphanumeric.find(character) != kAlphanumeric.npos || kMarks.find(character) != kMarks.npos ||
            alsoAllowed.find(character) != alsoAllowed.npos) {
            result += character;
            continue;
        }
        constexpr char kDigits[] = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(character);
        result += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
}

// Scheme and authority are left alone: a host with characters that it may not have makes no URL. (Apple would turn a
// host outside ASCII into its internationalised form.)
std::string EncodeInvalid(std::string_view text) {
    const Parts parts = Split(text);
    std::string result(parts.scheme);
    result += parts.authority;
    AppendEncoded(result, parts.path, "/:@");
    if (!parts.query.empty()) {
        result += '?';
        AppendEncoded(result, parts.query.substr(1), "/:@?");
    }
    if (!parts.fragment.empty()) {
        result += '#';
        AppendEncoded(result, parts.fragment.substr(1), "/:@?");
    }
    return result;
}

// "http://host?query" and "http://host#fragment": an authority, no path, and something behind it.
bool HasEmptyPathBeforeMore(const Parts& parts) {
    return parts.authority.size() > 2 && parts.path.empty() && !(parts.query.empty() && parts.fragment.empty());
}

bool HasEmptyPathBeforeMore(NSURL* url) {
    NSString* text = [url vornHostText];
    return text != nil && HasEmptyPathBeforeMore(Split([text UTF8String]));
}

[[noreturn]] void RaiseNilText(SEL selector) {
    [NSException raise:NSInvalidArgumentException
                format:@"*** -[NSURL %@]: nil string parameter", NSStringFromSelector(selector)];
    __builtin_unreachable();
}

NSURL* Init(NSURL* self, SEL selector, NSString* text, NSURL* base) {
    if (text == nil) {
        [self release];
        RaiseNilText(selector);
    }
    const char* bytes = [text UTF8String];
    if (bytes == nullptr) { // A lone surrogate.
        [self release];
        return nil;
    }
    const std::string given = CurrentURLParsing() == URLParsing::kEncodeInvalid ? EncodeInvalid(bytes) : bytes;
    const Parts parts = Split(given);
    if (!HasEmptyPathBeforeMore(parts)) {
        return sInit(self, selector, [NSString stringWithUTF8String:given.c_str()], base);
    }
    // GNUstep wants a path. It gets one to parse by, and the URL keeps the text without.
    std::string parseable(parts.scheme);
    parseable.append(parts.authority).append("/").append(parts.query).append(parts.fragment);
    NSURL* url = sInit(self, selector, [NSString stringWithUTF8String:parseable.c_str()], base);
    [url setVornHostText:[NSString stringWithUTF8String:given.c_str()]];
    return url;
}

// Without GNUstep's leak of the receiver.
NSURL* InitFile(NSURL* self, SEL selector, NSString* path) {
    if (path == nil) {
        [self release];
        RaiseNilText(selector);
    }
    return sInitFile(self, selector, path);
}

NSURL* InitDirectory(NSURL* self, SEL selector, NSString* path, BOOL isDirectory) {
    if (path == nil) {
        [self release];
        RaiseNilText(selector);
    }
    return sInitDirectory(self, selector, path, isDirectory);
}

// The text itself, unless it is to be read from where the base is.
NSString* AbsoluteString(NSURL* self, SEL selector) {
    NSString* const text = [self vornHostText];
    const bool isWhole = [self baseURL] == nil || HasEmptyPathBeforeMore(self);
    return isWhole ? text : sAbsoluteString(self, selector);
}

// nil only for a URL like "mailto:someone", which has no path at all. pathExtension and the like follow.
NSString* Path(NSURL* self, SEL selector) {
    if (HasEmptyPathBeforeMore(self)) {
        return @"";
    }
    NSString* path = sPath(self, selector);
    if (path != nil) {
        return path;
    }
    const Parts parts = Split([[self absoluteString] UTF8String]);
    if (!parts.scheme.empty() && parts.authority.empty() && parts.path.substr(0, 1) != "/") {
        return nil;
    }
    return parts.path.empty() ? @"" : @"/";
}

} // namespace

namespace Tarvik::Vorn::Host {

void SetURLParsing(URLParsing parsing) {
    sParsing = parsing;
}

URLParsing CurrentURLParsing() {
    return sParsing;
}

} // namespace Tarvik::Vorn::Host

@implementation NSURL (VornHost)

+ (void)load {
    @autoreleasepool {
        Class url = [NSURL class];
        ReplaceMethod(url, @selector(initWithString:relativeToURL:), Init, &sInit);
        ReplaceMethod(url, @selector(initFileURLWithPath:), InitFile, &sInitFile);
        ReplaceMethod(url, @selector(initFileURLWithPath:isDirectory:), InitDirectory, &sInitDirectory);
        ReplaceMethod(url, @selector(absoluteString), AbsoluteString, &sAbsoluteString);
        ReplaceMethod(url, @selector(path), Path, &sPath);
    }
}

// The text that the URL was made from.
- (NSString*)vornHostText {
    return _urlString;
}

- (void)setVornHostText:(NSString*)text {
    NSString* const old = _urlString;
    _urlString = [text copy];
    [old release];
}

@end
