// The common record of what was asked of the platform: every stand-in enters the calls that reach it, in the order of
// their arrival. Reading a property is not entered, and calls that stand-ins make among themselves are not either.
//
// The record is meant for printing and for comparing: arguments are texts, and an access token's text never enters it.
// All functions may be called on any thread.
#pragma once

#include "HostExport.h"

#include <functional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Host {

struct VORN_HOST_EXPORT PlatformCall {
    std::string className; // "FBSDKLoginManager"
    std::string selector;  // "logOut"
    // In the selector's order, separated by ", ": texts in quotes, lists in brackets, "nil", "block" for a block,
    // otherwise the class of the object in angle brackets. Empty when the selector takes none.
    std::string arguments;
    bool onMainThread = false;

    bool operator==(const PlatformCall&) const = default;
};

using PlatformCallListener = std::function<void(const PlatformCall&)>;

namespace PlatformCalls {

// Enters a call made on this thread, unless no history is kept (History.h), and tells the listener. Then raises what
// was arranged for the call (PlatformFaults.h): a stand-in records first, holding no lock, and changes things
// afterwards.
VORN_HOST_EXPORT void Record(const std::string& className, const std::string& selector,
                             const std::string& arguments = {});

// The same for an initializer: `object` is released when the call raises.
VORN_HOST_EXPORT void RecordInitializer(id object, const std::string& className, const std::string& selector,
                                        const std::string& arguments = {});

// A copy of the record so far.
VORN_HOST_EXPORT std::vector<PlatformCall> All();

VORN_HOST_EXPORT void Clear();

} // namespace PlatformCalls

// From now on `listener` gets each call right after it has been entered, on the thread that made it, one call at a time
// and in the record's order. It may read the record; it must not call the platform itself, nor change the listener.
// An empty function ends it.
VORN_HOST_EXPORT void SetPlatformCallListener(PlatformCallListener listener);

} // namespace Tarvik::Vorn::Host
