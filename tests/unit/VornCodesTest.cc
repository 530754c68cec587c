// Each code and ID by its name and its number: the numbers are what the core and the game are built against.

#include "VornCodes.h"

#include <gtest/gtest.h>

namespace Tarvik::Vorn::Test {
namespace {

TEST(VornCodes, EveryNameHasItsNumber) {
    EXPECT_EQ(RetCode::kSuccess, 0);
    EXPECT_EQ(RetCode::kCancelled, 2);
    EXPECT_EQ(RetCode::kNotSupported, 7);
    EXPECT_EQ(RetCode::kSystemRefused, 8);
    EXPECT_EQ(RetCode::kNotInGamingMode, 10);
    EXPECT_EQ(RetCode::kInvalidArgument, 11);
    EXPECT_EQ(RetCode::kNeedSystemPermission, 12);
    EXPECT_EQ(RetCode::kAppNotInstalled, 15);
    EXPECT_EQ(RetCode::kThirdPartyError, 9999);

    EXPECT_EQ(MethodID::kShare, 211);
    EXPECT_EQ(MethodID::kSendMessage, 212);
    EXPECT_EQ(MethodID::kShareByPipeline, 414);

    EXPECT_EQ(RequestType::kLink, 10001);
    EXPECT_EQ(RequestType::kImage, 10002);
    EXPECT_EQ(RequestType::kInvite, 10003);
    EXPECT_EQ(RequestType::kVideo, 10005);

    EXPECT_EQ(ObserverID::kLogin, 101u);
    EXPECT_EQ(ObserverID::kDirect, 107u);
    EXPECT_EQ(ObserverID::kLogout, 108u);
    EXPECT_EQ(ObserverID::kLoginPlugin, 109u);
    EXPECT_EQ(ObserverID::kQueryFriends, 202u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
