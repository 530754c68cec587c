// Login: the permissions and the other texts of the request, and how the login ends. What Facebook is asked for is
// compared with the text cut at its commas.

#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "VornCodes.h"
#include "VornConfig.h"
#include "support/Answering.h"
#include "support/FuzzTarget.h"
#include "support/PluginSession.h"
#include "support/Results.h"
#include "support/Texts.h"

#include <algorithm>

namespace Tarvik::Vorn::Fuzz {
namespace {

constexpr size_t kLongestPermissions = 4096;

// Every piece, empty ones too; none at all when the text is not UTF-8.
std::vector<std::string> PiecesOf(std::string_view text) {
    std::vector<std::string> pieces;
    if (!IsUtf8(text)) {
        return pieces;
    }
    for (size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',')) {
        pieces.emplace_back(text.substr(0, comma));
        text.remove_prefix(comma + 1);
    }
    pieces.emplace_back(text);
    return pieces;
}

// Whether every comma is a character of its own: Foundation takes one with an accent on it for another character.
bool HasPlainCommas(std::string_view text) {
    for (size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',', comma + 1)) {
        if (comma + 1 < text.size() && static_cast<unsigned char>(text[comma + 1]) >= 0x80) {
            return false;
        }
    }
    return true;
}

void UseGamingPermissions(std::vector<std::string>& permissions) {
    std::erase(permissions, "public_profile");
    for (const char* const permission : {"gaming_profile", "gaming_user_picture"}) {
        if (std::ranges::find(permissions, permission) == permissions.end()) {
            permissions.emplace_back(permission);
        }
    }
}

void RequireOneResult(const std::string& seqID, int32_t methodID) {
    const std::vector<Delivered> results = DeliveredResults();
    Require(results.size() == 1, "there is one result");
    Require(results[0].seqID == UpToNul(seqID), "the result has the sequence ID of the request", results[0].seqID);
    Require(results[0].methodID == methodID, "the result has the method ID of the request");
    const bool isSuccess = results[0].retCode == RetCode::kSuccess;
    Require(results[0].observerID == (isSuccess ? ObserverID::kLoginPlugin : ObserverID::kLogin),
            "the result goes to the observer of its kind");
    if (isSuccess) {
        const JsonDocument info = RequireJsonObject(results[0].json);
        Require(info.root().Find("access_token") != nullptr, "the result of a success has a token");
    }
}

} // namespace
} // namespace Tarvik::Vorn::Fuzz

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace Tarvik::Vorn;
    using namespace Tarvik::Vorn::Fuzz;
    FuzzedDataProvider bytes(data, size);
    const PluginSession session;
    const bool isNew = bytes.ConsumeBool();
    [FBSDKSettings setSDKVersion:isNew ? @"6.5.0" : @"18.1.0"];
    const bool isGame = bytes.ConsumeBool();
    const bool isConfigured = bytes.ConsumeBool();
    if (isGame && isConfigured) {
        SetConfigValue("FACEBOOK_LOGIN_MODE", "Game");
    }
    VornLoginParams params;
    params.methodID = bytes.ConsumeIntegral<int32_t>();
    params.permissions = TakeText(bytes, kLongestPermissions);
    params.seqID = TakeText(bytes);
    params.extraJson = TakeText(bytes);
    params.subChannel = isGame && !isConfigured ? "Game" : "App";
    [session.login() login:params];

    std::vector<std::string> expected = PiecesOf(UpToNul(params.permissions));
    if (isGame && isNew) {
        UseGamingPermissions(expected);
    }
    const std::vector<Host::LoginRequest> requests = [FBSDKLoginManager loginRequests];
    Require(requests.size() == 1, "Facebook is asked once");
    Require(requests[0].permissions == expected || !HasPlainCommas(params.permissions),
            "Facebook is asked for the permissions of the request");

    while (OpenThings() > 0) {
        AnswerSomething(bytes);
    }
    PluginSession::Settle();
    RequireOneResult(params.seqID, params.methodID);
    return 0;
}
