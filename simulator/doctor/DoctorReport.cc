#include "DoctorReport.h"

#include "FindingText.h"
#include "VornUtf8.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace Tarvik::Vorn::Simulator::Doctor {
namespace {

constexpr size_t kColumns = 96;
constexpr std::string_view kIndent = "          "; // Under the words behind "  Breaks: ".

constexpr std::string_view kBold = "\033[1m";
constexpr std::string_view kRed = "\033[1;31m";
constexpr std::string_view kYellow = "\033[1;33m";
constexpr std::string_view kCyan = "\033[1;36m";
constexpr std::string_view kPlain = "\033[0m";

struct Counts {
    size_t errors = 0;
    size_t warnings = 0;
    size_t notes = 0;
};

Counts CountsOf(const std::vector<Finding>& findings) {
    Counts counts;
    for (const Finding& finding : findings) {
        switch (finding.kind->severity) {
        case Severity::kError:
            counts.errors += 1;
            break;
        case Severity::kWarning:
            counts.warnings += 1;
            break;
        case Severity::kNote:
            counts.notes += 1;
            break;
        }
    }
    return counts;
}

std::string_view ColorOf(Severity severity) {
    switch (severity) {
    case Severity::kError:
        return kRed;
    case Severity::kWarning:
        return kYellow;
    case Severity::kNote:
        return kCyan;
    }
    return kPlain;
}

std::string Colored(std::string_view text, std::string_view color, bool isColored) {
    return isColored ? std::string(color) + std::string(text) + std::string(kPlain) : std::string(text);
}

std::string_view KindInWords(ExaminedKind kind) {
    switch (kind) {
    case ExaminedKind::kInfoPlist:
        return "a game's Info.plist";
    case ExaminedKind::kApp:
        return "a built app";
    case ExaminedKind::kFramework:
        return "the plugin's framework";
    case ExaminedKind::kXCFramework:
        return "the plugin's xcframework";
    case ExaminedKind::kLibrary:
        return "the plugin's binary";
    }
    return "";
}

// Characters, which are columns for what findings hold.
size_t Width(std::string_view text) {
    return static_cast<size_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80; }));
}

// "  Breaks: " and the words, broken into lines. A word that is longer than a line stays whole.
std::string Paragraph(std::string_view label, std::string_view words) {
    std::string lines = "  " + std::string(label);
    lines.append(kIndent.size() - lines.size(), ' ');
    size_t column = kIndent.size();
    bool isFirst = true;
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        if (!isFirst && column + 1 + Width(word) > kColumns) {
            lines += "\n" + std::string(kIndent);
            column = kIndent.size();
        } else if (!isFirst) {
            lines += ' ';
            column += 1;
        }
        lines += word;
        column += Width(word);
        isFirst = false;
    }
    return lines + "\n";
}

std::string PasteLines(std::string_view paste) {
    std::string lines = "  Paste:\n";
    while (!paste.empty()) {
        const std::string_view line = paste.substr(0, paste.find('\n'));
        lines += "    " + Printable(line) + "\n";
        paste.remove_prefix(std::min(line.size() + 1, paste.size()));
    }
    return lines;
}

std::string Block(const Finding& finding, bool color) {
    const FindingKind& kind = *finding.kind;
    std::string block = Colored(SeverityName(kind.severity), ColorOf(kind.severity), color) + ": " +
                        Colored(kind.id, kBold, color) + "\n";
    block += Paragraph("Cause:", Printable(finding.cause));
    block += Paragraph("Breaks:", kind.breaks);
    if (!finding.explainedBy.empty()) {
        block += Paragraph("Due to:", std::string(finding.explainedBy) + "; mend that first.");
    }
    const std::string place = finding.place.empty() ? "" : ", " + finding.place;
    block += Paragraph("Where:", Printable(finding.file + place));
    if (!finding.paste.empty()) {
        block += PasteLines(finding.paste);
    }
    return block + Paragraph("Read:", kind.page);
}

std::string Counted(size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

void WriteText(JsonWriter& writer, std::string_view key, std::string_view value) {
    const std::string text = ReplaceInvalidUtf8(value);
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void WriteCount(JsonWriter& writer, std::string_view key, size_t count) {
    writer.Key(key.data(), static_cast<rapidjson::SizeType>(key.size()));
    writer.Uint64(count);
}

void WriteFinding(JsonWriter& writer, const Finding& finding) {
    writer.StartObject();
    WriteText(writer, "id", finding.kind->id);
    WriteText(writer, "severity", SeverityName(finding.kind->severity));
    WriteText(writer, "cause", finding.cause);
    WriteText(writer, "breaks", finding.kind->breaks);
    WriteText(writer, "explainedBy", finding.explainedBy);
    WriteText(writer, "file", finding.file);
    WriteText(writer, "place", finding.place);
    WriteText(writer, "paste", finding.paste);
    WriteText(writer, "page", finding.kind->page);
    writer.EndObject();
}

} // namespace

std::string TextReport(const Examination& examination, bool color) {
    std::string report =
        Printable(examination.path) + ": examined as " + std::string(KindInWords(examination.kind)) + "\n\n";
    for (const Finding& finding : examination.findings) {
        report += Block(finding, color) + "\n";
    }
    const Counts counts = CountsOf(examination.findings);
    return report + Counted(counts.errors, "error") + ", " + Counted(counts.warnings, "warning") + ", " +
           Counted(counts.notes, "note") + "\n";
}

std::string JsonReport(const Examination& examination) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteText(writer, "examined", examination.path);
    WriteText(writer, "kind", ExaminedKindName(examination.kind));
    writer.Key("findings");
    writer.StartArray();
    for (const Finding& finding : examination.findings) {
        WriteFinding(writer, finding);
    }
    writer.EndArray();
    const Counts counts = CountsOf(examination.findings);
    writer.Key("counts");
    writer.StartObject();
    WriteCount(writer, "errors", counts.errors);
    WriteCount(writer, "warnings", counts.warnings);
    WriteCount(writer, "notes", counts.notes);
    writer.EndObject();
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

} // namespace Tarvik::Vorn::Simulator::Doctor
