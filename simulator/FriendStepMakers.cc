#include "FriendScenario.h"

namespace Tarvik::Vorn::Simulator {
namespace {

FriendRequest ReadRequest(StepReader& reader, const JsonValue& value) {
    FriendRequest request;
    if (!reader.Known(value, {"methodID", "seqID", "observer", "type", "channel", "subChannel", "user", "title", "desc",
                              "imagePath", "thumbPath", "mediaPath", "link", "extraJson"})) {
        return request;
    }
    request.params.methodID = reader.Int32(value, "methodID");
    request.params.seqID = reader.Text(value, "seqID");
    request.params.channel = reader.OptionalText(value, "channel");
    request.params.subChannel = reader.OptionalText(value, "subChannel");
    request.observerID = reader.Observer(value, "observer");
    request.info.type = reader.Int32(value, "type");
    request.info.user = reader.OptionalText(value, "user");
    request.info.title = reader.OptionalText(value, "title");
    request.info.desc = reader.OptionalText(value, "desc");
    request.info.imagePath = reader.OptionalText(value, "imagePath");
    request.info.thumbPath = reader.OptionalText(value, "thumbPath");
    request.info.mediaPath = reader.OptionalText(value, "mediaPath");
    request.info.link = reader.OptionalText(value, "link");
    request.info.extraJson = reader.OptionalText(value, "extraJson");
    return request;
}

ReportedError ReadError(StepReader& reader, const JsonValue& value) {
    return {reader.Text(value, "domain"), reader.Int64(value, "code"), reader.Text(value, "message")};
}

// What every answer may have.
template <class AnswerStep>
void ReadErrorAndThread(StepReader& reader, const JsonValue& value, AnswerStep& step) {
    if (step.outcome == AnswerStep::Outcome::kError) {
        step.error = ReadError(reader, value);
    }
    step.background = reader.Background(value);
}

PhotoPermission ReadPermission(StepReader& reader, const JsonValue& value, std::string_view name) {
    return reader.Chosen<PhotoPermission>(value, name,
                                          {{"not-asked", PhotoPermission::kNotAsked},
                                           {"restricted", PhotoPermission::kRestricted},
                                           {"denied", PhotoPermission::kDenied},
                                           {"authorized", PhotoPermission::kAuthorized},
                                           {"limited", PhotoPermission::kLimited}});
}

} // namespace

Step MakePlayer(StepReader& reader, const JsonValue& value) {
    return PlayerStep{reader.Chosen<PlayerLogin>(
        value, "player",
        {{"nobody", PlayerLogin::kNobody}, {"facebook", PlayerLogin::kFacebook}, {"gaming", PlayerLogin::kGaming}})};
}

Step MakeProfile(StepReader& reader, const JsonValue& value) {
    return ProfileStep{reader.Chosen<SdkProfile>(value, "profile",
                                                 {{"15.0", SdkProfile::k15_0},
                                                  {"17.0", SdkProfile::k17_0},
                                                  {"18.0", SdkProfile::k18_0},
                                                  {"18.1", SdkProfile::k18_1},
                                                  {"as-documented", SdkProfile::kAsDocumented}})};
}

Step MakeApps(StepReader& reader, const JsonValue& value) {
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

Step MakeQueriesSchemes(StepReader& reader, const JsonValue& value) {
    return QueriesSchemesStep{reader.Texts(value, "queries-schemes")};
}

Step MakePhotoPermission(StepReader& reader, const JsonValue& value) {
    return PhotoPermissionStep{ReadPermission(reader, value, "photo-permission")};
}

Step MakeAnswerPhotoPrompt(StepReader& reader, const JsonValue& value) {
    AnswerPhotoPromptStep step;
    if (reader.Known(value, {"permission", "thread"})) {
        if (const JsonValue* const permission = reader.Member(value, "permission", JsonKind::kString)) {
            step.permission = ReadPermission(reader, *permission, "permission");
        }
        step.background = reader.Background(value);
    }
    return step;
}

Step MakeSendMessage(StepReader& reader, const JsonValue& value) {
    return SendMessageStep{ReadRequest(reader, value)};
}

Step MakeShare(StepReader& reader, const JsonValue& value) {
    return ShareStep{ReadRequest(reader, value)};
}

Step MakeAddFriend(StepReader& reader, const JsonValue& value) {
    AddFriendStep step;
    if (reader.Known(value, {"methodID", "seqID", "observer", "channel", "subChannel", "extraJson"})) {
        reader.ReadBaseParams(value, step.params);
        step.observerID = reader.Observer(value, "observer");
    }
    return step;
}

Step MakeQueryFriends(StepReader& reader, const JsonValue& value) {
    QueryFriendsStep step;
    if (reader.Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson"})) {
        reader.ReadBaseParams(value, step.params);
    }
    return step;
}

Step MakeAnswerFriendFinder(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerFriendFinderStep::Outcome;
    AnswerFriendFinderStep step;
    if (reader.Known(value, {"outcome", "domain", "code", "message", "thread"})) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"returned", Outcome::kReturned},
                                               {"closed", Outcome::kClosed},
                                               {"not-opened", Outcome::kNotOpened},
                                               {"error", Outcome::kError}});
        ReadErrorAndThread(reader, value, step);
    }
    return step;
}

Step MakeAnswerGameRequest(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerGameRequestStep::Outcome;
    AnswerGameRequestStep step;
    if (reader.Known(value, {"outcome", "request", "recipients", "domain", "code", "message", "dialog", "thread"})) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"sent", Outcome::kSent},
                                               {"cancel-button", Outcome::kCancelButton},
                                               {"closed", Outcome::kClosed},
                                               {"page-error", Outcome::kPageError},
                                               {"without-results", Outcome::kWithoutResults},
                                               {"error", Outcome::kError}});
        if (step.outcome == Outcome::kSent) {
            step.requestID = reader.Text(value, "request");
            step.recipients = reader.OptionalTexts(value, "recipients");
        }
        step.dialog = reader.OptionalIndex(value, "dialog");
        ReadErrorAndThread(reader, value, step);
    }
    return step;
}

Step MakeAnswerShare(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerShareStep::Outcome;
    AnswerShareStep step;
    if (reader.Known(value, {"outcome", "postID", "domain", "code", "message", "dialog", "thread"})) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"completed", Outcome::kCompleted},
                                               {"cancelled", Outcome::kCancelled},
                                               {"returned", Outcome::kReturned},
                                               {"app-error", Outcome::kAppError},
                                               {"not-opened", Outcome::kNotOpened},
                                               {"error", Outcome::kError}});
        step.postID = reader.OptionalText(value, "postID");
        step.dialog = reader.OptionalIndex(value, "dialog");
        ReadErrorAndThread(reader, value, step);
    }
    return step;
}

Step MakeFinishSaving(StepReader& reader, const JsonValue& value) {
    using Outcome = FinishSavingStep::Outcome;
    FinishSavingStep step;
    if (reader.Known(value, {"outcome", "asset", "domain", "code", "message", "thread"})) {
        step.outcome =
            reader.Choice<Outcome>(value, "outcome", {{"saved", Outcome::kSaved}, {"error", Outcome::kError}});
        step.asset = reader.OptionalText(value, "asset");
        ReadErrorAndThread(reader, value, step);
    }
    return step;
}

Step MakeAnswerImageUpload(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerImageUploadStep::Outcome;
    AnswerImageUploadStep step;
    if (reader.Known(value, {"outcome", "photoID", "domain", "code", "message", "upload", "thread"})) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"uploaded", Outcome::kUploaded},
                                               {"dialog-not-opened", Outcome::kDialogNotOpened},
                                               {"error", Outcome::kError}});
        if (step.outcome != Outcome::kError) {
            step.photoID = reader.Text(value, "photoID");
        }
        step.upload = reader.OptionalIndex(value, "upload");
        ReadErrorAndThread(reader, value, step);
    }
    return step;
}

Step MakeUploadProgress(StepReader& reader, const JsonValue& value) {
    UploadProgressStep step;
    if (reader.Known(value, {"sent", "expected", "upload", "thread"})) {
        step.sent = reader.Int64(value, "sent");
        step.expected = reader.Int64(value, "expected");
        step.upload = reader.OptionalIndex(value, "upload");
        step.background = reader.Background(value);
    }
    return step;
}

Step MakeAnswerVideoUpload(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerVideoUploadStep::Outcome;
    AnswerVideoUploadStep step;
    if (reader.Known(value, {"outcome", "videoID", "domain", "code", "message", "upload", "thread"})) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"uploaded", Outcome::kUploaded},
                                               {"server-refused", Outcome::kServerRefused},
                                               {"malformed", Outcome::kMalformed},
                                               {"error", Outcome::kError}});
        if (step.outcome == Outcome::kUploaded) {
            step.videoID = reader.Text(value, "videoID");
        }
        step.upload = reader.OptionalIndex(value, "upload");
        ReadErrorAndThread(reader, value, step);
    }
    return step;
}

} // namespace Tarvik::Vorn::Simulator
