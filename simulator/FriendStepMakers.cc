#include "StepMakers.h"
#include "VornCodes.h"

namespace Tarvik::Vorn::Simulator {
namespace {

// A request's type: a word, or any number that a core may send.
int32_t ReadType(StepReader& reader, const JsonValue& request) {
    const JsonMember* const type = request.Find("type");
    if (type == nullptr || type->value.AsString() == nullptr) {
        return reader.Int32(request, "type");
    }
    return reader.Choice<int32_t>(request, "type",
                                  {{"link", RequestType::kLink},
                                   {"image", RequestType::kImage},
                                   {"invitation", RequestType::kInvite},
                                   {"video", RequestType::kVideo}});
}

FriendRequest ReadRequest(StepReader& reader, const JsonValue& value) {
    FriendRequest request;
    if (!reader.Known(value, {"methodID", "seqID", "observer", "type", "channel", "subChannel", "user", "title", "desc",
                              "imagePath", "thumbPath", "mediaPath", "link", "extraJson", "thread", "answers"})) {
        return request;
    }
    request.params.methodID = reader.Int32(value, "methodID");
    request.params.seqID = reader.Text(value, "seqID");
    request.params.channel = reader.OptionalText(value, "channel");
    request.params.subChannel = reader.OptionalText(value, "subChannel");
    request.observerID = reader.Observer(value, "observer");
    request.info.type = ReadType(reader, value);
    request.info.user = reader.OptionalText(value, "user");
    request.info.title = reader.OptionalText(value, "title");
    request.info.desc = reader.OptionalText(value, "desc");
    request.info.imagePath = reader.OptionalText(value, "imagePath");
    request.info.thumbPath = reader.OptionalText(value, "thumbPath");
    request.info.mediaPath = reader.OptionalText(value, "mediaPath");
    request.info.link = reader.OptionalText(value, "link");
    request.info.extraJson = reader.OptionalText(value, "extraJson");
    request.background = reader.Background(value);
    request.answers = ReadPlannedAnswers(reader, value);
    return request;
}

} // namespace

PhotoPermission ReadPermission(StepReader& reader, const JsonValue& value, std::string_view name) {
    return reader.Chosen<PhotoPermission>(value, name,
                                          {{"not-asked", PhotoPermission::kNotAsked},
                                           {"restricted", PhotoPermission::kRestricted},
                                           {"denied", PhotoPermission::kDenied},
                                           {"authorized", PhotoPermission::kAuthorized},
                                           {"limited", PhotoPermission::kLimited}});
}

Action MakePlayer(StepReader& reader, const JsonValue& value) {
    PlayerStep step;
    const auto read = [&reader](const JsonValue& login) {
        return reader.Chosen<PlayerLogin>(
            login, "player",
            {{"nobody", PlayerLogin::kNobody}, {"facebook", PlayerLogin::kFacebook}, {"gaming", PlayerLogin::kGaming}});
    };
    if (value.AsObject() == nullptr) {
        step.login = read(value);
    } else if (reader.Known(value, {"login", "token"})) {
        if (const JsonValue* const login = reader.Member(value, "login", JsonKind::kString)) {
            step.login = read(*login);
        }
        step.expired = reader.OptionalChoice(value, "token", {{"valid", false}, {"expired", true}}, false);
    }
    return step;
}

Action MakeTracking(StepReader& reader, const JsonValue& value) {
    return TrackingStep{reader.Chosen<bool>(value, "tracking", {{"allowed", true}, {"denied", false}})};
}

Action MakeViewController(StepReader& reader, const JsonValue& value) {
    return ViewControllerStep{reader.Chosen<bool>(value, "view-controller", {{"found", true}, {"missing", false}})};
}

Action MakeProfile(StepReader& reader, const JsonValue& value) {
    return ProfileStep{reader.Chosen<SdkProfile>(value, "profile",
                                                 {{"15.0", SdkProfile::k15_0},
                                                  {"17.0", SdkProfile::k17_0},
                                                  {"18.0", SdkProfile::k18_0},
                                                  {"18.1", SdkProfile::k18_1},
                                                  {"as-documented", SdkProfile::kAsDocumented}})};
}

Action MakeApps(StepReader& reader, const JsonValue& value) {
    AppsStep step;
    if (reader.Known(value, {"facebook", "messenger"})) {
        if (reader.OptionalMember(value, "facebook", JsonKind::kBool) != nullptr) {
            step.facebook = reader.Bool(value, "facebook");
        }
        if (reader.OptionalMember(value, "messenger", JsonKind::kBool) != nullptr) {
            step.messenger = reader.Bool(value, "messenger");
        }
    }
    return step;
}

Action MakeQueriesSchemes(StepReader& reader, const JsonValue& value) {
    return QueriesSchemesStep{reader.Texts(value, "queries-schemes")};
}

Action MakePhotoPermission(StepReader& reader, const JsonValue& value) {
    return PhotoPermissionStep{ReadPermission(reader, value, "photo-permission")};
}

Action MakeSendMessage(StepReader& reader, const JsonValue& value) {
    return SendMessageStep{ReadRequest(reader, value)};
}

Action MakeShare(StepReader& reader, const JsonValue& value) {
    return ShareStep{ReadRequest(reader, value)};
}

Action MakeAddFriend(StepReader& reader, const JsonValue& value) {
    AddFriendStep step;
    if (reader.Known(value,
                     {"methodID", "seqID", "observer", "channel", "subChannel", "extraJson", "thread", "answers"})) {
        reader.ReadBaseParams(value, step.params);
        step.observerID = reader.Observer(value, "observer");
        step.background = reader.Background(value);
        step.answers = ReadPlannedAnswers(reader, value);
    }
    return step;
}

Action MakeQueryFriends(StepReader& reader, const JsonValue& value) {
    QueryFriendsStep step;
    if (reader.Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson", "thread"})) {
        reader.ReadBaseParams(value, step.params);
        step.background = reader.Background(value);
    }
    return step;
}

} // namespace Tarvik::Vorn::Simulator
