// judge-worlds FILE...: tells for each file whether vornsim can use it as a world. Starting vornsim for each of hundreds
// of small worlds would take minutes under sanitizers. Prints "taken FILE", or "refused FILE: ERROR", a line each.

#include "World.h"

#include <cstdio>

using namespace Tarvik::Vorn;
using namespace Tarvik::Vorn::Simulator;

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        LocatedError error;
        if (LoadWorld(argv[i], error)) {
            std::printf("taken %s\n", argv[i]);
        } else {
            std::printf("refused %s: %s\n", argv[i], error.text().c_str());
        }
    }
    return 0;
}
