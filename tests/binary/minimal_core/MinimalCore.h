// A second core, as small as one can be: it defines what ShareDir/Common declares as the core's, and nothing else. Each
// of its functions notes that it was called and answers from fixed rules. One thread at a time.
#pragma once

#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// Everything that was asked of the core since the last call of this function, in order, one text per call.
std::vector<std::string> TakeCoreCalls();

// The same without the calls of the logger.
std::vector<std::string> WithoutLogger(std::vector<std::string> calls);

// Only the calls of the logger.
std::vector<std::string> OnlyLogger(std::vector<std::string> calls);

// Runs what was handed to the main thread, until nothing is left. A call is given an integer other than 0, for it means
// nothing.
void RunMainThreadCalls();

// Notes a call. For the parts of the core that are written in Objective-C.
void NoteCoreCall(const std::string& call);

} // namespace Tarvik::Vorn::Test
