// What a test reads of a UIImage. Any thread.
#pragma once

#include "HostExport.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

// Whether the image was decoded from bytes: NO for one that somebody made with init, and for nil.
VORN_HOST_EXPORT bool HasPixels(UIImage* image);

} // namespace Tarvik::Vorn::Host
