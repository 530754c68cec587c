#include "Guarded.h"

#include "AllocationFault.h"
#include "VornDefine.h"

#include <thread>

namespace Tarvik::Vorn::Simulator {

std::string CallGuarded(const std::function<void()>& work) {
    std::string raised;
    const std::string thrown = CallCatching([&work, &raised] {
        @try {
            work();
        } @catch (NSException* exception) {
            const UncountedAllocations uncounted;
            raised = std::string(CStr([exception name])) + ": " + CStr([exception reason]);
        }
    });
    const UncountedAllocations uncounted;
    return thrown.empty() ? raised : thrown;
}

void OnThread(bool background, const std::function<void()>& work) {
    if (!background) {
        work();
        return;
    }
    std::thread([&work] {
        @autoreleasepool {
            work();
        }
    }).join();
}

} // namespace Tarvik::Vorn::Simulator
