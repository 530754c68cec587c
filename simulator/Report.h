// What a run of a world has shown, for the printers: text, JSON, HTML. Plain C++, values.
#pragma once

#include "Timeline.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Simulator {

// Something that the audit remarks. Not always a fault of the game: a dialog may be left open on purpose.
struct AuditFinding {
    std::string id;              // "unanswered", "wrong-request", ...: stable.
    std::string text;            // In words, one or more sentences.
    size_t request = kNoRequest; // The request that it is about.
};

// An expectation that does not hold.
struct Mismatch {
    std::string expected; // What the world expects, in words.
    std::string found;    // What there is instead: the nearest match and the field that differs.
    size_t line = 0;      // Where the world says so; 0 when it says nothing and something came.
    size_t column = 0;
};

struct RunReport {
    std::string name;     // Of the world: its file's name without ".world.json".
    std::string path;     // Of its file; empty when it has none.
    std::string question; // Which it answers.
    uint64_t seed = 0;
    std::string profile; // Of the Facebook SDK: "18.1", "as documented".
    std::vector<RequestFacts> requests;
    std::vector<Entry> entries;
    std::vector<AuditFinding> audit;
    bool hasExpectations = false;
    std::vector<Mismatch> mismatches;
    std::string problem; // Why a step could not be played; empty when all were.

    // Every step was played, and all that is expected holds.
    bool Holds() const { return problem.empty() && mismatches.empty(); }
};

enum class TextOrder {
    kByRequest, // Everything that one request caused stands together.
    kByTime,
};

// How the timeline is printed as text.
struct TextStyle {
    TextOrder order = TextOrder::kByRequest;
    bool color = false;
};

// Each writes a whole document with all runs. `out` stays open.
void PrintText(const std::vector<RunReport>& runs, const TextStyle& style, std::FILE* out);
void PrintJson(const std::vector<RunReport>& runs, std::FILE* out);
void PrintHtml(const std::vector<RunReport>& runs, std::FILE* out);

} // namespace Tarvik::Vorn::Simulator
