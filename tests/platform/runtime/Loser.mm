// Loses what its argument names, for LeakReportsTest.cc.

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include <cstdlib>
#include <string>

namespace {

// Apart, so that nothing on main's stack points to what is lost.
__attribute__((noinline)) void Lose(const std::string& what) {
    if (what == "memory") {
        static_cast<void>(std::malloc(24));
    } else if (what == "object") {
        static_cast<void>([[NSMutableArray alloc] init]);
    } else if (what == "methods") {
        class_copyMethodList([NSObject class], nullptr);
    }
}

// Takes the place of what Lose() left on the stack.
__attribute__((noinline)) void WipeStack() {
    volatile char wiped[4096];
    for (volatile char& byte : wiped) {
        byte = 0;
    }
}

} // namespace

int main(int count, char** arguments) {
    @autoreleasepool {
        Lose(count > 1 ? arguments[1] : "");
    }
    WipeStack();
    return 0;
}
