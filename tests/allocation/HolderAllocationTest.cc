// The road of a result when memory runs out, the same for all four record types: each way is tried with each of its
// allocations failing. The maps are as before or have one whole entry more, and the next commit gets through.

#include "FailEveryAllocation.h"

#include "HolderRecords.h"
#include "MainQueue+Control.h"
#include "VornDefine.h"
#include "VornLogSink.h"
#include "VornObservers.h"
#include "VornRecordText.h"

#include <optional>
#include <string>

namespace Tarvik::Vorn::Test {
namespace {

constexpr const char* kSeqID = "a sequence ID that is longer than a standard text holds inside";
constexpr const char* kText = "the text that tells whether all of the result arrived";
constexpr unsigned kObserver = 31;

template <class T>
T MakeResult() {
    T result(7);
    result.thirdMsg = kText;
    return result;
}

template <>
InnerLoginRet MakeResult() {
    InnerLoginRet result;
    result.coreText27 = kText;
    return result;
}

template <>
InnerLoginPluginRet MakeResult() {
    InnerLoginPluginRet result;
    result.coreText7 = kText;
    return result;
}

// A text of the result that is made last and read without an allocation.
const char* LastText(const InnerBaseRet& result) {
    return result.thirdMsg.c_str();
}

const char* LastText(const InnerLoginRet& result) {
    return result.coreText27.c_str();
}

const char* LastText(const InnerLoginPluginRet& result) {
    return result.coreText7.c_str();
}

size_t sDelivered = 0; // Since the last commit; observers carry no context.

template <class T>
class HolderAllocationTest : public ::testing::Test {
protected:
    using Holder = VornInnerObserverHolder<T>;

    HolderAllocationTest() {
        SetLogSink([](const VornLogLine& line) { EXPECT_FALSE(line.text.empty()); });
    }

    ~HolderAllocationTest() override { SetLogSink({}); }

    HolderAllocationTest(const HolderAllocationTest&) = delete;
    HolderAllocationTest& operator=(const HolderAllocationTest&) = delete;

    // What a try begins with and leaves behind: empty maps.
    struct Road {
        Road() = default;
        explicit Road(unsigned observerID) { RegisterObserver<T>(observerID, &Observe); }
        Road(const Road&) = delete;
        Road& operator=(const Road&) = delete;
        ~Road() {
            Holder::mObserverHolder.clear();
            Holder::mTaskParamsHolder.clear();
        }

        static void Cache(const T& result, const String& seqID) {
            Holder::cacheTask(kSeqID, VornCallBackParams<T>(result, kObserver, seqID));
        }
    };

    static void Observe(const T& result, const char* seqID) {
        EXPECT_STREQ(seqID, kSeqID);
        EXPECT_STREQ(LastText(result), kText);
        sDelivered += 1;
    }

    void Commit(unsigned observerID) const {
        sDelivered = 0;
        Holder::CommitToTaskQueue(mResult, observerID, mSeqID);
    }

    static void ExpectWholeEntries(size_t least, size_t most) {
        EXPECT_GE(Holder::mTaskParamsHolder.size(), least);
        EXPECT_LE(Holder::mTaskParamsHolder.size(), most);
        for (const auto& [seqID, waiting] : Holder::mTaskParamsHolder) {
            EXPECT_EQ(waiting.mSeqID.toString(), seqID);
            EXPECT_EQ(waiting.mObserverID, kObserver);
            EXPECT_EQ(RecordText(waiting.mRet), RecordText(MakeResult<T>()));
        }
    }

    const T mResult = MakeResult<T>();
    const String mSeqID = kSeqID;
};

TYPED_TEST_SUITE(HolderAllocationTest, HolderRecords, HolderRecordNames);

TYPED_TEST(HolderAllocationTest, CommitWithoutAnObserver) {
    using Road = typename TestFixture::Road;
    FailEveryAllocation([] { return Road(); }, [this](Road&) { this->Commit(kObserver); },
                        [](Road&, Ending ending) {
                            // A line that cannot be written behind the insertion leaves the entry, whole.
                            TestFixture::ExpectWholeEntries(ending == Ending::kDone ? 1 : 0, 1);
                            EXPECT_TRUE(TestFixture::Holder::mObserverHolder.empty());
                        });
}

TYPED_TEST(HolderAllocationTest, CommitWhoseSequenceIDIsCachedAlready) {
    using Road = typename TestFixture::Road;
    struct Cached : Road {
        Cached(const TypeParam& result, const String& seqID) { Road::Cache(result, seqID); }
    };
    FailEveryAllocation([this] { return Cached(this->mResult, this->mSeqID); },
                        [this](Cached&) { this->Commit(kObserver + 1); },
                        [](Cached&, Ending) { TestFixture::ExpectWholeEntries(1, 1); });
}

TYPED_TEST(HolderAllocationTest, CommitWithoutAnObserverOrASequenceID) {
    using Road = typename TestFixture::Road;
    const String none;
    FailEveryAllocation([] { return Road(); },
                        [&](Road&) { TestFixture::Holder::CommitToTaskQueue(this->mResult, kObserver, none); },
                        [](Road&, Ending) { TestFixture::ExpectWholeEntries(0, 0); });
}

TYPED_TEST(HolderAllocationTest, CommitToAnObserver) {
    using Road = typename TestFixture::Road;
    FailEveryAllocation([] { return Road(kObserver); }, [this](Road&) { this->Commit(kObserver); },
                        [](Road&, Ending ending) {
                            Host::DrainMainQueueUntilEmpty();
                            EXPECT_EQ(sDelivered, ending == Ending::kDone ? 1U : 0U);
                            TestFixture::ExpectWholeEntries(0, 0);
                            EXPECT_EQ(TestFixture::Holder::mObserverHolder.size(), 1U);
                        });
}

TYPED_TEST(HolderAllocationTest, CommitToObserver107) {
    using Road = typename TestFixture::Road;
    FailEveryAllocation([] { return Road(ObserverID::kDirect); }, [this](Road&) { this->Commit(ObserverID::kDirect); },
                        [](Road&, Ending ending) {
                            EXPECT_EQ(sDelivered, ending == Ending::kDone ? 1U : 0U);
                            TestFixture::ExpectWholeEntries(0, 0);
                            EXPECT_EQ(TestFixture::Holder::mObserverHolder.size(), 1U);
                        });
}

TYPED_TEST(HolderAllocationTest, DeliveryOnTheMainThread) {
    using Road = typename TestFixture::Road;
    FailEveryAllocation([] { return Road(kObserver); },
                        [this](Road&) {
                            sDelivered = 0;
                            auto waiting =
                                std::make_unique<VornCallBackParams<TypeParam>>(this->mResult, kObserver, this->mSeqID);
                            TestFixture::Holder::CallbackOnMainThread(0, waiting.release());
                        },
                        [](Road&, Ending ending) { EXPECT_EQ(sDelivered, ending == Ending::kDone ? 1U : 0U); });
}

TYPED_TEST(HolderAllocationTest, DeliveryAfterTheObserverIsGone) {
    using Road = typename TestFixture::Road;
    FailEveryAllocation([] { return Road(); },
                        [this](Road&) {
                            sDelivered = 0;
                            auto waiting =
                                std::make_unique<VornCallBackParams<TypeParam>>(this->mResult, kObserver, this->mSeqID);
                            TestFixture::Holder::CallbackOnMainThread(0, waiting.release());
                        },
                        [](Road&, Ending) {
                            EXPECT_EQ(sDelivered, 0U);
                            TestFixture::ExpectWholeEntries(0, 0);
                        });
}

TYPED_TEST(HolderAllocationTest, RegisteringAnObserver) {
    using Road = typename TestFixture::Road;
    FailEveryAllocation(
        [] { return Road(); }, [](Road&) { RegisterObserver<TypeParam>(kObserver, &TestFixture::Observe); },
        [](Road&, Ending ending) { EXPECT_EQ(IsObserverRegistered<TypeParam>(kObserver), ending == Ending::kDone); });
}

TYPED_TEST(HolderAllocationTest, TakingACachedResultLeavesItInTheCacheUntilItIsCopied) {
    struct Taking : TestFixture::Road {
        Taking(const TypeParam& result, const String& seqID) { TestFixture::Road::Cache(result, seqID); }
        Slot<std::optional<VornCallBackParams<TypeParam>>> taken;
    };
    FailEveryAllocation([this] { return Taking(this->mResult, this->mSeqID); },
                        [](Taking& taking) { taking.taken.Make([] { return TakeCachedResult<TypeParam>(kSeqID); }); },
                        [](const Taking& taking, Ending ending) {
                            const bool isTaken = ending == Ending::kDone;
                            EXPECT_EQ(taking.taken.Get() != nullptr && taking.taken.Get()->has_value(), isTaken);
                            TestFixture::ExpectWholeEntries(isTaken ? 0 : 1, isTaken ? 0 : 1);
                        });
}

TYPED_TEST(HolderAllocationTest, DeliveringCachedResults) {
    struct Late : TestFixture::Road {
        Late(const TypeParam& result, const String& seqID) : TestFixture::Road(kObserver) {
            TestFixture::Road::Cache(result, seqID);
        }
    };
    FailEveryAllocation([this] { return Late(this->mResult, this->mSeqID); },
                        [](Late&) {
                            sDelivered = 0;
                            DeliverCachedResults<TypeParam>();
                        },
                        [](Late&, Ending ending) {
                            // Either its observer has it or the cache.
                            EXPECT_EQ(sDelivered, ending == Ending::kDone ? 1U : 0U);
                            TestFixture::ExpectWholeEntries(1 - sDelivered, 1 - sDelivered);
                        });
}

} // namespace
} // namespace Tarvik::Vorn::Test
