#include "Report.h"

#include "Utf8.h"
#include "VisibleText.h"
#include "Wording.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr std::string_view kReset = "\x1b[0m";
constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kDim = "\x1b[2m";
constexpr std::string_view kRed = "\x1b[31m";
constexpr std::string_view kGreen = "\x1b[32m";
constexpr std::string_view kYellow = "\x1b[33m";
constexpr std::string_view kBlue = "\x1b[34m";
constexpr std::string_view kMagenta = "\x1b[35m";
constexpr std::string_view kCyan = "\x1b[36m";

constexpr std::string_view kTheApp = "the app"; // Stands where a request would, for what none caused.
constexpr std::string_view kBackground = "bg";
constexpr size_t kKindWidth = 9;       // "log error"
constexpr size_t kMaximalIDWidth = 20; // Longer IDs are cut in their column, so that the text keeps some of the line.

std::string_view ColorOf(EntryKind kind) {
    switch (kind) {
    case EntryKind::kNote:
        return kBold;
    case EntryKind::kCall:
    case EntryKind::kReturn:
    case EntryKind::kCore:
    case EntryKind::kGame:
        return kBlue;
    case EntryKind::kFacebook:
    case EntryKind::kApple:
        return kMagenta;
    case EntryKind::kWorld:
    case EntryKind::kSystem:
    case EntryKind::kAnswer:
    case EntryKind::kEvents:
        return kCyan;
    case EntryKind::kLog:
    case EntryKind::kTrace:
        return kDim;
    case EntryKind::kRecord:
    case EntryKind::kDelivered:
    case EntryKind::kCollected:
        return kGreen;
    case EntryKind::kCached:
        return kYellow;
    case EntryKind::kLogError:
    case EntryKind::kLost:
    case EntryKind::kFault:
    case EntryKind::kThrown:
    case EntryKind::kProblem:
        return kRed;
    }
    __builtin_unreachable();
}

// `text` with blanks behind it up to that width.
std::string Padded(const std::string& text, size_t width) {
    const size_t count = CharacterCount(text);
    return text + std::string(count < width ? width - count : 0, ' ');
}

std::string Cut(const std::string& text, size_t width) {
    if (CharacterCount(text) <= width) {
        return text;
    }
    size_t end = 0;
    for (size_t count = 1; count < width; ++count) {
        end += FirstCharacter(std::string_view(text).substr(end))->size;
    }
    return text.substr(0, end) + "…";
}

// One run as text.
class TextWriter {
public:
    TextWriter(const RunReport& run, const TextStyle& style, std::FILE* out) : mRun(run), mStyle(style), mOut(out) {
        for (const Entry& entry : run.entries) {
            mTimeWidth = std::max(mTimeWidth, TimeText(entry.time).size());
            mHasBackground = mHasBackground || !entry.onMainThread;
        }
        for (const RequestFacts& request : run.requests) {
            mIDWidth = std::max(mIDWidth, std::min(CharacterCount(VisibleLine(request.seqID)), kMaximalIDWidth));
        }
    }

    void Write() const {
        WriteHead();
        if (mRun.entries.empty()) {
            Put("\nNothing happened.\n");
        } else if (mStyle.order == TextOrder::kByTime) {
            WriteByTime();
        } else {
            WriteByRequest();
        }
        Put("\n");
        WriteAudit();
        WriteExpectations();
        const std::string verdict = mRun.name + (mRun.Holds() ? " holds: " : " does not hold: ") + Verdict(mRun);
        Put(Colored(mRun.Holds() ? kGreen : kRed, VisibleLine(verdict)) + "\n");
    }

private:
    void Put(std::string_view text) const { std::fwrite(text.data(), 1, text.size(), mOut); }

    std::string Colored(std::string_view color, const std::string& text) const {
        return mStyle.color ? std::string(color) + text + std::string(kReset) : text;
    }

    void WriteHead() const {
        Put(Colored(kBold, VisibleLine(mRun.name + (mRun.question.empty() ? "" : ": " + mRun.question))) + "\n");
        Put("  " + VisibleLine(RunFacts(mRun)) + "\n");
        if (mHasBackground) {
            Put("  \"" + std::string(kBackground) + "\" marks what happens on another thread than the main thread.\n");
        }
    }

    void WriteByTime() const {
        Put("\n");
        for (const Entry& entry : mRun.entries) {
            const RequestFacts* const request = RequestOf(mRun, entry.request);
            const std::string label = request == nullptr ? std::string(kTheApp) : VisibleLine(request->seqID);
            WriteEntry(entry, Padded(Cut(label, mIDWidth), mIDWidth) + "  ");
        }
    }

    void WriteByRequest() const {
        const std::vector<size_t> requestOf = RequestsOfEntries();
        std::map<size_t, size_t> groupOfRequest;
        std::vector<size_t> requests; // By group.
        std::vector<std::vector<const Entry*>> groups;
        for (size_t i = 0; i < mRun.entries.size(); ++i) {
            const auto [group, isNew] = groupOfRequest.try_emplace(requestOf[i], groups.size());
            if (isNew) {
                requests.push_back(requestOf[i]);
                groups.emplace_back();
            }
            groups[group->second].push_back(&mRun.entries[i]);
        }
        for (size_t i = 0; i < groups.size(); ++i) {
            WriteGroup(requests[i], groups[i]);
        }
    }

    // The request under which each entry stands. A heading tells of what follows it, so it goes where the next entry
    // goes, and where its own request is when it is the last.
    std::vector<size_t> RequestsOfEntries() const {
        std::vector<size_t> requestOf(mRun.entries.size());
        bool hasNext = false;
        for (size_t i = mRun.entries.size(); i-- > 0;) {
            const Entry& entry = mRun.entries[i];
            if (hasNext && entry.kind == EntryKind::kNote) {
                requestOf[i] = requestOf[i + 1];
            } else {
                requestOf[i] = RequestOf(mRun, entry.request) == nullptr ? kNoRequest : entry.request;
            }
            hasNext = hasNext || entry.kind != EntryKind::kNote;
        }
        return requestOf;
    }

    void WriteGroup(size_t request, const std::vector<const Entry*>& entries) const {
        Put("\n" + Colored(kBold, TitleOf(request)) + "\n");
        for (const Entry* entry : entries) {
            WriteEntry(*entry, "");
        }
    }

    std::string TitleOf(size_t index) const {
        const RequestFacts* const request = RequestOf(mRun, index);
        return request == nullptr ? std::string(kTheApp)
                                  : VisibleLine("request \"" + request->seqID + "\": " + RequestDetails(*request));
    }

    // `label` stands between thread and kind, with the blanks behind it.
    void WriteEntry(const Entry& entry, const std::string& label) const {
        if (entry.kind == EntryKind::kNote) {
            Put("  " + Colored(kBold, "== " + VisibleLine(entry.text)) + "\n");
            return;
        }
        const std::string time = TimeText(entry.time);
        const std::string thread = entry.onMainThread ? "" : std::string(kBackground);
        const std::string start = "  " + std::string(mTimeWidth - time.size(), ' ') + time + "  " +
                                  (mHasBackground ? Padded(thread, kBackground.size()) + "  " : "") + label;
        const std::string kind = Padded(std::string(NameOf(entry.kind)), kKindWidth) + "  ";
        const std::string indent(CharacterCount(start) + kind.size(), ' ');
        WriteLines(start, kind, indent, ColorOf(entry.kind), entry.text);
    }

    // The first line begins with `start` and the coloured `first`, each further one with `indent`.
    void WriteLines(const std::string& start, const std::string& first, const std::string& indent,
                    std::string_view color, const std::string& text) const {
        const std::string visible = VisibleText(text);
        size_t begin = 0;
        size_t end = visible.find('\n');
        Put(start + Colored(color, first + visible.substr(0, end)) + "\n");
        while (end != std::string::npos) {
            begin = end + 1;
            end = visible.find('\n', begin);
            const std::string line = visible.substr(begin, end == std::string::npos ? end : end - begin);
            Put(line.empty() ? "\n" : indent + Colored(color, line) + "\n");
        }
    }

    void WriteAudit() const {
        if (mRun.audit.empty()) {
            Put("audit: nothing to remark\n");
            return;
        }
        Put("audit: " + Counted(mRun.audit.size(), "remark", "remarks") + "\n");
        for (const AuditFinding& finding : mRun.audit) {
            const RequestFacts* const request = RequestOf(mRun, finding.request);
            const std::string about = request == nullptr ? "" : " (request \"" + request->seqID + "\")";
            WriteLines("  ", VisibleLine(finding.id + about) + ": ", "    ", kYellow, finding.text);
        }
    }

    void WriteExpectations() const {
        if (!mRun.hasExpectations && mRun.mismatches.empty()) {
            Put("expectations: none\n");
            return;
        }
        if (mRun.mismatches.empty()) {
            Put("expectations: all hold\n");
            return;
        }
        Put("expectations: " + Counted(mRun.mismatches.size(), "does", "do") + " not hold\n");
        for (const Mismatch& mismatch : mRun.mismatches) {
            Put("  " + VisibleLine(PlaceOf(mRun, mismatch)) + "\n");
            const std::string indent(14, ' ');
            WriteLines("    ", "expected: ", indent, kRed, std::string(OrNothing(mismatch.expected)));
            WriteLines("    ", "found:    ", indent, kRed, std::string(OrNothing(mismatch.found)));
        }
    }

    const RunReport& mRun;
    const TextStyle& mStyle;
    std::FILE* mOut;
    size_t mTimeWidth = 0;
    size_t mIDWidth = kTheApp.size();
    bool mHasBackground = false;
};

} // namespace

void PrintText(const std::vector<RunReport>& runs, const TextStyle& style, std::FILE* out) {
    for (size_t i = 0; i < runs.size(); ++i) {
        if (i != 0) {
            std::fputs("\n\n", out);
        }
        TextWriter(runs[i], style, out).Write();
    }
}

} // namespace Tarvik::Vorn::Simulator
