// Runs a program and waits for it. Plain C++; any thread.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

struct ProgramResult {
    int exitStatus = -1; // -1 when the program was ended by a signal.
    std::string output;
    std::string errors;
};

void PrintTo(const ProgramResult& result, std::ostream* out);

// Runs `command[0]` with the arguments behind it, in the environment of the test and without standard input.
ProgramResult RunProgram(const std::vector<std::string>& command);

} // namespace Tarvik::Vorn::Test
