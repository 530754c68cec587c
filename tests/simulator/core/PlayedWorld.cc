#include "PlayedWorld.h"

namespace Tarvik::Vorn::Test {

std::string MediaFile(const std::string& name) {
    return VORN_MEDIA "/" + name;
}

} // namespace Tarvik::Vorn::Test
