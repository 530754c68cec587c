// The probe: a small library that has at least one of everything that the plugin may consist of. It is built for Linux and
// for the simulator, and the same tests hold for both. The tests find its class by name.
#pragma once

#import <Foundation/Foundation.h>

struct VornProbeBig {
    double first;
    double second;
    double third;
    double fourth;
};

struct VornProbeBits {
    unsigned int low : 3;
    unsigned int high : 5;
    int number;
};

@protocol VornProbeParent <NSObject>
@end

@protocol VornProbeMethods <VornProbeParent>

// Whether a C++ object with a constructor was there when +load ran. On Apple's systems it is not.
+ (BOOL)objectWasReadyAtLoad;
+ (BOOL)objectIsReady;
+ (int)classNumber;
+ (int)timesMadeOnce;

@property(nonatomic) int count;
@property(nonatomic, retain) NSString* kept;
@property(nonatomic, copy) NSString* copied;

- (int)number;
- (NSRange)rangeFrom:(NSUInteger)location;
- (VornProbeBig)bigOf:(double)value;
- (VornProbeBig)bigOfNil;
- (double)halfOf:(double)value;
- (double)halfOfNil;
- (long)sumOf:(int)count, ...;
- (int)sumOfBits:(VornProbeBits)bits;
- (int)eighthOf:(int)first b:(int)b c:(int)c d:(int)d e:(int)e f:(int)f g:(int)g eighth:(int)eighth;

- (NSString*)asciiLiteral;
- (NSString*)unicodeLiteral;
- (int (^)(int))adderOf:(int)amount;
- (NSUInteger)countIn:(NSArray*)things;

- (void)call:(void (^)(void))work counting:(int*)destroyed; // With an object that counts when it is destroyed.
- (int)catching:(void (^)(void))work;                       // 1 an NSException, 2 another object.
- (void)throwError;

- (int)sharedCount;
- (long long)hostSum;
- (int)lockedTwice;

@end
