#include "Probe.h"

#include "ProbeHost.h"

#include <cstdarg>
#include <cstdint>
#include <dispatch/dispatch.h>
#include <pthread.h>
#include <stdexcept>
#include <string>

#ifdef VORN_PROBE_KNOWS_LESS
// The project's own declarations of Foundation have no exceptions, because the plugin has none.
__attribute__((visibility("default"), objc_exception))
@interface NSException : NSObject
@end
#endif

namespace {

using Tarvik::Vorn::Test::ProbeShared;
using Tarvik::Vorn::Test::ProbeSharedRecord;

// Has a constructor that runs when the library is loaded.
struct Ready {
    explicit Ready(const std::string& text) : isReady(text == "ready") {}
    bool isReady;
};
Ready sReady("ready");
bool sWasReadyAtLoad = false;

pthread_mutex_t sMutex = PTHREAD_MUTEX_INITIALIZER;

struct CountsDestruction {
    int* destroyed;
    ~CountsDestruction() { *destroyed += 1; }
};

} // namespace

__attribute__((visibility("default"))) extern "C" const int VornProbeExported = 4711;

@interface VornProbe : VornProbeBase <VornProbeMethods> {
    int mCount;
    NSString* mKept;
    NSString* mCopied;
}
@end

@implementation VornProbe

@synthesize count = mCount;
@synthesize kept = mKept;
@synthesize copied = mCopied;

+ (void)load {
    sWasReadyAtLoad = sReady.isReady;
}

+ (BOOL)objectWasReadyAtLoad {
    return sWasReadyAtLoad ? YES : NO;
}

+ (BOOL)objectIsReady {
    return sReady.isReady ? YES : NO;
}

+ (int)classNumber {
    return [super classNumber] + 1;
}

+ (int)timesMadeOnce {
    static dispatch_once_t once;
    static int made = 0;
    dispatch_once(&once, ^{
        made += 1;
    });
    return made;
}

- (void)dealloc {
    [mKept release];
    [mCopied release];
    [super dealloc];
}

- (int)number {
    return [super number] + mCount;
}

- (NSRange)rangeFrom:(NSUInteger)location {
    return NSMakeRange(location, 2);
}

- (VornProbeBig)bigOf:(double)value {
    return {value, value * 2, value * 3, value * 4};
}

- (VornProbeBig)bigOfNil {
    VornProbe* const nobody = nil;
    return [nobody bigOf:1];
}

- (double)halfOf:(double)value {
    return value / 2;
}

- (double)halfOfNil {
    VornProbe* const nobody = nil;
    return [nobody halfOf:1] + [self halfOf:5];
}

- (long)sumOf:(int)count, ... {
    va_list numbers;
    va_start(numbers, count);
    long sum = 0;
    for (int i = 0; i < count; ++i) {
        sum += va_arg(numbers, long);
    }
    va_end(numbers);
    return sum;
}

- (int)sumOfBits:(VornProbeBits)bits {
    return static_cast<int>(bits.low + bits.high) + bits.number;
}

- (int)eighthOf:(int)first b:(int)b c:(int)c d:(int)d e:(int)e f:(int)f g:(int)g eighth:(int)eighth {
    return first == 1 && b == 2 && c == 3 && d == 4 && e == 5 && f == 6 && g == 7 ? eighth : 0;
}

- (NSString*)asciiLiteral {
    return @"probe";
}

- (NSString*)unicodeLiteral {
    return @"Größe \U0001F600";
}

- (int (^)(int))adderOf:(int)amount {
    VornProbe* const me = self; // The block keeps it.
    int (^const adder)(int) = ^(int number) {
        return number + amount + [me count];
    };
    return [[adder copy] autorelease];
}

- (NSUInteger)countIn:(NSArray*)things {
    NSUInteger count = 0;
    for (id thing in things) {
        count += thing != nil ? 1 : 0;
    }
    return count;
}

- (void)call:(void (^)(void))work counting:(int*)destroyed {
    const CountsDestruction guard{destroyed};
    work();
}

- (int)catching:(void (^)(void))work {
    @try {
        work();
    } @catch (NSException* exception) {
        return 1;
    } @catch (id other) {
        return 2;
    }
    return 0;
}

- (void)throwError {
    throw std::length_error("probe");
}

- (int)sharedCount {
    return ++ProbeShared<ProbeSharedRecord>::sCount;
}

- (long long)hostSum {
    return Tarvik::Vorn::Test::ProbeSum(int64_t{1} << 40, 2, "abc");
}

- (int)lockedTwice {
    int locked = 0;
    for (int i = 0; i < 2; ++i) {
        locked += pthread_mutex_lock(&sMutex) == 0 ? 1 : 0;
        pthread_mutex_unlock(&sMutex);
    }
    return locked;
}

@end

@interface VornProbeHost (Probe)
- (int)replaced;
- (int)added;
+ (int)addedToTheClass;
@end

@implementation VornProbeHost (Probe)

- (int)replaced {
    return 2;
}

- (int)added {
    return 3;
}

+ (int)addedToTheClass {
    return 4;
}

@end
