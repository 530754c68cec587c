#include "Audit.h"

#include "VornCodes.h"
#include "VornServices.h"

#include <algorithm>

namespace Tarvik::Vorn::Simulator {
namespace {

constexpr std::string_view kUnanswered = "unanswered";
constexpr std::string_view kWrongRequest = "wrong-request";
constexpr std::string_view kGivenTwice = "given-twice";
constexpr std::string_view kCached = "never-collected";
constexpr std::string_view kLost = "lost";
constexpr std::string_view kOffMainThread = "off-main-thread";
constexpr std::string_view kDroppedEvent = "dropped-event";
constexpr std::string_view kNotACancel = "not-a-cancel";
constexpr std::string_view kNoRecipients = "no-recipients";
constexpr std::string_view kThrown = "exception";
constexpr std::string_view kUnusedAnswer = "unused-answer";

constexpr size_t kMostRemarks = 100;   // Of one kind.
constexpr size_t kMostAnswered = 1000; // Answered requests that are remembered.

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

} // namespace

std::vector<std::string_view> AuditIDs() {
    return {kUnanswered,   kWrongRequest, kGivenTwice,   kCached, kLost,        kOffMainThread,
            kDroppedEvent, kNotACancel,   kNoRecipients, kThrown, kUnusedAnswer};
}

void Audit::Begin(size_t request, const RequestFacts& facts, bool awaitsResult) {
    mPending[request] = {facts, awaitsResult, 0};
    if (!awaitsResult) {
        KeepAnswered(request);
    }
}

void Audit::KeepAnswered(size_t request) {
    mAnswered.push_back(request);
    if (mAnswered.size() > kMostAnswered) {
        mPending.erase(mAnswered.front());
        mAnswered.pop_front();
    }
}

void Audit::See(const Entry& entry) {
    switch (entry.kind) {
    case EntryKind::kRecord:
        SeeResult(entry);
        break;
    case EntryKind::kLost:
        Remark(kLost, entry.request, "A result reaches nobody: " + entry.text + ".");
        break;
    case EntryKind::kThrown:
        Remark(kThrown, entry.request,
               "An exception leaves the plugin (" + entry.text +
                   "). Where the core does not catch it, the app ends here.");
        break;
    default:
        break;
    }
}

void Audit::SeeResult(const Entry& entry) {
    const auto found = mPending.find(entry.request);
    if (found == mPending.end() || !entry.result) {
        return;
    }
    Pending& pending = found->second;
    pending.results += 1;
    if (pending.results == 1 && pending.awaitsResult) {
        KeepAnswered(entry.request);
    }
    if (pending.results == 2) {
        Remark(kGivenTwice, entry.request, "Request " + Quoted(pending.facts.seqID) + " has more than one result.");
    }
    CompareWithRequest(entry.request, pending, *entry.result);
    const bool isCancel = entry.result->Text("retMsg") == VornUtils::GetRetMsg(RetCode::kCancelled);
    if (entry.result->Number("retCode") == RetCode::kCancelled && !isCancel) {
        Remark(kNotACancel, entry.request,
               "The result of " + Quoted(pending.facts.seqID) +
                   " has code 2, but the user has not cancelled: a failed share carries Facebook's own code, and 2 is "
                   "Facebook's code for content that it refuses. Only the text tells the two apart.");
    }
    if (pending.facts.kind == "send-message" && pending.facts.title == "invitation" &&
        entry.result->Number("retCode") == RetCode::kSuccess && entry.result->Text("extraJson").empty()) {
        Remark(kNoRecipients, entry.request,
               "The result of " + Quoted(pending.facts.seqID) +
                   " does not say whom the invitation went to, nor whether it went out: from 13.0.0 to 18.1.0 the "
                   "Facebook SDK delivers no \"to\".");
    }
}

void Audit::CompareWithRequest(size_t request, const Pending& pending, const ResultFacts& result) {
    const RequestFacts& facts = pending.facts;
    if (result.seqID != facts.seqID) {
        Remark(kWrongRequest, request,
               "The outcome of " + Quoted(facts.seqID) + " goes out under the IDs of " +
                   (result.seqID.empty() ? "no request" : Quoted(result.seqID)) +
                   ": whoever waits for it hears nothing, or somebody else's news.");
    } else if (facts.observerID && result.observerID != *facts.observerID) {
        Remark(kWrongRequest, request,
               "The outcome of " + Quoted(facts.seqID) + " goes to observer " + std::to_string(result.observerID) +
                   " instead of " + std::to_string(*facts.observerID) + ".");
    }
}

void Audit::SeeShownOffMainThread(size_t request, const std::string& call) {
    Remark(kOffMainThread, request,
           call + " is called on another thread than the main one. UIKit does not allow it: make this request on the "
                  "main thread.");
}

void Audit::SeeDroppedEvent(size_t request, const std::string& event, const std::string& offender,
                            const std::string& rule) {
    Remark(kDroppedEvent, request,
           "Facebook drops the event " + Quoted(event) + " because of " + Quoted(offender) + ": " + rule + ".");
}

void Audit::SeeUnusedAnswer(size_t request, const std::string& seqID, const std::string& answer) {
    Remark(kUnusedAnswer, request,
           "Request " + Quoted(seqID) + " has an answer of the kind " + Quoted(answer) +
               " that nothing has asked for: what it answers was not opened.");
}

std::vector<AuditFinding> Audit::Finish(const std::vector<std::string>& cached) {
    for (const auto& [request, pending] : mPending) {
        if (pending.awaitsResult && pending.results == 0) {
            Remark(kUnanswered, request,
                   "Request " + Quoted(pending.facts.seqID) + " (" + pending.facts.title +
                       ") is never answered: the game needs a time-out, or waits for ever.");
        }
    }
    for (const std::string& seqID : cached) {
        Remark(kCached, kNoRequest,
               "A result under " + Quoted(seqID) + " is cached and never collected: nobody observes it.");
    }
    for (const auto& [id, count] : mUntold) {
        mFindings.push_back({std::string(id), "And " + std::to_string(count) + " more of these.", kNoRequest});
    }
    return mFindings;
}

std::vector<std::string> Audit::Unanswered() const {
    std::vector<std::string> seqIDs;
    for (const auto& [request, pending] : mPending) {
        if (pending.awaitsResult && pending.results == 0) {
            seqIDs.push_back(pending.facts.seqID);
        }
    }
    return seqIDs;
}

void Audit::Remark(std::string_view id, size_t request, const std::string& text) {
    const auto told = std::count_if(mFindings.begin(), mFindings.end(),
                                    [id](const AuditFinding& finding) { return finding.id == id; });
    if (static_cast<size_t>(told) < kMostRemarks) {
        mFindings.push_back({std::string(id), text, request});
    } else {
        mUntold[id] += 1;
    }
}

} // namespace Tarvik::Vorn::Simulator
