// Everything but shares: login, events, hooks, the friend plugin's front, invitations.

#include "Model.h"

namespace Tarvik::Vorn::Soak {
namespace {

std::string ListText(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "\"" : ",\"") + text + "\"";
    }
    return "[" + list + "]";
}

} // namespace

void Model::Start(const Shared& request) {
    switch (request->kind) {
    case RequestKind::kLogin:
        return LogIn(request);
    case RequestKind::kLogout:
        return LogOut(request);
    case RequestKind::kSendMessage:
    case RequestKind::kShare:
        Park(*request);
        return Route(request);
    case RequestKind::kAddFriend:
        return AddFriend(request);
    case RequestKind::kQueryFriends:
        return QueryFriends(request);
    default:
        break;
    }
    fates.Settle(request->number, Fate::kNoResult);
    switch (request->kind) {
    case RequestKind::kReportEvent:
        return ReportEvent(request);
    case RequestKind::kLaunch:
        return Launch();
    case RequestKind::kOpenURL:
        return Call("FBSDKApplicationDelegate", "application:openURL:options:");
    case RequestKind::kOpenURLFromApp:
        return Call("FBSDKApplicationDelegate", "application:openURL:sourceApplication:annotation:");
    case RequestKind::kActivate:
        if (mIsRegistered) {
            Call("FBSDKAppEvents", "activateApp");
        }
        return;
    default:
        return;
    }
}

#pragma mark - Login

void Model::LogIn(const Shared& request) {
    const bool isGaming = (request->subChannel == "Game" || world.isGameConfigured) && world.supportsGaming;
    Call("FBSDKLoginManager", "logOut");
    world.hasToken = false;
    world.domain = Domain::kNone;
    const PermissionSample& permissions = request->permissions;
    Call("FBSDKLoginManager", "logInWithPermissions:fromViewController:handler:",
         ListText(isGaming ? permissions.inGaming : permissions.asked) + ", nil, block");
    if (!permissions.isAccepted) {
        return LoginFailed(request, 2, std::nullopt);
    }
    if (!world.isSchemeRegistered) {
        Raise();
    }
    std::vector<Open>& showing = mOpen[static_cast<size_t>(Waiting::kLogin)];
    for (const Open& replaced : showing) {
        fates.Settle(replaced.request->number, Fate::kReplaced);
    }
    showing.clear();
    Wait(Waiting::kLogin, request, [this, request](const Answer& answer) { EndLogin(request, answer); });
}

void Model::EndLogin(const Shared& request, const Answer& answer) {
    if (answer.ending == Ending::kError) {
        return LoginFailed(request, answer.code, answer.text);
    }
    if (answer.ending == Ending::kCancel) {
        Outcome outcome = Coded(2);
        outcome.record = RecordKind::kLogin;
        outcome.observerID = 101;
        outcome.seqID = request->seqID.text;
        outcome.methodID = request->methodID;
        outcome.extraJson = "Facebook 4";
        return Commit(request, outcome);
    }
    std::string token;
    if (answer.ending == Ending::kSuccess) {
        if (world.hasToken && world.user != "u") {
            return LoginFailed(request, 304, std::nullopt); // Somebody else is logged in.
        }
        token = "T" + std::to_string(answer.code);
        world.hasToken = true;
        world.user = "u";
        world.domain = answer.code % 2 == 0 ? Domain::kNone : Domain::kGaming;
    }
    Outcome outcome;
    outcome.record = RecordKind::kLoginPlugin;
    outcome.observerID = 109;
    outcome.seqID = request->seqID.text;
    outcome.methodID = request->methodID;
    outcome.thirdText = R"({"access_token":")" + token + R"("})";
    outcome.extraJson = "Facebook 4";
    Commit(request, outcome);
}

void Model::LoginFailed(const Shared& request, int code, std::optional<std::string> text) {
    Outcome outcome = Explained(9999, code, std::move(text));
    outcome.record = RecordKind::kLogin;
    outcome.observerID = 101;
    outcome.seqID = request->seqID.text;
    outcome.methodID = request->methodID;
    outcome.extraJson = "Facebook 4";
    Commit(request, outcome);
}

void Model::LogOut(const Shared& request) {
    Call("FBSDKLoginManager", "logOut");
    world.hasToken = false;
    world.domain = Domain::kNone;
    Outcome outcome = Coded(0);
    outcome.observerID = 108;
    outcome.seqID = request->seqID.text;
    Commit(request, outcome);
}

#pragma mark - Events and hooks

void Model::ReportEvent(const Shared& request) {
    if (!request->eventName.empty()) {
        Call("FBSDKAppEvents", request->hasEventParameters ? "logEvent:parameters:" : "logEvent:");
    }
}

void Model::Launch() {
    Call("FBSDKApplicationDelegate", "application:didFinishLaunchingWithOptions:");
    Call("FBSDKSettings", "setAppID:");
    Call("FBSDKSettings", "setDisplayName:");
    Call("FBSDKAppEvents", "activateApp");
    mIsRegistered = true;
}

#pragma mark - The friend plugin's front

void Model::Route(const Shared& request) {
    const bool isLink = request->type == 10001;
    if (request->kind == RequestKind::kSendMessage) {
        if (isLink) {
            return Pipeline(request);
        }
        if (request->type == 10003) {
            return Invite(request);
        }
        return CommitOwn(request, Explained(7, 7, "not support the sendMessage type"));
    }
    if (isLink || request->type == 10002 || request->type == 10005) {
        return Pipeline(request);
    }
    CommitOwn(request, Explained(7, 7, "not support the share type"));
}

void Model::AddFriend(const Shared& request) {
    if (!IsGaming()) {
        const bool wantsGaming = request->subChannel == "Game" || world.isGameConfigured;
        mParked.observerID = request->observerID;
        return CommitOwn(request, Coded(wantsGaming ? 10 : 7));
    }
    Call("FBSDKFriendFinderDialog", "launchFriendFinderDialogWithCompletionHandler:");
    Wait(Waiting::kFriendFinder, request, [this, request](const Answer& answer) {
        mParked.observerID = request->observerID;
        switch (answer.ending) {
        case Ending::kSuccess:
        case Ending::kOdd:
            return CommitParked(request, Coded(0));
        case Ending::kCancel:
            return CommitParked(request, Coded(2));
        case Ending::kError:
            return CommitParked(request, Explained(9999, answer.code, answer.text));
        }
    });
}

void Model::QueryFriends(const Shared& request) {
    Outcome outcome = Coded(7);
    outcome.record = RecordKind::kFriend;
    outcome.observerID = 202;
    outcome.seqID = request->seqID.text;
    outcome.methodID = request->methodID;
    Commit(request, outcome);
}

#pragma mark - Invitations

void Model::Invite(const Shared& request) {
    if (request->title.empty() || request->desc.empty()) {
        return CommitOwn(request, Explained(11, 11, "title or desc in reqInfo is empty"));
    }
    if (request->extra.isBatch && !request->extra.hasUsers) {
        return CommitOwn(request, Explained(11, 11, "user list is not a array or is empty"));
    }
    Call("FBSDKGameRequestDialog", "showWithContent:delegate:");
    if (!world.canShowGameRequests) {
        return fates.Settle(request->number, Fate::kNotOpened);
    }
    Wait(Waiting::kGameRequest, request, [this, request](const Answer& answer) { EndGameRequest(request, answer); });
}

void Model::EndGameRequest(const Shared& request, const Answer& answer) {
    switch (answer.ending) {
    case Ending::kSuccess: {
        Outcome outcome = Coded(0);
        if (answer.code % 2 == 1) {
            outcome.extraJson = R"({"RequestRecipients":["1",")" + std::to_string(answer.code) + R"("]})";
        }
        return CommitParked(request, outcome);
    }
    case Ending::kCancel:
        return CommitParked(request, Coded(2));
    case Ending::kError:
        return CommitParked(request, Explained(9999, answer.code, std::nullopt));
    case Ending::kOdd:
        return fates.Settle(request->number, Fate::kDropped);
    }
}

} // namespace Tarvik::Vorn::Soak
