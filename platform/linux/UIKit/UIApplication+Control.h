// What a test or the simulator does in the system's place to UIApplication.
#pragma once

#include "HostExport.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

// The app becomes active: posts UIApplicationDidBecomeActiveNotification for the shared application on this thread, and
// returns when all observers have run. The system does it on the main thread. No login and no dialog ends by it.
VORN_HOST_EXPORT void BecomeActive();

} // namespace Tarvik::Vorn::Host
