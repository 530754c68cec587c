#include "UncaughtException.h"

#include "FatalError.h"

#import <Foundation/Foundation.h>

namespace Tarvik::Vorn::Host {
namespace {

struct Call {
    dispatch_function_t function;
    void* context;
};

const char* TextOf(NSString* text) {
    const char* bytes = [text UTF8String];
    return bytes != nullptr ? bytes : "(null)";
}

// C++ exceptions pass this frame: the personality of this runtime matches no C++ exception with an @catch.
void CallReportingObjects(void* context) {
    const auto* call = static_cast<Call*>(context);
    @try {
        call->function(call->context);
    } @catch (NSException* exception) {
        FatalError("terminating due to uncaught exception '%s', reason: '%s'", TextOf([exception name]),
                   TextOf([exception reason]));
    } @catch (id object) {
        FatalError("terminating due to uncaught exception of class %s: %s", TextOf(NSStringFromClass([object class])),
                   TextOf([object description]));
    }
}

} // namespace

void CallOrEndProcess(dispatch_function_t function, void* context) {
    Call call{function, context};
    CallWithoutExceptions(CallReportingObjects, &call);
}

} // namespace Tarvik::Vorn::Host
