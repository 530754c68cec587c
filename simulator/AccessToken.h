// The player's access token, which is nobody's business in a timeline. Plain C++; any thread.
#pragma once

#include <string>

namespace Tarvik::Vorn::Simulator {

// The channelInfo of a login's reply with "<11 bytes>" in place of the access token. As it is when it holds none, when
// the token is empty, and when its place is taken already.
std::string WithoutToken(const std::string& channelInfo);

} // namespace Tarvik::Vorn::Simulator
