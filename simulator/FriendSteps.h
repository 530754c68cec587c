// The steps of a world that concern the friend plugin and what is around it. Plain C++, values.
#pragma once

#include "Answers.h"
#include "VornRecords.h"

#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// ---- Around the plugin

// Who is logged in to Facebook, without the plugin having any part in it.
enum class PlayerLogin { kNobody, kFacebook, kGaming };
struct PlayerStep {
    PlayerLogin login = PlayerLogin::kNobody;
    bool expired = false; // The access token was good once.
};

// Whether the user lets the app track them.
struct TrackingStep {
    bool allowed = true;
};

// Whether Facebook's pages find a view controller to be shown from.
struct ViewControllerStep {
    bool found = true;
};

// Which release of the Facebook SDK the plugin meets.
enum class SdkProfile { k15_0, k17_0, k18_0, k18_1, kAsDocumented };
struct ProfileStep {
    SdkProfile profile = SdkProfile::k18_1;
};

// Apps are installed or removed; empty leaves one as it is.
struct AppsStep {
    std::optional<bool> facebook;
    std::optional<bool> messenger;
};

// The Info.plist lists these schemes under LSApplicationQueriesSchemes, and no others.
struct QueriesSchemesStep {
    std::vector<std::string> schemes;
};

struct PhotoPermissionStep {
    PhotoPermission permission = PhotoPermission::kAuthorized;
};

// ---- Requests

// A message or a share.
struct FriendRequest {
    VornBaseParams params;
    VornFriendReqInfo info;
    unsigned observerID = 0;
    bool background = false; // On another thread than the main one.
    std::vector<PlannedAnswer> answers;
};
struct SendMessageStep {
    FriendRequest request;
};
struct ShareStep {
    FriendRequest request;
};
struct AddFriendStep {
    VornBaseParams params;
    unsigned observerID = 0;
    bool background = false;
    std::vector<PlannedAnswer> answers;
};
struct QueryFriendsStep {
    VornBaseParams params;
    bool background = false;
};

} // namespace Tarvik::Vorn::Simulator
