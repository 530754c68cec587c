// Takes the part of Facebook, the system and the user who end what the plugin has asked of them.
#pragma once

#include "Answers.h"
#include "Openings.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Simulator {

// The step's name: "answer-share".
std::string_view NameOf(const Answer& answer);

// What happens, as the timeline tells it: "Facebook ends the dialog".
std::string Described(const Answer& answer);

// What must have happened before: "put a "share" or a "send-message" before this answer".
std::string WhatIsMissing(const Answer& answer);

const AnswerManner& MannerOf(const Answer& answer);

// Whether the answer is for what has opened.
bool IsFor(const Answer& answer, Host::Opening opening);

// Whether the answer ends what it is for. Progress does not.
bool Ends(const Answer& answer);

// Gives the answer to what has been open for the `index`-th longest time among its kind, on this thread. False when there
// is nothing to answer. Exceptions of the plugin pass through.
bool Give(const Answer& answer, size_t index, Host::Closing closing);

} // namespace Tarvik::Vorn::Simulator
