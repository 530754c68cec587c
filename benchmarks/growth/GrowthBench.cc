// How long one element takes where there are ten of them, and where there are a million: cached results, observers, friends of
// a result, players of an invitation.

#include "requests/EntryPoints.h"
#include "support/Catch.h"
#include "support/Comparison.h"
#include "support/Figures.h"
#include "support/LogModes.h"
#include "support/Samples.h"

#include "MainQueue+Control.h"
#include "VornCodes.h"
#include "VornObservers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Bench {
namespace {

// How many times as long one element of the most may take as one of a thousand, from where on what is done once no longer
// shows. What searches in a tree takes twice as many steps, and a step takes several times as long once the tree no longer fits
// into the processor's caches; what looked at every element for every element would take a thousand times as long.
constexpr double kMostTimes = 25;
constexpr size_t kFewForTheLimit = 1000;

constexpr size_t kMost = 1'000'000;
constexpr unsigned kNobody = 32;
constexpr unsigned kSomebody = 33;

template <class T>
void Observe(const T& result, const char* /*seqID*/) {
    Catch::Benchmark::keep_memory(&result);
}

// Numbers in no order that a tree or a cache could use; the same every time.
uint64_t Scattered(size_t i) {
    constexpr uint64_t kOdd = 0x9e3779b97f4a7c15;
    const uint64_t product = (i + 1) * kOdd;
    return (product ^ (product >> 29)) * kOdd;
}

std::vector<String> SequenceIDs(size_t count) {
    std::vector<String> texts;
    texts.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        texts.emplace_back("request-" + std::to_string(Scattered(i)));
    }
    return texts;
}

void FillCache(const std::vector<String>& seqIDs, const InnerBaseRet& ret, unsigned observer) {
    for (const String& seqID : seqIDs) {
        VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(ret, observer, seqID);
    }
}

Comparison::Sample PutIntoCache(size_t count) {
    return [seqIDs = SequenceIDs(count), ret = SampleBaseRet()](Meter meter) {
        meter.measure([&] { FillCache(seqIDs, ret, kNobody); });
        REQUIRE(CachedResultCount<InnerBaseRet>() == seqIDs.size());
        ClearCachedResults<InnerBaseRet>();
    };
}

Comparison::Sample DeliverFromCache(size_t count) {
    return [seqIDs = SequenceIDs(count), ret = SampleBaseRet()](Meter meter) {
        FillCache(seqIDs, ret, kSomebody);
        RegisterObserver<InnerBaseRet>(kSomebody, &Observe<InnerBaseRet>);
        meter.measure([] { return DeliverCachedResults<InnerBaseRet>(); });
        RemoveObserver<InnerBaseRet>(kSomebody);
        REQUIRE(CachedResultCount<InnerBaseRet>() == 0);
    };
}

// As many deliveries as there are observers, each to one of them.
Comparison::Sample DeliverToOneOf(size_t count) {
    return [count, ret = SampleBaseRet(), seqID = String(kSeqID)](Meter meter) {
        for (size_t i = 0; i < count; ++i) {
            RegisterObserver<InnerBaseRet>(static_cast<unsigned>(1000 + i), &Observe<InnerBaseRet>);
        }
        meter.measure([&] {
            for (size_t i = 0; i < count; ++i) {
                const auto observer = static_cast<unsigned>(1000 + Scattered(i) % count);
                VornInnerObserverHolder<InnerBaseRet>::CommitToTaskQueue(ret, observer, seqID);
                Host::DrainMainQueue();
            }
        });
        VornInnerObserverHolder<InnerBaseRet>::mObserverHolder.clear();
    };
}

Comparison::Sample DeliverFriends(size_t count) {
    return [ret = std::make_shared<const InnerFriendRet>(SampleFriendRet(count)), seqID = String(kSeqID)](Meter meter) {
        RegisterObserver<InnerFriendRet>(ObserverID::kDirect, &Observe<InnerFriendRet>);
        meter.measure(
            [&] { VornInnerObserverHolder<InnerFriendRet>::CommitToTaskQueue(*ret, ObserverID::kDirect, seqID); });
        RemoveObserver<InnerFriendRet>(ObserverID::kDirect);
    };
}

Comparison::Sample InvitePlayers(size_t count) {
    VornFriendReqInfo request = SampleRequest(RequestType::kInvite);
    std::string players;
    for (size_t i = 0; i < count; ++i) {
        players += (i == 0 ? "\"" : ",\"") + std::to_string(10150000000000000 + i) + '"';
    }
    request.extraJson = R"({"inviteType":"batch","userList":[)" + players + "]}";
    return [request](Meter meter) {
        meter.measure([&] { SendInvitation(request); });
        REQUIRE(ForgetWhatIsOpen() == static_cast<size_t>(meter.runs()));
    };
}

struct Growth {
    const char* name;
    size_t most;
    Comparison::Sample (*sampleOf)(size_t count);
};

// Few elements take so little time that many samples are needed, and many so much that few are enough.
size_t RoundsFor(size_t count) {
    return std::clamp<size_t>(300'000 / count, 3, 301);
}

Curve CurveOf(const Growth& growth) {
    Curve curve{growth.name, {}};
    for (size_t count = 10; count <= growth.most; count *= 10) {
        Comparison comparison;
        comparison.Add(growth.name, growth.sampleOf(count));
        comparison.Run({RoundsFor(count), 1});
        const auto elements = static_cast<double>(count);
        curve.points.push_back({elements, comparison.Nanoseconds(growth.name) / elements});
    }
    return curve;
}

double TimesFewToMost(const Curve& curve) {
    const auto few = std::find_if(curve.points.begin(), curve.points.end(), [](const Curve::Point& point) {
        return point.elements == static_cast<double>(kFewForTheLimit);
    });
    REQUIRE(few != curve.points.end());
    return curve.points.back().nanosecondsEach / few->nanosecondsEach;
}

TEST_CASE("Growth from ten to a million elements", "[growth]") {
    const LogModeSetting quiet(LogMode::kOff);
    const std::vector<Growth> growths = {
        {"a result put into the cache", kMost, &PutIntoCache},
        {"a result delivered from the cache", kMost, &DeliverFromCache},
        {"a delivery to one of many observers", kMost, &DeliverToOneOf},
        {"a friend of a result", kMost, &DeliverFriends},
        {"a player of an invitation", 100'000, &InvitePlayers},
    };
    Table table{"Time of one element by how many there are, ns",
                "Element",
                {"10", "100", "1,000", "10,000", "100,000", "1,000,000"},
                {}};
    Figures& figures = Figures::Instance();
    for (const Growth& growth : growths) {
        const Curve curve = CurveOf(growth);
        std::vector<double> row(curve.points.size());
        std::transform(curve.points.begin(), curve.points.end(), row.begin(),
                       [](const Curve::Point& point) { return point.nanosecondsEach; });
        table.rows.push_back({growth.name, row});
        figures.Add(Limit{std::string("growth of ") + growth.name + ", a thousand against the most",
                          TimesFewToMost(curve), Bound::kAtMost, kMostTimes, "times"});
        figures.Add(curve);
    }
    figures.Add(table);
}

} // namespace
} // namespace Tarvik::Vorn::Bench
