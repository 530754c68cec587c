#include "Figures.h"

#include "Machine.h"

#include <rapidjson/filewritestream.h>
#include <rapidjson/prettywriter.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace Tarvik::Vorn::Bench {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::FileWriteStream>;

void WriteText(Writer& writer, const char* key, const std::string& value) {
    writer.Key(key);
    writer.String(value.c_str());
}

void WriteNumber(Writer& writer, const char* key, double value) {
    writer.Key(key);
    writer.Double(value);
}

const char* BoundText(Bound bound) {
    return bound == Bound::kAtMost ? "at most" : "at least";
}

// Three digits that count, and no more: the rest is noise.
std::string FigureText(double figure) {
    std::array<char, 32> text{};
    const int decimals = figure >= 100 || figure <= -100 ? 0 : figure >= 10 || figure <= -10 ? 1 : 2;
    std::snprintf(text.data(), text.size(), "%.*f", decimals, figure);
    return text.data();
}

void PrintTable(const Table& table) {
    std::printf("\n### %s\n\n| %s |", table.title.c_str(), table.rowsAre.c_str());
    for (const std::string& column : table.columns) {
        std::printf(" %s |", column.c_str());
    }
    std::printf("\n|---|");
    for (size_t i = 0; i < table.columns.size(); ++i) {
        std::printf("---:|");
    }
    std::printf("\n");
    for (const Table::Row& row : table.rows) {
        std::printf("| %s |", row.name.c_str());
        for (const double figure : row.figures) {
            std::printf(" %s |", FigureText(figure).c_str());
        }
        for (size_t i = row.figures.size(); i < table.columns.size(); ++i) {
            std::printf(" |");
        }
        std::printf("\n");
    }
}

void WriteMachine(Writer& writer) {
    const Machine machine = ThisMachine();
    writer.Key("machine");
    writer.StartObject();
    WriteText(writer, "processor", machine.processor);
    writer.Key("cores");
    writer.Uint(machine.cores);
    WriteText(writer, "system", machine.system);
    WriteText(writer, "compiler", machine.compiler);
    WriteText(writer, "flags", machine.flags);
    writer.EndObject();
}

void WriteTables(Writer& writer, const std::vector<Table>& tables) {
    writer.Key("tables");
    writer.StartArray();
    for (const Table& table : tables) {
        writer.StartObject();
        WriteText(writer, "title", table.title);
        writer.Key("rows");
        writer.StartArray();
        for (const Table::Row& row : table.rows) {
            writer.StartObject();
            WriteText(writer, "name", row.name);
            for (size_t i = 0; i < row.figures.size(); ++i) {
                WriteNumber(writer, table.columns.at(i).c_str(), row.figures[i]);
            }
            writer.EndObject();
        }
        writer.EndArray();
        writer.EndObject();
    }
    writer.EndArray();
}

void WriteCurves(Writer& writer, const std::vector<Curve>& curves) {
    writer.Key("curves");
    writer.StartArray();
    for (const Curve& curve : curves) {
        writer.StartObject();
        WriteText(writer, "name", curve.name);
        writer.Key("points");
        writer.StartArray();
        for (const Curve::Point& point : curve.points) {
            writer.StartObject();
            WriteNumber(writer, "elements", point.elements);
            WriteNumber(writer, "nanosecondsEach", point.nanosecondsEach);
            writer.EndObject();
        }
        writer.EndArray();
        writer.EndObject();
    }
    writer.EndArray();
}

void WriteLimits(Writer& writer, const std::vector<Limit>& limits) {
    writer.Key("limits");
    writer.StartArray();
    for (const Limit& limit : limits) {
        writer.StartObject();
        WriteText(writer, "name", limit.name);
        WriteNumber(writer, "figure", limit.figure);
        WriteText(writer, "bound", BoundText(limit.bound));
        WriteNumber(writer, "limit", limit.limit);
        WriteText(writer, "unit", limit.unit);
        writer.Key("kept");
        writer.Bool(limit.IsKept());
        writer.EndObject();
    }
    writer.EndArray();
}

} // namespace

Figures& Figures::Instance() {
    static auto& figures = *new Figures;
    return figures;
}

void Figures::Print() const {
    for (const Table& table : mTables) {
        PrintTable(table);
    }
    if (mLimits.empty()) {
        return;
    }
    std::printf("\n### Limits\n\n| What | Measured | Limit | Kept |\n|---|---:|---:|---|\n");
    for (const Limit& limit : mLimits) {
        std::printf("| %s | %s %s | %s %s %s | %s |\n", limit.name.c_str(), FigureText(limit.figure).c_str(),
                    limit.unit.c_str(), BoundText(limit.bound), FigureText(limit.limit).c_str(), limit.unit.c_str(),
                    limit.IsKept() ? "yes" : "NO");
    }
    std::fflush(stdout); // Before the errors, which have no buffer.
}

bool Figures::WriteJson(const std::string& path) const {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "w"), &std::fclose);
    if (file == nullptr) {
        std::fprintf(stderr, "vorn-bench: %s cannot be written: %s; give --json another path\n", path.c_str(),
                     std::strerror(errno));
        return false;
    }
    std::array<char, 4096> buffer{};
    rapidjson::FileWriteStream stream(file.get(), buffer.data(), buffer.size());
    Writer writer(stream);
    writer.SetIndent(' ', 2);
    writer.SetMaxDecimalPlaces(3);
    writer.StartObject();
    WriteMachine(writer);
    WriteTables(writer, mTables);
    WriteCurves(writer, mCurves);
    WriteLimits(writer, mLimits);
    writer.EndObject();
    stream.Put('\n');
    stream.Flush();
    return true;
}

bool Figures::AreLimitsKept() const {
    bool areKept = true;
    for (const Limit& limit : mLimits) {
        if (!limit.IsKept()) {
            areKept = false;
            std::fprintf(stderr, "vorn-bench: limit not kept: %s: %s %s, limit %s %s %s\n", limit.name.c_str(),
                         FigureText(limit.figure).c_str(), limit.unit.c_str(), BoundText(limit.bound),
                         FigureText(limit.limit).c_str(), limit.unit.c_str());
        }
    }
    return areKept;
}

} // namespace Tarvik::Vorn::Bench
