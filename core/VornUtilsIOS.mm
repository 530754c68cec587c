#include "VornUtilsIOS.h"

#include "VornImageLoader.h"
#include "VornJsonDocument.h"
#include "VornText.h"

#import <UIKit/UIKit.h>
#import <objc/runtime.h>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace Tarvik::Vorn;

// NSJSONSerialization is not used: GNUstep's turns every integer into a double and accepts what is not JSON.
//
// Reading: JsonDocument's rules; of two members with one key the later counts. Writing: compact as {"k":[1,true]}, or
// with two blanks per level and one behind the colon; UTF-8, only quotes, backslashes and control characters escaped
// ("/" is not); members in the order of their keys' UTF-8 bytes, so that equal dictionaries have equal texts; an
// NSDecimalNumber with all its digits, possibly as 1.2E17. No JSON form have: a text with half a surrogate pair, NaN
// and infinities, keys that are no texts, objects of other classes, and whatever is nested more than 512 deep (so a
// dictionary that holds itself ends there).

namespace {

constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

// Foundation's classes, looked up once: the runtime searches a class by its name wherever code names it.
struct FoundationClasses {
    Class array = [NSArray class];
    Class decimalNumber = [NSDecimalNumber class];
    Class dictionary = [NSDictionary class];
    Class null = [NSNull class];
    Class number = [NSNumber class];
    Class text = [NSString class];
};

const FoundationClasses& Foundation() {
    static const FoundationClasses classes;
    return classes;
}

// REQUIRES: `utf8` is valid UTF-8. It may hold NULs.
NSString* MakeText(const std::string& utf8) {
    if (utf8.starts_with(kByteOrderMark)) { // GNUstep would drop it. Behind another character it stays.
        return [MakeText("." + utf8) substringFromIndex:1];
    }
    return [[[Foundation().text alloc] initWithBytes:utf8.data() length:utf8.size()
                                            encoding:NSUTF8StringEncoding] autorelease];
}

// The text if it is short and of ASCII, as nearly all are; no object is made on the way.
std::optional<std::string> ShortAsciiOf(NSString* text) {
    std::array<unichar, 256> characters; // NOLINT(cppcoreguidelines-pro-type-member-init): what is used is filled.
    const NSUInteger length = [text length];
    if (length > characters.size()) {
        return std::nullopt;
    }
    [text getCharacters:characters.data() range:NSMakeRange(0, length)];
    std::string ascii(length, '\0');
    for (NSUInteger i = 0; i < length; ++i) {
        if (characters[i] >= 0x80) {
            return std::nullopt;
        }
        ascii[i] = static_cast<char>(characters[i]);
    }
    return ascii;
}

// Empty when the text has half a surrogate pair.
std::optional<std::string> Utf8Of(NSString* text) {
    if (std::optional<std::string> ascii = ShortAsciiOf(text)) {
        return ascii;
    }
    NSData* const utf8 = [text dataUsingEncoding:NSUTF8StringEncoding];
    if (utf8 == nil) {
        return std::nullopt;
    }
    std::string copy([utf8 length], '\0');
    [utf8 getBytes:copy.data() length:copy.size()];
    return copy;
}

#pragma mark - Reading

NSDictionary* MakeDictionary(const JsonValue::Object& members);
NSArray* MakeArray(const JsonValue::Array& values);

// Recursion is bounded: the tree is kJsonNestingLimit deep at most.
id MakeObject(const JsonValue& value) {
    switch (value.kind()) {
    case JsonKind::kNull:
        return [NSNull null];
    case JsonKind::kBool:
        return [NSNumber numberWithBool:*value.AsBool() ? YES : NO];
    case JsonKind::kInt64:
        return [NSNumber numberWithLongLong:*value.AsInt64()];
    case JsonKind::kUint64:
        return [NSNumber numberWithUnsignedLongLong:*value.AsUint64()];
    case JsonKind::kDouble:
        return [NSNumber numberWithDouble:*value.AsDouble()];
    case JsonKind::kString:
        return MakeText(*value.AsString());
    case JsonKind::kArray:
        return MakeArray(*value.AsArray());
    case JsonKind::kObject:
        return MakeDictionary(*value.AsObject());
    }
    return nil;
}

NSDictionary* MakeDictionary(const JsonValue::Object& members) {
    NSMutableDictionary* const dictionary = [NSMutableDictionary dictionaryWithCapacity:members.size()];
    for (const JsonMember& member : members) {
        [dictionary setObject:MakeObject(member.value) forKey:MakeText(member.key)];
    }
    return dictionary;
}

NSArray* MakeArray(const JsonValue::Array& values) {
    NSMutableArray* const array = [NSMutableArray arrayWithCapacity:values.size()];
    for (const JsonValue& value : values) {
        [array addObject:MakeObject(value)];
    }
    return array;
}

#pragma mark - Writing

// Writes objects with one of RapidJSON's writers. Every function returns false when something has no JSON form; what
// has been written is then of no use.
template <class Writer>
class ObjectWriter {
public:
    explicit ObjectWriter(Writer& writer) : mWriter(writer) {}

    bool Write(id object) {
        if ([object isKindOfClass:Foundation().text]) {
            const std::optional<std::string> text = Utf8Of(object);
            return text && mWriter.String(text->data(), SizeOf(*text));
        }
        if ([object isKindOfClass:Foundation().number]) {
            return WriteNumber(object);
        }
        if ([object isKindOfClass:Foundation().dictionary]) {
            return Nested([&] { return WriteDictionary(object); });
        }
        if ([object isKindOfClass:Foundation().array]) {
            return Nested([&] { return WriteArray(object); });
        }
        return [object isKindOfClass:Foundation().null] && mWriter.Null();
    }

private:
    using Member = std::pair<std::string, id>; // The dictionary keeps the object.

    static rapidjson::SizeType SizeOf(const std::string& text) { return static_cast<rapidjson::SizeType>(text.size()); }

    template <class WriteInside>
    bool Nested(WriteInside writeInside) {
        if (mDepth == kJsonNestingLimit) {
            return false;
        }
        mDepth += 1;
        const bool written = writeInside();
        mDepth -= 1;
        return written;
    }

    bool WriteNumber(NSNumber* number) {
        if ([number isKindOfClass:Foundation().decimalNumber]) {
            const std::string digits = CStr([number stringValue]);
            return digits != "NaN" && mWriter.RawValue(digits.data(), digits.size(), rapidjson::kNumberType);
        }
        switch (*[number objCType]) {
        case 'B': // A boolean number is the only one whose type is a character's or bool: GNUstep keeps a small integer
        case 'C': // as an int, whatever it was made from.
        case 'c':
            return mWriter.Bool([number boolValue] != NO);
        case 'f':
        case 'd':
            return mWriter.Double([number doubleValue]); // False for NaN and the infinities.
        case 'Q':
        case 'L':
            return mWriter.Uint64([number unsignedLongLongValue]);
        default:
            return mWriter.Int64([number longLongValue]);
        }
    }

    bool WriteDictionary(NSDictionary* dictionary) {
        std::vector<Member> members;
        for (id key in dictionary) {
            if (![key isKindOfClass:Foundation().text]) {
                return false;
            }
            const std::optional<std::string> name = Utf8Of(key);
            if (!name) {
                return false;
            }
            members.emplace_back(*name, [dictionary objectForKey:key]);
        }
        std::sort(members.begin(), members.end(), [](const Member& a, const Member& b) { return a.first < b.first; });

        mWriter.StartObject();
        for (const Member& member : members) {
            mWriter.Key(member.first.data(), SizeOf(member.first));
            if (!Write(member.second)) {
                return false;
            }
        }
        return mWriter.EndObject();
    }

    bool WriteArray(NSArray* array) {
        mWriter.StartArray();
        for (id element in array) {
            if (!Write(element)) {
                return false;
            }
        }
        return mWriter.EndArray();
    }

    Writer& mWriter;
    size_t mDepth = 0;
};

template <class Writer>
NSString* TextOf(NSDictionary* dict, Writer& writer, rapidjson::StringBuffer& buffer) {
    ObjectWriter<Writer> objects(writer);
    return objects.Write(dict) ? MakeText(std::string(buffer.GetString(), buffer.GetSize())) : nil;
}

#pragma mark - Method exchange

// What a hooked method answers in place of a method that its class does not have: zero, whatever it is asked.
id AnswerNothing(id /*self*/, SEL /*command*/, ...) {
    return nil;
}

// Makes `implementation` the class's own for `selector`. No superclass changes where the method was inherited: this
// runtime's class_replaceMethod would change it there.
void SetOwnMethod(Class cls, SEL selector, IMP implementation, const char* types) {
    if (!class_addMethod(cls, selector, implementation, types)) {
        method_setImplementation(class_getInstanceMethod(cls, selector), implementation);
    }
}

} // namespace

@implementation VornUtilsIOS

+ (NSString*)jsonStringFromDict:(NSDictionary*)dict prettyPrint:(BOOL)prettyPrint {
    if (![dict isKindOfClass:Foundation().dictionary]) {
        return nil;
    }
    rapidjson::StringBuffer buffer;
    if (!prettyPrint) {
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        return TextOf(dict, writer, buffer);
    }
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.SetIndent(' ', 2);
    return TextOf(dict, writer, buffer);
}

+ (NSDictionary*)dictFromJsonString:(NSString*)json {
    const std::optional<std::string> text = json == nil ? std::nullopt : Utf8Of(json);
    if (!text) {
        return nil;
    }
    LocatedError error;
    const std::optional<JsonDocument> document = JsonDocument::Parse(*text, "", error);
    const JsonValue::Object* const members = document ? document->root().AsObject() : nullptr;
    return members == nullptr ? nil : MakeDictionary(*members);
}

+ (void)swizzlingOriginalClass:(Class)originalClass
                 swizzledClass:(Class)swizzledClass
                   originalSEL:(SEL)originalSEL
                   swizzledSEL:(SEL)swizzledSEL {
    const Method replacement = class_getInstanceMethod(swizzledClass, swizzledSEL);
    if (originalClass == Nil || replacement == nullptr) {
        return; // Nothing to put in the original's place.
    }
    const char* const types = method_getTypeEncoding(replacement);
    const IMP replacementIMP = method_getImplementation(replacement);
    const Method original = class_getInstanceMethod(originalClass, originalSEL);
    const IMP originalIMP =
        original == nullptr ? reinterpret_cast<IMP>(&AnswerNothing) : method_getImplementation(original);

    SetOwnMethod(originalClass, originalSEL, replacementIMP, types);
    SetOwnMethod(originalClass, swizzledSEL, originalIMP, types);
}

+ (UIViewController*)getRootViewController {
    return [[[UIApplication sharedApplication] keyWindow] rootViewController];
}

+ (void)loadImageWithUri:(NSString*)uri complete:(void (^)(BOOL success, NSData* data, NSError* error))complete {
    LoadImage(uri, complete);
}

@end
