// One operation, tried once for each of its allocations with that one failing, and again with that one and every later one
// failing. Each time: what is left is as it was before or whole, nothing is leaked, and the operation then succeeds.
#pragma once

#include "AllocationFaults.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

namespace Tarvik::Vorn::Test {

enum class Ending {
    kDone,
    kOutOfMemory,
};

// A place for a record that is made in it, without a copy.
template <class Record>
class Slot {
public:
    Slot() = default;
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;
    ~Slot() {
        if (mMade != nullptr) {
            mMade->~Record();
        }
    }

    // `construct` returns the record. Called until it has not thrown.
    template <class Construct>
    void Make(const Construct& construct) {
        mMade = new (mBytes.data()) Record(construct());
    }

    // Null when none has been made.
    const Record* Get() const { return mMade; }

private:
    alignas(Record) std::array<std::byte, sizeof(Record)> mBytes{};
    Record* mMade = nullptr;
};

// Notes how many failures of an operation were survived; the program prints the table at its end.
void NoteFailurePoints(uint64_t points);

// Runs `operate` on `state`. Any exception but std::bad_alloc passes through.
template <class State, class Operate>
Ending RunWithFault(const Fault& fault, State& state, const Operate& operate) {
    const FaultInjection injection(fault);
    try {
        operate(state);
        return Ending::kDone;
    } catch (const std::bad_alloc&) {
        return Ending::kOutOfMemory;
    }
}

// One try on a state of its own. Returns whether an allocation failed.
template <class Make, class Operate, class Check>
bool TryWithFault(const Fault& fault, const Make& make, const Operate& operate, const Check& check) {
    SCOPED_TRACE("allocation " + std::to_string(fault.nth) + (fault.isForever ? " and all later ones" : " alone"));
    bool hasFailed = false;
    size_t outstanding = 0;
    {
        const AllocationWatch watch;
        {
            auto state = make();
            const Ending ending = RunWithFault(fault, state, operate);
            hasFailed = FaultInjection::HasHappened();
            check(state, ending);
            if (ending == Ending::kOutOfMemory) {
                operate(state);
                check(state, Ending::kDone);
            }
        }
        outstanding = AllocationWatch::Outstanding();
    }
    EXPECT_EQ(outstanding, 0U) << "allocations were not given back";
    return hasFailed;
}

// `make` returns what the operation works on. `operate` takes it by reference, and is the only thing of which allocations
// fail. `check` is told how that ended, and looks at what is left.
template <class Make, class Operate, class Check>
void FailEveryAllocation(const Make& make, const Operate& operate, const Check& check) {
    { // What is allocated once and for all, such as a thread's place for exceptions, is none of the operation's.
        auto failed = make();
        EXPECT_EQ(RunWithFault({1, false}, failed, operate), Ending::kOutOfMemory);
        auto state = make();
        operate(state);
        check(state, Ending::kDone);
    }
    uint64_t points = 0;
    for (const bool isForever : {false, true}) {
        for (uint64_t nth = 1; TryWithFault({nth, isForever}, make, operate, check); ++nth) {
            points += 1;
            if (::testing::Test::HasFailure()) {
                return; // The first failure tells the most.
            }
        }
    }
    NoteFailurePoints(points);
}

} // namespace Tarvik::Vorn::Test
