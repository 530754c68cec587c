#include "FriendShareTest.h"

namespace Tarvik::Vorn::Test {

std::string MediaPath(const std::string& name) {
    return std::string(VORN_MEDIA) + "/" + name;
}

} // namespace Tarvik::Vorn::Test
