// Stand-ins under several threads at once: nothing is lost, nothing comes twice, and the thread sanitizer is silent.
#include "FacebookPlatformTest.h"

#include "FBSDKCoreKit/FBSDKAppEvents+Control.h"
#include "FBSDKGamingServicesKit/FBSDKFriendFinderDialog+Control.h"
#include "Openings.h"
#include "PlatformFaults.h"

#import <FBSDKShareKit/FBSDKShareKit.h>
#import <FBSDKShareKit/FBSDKShareKit-Swift.h>
#import <FBSDKGamingServicesKit/FBSDKGamingServicesKit-Swift.h>

#include <atomic>
#include <latch>

namespace Tarvik::Vorn::Test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

// Runs `work(thread number)` on every thread, all starting together.
void OnThreads(const std::function<void(int)>& work) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            @autoreleasepool {
                start.arrive_and_wait();
                work(number);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

class FacebookThreads : public FacebookPlatformTest {};

TEST_F(FacebookThreads, EveryLoginIsAnsweredOrReplacedAndNoneTwice) {
    std::atomic<int> called = 0;
    std::atomic<int> answered = 0;
    std::atomic<int>* const calls = &called;

    OnThreads([&](int number) {
        for (int round = 0; round < kRounds; ++round) {
            @autoreleasepool {
                if (number % 2 == 0) {
                    __block int callsOfThisLogin = 0;
                    const RetainPtr<FBSDKLoginManager*> manager = AdoptNS([[FBSDKLoginManager alloc] init]);
                    [manager.get() logInWithPermissions:@[ @"email" ]
                                     fromViewController:nil
                                                handler:^(FBSDKLoginManagerLoginResult*, NSError*) {
                                                    ++*calls;
                                                    EXPECT_EQ(++callsOfThisLogin, 1);
                                                }];
                } else if (Host::AnswerLogin(Host::LoginAnswer::Cancelled())) {
                    ++answered;
                }
            }
        }
    });

    EXPECT_EQ(called, answered);
    EXPECT_EQ([FBSDKLoginManager loginRequests].size(), static_cast<size_t>(kThreads / 2 * kRounds));
    EXPECT_LE([FBSDKLoginManager pendingLoginCount], 1u);
}

TEST_F(FacebookThreads, TokensAreReplacedAndReadTogether) {
    FBSDKAccessToken* const token = Host::MakeAccessToken(@"token", @"user", @[ @"email" ]);
    std::atomic<int> wrong = 0;

    OnThreads([&](int number) {
        for (int round = 0; round < kRounds; ++round) {
            @autoreleasepool {
                if (number % 2 == 0) {
                    Host::ReplaceCurrentAccessToken(round % 2 == 0 ? token : nil);
                    Host::ReplaceCurrentAuthenticationToken(Host::MakeAuthenticationToken(@"token", @"gaming"));
                } else {
                    FBSDKAccessToken* const current = [FBSDKAccessToken currentAccessToken];
                    FBSDKAuthenticationToken* const idToken = [FBSDKAuthenticationToken currentAuthenticationToken];
                    wrong += (current != nil && Text([current tokenString]) != "token") ? 1 : 0;
                    wrong += (idToken != nil && Text([idToken graphDomain]) != "gaming") ? 1 : 0;
                }
            }
        }
    });

    EXPECT_EQ(wrong, 0);
}

TEST_F(FacebookThreads, SettingsAreWrittenAndReadTogether) {
    std::atomic<int> wrong = 0;
    [[FBSDKSettings sharedSettings] setAppID:@"0"];

    OnThreads([&](int number) {
        FBSDKSettings* const settings = [FBSDKSettings sharedSettings];
        for (int round = 0; round < kRounds; ++round) {
            @autoreleasepool {
                [settings setAppID:[NSString stringWithFormat:@"%d", number]];
                wrong += [[settings appID] length] == 1 ? 0 : 1;
                Host::SetInfoValue(@"FacebookDisplayName", [NSString stringWithFormat:@"%d", number]);
                wrong += [[settings displayName] length] == 0 ? 1 : 0;
                wrong += [[settings sdkVersion] length] == 0 ? 1 : 0;
            }
        }
    });

    EXPECT_EQ(wrong, 0);
}

TEST_F(FacebookThreads, NoEventIsLostAndEachHasItsOwnVerdict) {
    OnThreads([](int number) {
        for (int round = 0; round < kRounds; ++round) {
            @autoreleasepool {
                [[FBSDKAppEvents shared] logEvent:number % 2 == 0 ? @"good" : @"b.a.d" parameters:@{@"key" : @(round)}];
                [[FBSDKAppEvents shared] activateApp];
            }
        }
    });

    const std::vector<Host::AppEvent> events = [FBSDKAppEvents events];
    EXPECT_EQ(events.size(), static_cast<size_t>(kThreads * kRounds));
    for (const Host::AppEvent& event : events) {
        EXPECT_EQ(event.accepted, Text(event.name.get()) == "good");
    }
    EXPECT_EQ([FBSDKAppEvents developerErrorCount], static_cast<NSUInteger>(kThreads * kRounds));
}

TEST_F(FacebookThreads, ListenerHearsEveryCallInTheOrderOfTheRecord) {
    std::vector<Host::PlatformCall> heard; // The listener is never called twice at a time.
    Host::SetPlatformCallListener([&heard](const Host::PlatformCall& call) { heard.push_back(call); });

    OnThreads([](int number) {
        for (int round = 0; round < kRounds; ++round) {
            Host::PlatformCalls::Record("Class", "call", std::to_string(number) + ":" + std::to_string(round));
        }
    });

    EXPECT_EQ(heard.size(), static_cast<size_t>(kThreads * kRounds));
    EXPECT_EQ(heard, Host::PlatformCalls::All());
}

TEST_F(FacebookThreads, EveryOpeningIsToldAndAnsweredByTheListener) {
    std::atomic<int> told = 0;
    std::atomic<int> answered = 0;
    std::atomic<int>* const answers = &answered;
    Host::SetOpeningListener([&told](Host::Opening) {
        ++told;
        Host::AnswerFriendFinder(Host::FriendFinderAnswer::Returned());
    });

    OnThreads([&](int) {
        for (int round = 0; round < kRounds; ++round) {
            [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:^(BOOL, NSError*) {
                ++*answers;
            }];
        }
    });

    EXPECT_EQ(told, kThreads * kRounds);
    EXPECT_EQ(answered, kThreads * kRounds);
    EXPECT_EQ(Host::OpenFriendFinderCount(), 0u);
}

TEST_F(FacebookThreads, ListenersComeAndGoWhileTheyAreTold) {
    std::atomic<int> told = 0;

    OnThreads([&](int number) {
        for (int round = 0; round < kRounds; ++round) {
            @autoreleasepool {
                if (number % 2 == 0) {
                    Host::SetOpeningListener([&told](Host::Opening) { ++told; });
                    Host::SetAppEventListener([&told](const Host::AppEvent&) { ++told; });
                } else {
                    [FBSDKFriendFinderDialog launchFriendFinderDialogWithCompletionHandler:^(BOOL, NSError*){
                    }];
                    [[FBSDKAppEvents shared] logEvent:@"event"];
                }
            }
        }
    });

    EXPECT_LE(told, kThreads / 2 * kRounds * 2);
}

TEST_F(FacebookThreads, EveryArrangedExceptionIsRaisedOnce) {
    std::atomic<int> raised = 0;

    OnThreads([&](int) {
        for (int round = 0; round < kRounds; ++round) {
            @autoreleasepool {
                Host::RaiseAtNextCall("Class", "call", "Name", "");
                raised += RaisedBy([] { Host::PlatformCalls::Record("Class", "call"); }) == "Name" ? 1 : 0;
            }
        }
    });

    EXPECT_EQ(raised, kThreads * kRounds);
    EXPECT_FALSE(Host::IsRaisePending("Class", "call"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
