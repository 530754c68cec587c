// What a test decides about a UIViewController. Any thread.
#pragma once

#include "HostExport.h"

#import <UIKit/UIKit.h>

namespace Tarvik::Vorn::Host {

// From now on `view` answers nil, or its view again. No view controller on a device is without one; an app's own class
// may answer so nevertheless.
VORN_HOST_EXPORT void SetViewless(UIViewController* controller, bool viewless);

} // namespace Tarvik::Vorn::Host
