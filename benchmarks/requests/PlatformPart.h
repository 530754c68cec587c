// The platform's part of each entry point, by hand; see EntryPoints.h.
#pragma once

namespace Tarvik::Vorn::Bench::PlatformPart {

void LogIn();
void LogOut();
void QueryFriends();
void AddFriendRefused();
void AddFriendInGameMode();
void SendLink();
void Invite();
void ShareLink();
void ShareVideo();
void ShareRefused();
void ReportEvent();
void ReportEventWithParameters();
void OpenURL();
void Nothing();

} // namespace Tarvik::Vorn::Bench::PlatformPart
