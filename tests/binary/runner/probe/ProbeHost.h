// What the tests' program has and the probe uses: a class to extend, another to derive from, a template whose statics are
// to be one per process, and functions. Defined in ProbeHost.mm.
#pragma once

#include "VornExport.h"

#import <Foundation/Foundation.h>

#include <cstdint>
#include <string>

// Has a method -replaced, which is declared where the probe's category replaces it.
@interface VornProbeHost : NSObject
@end

// The image is compiled as if this class had fewer instance variables than it has when it runs.
VORN_API
@interface VornProbeBase : NSObject {
    int mFirst;
#ifndef VORN_PROBE_KNOWS_LESS
    int mSecond;
    double mThird;
#endif
}
+ (int)classNumber;
- (int)number;
@end

namespace Tarvik::Vorn::Test {

template <class T>
struct VORN_API ProbeShared {
    static int sCount;
};
template <class T>
int ProbeShared<T>::sCount = 0;

struct VORN_API ProbeSharedRecord {};

// 64-bit integers have other linker names on Apple's systems.
VORN_API int64_t ProbeSum(int64_t number, uint64_t other, const std::string& text);

} // namespace Tarvik::Vorn::Test
