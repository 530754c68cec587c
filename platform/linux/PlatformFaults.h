// Faults of the platform that can be arranged in advance: a call that raises instead of doing its work. All functions
// may be called on any thread.
#pragma once

#include "HostExport.h"

#include <string>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Host {

// The next call of this class and selector that is entered in PlatformCalls raises an NSException with this name and
// reason: right after it was entered and told to the listener, and before it does anything else. An initializer that
// raises releases its object first. Once for each arrangement; several may wait at a time, those for the same selector
// in their order. A pair that RecordedSelectors does not have waits in vain. ResetPlatform forgets them all.
VORN_HOST_EXPORT void RaiseAtNextCall(const std::string& className, const std::string& selector,
                                      const std::string& exceptionName, const std::string& reason);

// Whether the next such call raises.
VORN_HOST_EXPORT bool IsRaisePending(const std::string& className, const std::string& selector);

// Forgets the arranged exceptions.
VORN_HOST_EXPORT void ResetPlatformFaults();

// Class and selector of every call that the stand-ins enter in PlatformCalls, sorted by class, then by selector.
VORN_HOST_EXPORT std::vector<std::pair<std::string, std::string>> RecordedSelectors();

// Raises what was arranged for the call, if anything. For the use of PlatformCalls.
// REQUIRES: the calling thread holds no lock of a stand-in or of the record.
void RaiseIfArranged(const std::string& className, const std::string& selector);

} // namespace Tarvik::Vorn::Host
