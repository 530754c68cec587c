#include "CoreCalls.h"

#include "FBSDKCoreKit/FBSDKSettings+Control.h"
#include "FBSDKGamingServicesKit/GameRequests.h"
#include "FBSDKLoginKit/FBSDKLoginManager+Control.h"
#include "VornPlugins.h"

namespace Tarvik::Vorn::Test {
namespace {

constexpr int kObserver = 31;

std::string OrNil(const std::optional<std::string>& text) {
    return text.value_or("(nil)");
}

std::string TextOrNil(NSString* text) {
    return text == nil ? "(nil)" : CStr(text);
}

// A text that the SDK keeps as "" when it is nil.
std::string OrEmptyText(const std::string& bytes) {
    return AsNSString(bytes).value_or("");
}

// The whole of a record's text: String keeps its size and ends at the first NUL.
std::string BytesOf(const String& text) {
    return text.toString();
}

#pragma mark - What is logged

std::string Bracketed(const CoreCall& call) {
    return "[ " + UpToNul(call.params.seqID) + " ] ";
}

std::string RequestAsJson(const VornFriendReqInfo& request) {
    const auto member = [](const char* name, const String& text) {
        return std::string(",\"") + name + "\":" + AsJson(BytesOf(text));
    };
    return "{\"type\":" + std::to_string(request.type) + member("title", request.title) + member("desc", request.desc) +
           member("user", request.user) + member("imagePath", request.imagePath) +
           member("thumbPath", request.thumbPath) + member("mediaPath", request.mediaPath) +
           member("link", request.link) + member("extraJson", request.extraJson) + "}";
}

std::string LineOfLogin(const CoreCall& call) {
    return Bracketed(call) + "methodID = 111, login with permissions = " + UpToNul(call.params.permissions) +
           ",  extra = " + UpToNul(call.params.extraJson);
}

std::string LineOfRequest(const CoreCall& call) {
    return Bracketed(call) + "reqInfo : " + RequestAsJson(call.request) + ", observerID : 31";
}

#pragma mark - What is shown

Shown AskedPermissions() {
    const auto requests = [FBSDKLoginManager loginRequests];
    return requests.empty() ? Shown{} : requests.back().permissions;
}

Shown Pieces(const CoreCall& call) {
    const std::optional<std::string> text = AsNSString(call.params.permissions);
    Shown pieces;
    if (!text) {
        return pieces;
    }
    size_t start = 0;
    for (size_t comma = text->find(','); comma != std::string::npos; comma = text->find(',', start)) {
        pieces.push_back(text->substr(start, comma - start));
        start = comma + 1;
    }
    pieces.push_back(text->substr(start));
    return pieces;
}

Shown GamingPieces(const CoreCall& call) {
    Shown pieces = Pieces(call);
    pieces.insert(pieces.end(), {"gaming_profile", "gaming_user_picture"});
    return pieces;
}

Shown ShownInvitation() {
    const auto requests = Host::GameRequests();
    return requests.empty() ? Shown{} : Shown{requests.back().title, requests.back().message};
}

Shown InvitationOf(const CoreCall& call) {
    return {OrEmptyText(BytesOf(call.request.title)), OrEmptyText(BytesOf(call.request.desc))};
}

std::string URLOf(const std::string& bytes) {
    const std::optional<std::string> text = AsNSString(bytes);
    NSURL* const url = text ? [NSURL URLWithString:[NSString stringWithUTF8String:text->c_str()]] : nil;
    return TextOrNil([url absoluteString]);
}

Shown ShownURL() {
    const auto dialogs = Host::ShownDialogs();
    if (dialogs.empty()) {
        return {};
    }
    id const content = dialogs.back().content.get();
    NSURL* const url =
        [content isKindOfClass:[FBSDKShareVideoContent class]] ? [[content video] videoURL] : [content contentURL];
    return {TextOrNil([url absoluteString])};
}

Shown LinkOf(const CoreCall& call) {
    return {URLOf(BytesOf(call.request.link))};
}

Shown MediaOf(const CoreCall& call) {
    return {URLOf(BytesOf(call.request.mediaPath))};
}

Shown ImageCaption() {
    const auto uploads = Host::ImageUploads();
    return uploads.empty() ? Shown{} : Shown{OrNil(uploads.back().caption)};
}

Shown VideoCaption() {
    const auto uploads = Host::VideoUploads();
    return uploads.empty() ? Shown{} : Shown{OrNil(uploads.back().caption)};
}

Shown TitleOf(const CoreCall& call) {
    return {OrNil(AsNSString(BytesOf(call.request.title)))};
}

Shown Nothing() {
    return {};
}

Shown NothingOf(const CoreCall& /*call*/) {
    return {};
}

#pragma mark - Under which ID

// The friend plugin keeps the ID as an object between a dialog and its outcome.
std::string ParkedSeqID(const CoreCall& call) {
    return OrEmptyText(call.params.seqID);
}

std::string OwnSeqID(const CoreCall& call) {
    return UpToNul(call.params.seqID);
}

#pragma mark - The calls

id<VornLoginDelegate> LoginPlugin() {
    std::string problem;
    return FindLoginPlugin("Facebook", problem);
}

FriendPlugin FriendsPlugin() {
    std::string problem;
    return static_cast<FriendPlugin>(FindFriendPlugin("Facebook", problem));
}

void CallSendMessage(CoreCall& call) {
    [FriendsPlugin() sendMessage:&call.request params:&call.params observerID:kObserver];
}

void CallShare(CoreCall& call) {
    [FriendsPlugin() share:&call.request params:&call.params observerID:kObserver];
}

void CallAddFriend(CoreCall& call) {
    [FriendsPlugin() addFriend:&call.request params:&call.params observerID:kObserver];
}

void LogInForGaming() {
    Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[ @"public_profile" ]));
    Host::ReplaceCurrentAuthenticationToken(Host::MakeAuthenticationToken(@"id token", @"gaming"));
}

void DoNothing() {}
void FillNothing(VornFriendReqInfo& /*request*/) {}

void FillLink(VornFriendReqInfo& request) {
    request = LinkRequest();
}

void FillInvitation(VornFriendReqInfo& request) {
    request = RequestOf(10003);
    request.title = "Come and play";
    request.desc = "A game for you";
}

Route LoginRoute(const std::string& name, std::function<void()> prepare,
                 std::function<Shown(const CoreCall&)> expected) {
    return {.name = name,
            .isLogin = true,
            .methodID = 111,
            .fill = FillNothing,
            .prepare = std::move(prepare),
            .make = [](CoreCall& call) { [LoginPlugin() login:call.params]; },
            .firstLine = LineOfLogin,
            .shown = AskedPermissions,
            .expected = std::move(expected),
            .resultsSeqID = OwnSeqID};
}

// A call that is answered without Facebook.
Route RefusedRoute(const std::string& name, int methodID, int type, std::function<void(CoreCall&)> make) {
    return {.name = name,
            .takesRequest = true,
            .methodID = methodID,
            .type = type,
            .fill = FillNothing,
            .prepare = DoNothing,
            .make = std::move(make),
            .firstLine = LineOfRequest,
            .shown = Nothing,
            .expected = NothingOf,
            .resultsSeqID = ParkedSeqID};
}

Route FriendRoute(const std::string& name, int methodID, std::function<void(VornFriendReqInfo&)> fill,
                  std::function<Shown()> shown, std::function<Shown(const CoreCall&)> expected) {
    Route route = RefusedRoute(name, methodID, 0, methodID == 212 ? CallSendMessage : CallShare);
    route.fill = std::move(fill);
    route.shown = std::move(shown);
    route.expected = std::move(expected);
    return route;
}

Route InGaming(Route route) {
    route.prepare = LogInForGaming;
    return route;
}

std::vector<Route> LoginRoutes() {
    Route logout = LoginRoute("Logout", DoNothing, NothingOf);
    logout.isLogin = false;
    logout.make = [](CoreCall& call) { [LoginPlugin() logout:&call.params]; };
    logout.firstLine = [](const CoreCall& call) { return Bracketed(call) + "logout facebook success"; };
    logout.shown = Nothing;
    return {LoginRoute("Login", DoNothing, Pieces),
            LoginRoute(
                "LoginForGaming",
                [] {
                    [FBSDKSettings setSDKVersion:@"6.5.0"];
                    SetConfigValue("FACEBOOK_LOGIN_MODE", "Game");
                },
                GamingPieces),
            logout};
}

std::vector<Route> FriendRoutes() {
    Route query = RefusedRoute("QueryFriends", 1, 0,
                               [](CoreCall& call) { [FriendsPlugin() queryFriends:nullptr params:&call.params]; });
    query.takesRequest = false;
    query.firstLine = [](const CoreCall& call) { return Bracketed(call) + "no support"; };
    Route add = RefusedRoute("AddFriend", 1, 0, CallAddFriend);
    add.firstLine = [](const CoreCall& /*call*/) { return "facebook accessToken is nil, please login"; };
    Route finder = InGaming(add);
    finder.name = "AddFriendForGaming";
    finder.firstLine = [](const CoreCall& /*call*/) { return "facebook game player finder successed"; };
    finder.resultsSeqID = [](const CoreCall& /*call*/) { return ""; }; // Adding friends parks no ID.
    return {query, add, finder};
}

} // namespace

const std::vector<Place>& Places() {
    using Text = const std::string&;
    static const std::vector<Place> places{
        {"SeqID", PlaceOf::kParams, [](CoreCall& call, Text text) { call.params.seqID = text; }},
        {"Channel", PlaceOf::kParams, [](CoreCall& call, Text text) { call.params.channel = text; }},
        {"SubChannel", PlaceOf::kParams, [](CoreCall& call, Text text) { call.params.subChannel = text; }},
        {"ExtraOfParams", PlaceOf::kParams, [](CoreCall& call, Text text) { call.params.extraJson = text; }},
        {"Permissions", PlaceOf::kLogin, [](CoreCall& call, Text text) { call.params.permissions = text; }},
        {"User", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.user = text; }},
        {"Title", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.title = text; }},
        {"Desc", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.desc = text; }},
        {"ImagePath", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.imagePath = text; }},
        {"ThumbPath", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.thumbPath = text; }},
        {"MediaPath", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.mediaPath = text; }},
        {"Link", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.link = text; }},
        {"ExtraOfRequest", PlaceOf::kRequest, [](CoreCall& call, Text text) { call.request.extraJson = text; }},
    };
    return places;
}

const std::vector<Route>& Routes() {
    static const std::vector<Route> routes = [] {
        std::vector<Route> all = LoginRoutes();
        for (Route& route : FriendRoutes()) {
            all.push_back(std::move(route));
        }
        const auto image = [](VornFriendReqInfo& request) { request = ImageRequest(); };
        const auto video = [](VornFriendReqInfo& request) { request = VideoRequest(); };
        const auto file = [](VornFriendReqInfo& request) { request = VideoFileRequest(); };
        all.push_back(RefusedRoute("SendUnknown", 212, 1, CallSendMessage));
        all.push_back(FriendRoute("SendLink", 212, FillLink, ShownURL, LinkOf));
        all.push_back(FriendRoute("SendInvitation", 212, FillInvitation, ShownInvitation, InvitationOf));
        all.push_back(RefusedRoute("ShareUnknown", 211, 1, CallShare));
        all.push_back(RefusedRoute("ShareByUnknownMethod", 7, 10001, CallShare));
        all.push_back(FriendRoute("ShareLink", 211, FillLink, ShownURL, LinkOf));
        all.push_back(FriendRoute("ShareImage", 211, image, ShownURL, LinkOf));
        all.push_back(FriendRoute("ShareVideo", 211, video, ShownURL, MediaOf));
        all.push_back(FriendRoute("ShareVideoFile", 414, file, Nothing, NothingOf));
        all.push_back(InGaming(FriendRoute("UploadImage", 211, image, ImageCaption, TitleOf)));
        all.push_back(InGaming(FriendRoute("UploadVideo", 414, file, VideoCaption, TitleOf)));
        return all;
    }();
    return routes;
}

} // namespace Tarvik::Vorn::Test
