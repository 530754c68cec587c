// Arguments of recorded calls as texts, in the form that PlatformCall describes. For the stand-ins' own use.
#pragma once

#import <Foundation/Foundation.h>

#include <initializer_list>
#include <string>

namespace Tarvik::Vorn::Host {

// The bytes of a text; empty for nil.
std::string PlainText(NSString* text);

// "..." in quotes, or nil.
std::string QuotedText(NSString* text);

// ["...","..."], or nil.
std::string QuotedList(NSArray<NSString*>* texts);

// {"key":value,...} by the order of the keys, or nil: texts in quotes, numbers as they print, otherwise <Class>.
std::string DictionaryText(NSDictionary* dictionary);

// <Class>, or nil; "block" for a block.
std::string ObjectText(id object);

// Joins the arguments of one call.
std::string JoinArguments(std::initializer_list<std::string> arguments);

} // namespace Tarvik::Vorn::Host
