#include "CallText.h"

#import <objc/runtime.h>

namespace Tarvik::Vorn::Host {

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
