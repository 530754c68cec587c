#include "Scenario.h"

#include "FriendScenario.h"
#include "StepReader.h"

#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

std::pair<RecordType, unsigned> RecordAndObserver(StepReader& reader, const JsonValue& value) {
    if (!reader.Known(value, {"record", "observer"})) {
        return {};
    }
    const auto record = reader.Choice<RecordType>(value, "record",
                                                  {{"InnerBaseRet", RecordType::kBase},
                                                   {"InnerFriendRet", RecordType::kFriend},
                                                   {"InnerLoginRet", RecordType::kLogin},
                                                   {"InnerLoginPluginRet", RecordType::kLoginPlugin}});
    return {record, reader.Observer(value, "observer")};
}

// What the game's own method answers.
bool GameAnswer(StepReader& reader, const JsonValue& object) {
    return reader.OptionalChoice(object, "game", {{"YES", true}, {"NO", false}}, true);
}

Step MakeNote(StepReader& reader, const JsonValue& value) {
    NoteStep step;
    if (reader.Check(reader.document().Expect(value, JsonKind::kString, "\"note\"", reader.error()))) {
        step.text = *value.AsString();
    }
    return step;
}

Step MakeConfigure(StepReader& reader, const JsonValue& value) {
    ConfigureStep step;
    if (!reader.Check(reader.document().Expect(value, JsonKind::kObject, "\"configure\"", reader.error())) ||
        !reader.Check(reader.document().ExpectUniqueKeys(value, reader.error()))) {
        return step;
    }
    for (const JsonMember& member : *value.AsObject()) {
        if (reader.Check(
                reader.document().Expect(member.value, JsonKind::kString, "\"" + member.key + "\"", reader.error()))) {
            step.values[member.key] = *member.value.AsString();
        }
        if (reader.Failed()) {
            break;
        }
    }
    return step;
}

Step MakeSDKVersion(StepReader& reader, const JsonValue& value) {
    SDKVersionStep step;
    if (!value.IsNull() &&
        reader.Check(reader.document().Expect(value, JsonKind::kString, "\"sdk-version\"", reader.error()))) {
        step.version = *value.AsString();
    }
    return step;
}

Step MakeObserve(StepReader& reader, const JsonValue& value) {
    const auto [record, observerID] = RecordAndObserver(reader, value);
    return ObserveStep{record, observerID};
}

Step MakeRemoveObserver(StepReader& reader, const JsonValue& value) {
    const auto [record, observerID] = RecordAndObserver(reader, value);
    return RemoveObserverStep{record, observerID};
}

Step MakeLogin(StepReader& reader, const JsonValue& value) {
    LoginStep step;
    if (reader.Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson", "permissions"})) {
        reader.ReadBaseParams(value, step.params);
        step.params.permissions = reader.Text(value, "permissions");
    }
    return step;
}

Step MakeLogout(StepReader& reader, const JsonValue& value) {
    LogoutStep step;
    if (reader.Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson"})) {
        reader.ReadBaseParams(value, step.params);
    }
    return step;
}

Step MakeAnswerLogin(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerLoginStep::Outcome;
    AnswerLoginStep step;
    if (!reader.Known(value, {"outcome", "token", "graphDomain", "message", "domain", "code", "thread"})) {
        return step;
    }
    step.outcome = reader.Choice<Outcome>(value, "outcome",
                                          {{"success", Outcome::kSuccess},
                                           {"limited", Outcome::kLimited},
                                           {"cancelled", Outcome::kCancelled},
                                           {"nothing-granted", Outcome::kNothingGranted},
                                           {"browser-not-opened", Outcome::kBrowserNotOpened},
                                           {"error-message", Outcome::kErrorMessage},
                                           {"error", Outcome::kError}});
    step.background = reader.Background(value);
    step.graphDomain = reader.OptionalText(value, "graphDomain");
    if (step.outcome == Outcome::kSuccess) {
        step.token = reader.Text(value, "token");
    }
    if (step.outcome == Outcome::kErrorMessage || step.outcome == Outcome::kError) {
        step.message = reader.Text(value, "message");
    }
    if (step.outcome == Outcome::kError) {
        step.domain = reader.Text(value, "domain");
        step.code =
            reader.Integer(value, "code", std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
    }
    return step;
}

Step MakeCommit(StepReader& reader, const JsonValue& value) {
    CommitStep step;
    if (reader.Known(value, {"observer", "seqID", "code"})) {
        step.observerID = reader.Observer(value, "observer");
        step.seqID = reader.Text(value, "seqID");
        step.code = static_cast<int>(reader.Int32(value, "code"));
    }
    return step;
}

Step MakeCollect(StepReader& reader, const JsonValue& value) {
    reader.Known(value, {});
    return CollectStep{};
}

Step MakeLaunch(StepReader& reader, const JsonValue& value) {
    LaunchStep step;
    if (reader.Known(value, {"url", "game"})) {
        step.url = reader.OptionalText(value, "url");
        step.answer = GameAnswer(reader, value);
    }
    return step;
}

Step MakeOpenURL(StepReader& reader, const JsonValue& value) {
    OpenURLStep step;
    if (reader.Known(value, {"url", "source", "method", "game"})) {
        step.url = reader.Text(value, "url");
        step.source = reader.OptionalText(value, "source");
        step.withSource = reader.OptionalChoice(value, "method", {{"options", false}, {"source", true}}, false);
        step.answer = GameAnswer(reader, value);
    }
    return step;
}

Step MakeActivate(StepReader& reader, const JsonValue& value) {
    reader.Known(value, {});
    return ActivateStep{};
}

Step MakeInitStat(StepReader& reader, const JsonValue& value) {
    reader.Known(value, {});
    return InitStatStep{};
}

// A parameter of an event: any JSON value but a list or an object.
void AddParameter(StepReader& reader, const JsonMember& member, ReportStep& step) {
    const JsonValue& value = member.value;
    if (const std::string* const text = value.AsString()) {
        step.params[member.key] = *text;
    } else if (const std::optional<bool> flag = value.AsBool()) {
        step.params[member.key] = *flag;
    } else if (const std::optional<int64_t> integer = value.AsInt64()) {
        step.params[member.key] = *integer;
    } else if (const std::optional<double> number = value.AsDouble()) {
        step.params[member.key] = *number;
    } else if (value.IsNull()) {
        step.params[member.key] = nullptr;
    } else {
        reader.Fail(value, "the parameter \"" + member.key + "\" is " + NameOf(value.kind()),
                    "use a text, a number, true, false or null");
    }
}

Step MakeReport(StepReader& reader, const JsonValue& value) {
    ReportStep step;
    if (!reader.Known(value, {"event", "params", "realtime", "seqID", "extra"})) {
        return step;
    }
    step.event = reader.Text(value, "event");
    step.seqID = reader.Text(value, "seqID");
    step.extra = reader.OptionalText(value, "extra");
    step.isRealtime = reader.OptionalBool(value, "realtime", false);
    const JsonValue* params = nullptr;
    if (!reader.Failed() &&
        reader.Check(reader.document().OptionalMember(value, "params", JsonKind::kObject, params, reader.error())) &&
        params != nullptr && reader.Check(reader.document().ExpectUniqueKeys(*params, reader.error()))) {
        step.hasParams = true;
        for (const JsonMember& member : *params->AsObject()) {
            AddParameter(reader, member, step);
        }
    }
    return step;
}

using Maker = Step (*)(StepReader& reader, const JsonValue& value);

constexpr std::array<std::pair<std::string_view, Maker>, 32> kMakers{{
    {"note", &MakeNote},
    {"configure", &MakeConfigure},
    {"sdk-version", &MakeSDKVersion},
    {"observe", &MakeObserve},
    {"remove-observer", &MakeRemoveObserver},
    {"login", &MakeLogin},
    {"answer-login", &MakeAnswerLogin},
    {"logout", &MakeLogout},
    {"commit", &MakeCommit},
    {"collect", &MakeCollect},
    {"launch", &MakeLaunch},
    {"open-url", &MakeOpenURL},
    {"activate", &MakeActivate},
    {"init-stat", &MakeInitStat},
    {"report", &MakeReport},
    {"player", &MakePlayer},
    {"profile", &MakeProfile},
    {"apps", &MakeApps},
    {"queries-schemes", &MakeQueriesSchemes},
    {"photo-permission", &MakePhotoPermission},
    {"answer-photo-prompt", &MakeAnswerPhotoPrompt},
    {"send-message", &MakeSendMessage},
    {"share", &MakeShare},
    {"add-friend", &MakeAddFriend},
    {"query-friends", &MakeQueryFriends},
    {"answer-friend-finder", &MakeAnswerFriendFinder},
    {"answer-game-request", &MakeAnswerGameRequest},
    {"answer-share", &MakeAnswerShare},
    {"finish-saving", &MakeFinishSaving},
    {"answer-image-upload", &MakeAnswerImageUpload},
    {"upload-progress", &MakeUploadProgress},
    {"answer-video-upload", &MakeAnswerVideoUpload},
}};

void AddStep(StepReader& reader, const JsonValue& step, std::vector<Step>& steps) {
    const JsonDocument& document = reader.document();
    if (reader.Failed() || !reader.Check(document.Expect(step, JsonKind::kObject, "a step", reader.error()))) {
        return;
    }
    const JsonValue::Object& members = *step.AsObject();
    if (members.size() != 1) {
        reader.Fail(step, "a step has " + std::to_string(members.size()) + " members",
                    "write one object per step with the step's name as its only key");
        return;
    }
    const JsonMember& member = members.front();
    std::string names;
    for (const auto& [name, maker] : kMakers) {
        if (member.key == name) {
            steps.push_back(maker(reader, member.value));
            return;
        }
        names += (names.empty() ? "" : ", ") + std::string(name);
    }
    reader.error() = document.ErrorAt(member.keyLocation, "unknown step \"" + member.key + "\"", "use one of " + names);
    reader.Check(false);
}

} // namespace

std::optional<Scenario> LoadScenario(const std::string& path, LocatedError& error) {
    const std::optional<JsonDocument> document = JsonDocument::Load(path, error);
    if (!document) {
        return std::nullopt;
    }
    StepReader reader(*document, error);
    const JsonValue& root = document->root();
    Scenario scenario;
    if (reader.Check(document->Expect(root, JsonKind::kObject, "the scenario", error)) &&
        reader.Check(document->ExpectKnownKeys(root, {"title", "steps"}, error))) {
        scenario.title = reader.Text(root, "title");
        if (const JsonValue* const steps = reader.Member(root, "steps", JsonKind::kArray)) {
            for (const JsonValue& step : *steps->AsArray()) {
                AddStep(reader, step, scenario.steps);
            }
        }
    }
    return reader.Failed() ? std::nullopt : std::optional(std::move(scenario));
}

} // namespace Tarvik::Vorn::Simulator
