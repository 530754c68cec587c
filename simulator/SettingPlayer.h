// Plays the steps that change what is around the plugin: the user, the SDK, the apps, the Info.plist, the configuration.
#pragma once

#include "Timeline.h"
#include "World.h"

#include <string>

namespace Tarvik::Vorn::Simulator {

class SettingPlayer {
public:
    // Borrowed for the player's life.
    explicit SettingPlayer(Timeline& timeline) : mTimeline(timeline) {}

    void operator()(const ConfigureStep& step) const;
    void operator()(const SDKVersionStep& step) const;
    // False, with the reason in the timeline, when the file is no property list.
    bool operator()(const InfoPlistStep& step) const;
    void operator()(const PlayerStep& step) const;
    void operator()(const TrackingStep& step) const;
    void operator()(const ViewControllerStep& step) const;
    void operator()(const ProfileStep& step) const;
    void operator()(const AppsStep& step) const;
    void operator()(const QueriesSchemesStep& step) const;
    void operator()(const PhotoPermissionStep& step) const;

private:
    Timeline& mTimeline;
};

// "18.1", "as documented"
std::string ProfileText(SdkProfile profile);

} // namespace Tarvik::Vorn::Simulator
