#include "World.h"

#include "DocumentPath.h"
#include "ExpectationReader.h"
#include "StepMakers.h"
#include "StepReader.h"
#include "WorldCheck.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr std::string_view kRepeat = "repeat";
constexpr int64_t kMostRounds = 10'000'000;
constexpr int kMostRepeatsInside = 4; // Repeats in repeats.

std::vector<std::string_view> StepNames(bool settingsOnly) {
    std::vector<std::string_view> names;
    for (const NamedMaker& maker : StepMakers()) {
        if (maker.isSetting || !settingsOnly) {
            names.push_back(maker.name);
        }
    }
    if (!settingsOnly) {
        names.push_back(kRepeat);
    }
    return names;
}

const NamedMaker* FindMaker(std::string_view name) {
    for (const NamedMaker& maker : StepMakers()) {
        if (maker.name == name) {
            return &maker;
        }
    }
    return nullptr;
}

std::vector<Step> ReadSteps(StepReader& reader, const JsonValue& list, int depth);

RepeatStep ReadRepeat(StepReader& reader, const JsonValue& value, int depth) {
    RepeatStep step;
    if (depth == kMostRepeatsInside) {
        reader.Fail(value, "repeats stand inside each other more than 4 deep", "repeat less deeply");
    }
    if (reader.Known(value, {"times", "steps"})) {
        step.times = static_cast<uint64_t>(reader.Integer(value, "times", 1, kMostRounds));
        if (const JsonValue* const steps = reader.Member(value, "steps", JsonKind::kArray)) {
            step.steps = ReadSteps(reader, *steps, depth + 1);
        }
    }
    return step;
}

void AddStep(StepReader& reader, const JsonValue& step, int depth, std::vector<Step>& steps) {
    const JsonMember* const member = reader.OnlyMember(step, "step");
    if (member == nullptr) {
        return;
    }
    if (member->key == kRepeat) {
        steps.push_back({ReadRepeat(reader, member->value, depth), step.location()});
    } else if (const NamedMaker* const maker = FindMaker(member->key)) {
        steps.push_back({maker->make(reader, member->value), step.location()});
    } else {
        reader.FailAt(member->keyLocation, "unknown step \"" + member->key + "\"",
                      MeantOrOneOf(member->key, StepNames(false)));
    }
}

std::vector<Step> ReadSteps(StepReader& reader, const JsonValue& list, int depth) {
    std::vector<Step> steps;
    for (const JsonValue& step : *list.AsArray()) {
        AddStep(reader, step, depth, steps);
        if (reader.Failed()) {
            break;
        }
    }
    return steps;
}

// The members of "setting" happen in the order of the step list, not in that of the text: an object has no order.
std::vector<Step> ReadSetting(StepReader& reader, const JsonValue& setting) {
    std::vector<Step> steps;
    if (!reader.Known(setting, StepNames(true))) {
        return steps;
    }
    for (const NamedMaker& maker : StepMakers()) {
        const JsonMember* const member = setting.Find(maker.name);
        if (member != nullptr && !reader.Failed()) {
            steps.push_back({maker.make(reader, member->value), member->keyLocation});
        }
    }
    return steps;
}

// Who listens: "automatic", or a list of observers, which may be empty.
void ReadObservers(StepReader& reader, const JsonValue& root, World& world) {
    const JsonMember* const observers = root.Find("observers");
    if (observers == nullptr || reader.Failed()) {
        return;
    }
    if (observers->value.AsArray() == nullptr) {
        reader.Chosen<bool>(observers->value, "observers", {{"automatic", true}});
        return;
    }
    world.registersObservers = false;
    for (const JsonValue& observer : *observers->value.AsArray()) {
        world.setting.push_back({FindMaker("observe")->make(reader, observer), observer.location()});
    }
}

std::optional<uint64_t> ReadSeed(StepReader& reader, const JsonValue& root) {
    const JsonValue* const seed = reader.OptionalMember(root, "seed", JsonKind::kUint64);
    return seed == nullptr ? std::nullopt : seed->AsUint64();
}

std::string NameOfFile(const std::string& path) {
    std::string name = std::filesystem::path(path).filename().string();
    for (const std::string_view ending : {".json", ".world"}) {
        if (name.size() > ending.size() && name.ends_with(ending)) {
            name.resize(name.size() - ending.size());
        }
    }
    return name;
}

std::optional<World> ReadWorld(const JsonDocument& document, const std::string& path, LocatedError& error) {
    StepReader reader(document, error);
    const JsonValue& root = document.root();
    World world;
    world.name = NameOfFile(path);
    world.path = path;
    if (reader.Check(document.Expect(root, JsonKind::kObject, "the world", error)) &&
        reader.Known(root, {"question", "$schema", "seed", "setting", "observers", "steps", "expect"})) {
        reader.OptionalText(root, "$schema");
        world.question = reader.Text(root, "question");
        world.seed = ReadSeed(reader, root);
        if (const JsonValue* const setting = reader.OptionalMember(root, "setting", JsonKind::kObject)) {
            world.setting = ReadSetting(reader, *setting);
        }
        ReadObservers(reader, root, world);
        if (const JsonValue* const steps = reader.Member(root, "steps", JsonKind::kArray)) {
            world.steps = ReadSteps(reader, *steps, 0);
        }
        if (const JsonValue* const expect = reader.OptionalMember(root, "expect", JsonKind::kObject)) {
            world.expectations = ReadExpectations(reader, *expect);
        }
    }
    if (!reader.Failed()) {
        CheckWorld(reader, world);
    }
    if (reader.Failed()) {
        const std::string place = PathInside(root, error.line, error.column);
        error.message = (place.empty() ? "" : place + ": ") + error.message;
        return std::nullopt;
    }
    return world;
}

} // namespace

std::optional<World> LoadWorld(const std::string& path, LocatedError& error) {
    std::error_code failure;
    if (std::filesystem::exists(path, failure) && !std::filesystem::is_regular_file(path, failure)) {
        error = {path, 0, 0, "is not a file", "name a world's file, which ends in .world.json"};
        return std::nullopt;
    }
    const uintmax_t size = std::filesystem::file_size(path, failure);
    if (!failure && size > kWorldFileLimit) {
        error = {path, 0, 0, "is greater than " + std::to_string(kWorldFileLimit / 1024 / 1024) + " MiB",
                 "use \"repeat\" instead of writing steps again"};
        return std::nullopt;
    }
    const std::optional<JsonDocument> document = JsonDocument::Load(path, error);
    return document ? ReadWorld(*document, path, error) : std::nullopt;
}

std::optional<World> ParseWorld(const std::string& text, const std::string& path, LocatedError& error) {
    const std::optional<JsonDocument> document = JsonDocument::Parse(text, path, error);
    return document ? ReadWorld(*document, path, error) : std::nullopt;
}

} // namespace Tarvik::Vorn::Simulator
