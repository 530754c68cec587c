#include "Scenario.h"

#include "VornJsonDocument.h"

#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

// Reads one step after the other. The first error sticks: from then on every function does nothing, and Failed() is true.
class Reader {
public:
    Reader(const JsonDocument& document, LocatedError& error) : mDocument(document), mError(error) {}

    std::optional<Scenario> Read() {
        const JsonValue& root = mDocument.root();
        Scenario scenario;
        if (Check(mDocument.Expect(root, JsonKind::kObject, "the scenario", mError)) &&
            Check(mDocument.ExpectKnownKeys(root, {"title", "steps"}, mError))) {
            scenario.title = Text(root, "title");
            const JsonValue* steps =
                mFailed ? nullptr : mDocument.RequireMember(root, "steps", JsonKind::kArray, mError);
            if (Check(steps != nullptr)) {
                for (const JsonValue& step : *steps->AsArray()) {
                    AddStep(step, scenario.steps);
                }
            }
        }
        return mFailed ? std::nullopt : std::optional(std::move(scenario));
    }

private:
    using Maker = Step (Reader::*)(const JsonValue&);

    bool Check(bool good) {
        mFailed = mFailed || !good;
        return good;
    }

    void Fail(const JsonValue& value, const std::string& message, const std::string& remedy) {
        if (!mFailed) {
            mError = mDocument.ErrorAt(value.location(), message, remedy);
            mFailed = true;
        }
    }

    void AddStep(const JsonValue& step, std::vector<Step>& steps) {
        static constexpr std::array<std::pair<std::string_view, Maker>, 15> kMakers{{
            {"note", &Reader::MakeNote},
            {"configure", &Reader::MakeConfigure},
            {"sdk-version", &Reader::MakeSDKVersion},
            {"observe", &Reader::MakeObserve},
            {"remove-observer", &Reader::MakeRemoveObserver},
            {"login", &Reader::MakeLogin},
            {"answer-login", &Reader::MakeAnswerLogin},
            {"logout", &Reader::MakeLogout},
            {"commit", &Reader::MakeCommit},
            {"collect", &Reader::MakeCollect},
            {"launch", &Reader::MakeLaunch},
            {"open-url", &Reader::MakeOpenURL},
            {"activate", &Reader::MakeActivate},
            {"init-stat", &Reader::MakeInitStat},
            {"report", &Reader::MakeReport},
        }};
        if (mFailed || !Check(mDocument.Expect(step, JsonKind::kObject, "a step", mError))) {
            return;
        }
        const JsonValue::Object& members = *step.AsObject();
        if (members.size() != 1) {
            Fail(step, "a step has " + std::to_string(members.size()) + " members",
                 "write one object per step with the step's name as its only key");
            return;
        }
        const JsonMember& member = members.front();
        for (const auto& [name, maker] : kMakers) {
            if (member.key == name) {
                steps.push_back((this->*maker)(member.value));
                return;
            }
        }
        std::string names;
        for (const auto& [name, maker] : kMakers) {
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
        mError = mDocument.ErrorAt(member.keyLocation, "unknown step \"" + member.key + "\"", "use one of " + names);
        mFailed = true;
    }

    Step MakeNote(const JsonValue& value) {
        NoteStep step;
        if (Check(mDocument.Expect(value, JsonKind::kString, "\"note\"", mError))) {
            step.text = *value.AsString();
        }
        return step;
    }

    Step MakeConfigure(const JsonValue& value) {
        ConfigureStep step;
        if (!Check(mDocument.Expect(value, JsonKind::kObject, "\"configure\"", mError)) ||
            !Check(mDocument.ExpectUniqueKeys(value, mError))) {
            return step;
        }
        for (const JsonMember& member : *value.AsObject()) {
            if (Check(mDocument.Expect(member.value, JsonKind::kString, "\"" + member.key + "\"", mError))) {
                step.values[member.key] = *member.value.AsString();
            }
            if (mFailed) {
                break;
            }
        }
        return step;
    }

    Step MakeSDKVersion(const JsonValue& value) {
        SDKVersionStep step;
        if (!value.IsNull() && Check(mDocument.Expect(value, JsonKind::kString, "\"sdk-version\"", mError))) {
            step.version = *value.AsString();
        }
        return step;
    }

    Step MakeObserve(const JsonValue& value) {
        const auto [record, observerID] = RecordAndObserver(value);
        return ObserveStep{record, observerID};
    }

    Step MakeRemoveObserver(const JsonValue& value) {
        const auto [record, observerID] = RecordAndObserver(value);
        return RemoveObserverStep{record, observerID};
    }

    Step MakeLogin(const JsonValue& value) {
        LoginStep step;
        if (Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson", "permissions"})) {
            ReadBaseParams(value, step.params);
            step.params.permissions = Text(value, "permissions");
        }
        return step;
    }

    Step MakeLogout(const JsonValue& value) {
        LogoutStep step;
        if (Known(value, {"methodID", "seqID", "channel", "subChannel", "extraJson"})) {
            ReadBaseParams(value, step.params);
        }
        return step;
    }

    Step MakeAnswerLogin(const JsonValue& value) {
        using Outcome = AnswerLoginStep::Outcome;
        AnswerLoginStep step;
        if (!Known(value, {"outcome", "token", "graphDomain", "message", "domain", "code", "thread"})) {
            return step;
        }
        step.outcome = Choice<Outcome>(value, "outcome",
                                       {{"success", Outcome::kSuccess},
                                        {"limited", Outcome::kLimited},
                                        {"cancelled", Outcome::kCancelled},
                                        {"nothing-granted", Outcome::kNothingGranted},
                                        {"browser-not-opened", Outcome::kBrowserNotOpened},
                                        {"error-message", Outcome::kErrorMessage},
                                        {"error", Outcome::kError}});
        step.background = OptionalChoice(value, "thread", {{"main", false}, {"background", true}}, false);
        step.graphDomain = OptionalText(value, "graphDomain");
        if (step.outcome == Outcome::kSuccess) {
            step.token = Text(value, "token");
        }
        if (step.outcome == Outcome::kErrorMessage || step.outcome == Outcome::kError) {
            step.message = Text(value, "message");
        }
        if (step.outcome == Outcome::kError) {
            step.domain = Text(value, "domain");
            step.code =
                Integer(value, "code", std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
        }
        return step;
    }

    Step MakeCommit(const JsonValue& value) {
        CommitStep step;
        if (Known(value, {"observer", "seqID", "code"})) {
            step.observerID = Observer(value, "observer");
            step.seqID = Text(value, "seqID");
            step.code = static_cast<int>(Int32(value, "code"));
        }
        return step;
    }

    Step MakeCollect(const JsonValue& value) {
        Known(value, {});
        return CollectStep{};
    }

    Step MakeLaunch(const JsonValue& value) {
        LaunchStep step;
        if (Known(value, {"url", "game"})) {
            step.url = OptionalText(value, "url");
            step.answer = GameAnswer(value);
        }
        return step;
    }

    Step MakeOpenURL(const JsonValue& value) {
        OpenURLStep step;
        if (Known(value, {"url", "source", "method", "game"})) {
            step.url = Text(value, "url");
            step.source = OptionalText(value, "source");
            step.withSource = OptionalChoice(value, "method", {{"options", false}, {"source", true}}, false);
            step.answer = GameAnswer(value);
        }
        return step;
    }

    Step MakeActivate(const JsonValue& value) {
        Known(value, {});
        return ActivateStep{};
    }

    Step MakeInitStat(const JsonValue& value) {
        Known(value, {});
        return InitStatStep{};
    }

    Step MakeReport(const JsonValue& value) {
        ReportStep step;
        if (!Known(value, {"event", "params", "realtime", "seqID", "extra"})) {
            return step;
        }
        step.event = Text(value, "event");
        step.seqID = Text(value, "seqID");
        step.extra = OptionalText(value, "extra");
        step.isRealtime = OptionalBool(value, "realtime", false);
        const JsonValue* params = nullptr;
        if (!mFailed && Check(mDocument.OptionalMember(value, "params", JsonKind::kObject, params, mError)) &&
            params != nullptr && Check(mDocument.ExpectUniqueKeys(*params, mError))) {
            step.hasParams = true;
            for (const JsonMember& member : *params->AsObject()) {
                AddParameter(member, step);
            }
        }
        return step;
    }

    // A parameter of an event: any JSON value but a list or an object.
    void AddParameter(const JsonMember& member, ReportStep& step) {
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
            Fail(value, "the parameter \"" + member.key + "\" is " + NameOf(value.kind()),
                 "use a text, a number, true, false or null");
        }
    }

    // ---- Members of a step. Each does nothing once something has failed.

    bool Known(const JsonValue& object, std::initializer_list<std::string_view> keys) {
        return Check(mDocument.Expect(object, JsonKind::kObject, "the step", mError)) &&
               Check(mDocument.ExpectKnownKeys(object, keys, mError));
    }

    const JsonValue* Member(const JsonValue& object, std::string_view key, JsonKind kind) {
        if (mFailed) {
            return nullptr;
        }
        const JsonValue* member = mDocument.RequireMember(object, key, kind, mError);
        Check(member != nullptr);
        return member;
    }

    std::string Text(const JsonValue& object, std::string_view key) {
        const JsonValue* member = Member(object, key, JsonKind::kString);
        return member == nullptr ? std::string() : *member->AsString();
    }

    std::string OptionalText(const JsonValue& object, std::string_view key) {
        const JsonValue* member = nullptr;
        if (mFailed || !Check(mDocument.OptionalMember(object, key, JsonKind::kString, member, mError)) ||
            member == nullptr) {
            return {};
        }
        return *member->AsString();
    }

    bool OptionalBool(const JsonValue& object, std::string_view key, bool otherwise) {
        const JsonValue* member = nullptr;
        if (mFailed || !Check(mDocument.OptionalMember(object, key, JsonKind::kBool, member, mError)) ||
            member == nullptr) {
            return otherwise;
        }
        return *member->AsBool();
    }

    // What the game's own method answers.
    bool GameAnswer(const JsonValue& object) {
        return OptionalChoice(object, "game", {{"YES", true}, {"NO", false}}, true);
    }

    int64_t Integer(const JsonValue& object, std::string_view key, int64_t least, int64_t greatest) {
        const JsonValue* member = Member(object, key, JsonKind::kInt64);
        if (member == nullptr) {
            return 0;
        }
        const int64_t number = *member->AsInt64();
        if (number < least || number > greatest) {
            Fail(*member, "\"" + std::string(key) + "\" is out of range",
                 "use an integer from " + std::to_string(least) + " to " + std::to_string(greatest));
            return 0;
        }
        return number;
    }

    int32_t Int32(const JsonValue& object, std::string_view key) {
        return static_cast<int32_t>(
            Integer(object, key, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
    }

    unsigned Observer(const JsonValue& object, std::string_view key) {
        return static_cast<unsigned>(Integer(object, key, 0, std::numeric_limits<uint32_t>::max()));
    }

    template <class T>
    T Choice(const JsonValue& object, std::string_view key,
             std::initializer_list<std::pair<std::string_view, T>> choices) {
        const JsonValue* member = Member(object, key, JsonKind::kString);
        return member == nullptr ? T{} : Chosen(*member, key, choices);
    }

    template <class T>
    T OptionalChoice(const JsonValue& object, std::string_view key,
                     std::initializer_list<std::pair<std::string_view, T>> choices, T otherwise) {
        const JsonValue* member = nullptr;
        if (mFailed || !Check(mDocument.OptionalMember(object, key, JsonKind::kString, member, mError)) ||
            member == nullptr) {
            return otherwise;
        }
        return Chosen(*member, key, choices);
    }

    template <class T>
    T Chosen(const JsonValue& value, std::string_view key,
             std::initializer_list<std::pair<std::string_view, T>> choices) {
        std::string names;
        for (const auto& [name, choice] : choices) {
            if (*value.AsString() == name) {
                return choice;
            }
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
        Fail(value, "unknown " + std::string(key) + " \"" + *value.AsString() + "\"", "use one of " + names);
        return {};
    }

    std::pair<RecordType, unsigned> RecordAndObserver(const JsonValue& value) {
        if (!Known(value, {"record", "observer"})) {
            return {};
        }
        const auto record = Choice<RecordType>(value, "record",
                                               {{"InnerBaseRet", RecordType::kBase},
                                                {"InnerFriendRet", RecordType::kFriend},
                                                {"InnerLoginRet", RecordType::kLogin},
                                                {"InnerLoginPluginRet", RecordType::kLoginPlugin}});
        return {record, Observer(value, "observer")};
    }

    void ReadBaseParams(const JsonValue& value, VornBaseParams& params) {
        params.methodID = Int32(value, "methodID");
        params.seqID = Text(value, "seqID");
        params.channel = OptionalText(value, "channel");
        params.subChannel = OptionalText(value, "subChannel");
        params.extraJson = OptionalText(value, "extraJson");
    }

    const JsonDocument& mDocument;
    LocatedError& mError;
    bool mFailed = false;
};

} // namespace

std::optional<Scenario> LoadScenario(const std::string& path, LocatedError& error) {
    const std::optional<JsonDocument> document = JsonDocument::Load(path, error);
    if (!document) {
        return std::nullopt;
    }
    return Reader(*document, error).Read();
}

} // namespace Tarvik::Vorn::Simulator
