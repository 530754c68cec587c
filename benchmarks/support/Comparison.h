// Several ways to do the same, measured side by side.
//
// Catch2 gives the clock, the calibration, the barriers against the optimiser and the loop. Its own statistics measure one
// benchmark after the other, so that whatever else the machine does falls on one of them: ratios of such figures say
// nothing. Here every round takes one sample of each candidate, in turns forwards and backwards, and figures are compared
// within their round.
#pragma once

#include "Catch.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Bench {

// Times a piece of work: meter.measure(work) runs it meter.runs() times. What stands before and behind is not timed.
using Meter = Catch::Benchmark::Chronometer;

// The middle one of the figures, or the mean of the two in the middle. REQUIRES: there is one.
double Median(std::vector<double> figures);

class Comparison {
public:
    using Sample = std::function<void(Meter)>;

    // How many samples are taken of each candidate.
    struct Effort {
        size_t rounds = 101;
        int runs = 0; // How often a sample does the work; 0: as often as fills a fifth of a millisecond.
    };

    // `sample` calls measure() once.
    void Add(const std::string& name, Sample sample);

    // Takes the samples. A first one of each candidate is thrown away.
    void Run(Effort effort = {101, 0});

    // Nanoseconds for one run of the work. REQUIRES: Run() has been called, and the candidate exists.
    double Nanoseconds(const std::string& name) const;

    // How many times as long as `base` it takes; how many nanoseconds longer. The median over the rounds.
    double Ratio(const std::string& name, const std::string& base) const;
    double Difference(const std::string& name, const std::string& base) const;

private:
    struct Candidate {
        std::string name;
        Sample sample;
        int runs = 1;
        std::vector<double> rounds; // Nanoseconds for one run.
    };

    static void TakeSample(Candidate& candidate);
    const Candidate& Find(const std::string& name) const;

    std::vector<Candidate> mCandidates;
};

} // namespace Tarvik::Vorn::Bench
