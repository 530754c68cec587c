#include "StepMakers.h"

#include "PlatformFaults.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <string>
#include <system_error>
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

Action MakeNote(StepReader& reader, const JsonValue& value) {
    NoteStep step;
    if (reader.Check(reader.document().Expect(value, JsonKind::kString, "\"note\"", reader.error()))) {
        step.text = *value.AsString();
    }
    return step;
}

Action MakeConfigure(StepReader& reader, const JsonValue& value) {
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

Action MakeSDKVersion(StepReader& reader, const JsonValue& value) {
    SDKVersionStep step;
    if (!value.IsNull() &&
        reader.Check(reader.document().Expect(value, JsonKind::kString, "\"sdk-version\"", reader.error()))) {
        step.version = *value.AsString();
    }
    return step;
}

Action MakeObserve(StepReader& reader, const JsonValue& value) {
    const auto [record, observerID] = RecordAndObserver(reader, value);
    return ObserveStep{record, observerID};
}

Action MakeRemoveObserver(StepReader& reader, const JsonValue& value) {
    const auto [record, observerID] = RecordAndObserver(reader, value);
    return RemoveObserverStep{record, observerID};
}

Action MakeLogin(StepReader& reader, const JsonValue& value) {
    LoginStep step;
    if (reader.Known(value,
                     {"methodID", "seqID", "channel", "subChannel", "extraJson", "permissions", "thread", "answers"})) {
        reader.ReadBaseParams(value, step.params);
        step.params.permissions = reader.Text(value, "permissions");
        step.background = reader.Background(value);
        step.answers = ReadPlannedAnswers(reader, value);
    }
    return step;
}

Action MakeLogout(StepReader& reader, const JsonValue& value) {
    LogoutStep step;
    if (reader.Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson", "thread"})) {
        reader.ReadBaseParams(value, step.params);
        step.background = reader.Background(value);
    }
    return step;
}

Action MakeCommit(StepReader& reader, const JsonValue& value) {
    CommitStep step;
    if (reader.Known(value, {"observer", "seqID", "code"})) {
        step.observerID = reader.Observer(value, "observer");
        step.seqID = reader.Text(value, "seqID");
        step.code = static_cast<int>(reader.Int32(value, "code"));
    }
    return step;
}

Action MakeCollect(StepReader& reader, const JsonValue& value) {
    reader.Known(value, {});
    return CollectStep{};
}

Action MakeLaunch(StepReader& reader, const JsonValue& value) {
    LaunchStep step;
    if (reader.Known(value, {"url", "game"})) {
        step.url = reader.OptionalText(value, "url");
        step.answer = GameAnswer(reader, value);
    }
    return step;
}

Action MakeOpenURL(StepReader& reader, const JsonValue& value) {
    OpenURLStep step;
    if (reader.Known(value, {"url", "source", "method", "to", "game"})) {
        step.url = reader.Text(value, "url");
        step.source = reader.OptionalText(value, "source");
        step.withSource = reader.OptionalChoice(value, "method", {{"options", false}, {"source", true}}, false);
        step.toScene = reader.OptionalChoice(value, "to", {{"app", false}, {"scene", true}}, false);
        step.answer = GameAnswer(reader, value);
    }
    return step;
}

Action MakeActivate(StepReader& reader, const JsonValue& value) {
    reader.Known(value, {});
    return ActivateStep{};
}

Action MakeInitStat(StepReader& reader, const JsonValue& value) {
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

Action MakeReport(StepReader& reader, const JsonValue& value) {
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

constexpr uintmax_t kInfoPlistLimit = uintmax_t{16} << 20U; // Bytes.

// An object is the Info.plist itself, a text the path of one.
Action MakeInfoPlist(StepReader& reader, const JsonValue& value) {
    InfoPlistStep step;
    if (const std::string* const path = value.AsString()) {
        const std::filesystem::path folder = std::filesystem::path(reader.document().file()).parent_path();
        step.path = std::filesystem::absolute(folder / *path).string();
        std::error_code unknown;
        if (!std::filesystem::is_regular_file(step.path, unknown)) {
            reader.Fail(value, "there is no file " + step.path, "name a property list; paths begin beside the world");
        } else if (std::filesystem::file_size(step.path, unknown) > kInfoPlistLimit) {
            reader.Fail(value, step.path + " is greater than 16 MiB", "name the property list of an app");
        }
    } else if (reader.Check(reader.document().Expect(value, JsonKind::kObject, "\"info-plist\"", reader.error())) &&
               reader.Check(reader.document().ExpectUniqueKeys(value, reader.error()))) {
        step.entries = value;
    }
    return step;
}

Action MakeWait(StepReader& reader, const JsonValue& value) {
    return WaitStep{reader.ReadDuration(value, "wait")};
}

// "FBSDKShareDialog show": a class and a selector.
Action MakeThrow(StepReader& reader, const JsonValue& value) {
    ThrowStep step;
    if (!reader.Known(value, {"call", "name", "reason"})) {
        return step;
    }
    const std::string call = reader.Text(value, "call");
    const size_t blank = call.find(' ');
    step.name = reader.OptionalText(value, "name");
    step.reason = reader.OptionalText(value, "reason");
    if (step.name.empty()) {
        step.name = "NSInternalInconsistencyException";
    }
    if (reader.Failed()) {
        return step;
    }
    step.className = call.substr(0, blank);
    step.selector = blank == std::string::npos ? "" : call.substr(blank + 1);
    std::vector<std::string> calls;
    for (const auto& [className, selector] : Host::RecordedSelectors()) {
        calls.push_back(className + " " + selector);
    }
    if (std::find(calls.begin(), calls.end(), call) == calls.end()) {
        reader.Fail(*reader.Member(value, "call", JsonKind::kString), "unknown call \"" + call + "\"",
                    MeantOrOneOf(call, {calls.begin(), calls.end()}));
    }
    return step;
}

Action MakeFailAllocation(StepReader& reader, const JsonValue& value) {
    FailAllocationStep step;
    if (reader.Known(value, {"nth"})) {
        step.nth = static_cast<uint64_t>(reader.Integer(value, "nth", 1, std::numeric_limits<int64_t>::max()));
    }
    return step;
}

} // namespace

const std::vector<NamedMaker>& StepMakers() {
    static const std::vector<NamedMaker> makers = [] {
        std::vector<NamedMaker> all{
            {"note", &MakeNote},
            {"info-plist", &MakeInfoPlist, true},
            {"configure", &MakeConfigure, true},
            {"profile", &MakeProfile, true},
            {"sdk-version", &MakeSDKVersion, true},
            {"player", &MakePlayer, true},
            {"tracking", &MakeTracking, true},
            {"view-controller", &MakeViewController, true},
            {"apps", &MakeApps, true},
            {"queries-schemes", &MakeQueriesSchemes, true},
            {"photo-permission", &MakePhotoPermission, true},
            {"observe", &MakeObserve},
            {"remove-observer", &MakeRemoveObserver},
            {"collect", &MakeCollect},
            {"commit", &MakeCommit},
            {"launch", &MakeLaunch},
            {"open-url", &MakeOpenURL},
            {"activate", &MakeActivate},
            {"login", &MakeLogin},
            {"logout", &MakeLogout},
            {"init-stat", &MakeInitStat},
            {"report", &MakeReport},
            {"send-message", &MakeSendMessage},
            {"share", &MakeShare},
            {"add-friend", &MakeAddFriend},
            {"query-friends", &MakeQueryFriends},
            {"wait", &MakeWait},
            {"throw", &MakeThrow},
            {"fail-allocation", &MakeFailAllocation},
        };
        all.insert(all.end(), AnswerMakers().begin(), AnswerMakers().end());
        return all;
    }();
    return makers;
}

} // namespace Tarvik::Vorn::Simulator
