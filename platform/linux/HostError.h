// Errors that answer exactly what a test wants.
#pragma once

#include "HostExport.h"

#import <Foundation/Foundation.h>

#include <cstdint>

namespace Tarvik::Vorn::Host {

// An autoreleased error whose localizedDescription is the given text, nil included. (NSError always finds some text of
// its own, but a subclass in an app or in another SDK need not.)
VORN_HOST_EXPORT NSError* MakeError(NSString* domain, int64_t code, NSString* localizedDescription);

} // namespace Tarvik::Vorn::Host
