// For every cause a question that puts it first; for those whose result looks the same in every field and in the log, the
// cause that stands before them because it is likelier.

#include "ExplainTest.h"

#include "explain/Explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using Simulator::ExplainQuestion;
using namespace Simulator::Explaining;
using ::testing::UnorderedElementsAreArray;

constexpr const char* kShareError = "Error Domain=com.facebook.sdk.share Code=2 ";
constexpr const char* kCoreError = "(com.facebook.sdk.core error)";
constexpr const char* kLoginError = "(com.facebook.sdk.login error)";
constexpr const char* kNetworkError = "(NSURLErrorDomain error -1009.)";

struct Case {
    std::string id;
    ExplainQuestion question;
    std::string before; // The likelier cause with the same result; empty when this one is first.
};

void PrintTo(const Case& testCase, std::ostream* out) {
    *out << testCase.id;
}

const std::vector<Case>& LoginCases() {
    static const std::vector<Case> cases{
        {"login-succeeded", {"login", "0", "", ""}, ""},
        {"login-without-token", {"login", "0", "", R"({"access_token":""})"}, ""},
        {"login-not-gaming", {"login", "0", "", "facebook sdk version is too low to support Gaming, please"}, ""},
        {"login-cancelled", {"login", "2", "", ""}, ""},
        {"login-url-not-forwarded", {"login", "2", "", ""}, "login-cancelled"},
        {"login-nothing-granted", {"login", "2", "", ""}, "login-url-not-forwarded"},
        {"login-refused-by-facebook", {"login", "9999", "8", kCoreError}, ""},
        {"login-bad-permission", {"login", "9999", "2", kCoreError}, ""},
        {"login-browser-not-opened", {"login", "9999", "301", kLoginError}, ""},
        {"login-offline", {"login", "9999", "-1009", kNetworkError}, ""},
        {"login-network-error-of-sdk", {"login", "9999", "4", kCoreError}, ""},
        {"login-inconsistent-answer", {"login", "9999", "301", kCoreError}, ""},
        {"login-state-check-failed", {"login", "9999", "308", kLoginError}, ""},
        {"login-bad-id-token", {"login", "9999", "309", kCoreError}, ""},
        {"login-user-mismatch", {"login", "9999", "304", kLoginError}, ""},
        {"login-account-needs-attention", {"login", "9999", "302", kLoginError}, ""},
        {"login-error-of-sdk", {"login", "9999", "310", kLoginError}, ""},
        {"logout-done", {"logout", "0", "", ""}, ""},
    };
    return cases;
}

const std::vector<Case>& ShareCases() {
    static const std::vector<Case> cases{
        {"share-completed", {"211", "0", "0", ""}, ""},
        {"share-cancel-in-browser", {"211", "0", "0", ""}, "share-completed"},
        {"video-share-completed", {"211", "0", "0", ""}, "share-cancel-in-browser"},
        {"share-error-code-zero", {"211", "0", "0", "Error Domain=x Code=0"}, ""},
        {"share-cancelled", {"211", "2", "0", ""}, ""},
        {"dialog-url-not-forwarded", {"211", "2", "0", ""}, "share-cancelled"},
        {"share-link-refused", {"211", "2", "0", kShareError}, ""},
        {"share-link-is-no-url", {"211", "2", "0", "Invalid value for shareContent: <x>"}, ""},
        {"share-video-file-as-asset", {"211", "2", "0", "Invalid value for videoURL: x"}, ""},
        {"share-native-dialog-unavailable", {"211", "202", "", ""}, ""},
        {"share-app-switch-refused", {"211", "11", "0", ""}, ""},
        {"share-browser-not-opened", {"211", "12", "0", ""}, ""},
        {"share-network-error", {"211", "-1001", "0", ""}, ""},
        {"share-error-of-sdk", {"211", "8", "0", ""}, ""},
        {"outcome-of-another-dialog", {"invite", "202", "0", ""}, ""},
        {"share-type-unsupported", {"211", "7", "7", ""}, ""},
        {"share-method-unsupported", {"300", "7", "0", "not support methodID: 300"}, ""},
        {"share-link-empty", {"share", "11", "11", ""}, ""},
        {"share-image-illegal", {"share", "11", "11", "illegal image data"}, ""},
        {"image-needs-facebook-app", {"share", "15", "", ""}, ""},
        {"queries-scheme-missing", {"share", "15", "", ""}, "image-needs-facebook-app"},
        {"video-needs-facebook-app", {"share", "15", "", "Facebook share vedio need app installed"}, ""},
        {"share-with-method-of-message", {"share", "15", "", "Messenger isn't installed"}, ""},
    };
    return cases;
}

const std::vector<Case>& MediaCases() {
    static const std::vector<Case> cases{
        {"image-uploaded", {"211", "0", "0", "load image success"}, ""},
        {"video-uploaded", {"211", "0", "0", "load video successed"}, ""},
        {"image-upload-refused", {"211", "9999", "8", ""}, ""},
        {"upload-token-expired", {"211", "9999", "8", "Session has expired"}, ""},
        {"image-media-dialog-not-opened", {"211", "9999", "13", ""}, ""},
        {"video-upload-content-refused", {"share", "9999", "2", ""}, ""},
        {"video-upload-refused", {"share", "9999", "3", ""}, ""},
        {"video-upload-answer-malformed", {"share", "9999", "0", "com.facebook.sdk.gaming.videoupload"}, ""},
        {"upload-failed-without-error", {"share", "9999", "0", "load video error"}, ""},
        {"upload-network-error", {"share", "9999", "-1009", ""}, ""},
        {"upload-error-of-sdk", {"share", "9999", "10", ""}, ""},
        {"video-incompatible", {"share", "8", "", ""}, ""},
        {"video-saving-failed", {"0", "8", "0", "save video failed: no room"}, ""},
        {"video-path-empty", {"0", "11", "0", ""}, ""},
        {"video-path-is-no-url", {"0", "11", "0", "mediaPath is not a path"}, ""},
        {"video-asset-without-url", {"0", "11", "0", "the asset of mediaPath has no URL"}, ""},
        {"photos-denied", {"share", "12", "0", ""}, ""},
        {"photos-denied-when-asked", {"share", "12", "0", "need system permission"}, ""},
        {"photos-restricted", {"share", "12", "0", "not authorized to access photo data"}, ""},
    };
    return cases;
}

const std::vector<Case>& FriendCases() {
    static const std::vector<Case> cases{
        {"message-sent", {"send-message", "0", "", ""}, ""},
        {"message-cancelled", {"send-message", "2", "", ""}, ""},
        {"message-type-unsupported", {"send-message", "7", "7", ""}, ""},
        {"message-link-empty", {"send-message", "11", "11", ""}, ""},
        {"messenger-not-installed", {"send-message", "15", "", ""}, ""},
        {"messenger-scheme-missing", {"send-message", "15", "", ""}, "messenger-not-installed"},
        {"invitation-sent", {"invite", "0", "", ""}, ""},
        {"invitation-cancel-looks-like-success", {"invite", "0", "", "completionGesture = cancel"}, ""},
        {"invitation-recipients-missing", {"invite", "0", "", "\"to[0]\" = 1"}, ""},
        {"invitation-closed", {"invite", "2", "", ""}, ""},
        {"invitation-url-not-forwarded", {"invite", "2", "", ""}, "invitation-closed"},
        {"invitation-text-refused", {"invite", "9999", "2", ""}, ""},
        {"invitation-without-answer", {"invite", "9999", "203", ""}, ""},
        {"invitation-error-of-sdk", {"invite", "9999", "14", ""}, ""},
        {"invitation-without-title", {"invite", "11", "11", ""}, ""},
        {"invitation-bad-user-list", {"invite", "11", "11", "user list is not a array or is empty"}, ""},
        {"friend-finder-closed", {"add-friend", "0", "", ""}, ""},
        {"friend-finder-outcome", {"add-friend", "0", "", ""}, "friend-finder-before-any-request"},
        {"friend-finder-before-any-request", {"-1", "0", "", ""}, ""},
        {"friend-finder-cancelled", {"add-friend", "2", "", ""}, ""},
        {"friend-finder-not-opened", {"add-friend", "9999", "13", ""}, ""},
        {"friend-finder-error-of-sdk", {"add-friend", "9999", "10", ""}, ""},
        {"add-friend-without-gaming-login", {"add-friend", "7", "", ""}, ""},
        {"add-friend-not-in-gaming-mode", {"add-friend", "10", "", ""}, ""},
        {"query-friends-unsupported", {"query-friends", "7", "", ""}, ""},
    };
    return cases;
}

const std::vector<Case>& SilenceCases() {
    static const std::vector<Case> cases{
        {"login-left-open", {"login", "none", "", ""}, ""},
        {"login-replaced", {"login", "none", "", ""}, "login-left-open"},
        {"login-url-scheme-missing", {"login", "none", "-", "InvalidOperationException"}, ""},
        {"dialog-left-open", {"share", "none", "", ""}, ""},
        {"dialog-error-swallowed", {"share", "none", "", ""}, "dialog-left-open"},
        {"dialogs-overlap", {"share", "none", "", ""}, "dialog-error-swallowed"},
        {"outcome-at-observer-of-add-friend", {"share", "none", "", ""}, "dialogs-overlap"},
        {"photos-limited", {"share", "none", "", ""}, "outcome-at-observer-of-add-friend"},
        {"share-without-view-controller", {"share", "none", "", ""}, "photos-limited"},
        {"video-upload-never-ends", {"share", "none", "", ""}, "share-without-view-controller"},
        {"image-upload-never-ends", {"share", "none", "", ""}, "video-upload-never-ends"},
        {"client-token-missing", {"share", "none", "-", "FacebookClientToken is required"}, ""},
        {"invitation-left-open", {"invite", "none", "", ""}, ""},
        {"invitation-without-view-controller", {"invite", "none", "", ""}, "invitation-left-open"},
        {"friend-finder-left-open", {"add-friend", "none", "", ""}, ""},
        {"result-lost-without-observer", {"logout", "none", "", ""}, ""},
        {"result-cached", {"logout", "none", "", ""}, "result-lost-without-observer"},
        {"observer-removed", {"logout", "none", "", ""}, "result-cached"},
        {"answer-late", {"login", "none", "", ""}, "observer-removed"},
        {"platform-call-throws", {"logout", "none", "", ""}, "observer-removed"},
        {"allocation-failed", {"logout", "none", "", ""}, "platform-call-throws"},
    };
    return cases;
}

std::vector<Case> AllCases() {
    std::vector<Case> all;
    for (const std::vector<Case>* const cases :
         {&LoginCases(), &ShareCases(), &MediaCases(), &FriendCases(), &SilenceCases()}) {
        all.insert(all.end(), cases->begin(), cases->end());
    }
    return all;
}

class FirstCauseTest : public ::testing::TestWithParam<Case> {};

TEST_P(FirstCauseTest, StandsWhereItsLikelihoodPutsIt) {
    const std::vector<std::string> causes = CausesOf(GetParam().question);

    const auto place = std::ranges::find(causes, GetParam().id);

    ASSERT_NE(place, causes.end());
    const std::string before = place == causes.begin() ? "" : *std::prev(place);
    EXPECT_EQ(before, GetParam().before);
}

INSTANTIATE_TEST_SUITE_P(EveryCause, FirstCauseTest, ::testing::ValuesIn(AllCases()),
                         [](const ::testing::TestParamInfo<Case>& info) {
                             std::string name = info.param.id;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

TEST(FirstCauseTableTest, HasEveryCauseOnce) {
    std::vector<std::string> tested;
    for (const Case& testCase : AllCases()) {
        tested.push_back(testCase.id);
    }

    std::vector<std::string> ids;
    for (const Cause* const cause : AllCauses()) {
        ids.emplace_back(cause->id);
    }

    EXPECT_THAT(tested, UnorderedElementsAreArray(ids));
}

} // namespace
} // namespace Tarvik::Vorn::Test
