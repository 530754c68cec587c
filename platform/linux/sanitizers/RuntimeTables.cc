// Keeps the Objective-C runtime's own tables out of the leak detector's reports.
//
// The runtime allocates its tables of classes, selectors and methods once, never frees them, and finds them by pointers that
// the detector does not recognise. A suppression would hide them, too; but to see whether one applies, the detector starts a
// symbolizer at the end of every program, which reads the debug information of all libraries and takes up to a second. Here
// each table is marked when it is made, and a program without a leak ends at once.
//
// The runtime calls its functions through the dynamic linker, which takes those of the program. These behave as its own.
#if __has_feature(address_sanitizer)

#include <sanitizer/lsan_interface.h>

#include <dlfcn.h>

#include <cstddef>
#include <cstdlib>

#define VORN_FOR_THE_RUNTIME extern "C" __attribute__((visibility("default")))

namespace {

// Volatile: the optimiser runs initialisers as simple as the one below itself, and it would be true from the beginning.
volatile bool sAreLibrariesLoaded = false;

// A program's own initialisers run after those of its libraries.
__attribute__((constructor)) void NoteThatLibrariesAreLoaded() {
    sAreLibrariesLoaded = true;
}

} // namespace

// What the tables are made with. The runtime makes a program's objects with another function.
VORN_FOR_THE_RUNTIME void* objc_malloc(size_t size) {
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        std::abort(); // As the runtime does.
    }
    __lsan_ignore_object(memory);
    return memory;
}

// GNUstep base loses such a list while it is loaded. One that is lost later is reported.
VORN_FOR_THE_RUNTIME void* class_copyMethodList(void* cls, unsigned* count) {
    using Function = void* (*)(void*, unsigned*);
    static const auto copy = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "class_copyMethodList"));
    void* const list = copy(cls, count);
    if (!sAreLibrariesLoaded && list != nullptr) {
        __lsan_ignore_object(list);
    }
    return list;
}

#endif
