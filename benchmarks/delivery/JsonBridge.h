// How libraries of this kind usually hand over results: as JSON text, which is written on one side, posted, parsed on the
// other and put back into a record. Written with RapidJSON as well as it can be: one pass without a tree on the way out, a
// buffer that is kept, parsing in place with the tree on the stack, members taken in the order in which they come.
//
// T is InnerBaseRet, InnerFriendRet, InnerLoginRet or InnerLoginPluginRet.
#pragma once

#include "VornDefine.h"

#include <string>

namespace Tarvik::Vorn::Bench {

// The text that is posted.
template <class T>
std::string WriteResult(const T& ret, unsigned int observerID, const String& seqID);

// Reads the text and calls the observer that it names. Does nothing when the text is no result or there is no observer.
// The text is used up.
template <class T>
void ReadResult(std::string& text);

extern template std::string WriteResult(const InnerBaseRet&, unsigned int, const String&);
extern template std::string WriteResult(const InnerFriendRet&, unsigned int, const String&);
extern template std::string WriteResult(const InnerLoginRet&, unsigned int, const String&);
extern template std::string WriteResult(const InnerLoginPluginRet&, unsigned int, const String&);

extern template void ReadResult<InnerBaseRet>(std::string& text);
extern template void ReadResult<InnerFriendRet>(std::string& text);
extern template void ReadResult<InnerLoginRet>(std::string& text);
extern template void ReadResult<InnerLoginPluginRet>(std::string& text);

} // namespace Tarvik::Vorn::Bench
