// The user, Facebook and the system: they answer what the plugin has opened, in ways that bytes choose. Main thread.
#pragma once

#import <Foundation/Foundation.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <string>

namespace Tarvik::Vorn::Fuzz {

// A text of at most `longest` bytes, of any value.
std::string TakeText(FuzzedDataProvider& bytes, size_t longest = 64);

// The same as an object; nil when it is not UTF-8, or by choice.
NSString* TakeString(FuzzedDataProvider& bytes);

// Any domain, code and description, or nil.
NSError* TakeError(FuzzedDataProvider& bytes);

// How many dialogs, prompts, uploads and the like wait for an answer.
size_t OpenThings();

// Answers one of them, if there is one. True when the answer is one of which the platform never tells anybody.
bool AnswerSomething(FuzzedDataProvider& bytes);

} // namespace Tarvik::Vorn::Fuzz
