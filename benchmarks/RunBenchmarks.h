// The program without its main function, which is Objective-C++: the body of Catch2 compiles as C++ only.
#pragma once

namespace Tarvik::Vorn::Bench {

// Runs what the command line selects, prints the figures and returns the exit status of the program. Main thread.
int RunBenchmarks(int argc, char** argv);

} // namespace Tarvik::Vorn::Bench
