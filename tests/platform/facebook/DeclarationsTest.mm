// Numbers and texts that the SDK's declarations promise: they travel to the core or to a server.
#include "FacebookPlatformTest.h"

namespace Tarvik::Vorn::Test {
namespace {

class FacebookDeclarations : public FacebookPlatformTest {};

TEST_F(FacebookDeclarations, ErrorDomainsHaveTheSDKsTexts) {
    EXPECT_EQ(Text(FBSDKErrorDomain), "com.facebook.sdk.core");
    EXPECT_EQ(Text(FBSDKLoginErrorDomain), "com.facebook.sdk.login");
}

TEST_F(FacebookDeclarations, UserInfoKeysHaveTheSDKsTexts) {
    EXPECT_EQ(Text(FBSDKErrorDeveloperMessageKey), "com.facebook.sdk:FBSDKErrorDeveloperMessageKey");
    EXPECT_EQ(Text(FBSDKErrorArgumentNameKey), "com.facebook.sdk:FBSDKErrorArgumentNameKey");
    EXPECT_EQ(Text(FBSDKErrorArgumentValueKey), "com.facebook.sdk:FBSDKErrorArgumentValueKey");
}

TEST_F(FacebookDeclarations, CoreErrorsCountFromZeroToFourteen) {
    const std::vector<NSInteger> codes = {FBSDKErrorReserved,
                                          FBSDKErrorEncryption,
                                          FBSDKErrorInvalidArgument,
                                          FBSDKErrorUnknown,
                                          FBSDKErrorNetwork,
                                          FBSDKErrorAppEventsFlush,
                                          FBSDKErrorGraphRequestNonTextMimeTypeReturned,
                                          FBSDKErrorGraphRequestProtocolMismatch,
                                          FBSDKErrorGraphRequestGraphAPI,
                                          FBSDKErrorDialogUnavailable,
                                          FBSDKErrorAccessTokenRequired,
                                          FBSDKErrorAppVersionUnsupported,
                                          FBSDKErrorBrowserUnavailable,
                                          FBSDKErrorBridgeAPIInterruption,
                                          FBSDKErrorBridgeAPIResponse};

    EXPECT_THAT(codes, ::testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14));
}

TEST_F(FacebookDeclarations, LoginErrorsCountFrom300To310) {
    const std::vector<NSInteger> codes = {FBSDKLoginErrorReserved,
                                          FBSDKLoginErrorUnknown,
                                          FBSDKLoginErrorPasswordChanged,
                                          FBSDKLoginErrorUserCheckpointed,
                                          FBSDKLoginErrorUserMismatch,
                                          FBSDKLoginErrorUnconfirmedUser,
                                          FBSDKLoginErrorSystemAccountAppDisabled,
                                          FBSDKLoginErrorSystemAccountUnavailable,
                                          FBSDKLoginErrorBadChallengeString,
                                          FBSDKLoginErrorInvalidIDToken,
                                          FBSDKLoginErrorMissingAccessToken};

    EXPECT_THAT(codes, ::testing::ElementsAre(300, 301, 302, 303, 304, 305, 306, 307, 308, 309, 310));
}

TEST_F(FacebookDeclarations, DefaultAudiencesCountFriendsOnlyMeEveryone) {
    const std::vector<NSUInteger> audiences = {FBSDKDefaultAudienceFriends, FBSDKDefaultAudienceOnlyMe,
                                               FBSDKDefaultAudienceEveryone};

    EXPECT_THAT(audiences, ::testing::ElementsAre(0u, 1u, 2u));
}

} // namespace
} // namespace Tarvik::Vorn::Test
