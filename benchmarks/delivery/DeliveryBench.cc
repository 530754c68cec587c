// From a commit to its observer, against the same copies by hand and against a bridge of JSON text.

#include "delivery/ByHand.h"
#include "delivery/JsonBridge.h"
#include "support/AllocationCount.h"
#include "support/Catch.h"
#include "support/Comparison.h"
#include "support/Figures.h"
#include "support/LogModes.h"
#include "support/Samples.h"

#include "MainQueue+Control.h"
#include "VornObservers.h"

#include <cstddef>
#include <memory>
#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr unsigned kHopped = 31;
constexpr unsigned kNobody = 32;

constexpr double kMostTimesTheFloor = 1.3;
constexpr double kLeastTimesFasterThanJson = 5;

size_t sDelivered = 0;

template <class T>
void Observe(const T& result, const char* seqID) {
    Catch::Benchmark::keep_memory(&result);
    Catch::Benchmark::keep_memory(seqID);
    sDelivered += 1;
}

// The ways of a result, each from commit to observer or to whoever collects it.
template <class T>
class Ways {
public:
    explicit Ways(const T& ret) : mRet(ret) {
        RegisterObserver<T>(ObserverID::kDirect, &Observe<T>);
        RegisterObserver<T>(kHopped, &Observe<T>);
    }
    ~Ways() {
        RemoveObserver<T>(ObserverID::kDirect);
        RemoveObserver<T>(kHopped);
    }
    Ways(const Ways&) = delete;
    Ways& operator=(const Ways&) = delete;

    void Direct() const { Holder::CommitToTaskQueue(mRet, ObserverID::kDirect, mSeqID); }
    void DirectByHand() const { ByHand<T>::Deliver(mRet, ObserverID::kDirect, mSeqID, mObserver); }
    void DirectAsJson() const {
        std::string text = WriteResult(mRet, ObserverID::kDirect, mSeqID);
        ReadResult<T>(text);
    }

    void Hopped() const {
        Holder::CommitToTaskQueue(mRet, kHopped, mSeqID);
        Host::DrainMainQueue();
    }
    void HoppedByHand() const {
        ByHand<T>::Post(mRet, kHopped, mSeqID, mObserver);
        Host::DrainMainQueue();
    }
    void HoppedAsJson() const {
        auto text = std::make_unique<std::string>(WriteResult(mRet, kHopped, mSeqID));
        dispatch_async_f(dispatch_get_main_queue(), text.release(), [](void* context) {
            const std::unique_ptr<std::string> posted(static_cast<std::string*>(context));
            ReadResult<T>(*posted);
        });
        Host::DrainMainQueue();
    }

    void Cached() const {
        Holder::CommitToTaskQueue(mRet, kNobody, mSeqID);
        Catch::Benchmark::deoptimize_value(TakeCachedResult<T>(kSeqID));
    }
    void CachedByHand() const { Catch::Benchmark::deoptimize_value(ByHand<T>::CacheAndTake(mRet, kNobody, mSeqID)); }

private:
    using Holder = VornInnerObserverHolder<T>;

    const T mRet;
    const String mSeqID{kSeqID};
    // Volatile, so that the call really goes through a pointer.
    void (*volatile mObserver)(const T&, const char*) = &Observe<T>;
};

template <class T, class Way>
void AddWay(Comparison& comparison, const std::string& name, const Ways<T>& ways, Way way) {
    comparison.Add(name, [&ways, way](Meter meter) { meter.measure([&] { (ways.*way)(); }); });
}

struct Tables {
    Table observed{"From a commit to the observer, ns",
                   "Record and way",
                   {"time", "floor", "JSON bridge", "times the floor", "times faster than JSON"},
                   {}};
    Table cached{"From a commit to the cache and out of it, ns", "Record", {"time", "floor", "times the floor"}, {}};
    Table allocations{"Allocations of one direct delivery", "Record", {"delivery", "floor", "JSON bridge"}, {}};
};

template <class T>
void AddTimes(Tables& tables, const std::string& record, const T& ret) {
    const Ways<T> ways(ret);
    Comparison comparison;
    AddWay(comparison, "direct", ways, &Ways<T>::Direct);
    AddWay(comparison, "direct floor", ways, &Ways<T>::DirectByHand);
    AddWay(comparison, "direct JSON", ways, &Ways<T>::DirectAsJson);
    AddWay(comparison, "main thread", ways, &Ways<T>::Hopped);
    AddWay(comparison, "main thread floor", ways, &Ways<T>::HoppedByHand);
    AddWay(comparison, "main thread JSON", ways, &Ways<T>::HoppedAsJson);
    AddWay(comparison, "cache", ways, &Ways<T>::Cached);
    AddWay(comparison, "cache floor", ways, &Ways<T>::CachedByHand);
    comparison.Run();

    for (const std::string way : {"direct", "main thread"}) {
        tables.observed.rows.push_back({record + ", " + way,
                                        {comparison.Nanoseconds(way), comparison.Nanoseconds(way + " floor"),
                                         comparison.Nanoseconds(way + " JSON"), comparison.Ratio(way, way + " floor"),
                                         comparison.Ratio(way + " JSON", way)}});
    }
    tables.cached.rows.push_back({record,
                                  {comparison.Nanoseconds("cache"), comparison.Nanoseconds("cache floor"),
                                   comparison.Ratio("cache", "cache floor")}});
    Figures& figures = Figures::Instance();
    figures.Add(Limit{"direct delivery of " + record + " against the floor", comparison.Ratio("direct", "direct floor"),
                      Bound::kAtMost, kMostTimesTheFloor, "times"});
    figures.Add(Limit{"JSON bridge against direct delivery of " + record, comparison.Ratio("direct JSON", "direct"),
                      Bound::kAtLeast, kLeastTimesFasterThanJson, "times"});
}

template <class T>
void AddAllocations(Tables& tables, const std::string& record, const T& ret) {
    const Ways<T> ways(ret);
    const auto count = static_cast<double>(AllocationsOf([&] { ways.Direct(); }));
    const auto floor = static_cast<double>(AllocationsOf([&] { ways.DirectByHand(); }));
    const auto bridge = static_cast<double>(AllocationsOf([&] { ways.DirectAsJson(); }));
    tables.allocations.rows.push_back({record, {count, floor, bridge}});
    Figures::Instance().Add(
        Limit{"allocations of a delivery of " + record + " beyond the copies", count - floor, Bound::kAtMost, 0, ""});
}

// Each way must have an effect, or nothing is measured.
template <class T>
void CheckWays(const T& ret) {
    const Ways<T> ways(ret);
    for (const auto way : {&Ways<T>::Direct, &Ways<T>::DirectByHand, &Ways<T>::DirectAsJson, &Ways<T>::Hopped,
                           &Ways<T>::HoppedByHand, &Ways<T>::HoppedAsJson}) {
        const size_t before = sDelivered;
        (ways.*way)();
        REQUIRE(sDelivered == before + 1);
    }
    VornInnerObserverHolder<T>::CommitToTaskQueue(ret, kNobody, kSeqID);
    REQUIRE(TakeCachedResult<T>(kSeqID).has_value());
}

template <class T>
void Measure(Tables& tables, const std::string& record, const T& ret) {
    CheckWays(ret);
    AddTimes(tables, record, ret);
    AddAllocations(tables, record, ret);
}

TEST_CASE("Result delivery against its floor and a JSON bridge", "[delivery]") {
    const LogModeSetting quiet(LogMode::kOff);
    Tables tables;
    Measure(tables, "InnerBaseRet", SampleBaseRet());
    Measure(tables, "InnerFriendRet", SampleFriendRet(0));
    Measure(tables, "InnerFriendRet with three friends", SampleFriendRet(3));
    Measure(tables, "InnerLoginRet", SampleLoginRet());
    Measure(tables, "InnerLoginPluginRet", SampleLoginPluginRet());
    Figures& figures = Figures::Instance();
    figures.Add(tables.observed);
    figures.Add(tables.cached);
    figures.Add(tables.allocations);
}

} // namespace
} // namespace Tarvik::Vorn::Bench
