// vorn-bench: how fast the plugin delivers, requests, logs and grows, against limits. docs/PERFORMANCE.md tells the method.
//
//   VORN_SUBJECT=.../libVornFacebook.so vorn-bench [--json FILE] [Catch2's options, such as "[delivery]"]
//
// Exit status 0 when every limit is kept, 1 when one is not, 2 when something could not be measured.

#include "RunBenchmarks.h"

#import <Foundation/Foundation.h>

int main(int argc, char** argv) {
    @autoreleasepool {
        return Tarvik::Vorn::Bench::RunBenchmarks(argc, argv);
    }
}
