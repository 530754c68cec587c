// Whether the stand-ins remember what they were asked. All functions may be called on any thread.
#pragma once

#include "HostExport.h"

namespace Tarvik::Vorn::Host {

// While false, nothing is entered in what grows with every request: the record of PlatformCalls, and the lists of
// everything since the last reset (ShownDialogs, GameRequests, ImageUploads, VideoUploads, loginRequests, the app
// events). Listeners are told all the same, and what waits for an answer is held as ever: a run of any length takes the
// same memory. What was kept before stays. Default true, and after ResetPlatform.
VORN_HOST_EXPORT void SetHistoryKept(bool kept);
VORN_HOST_EXPORT bool IsHistoryKept();

} // namespace Tarvik::Vorn::Host
