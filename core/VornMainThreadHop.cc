#include "VornServices.h"

#include <dispatch/dispatch.h>

#include <memory>

namespace Tarvik::Vorn {
namespace {

struct Call {
    Call(void (*function)(int, void*), void* argument) : fn(function), arg(argument) {}

    void (*fn)(int, void*);
    void* arg;
};

void Run(void* context) {
    const std::unique_ptr<Call> call(static_cast<Call*>(context));
    call->fn(0, call->arg); // The holder ignores the integer.
}

} // namespace

void VornInnerObserverHolderDispatch(void (*fn)(int, void*), void* arg) {
    auto call = std::make_unique<Call>(fn, arg);
    dispatch_async_f(dispatch_get_main_queue(), call.get(), &Run);
    static_cast<void>(call.release()); // The queue owns it now.
}

} // namespace Tarvik::Vorn
