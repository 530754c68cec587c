// Makes steps and answers of JSON. Plain C++; after a failure the step is a default one and the reader knows the error.
#pragma once

#include "StepReader.h"
#include "World.h"

#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {

using Maker = Action (*)(StepReader& reader, const JsonValue& value);

struct NamedMaker {
    std::string_view name;
    Maker make = nullptr;
    bool isSetting = false; // It may stand in a world's "setting".
};

// Every step with its name. "repeat" is not among them: it holds steps.
const std::vector<NamedMaker>& StepMakers();

// Around the plugin.
Action MakePlayer(StepReader& reader, const JsonValue& value);
Action MakeTracking(StepReader& reader, const JsonValue& value);
Action MakeViewController(StepReader& reader, const JsonValue& value);
Action MakeProfile(StepReader& reader, const JsonValue& value);
Action MakeApps(StepReader& reader, const JsonValue& value);
Action MakeQueriesSchemes(StepReader& reader, const JsonValue& value);
Action MakePhotoPermission(StepReader& reader, const JsonValue& value);
PhotoPermission ReadPermission(StepReader& reader, const JsonValue& value, std::string_view name);

// Requests to the friend plugin.
Action MakeSendMessage(StepReader& reader, const JsonValue& value);
Action MakeShare(StepReader& reader, const JsonValue& value);
Action MakeAddFriend(StepReader& reader, const JsonValue& value);
Action MakeQueryFriends(StepReader& reader, const JsonValue& value);

// The steps that are answers. They are among StepMakers(), too.
const std::vector<NamedMaker>& AnswerMakers();

// A request's "answers": a list of answers, or of {"any-of": [...]} with some to pick from.
std::vector<PlannedAnswer> ReadPlannedAnswers(StepReader& reader, const JsonValue& request);

} // namespace Tarvik::Vorn::Simulator
