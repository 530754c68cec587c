#include "FuzzTarget.h"

#include <cstdio>
#include <cstdlib>

namespace Tarvik::Vorn::Fuzz {

void Require(bool holds, std::string_view rule, std::string_view found) {
    if (holds) {
        return;
    }
    std::fprintf(stderr, "Does not hold: %.*s\nfound: %.*s\n", static_cast<int>(rule.size()), rule.data(),
                 static_cast<int>(found.size()), found.data());
    std::abort();
}

} // namespace Tarvik::Vorn::Fuzz
