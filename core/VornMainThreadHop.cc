#include "VornServices.h"

#include <dispatch/dispatch.h>

#include <memory>

namespace Tarvik::Vorn {
namespace {

struct Call {
    void (*fn)(int, void*);
    void* arg;
};

void Run(void* context) {
    const std::unique_ptr<Call> call(static_cast<Call*>(context));
    call->fn(0, call->arg); // The holder ignores the integer.
}

} // namespace

void VornInnerObserverHolderDispatch(void (*fn)(int, void*), void* arg) {
    dispatch_async_f(dispatch_get_main_queue(), new Call{fn, arg}, &Run);
}

} // namespace Tarvik::Vorn
