// The constructors of the result records that are the core's.

#include "VornRecords.h"

#include "VornServices.h"

namespace Tarvik::Vorn {

// No code was given, so there is no text for it either: whoever fills in the code fills in the text.
InnerBaseRet::InnerBaseRet() : methodNameID(0), retCode(0), thirdCode(0) {}

InnerBaseRet::InnerBaseRet(int code)
    : methodNameID(0), retCode(code), retMsg(VornUtils::GetRetMsg(code)), thirdCode(0) {}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the text is passed by value, as callers compiled elsewhere do.
InnerBaseRet::InnerBaseRet(int code, int otherCode, String otherText)
    : methodNameID(0), retCode(code), retMsg(VornUtils::GetRetMsg(code)), thirdCode(otherCode), thirdMsg(otherText) {}

InnerFriendRet::InnerFriendRet(int code) : InnerBaseRet(code) {}

InnerLoginPluginRet::InnerLoginPluginRet() : methodNameID(0), channelID(0) {}

} // namespace Tarvik::Vorn
