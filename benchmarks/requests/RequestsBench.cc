// What each entry point of the plugin costs beyond the calls into the platform that it is there to make.

#include "requests/EntryPoints.h"
#include "support/Catch.h"
#include "support/Comparison.h"
#include "support/Figures.h"
#include "support/LogModes.h"
#include "support/Samples.h"

#include "History.h"
#include "VornCodes.h"
#include "VornObservers.h"

#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr double kMostNanosecondsOfARequest = 2000;
constexpr double kMostNanosecondsOfAnEvent = 1000;

template <class T>
void Observe(const T& result, const char* /*seqID*/) {
    Catch::Benchmark::keep_memory(&result);
}

// Every result finds an observer, so that the cache does not grow.
void RegisterObservers() {
    RegisterObserver<InnerBaseRet>(31, &Observe<InnerBaseRet>);
    RegisterObserver<InnerBaseRet>(ObserverID::kLogout, &Observe<InnerBaseRet>);
    RegisterObserver<InnerFriendRet>(ObserverID::kQueryFriends, &Observe<InnerFriendRet>);
}

void RemoveObservers() {
    RemoveObserver<InnerBaseRet>(31);
    RemoveObserver<InnerBaseRet>(ObserverID::kLogout);
    RemoveObserver<InnerFriendRet>(ObserverID::kQueryFriends);
}

void AddCall(Comparison& comparison, const std::string& name, void (*call)(), LogMode mode) {
    comparison.Add(name, [call, mode](Meter meter) {
        const LogModeSetting setting(mode);
        meter.measure([call] { call(); });
        ForgetWhatIsOpen();
    });
}

// The two columns would not be comparable if they asked the platform for different things.
void CheckPlatformPart(const EntryPoint& entry) {
    Host::SetHistoryKept(true);
    TakePlatformCalls();
    entry.platform();
    const std::vector<std::string> byHand = TakePlatformCalls();
    entry.plugin();
    const std::vector<std::string> ofPlugin = TakePlatformCalls();
    Host::SetHistoryKept(false);
    INFO(entry.name);
    REQUIRE(ofPlugin == byHand);
}

TEST_CASE("Entry points against the platform's part of them", "[requests]") {
    RegisterObservers();
    Table times{"One call of an entry point with logging off, and what it costs beyond the platform's part, ns",
                "Entry point",
                {"call", "platform", "own, off", "own, null sink", "own, file"},
                {}};
    for (const EntryPoint& entry : EntryPoints()) {
        entry.prepare();
        CheckPlatformPart(entry);
        Comparison comparison;
        AddCall(comparison, "platform", entry.platform, LogMode::kOff);
        for (const NamedLogMode& mode : kLogModes) {
            AddCall(comparison, mode.name, entry.plugin, mode.mode);
        }
        comparison.Run();
        std::vector<double> figures = {comparison.Nanoseconds("off"), comparison.Nanoseconds("platform")};
        for (const NamedLogMode& mode : kLogModes) {
            figures.push_back(comparison.Difference(mode.name, "platform"));
        }
        times.rows.push_back({entry.name, figures});
        Figures::Instance().Add(Limit{std::string("own cost of ") + entry.name,
                                      comparison.Difference("off", "platform"), Bound::kAtMost,
                                      entry.isEvent ? kMostNanosecondsOfAnEvent : kMostNanosecondsOfARequest, "ns"});
    }
    Figures::Instance().Add(times);
    RemoveObservers();
}

} // namespace
} // namespace Tarvik::Vorn::Bench
