// The road of a result to its observer, the same for all four record types: delivery on the main thread, observer 107 at
// once, the cache for results without an observer. Results are committed as the plugin commits them, through the shared
// statics; the main queue is pumped by the test.

#include "HolderRecords.h"
#include "PluginTest.h"

#import <Foundation/Foundation.h>

#include <latch>
#include <thread>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kFile = "VornDefine.h";

// A record of each type with a member that tells whether all of it arrived.
template <class T>
T MakeResult(int code) {
    T result(code);
    result.methodNameID = 900 + code;
    result.extraJson = "{\"from\":\"commit\"}";
    return result;
}

template <>
InnerLoginRet MakeResult(int code) {
    InnerLoginRet result;
    result.retCode = code;
    result.coreText27 = "the last member";
    return result;
}

template <>
InnerLoginPluginRet MakeResult(int code) {
    InnerLoginPluginRet result;
    result.methodNameID = code;
    result.coreText7 = "the last member";
    return result;
}

template <class T>
class ObserverHolderTest : public PluginTest {
protected:
    using Holder = VornInnerObserverHolder<T>;

    static std::string TextOf(int code) { return RecordText(MakeResult<T>(code)); }

    static void Commit(int code, unsigned observerID, const char* seqID) {
        Holder::CommitToTaskQueue(MakeResult<T>(code), observerID, seqID);
    }

    static std::string AddressOf(void (*observer)(const T&, const char*)) {
        char text[32];
        std::snprintf(text, sizeof(text), "%p", reinterpret_cast<void*>(observer));
        return text;
    }
};

TYPED_TEST_SUITE(ObserverHolderTest, HolderRecords, HolderRecordNames);

TYPED_TEST(ObserverHolderTest, DeliversLaterOnTheMainThread) {
    ResultRecorder::Observe<TypeParam, 31>();

    this->OnAnotherThread([this] { this->Commit(5, 31, "s1"); });
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
    this->DrainMainQueue();

    ASSERT_THAT(ResultRecorder::Deliveries(), ElementsAre(Delivery{31, "s1", this->TextOf(5), {}}));
    EXPECT_EQ(ResultRecorder::Deliveries()[0].thread, std::this_thread::get_id());
}

TYPED_TEST(ObserverHolderTest, CommitOnTheMainThreadStillWaitsForTheQueue) {
    ResultRecorder::Observe<TypeParam, 31>();

    this->Commit(5, 31, "s1");
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), SizeIs(1));
}

TYPED_TEST(ObserverHolderTest, SaysThatItDispatchesAndWhomItCalls) {
    ResultRecorder::Observe<TypeParam, 31>();
    this->Log().Clear();

    this->Commit(0, 31, "s1");
    this->DrainMainQueue();

    const std::string address = this->AddressOf(&ResultRecorder::Keep<TypeParam, 31>);
    EXPECT_THAT(this->Log().LinesOf(kFile), ElementsAre(Debug(kFile, "CommitToTaskQueue", "DispatchAsyncMainThread 31"),
                                                        Debug(kFile, "CallbackOnMainThread",
                                                              "observer address " + address + " of observerID : 31")));
}

TYPED_TEST(ObserverHolderTest, DeliversInTheOrderOfTheCommits) {
    ResultRecorder::Observe<TypeParam, 31>();
    ResultRecorder::Observe<TypeParam, 32>();

    this->Commit(1, 31, "s1");
    this->Commit(2, 32, "s2");
    this->Commit(3, 31, "s3");
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(),
                ElementsAre(Delivery{31, "s1", this->TextOf(1), {}}, Delivery{32, "s2", this->TextOf(2), {}},
                            Delivery{31, "s3", this->TextOf(3), {}}));
}

TYPED_TEST(ObserverHolderTest, OwnsCopiesOfWhatWasCommitted) {
    ResultRecorder::Observe<TypeParam, 31>();
    auto result = std::make_unique<TypeParam>(MakeResult<TypeParam>(5));
    auto seqID = std::make_unique<String>("s1");

    TestFixture::Holder::CommitToTaskQueue(*result, 31, *seqID);
    result.reset();
    seqID.reset();
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), ElementsAre(Delivery{31, "s1", this->TextOf(5), {}}));
}

TYPED_TEST(ObserverHolderTest, DeliversUnderAnEmptySequenceID) {
    ResultRecorder::Observe<TypeParam, 31>();

    this->Commit(5, 31, "");
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), ElementsAre(Delivery{31, "", this->TextOf(5), {}}));
}

TYPED_TEST(ObserverHolderTest, KeptObserver107IsCalledAtOnceOnTheCommittingThread) {
    ResultRecorder::Observe<TypeParam, 107>();
    this->Log().Clear();
    std::thread::id committer;
    size_t deliveredBeforeReturn = 0;

    this->OnAnotherThread([&] {
        committer = std::this_thread::get_id();
        this->Commit(5, 107, "s1");
        deliveredBeforeReturn = ResultRecorder::Deliveries().size();
    });

    EXPECT_EQ(deliveredBeforeReturn, 1u);
    ASSERT_THAT(ResultRecorder::Deliveries(), ElementsAre(Delivery{107, "s1", this->TextOf(5), {}}));
    EXPECT_EQ(ResultRecorder::Deliveries()[0].thread, committer);
    const std::string address = this->AddressOf(&ResultRecorder::Keep<TypeParam, 107>);
    EXPECT_THAT(this->Log().LinesOf(kFile), ElementsAre(Debug(kFile, "CommitToTaskQueue", "CallbackOnMainThread 107"),
                                                        Debug(kFile, "CallbackOnMainThread",
                                                              "observer address " + address + " of observerID : 107")));
}

TYPED_TEST(ObserverHolderTest, ItsNeighboursOf107AreNotServedAtOnce) {
    ResultRecorder::Observe<TypeParam, 106>();
    ResultRecorder::Observe<TypeParam, 108>();

    this->Commit(5, 106, "s1");
    this->Commit(5, 108, "s2");

    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
}

TYPED_TEST(ObserverHolderTest, CachesAResultWithoutAnObserverUnderItsSequenceID) {
    this->Commit(5, 31, "s1");
    this->DrainMainQueue();

    ASSERT_THAT(TestFixture::Holder::mTaskParamsHolder, SizeIs(1));
    const auto& [key, cached] = *TestFixture::Holder::mTaskParamsHolder.begin();
    EXPECT_EQ(key, "s1");
    EXPECT_EQ(RecordText(cached.mRet), this->TextOf(5));
    EXPECT_EQ(cached.mObserverID, 31u);
    EXPECT_EQ(cached.mSeqID.toString(), "s1");
    EXPECT_THAT(TestFixture::Holder::mObserverHolder, IsEmpty());
    EXPECT_THAT(this->Log().LinesOf(kFile),
                ElementsAre(Debug(kFile, "CommitToTaskQueue", "Cache ObserverID 31"),
                            Debug(kFile, "cacheTask", "mTaskParamsHolder after insert s1")));
}

TYPED_TEST(ObserverHolderTest, Observer107ThatIsNotRegisteredIsCachedToo) {
    this->Commit(5, 107, "s1");

    EXPECT_THAT(TestFixture::Holder::mTaskParamsHolder, SizeIs(1));
}

TYPED_TEST(ObserverHolderTest, TheFirstCachedResultWins) {
    this->Commit(1, 31, "s1");
    this->Commit(2, 32, "s1");

    ASSERT_THAT(TestFixture::Holder::mTaskParamsHolder, SizeIs(1));
    const auto& cached = TestFixture::Holder::mTaskParamsHolder.at("s1");
    EXPECT_EQ(RecordText(cached.mRet), this->TextOf(1));
    EXPECT_EQ(cached.mObserverID, 31u);
    EXPECT_THAT(this->Log().LinesOf(kFile),
                ElementsAre(Debug(kFile, "CommitToTaskQueue", "Cache ObserverID 31"),
                            Debug(kFile, "cacheTask", "mTaskParamsHolder after insert s1"),
                            Debug(kFile, "CommitToTaskQueue", "Cache ObserverID 32"),
                            Debug(kFile, "cacheTask", "mTaskParamsHolder after insert s1")));
}

TYPED_TEST(ObserverHolderTest, AResultWithoutObserverAndSequenceIDIsDropped) {
    this->Commit(5, 31, "");
    this->DrainMainQueue();

    EXPECT_THAT(TestFixture::Holder::mTaskParamsHolder, IsEmpty());
    EXPECT_THAT(TestFixture::Holder::mObserverHolder, IsEmpty());
    EXPECT_THAT(this->Log().LinesOf(kFile),
                ElementsAre(Debug(kFile, "CommitToTaskQueue", "Cache ObserverID 31"),
                            Debug(kFile, "cacheTask", "cacheTask failed for mSeqID is empty")));
}

TYPED_TEST(ObserverHolderTest, ARegisteredObserverLeavesTheCacheAlone) {
    ResultRecorder::Observe<TypeParam, 31>();

    this->Commit(5, 31, "s1");
    this->DrainMainQueue();

    EXPECT_THAT(TestFixture::Holder::mTaskParamsHolder, IsEmpty());
    EXPECT_THAT(TestFixture::Holder::mObserverHolder, SizeIs(1));
}

TYPED_TEST(ObserverHolderTest, AnObserverRemovedBeforeItsTurnGetsNothing) {
    ResultRecorder::Observe<TypeParam, 31>();
    this->Commit(5, 31, "s1");
    RemoveObserver<TypeParam>(31);
    this->Log().Clear();

    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
    EXPECT_THAT(TestFixture::Holder::mTaskParamsHolder, IsEmpty());
    EXPECT_THAT(this->Log().LinesOf(kFile),
                ElementsAre(Debug(kFile, "CallbackOnMainThread",
                                  "can not get inner callback for 31, make sure you have define")));
}

TYPED_TEST(ObserverHolderTest, AnObserverIDAbove2To31IsLookedUpAndPrintedAsTheSignedValue) {
    TestFixture::Holder::mObserverHolder[-294967296] = &ResultRecorder::Keep<TypeParam, 4000000000u>;

    this->Commit(5, 4000000000u, "s1");
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), SizeIs(1));
    EXPECT_EQ(this->Log().LinesOf(kFile).at(0).text, "DispatchAsyncMainThread -294967296");
    EXPECT_THAT(this->Log().LinesOf(kFile).at(1).text, ::testing::EndsWith(" of observerID : -294967296"));
}

TYPED_TEST(ObserverHolderTest, ARemovedObserverIDAbove2To31IsPrintedUnsigned) {
    TestFixture::Holder::mObserverHolder[-294967296] = &ResultRecorder::Keep<TypeParam, 4000000000u>;
    this->Commit(5, 4000000000u, "s1");
    TestFixture::Holder::mObserverHolder.clear();
    this->Log().Clear();

    this->DrainMainQueue();

    EXPECT_EQ(this->Log().LinesOf(kFile).at(0).text,
              "can not get inner callback for 4000000000, make sure you have define");
}

TYPED_TEST(ObserverHolderTest, AnUncachedObserverIDAbove2To31IsPrintedSigned) {
    this->Commit(5, 4000000000u, "s1");

    EXPECT_EQ(this->Log().LinesOf(kFile).at(0).text, "Cache ObserverID -294967296");
    EXPECT_EQ(TestFixture::Holder::mTaskParamsHolder.at("s1").mObserverID, 4000000000u);
}

template <class T>
void RemoveMyself(const T& result, const char* seqID) {
    RemoveObserver<T>(31);
    ResultRecorder::Keep<T, 31>(result, seqID);
}

TYPED_TEST(ObserverHolderTest, AnObserverMayRemoveItselfWhileItIsCalled) {
    RegisterObserver<TypeParam>(31, &RemoveMyself<TypeParam>);

    this->Commit(5, 31, "s1");
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), ElementsAre(Delivery{31, "s1", this->TextOf(5), {}}));
    EXPECT_THAT(TestFixture::Holder::mObserverHolder, IsEmpty());
}

template <class T>
void CommitAgain(const T& result, const char* seqID) {
    ResultRecorder::Keep<T, 31>(result, seqID);
    if (std::string(seqID) == "s1") {
        VornInnerObserverHolder<T>::CommitToTaskQueue(result, 31, "s2");
    }
}

TYPED_TEST(ObserverHolderTest, AnObserverMayCommitWhileItIsCalled) {
    RegisterObserver<TypeParam>(31, &CommitAgain<TypeParam>);

    this->Commit(5, 31, "s1");
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(),
                ElementsAre(Delivery{31, "s1", this->TextOf(5), {}}, Delivery{31, "s2", this->TextOf(5), {}}));
}

template <class T>
void ThrowAtTheCommitter(const T& /*result*/, const char* /*seqID*/) {
    throw std::runtime_error("thrown by the observer");
}

TYPED_TEST(ObserverHolderTest, AResultIsFreedWhenItsObserverThrows) {
    RegisterObserver<TypeParam>(107, &ThrowAtTheCommitter<TypeParam>);

    EXPECT_THROW(this->Commit(5, 107, "s1"), std::runtime_error); // The leak check at the end sees a lost record.

    ResultRecorder::Observe<TypeParam, 107>();
    this->Commit(6, 107, "s2");
    EXPECT_THAT(ResultRecorder::Deliveries(), ElementsAre(Delivery{107, "s2", this->TextOf(6), {}}));
}

TYPED_TEST(ObserverHolderTest, ManyThreadsMayCommitForRegisteredObserversAtOnce) {
    constexpr int kThreads = 4;
    constexpr int kEach = 250;
    ResultRecorder::Observe<TypeParam, 31>();
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);

    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&] {
            @autoreleasepool {
                start.arrive_and_wait();
                for (int n = 0; n < kEach; ++n) {
                    this->Commit(n, 31, "s1");
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    this->DrainMainQueue();

    EXPECT_THAT(ResultRecorder::Deliveries(), SizeIs(kThreads * kEach));
}

} // namespace
} // namespace Tarvik::Vorn::Test
