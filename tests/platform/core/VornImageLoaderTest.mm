// Loading what a path or a URL names: which files are found, what is refused and why, and on which thread one is told.

#include "VornImageLoader.h"

#include "LifeProbe.h"
#include "PoolTest.h"
#include "VornRetainPtr.h"
#include "VornText.h"
#include "VornUtilsIOS.h"

#import <UIKit/UIKit.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <latch>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// What a load was answered with. Lives longer than the block.
struct Answer {
    int calls = 0;
    BOOL success = NO;
    RetainPtr<NSData*> data;
    RetainPtr<NSError*> error;
    std::thread::id thread;

    void Load(NSString* uri) {
        [VornUtilsIOS loadImageWithUri:uri
                              complete:^(BOOL theSuccess, NSData* theData, NSError* theError) {
                                  ++calls;
                                  success = theSuccess;
                                  data = RetainPtr(theData);
                                  error = RetainPtr(theError);
                                  thread = std::this_thread::get_id();
                              }];
    }
};

class ImageLoader : public PoolTest {
protected:
    ImageLoader() {
        std::string name = (std::filesystem::temp_directory_path() / "vorn-images-XXXXXX").string();
        mFolder = mkdtemp(name.data());
    }
    ~ImageLoader() override {
        WaitForImageLoads();
        std::filesystem::permissions(mFolder, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(mFolder);
    }

    // The path of a new file.
    std::string Write(const std::string& name, const std::string& bytes) {
        std::string path = mFolder / name;
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    static Answer Load(const std::string& uri) {
        Answer answer;
        answer.Load(MakeNSString(uri));
        WaitForImageLoads();
        return answer;
    }

    std::filesystem::path mFolder;
};

void ExpectBytes(const Answer& answer, const std::string& bytes) {
    EXPECT_EQ(answer.calls, 1);
    EXPECT_TRUE(answer.success);
    EXPECT_EQ(answer.error.get(), nil);
    ASSERT_TRUE(answer.data);
    NSData* const data = answer.data.get();
    EXPECT_EQ(std::string(static_cast<const char*>([data bytes]), [data length]), bytes);
}

void ExpectFailure(const Answer& answer, int code, const std::string& reason) {
    EXPECT_EQ(answer.calls, 1);
    EXPECT_FALSE(answer.success);
    EXPECT_EQ(answer.data.get(), nil);
    ASSERT_TRUE(answer.error);
    NSError* const error = answer.error.get();
    EXPECT_STREQ(CStr([error domain]), "VornCore");
    EXPECT_EQ([error code], code);
    EXPECT_THAT(CStr([error localizedDescription]), HasSubstr(reason));
}

#pragma mark - What is found

TEST_F(ImageLoader, AnAbsolutePathIsLoaded) {
    ExpectBytes(Load(Write("a.png", "bytes")), "bytes");
}

TEST_F(ImageLoader, ARelativePathIsLoadedFromTheCurrentDirectory) {
    const std::string path = Write("a.png", "bytes");

    ExpectBytes(Load(std::filesystem::relative(path).string()), "bytes");
}

TEST_F(ImageLoader, APathIsTakenAsItIs) {
    ExpectBytes(Load(Write("a%20b?c#d.png", "bytes")), "bytes");
}

TEST_F(ImageLoader, APathWithAColonBehindASlashIsAPath) {
    ExpectBytes(Load(Write("a:b.png", "bytes")), "bytes");
}

TEST_F(ImageLoader, AllBytesAreLoaded) {
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) {
        bytes += static_cast<char>(i * 7);
    }

    ExpectBytes(Load(Write("a.png", bytes)), bytes);
}

TEST_F(ImageLoader, AnEmptyFileIsLoadedAsNoBytes) {
    ExpectBytes(Load(Write("a.png", "")), "");
}

TEST_F(ImageLoader, AFileURLIsLoadedInEveryForm) {
    const std::string path = Write("a.png", "bytes");

    for (const char* const form : {"file://", "file://localhost", "file:", "FILE://", "file://LOCALHOST"}) {
        ExpectBytes(Load(form + path), "bytes");
    }
}

TEST_F(ImageLoader, AFileURLIsPercentDecoded) {
    Write("a b\xc3\xa9%.png", "bytes");

    ExpectBytes(Load("file://" + mFolder.string() + "/a%20b%c3%A9%25.png"), "bytes");
}

TEST_F(ImageLoader, QueryAndFragmentOfAFileURLAreNotOfThePath) {
    const std::string path = Write("a.png", "bytes");

    ExpectBytes(Load("file://" + path + "?query#fragment"), "bytes");
    ExpectBytes(Load("file://" + path + "#fragment"), "bytes");
}

#pragma mark - What is refused

TEST_F(ImageLoader, ANilURIIsRefused) {
    Answer answer;

    answer.Load(nil);
    WaitForImageLoads();

    ExpectFailure(answer, EINVAL, "the URI is nil");
}

TEST_F(ImageLoader, AnEmptyURIIsRefused) {
    ExpectFailure(Load(""), EINVAL, "the URI is empty");
}

class ImageLoaderScheme : public ImageLoader, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, ImageLoaderScheme,
                         ::testing::Values("http://host/a.png", "https://host/a.png", "HTTPS://host/a.png",
                                           "data:image/png;base64,AAAA", "ftp://host/a", "a+b-c.2:d"));

TEST_P(ImageLoaderScheme, IsRefusedForTheCoreIsOffline) {
    ExpectFailure(Load(GetParam()), ENETDOWN, "the reference core is offline");
}

class ImageLoaderNoScheme : public ImageLoader, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, ImageLoaderNoScheme, ::testing::Values("1a:b", ":b", "a_b:c", "./http://host", "a/b:c"));

TEST_P(ImageLoaderNoScheme, IsAPath) {
    ExpectFailure(Load(GetParam()), ENOENT, "No such file or directory");
}

TEST_F(ImageLoader, AMissingFileIsRefusedWithItsName) {
    const std::string path = mFolder / "missing.png";

    ExpectFailure(Load(path), ENOENT, "Cannot load the image: No such file or directory: " + path);
}

TEST_F(ImageLoader, ADirectoryIsRefused) {
    ExpectFailure(Load(mFolder.string()), EISDIR, "Is a directory");
}

TEST_F(ImageLoader, APipeIsRefusedAndNotWaitedFor) {
    const std::string path = mFolder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);

    ExpectFailure(Load(path), EINVAL, "not a regular file");
}

TEST_F(ImageLoader, AnUnreadableFileIsRefused) {
    const std::string path = Write("a.png", "bytes");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (access(path.c_str(), R_OK) == 0) {
        GTEST_SKIP() << "root reads everything";
    }

    ExpectFailure(Load(path), EACCES, "Permission denied");
}

TEST_F(ImageLoader, APathThroughAFileIsRefused) {
    ExpectFailure(Load(Write("a.png", "bytes") + "/b.png"), ENOTDIR, "Not a directory");
}

TEST_F(ImageLoader, AFileURLOfAnotherHostIsRefused) {
    ExpectFailure(Load("file://host" + Write("a.png", "bytes")), EINVAL, "another host");
    ExpectFailure(Load("file://host"), EINVAL, "another host");
}

TEST_F(ImageLoader, AFileURLWithoutAnAbsolutePathIsRefused) {
    for (const char* const url : {"file:", "file://", "file:a.png", "file://localhost"}) {
        ExpectFailure(Load(url), EINVAL, "no absolute path");
    }
}

TEST_F(ImageLoader, ABadPercentSequenceIsRefused) {
    for (const char* const rest : {"%", "%2", "%2g", "%g2", "%00", "% 2"}) {
        ExpectFailure(Load("file:///" + std::string(rest)), EINVAL, "bad percent sequence");
    }
}

TEST_F(ImageLoader, AURIWithANulIsRefused) {
    const std::string path = Write("a.png", "bytes");
    Answer answer;

    answer.Load([MakeNSString(path) stringByAppendingFormat:@"%C.jpg", static_cast<unichar>(0)]);
    WaitForImageLoads();

    ExpectFailure(answer, EINVAL, "NUL");
}

#pragma mark - The block

TEST_F(ImageLoader, TheBlockRunsOnAnotherThread) {
    EXPECT_NE(Load(Write("a.png", "bytes")).thread, std::this_thread::get_id());
    EXPECT_NE(Load("").thread, std::this_thread::get_id());
}

TEST_F(ImageLoader, AllBlocksRunOnOneThread) {
    EXPECT_EQ(Load(Write("a.png", "bytes")).thread, Load("").thread);
}

TEST_F(ImageLoader, LoadsAreAnsweredInTheirOrder) {
    NSString* const path = MakeNSString(Write("a.png", "bytes"));
    std::vector<int> order; // Only the core's thread writes.
    std::vector<int>* const noted = &order;

    for (int i = 0; i < 5; ++i) {
        [VornUtilsIOS loadImageWithUri:i % 2 == 0 ? path : nil
                              complete:^(BOOL, NSData*, NSError*) {
                                  noted->push_back(i);
                              }];
    }
    WaitForImageLoads();

    EXPECT_THAT(order, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(ImageLoader, WithoutABlockNothingHappens) {
    [VornUtilsIOS loadImageWithUri:MakeNSString(Write("a.png", "bytes")) complete:nil];

    ExpectBytes(Load(Write("b.png", "more")), "more");
}

TEST_F(ImageLoader, TheTextIsReadWhenTheLoadIsAskedFor) {
    NSMutableString* const uri = [NSMutableString stringWithUTF8String:Write("a.png", "bytes").c_str()];
    Answer answer;

    answer.Load(uri);
    [uri setString:@"/missing"];
    WaitForImageLoads();

    ExpectBytes(answer, "bytes");
}

TEST_F(ImageLoader, ABlockIsReleasedOnceItHasBeenAnswered) {
    int alive = 0;
    @autoreleasepool {
        VornLifeProbe* const probe = [VornLifeProbe probeOf:&alive];
        [VornUtilsIOS loadImageWithUri:@"/missing"
                              complete:^(BOOL, NSData*, NSError*) {
                                  [probe self];
                              }];
    }

    WaitForImageLoads();

    EXPECT_EQ(alive, 0);
}

TEST_F(ImageLoader, WhatABlockAutoreleasesIsReleasedOnceItHasBeenAnswered) {
    int alive = 0;
    int* const counter = &alive;

    [VornUtilsIOS loadImageWithUri:@"/missing"
                          complete:^(BOOL, NSData*, NSError*) {
                              [VornLifeProbe probeOf:counter];
                          }];
    WaitForImageLoads();

    EXPECT_EQ(alive, 0);
}

TEST_F(ImageLoader, ABlockMayAskForAnotherLoad) {
    NSString* const path = MakeNSString(Write("a.png", "bytes"));
    Answer inner;
    Answer* const innerAnswer = &inner;

    [VornUtilsIOS loadImageWithUri:path
                          complete:^(BOOL, NSData*, NSError*) {
                              innerAnswer->Load(path);
                          }];
    WaitForImageLoads();
    WaitForImageLoads(); // The first waited for what had been asked for before.

    ExpectBytes(inner, "bytes");
}

TEST_F(ImageLoader, HeldLoadsRunOnceSomebodyWaitsForThem) {
    SetImageLoadsHeld(true);
    const std::string path = Write("a.png", "before");
    Answer answer;
    answer.Load(MakeNSString(path));
    Write("a.png", "after");

    WaitForImageLoads();

    SetImageLoadsHeld(false);
    ExpectBytes(answer, "after");
}

TEST_F(ImageLoader, LoadsThatAreHeldNoMoreRunByThemselves) {
    SetImageLoadsHeld(true);
    std::latch answered(1);
    std::latch* const countDown = &answered;
    [VornUtilsIOS loadImageWithUri:@"none"
                          complete:^(BOOL, NSData*, NSError*) {
                              countDown->count_down();
                          }];

    SetImageLoadsHeld(false);

    answered.wait();
}

TEST_F(ImageLoader, WaitingWithoutAnyLoadReturns) {
    WaitForImageLoads();
}

TEST_F(ImageLoader, ThreadsMayAskAtTheSameTime) {
    NSString* const path = MakeNSString(Write("a.png", "bytes"));
    std::array<std::array<Answer, 20>, 4> answers;
    std::vector<std::thread> threads;
    threads.reserve(answers.size());

    for (auto& own : answers) {
        threads.emplace_back([&own, path] {
            @autoreleasepool {
                for (Answer& answer : own) {
                    answer.Load(path);
                }
                WaitForImageLoads();
                for (const Answer& answer : own) {
                    EXPECT_EQ(answer.calls, 1);
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace
} // namespace Tarvik::Vorn::Test
