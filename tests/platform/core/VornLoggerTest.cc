// The logger of the reference core: what a line carries, where it goes, and what holds when threads log at once.
// Lines are looked at through a sink, those of the console through the captured error stream.

#include "VornLogSink.h"
#include "VornTraceSink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <latch>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace Tarvik::Vorn::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;

// A wide character that no locale can write.
constexpr wchar_t kUnwritable[] = {0x7fffffff, 0};

class Logger : public ::testing::Test {
protected:
    Logger() { ToConsole(); }
    ~Logger() override { ToConsole(); }
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

    static void ToConsole() {
        SetLogSink({});
        SetTraceSink({});
        SetMinimumLogLevel(kLogDebug);
    }

    void Record() {
        SetLogSink([this](const VornLogLine& line) { mLines.push_back(line); });
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        texts.reserve(mLines.size());
        for (const VornLogLine& line : mLines) {
            texts.push_back(line.text);
        }
        return texts;
    }

    static void Write(const std::string& text) { WriteAt(kLogDebug, text); }

    static void WriteAt(ILogLevel level, const std::string& text) {
        VornLogger(level, "[Vorn]", "File.mm", "-[Class method:]", 12).console().writeLog("%s", text.c_str());
    }

    std::vector<VornLogLine> mLines;
};

std::vector<std::string> LinesOf(const std::string& output) {
    std::vector<std::string> lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST_F(Logger, LineCarriesEverythingItWasMadeFrom) {
    Record();

    VornLogger(kLogError, "[Vorn]", "File.mm", "-[Class method:]", 12).console().writeLog("[ %s ] code %d", "s1", 7);

    ASSERT_EQ(mLines.size(), 1u);
    EXPECT_EQ(mLines[0].level, kLogError);
    EXPECT_EQ(mLines[0].tag, "[Vorn]");
    EXPECT_EQ(mLines[0].file, "File.mm");
    EXPECT_EQ(mLines[0].function, "-[Class method:]");
    EXPECT_EQ(mLines[0].line, 12);
    EXPECT_EQ(mLines[0].text, "[ s1 ] code 7");
}

TEST_F(Logger, ConsoleIsTheLoggerItself) {
    VornLogger logger(kLogDebug, "", "", "", 0);

    EXPECT_EQ(&logger.console(), &logger);
}

TEST_F(Logger, NullTextsCountAsEmpty) {
    Record();

    VornLogger(kLogDebug, nullptr, nullptr, nullptr, 0).console().writeLog("text");

    ASSERT_EQ(mLines.size(), 1u);
    EXPECT_EQ(mLines[0].tag, "");
    EXPECT_EQ(mLines[0].file, "");
    EXPECT_EQ(mLines[0].function, "");
}

TEST_F(Logger, LineOfAnyLengthIsKeptWhole) {
    Record();
    std::vector<std::string> texts;
    for (const size_t length : {0u, 1u, 510u, 511u, 512u, 513u, 1u << 20}) {
        texts.push_back(std::string(length, 'x'));
    }

    for (const std::string& text : texts) {
        Write(text);
    }

    EXPECT_EQ(Texts(), texts);
}

TEST_F(Logger, LineThatCannotBeFormattedShowsItsFormat) {
    Record();

    VornLogger(kLogDebug, "[Vorn]", "File.mm", "f", 1).console().writeLog("wide %ls", kUnwritable);

    EXPECT_THAT(Texts(), ElementsAre("(cannot be formatted) wide %ls"));
}

TEST_F(Logger, LineBreaksReachTheSinkAsTheyAre) {
    Record();

    Write("one\ntwo");

    EXPECT_THAT(Texts(), ElementsAre("one\ntwo"));
}

// ---- Minimum level

TEST_F(Logger, LinesBelowTheMinimumLevelAreNotWritten) {
    Record();
    SetMinimumLogLevel(kLogError);

    WriteAt(kLogDebug, "progress");
    WriteAt(kLogError, "refusal");

    EXPECT_THAT(Texts(), ElementsAre("refusal"));
}

TEST_F(Logger, LinesBelowTheMinimumLevelAreNotEvenFormatted) {
    SetLogSink([](const VornLogLine&) {});
    SetMinimumLogLevel(kLogError);
    const auto errorOfFormatting = [](ILogLevel level) {
        errno = 0;
        VornLogger(level, "[Vorn]", "File.mm", "f", 1).console().writeLog("%ls", kUnwritable);
        return errno;
    };

    const int below = errorOfFormatting(kLogDebug);
    const int at = errorOfFormatting(kLogError);

    EXPECT_EQ(below, 0);
    EXPECT_EQ(at, EILSEQ);
}

TEST_F(Logger, MinimumLevelCanBeLoweredAgain) {
    Record();
    SetMinimumLogLevel(kLogError);
    SetMinimumLogLevel(kLogDebug);

    Write("progress");

    EXPECT_THAT(Texts(), ElementsAre("progress"));
}

// ---- Console

TEST_F(Logger, ConsoleShowsLevelTagPlaceAndText) {
    CaptureStderr();
    WriteAt(kLogDebug, "[ s1 ] progress");
    WriteAt(kLogError, "[ s1 ] refusal");
    const std::string output = GetCapturedStderr();

    EXPECT_EQ(output, "D [Vorn] File.mm:12 -[Class method:] [ s1 ] progress\n"
                      "E [Vorn] File.mm:12 -[Class method:] [ s1 ] refusal\n");
}

TEST_F(Logger, ConsoleShowsControlCharactersAsEscapes) {
    CaptureStderr();
    Write("one\ntwo\r\x1b[31m\x7f\ttab é");
    const std::string output = GetCapturedStderr();

    EXPECT_EQ(output, "D [Vorn] File.mm:12 -[Class method:] one\\ntwo\\r\\x1b[31m\\x7f\ttab é\n");
}

TEST_F(Logger, EmptySinkStandsForTheConsole) {
    Record();
    SetLogSink({});

    CaptureStderr();
    Write("text");
    const std::string output = GetCapturedStderr();

    EXPECT_THAT(mLines, IsEmpty());
    EXPECT_EQ(output, "D [Vorn] File.mm:12 -[Class method:] text\n");
}

TEST_F(Logger, NothingReachesTheConsoleWhileASinkIsSet) {
    Record();

    CaptureStderr();
    Write("text");
    const std::string output = GetCapturedStderr();

    EXPECT_EQ(output, "");
    EXPECT_THAT(Texts(), ElementsAre("text"));
}

// ---- Sinks that log, trace, throw and replace themselves

TEST_F(Logger, LineOfTheSinkItselfGoesToTheConsole) {
    SetLogSink([this](const VornLogLine& line) {
        mLines.push_back(line);
        Write("from the sink");
    });

    CaptureStderr();
    Write("first");
    Write("second");
    const std::string output = GetCapturedStderr();

    EXPECT_THAT(Texts(), ElementsAre("first", "second"));
    EXPECT_THAT(LinesOf(output), ElementsAre("D [Vorn] File.mm:12 -[Class method:] from the sink",
                                             "D [Vorn] File.mm:12 -[Class method:] from the sink"));
}

TEST_F(Logger, SinkThatReplacesItselfRunsToItsEnd) {
    auto text = std::make_shared<std::string>("first sink");
    const std::weak_ptr<std::string> watch = text;
    std::string seen;
    SetLogSink([this, &seen, text = std::move(text)](const VornLogLine&) {
        Record();
        seen = *text;
    });

    Write("one");
    Write("two");

    EXPECT_EQ(seen, "first sink");
    EXPECT_TRUE(watch.expired());
    EXPECT_THAT(Texts(), ElementsAre("two"));
}

TEST_F(Logger, SinkIsDestroyedOutsideTheLock) {
    // Its destructor waits for another thread that logs: inside the lock the two would wait for ever.
    struct LogsElsewhereWhenItDies {
        ~LogsElsewhereWhenItDies() {
            std::thread([] { Write("from the destructor"); }).join();
        }
    };
    SetLogSink([last = std::make_shared<LogsElsewhereWhenItDies>()](const VornLogLine&) {});

    Record();

    EXPECT_THAT(Texts(), ElementsAre("from the destructor"));
}

TEST_F(Logger, ExceptionOfASinkReachesWhoeverLogged) {
    SetLogSink([this](const VornLogLine& line) {
        mLines.push_back(line);
        throw std::runtime_error("full");
    });

    EXPECT_THROW(Write("one"), std::runtime_error);
    EXPECT_THROW(Write("two"), std::runtime_error);

    EXPECT_THAT(Texts(), ElementsAre("one", "two"));
}

// ---- Threads

constexpr int kThreads = 4;
constexpr int kLinesPerThread = 500;

// Runs `work(number of the thread)` on kThreads threads that start together.
template <class Work>
void OnThreads(Work work) {
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&start, &work, number] {
            start.arrive_and_wait();
            work(number);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST_F(Logger, ConsoleLinesOfSeveralThreadsDoNotInterleave) {
    const auto lineOf = [](int number) { return std::string(900, static_cast<char>('a' + number)); };

    CaptureStderr();
    OnThreads([&](int number) {
        for (int i = 0; i < kLinesPerThread; ++i) {
            Write(lineOf(number));
        }
    });
    std::map<std::string, int> counts;
    for (const std::string& line : LinesOf(GetCapturedStderr())) {
        counts[line] += 1;
    }

    std::map<std::string, int> expected;
    for (int number = 0; number < kThreads; ++number) {
        expected["D [Vorn] File.mm:12 -[Class method:] " + lineOf(number)] = kLinesPerThread;
    }
    EXPECT_EQ(counts, expected);
}

TEST_F(Logger, SinkIsCalledForOneLineAtATime) {
    int running = 0; // Plain on purpose: the thread sanitizer sees an overlap too.
    int overlaps = 0;
    int lines = 0;
    SetLogSink([&](const VornLogLine&) {
        running += 1;
        overlaps += running == 1 ? 0 : 1;
        lines += 1;
        std::this_thread::yield();
        running -= 1;
    });

    OnThreads([](int) {
        for (int i = 0; i < kLinesPerThread; ++i) {
            Write("text");
        }
    });

    EXPECT_EQ(overlaps, 0);
    EXPECT_EQ(lines, kThreads * kLinesPerThread);
}

TEST_F(Logger, OldSinkIsNotRunningAnyMoreOnceItIsReplaced) {
    std::atomic<int> lines = 0;
    std::atomic<bool> stop = false;
    SetLogSink([](const VornLogLine&) {});
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&] {
            while (!stop) {
                Write("text");
            }
        });
    }
    constexpr int kSinks = 200;
    int usedAfterItsTime = 0;

    for (int i = 0; i < kSinks; ++i) {
        bool isMine = true; // Ends with this turn of the loop, as what a test's sink refers to ends with the test.
        SetLogSink([&](const VornLogLine&) {
            usedAfterItsTime += isMine ? 0 : 1;
            lines += 1;
        });
        const int before = lines;
        while (lines == before) {
            std::this_thread::yield();
        }
        SetLogSink([](const VornLogLine&) {});
        isMine = false;
    }
    stop = true;
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(usedAfterItsTime, 0);
    EXPECT_GE(lines, kSinks);
}

TEST_F(Logger, ReplacingWaitsForACallInProgress) {
    std::latch entered(1);
    std::atomic<bool> isReplacing = false;
    std::atomic<bool> isFinished = false;
    SetLogSink([&](const VornLogLine&) {
        entered.count_down();
        while (!isReplacing) {
            std::this_thread::yield();
        }
        for (int i = 0; i < 1000; ++i) { // A replacement that did not wait would be over long before.
            std::this_thread::yield();
        }
        isFinished = true;
    });
    std::thread thread([] { Write("text"); });
    entered.wait();

    isReplacing = true;
    SetLogSink({});
    const bool wasFinished = isFinished;
    thread.join();

    EXPECT_TRUE(wasFinished);
}

TEST_F(Logger, LogSinkThatTracesAndTraceSinkThatLogsDoNotWaitForEachOther) {
    int logs = 0;
    int traces = 0;
    const auto trace = [] { VornTrace("File.mm", "f", 1, "s1", "{}").traceLog("FacebookLogin"); };
    SetLogSink([&](const VornLogLine& line) {
        logs += 1;
        if (line.text == "outer") {
            trace();
        }
    });
    SetTraceSink([&](const VornTraceEntry&) {
        traces += 1;
        Write("inner");
    });

    CaptureStderr(); // What a busy sink cannot take goes to the console.
    OnThreads([&](int number) {
        for (int i = 0; i < kLinesPerThread; ++i) {
            if (number % 2 == 0) {
                Write("outer");
            } else {
                trace();
            }
        }
    });
    const size_t onConsole = LinesOf(GetCapturedStderr()).size();

    // A line causes a trace, whose own line finds the log sink busy. A trace causes a line, which reaches the sink.
    constexpr int kEach = kThreads / 2 * kLinesPerThread;
    EXPECT_EQ(logs, 2 * kEach);
    EXPECT_EQ(traces, 2 * kEach);
    EXPECT_EQ(onConsole, static_cast<size_t>(kEach));
}

TEST_F(Logger, MinimumLevelMayChangeWhileThreadsLog) {
    std::atomic<int> lines = 0;
    SetLogSink([&](const VornLogLine&) { lines += 1; });

    OnThreads([](int number) {
        for (int i = 0; i < kLinesPerThread; ++i) {
            if (number == 0) {
                SetMinimumLogLevel(i % 2 == 0 ? kLogError : kLogDebug);
            } else {
                WriteAt(kLogError, "always");
            }
        }
    });

    EXPECT_EQ(lines, (kThreads - 1) * kLinesPerThread);
}

} // namespace
} // namespace Tarvik::Vorn::Test
