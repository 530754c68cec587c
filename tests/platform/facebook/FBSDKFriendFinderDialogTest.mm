// FBSDKFriendFinderDialog: when it opens, and how it ends.
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "FacebookPlatformTest.h"
#include "FacebookProfile.h"

#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <atomic>
#include <stdexcept>

namespace Tarvik::Vorn::Test {
namespace {

using Host::AnswerFriendFinder;
using Host::FriendFinderAnswer;
using Host::OpenFriendFinderCount;
using Host::PlatformCall;
using ::testing::ElementsAre;
using ::testing::StrNe;

// What a friend finder's handler was called with. Lives longer than the handler.
struct FinderOutcome {
    int calls = 0;
    bool success = false;
    RetainPtr<NSError*> error;
    std::thread::id thread;

    void (^Handler())(BOOL, NSError*) {
        void (^const handler)(BOOL, NSError*) = ^(BOOL theSuccess, NSError* theError) {
            ++calls;
            success = theSuccess;
            error = RetainPtr(theError);
            thread = std::this_thread::get_id();
        };
        return [[handler copy] autorelease];
    }
};

std::string Summary(const FinderOutcome& outcome) {
    NSError* const error = outcome.error.get();
    return std::to_string(outcome.calls) + (outcome.success ? " YES " : " NO ") +
           (error == nil ? "nil" : Text([error domain]) + ' ' + std::to_string([error code]));
}

void Launch(void (^handler)(BOOL, NSError*)) {
    [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:handler];
}

class FacebookFriendFinder : public FacebookPlatformTest {
protected:
    static FinderOutcome EndedWith(const FriendFinderAnswer& answer) {
        FinderOutcome outcome;
        Launch(outcome.Handler());
        EXPECT_TRUE(AnswerFriendFinder(answer));
        return outcome;
    }
};

#pragma mark - Opening

TEST_F(FacebookFriendFinder, OpensWithoutAnyLogin) {
    FinderOutcome outcome;

    Launch(outcome.Handler());

    EXPECT_EQ(OpenFriendFinderCount(), 1u);
    EXPECT_EQ(outcome.calls, 0);
}

TEST_F(FacebookFriendFinder, OpensWithAnEmptyAppID) {
    [[FBSDKSettings sharedSettings] setAppID:@""];

    Launch(nil);

    EXPECT_EQ(OpenFriendFinderCount(), 1u);
}

TEST_F(FacebookFriendFinder, OpensWithTheAppIDOfTheAccessTokenWhenTheSettingsHaveNone) {
    [[FBSDKSettings sharedSettings] setAppID:nil];
    Host::ReplaceCurrentAccessToken(Host::MakeAccessToken(@"token", @"user", @[]));

    Launch(nil);

    EXPECT_EQ(OpenFriendFinderCount(), 1u);
}

TEST_F(FacebookFriendFinder, WithoutAppIDAndAccessTokenEndsWithCore10BeforeTheCallReturns) {
    [[FBSDKSettings sharedSettings] setAppID:nil];
    FinderOutcome outcome;

    Launch(outcome.Handler());

    EXPECT_EQ(Summary(outcome), "1 NO com.facebook.sdk.core 10");
    EXPECT_EQ([[outcome.error.get() userInfo] objectForKey:NSLocalizedDescriptionKey], nil);
    EXPECT_THAT(Text([[outcome.error.get() userInfo] objectForKey:FBSDKErrorDeveloperMessageKey]), StrNe("(nil)"));
    EXPECT_EQ(OpenFriendFinderCount(), 0u);
}

TEST_F(FacebookFriendFinder, ARefusedOneIsToldOnTheCallingThread) {
    [[FBSDKSettings sharedSettings] setAppID:nil];
    FinderOutcome outcome;
    std::thread::id caller;

    OnAnotherThread([&] {
        caller = std::this_thread::get_id();
        Launch(outcome.Handler());
    });

    EXPECT_EQ(outcome.thread, caller);
}

TEST_F(FacebookFriendFinder, ARefusedOneWithoutAHandlerIsToldNobody) {
    [[FBSDKSettings sharedSettings] setAppID:nil];

    Launch(nil);

    EXPECT_EQ(OpenFriendFinderCount(), 0u);
}

#pragma mark - Ends

TEST_F(FacebookFriendFinder, ComingBackIsSuccess) {
    EXPECT_EQ(Summary(EndedWith(FriendFinderAnswer::Returned())), "1 YES nil");
}

class FacebookFriendFinderOfARelease : public FacebookFriendFinder,
                                       public ::testing::WithParamInterface<Host::FacebookProfile> {};

INSTANTIATE_TEST_SUITE_P(All, FacebookFriendFinderOfARelease,
                         ::testing::Values(Host::FacebookProfile::k15_0, Host::FacebookProfile::k17_0,
                                           Host::FacebookProfile::k18_0, Host::FacebookProfile::k18_1));

TEST_P(FacebookFriendFinderOfARelease, ClosingItIsSuccess) {
    Host::SetFacebookProfile(GetParam());

    EXPECT_EQ(Summary(EndedWith(FriendFinderAnswer::Closed())), "1 YES nil");
}

TEST_F(FacebookFriendFinder, ClosingItIsNoSuccessWhereItIsAsDocumented) {
    Host::SetFacebookProfile(Host::FacebookProfile::kAsDocumented);

    EXPECT_EQ(Summary(EndedWith(FriendFinderAnswer::Closed())), "1 NO nil");
}

TEST_F(FacebookFriendFinder, ComingBackIsSuccessAlsoWhereItIsAsDocumented) {
    Host::SetFacebookProfile(Host::FacebookProfile::kAsDocumented);

    EXPECT_EQ(Summary(EndedWith(FriendFinderAnswer::Returned())), "1 YES nil");
}

TEST_F(FacebookFriendFinder, IsOfTheReleaseThatHeldAtItsLaunch) {
    FinderOutcome outcome;
    Host::SetFacebookProfile(Host::FacebookProfile::kAsDocumented);
    Launch(outcome.Handler());
    Host::SetFacebookProfile(Host::FacebookProfile::k18_1);

    AnswerFriendFinder(FriendFinderAnswer::Closed());

    EXPECT_EQ(Summary(outcome), "1 NO nil");
}

TEST_F(FacebookFriendFinder, APageThatCouldNotBeOpenedIsCore13) {
    EXPECT_EQ(Summary(EndedWith(FriendFinderAnswer::NotOpened())), "1 NO com.facebook.sdk.core 13");
}

TEST_F(FacebookFriendFinder, CanEndWithAnyArguments) {
    NSError* const error = Host::MakeError(@"any", 7, nil);

    const FinderOutcome both = EndedWith(FriendFinderAnswer::Exactly(true, error));
    const FinderOutcome neither = EndedWith(FriendFinderAnswer::Exactly(false, nil));

    EXPECT_EQ(Summary(both), "1 YES any 7");
    EXPECT_EQ(both.error.get(), error);
    EXPECT_EQ(Summary(neither), "1 NO nil");
}

#pragma mark - Answers

TEST_F(FacebookFriendFinder, WithoutAnOpenOneThereIsNothingToAnswer) {
    EXPECT_FALSE(AnswerFriendFinder(FriendFinderAnswer::Returned()));
}

TEST_F(FacebookFriendFinder, TheOneThatHasBeenOpenLongestIsAnsweredAndOnce) {
    FinderOutcome first;
    FinderOutcome second;
    Launch(first.Handler());
    Launch(second.Handler());

    EXPECT_TRUE(AnswerFriendFinder(FriendFinderAnswer::Returned()));
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0);
    EXPECT_TRUE(AnswerFriendFinder(FriendFinderAnswer::Returned()));
    EXPECT_EQ(second.calls, 1);
    EXPECT_FALSE(AnswerFriendFinder(FriendFinderAnswer::Returned()));
    EXPECT_EQ(first.calls, 1);
}

TEST_F(FacebookFriendFinder, IsAnsweredOnTheThreadOfTheAnswer) {
    FinderOutcome outcome;
    Launch(outcome.Handler());
    std::thread::id answering;

    OnAnotherThread([&] {
        answering = std::this_thread::get_id();
        AnswerFriendFinder(FriendFinderAnswer::Returned());
    });

    EXPECT_EQ(outcome.thread, answering);
}

TEST_F(FacebookFriendFinder, WithoutAHandlerStillEnds) {
    Launch(nil);

    EXPECT_TRUE(AnswerFriendFinder(FriendFinderAnswer::Returned()));

    EXPECT_EQ(OpenFriendFinderCount(), 0u);
}

TEST_F(FacebookFriendFinder, AHandlerMayLaunchTheNext) {
    FinderOutcome next;
    void (^const handlerOfNext)(BOOL, NSError*) = next.Handler();
    Launch(^(BOOL, NSError*) {
        Launch(handlerOfNext);
    });

    AnswerFriendFinder(FriendFinderAnswer::Returned());

    EXPECT_EQ(OpenFriendFinderCount(), 1u);
    EXPECT_EQ(next.calls, 0);
}

TEST_F(FacebookFriendFinder, AnExceptionOfTheHandlerPassesThroughAndEndsIt) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        Launch(^(BOOL, NSError*) {
            (void)probe;
            throw std::runtime_error("from the handler");
        });
    }

    EXPECT_THROW(AnswerFriendFinder(FriendFinderAnswer::Returned()), std::runtime_error);

    EXPECT_EQ(OpenFriendFinderCount(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookFriendFinder, KeepsACopyOfTheHandlerUntilTheAnswer) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        Launch(^(BOOL, NSError*) {
            (void)probe;
        });
    }
    EXPECT_EQ(alive, 1);

    AnswerFriendFinder(FriendFinderAnswer::Returned());

    EXPECT_EQ(alive, 0);
}

TEST_F(FacebookFriendFinder, ResetReleasesTheHandlerUncalled) {
    int alive = 0;
    __block int calls = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        Launch(^(BOOL, NSError*) {
            (void)probe;
            ++calls;
        });
    }

    Host::ResetPlatform();

    EXPECT_EQ(alive, 0);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(OpenFriendFinderCount(), 0u);
}

#pragma mark - Record, release

TEST_F(FacebookFriendFinder, EveryLaunchIsRecorded) {
    FinderOutcome outcome;
    [[FBSDKSettings sharedSettings] setAppID:nil];
    Host::PlatformCalls::Clear();

    Launch(outcome.Handler());
    OnAnotherThread([] { Launch(nil); });

    const std::string selector = "launchFriendFinderDialogWithCompletionHandler:";
    EXPECT_THAT(Host::PlatformCalls::All(),
                ElementsAre(PlatformCall{"FBSDKFriendFinderDialog", selector, "block", true},
                            PlatformCall{"FBSDKFriendFinderDialog", selector, "nil", false}));
}

TEST_F(FacebookFriendFinder, ResetGoesBackToTheNewestRelease) {
    EXPECT_EQ(Host::CurrentFacebookProfile(), Host::FacebookProfile::k18_1);
    Host::SetFacebookProfile(Host::FacebookProfile::k15_0);

    Host::ResetPlatform();

    EXPECT_EQ(Host::CurrentFacebookProfile(), Host::FacebookProfile::k18_1);
}

TEST_F(FacebookFriendFinder, ManyThreadsMayLaunchAndAnswer) {
    constexpr int kThreads = 4;
    constexpr int kLaunches = 50;
    std::atomic<int> calls = 0;
    std::atomic<int>* const counter = &calls;
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([counter] {
            for (int launch = 0; launch < kLaunches; ++launch) {
                @autoreleasepool {
                    Launch(^(BOOL, NSError*) {
                        ++*counter;
                    });
                    EXPECT_TRUE(AnswerFriendFinder(FriendFinderAnswer::Returned()));
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(calls.load(), kThreads * kLaunches);
    EXPECT_EQ(OpenFriendFinderCount(), 0u);
}

} // namespace
} // namespace Tarvik::Vorn::Test
