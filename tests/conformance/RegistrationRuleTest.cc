// Observers are registered before results can arrive, because the holder takes no lock. These tests show what the rule
// protects from: the two deterministic ones let the core break it at the worst moment, and RegistrationRace.cc does it with
// a second thread, for the thread sanitizer to see.

#include "LogRecorder.h"
#include "ResultRecorder.h"
#include "RunProgram.h"
#include "VornLogSink.h"

#include "MainQueue+Control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Holder = VornInnerObserverHolder<InnerBaseRet>;

class RegistrationRuleTest : public ::testing::Test {
protected:
    RegistrationRuleTest() { ResultRecorder::Reset(); }
    ~RegistrationRuleTest() override {
        SetLogSink({});
        Host::DrainMainQueueUntilEmpty();
        ResultRecorder::Reset();
    }
    RegistrationRuleTest(const RegistrationRuleTest&) = delete;
    RegistrationRuleTest& operator=(const RegistrationRuleTest&) = delete;

    // Has `work` done between the holder's look at its observers and what it does about it.
    template <class Work>
    static void RightAfterTheLook(const char* lineBegin, const Work& work) {
        SetLogSink([lineBegin, work](const VornLogLine& line) {
            if (line.text.starts_with(lineBegin)) {
                work();
            }
        });
    }
};

TEST_F(RegistrationRuleTest, AnObserverRegisteredWhileItsResultArrivesNeverGetsIt) {
    RightAfterTheLook("Cache ObserverID", [] { ResultRecorder::Observe<InnerBaseRet, 31>(); });

    Holder::CommitToTaskQueue(InnerBaseRet(0), 31, "s1");
    Host::DrainMainQueueUntilEmpty();

    EXPECT_TRUE(IsObserverRegistered<InnerBaseRet>(31));
    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
    EXPECT_EQ(CachedResultCount<InnerBaseRet>(), 1U) << "it waits until the core asks for cached results again";
}

TEST_F(RegistrationRuleTest, AnObserverRemovedWhileItsResultArrivesLosesIt) {
    ResultRecorder::Observe<InnerBaseRet, 31>();
    RightAfterTheLook("DispatchAsyncMainThread", [] { RemoveObserver<InnerBaseRet>(31); });

    Holder::CommitToTaskQueue(InnerBaseRet(0), 31, "s1");
    Host::DrainMainQueueUntilEmpty();

    EXPECT_THAT(ResultRecorder::Deliveries(), IsEmpty());
    EXPECT_EQ(CachedResultCount<InnerBaseRet>(), 0U);
}

TEST_F(RegistrationRuleTest, AnObserverRegisteredBeforehandGetsEveryResult) {
    ResultRecorder::Observe<InnerBaseRet, 31>();

    Holder::CommitToTaskQueue(InnerBaseRet(0), 31, "s1");
    Host::DrainMainQueueUntilEmpty();

    EXPECT_THAT(ResultRecorder::Deliveries(), SizeIs(1));
}

// What breaking the rule on two threads is: a race on the map of observers, and two at once on the cache.
TEST_F(RegistrationRuleTest, BreakingItOnTwoThreadsIsADataRace) {
#if !__has_feature(thread_sanitizer)
    GTEST_SKIP() << "only the thread sanitizer sees a race; `make tsan` runs this";
#endif
    for (const char* way : {"register", "cache"}) {
        const ProgramResult result = RunProgram({VORN_REGISTRATION_RACE, way});

        EXPECT_NE(result.exitStatus, 0) << way;
        EXPECT_THAT(result.errors, HasSubstr("data race")) << way;
        EXPECT_THAT(result.errors, HasSubstr("CommitToTaskQueue")) << way;
    }
}

TEST_F(RegistrationRuleTest, KeepingItOnTwoThreadsIsNone) {
    const ProgramResult result = RunProgram({VORN_REGISTRATION_RACE, "keep-the-rule"});

    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    EXPECT_THAT(result.errors, IsEmpty());
}

} // namespace
} // namespace Tarvik::Vorn::Test
