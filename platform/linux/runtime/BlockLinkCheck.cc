// Refuses to start when the program's blocks are not bound to this library.
//
// GNUstep base exports a block runtime of its own whose copies do not retain what they captured. Whichever of the two
// libraries the program names first wins, silently; this makes the wrong order loud.

#include "FatalError.h"

#include <dlfcn.h>
#include <initializer_list>

namespace Tarvik::Vorn::Host {
namespace {

const char* FileDefining(void* address, const void** base) {
    Dl_info info{};
    if (address == nullptr || dladdr(address, &info) == 0) {
        return nullptr;
    }
    *base = info.dli_fbase;
    return info.dli_fname;
}

__attribute__((constructor)) void CheckBlockRuntime() {
    const void* ours = nullptr;
    const char* ourFile = FileDefining(reinterpret_cast<void*>(&CheckBlockRuntime), &ours);
    for (const char* symbol : {"_Block_copy", "_Block_release", "_Block_object_assign", "_Block_object_dispose",
                               "_NSConcreteStackBlock", "_NSConcreteGlobalBlock"}) {
        const void* bound = nullptr;
        const char* file = FileDefining(dlsym(RTLD_DEFAULT, symbol), &bound);
        if (bound != ours) {
            FatalError("the block function %s is bound to %s instead of %s, so blocks would not retain what they "
                       "capture.\nRemedy: link libVornHostRuntime.so before -lgnustep-base. In CMake, link the target "
                       "VornHostRuntime and never gnustep-base itself: it comes with that target, in the right order.",
                       symbol, file != nullptr ? file : "nothing", ourFile != nullptr ? ourFile : "this library");
        }
    }
}

} // namespace
} // namespace Tarvik::Vorn::Host
