// `vornsim explain`: what a result means, what may have caused it, and what to check. Plain C++.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// A result as somebody reads it in a log. All as typed.
struct ExplainQuestion {
    std::string method;    // methodNameID, or a request's name: "share", "send-message", "login", ...
    std::string code;      // retCode
    std::string thirdCode; // Empty when it was not given.
    std::string text;      // retMsg, thirdMsg or a line of the log; may be empty.
};

// Prints the causes, the most likely first. Returns the exit status: 0, or 2 for a question that cannot be understood,
// with the error on `err`.
int RunExplain(const ExplainQuestion& question, bool json, std::FILE* out, std::FILE* err);

} // namespace Tarvik::Vorn::Simulator
