#include "Comparison.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace Tarvik::Vorn::Bench {
namespace {

using Clock = std::chrono::steady_clock;

// Long against the clock's resolution, short against the time for which the system lets a program run undisturbed.
constexpr std::chrono::microseconds kSampleTime(200);

} // namespace

double Median(std::vector<double> figures) {
    std::sort(figures.begin(), figures.end());
    const size_t middle = figures.size() / 2;
    return figures.size() % 2 == 1 ? figures[middle] : (figures[middle - 1] + figures[middle]) / 2;
}

void Comparison::Add(const std::string& name, Sample sample) {
    mCandidates.push_back({name, std::move(sample), 1, {}});
}

void Comparison::TakeSample(Candidate& candidate) {
    Catch::Benchmark::Detail::ChronometerModel<Clock> watch;
    candidate.sample(Meter(watch, candidate.runs));
    const std::chrono::duration<double, std::nano> elapsed = watch.elapsed();
    candidate.rounds.push_back(elapsed.count() / candidate.runs);
}

void Comparison::Run(Effort effort) {
    for (Candidate& candidate : mCandidates) {
        if (effort.runs != 0) {
            candidate.runs = effort.runs;
            TakeSample(candidate);
        } else {
            candidate.runs =
                Catch::Benchmark::Detail::run_for_at_least<Clock>(kSampleTime, 1, candidate.sample).iterations;
        }
        candidate.rounds.clear();
    }
    for (size_t round = 0; round < effort.rounds; ++round) {
        for (Candidate& candidate : mCandidates) {
            TakeSample(candidate);
        }
        // Whoever came first comes last now. The names find the candidates, not their places.
        std::reverse(mCandidates.begin(), mCandidates.end());
    }
}

double Comparison::Nanoseconds(const std::string& name) const {
    return Median(Find(name).rounds);
}

double Comparison::Ratio(const std::string& name, const std::string& base) const {
    std::vector<double> ratios = Find(name).rounds;
    const std::vector<double>& bases = Find(base).rounds;
    for (size_t i = 0; i < ratios.size(); ++i) {
        ratios[i] /= bases[i];
    }
    return Median(ratios);
}

double Comparison::Difference(const std::string& name, const std::string& base) const {
    std::vector<double> differences = Find(name).rounds;
    const std::vector<double>& bases = Find(base).rounds;
    for (size_t i = 0; i < differences.size(); ++i) {
        differences[i] -= bases[i];
    }
    return Median(differences);
}

const Comparison::Candidate& Comparison::Find(const std::string& name) const {
    const auto found = std::find_if(mCandidates.begin(), mCandidates.end(),
                                    [&](const Candidate& candidate) { return candidate.name == name; });
    if (found == mCandidates.end()) {
        std::fprintf(stderr, "vorn-bench: a comparison has no candidate \"%s\"; see its Add()\n", name.c_str());
        std::exit(2);
    }
    return *found;
}

} // namespace Tarvik::Vorn::Bench
