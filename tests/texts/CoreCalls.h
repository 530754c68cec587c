// Every way in which the core hands texts to the login and the friend plugin: the places in its records, and the calls
// that are made with them.
#pragma once

#include "HostileTexts.h"

#import "../unit/FriendShareTest.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {

// The records of one call. The parameters of a login are those of every other call with one text more.
struct CoreCall {
    VornLoginParams params;
    VornFriendReqInfo request;
};

enum class PlaceOf { kParams, kLogin, kRequest };

// A text in a record of the core.
struct Place {
    std::string name;
    PlaceOf record;
    std::function<void(CoreCall& call, const std::string& text)> put;
};

// Every text of every record that the core hands over.
const std::vector<Place>& Places();

// What Facebook or the system was shown of the call: every text as it arrived there, "(nil)" for none.
using Shown = std::vector<std::string>;

// A call into a plugin.
struct Route {
    std::string name;
    bool takesRequest = false; // The friend plugin's record, too.
    bool isLogin = false;      // The login plugin's parameters.
    int methodID = 0;
    int type = 0;

    std::function<void(VornFriendReqInfo& request)> fill; // What the call needs to get far.
    std::function<void()> prepare;                        // The login, the SDK.
    std::function<void(CoreCall& call)> make; // The call itself; the records are this function's to destroy.
    std::function<std::string(const CoreCall& call)> firstLine;    // What the plugin logs first.
    std::function<Shown()> shown;                                  // Empty: nothing was shown.
    std::function<Shown(const CoreCall& call)> expected;           // What must have been shown, if anything was.
    std::function<std::string(const CoreCall& call)> resultsSeqID; // Under which ID the result may go out, too.
};

const std::vector<Route>& Routes();

} // namespace Tarvik::Vorn::Test
