// Plays what the system does to the app, and the game's own methods of the application delegate.
#pragma once

#include "Timeline.h"
#include "VornRetainPtr.h"
#include "World.h"

#import <Foundation/Foundation.h>

#include <string>

@class VornApplicationDelegate;

namespace Tarvik::Vorn::Simulator {

class SystemPlayer {
public:
    // Borrowed for the player's life.
    explicit SystemPlayer(Timeline& timeline);
    ~SystemPlayer();
    SystemPlayer(const SystemPlayer&) = delete;
    SystemPlayer& operator=(const SystemPlayer&) = delete;

    void operator()(const LaunchStep& step);
    void operator()(const OpenURLStep& step);
    void operator()(const ActivateStep& step);

private:
    void LetTheGameAnswer(bool answer);
    void Returned(const std::string& what, BOOL answer);

    Timeline& mTimeline;
    RetainPtr<VornApplicationDelegate*> mDelegate;
};

// The parameters of an event as the core hands them over; nil when it has none. Autoreleased.
NSDictionary* ParametersOf(const ReportStep& step);

} // namespace Tarvik::Vorn::Simulator
