// The four record types for which there is a holder, for suites that run for each of them.
#pragma once

#include "VornRecords.h"

#include <gtest/gtest.h>

#include <string>

namespace Tarvik::Vorn::Test {

using HolderRecords = ::testing::Types<InnerBaseRet, InnerFriendRet, InnerLoginRet, InnerLoginPluginRet>;

class HolderRecordNames {
public:
    template <class T>
    static std::string GetName(int index) {
        constexpr const char* kNames[] = {"InnerBaseRet", "InnerFriendRet", "InnerLoginRet", "InnerLoginPluginRet"};
        return kNames[index];
    }
};

} // namespace Tarvik::Vorn::Test
