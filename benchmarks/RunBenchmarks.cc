#define CATCH_CONFIG_RUNNER
#include "support/Catch.h"

#include "RunBenchmarks.h"

#include "Subject.h"
#include "VornLogSink.h"
#include "VornTraceSink.h"
#include "support/Figures.h"

#include <string>

namespace Tarvik::Vorn::Bench {
namespace {

constexpr int kNotMeasured = 2;

} // namespace

int RunBenchmarks(int argc, char** argv) {
    Catch::Session session;
    std::string jsonPath;
    session.cli(session.cli() | Catch::clara::Opt(jsonPath, "file")["--json"]("writes the figures to this file"));
    if (session.applyCommandLine(argc, argv) != 0) {
        return kNotMeasured;
    }
    Test::LoadSubject();
    SetLogSink([](const VornLogLine&) {});
    SetTraceSink([](const VornTraceEntry&) {});
    if (session.run() != 0) {
        return kNotMeasured;
    }
    const Figures& figures = Figures::Instance();
    figures.Print();
    if (!jsonPath.empty() && !figures.WriteJson(jsonPath)) {
        return kNotMeasured;
    }
    return figures.AreLimitsKept() ? 0 : 1;
}

} // namespace Tarvik::Vorn::Bench
