// The photo library: permission, changes that are held, and the assets they create.
#include "Photos/PhotoLibrary.h"

#include "ApplePlatformTest.h"

#include <array>

namespace Tarvik::Vorn::Test {
namespace {

using Host::PhotoChangesOutcome;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

NSError* AnError() {
    return [NSError errorWithDomain:@"PHPhotosErrorDomain" code:3302 userInfo:nil];
}

#pragma mark - Permission

// What the handlers of permission requests were told. Lives longer than they.
struct Answers {
    std::vector<PHAuthorizationStatus> statuses;
    std::thread::id thread;

    void Ask() {
        [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus status) {
            statuses.push_back(status);
            thread = std::this_thread::get_id();
        }];
    }
};

using PhotoPermission = ApplePlatformTest;

TEST_F(PhotoPermission, IsGivenByDefault) {
    EXPECT_EQ([PHPhotoLibrary authorizationStatus], PHAuthorizationStatusAuthorized);
}

TEST_F(PhotoPermission, IsWhatWasSetEvenWhatNoDeviceAnswers) {
    for (const PHAuthorizationStatus status :
         {PHAuthorizationStatusNotDetermined, PHAuthorizationStatusRestricted, PHAuthorizationStatusDenied,
          PHAuthorizationStatusAuthorized, PHAuthorizationStatusLimited}) {
        Host::SetPhotoAuthorization(status);
        EXPECT_EQ([PHPhotoLibrary authorizationStatus], status);
    }
}

TEST_F(PhotoPermission, ARequestIsHeld) {
    Answers answers;

    answers.Ask();

    EXPECT_THAT(answers.statuses, IsEmpty());
    EXPECT_EQ(Host::PendingPhotoPromptCount(), 1u);
}

TEST_F(PhotoPermission, TheUsersAnswerGoesToTheHandlerOnce) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);
    Answers answers;
    answers.Ask();

    EXPECT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied));
    EXPECT_FALSE(Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized));

    EXPECT_THAT(answers.statuses, ElementsAre(PHAuthorizationStatusDenied));
}

TEST_F(PhotoPermission, TheUsersAnswerIsTheStatusWhenTheHandlerRuns) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);
    __block PHAuthorizationStatus seen = PHAuthorizationStatusNotDetermined;
    [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus) {
        seen = [PHPhotoLibrary authorizationStatus];
    }];

    Host::AnswerPhotoPrompt(PHAuthorizationStatusLimited);

    EXPECT_EQ(seen, PHAuthorizationStatusLimited);
}

TEST_F(PhotoPermission, AnAnswerThatNobodyWaitsForChangesNothing) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);

    EXPECT_FALSE(Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied));
    EXPECT_FALSE(Host::AnswerPhotoPrompt());

    EXPECT_EQ([PHPhotoLibrary authorizationStatus], PHAuthorizationStatusNotDetermined);
}

TEST_F(PhotoPermission, WhereTheUserHasDecidedTheHandlerIsToldTheStatus) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusRestricted);
    Answers answers;
    answers.Ask();

    EXPECT_TRUE(Host::AnswerPhotoPrompt());

    EXPECT_THAT(answers.statuses, ElementsAre(PHAuthorizationStatusRestricted));
}

TEST_F(PhotoPermission, RequestsAreAnsweredOneByOneInTheirOrder) {
    Answers first;
    Answers second;
    first.Ask();
    second.Ask();

    Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied);

    EXPECT_THAT(first.statuses, ElementsAre(PHAuthorizationStatusDenied));
    EXPECT_THAT(second.statuses, IsEmpty());
    EXPECT_EQ(Host::PendingPhotoPromptCount(), 1u);
}

TEST_F(PhotoPermission, ALaterRequestMayBeAnsweredFirst) {
    Answers first;
    Answers second;
    first.Ask();
    second.Ask();

    EXPECT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied, 1));
    EXPECT_FALSE(Host::AnswerPhotoPrompt(PHAuthorizationStatusLimited, 1));

    EXPECT_THAT(first.statuses, IsEmpty());
    EXPECT_THAT(second.statuses, ElementsAre(PHAuthorizationStatusDenied));
    EXPECT_EQ([PHPhotoLibrary authorizationStatus], PHAuthorizationStatusDenied);
}

TEST_F(PhotoPermission, ARequestMayBeAnsweredTwiceAndTheStatusIsTheLastOne) {
    Answers answers;
    answers.Ask();

    EXPECT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusDenied, 0, Host::Closing::kStaysOpen));
    EXPECT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized));

    EXPECT_THAT(answers.statuses, ElementsAre(PHAuthorizationStatusDenied, PHAuthorizationStatusAuthorized));
    EXPECT_EQ([PHPhotoLibrary authorizationStatus], PHAuthorizationStatusAuthorized);
    EXPECT_EQ(Host::PendingPhotoPromptCount(), 0u);
}

TEST_F(PhotoPermission, TheHandlerRunsOnTheAnsweringThread) {
    Answers answers;
    answers.Ask();

    std::thread::id answering;
    OnAnotherThread([&] {
        answering = std::this_thread::get_id();
        Host::AnswerPhotoPrompt();
    });

    EXPECT_EQ(answers.thread, answering);
}

TEST_F(PhotoPermission, ARequestWithoutAHandlerCanBeAnswered) {
    Host::SetPhotoAuthorization(PHAuthorizationStatusNotDetermined);
    [PHPhotoLibrary requestAuthorization:Nothing()];

    EXPECT_TRUE(Host::AnswerPhotoPrompt(PHAuthorizationStatusAuthorized));

    EXPECT_EQ([PHPhotoLibrary authorizationStatus], PHAuthorizationStatusAuthorized);
}

TEST_F(PhotoPermission, AHandlerMayAskAgain) {
    __block int calls = 0;
    [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus) {
        [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus) {
            calls += 1;
        }];
    }];

    EXPECT_TRUE(Host::AnswerPhotoPrompt());
    EXPECT_TRUE(Host::AnswerPhotoPrompt());

    EXPECT_EQ(calls, 1);
}

TEST_F(PhotoPermission, AnAnsweredHandlerIsReleased) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus) {
            [probe self];
        }];
    }
    EXPECT_EQ(alive, 1);

    Host::AnswerPhotoPrompt();

    EXPECT_EQ(alive, 0);
}

TEST_F(PhotoPermission, RequestsAreRecordedAndReadingTheStatusIsNot) {
    [PHPhotoLibrary authorizationStatus];
    [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus){
    }];
    [PHPhotoLibrary requestAuthorization:Nothing()];

    EXPECT_THAT(RecordedCalls(),
                ElementsAre("PHPhotoLibrary requestAuthorization: block", "PHPhotoLibrary requestAuthorization: nil"));
}

TEST_F(PhotoPermission, AResetForgetsRequestsUncalledAndTheStatus) {
    Answers answers;
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        [PHPhotoLibrary requestAuthorization:^(PHAuthorizationStatus) {
            [probe self];
        }];
    }
    answers.Ask();
    Host::SetPhotoAuthorization(PHAuthorizationStatusDenied);

    Host::ResetPlatform();

    EXPECT_EQ(alive, 0);
    EXPECT_THAT(answers.statuses, IsEmpty());
    EXPECT_EQ(Host::PendingPhotoPromptCount(), 0u);
    EXPECT_EQ([PHPhotoLibrary authorizationStatus], PHAuthorizationStatusAuthorized);
}

#pragma mark - Changes

// What happened to changes, in order. Lives longer than their blocks.
struct ChangeLog {
    std::vector<std::string> events; // "change", then "YES nil", "NO 3302".
    std::thread::id changeThread;
    std::thread::id handlerThread;

    void Perform() {
        [[PHPhotoLibrary sharedPhotoLibrary]
            performChanges:^{
                events.emplace_back("change");
                changeThread = std::this_thread::get_id();
            }
            completionHandler:^(BOOL success, NSError* error) {
                events.push_back((success ? "YES " : "NO ") + (error == nil ? "nil" : std::to_string([error code])));
                handlerThread = std::this_thread::get_id();
            }];
    }
};

// Has the library make changes in which `work` runs.
void Change(dispatch_block_t work) {
    [[PHPhotoLibrary sharedPhotoLibrary] performChanges:work completionHandler:nil];
}

// The identifier that a video gets when it is saved like that; "(nil)" when there was no request or no placeholder.
std::string IdentifierOf(NSURL* url, const PhotoChangesOutcome& outcome) {
    __block std::string identifier;
    Change(^{
        PHAssetChangeRequest* const request = [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:url];
        identifier = Text([[request placeholderForCreatedAsset] localIdentifier]);
    });
    EXPECT_TRUE(Host::RunPhotoChanges(outcome));
    return identifier;
}

using PhotoChanges = ApplePlatformTest;

TEST_F(PhotoChanges, ThereIsOneLibrary) {
    EXPECT_NE([PHPhotoLibrary sharedPhotoLibrary], nil);
    EXPECT_EQ([PHPhotoLibrary sharedPhotoLibrary], [PHPhotoLibrary sharedPhotoLibrary]);
}

TEST_F(PhotoChanges, AnsweredTwiceRunTheirBlockOnce) {
    ChangeLog log;
    log.Perform();

    EXPECT_TRUE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved(), 0, Host::Closing::kStaysOpen));
    EXPECT_TRUE(Host::RunPhotoChanges(PhotoChangesOutcome::Failed(AnError())));

    EXPECT_THAT(log.events, ElementsAre("change", "YES nil", "NO 3302"));
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 0u);
}

TEST_F(PhotoChanges, MayRunOutOfTheirOrder) {
    ChangeLog first;
    ChangeLog second;
    first.Perform();
    second.Perform();

    EXPECT_TRUE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved(), 1));
    EXPECT_FALSE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved(), 1));

    EXPECT_THAT(first.events, IsEmpty());
    EXPECT_THAT(second.events, ElementsAre("change", "YES nil"));
}

TEST_F(PhotoChanges, AreHeld) {
    ChangeLog log;

    log.Perform();

    EXPECT_THAT(log.events, IsEmpty());
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 1u);
}

TEST_F(PhotoChanges, SavedMeansYesWithoutAnError) {
    ChangeLog log;
    log.Perform();

    EXPECT_TRUE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved()));

    EXPECT_THAT(log.events, ElementsAre("change", "YES nil"));
}

TEST_F(PhotoChanges, FailedMeansNoWithTheErrorAfterTheChangeBlock) {
    ChangeLog log;
    log.Perform();

    Host::RunPhotoChanges(PhotoChangesOutcome::Failed(AnError()));

    EXPECT_THAT(log.events, ElementsAre("change", "NO 3302"));
}

TEST_F(PhotoChanges, CanEndAsTheSystemNeverDoes) {
    ChangeLog log;
    log.Perform();
    log.Perform();

    Host::RunPhotoChanges(PhotoChangesOutcome::SavedWithError(AnError()));
    Host::RunPhotoChanges(PhotoChangesOutcome::FailedWithoutError());

    EXPECT_THAT(log.events, ElementsAre("change", "YES 3302", "change", "NO nil"));
}

TEST_F(PhotoChanges, RunOneByOneInTheirOrder) {
    ChangeLog first;
    ChangeLog second;
    first.Perform();
    second.Perform();

    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());

    EXPECT_THAT(first.events, ElementsAre("change", "YES nil"));
    EXPECT_THAT(second.events, IsEmpty());
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 1u);
}

TEST_F(PhotoChanges, RunningWithoutAnyTellsSo) {
    EXPECT_FALSE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved()));
}

TEST_F(PhotoChanges, BothBlocksRunOnTheRunningThread) {
    ChangeLog log;
    log.Perform();

    std::thread::id running;
    OnAnotherThread([&] {
        running = std::this_thread::get_id();
        Host::RunPhotoChanges(PhotoChangesOutcome::Saved());
    });

    EXPECT_EQ(log.changeThread, running);
    EXPECT_EQ(log.handlerThread, running);
}

TEST_F(PhotoChanges, MayLackEitherBlock) {
    __block int calls = 0;
    [[PHPhotoLibrary sharedPhotoLibrary] performChanges:Nothing()
                                      completionHandler:^(BOOL, NSError*) {
                                          calls += 1;
                                      }];
    [[PHPhotoLibrary sharedPhotoLibrary]
           performChanges:^{
               calls += 10;
           }
        completionHandler:nil];

    EXPECT_TRUE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved()));
    EXPECT_TRUE(Host::RunPhotoChanges(PhotoChangesOutcome::Saved()));

    EXPECT_EQ(calls, 11);
}

TEST_F(PhotoChanges, AreReleasedWhenTheyHaveRun) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        [[PHPhotoLibrary sharedPhotoLibrary]
            performChanges:^{
                [probe self];
            }
            completionHandler:^(BOOL, NSError*) {
                [probe self];
            }];
    }
    EXPECT_EQ(alive, 1);

    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());

    EXPECT_EQ(alive, 0);
}

TEST_F(PhotoChanges, AResetForgetsThemUncalled) {
    ChangeLog log;
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        Change(^{
            [probe self];
        });
    }
    log.Perform();

    Host::ResetPlatform();

    EXPECT_EQ(alive, 0);
    EXPECT_THAT(log.events, IsEmpty());
    EXPECT_EQ(Host::PendingPhotoChangesCount(), 0u);
}

TEST_F(PhotoChanges, OfManyThreadsAreAllHeld) {
    std::array<ChangeLog, 4> logs;
    std::vector<std::thread> threads;
    threads.reserve(logs.size());

    for (ChangeLog& log : logs) {
        threads.emplace_back([&log] {
            @autoreleasepool {
                for (int i = 0; i < 50; ++i) {
                    log.Perform();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(Host::PendingPhotoChangesCount(), 200u);
}

#pragma mark - Assets

using PhotoAssets = ApplePlatformTest;

TEST_F(PhotoAssets, AVideosPlaceholderHasTheIdentifierOfTheOutcome) {
    EXPECT_EQ(IdentifierOf(MediaURL("clip.mp4"), PhotoChangesOutcome::Saved(@"my id")), "my id");
}

TEST_F(PhotoAssets, TheIdentifierMayBeEmpty) {
    EXPECT_EQ(IdentifierOf(MediaURL("clip.mp4"), PhotoChangesOutcome::Saved(@"")), "");
}

TEST_F(PhotoAssets, IdentifiersCountUpWhenNoneIsGiven) {
    NSURL* const url = MediaURL("clip.mp4");

    EXPECT_EQ(IdentifierOf(url, PhotoChangesOutcome::Saved()), "00000000-0000-0000-0000-000000000001/L0/001");
    EXPECT_EQ(IdentifierOf(url, PhotoChangesOutcome::Saved()), "00000000-0000-0000-0000-000000000002/L0/001");
}

TEST_F(PhotoAssets, AChangeThatFailsHasAPlaceholderToo) {
    EXPECT_EQ(IdentifierOf(MediaURL("clip.mp4"), PhotoChangesOutcome::Failed(AnError())),
              "00000000-0000-0000-0000-000000000001/L0/001");
}

TEST_F(PhotoAssets, IdentifiersBeginAnewAfterAReset) {
    IdentifierOf(MediaURL("clip.mp4"), PhotoChangesOutcome::Saved());

    Host::ResetPlatform();

    EXPECT_EQ(IdentifierOf(MediaURL("clip.mp4"), PhotoChangesOutcome::Saved()),
              "00000000-0000-0000-0000-000000000001/L0/001");
}

TEST_F(PhotoAssets, ThePlaceholderOfARequestStaysTheSame) {
    Change(^{
        PHAssetChangeRequest* const request =
            [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:MediaURL("clip.mp4")];
        EXPECT_EQ([request placeholderForCreatedAsset], [request placeholderForCreatedAsset]);
        EXPECT_TRUE([[request placeholderForCreatedAsset] isKindOfClass:[PHObjectPlaceholder class]]);
    });

    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());
}

// Whatever it holds: the system looks into the file later, when it makes the change.
TEST_F(PhotoAssets, AnyFileHasARequest) {
    EXPECT_EQ(IdentifierOf(MediaURL("text.png"), PhotoChangesOutcome::Saved(@"id")), "id");
}

TEST_F(PhotoAssets, WhatIsNoFileHasNoRequest) {
    const PhotoChangesOutcome saved = PhotoChangesOutcome::Saved(@"id");

    EXPECT_EQ(IdentifierOf(MediaURL("missing.mp4"), saved), "(nil)");
    EXPECT_EQ(IdentifierOf(MediaURL(""), saved), "(nil)");
    EXPECT_EQ(IdentifierOf([NSURL URLWithString:@"https://host/clip.mp4"], saved), "(nil)");
    EXPECT_EQ(IdentifierOf(nil, saved), "(nil)");
}

TEST_F(PhotoAssets, ARequestOutsideOfAChangeBlockRaises) {
    NSURL* const url = MediaURL("clip.mp4");

    EXPECT_EQ(RaisedBy([url] { [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:url]; }),
              "NSInternalInconsistencyException");
}

TEST_F(PhotoAssets, ARequestInTheHandlerRaises) {
    __block std::string raised;
    [[PHPhotoLibrary sharedPhotoLibrary]
        performChanges:^{
        }
        completionHandler:^(BOOL, NSError*) {
            raised =
                RaisedBy([] { [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:MediaURL("clip.mp4")]; });
        }];

    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());

    EXPECT_EQ(raised, "NSInternalInconsistencyException");
}

TEST_F(PhotoAssets, ARequestOnAnotherThreadThanTheChangeBlockRaises) {
    std::string raised;
    std::string* const noted = &raised;
    Change(^{
        OnAnotherThread([noted] {
            *noted =
                RaisedBy([] { [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:MediaURL("clip.mp4")]; });
        });
    });

    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());

    EXPECT_EQ(raised, "NSInternalInconsistencyException");
}

TEST_F(PhotoAssets, AnExceptionInAChangeBlockComesOutAndEndsTheChange) {
    ChangeLog log;
    __block int handlerCalls = 0;
    [[PHPhotoLibrary sharedPhotoLibrary]
        performChanges:^{
            [NSException raise:@"Broken" format:@"the block is broken"];
        }
        completionHandler:^(BOOL, NSError*) {
            handlerCalls += 1;
        }];

    EXPECT_EQ(RaisedBy([] { Host::RunPhotoChanges(PhotoChangesOutcome::Saved()); }), "Broken");

    EXPECT_EQ(handlerCalls, 0);
    EXPECT_EQ(RaisedBy([] { [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:MediaURL("clip.mp4")]; }),
              "NSInternalInconsistencyException");
}

TEST_F(PhotoAssets, AChangeRunWithinAnotherHasItsOwnIdentifiers) {
    __block std::string outer;
    Change(^{
        IdentifierOf(MediaURL("clip.mp4"), PhotoChangesOutcome::Saved(@"inner"));
        PHAssetChangeRequest* const request =
            [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:MediaURL("clip.mp4")];
        outer = Text([[request placeholderForCreatedAsset] localIdentifier]);
    });

    Host::RunPhotoChanges(PhotoChangesOutcome::Saved(@"outer"));

    EXPECT_EQ(outer, "outer");
}

TEST_F(PhotoAssets, ChangesAndRequestsAreRecordedWithTheURL) {
    NSURL* const url = [NSURL fileURLWithPath:@"/missing/a clip.mp4"];

    Change(^{
        [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:url];
    });
    Change(^{
        [PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL:Nothing()];
    });
    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());
    Host::RunPhotoChanges(PhotoChangesOutcome::Saved());
    [[PHPhotoLibrary sharedPhotoLibrary] performChanges:Nothing()
                                      completionHandler:^(BOOL, NSError*){
                                      }];

    EXPECT_THAT(RecordedCalls(), ElementsAre("PHPhotoLibrary performChanges:completionHandler: block, nil",
                                             "PHPhotoLibrary performChanges:completionHandler: block, nil",
                                             "PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL: "
                                             "\"file:///missing/a%20clip.mp4\"",
                                             "PHAssetChangeRequest creationRequestForAssetFromVideoAtFileURL: nil",
                                             "PHPhotoLibrary performChanges:completionHandler: nil, block"));
}

} // namespace
} // namespace Tarvik::Vorn::Test
