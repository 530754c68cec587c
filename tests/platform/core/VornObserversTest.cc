// The host side of the observers: who is registered, and what becomes of results that found nobody. The holder itself
// is tested elsewhere; here are the functions by which the core fills and empties it, for all four records.

#include "VornObservers.h"

#include "MainQueue+Control.h"
#include "VornLogSink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

template <class T>
T Result(int methodNameID);
template <>
InnerBaseRet Result(int methodNameID) {
    InnerBaseRet result;
    result.methodNameID = methodNameID;
    return result;
}
template <>
InnerFriendRet Result(int methodNameID) {
    InnerFriendRet result(RetCode::kSuccess);
    result.methodNameID = methodNameID;
    return result;
}
template <>
InnerLoginRet Result(int methodNameID) {
    InnerLoginRet result;
    result.methodNameID = methodNameID;
    return result;
}
template <>
InnerLoginPluginRet Result(int methodNameID) {
    InnerLoginPluginRet result;
    result.methodNameID = methodNameID;
    return result;
}

// Every observer of these tests notes its name, the request and the result's method ID: "A s1 7".
std::vector<std::string> sCalls;
std::function<void()> sDuringCall;

template <class T, char Name>
void Observe(const T& result, const char* seqID) {
    sCalls.push_back(std::string(1, Name) + " " + seqID + " " + std::to_string(result.methodNameID));
    if (sDuringCall) {
        sDuringCall();
    }
}

template <class T>
class Observers : public ::testing::Test {
protected:
    Observers() {
        SetLogSink([](const VornLogLine&) {});
        Reset();
    }
    ~Observers() override {
        Reset();
        SetLogSink({});
    }
    Observers(const Observers&) = delete;
    Observers& operator=(const Observers&) = delete;

    static void Commit(int methodNameID, unsigned observerID, const char* seqID) {
        VornInnerObserverHolder<T>::CommitToTaskQueue(Result<T>(methodNameID), observerID, seqID);
    }

    static void Register(unsigned observerID) { RegisterObserver<T>(observerID, &Observe<T, 'A'>); }

private:
    static void Reset() {
        Host::DiscardMainQueue();
        VornInnerObserverHolder<T>::mObserverHolder.clear();
        VornInnerObserverHolder<T>::mTaskParamsHolder.clear();
        sCalls.clear();
        sDuringCall = nullptr;
    }
};

using Records = ::testing::Types<InnerBaseRet, InnerFriendRet, InnerLoginRet, InnerLoginPluginRet>;
TYPED_TEST_SUITE(Observers, Records);

TYPED_TEST(Observers, RegisteredObserverReceivesResultsOnTheMainQueue) {
    this->Register(31);

    this->Commit(7, 31, "s1");
    const std::vector<std::string> before = sCalls;
    Host::DrainMainQueue();

    EXPECT_THAT(before, IsEmpty());
    EXPECT_THAT(sCalls, ElementsAre("A s1 7"));
}

TYPED_TEST(Observers, RegistrationReplacesTheObserver) {
    this->Register(31);
    RegisterObserver<TypeParam>(31, &Observe<TypeParam, 'B'>);

    this->Commit(7, 31, "s1");
    Host::DrainMainQueue();

    EXPECT_THAT(sCalls, ElementsAre("B s1 7"));
}

TYPED_TEST(Observers, RegistrationIsKnownUntilItIsRemoved) {
    const bool before = IsObserverRegistered<TypeParam>(31);
    this->Register(31);
    const bool registered = IsObserverRegistered<TypeParam>(31);
    const bool other = IsObserverRegistered<TypeParam>(32);
    RemoveObserver<TypeParam>(31);

    EXPECT_FALSE(before);
    EXPECT_TRUE(registered);
    EXPECT_FALSE(other);
    EXPECT_FALSE(IsObserverRegistered<TypeParam>(31));
}

TYPED_TEST(Observers, NullObserverRemovesTheRegistration) {
    this->Register(31);

    RegisterObserver<TypeParam>(31, nullptr);

    EXPECT_FALSE(IsObserverRegistered<TypeParam>(31));
}

TYPED_TEST(Observers, RemovingAnUnknownObserverDoesNothing) {
    this->Register(31);

    RemoveObserver<TypeParam>(32);

    EXPECT_TRUE(IsObserverRegistered<TypeParam>(31));
}

TYPED_TEST(Observers, ObserverRemovedWhileItsResultIsOnTheWayIsNotCalled) {
    this->Register(31);
    this->Commit(7, 31, "s1");

    RemoveObserver<TypeParam>(31);
    Host::DrainMainQueue();

    EXPECT_THAT(sCalls, IsEmpty());
    EXPECT_EQ(CachedResultCount<TypeParam>(), 0u);
}

TYPED_TEST(Observers, GreatIDsAreLookedUpAsSignedNumbers) {
    this->Register(4000000000u);

    this->Commit(7, 4000000000u, "s1");
    Host::DrainMainQueue();

    EXPECT_TRUE(IsObserverRegistered<TypeParam>(4000000000u));
    EXPECT_TRUE(VornInnerObserverHolder<TypeParam>::mObserverHolder.contains(-294967296));
    EXPECT_THAT(sCalls, ElementsAre("A s1 7"));
}

// ---- Cached results

TYPED_TEST(Observers, ResultWithoutAnObserverIsCountedAndTakenOnce) {
    this->Commit(7, 31, "s1");
    const size_t count = CachedResultCount<TypeParam>();

    const auto taken = TakeCachedResult<TypeParam>("s1");
    const auto again = TakeCachedResult<TypeParam>("s1");

    EXPECT_EQ(count, 1u);
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->mRet.methodNameID, 7);
    EXPECT_EQ(taken->mObserverID, 31u);
    EXPECT_EQ(taken->mSeqID.toString(), "s1");
    EXPECT_FALSE(again);
    EXPECT_EQ(CachedResultCount<TypeParam>(), 0u);
}

TYPED_TEST(Observers, TakingAnUnknownRequestChangesNothing) {
    this->Commit(7, 31, "s1");

    EXPECT_FALSE(TakeCachedResult<TypeParam>("s2"));
    EXPECT_EQ(CachedResultCount<TypeParam>(), 1u);
}

TYPED_TEST(Observers, DeliveryHandsOverWhatHasAnObserverByNow) {
    this->Commit(1, 31, "s3");
    this->Commit(2, 32, "s2");
    this->Commit(3, 31, "s1");
    this->Register(31);

    const size_t delivered = DeliverCachedResults<TypeParam>();

    EXPECT_EQ(delivered, 2u);
    EXPECT_THAT(sCalls, ElementsAre("A s1 3", "A s3 1"));
    EXPECT_EQ(CachedResultCount<TypeParam>(), 1u);
    EXPECT_TRUE(TakeCachedResult<TypeParam>("s2"));
}

TYPED_TEST(Observers, DeliveryIsInTheCallingThreadAndNotThroughTheQueue) {
    this->Commit(1, 31, "s1");
    this->Register(31);

    DeliverCachedResults<TypeParam>();

    EXPECT_EQ(Host::MainQueueDepth(), 0u);
    EXPECT_THAT(sCalls, ElementsAre("A s1 1"));
}

TYPED_TEST(Observers, DeliveryHandsEachResultOverOnce) {
    this->Commit(1, 31, "s1");
    this->Register(31);

    const size_t first = DeliverCachedResults<TypeParam>();
    const size_t second = DeliverCachedResults<TypeParam>();

    EXPECT_EQ(first, 1u);
    EXPECT_EQ(second, 0u);
    EXPECT_EQ(sCalls.size(), 1u);
}

TYPED_TEST(Observers, DeliveryToGreatIDsLooksThemUpAsSignedNumbers) {
    this->Commit(1, 4000000000u, "s1");
    this->Register(4000000000u);

    EXPECT_EQ(DeliverCachedResults<TypeParam>(), 1u);
}

TYPED_TEST(Observers, ObserverMayRemoveItselfDuringADelivery) {
    this->Commit(1, 31, "s1");
    this->Commit(2, 31, "s2");
    this->Register(31);
    sDuringCall = [] { RemoveObserver<TypeParam>(31); };

    const size_t delivered = DeliverCachedResults<TypeParam>();

    EXPECT_EQ(delivered, 1u);
    EXPECT_THAT(sCalls, ElementsAre("A s1 1"));
    EXPECT_EQ(CachedResultCount<TypeParam>(), 1u);
}

TYPED_TEST(Observers, ObserverMayTakeAndClearDuringADelivery) {
    this->Commit(1, 31, "s1");
    this->Commit(2, 31, "s2");
    this->Commit(3, 31, "s3");
    this->Register(31);
    sDuringCall = [] {
        EXPECT_FALSE(TakeCachedResult<TypeParam>("s1")); // Its own has left the cache already.
        ClearCachedResults<TypeParam>();
    };

    const size_t delivered = DeliverCachedResults<TypeParam>();

    EXPECT_EQ(delivered, 1u);
    EXPECT_THAT(sCalls, ElementsAre("A s1 1"));
}

TYPED_TEST(Observers, ResultCachedAgainDuringADeliveryEndsNothing) {
    this->Commit(1, 31, "s1");
    this->Register(31);
    // The same request again, for an observer that nobody is.
    sDuringCall = [] { Observers<TypeParam>::Commit(2, 99, "s1"); };

    const size_t delivered = DeliverCachedResults<TypeParam>();

    EXPECT_EQ(delivered, 1u);
    ASSERT_EQ(CachedResultCount<TypeParam>(), 1u);
    EXPECT_EQ(TakeCachedResult<TypeParam>("s1")->mRet.methodNameID, 2);
}

TYPED_TEST(Observers, ClearingDropsEveryCachedResult) {
    this->Commit(1, 31, "s1");
    this->Commit(2, 32, "s2");
    this->Register(31);

    ClearCachedResults<TypeParam>();

    EXPECT_EQ(CachedResultCount<TypeParam>(), 0u);
    EXPECT_EQ(DeliverCachedResults<TypeParam>(), 0u);
    EXPECT_TRUE(IsObserverRegistered<TypeParam>(31));
}

TEST(ObserversOfDifferentRecords, AreKeptApart) {
    RegisterObserver<InnerBaseRet>(31, &Observe<InnerBaseRet, 'A'>);

    EXPECT_FALSE(IsObserverRegistered<InnerFriendRet>(31));
    EXPECT_FALSE(IsObserverRegistered<InnerLoginRet>(31));
    EXPECT_FALSE(IsObserverRegistered<InnerLoginPluginRet>(31));
    RemoveObserver<InnerBaseRet>(31);
}

} // namespace
} // namespace Tarvik::Vorn::Test
