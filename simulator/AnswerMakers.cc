#include "StepMakers.h"

#include <initializer_list>
#include <limits>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr int64_t kMostTimes = 100;

ReportedError ReadError(StepReader& reader, const JsonValue& value) {
    return {reader.Text(value, "domain"), reader.Int64(value, "code"), reader.Text(value, "message")};
}

// The keys of an answer: its own and those that every answer may have. `index` is empty where only one can be open.
bool KnownAnswer(StepReader& reader, const JsonValue& value, std::initializer_list<std::string_view> own,
                 std::string_view index) {
    std::vector<std::string_view> keys(own);
    for (const std::string_view key : {"after", "inside", "times", "thread", "of"}) {
        keys.push_back(key);
    }
    if (!index.empty()) {
        keys.push_back(index);
    }
    return reader.Known(value, keys);
}

AnswerManner ReadManner(StepReader& reader, const JsonValue& value, std::string_view index) {
    AnswerManner manner;
    manner.background = reader.Background(value);
    manner.inside = reader.OptionalBool(value, "inside", false);
    if (const JsonMember* const after = value.Find("after")) {
        manner.after = reader.ReadDuration(after->value, "after");
        if (manner.inside) {
            reader.Fail(after->value, "an answer inside the call cannot come later", "remove \"after\" or \"inside\"");
        }
    }
    if (value.Find("times") != nullptr) {
        manner.times = static_cast<unsigned>(reader.Integer(value, "times", 0, kMostTimes));
    }
    if (reader.OptionalMember(value, "of", JsonKind::kString) != nullptr) {
        manner.of = reader.Text(value, "of");
    }
    if (!index.empty()) {
        manner.index = reader.OptionalIndex(value, index);
    }
    return manner;
}

// What every answer with an outcome may have.
template <class AnswerStep>
void ReadErrorAndManner(StepReader& reader, const JsonValue& value, std::string_view index, AnswerStep& step) {
    if (step.outcome == AnswerStep::Outcome::kError) {
        step.error = ReadError(reader, value);
    }
    step.manner = ReadManner(reader, value, index);
}

Action MakeAnswerLogin(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerLoginStep::Outcome;
    AnswerLoginStep step;
    if (!KnownAnswer(reader, value, {"outcome", "token", "graphDomain", "message", "domain", "code"}, "")) {
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
    step.graphDomain = reader.OptionalText(value, "graphDomain");
    if (step.outcome == Outcome::kSuccess) {
        step.token = reader.Text(value, "token");
    }
    if (step.outcome == Outcome::kErrorMessage || step.outcome == Outcome::kError) {
        step.message = reader.Text(value, "message");
    }
    if (step.outcome == Outcome::kError) {
        step.domain = reader.Text(value, "domain");
        step.code = reader.Int64(value, "code");
    }
    step.manner = ReadManner(reader, value, "");
    return step;
}

Action MakeAnswerPhotoPrompt(StepReader& reader, const JsonValue& value) {
    AnswerPhotoPromptStep step;
    if (KnownAnswer(reader, value, {"permission"}, "prompt")) {
        if (const JsonValue* const permission = reader.Member(value, "permission", JsonKind::kString)) {
            step.permission = ReadPermission(reader, *permission, "permission");
        }
        step.manner = ReadManner(reader, value, "prompt");
    }
    return step;
}

Action MakeAnswerFriendFinder(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerFriendFinderStep::Outcome;
    AnswerFriendFinderStep step;
    if (KnownAnswer(reader, value, {"outcome", "domain", "code", "message"}, "dialog")) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"returned", Outcome::kReturned},
                                               {"closed", Outcome::kClosed},
                                               {"not-opened", Outcome::kNotOpened},
                                               {"error", Outcome::kError}});
        ReadErrorAndManner(reader, value, "dialog", step);
    }
    return step;
}

Action MakeAnswerGameRequest(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerGameRequestStep::Outcome;
    AnswerGameRequestStep step;
    if (KnownAnswer(reader, value, {"outcome", "request", "recipients", "domain", "code", "message"}, "dialog")) {
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
        ReadErrorAndManner(reader, value, "dialog", step);
    }
    return step;
}

Action MakeAnswerShare(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerShareStep::Outcome;
    AnswerShareStep step;
    if (KnownAnswer(reader, value, {"outcome", "postID", "domain", "code", "message"}, "dialog")) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"completed", Outcome::kCompleted},
                                               {"cancelled", Outcome::kCancelled},
                                               {"returned", Outcome::kReturned},
                                               {"app-error", Outcome::kAppError},
                                               {"not-opened", Outcome::kNotOpened},
                                               {"error", Outcome::kError}});
        step.postID = reader.OptionalText(value, "postID");
        ReadErrorAndManner(reader, value, "dialog", step);
    }
    return step;
}

Action MakeFinishSaving(StepReader& reader, const JsonValue& value) {
    using Outcome = FinishSavingStep::Outcome;
    FinishSavingStep step;
    if (KnownAnswer(reader, value, {"outcome", "asset", "domain", "code", "message"}, "change")) {
        step.outcome =
            reader.Choice<Outcome>(value, "outcome", {{"saved", Outcome::kSaved}, {"error", Outcome::kError}});
        step.asset = reader.OptionalText(value, "asset");
        ReadErrorAndManner(reader, value, "change", step);
    }
    return step;
}

Action MakeAnswerImageUpload(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerImageUploadStep::Outcome;
    AnswerImageUploadStep step;
    if (KnownAnswer(reader, value, {"outcome", "photoID", "domain", "code", "message"}, "upload")) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"uploaded", Outcome::kUploaded},
                                               {"without-id", Outcome::kWithoutID},
                                               {"dialog-not-opened", Outcome::kDialogNotOpened},
                                               {"error", Outcome::kError}});
        if (step.outcome == Outcome::kUploaded || step.outcome == Outcome::kDialogNotOpened) {
            step.photoID = reader.Text(value, "photoID");
        }
        ReadErrorAndManner(reader, value, "upload", step);
    }
    return step;
}

Action MakeUploadProgress(StepReader& reader, const JsonValue& value) {
    UploadProgressStep step;
    if (KnownAnswer(reader, value, {"sent", "expected"}, "upload")) {
        step.sent = reader.Int64(value, "sent");
        step.expected = reader.Int64(value, "expected");
        step.manner = ReadManner(reader, value, "upload");
    }
    return step;
}

Action MakeAnswerVideoUpload(StepReader& reader, const JsonValue& value) {
    using Outcome = AnswerVideoUploadStep::Outcome;
    AnswerVideoUploadStep step;
    if (KnownAnswer(reader, value, {"outcome", "videoID", "domain", "code", "message"}, "upload")) {
        step.outcome = reader.Choice<Outcome>(value, "outcome",
                                              {{"uploaded", Outcome::kUploaded},
                                               {"server-refused", Outcome::kServerRefused},
                                               {"malformed", Outcome::kMalformed},
                                               {"error", Outcome::kError}});
        if (step.outcome == Outcome::kUploaded) {
            step.videoID = reader.Text(value, "videoID");
        }
        ReadErrorAndManner(reader, value, "upload", step);
    }
    return step;
}

} // namespace

const std::vector<NamedMaker>& AnswerMakers() {
    static const std::vector<NamedMaker> makers{
        {"answer-login", &MakeAnswerLogin},
        {"answer-friend-finder", &MakeAnswerFriendFinder},
        {"answer-game-request", &MakeAnswerGameRequest},
        {"answer-share", &MakeAnswerShare},
        {"answer-photo-prompt", &MakeAnswerPhotoPrompt},
        {"finish-saving", &MakeFinishSaving},
        {"answer-image-upload", &MakeAnswerImageUpload},
        {"upload-progress", &MakeUploadProgress},
        {"answer-video-upload", &MakeAnswerVideoUpload},
    };
    return makers;
}

namespace {

// The answer in a step that is one; empty for any other.
std::optional<Answer> AnswerIn(Action action) {
    return std::visit(
        [](auto&& step) -> std::optional<Answer> {
            if constexpr (std::is_constructible_v<Answer, decltype(step)>) {
                return Answer(std::forward<decltype(step)>(step));
            } else {
                return std::nullopt;
            }
        },
        std::move(action));
}

void AddAnswer(StepReader& reader, const JsonValue& value, std::vector<Answer>& answers) {
    const JsonMember* const member = reader.OnlyMember(value, "answer");
    if (member == nullptr) {
        return;
    }
    std::vector<std::string_view> names;
    for (const NamedMaker& maker : AnswerMakers()) {
        if (member->key == maker.name) {
            if (std::optional<Answer> answer = AnswerIn(maker.make(reader, member->value))) {
                answers.push_back(std::move(*answer));
            }
            for (const std::string_view key : {"of", "dialog", "upload", "prompt", "change"}) {
                if (const JsonMember* const chosen = member->value.Find(key)) {
                    reader.FailAt(chosen->keyLocation, "a request's own answers are for what it opens itself",
                                  "remove \"" + chosen->key + "\", or write the answer as a step");
                }
            }
            return;
        }
        names.push_back(maker.name);
    }
    reader.FailAt(member->keyLocation, "unknown answer \"" + member->key + "\"", MeantOrOneOf(member->key, names));
}

} // namespace

std::vector<PlannedAnswer> ReadPlannedAnswers(StepReader& reader, const JsonValue& request) {
    std::vector<PlannedAnswer> planned;
    const JsonValue* const list = reader.OptionalMember(request, "answers", JsonKind::kArray);
    if (list == nullptr) {
        return planned;
    }
    for (const JsonValue& element : *list->AsArray()) {
        PlannedAnswer answer;
        const JsonMember* const member = reader.OnlyMember(element, "answer");
        if (member == nullptr) {
            break;
        }
        if (member->key != "any-of") {
            AddAnswer(reader, element, answer.anyOf);
        } else if (const JsonValue* const some = reader.Member(element, "any-of", JsonKind::kArray)) {
            for (const JsonValue& one : *some->AsArray()) {
                AddAnswer(reader, one, answer.anyOf);
            }
            for (size_t i = 1; i < answer.anyOf.size(); ++i) {
                if (answer.anyOf[i].index() != answer.anyOf[0].index()) {
                    reader.Fail((*some->AsArray())[i], "\"any-of\" mixes answers of different kinds",
                                "write answers of one kind, with different outcomes");
                }
            }
            if (some->AsArray()->empty()) {
                reader.Fail(*some, "\"any-of\" has no answer", "write at least one, or remove it");
            }
        }
        planned.push_back(std::move(answer));
    }
    return planned;
}

} // namespace Tarvik::Vorn::Simulator
