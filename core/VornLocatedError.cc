#include "VornLocatedError.h"

namespace Tarvik::Vorn {

std::string LocatedError::text() const {
    std::string place = file;
    if (line != 0) {
        place += ":" + std::to_string(line) + ":" + std::to_string(column);
    }
    return place + ": " + message + "; " + remedy;
}

} // namespace Tarvik::Vorn
