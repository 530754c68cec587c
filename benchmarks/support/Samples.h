// Records as the plugin really sends them, and requests as games do.
#pragma once

#include "VornRecords.h"

#include <cstddef>
#include <cstdint>

namespace Tarvik::Vorn::Bench {

// How a sequence ID of the core looks.
inline constexpr const char* kSeqID = "e1b2c3d4-0042-4f6a-9c1d-7a5e8f90b1c2";

// A game request that was sent to two players.
InnerBaseRet SampleBaseRet();

// The answer to a friend query: the plugin's, which does not support it, has no friends.
InnerFriendRet SampleFriendRet(size_t friends);

// A login that failed for want of a network.
InnerLoginRet SampleLoginRet();

// A login that succeeded, with an access token of the usual length.
InnerLoginPluginRet SampleLoginPluginRet();

// A request of one of RequestType: texts of the usual length, files that do not exist, a video of the photo library.
VornFriendReqInfo SampleRequest(int32_t type);

} // namespace Tarvik::Vorn::Bench
