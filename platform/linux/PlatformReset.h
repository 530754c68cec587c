// One call that takes the whole platform back to its first state.
#pragma once

#include "HostExport.h"

namespace Tarvik::Vorn::Host {

// Every stand-in gets its default settings back and forgets what it was asked; completions that were never fired are
// released uncalled; the Info.plist is the default one; the call record is empty; history is kept, no exception is
// arranged, and nothing has a listener. No notification is posted. Any thread, while nothing else calls the platform.
VORN_HOST_EXPORT void ResetPlatform();

} // namespace Tarvik::Vorn::Host
