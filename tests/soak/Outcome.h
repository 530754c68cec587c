// A result as the soak compares it: the four record types in one form. Plain C++.
#pragma once

#include "VornRecords.h"

#include <cstddef>
#include <optional>
#include <string>

namespace Tarvik::Vorn::Soak {

enum class RecordKind { kBase, kFriend, kLogin, kLoginPlugin };
inline constexpr size_t kRecordKindCount = 4;

struct Outcome {
    RecordKind record = RecordKind::kBase;
    unsigned observerID = 0;
    std::string seqID;
    int methodID = 0;
    int code = 0;
    int thirdCode = 0;
    // In a prediction, texts that Facebook's SDK words are empty handles: any text will do.
    std::optional<std::string> message = "";   // The code's standard text.
    std::optional<std::string> thirdText = ""; // Of a login plugin's result: the channel's JSON text.
    std::string extraJson;                     // Of a login's result: the channel's name.
    bool onMainThread = true;                  // Where it was delivered.
};

// A prediction of this code, with its standard text and nothing else.
Outcome Coded(int code);

// The same with a third code and an explanation.
Outcome Explained(int code, int thirdCode, std::optional<std::string> text);

// What a record holds; the observer and where it was delivered are the caller's to fill in.
Outcome OutcomeOf(const InnerBaseRet& record, const std::string& seqID);
Outcome OutcomeOf(const InnerFriendRet& record, const std::string& seqID);
Outcome OutcomeOf(const InnerLoginRet& record, const std::string& seqID);
Outcome OutcomeOf(const InnerLoginPluginRet& record, const std::string& seqID);

bool Matches(const Outcome& expected, const Outcome& got);

std::string TextOf(const Outcome& outcome);

} // namespace Tarvik::Vorn::Soak
