// What a log line costs: one that is not printed, one that is thrown away, one that goes to a file.

#include "logging/SpdlogLines.h"
#include "support/AllocationCount.h"
#include "support/Catch.h"
#include "support/Comparison.h"
#include "support/Figures.h"
#include "support/LogModes.h"
#include "support/Samples.h"
#include "support/TemporaryFolder.h"

#include "VornLog.h"

#include <cstddef>
#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr double kMostNanosecondsUnprinted = 10;
constexpr double kMostTimesSpdlog = 2;

constexpr int kMethodID = 111;
constexpr const char* kPermissions = "public_profile,email,user_friends";
constexpr const char* kExtra = R"({"campaign":"summer","level":42})";

// The function's name is as long as that of a method of the plugin, for it is part of the line.
__attribute__((noinline)) void WriteTheLineOfALoginRequest(const char* seqID) {
    VORN_LOG_DEBUG("[ %s ] methodID = %d, login with permissions = %s,  extra = %s", seqID, kMethodID, kPermissions,
                   kExtra);
}

// The same without the line: what is left is the loop and the call.
__attribute__((noinline)) void WriteNothing(const char* seqID) {
    Catch::Benchmark::keep_memory(seqID);
}

void AddSpdlog(Comparison& comparison, const std::string& name, SpdlogLines& lines) {
    comparison.Add(name, [&lines](Meter meter) {
        meter.measure([&lines] { lines.WriteLogin(kSeqID, kMethodID, kPermissions, kExtra); });
    });
}

void AddOwn(Comparison& comparison, const std::string& name, LogMode mode) {
    comparison.Add(name, [mode](Meter meter) {
        const LogModeSetting setting(mode);
        meter.measure([] { WriteTheLineOfALoginRequest(kSeqID); });
    });
}

TEST_CASE("Log lines against spdlog", "[logging]") {
    SpdlogLines toNothing = SpdlogLines::ToNothing();
    const TemporaryFolder folder;
    SpdlogLines toFile = SpdlogLines::ToFile(folder.Path() / "lines.log");
    Comparison comparison;
    AddOwn(comparison, "off", LogMode::kOff);
    AddOwn(comparison, "null sink", LogMode::kNull);
    AddOwn(comparison, "file", LogMode::kFile);
    comparison.Add("no line", [](Meter meter) { meter.measure([] { WriteNothing(kSeqID); }); });
    comparison.Add("spdlog off", [&](Meter meter) {
        meter.measure([&] { toNothing.WriteUnprinted(kSeqID, kMethodID, kPermissions, kExtra); });
    });
    AddSpdlog(comparison, "spdlog null sink", toNothing);
    AddSpdlog(comparison, "spdlog file", toFile);
    comparison.Run();

    Table table{"One log line, ns", "Where it goes", {"core", "spdlog", "times spdlog"}, {}};
    for (const std::string sink : {"off", "null sink", "file"}) {
        table.rows.push_back(
            {sink,
             {comparison.Difference(sink, "no line"), comparison.Difference("spdlog " + sink, "no line"),
              comparison.Ratio(sink, "spdlog " + sink)}});
    }
    Figures& figures = Figures::Instance();
    figures.Add(table);
    figures.Add(Limit{"a log line that is not printed", comparison.Difference("off", "no line"), Bound::kAtMost,
                      kMostNanosecondsUnprinted, "ns"});
    for (const std::string sink : {"null sink", "file"}) {
        figures.Add(Limit{"a log line to the " + sink + " against spdlog", comparison.Ratio(sink, "spdlog " + sink),
                          Bound::kAtMost, kMostTimesSpdlog, "times"});
    }
}

TEST_CASE("A log line that is not printed allocates nothing", "[logging]") {
    const LogModeSetting off(LogMode::kOff);
    const auto count = static_cast<double>(AllocationsOf([] { WriteTheLineOfALoginRequest(kSeqID); }));
    Figures::Instance().Add(Limit{"allocations of a log line that is not printed", count, Bound::kAtMost, 0, ""});
}

} // namespace
} // namespace Tarvik::Vorn::Bench
