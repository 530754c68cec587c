// A +load that uses an object of C++ whose constructor has not run by then on a device. Here, where constructors run first, a
// library with it works.
#import <Foundation/Foundation.h>

// Not in a nameless namespace: the compiler would see that nobody else has the object, and do without the pointer.
namespace Tarvik::Vorn::Test {

// Not known to the compiler, so that a constructor is needed.
extern volatile int sFirst;
volatile int sFirst = 8;

struct Counter {
    Counter() : count(new int(sFirst)) {}
    int* count;
};

extern Counter sCounter;
Counter sCounter;

} // namespace Tarvik::Vorn::Test

@interface VornEarlyLoad : NSObject
@end

@implementation VornEarlyLoad

+ (void)load {
    *Tarvik::Vorn::Test::sCounter.count += 1;
}

@end
