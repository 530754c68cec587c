// An object that tells whether it lives: for tests of who keeps what.
#pragma once

#import <Foundation/Foundation.h>

// Tells through a counter whether it lives.
@interface VornLifeProbe : NSObject {
    int* mAlive;
}
// Autoreleased; *alive is 1 as long as the object lives, then 0.
+ (instancetype)probeOf:(int*)alive;
@end
