// vorn-instructions: runs each way of a result and each entry point a fixed number of times between marks that callgrind
// heeds, so that the instructions of one run can be read from what it writes. Without callgrind the marks do nothing.
// Results are passed on and no line is printed. scripts/instruction-counts runs it.
//
//   VORN_SUBJECT=.../libVornFacebook.so valgrind --tool=callgrind --collect-atstart=no vorn-instructions

#include "requests/EntryPoints.h"
#include "support/LogModes.h"
#include "support/Samples.h"

#include "MainQueue+Control.h"
#include "Subject.h"
#include "VornDefine.h"
#include "VornObservers.h"

#import <Foundation/Foundation.h>

#include <valgrind/callgrind.h>

#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr int kWarmUps = 20; // Method caches, lazy binding and the allocator's lists are as in a running game then.
constexpr int kRuns = 50;    // Known to scripts/instruction-counts.

constexpr unsigned kObserver = 31;
constexpr unsigned kNobody = 32;

template <class Work>
void Count(const std::string& name, Work work) {
    for (int i = 0; i < kWarmUps; ++i) {
        work();
    }
    CALLGRIND_TOGGLE_COLLECT;
    for (int i = 0; i < kRuns; ++i) {
        work();
    }
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name.c_str());
}

template <class T>
void Ignore(const T& /*result*/, const char* /*seqID*/) {}

template <class T>
void CountDelivery(const std::string& record, const T& result) {
    using Holder = VornInnerObserverHolder<T>;
    const String seqID(kSeqID);
    RegisterObserver<T>(ObserverID::kDirect, &Ignore<T>);
    RegisterObserver<T>(kObserver, &Ignore<T>);
    Count(record + ", direct", [&] { Holder::CommitToTaskQueue(result, ObserverID::kDirect, seqID); });
    Count(record + ", main thread", [&] {
        Holder::CommitToTaskQueue(result, kObserver, seqID);
        Host::DrainMainQueue();
    });
    Count(record + ", cached", [&] {
        Holder::CommitToTaskQueue(result, kNobody, seqID);
        static_cast<void>(TakeCachedResult<T>(kSeqID));
    });
    RemoveObserver<T>(ObserverID::kDirect);
    RemoveObserver<T>(kObserver);
}

void CountEntryPoints() {
    RegisterObserver<InnerBaseRet>(kObserver, &Ignore<InnerBaseRet>);
    RegisterObserver<InnerBaseRet>(ObserverID::kLogout, &Ignore<InnerBaseRet>);
    RegisterObserver<InnerFriendRet>(ObserverID::kQueryFriends, &Ignore<InnerFriendRet>);
    for (const EntryPoint& entry : EntryPoints()) {
        entry.prepare();
        Count(entry.name, entry.plugin);
        ForgetWhatIsOpen();
    }
}

} // namespace
} // namespace Tarvik::Vorn::Bench

int main() {
    using namespace Tarvik::Vorn;
    @autoreleasepool {
        const Bench::LogModeSetting setting(Bench::LogMode::kOff);
        Test::LoadSubject();
        Bench::CountDelivery("InnerBaseRet", Bench::SampleBaseRet());
        Bench::CountDelivery("InnerFriendRet", Bench::SampleFriendRet(0));
        Bench::CountDelivery("InnerLoginRet", Bench::SampleLoginRet());
        Bench::CountDelivery("InnerLoginPluginRet", Bench::SampleLoginPluginRet());
        Bench::CountEntryPoints();
    }
    return 0;
}
