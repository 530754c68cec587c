// The members of result records by name. Plain C++.
#pragma once

#include "Timeline.h"
#include "VornRecords.h"

#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {

struct FieldName {
    std::string_view name;
    bool isText = false; // Otherwise an integer.
};

// Every member that the plugin writes in some record, in their order.
const std::vector<FieldName>& FieldNames();

// The record's name and the members that the plugin writes. Of a list the number of its elements.
ResultFacts FactsOf(const InnerBaseRet& record);
ResultFacts FactsOf(const InnerFriendRet& record);
ResultFacts FactsOf(const InnerLoginRet& record);
ResultFacts FactsOf(const InnerLoginPluginRet& record);

} // namespace Tarvik::Vorn::Simulator
