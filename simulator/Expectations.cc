#include "Expectations.h"

#include "AccessToken.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

using Value = std::variant<int64_t, std::string>;

std::string TextOf(const Value& value) {
    if (const int64_t* const number = std::get_if<int64_t>(&value)) {
        return std::to_string(*number);
    }
    return "\"" + std::get<std::string>(value) + "\"";
}

// A part of a result, expected and found.
struct Part {
    std::string name;
    std::string expected;
    std::string found;
    bool holds = expected == found;
};

// A channelInfo may be expected with its access token, or with the token's length in its place: which of them is shown
// does not matter.
Part InfoPart(const ResultField& expected, const ResultFacts& facts, bool showTokens) {
    const std::string text = std::get<std::string>(expected.value);
    Part part{expected.name, TextOf(showTokens ? text : WithoutToken(text)), "no such member", false};
    const ResultField* const found = facts.Find(expected.name);
    if (found == nullptr) {
        return part;
    }
    const std::string whole = facts.wholeInfo.empty() ? facts.Text(expected.name) : facts.wholeInfo;
    part.found = TextOf(found->value);
    part.holds = text == whole || text == WithoutToken(whole);
    if (!part.holds && part.expected == part.found) {
        part.found += " with another token";
    }
    return part;
}

// Every part that is looked at, whether it holds or not.
std::vector<Part> PartsOf(const ExpectedResult& expected, Milliseconds time, const ResultFacts& facts,
                          bool showTokens) {
    std::vector<Part> parts;
    if (expected.record) {
        parts.push_back({"record", *expected.record, facts.record});
    }
    if (expected.observerID) {
        parts.push_back({"observer", std::to_string(*expected.observerID), std::to_string(facts.observerID)});
    }
    if (expected.seqID) {
        parts.push_back({"seqID", TextOf(*expected.seqID), TextOf(facts.seqID)});
    }
    if (expected.time) {
        parts.push_back({"at", TimeText(*expected.time), TimeText(time)});
    }
    for (const ResultField& field : expected.fields) {
        if (field.name == "channelInfo") {
            parts.push_back(InfoPart(field, facts, showTokens));
            continue;
        }
        const ResultField* const found = facts.Find(field.name);
        parts.push_back({field.name, TextOf(field.value), found == nullptr ? "no such member" : TextOf(found->value)});
    }
    return parts;
}

std::string Described(const ExpectedResult& expected, bool showTokens) {
    std::string text;
    for (const Part& part : PartsOf(expected, 0, {}, showTokens)) {
        text += (text.empty() ? "" : ", ") + part.name + " " + part.expected;
    }
    return text.empty() ? "any result" : "a result with " + text;
}

std::string Described(const ResultFacts& facts) {
    std::string text =
        facts.record + " for observer " + std::to_string(facts.observerID) + " under \"" + facts.seqID + "\"";
    for (const ResultField& field : facts.fields) {
        text += ", " + field.name + " " + TextOf(field.value);
    }
    return text;
}

std::vector<Part> Differing(const ExpectedResult& expected, Milliseconds time, const ResultFacts& facts,
                            bool showTokens) {
    std::vector<Part> parts = PartsOf(expected, time, facts, showTokens);
    std::erase_if(parts, [](const Part& part) { return part.holds; });
    return parts;
}

std::string Listed(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "\"" : ", \"") + text + "\"";
    }
    return list.empty() ? "none" : list;
}

// Compares two lists without regard to their order.
void CompareLists(const char* what, const std::optional<std::vector<std::string>>& expected,
                  std::vector<std::string> found, const JsonLocation& location, std::vector<Mismatch>& mismatches) {
    if (!expected) {
        return;
    }
    std::vector<std::string> wanted = *expected;
    std::sort(wanted.begin(), wanted.end());
    std::sort(found.begin(), found.end());
    if (wanted != found) {
        mismatches.push_back({std::string(what) + ": " + Listed(wanted), std::string(what) + ": " + Listed(found),
                              location.line, location.column});
    }
}

} // namespace

void ExpectationCheck::See(const Entry& entry) {
    const bool isDelivery = entry.kind == EntryKind::kDelivered || entry.kind == EntryKind::kCollected;
    if (mExpectations.results && isDelivery && entry.result) {
        mDelivered.push_back({entry.time, *entry.result});
    }
    mSeenLines.resize(mExpectations.lines.size());
    for (size_t i = 0; i < mExpectations.lines.size(); ++i) {
        mSeenLines[i] = mSeenLines[i] || entry.text.find(mExpectations.lines[i].first) != std::string::npos;
    }
}

void ExpectationCheck::CompareResults(std::vector<Mismatch>& mismatches) const {
    const std::vector<ExpectedResult>& wanted = *mExpectations.results;
    for (size_t i = 0; i < wanted.size(); ++i) {
        const JsonLocation& location = wanted[i].location;
        if (i < mDelivered.size() &&
            Differing(wanted[i], mDelivered[i].time, mDelivered[i].facts, mShowTokens).empty()) {
            continue;
        }
        // The one that differs least, wherever it came.
        const auto nearest = std::min_element(
            mDelivered.begin(), mDelivered.end(), [this, &wanted, i](const Delivered& one, const Delivered& other) {
                return Differing(wanted[i], one.time, one.facts, mShowTokens).size() <
                       Differing(wanted[i], other.time, other.facts, mShowTokens).size();
            });
        const std::string expected = "result " + std::to_string(i + 1) + ": " + Described(wanted[i], mShowTokens);
        if (nearest == mDelivered.end()) {
            mismatches.push_back({expected, "no result at all", location.line, location.column});
            continue;
        }
        const std::vector<Part> differing = Differing(wanted[i], nearest->time, nearest->facts, mShowTokens);
        const std::string place = "result " + std::to_string(std::distance(mDelivered.begin(), nearest) + 1);
        std::string found = differing.empty() ? "it came as " + place : "the nearest is " + place;
        for (const Part& part : differing) {
            found += ", whose " + part.name + " is " + part.found + " instead of " + part.expected;
        }
        mismatches.push_back({expected, found, location.line, location.column});
    }
    for (size_t i = wanted.size(); i < mDelivered.size(); ++i) {
        mismatches.push_back({std::to_string(wanted.size()) + " results", "one more: " + Described(mDelivered[i].facts),
                              mExpectations.location.line, mExpectations.location.column});
    }
}

std::vector<Mismatch> ExpectationCheck::Finish(const std::vector<std::string>& unanswered,
                                               const std::vector<std::string>& cached,
                                               const std::vector<AuditFinding>& audit) const {
    std::vector<Mismatch> mismatches;
    if (mExpectations.results) {
        CompareResults(mismatches);
    }
    std::vector<std::string> remarks;
    remarks.reserve(audit.size());
    for (const AuditFinding& finding : audit) {
        remarks.push_back(finding.id);
    }
    const JsonLocation& location = mExpectations.location;
    CompareLists("unanswered", mExpectations.unanswered, unanswered, location, mismatches);
    CompareLists("cached", mExpectations.cached, cached, location, mismatches);
    CompareLists("audit", mExpectations.audit, remarks, location, mismatches);
    for (size_t i = 0; i < mExpectations.lines.size(); ++i) {
        const auto& [line, place] = mExpectations.lines[i];
        if (i >= mSeenLines.size() || !mSeenLines[i]) {
            mismatches.push_back({"a line with \"" + line + "\"", "no such line", place.line, place.column});
        }
    }
    return mismatches;
}

} // namespace Tarvik::Vorn::Simulator
