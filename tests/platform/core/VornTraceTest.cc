// The trace channel of the reference core. Its sink stands in the same kind of place as the logger's; here are the
// entries, the console and the rules as far as they show on this channel.

#include "VornTraceSink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <latch>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;

class Trace : public ::testing::Test {
protected:
    Trace() { SetTraceSink({}); }
    ~Trace() override { SetTraceSink({}); }
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

    void Record() {
        SetTraceSink([this](const VornTraceEntry& entry) { mEntries.push_back(entry); });
    }

    static void Write() {
        VornTrace("File.mm", "-[Class method:]", 12, "s1", "{\"method\":\"logOut\"}").traceLog("FacebookLogin");
    }

    std::vector<VornTraceEntry> mEntries;
};

TEST_F(Trace, LogEntryCarriesPlaceRequestAndModule) {
    Record();

    Write();

    ASSERT_EQ(mEntries.size(), 1u);
    const VornTraceEntry& entry = mEntries[0];
    EXPECT_EQ(entry.kind, VornTraceKind::kLog);
    EXPECT_EQ(entry.file, "File.mm");
    EXPECT_EQ(entry.function, "-[Class method:]");
    EXPECT_EQ(entry.line, 12);
    EXPECT_EQ(entry.seqID, "s1");
    EXPECT_EQ(entry.extraJson, "{\"method\":\"logOut\"}");
    EXPECT_EQ(entry.module, "FacebookLogin");
    EXPECT_EQ(entry.pluginName + entry.pluginVersion + entry.channel + entry.sdkVersion, "");
}

TEST_F(Trace, PluginEntryCarriesWhoHasStarted) {
    Record();

    VornTrace("File.mm", "+[Class load]", 3, "", "").tracePlugin("VornFacebook", "5.30", "Facebook", "10.0.0");

    ASSERT_EQ(mEntries.size(), 1u);
    const VornTraceEntry& entry = mEntries[0];
    EXPECT_EQ(entry.kind, VornTraceKind::kPlugin);
    EXPECT_EQ(entry.file, "File.mm");
    EXPECT_EQ(entry.function, "+[Class load]");
    EXPECT_EQ(entry.line, 3);
    EXPECT_EQ(entry.seqID + entry.extraJson + entry.module, "");
    EXPECT_EQ(entry.pluginName, "VornFacebook");
    EXPECT_EQ(entry.pluginVersion, "5.30");
    EXPECT_EQ(entry.channel, "Facebook");
    EXPECT_EQ(entry.sdkVersion, "10.0.0");
}

TEST_F(Trace, PluginEntryKeepsTheTextsOfItsTrace) {
    Record();

    VornTrace("File.mm", "f", 3, "s1", "{}").tracePlugin("a", "b", "c", "d");

    ASSERT_EQ(mEntries.size(), 1u);
    EXPECT_EQ(mEntries[0].seqID, "s1");
    EXPECT_EQ(mEntries[0].extraJson, "{}");
}

TEST_F(Trace, NullTextsCountAsEmpty) {
    Record();

    VornTrace(nullptr, nullptr, 0, nullptr, nullptr).traceLog(nullptr);
    VornTrace(nullptr, nullptr, 0, nullptr, nullptr).tracePlugin(nullptr, nullptr, nullptr, nullptr);

    ASSERT_EQ(mEntries.size(), 2u);
    for (const VornTraceEntry& entry : mEntries) {
        EXPECT_EQ(entry.file + entry.function + entry.seqID + entry.extraJson + entry.module, "");
        EXPECT_EQ(entry.pluginName + entry.pluginVersion + entry.channel + entry.sdkVersion, "");
    }
}

TEST_F(Trace, ConsoleShowsOneLinePerEntry) {
    CaptureStderr();
    Write();
    VornTrace("File.mm", "+[Class load]", 3, "", "").tracePlugin("VornFacebook", "5.30", "Facebook", "10.0.0");
    const std::string output = GetCapturedStderr();

    EXPECT_EQ(output, "T [Vorn] File.mm:12 -[Class method:] [ s1 ] FacebookLogin {\"method\":\"logOut\"}\n"
                      "T [Vorn] File.mm:3 +[Class load] plugin VornFacebook 5.30, channel Facebook, SDK 10.0.0\n");
}

TEST_F(Trace, EmptySinkStandsForTheConsole) {
    Record();
    SetTraceSink({});

    CaptureStderr();
    Write();
    const std::string output = GetCapturedStderr();

    EXPECT_TRUE(mEntries.empty());
    EXPECT_NE(output, "");
}

TEST_F(Trace, EntryOfTheSinkItselfGoesToTheConsole) {
    int entries = 0;
    SetTraceSink([&](const VornTraceEntry&) {
        entries += 1;
        Write();
    });

    CaptureStderr();
    Write();
    const std::string output = GetCapturedStderr();

    EXPECT_EQ(entries, 1);
    EXPECT_EQ(output, "T [Vorn] File.mm:12 -[Class method:] [ s1 ] FacebookLogin {\"method\":\"logOut\"}\n");
}

TEST_F(Trace, ExceptionOfASinkReachesWhoeverTraced) {
    SetTraceSink([](const VornTraceEntry&) { throw std::runtime_error("full"); });

    EXPECT_THROW(Write(), std::runtime_error);
}

TEST_F(Trace, SinkIsCalledForOneEntryAtATime) {
    constexpr int kThreads = 4;
    constexpr int kEntriesPerThread = 300;
    int running = 0; // Plain on purpose: the thread sanitizer sees an overlap too.
    int overlaps = 0;
    int entries = 0;
    SetTraceSink([&](const VornTraceEntry&) {
        running += 1;
        overlaps += running == 1 ? 0 : 1;
        entries += 1;
        std::this_thread::yield();
        running -= 1;
    });
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);

    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&start] {
            start.arrive_and_wait();
            for (int i = 0; i < kEntriesPerThread; ++i) {
                Write();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(overlaps, 0);
    EXPECT_EQ(entries, kThreads * kEntriesPerThread);
}

} // namespace
} // namespace Tarvik::Vorn::Test
