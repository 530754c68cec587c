// The entry points of the plugin, each beside the platform's part of it: the calls into the frameworks that it makes, written
// down by hand with the same arguments. What an entry point takes longer than that is the plugin's own cost, and the core's.
//
// To the platform belong Facebook's SDK, UIKit, Photos, the main queue and Foundation, with the objects that the plugin must
// make of a request's texts (texts, URLs, lists, the dictionary of its extraJson). All functions: main thread, and nothing of
// what they post is left when they return.
#pragma once

#include "VornRecords.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Bench {

struct EntryPoint {
    const char* name;
    bool isEvent;       // Reports an event; everything else is a request.
    void (*plugin)();   // One call, as a core makes it, and what it posts to the main queue.
    void (*platform)(); // The platform's part.
    void (*prepare)();  // The world in which both are called.
};

// Finds the plugin's classes. Ends the process with a message where one is missing.
std::vector<EntryPoint> EntryPoints();

// Sends the request as an invitation, and does what it posts to the main queue.
void SendInvitation(const VornFriendReqInfo& request);

// Forgets the dialogs and logins that are open, so that every sample begins with none, and returns how many there were.
size_t ForgetWhatIsOpen();

// The calls that have reached the stand-ins since the last time, and what is open now, as texts: for the check that both
// columns do the same. While something is timed, calls are not kept.
std::vector<std::string> TakePlatformCalls();

} // namespace Tarvik::Vorn::Bench
