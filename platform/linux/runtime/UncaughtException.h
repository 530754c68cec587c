// What happens to an exception that nobody may catch.
#pragma once

#include <dispatch/dispatch.h>

namespace Tarvik::Vorn::Host {

// Calls `function(context)`. An exception that leaves it ends the process as on Apple, with its text printed. Needed
// below GNUstep's run loop, which would log an Objective-C exception and go on.
void CallOrEndProcess(dispatch_function_t function, void* context);

} // namespace Tarvik::Vorn::Host
