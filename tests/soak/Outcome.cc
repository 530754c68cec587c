#include "Outcome.h"

#include "VornServices.h"

namespace Tarvik::Vorn::Soak {
namespace {

Outcome BaseOf(RecordKind kind, const InnerBaseRet& record, const std::string& seqID) {
    Outcome outcome;
    outcome.record = kind;
    outcome.seqID = seqID;
    outcome.methodID = record.methodNameID;
    outcome.code = record.retCode;
    outcome.thirdCode = record.thirdCode;
    outcome.message = record.retMsg.toString();
    outcome.thirdText = record.thirdMsg.toString();
    outcome.extraJson = record.extraJson.toString();
    return outcome;
}

bool TextMatches(const std::optional<std::string>& expected, const std::optional<std::string>& got) {
    return !expected || expected == got;
}

} // namespace

Outcome Coded(int code) {
    Outcome outcome;
    outcome.code = code;
    outcome.message = VornUtils::GetRetMsg(code);
    return outcome;
}

Outcome Explained(int code, int thirdCode, std::optional<std::string> text) {
    Outcome outcome = Coded(code);
    outcome.thirdCode = thirdCode;
    outcome.thirdText = std::move(text);
    return outcome;
}

Outcome OutcomeOf(const InnerBaseRet& record, const std::string& seqID) {
    return BaseOf(RecordKind::kBase, record, seqID);
}

Outcome OutcomeOf(const InnerFriendRet& record, const std::string& seqID) {
    Outcome outcome = BaseOf(RecordKind::kFriend, record, seqID);
    if (!record.friendInfoList.empty() || !record.extraText.empty()) {
        outcome.extraJson = "friends";
    }
    return outcome;
}

Outcome OutcomeOf(const InnerLoginRet& record, const std::string& seqID) {
    Outcome outcome = BaseOf(RecordKind::kLogin, record, seqID);
    outcome.extraJson += record.channel.toString() + " " + std::to_string(record.channelID);
    return outcome;
}

Outcome OutcomeOf(const InnerLoginPluginRet& record, const std::string& seqID) {
    Outcome outcome;
    outcome.record = RecordKind::kLoginPlugin;
    outcome.seqID = seqID;
    outcome.methodID = record.methodNameID;
    outcome.thirdText = record.channelInfo;
    outcome.extraJson = record.channel + " " + std::to_string(record.channelID);
    return outcome;
}

bool Matches(const Outcome& expected, const Outcome& got) {
    return expected.record == got.record && expected.observerID == got.observerID && expected.seqID == got.seqID &&
           expected.methodID == got.methodID && expected.code == got.code && expected.thirdCode == got.thirdCode &&
           TextMatches(expected.message, got.message) && TextMatches(expected.thirdText, got.thirdText) &&
           expected.extraJson == got.extraJson && expected.onMainThread == got.onMainThread;
}

std::string TextOf(const Outcome& outcome) {
    static constexpr const char* kNames[] = {"InnerBaseRet", "InnerFriendRet", "InnerLoginRet", "InnerLoginPluginRet"};
    return std::string(kNames[static_cast<size_t>(outcome.record)]) + " to " + std::to_string(outcome.observerID) +
           " under \"" + outcome.seqID + "\": method " + std::to_string(outcome.methodID) + ", code " +
           std::to_string(outcome.code) + " \"" + outcome.message.value_or("(any)") + "\", third code " +
           std::to_string(outcome.thirdCode) + " \"" + outcome.thirdText.value_or("(any)") + "\", extra \"" +
           outcome.extraJson + "\"" + (outcome.onMainThread ? "" : ", off the main thread");
}

} // namespace Tarvik::Vorn::Soak
