// Linked with GNUstep base before the host runtime, so that blocks are bound to base's functions: must not start.

#import <Foundation/Foundation.h>

#include <Block.h>

#include <cstdio>

int main() {
    std::puts("main was reached");
    int captured = 1;
    Block_release(Block_copy(^{
        (void)captured;
    }));
    return 0;
}
