#include "CallText.h"

#include <set>

#import <objc/runtime.h>

namespace Tarvik::Vorn::Host {

namespace {

std::string ValueText(id value) {
    if ([value isKindOfClass:[NSString class]]) {
        return QuotedText(value);
    }
    if ([value isKindOfClass:[NSNumber class]]) {
        return PlainText([value stringValue]);
    }
    return ObjectText(value);
}

} // namespace

std::string PlainText(NSString* text) {
    const char* const bytes = [text UTF8String];
    return bytes == nullptr ? std::string() : std::string(bytes);
}

std::string QuotedText(NSString* text) {
    return text == nil ? "nil" : '"' + PlainText(text) + '"';
}

std::string QuotedList(NSArray<NSString*>* texts) {
    if (texts == nil) {
        return "nil";
    }
    std::string list = "[";
    for (NSString* text in texts) {
        if (list.size() > 1) {
            list += ',';
        }
        list += QuotedText(text);
    }
    return list + ']';
}

std::string DictionaryText(NSDictionary* dictionary) {
    if (dictionary == nil) {
        return "nil";
    }
    std::set<std::string> entries;
    for (const id key in dictionary) {
        entries.insert(ValueText(key) + ':' + ValueText([dictionary objectForKey:key]));
    }
    std::string list;
    for (const std::string& entry : entries) {
        list += (list.empty() ? "" : ",") + entry;
    }
    return '{' + list + '}';
}

std::string ObjectText(id object) {
    return object == nil ? "nil" : std::string("<") + class_getName(object_getClass(object)) + '>';
}

std::string JoinArguments(std::initializer_list<std::string> arguments) {
    std::string joined;
    for (const std::string& argument : arguments) {
        if (!joined.empty()) {
            joined += ", ";
        }
        joined += argument;
    }
    return joined;
}

} // namespace Tarvik::Vorn::Host
