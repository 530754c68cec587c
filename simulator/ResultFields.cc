#include "ResultFields.h"

namespace Tarvik::Vorn::Simulator {
namespace {

void AddBase(const InnerBaseRet& record, ResultFacts& facts) {
    facts.fields.push_back({"methodNameID", int64_t{record.methodNameID}});
    facts.fields.push_back({"retCode", int64_t{record.retCode}});
    facts.fields.push_back({"retMsg", record.retMsg.toString()});
    facts.fields.push_back({"thirdCode", int64_t{record.thirdCode}});
    facts.fields.push_back({"thirdMsg", record.thirdMsg.toString()});
    facts.fields.push_back({"extraJson", record.extraJson.toString()});
}

} // namespace

const std::vector<FieldName>& FieldNames() {
    static const std::vector<FieldName> names{
        {"methodNameID", false}, {"retCode", false},    {"retMsg", true},          {"thirdCode", false},
        {"thirdMsg", true},      {"extraJson", true},   {"friendInfoList", false}, {"channelID", false},
        {"channel", true},       {"channelInfo", true},
    };
    return names;
}

ResultFacts FactsOf(const InnerBaseRet& record) {
    ResultFacts facts;
    facts.record = "InnerBaseRet";
    AddBase(record, facts);
    return facts;
}

ResultFacts FactsOf(const InnerFriendRet& record) {
    ResultFacts facts;
    facts.record = "InnerFriendRet";
    AddBase(record, facts);
    facts.fields.push_back({"friendInfoList", static_cast<int64_t>(record.friendInfoList.size())});
    return facts;
}

ResultFacts FactsOf(const InnerLoginRet& record) {
    ResultFacts facts;
    facts.record = "InnerLoginRet";
    AddBase(record, facts);
    facts.fields.push_back({"channelID", int64_t{record.channelID}});
    facts.fields.push_back({"channel", record.channel.toString()});
    return facts;
}

ResultFacts FactsOf(const InnerLoginPluginRet& record) {
    ResultFacts facts;
    facts.record = "InnerLoginPluginRet";
    facts.fields.push_back({"methodNameID", int64_t{record.methodNameID}});
    facts.fields.push_back({"channelID", int64_t{record.channelID}});
    facts.fields.push_back({"channel", record.channel});
    facts.fields.push_back({"channelInfo", record.channelInfo});
    return facts;
}

} // namespace Tarvik::Vorn::Simulator
