// vorn-soak: drives the plugin with requests, answers and faults by lot, and holds it against a model of its contract.
//
//   VORN_SUBJECT=.../libVornFacebook.so vorn-soak --requests N --seed S [--seeds K]
//
// Runs N requests with each of the seeds S ... S+K-1, and before that a run whose memory is not judged: Foundation and the
// runtime fill caches of theirs once. The same seed gives the same run. Exit status 0 when everything came as foretold, 1
// when it did not, 2 for a wrong command line.

#include "Memory.h"
#include "ObjectCount.h"
#include "Plugins.h"
#include "Soak.h"
#include "VornLogSink.h"
#include "VornTraceSink.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace Tarvik::Vorn::Soak {
namespace {

// How far the allocated memory may be from what it was after the second tenth: the events kept for a failure's message, the
// queues' blocks and Foundation's caches have no fixed size.
constexpr size_t kMemoryBound = size_t{16} * 1024;

constexpr uint64_t kWarmUpSeed = 0;
constexpr uint64_t kWarmUpRequests = 3000;

struct Options {
    uint64_t requests = 1000;
    uint64_t seed = 1;
    uint64_t seeds = 1;
};

std::optional<uint64_t> NumberOf(std::string_view text) {
    uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::optional<Options> OptionsOf(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; i += 2) {
        const std::string_view name = argv[i];
        const std::optional<uint64_t> number = i + 1 < argc ? NumberOf(argv[i + 1]) : std::nullopt;
        uint64_t* const option = name == "--requests" ? &options.requests
                                 : name == "--seed"   ? &options.seed
                                 : name == "--seeds"  ? &options.seeds
                                                      : nullptr;
        if (option == nullptr || !number) {
            return std::nullopt;
        }
        *option = *number;
    }
    return options;
}

// Prints what was held after each tenth. False when it grew or shrank after the second.
bool PrintMemory(const std::vector<MemorySample>& samples) {
    if (samples.size() < 3) {
        return true;
    }
    size_t lowest = samples[1].allocated;
    size_t highest = samples[1].allocated;
    std::printf("  KiB allocated (resident) after each tenth:");
    for (size_t i = 0; i < samples.size(); ++i) {
        std::printf(" %zu (%zu)", samples[i].allocated / 1024, samples[i].resident / 1024);
        if (i > 1) {
            lowest = std::min(lowest, samples[i].allocated);
            highest = std::max(highest, samples[i].allocated);
        }
    }
    const size_t start = samples[1].allocated;
    const bool isFlat = highest - start <= kMemoryBound && start - lowest <= kMemoryBound;
    std::printf("; from the second tenth on +%zu -%zu bytes, bound %zu\n", highest - start, start - lowest,
                kMemoryBound);
    return isFlat;
}

bool RunSeed(uint64_t seed, uint64_t requests, bool isWarmUp) {
    std::printf("seed %llu: %llu requests%s\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(requests), isWarmUp ? ", to warm up" : "");
    std::fflush(stdout);
    Soak soak(seed, requests);
    const std::string problem = soak.Run();
    if (!problem.empty()) {
        std::printf("FAILED: %s", problem.c_str());
        return false;
    }
    std::printf("  %s; %llu exceptions came out\n", soak.Account().Summary().c_str(),
                static_cast<unsigned long long>(soak.RaisedCount()));
    if (!PrintMemory(soak.Memory()) && !isWarmUp) {
        std::printf("FAILED: seed %llu: memory is not flat\n", static_cast<unsigned long long>(seed));
        return false;
    }
    return true;
}

int Main(int argc, char** argv) {
    const std::optional<Options> options = OptionsOf(argc, argv);
    if (!options) {
        std::fprintf(stderr, "usage: vorn-soak [--requests N] [--seed S] [--seeds K]\n");
        return 2;
    }
    MakeMemoryCountable(argv);
    // Every line is formatted, as in a game, and then thrown away.
    SetLogSink([](const VornLogLine&) {});
    SetTraceSink([](const VornTraceEntry&) {});
    LoadPlugins();
    if (!Test::CountObjects()) {
        std::fprintf(stderr, "Foundation does not count objects\n");
        return 2;
    }
    if (!RunSeed(kWarmUpSeed, kWarmUpRequests, true)) {
        return EXIT_FAILURE;
    }
    for (uint64_t i = 0; i < options->seeds; ++i) {
        if (!RunSeed(options->seed + i, options->requests, false)) {
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}

} // namespace
} // namespace Tarvik::Vorn::Soak

int main(int argc, char** argv) {
    @autoreleasepool {
        return Tarvik::Vorn::Soak::Main(argc, argv);
    }
}
