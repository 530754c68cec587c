// Runs as the reports' tests need them, and what is printed of them.
#pragma once

#include "Report.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Tarvik::Vorn::Simulator::Test {

// What `print` writes to the file that it is called with.
template <class Print>
std::string Printed(Print print) {
    char* text = nullptr;
    size_t size = 0;
    std::FILE* const out = open_memstream(&text, &size);
    print(out);
    std::fclose(out);
    std::string printed(text, size);
    std::free(text);
    return printed;
}

inline Entry MakeEntry(EntryKind kind, std::string text, size_t request = kNoRequest, Milliseconds time = 0) {
    return {time, true, request, kind, std::move(text), std::nullopt};
}

// A run of a world called "tour" in which nothing happens.
inline RunReport EmptyRun() {
    RunReport run;
    run.name = "tour";
    run.path = "tour.world.json";
    run.question = "What happens?";
    run.seed = 7;
    run.profile = "18.1";
    return run;
}

// The same with two requests, "s1" and "s2", the second without a result.
inline RunReport RunWithRequests() {
    RunReport run = EmptyRun();
    run.requests = {{"s1", "share", "share of a link", 31U, 211, 10}, {"s2", "login", "login", std::nullopt, 111, 20}};
    return run;
}

// A run in which every text is `text`, and everything is there that a run can have.
inline RunReport RunFullOf(const std::string& text) {
    RunReport run;
    run.name = text;
    run.path = text;
    run.question = text;
    run.seed = 1;
    run.profile = text;
    run.problem = text;
    run.requests = {{text, text, text, 31U, 211, 0}, {text, text, "", std::nullopt, 111, 0}};
    for (int kind = 0; kind <= static_cast<int>(EntryKind::kProblem); ++kind) {
        const ResultFacts result{text, 31, text, {{text, text}, {text + "2", 5}}};
        run.entries.push_back({0, kind % 2 == 0, 0, static_cast<EntryKind>(kind), text, result});
    }
    run.audit = {{text, text, 1}};
    run.hasExpectations = true;
    run.mismatches = {{text, text, 3, 4}};
    return run;
}

} // namespace Tarvik::Vorn::Simulator::Test
