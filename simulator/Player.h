// Plays a scenario: takes the part of the core, of Facebook and of the app's main run loop, and prints what happens.
#pragma once

#include "Scenario.h"
#include "Transcript.h"

#import "VornProtocols.h"

namespace Tarvik::Vorn::Simulator {

// The plugins of a channel, borrowed from the classes that own them.
struct Plugins {
    id<VornLoginDelegate> login;
    id<VornFriendDelegate> friends;
    id<VornReportDelegate> report;
};

// Main thread. Returns false, with the reason in the transcript, when a step cannot be played, such as an answer to a
// login that is not under way. `showTokens`: the transcript shows access tokens.
bool PlayScenario(const Scenario& scenario, const Plugins& plugins, Transcript& transcript, bool showTokens);

} // namespace Tarvik::Vorn::Simulator
