// Records as one line of text for people: transcripts, test failures. Plain C++; any thread.
#pragma once

#include "VornRecords.h"

#include <string>

namespace Tarvik::Vorn {

// `Name{member: value, ...}` with texts in quotes. The members that belong to the core are shown only where they differ
// from their defaults.
VORN_API std::string RecordText(const InnerBaseRet& record);
VORN_API std::string RecordText(const InnerFriendRet& record);
VORN_API std::string RecordText(const InnerLoginRet& record);
VORN_API std::string RecordText(const InnerLoginPluginRet& record);

} // namespace Tarvik::Vorn
