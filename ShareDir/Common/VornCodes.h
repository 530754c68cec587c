// The integers that the core, the plugin and the game agree on: result codes, method IDs, request types and the
// observer IDs that are fixed. They travel in records and logs as plain integers; code uses the names.
#pragma once

#include <cstdint>

namespace Tarvik::Vorn {

// `retCode` of a result.
namespace RetCode {
inline constexpr int32_t kSuccess = 0;
inline constexpr int32_t kCancelled = 2;        // By the user.
inline constexpr int32_t kNotSupported = 7;     // The channel has no such operation.
inline constexpr int32_t kSystemRefused = 8;    // The operating system refused an operation.
inline constexpr int32_t kNotInGamingMode = 10; // Add friend in "Game" login mode without a gaming login.
inline constexpr int32_t kInvalidArgument = 11;
inline constexpr int32_t kNeedSystemPermission = 12; // The user has not granted a system permission.
inline constexpr int32_t kAppNotInstalled = 15;      // Another app that the operation needs is missing.
inline constexpr int32_t kThirdPartyError = 9999; // The channel's own SDK failed; `thirdCode` and `thirdMsg` say how.
} // namespace RetCode

// `methodNameID` and `methodID`: set by the core, passed through by the plugin, which branches on these alone.
namespace MethodID {
inline constexpr int32_t kShare = 211;
inline constexpr int32_t kSendMessage = 212;
inline constexpr int32_t kShareByPipeline = 414; // Served like kShare.
} // namespace MethodID

// `VornFriendReqInfo::type`.
namespace RequestType {
inline constexpr int32_t kLink = 10001;
inline constexpr int32_t kImage = 10002;
inline constexpr int32_t kInvite = 10003;
inline constexpr int32_t kVideo = 10005;
} // namespace RequestType

// Observers with a fixed ID; all others come with the request.
namespace ObserverID {
inline constexpr uint32_t kLogin = 101;        // InnerLoginRet: failed or cancelled login.
inline constexpr uint32_t kDirect = 107;       // Any record: called at once on the committing thread.
inline constexpr uint32_t kLogout = 108;       // InnerBaseRet.
inline constexpr uint32_t kLoginPlugin = 109;  // InnerLoginPluginRet: successful login.
inline constexpr uint32_t kQueryFriends = 202; // InnerFriendRet.
} // namespace ObserverID

} // namespace Tarvik::Vorn
