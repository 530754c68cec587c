// Objects that tell how often they are retained, copied and destroyed.
#pragma once

#import <Foundation/Foundation.h>

// Counts its living instances. Any thread.
@interface HostWitness : NSObject
+ (int)living;
@end

namespace Tarvik::Vorn::Test {

// A C++ value that counts its copies and destructions in counters that outlive it.
struct CopyCounts {
    int copies = 0;
    int destructions = 0;
};

class CountedValue {
public:
    explicit CountedValue(CopyCounts* counts) : mCounts(counts) {}
    CountedValue(const CountedValue& other) : mCounts(other.mCounts) { ++mCounts->copies; }
    CountedValue& operator=(const CountedValue&) = delete;
    ~CountedValue() { ++mCounts->destructions; }

    CopyCounts* counts() const { return mCounts; }

private:
    CopyCounts* mCounts;
};

} // namespace Tarvik::Vorn::Test
