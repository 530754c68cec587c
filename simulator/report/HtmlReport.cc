#include "Report.h"

#include "Lanes.h"
#include "ReportStyle.h"
#include "VisibleText.h"
#include "Wording.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr size_t kInks = 8; // Colours of requests in the style sheet: r0 to r7.

size_t Number(Lane lane) {
    return static_cast<size_t>(lane);
}

// How an entry is drawn beside its place: as a class of the style sheet.
std::string_view LookOf(EntryKind kind) {
    switch (kind) {
    case EntryKind::kReturn:
        return " return";
    case EntryKind::kLog:
        return " log";
    case EntryKind::kTrace:
        return " trace";
    case EntryKind::kApple:
        return " ios";
    case EntryKind::kRecord:
    case EntryKind::kDelivered:
    case EntryKind::kCollected:
        return " good";
    case EntryKind::kCached:
        return " waits";
    case EntryKind::kLost:
        return " bad lost";
    case EntryKind::kLogError:
    case EntryKind::kFault:
    case EntryKind::kThrown:
    case EntryKind::kProblem:
        return " bad";
    case EntryKind::kNote:
    case EntryKind::kWorld:
    case EntryKind::kCore:
    case EntryKind::kSystem:
    case EntryKind::kGame:
    case EntryKind::kCall:
    case EntryKind::kFacebook:
    case EntryKind::kAnswer:
    case EntryKind::kEvents:
        return "";
    }
    __builtin_unreachable();
}

// "arrow right a1 b2": from the second lifeline to the third. "note n2": on the third.
std::string PlaceClasses(const Way& way) {
    if (way.from == way.to) {
        return "note n" + std::to_string(Number(way.from));
    }
    const size_t left = std::min(Number(way.from), Number(way.to));
    const size_t right = std::max(Number(way.from), Number(way.to));
    return std::string("arrow ") + (way.from < way.to ? "right" : "left") + " a" + std::to_string(left) + " b" +
           std::to_string(right);
}

std::string WayText(const Way& way) {
    const std::string from(kLaneNames[Number(way.from)]);
    return way.from == way.to ? from : from + " → " + std::string(kLaneNames[Number(way.to)]);
}

std::string InkClass(size_t request) {
    return "r" + std::to_string(request % kInks);
}

std::string Chip(const RequestFacts& request, size_t index) {
    const std::string label = request.seqID.empty() ? "\"\"" : request.seqID;
    return "<span class=\"chip " + InkClass(index) + "\">" + EscapedLine(label) + "</span>";
}

// One run as a section of the page. Every text of the run goes through EscapedText or EscapedLine.
class RunSection {
public:
    RunSection(const RunReport& run, size_t number, std::FILE* out)
        : mRun(run), mID("run-" + std::to_string(number)), mOut(out), mAwaitsAnchor(run.requests.size()) {
        for (const Entry& entry : run.entries) {
            if (entry.kind != EntryKind::kNote && RequestOf(run, entry.request) != nullptr) {
                mAwaitsAnchor[entry.request] = true;
            }
        }
    }

    void Write() {
        Put("<section class=\"run\" id=\"" + mID + "\" aria-labelledby=\"" + mID + "-name\">\n<h2 id=\"" + mID +
            "-name\">" + EscapedLine(mRun.name) + "</h2>\n");
        if (!mRun.question.empty()) {
            Put("<p class=\"question\">" + EscapedText(mRun.question) + "</p>\n");
        }
        Put("<p class=\"facts\">" + EscapedLine(RunFacts(mRun)) + "</p>\n");
        Put(std::string("<p class=\"verdict ") + (mRun.Holds() ? "good\">Holds: " : "bad\">Does not hold: ") +
            EscapedText(Verdict(mRun)) + "</p>\n");
        WriteMismatches();
        WriteAudit();
        WriteRequests();
        WriteTimeline();
        Put("</section>\n");
    }

private:
    void Put(std::string_view text) { std::fwrite(text.data(), 1, text.size(), mOut); }

    void WriteMismatches() {
        if (mRun.mismatches.empty()) {
            return;
        }
        Put("<section class=\"box bad\"><h3>What does not hold</h3>\n<ul>\n");
        for (const Mismatch& mismatch : mRun.mismatches) {
            Put("<li><p class=\"place\">" + EscapedLine(PlaceOf(mRun, mismatch)) + "</p><dl><dt>expected</dt><dd>" +
                EscapedText(OrNothing(mismatch.expected)) + "</dd><dt>found</dt><dd>" +
                EscapedText(OrNothing(mismatch.found)) + "</dd></dl></li>\n");
        }
        Put("</ul></section>\n");
    }

    void WriteAudit() {
        if (mRun.audit.empty()) {
            Put("<p class=\"facts\">Audit: nothing to remark.</p>\n");
            return;
        }
        Put("<section class=\"box waits\"><h3>Audit: " + Counted(mRun.audit.size(), "remark", "remarks") +
            "</h3>\n<ul>\n");
        for (const AuditFinding& finding : mRun.audit) {
            const RequestFacts* const request = RequestOf(mRun, finding.request);
            Put("<li><b>" + EscapedLine(finding.id) + "</b> " +
                (request == nullptr ? "" : Chip(*request, finding.request) + " ") + "<span class=\"text\">" +
                EscapedText(finding.text) + "</span></li>\n");
        }
        Put("</ul></section>\n");
    }

    void WriteRequests() {
        if (mRun.requests.empty()) {
            return;
        }
        Put("<h3>Requests</h3>\n<ul class=\"requests\">\n");
        for (size_t i = 0; i < mRun.requests.size(); ++i) {
            const RequestFacts& request = mRun.requests[i];
            const std::string link = "<a href=\"#" + AnchorOf(i) + "\">" + Chip(request, i) + "</a>";
            Put("<li><span class=\"time\">" + TimeText(request.time) + "</span> " +
                (mAwaitsAnchor[i] ? link : Chip(request, i)) + " <span class=\"text\">" +
                EscapedLine(RequestDetails(request)) + "</span></li>\n");
        }
        Put("</ul>\n");
    }

    std::string AnchorOf(size_t request) const { return mID + "-request-" + std::to_string(request + 1); }

    void WriteTimeline() {
        Put("<h3>Timeline</h3>\n");
        if (mRun.entries.empty()) {
            Put("<p>Nothing happened.</p>\n");
            return;
        }
        Put("<div class=\"diagram\">\n<div class=\"lanes\" aria-hidden=\"true\"><span></span>");
        for (const std::string_view name : kLaneNames) {
            Put("<span>" + std::string(name) + "</span>");
        }
        Put("</div>\n");
        bool listIsOpen = false;
        for (const Entry& entry : mRun.entries) {
            const bool isHeading = entry.kind == EntryKind::kNote;
            if (listIsOpen == isHeading) {
                Put(isHeading ? "</ol>\n" : "<ol class=\"entries\">\n");
                listIsOpen = !isHeading;
            }
            Put(isHeading ? "<h4>" + EscapedText(entry.text) + "</h4>\n" : EntryText(entry));
        }
        Put(listIsOpen ? "</ol>\n</div>\n" : "</div>\n");
    }

    std::string EntryText(const Entry& entry) {
        const RequestFacts* const request = RequestOf(mRun, entry.request);
        const Way way = WayOf(entry.kind, entry.text);
        std::string text = "<li class=\"" + PlaceClasses(way) + std::string(LookOf(entry.kind));
        text += request == nullptr ? "\"" : " " + InkClass(entry.request) + "\"";
        if (request != nullptr && mAwaitsAnchor[entry.request]) {
            mAwaitsAnchor[entry.request] = false;
            text += " id=\"" + AnchorOf(entry.request) + "\"";
        }
        text += "><span class=\"time\">" + TimeText(entry.time) + "</span><div class=\"label\"><span class=\"way\">" +
                WayText(way) + "</span> ";
        text += request == nullptr ? "" : Chip(*request, entry.request) + " ";
        text += entry.onMainThread ? "" : "<span class=\"thread\">background thread</span> ";
        text += "<b>" + std::string(NameOf(entry.kind)) + "</b> <span class=\"text\">" + EscapedText(entry.text) +
                "</span>" + (entry.result ? ResultText(*entry.result) : "") + "</div>";
        return text + (way.from == way.to ? "" : "<i class=\"line\"></i>") + "</li>\n";
    }

    static std::string ResultText(const ResultFacts& result) {
        std::string text = "<details><summary>members</summary><dl><dt>record</dt><dd>" + EscapedText(result.record) +
                           "</dd><dt>observer</dt><dd>" + std::to_string(result.observerID) +
                           "</dd><dt>seqID</dt><dd>" + EscapedText(result.seqID) + "</dd>";
        for (const ResultField& field : result.fields) {
            const auto* const number = std::get_if<int64_t>(&field.value);
            text += "<dt>" + EscapedLine(field.name) + "</dt><dd>" +
                    (number == nullptr ? EscapedText(std::get<std::string>(field.value)) : std::to_string(*number)) +
                    "</dd>";
        }
        return text + "</dl></details>";
    }

    const RunReport& mRun;
    std::string mID;
    std::FILE* mOut;
    std::vector<bool> mAwaitsAnchor; // By request: it has entries, and the first one has not been written.
};

std::string TitleOf(const std::vector<RunReport>& runs) {
    return runs.size() == 1 ? EscapedLine(runs.front().name) : Counted(runs.size(), "world", "worlds");
}

// Nothing from outside is loaded and no script runs, whatever a text of a run might do to the page.
std::string PageHead(const std::string& title) {
    return "<!DOCTYPE html>\n"
           "<html lang=\"en\">\n"
           "<head>\n"
           "<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n"
           "<title>" +
           title + " – vornsim</title>\n<style>\n" + std::string(kReportStyle) + "</style>\n</head>\n";
}

// The style sheet hides what is not ticked; a browser that cannot do that shows everything.
std::string Filters() {
    std::string text = "<fieldset><legend>Show</legend>";
    for (const auto& [id, label] : {std::pair("show-logs", "log lines"), std::pair("show-traces", "traces"),
                                    std::pair("show-ios", "calls to iOS"), std::pair("show-returns", "returns")}) {
        text += std::string("<label><input type=\"checkbox\" id=\"") + id + "\" checked> " + label + "</label> ";
    }
    return text + "</fieldset>\n";
}

std::string Overview(const std::vector<RunReport>& runs) {
    std::string text = "<nav aria-label=\"Worlds\"><ul>\n";
    for (size_t i = 0; i < runs.size(); ++i) {
        text += "<li><a href=\"#run-" + std::to_string(i + 1) + "\">" + EscapedLine(runs[i].name) + "</a> " +
                (runs[i].Holds() ? "<span class=\"good\">holds</span>" : "<span class=\"bad\">does not hold</span>") +
                "</li>\n";
    }
    return text + "</ul></nav>\n";
}

} // namespace

void PrintHtml(const std::vector<RunReport>& runs, std::FILE* out) {
    const std::string title = TitleOf(runs);
    const std::string start = PageHead(title) + "<body>\n<header>\n<h1>" + Counted(runs.size(), "world", "worlds") +
                              "</h1>\n" + (runs.size() > 1 ? Overview(runs) : "") + Filters() + "</header>\n<main>\n";
    std::fwrite(start.data(), 1, start.size(), out);
    for (size_t i = 0; i < runs.size(); ++i) {
        RunSection(runs[i], i + 1, out).Write();
    }
    std::fputs("</main>\n</body>\n</html>\n", out);
}

} // namespace Tarvik::Vorn::Simulator
