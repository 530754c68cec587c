// What is answered to a question, and the two ways of printing it. Plain C++; any thread.
#pragma once

#include "Cause.h"
#include "Question.h"

#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator::Explaining {

struct Answer {
    ParsedQuestion question;
    bool isKnown = false;             // The plugin commits such results. If not, the causes are those of near ones.
    bool isTextTelling = true;        // The text has told causes apart, or there was none.
    std::vector<const Cause*> causes; // The most likely first.
};

Answer AnswerTo(const ParsedQuestion& question);

// For people: lines of at most 96 columns, except where a single word is longer.
std::string TextOf(const Answer& answer);

// One JSON document and a line feed; docs/results.md has the format.
std::string JsonOf(const Answer& answer);

// "2", "-1299 to -995", "any" or "none".
std::string CodesInWords(const Codes& codes);

// The names of the requests, in the order of the command's help.
std::vector<std::string_view> NamesOf(Requests requests);

} // namespace Tarvik::Vorn::Simulator::Explaining
