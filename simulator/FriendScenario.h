// Reads the steps of FriendSteps.h. Plain C++; after a failure the step is a default one and the reader knows the error.
#pragma once

#include "Scenario.h"
#include "StepReader.h"

namespace Tarvik::Vorn::Simulator {

Step MakePlayer(StepReader& reader, const JsonValue& value);
Step MakeProfile(StepReader& reader, const JsonValue& value);
Step MakeApps(StepReader& reader, const JsonValue& value);
Step MakeQueriesSchemes(StepReader& reader, const JsonValue& value);
Step MakePhotoPermission(StepReader& reader, const JsonValue& value);
Step MakeAnswerPhotoPrompt(StepReader& reader, const JsonValue& value);
Step MakeSendMessage(StepReader& reader, const JsonValue& value);
Step MakeShare(StepReader& reader, const JsonValue& value);
Step MakeAddFriend(StepReader& reader, const JsonValue& value);
Step MakeQueryFriends(StepReader& reader, const JsonValue& value);
Step MakeAnswerFriendFinder(StepReader& reader, const JsonValue& value);
Step MakeAnswerGameRequest(StepReader& reader, const JsonValue& value);
Step MakeAnswerShare(StepReader& reader, const JsonValue& value);
Step MakeFinishSaving(StepReader& reader, const JsonValue& value);
Step MakeAnswerImageUpload(StepReader& reader, const JsonValue& value);
Step MakeUploadProgress(StepReader& reader, const JsonValue& value);
Step MakeAnswerVideoUpload(StepReader& reader, const JsonValue& value);

} // namespace Tarvik::Vorn::Simulator
