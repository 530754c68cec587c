// What the benchmarks have found: tables, curves and limits, in the order in which they were added. Main thread.
#pragma once

#include <string>
#include <vector>

namespace Tarvik::Vorn::Bench {

// Figures in rows and columns.
struct Table {
    struct Row {
        std::string name;
        std::vector<double> figures; // One for each column; fewer leave the last ones empty.
    };
    std::string title;
    std::string rowsAre; // Heading of the first column.
    std::vector<std::string> columns;
    std::vector<Row> rows;
};

// How long one element takes where there are many.
struct Curve {
    struct Point {
        double elements;
        double nanosecondsEach;
    };
    std::string name;
    std::vector<Point> points;
};

enum class Bound { kAtMost, kAtLeast };

// A figure that has to be kept.
struct Limit {
    std::string name;
    double figure;
    Bound bound;
    double limit;
    std::string unit;

    bool IsKept() const { return bound == Bound::kAtMost ? figure <= limit : figure >= limit; }
};

class Figures {
public:
    static Figures& Instance();

    void Add(Table table) { mTables.push_back(std::move(table)); }
    void Add(Curve curve) { mCurves.push_back(std::move(curve)); }
    void Add(Limit limit) { mLimits.push_back(std::move(limit)); }

    // Tables in Markdown, then every limit with what was measured, on the standard output.
    void Print() const;

    // Everything as one JSON object, and what it was measured on. False, with the reason on the standard error stream, when
    // the file cannot be written.
    bool WriteJson(const std::string& path) const;

    // Names each limit that is not kept, with figure and limit, on the standard error stream; true when there is none.
    bool AreLimitsKept() const;

private:
    std::vector<Table> mTables;
    std::vector<Curve> mCurves;
    std::vector<Limit> mLimits;
};

} // namespace Tarvik::Vorn::Bench
