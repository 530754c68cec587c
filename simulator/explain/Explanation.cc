#include "Explanation.h"

#include "VornCodes.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr size_t kMostNearest = 3;
constexpr int32_t kUnsetMethodID = -1; // What the friend plugin begins with.

// How well the method of a question fits a cause: it is the one that the cause has, or only possible.
enum class MethodFit { kExact, kPossible };

// A cause and how it compares with others of the same question.
struct Candidate {
    const Cause* cause = nullptr;
    MethodFit fit = MethodFit::kExact;
    size_t textSize = 0; // Of the longest of its texts that the question's text has.
};

// Whom a method ID belongs to when nothing is strange.
Requests OwnersOf(int32_t methodNameID) {
    switch (methodNameID) {
    case MethodID::kShare:
    case MethodID::kShareByPipeline:
        return kShare;
    case MethodID::kSendMessage:
        return kSendMessage | kInvite;
    default:
        return kLogin | kLogout | kAddFriend | kQueryFriends;
    }
}

bool IsServed(int32_t methodNameID) {
    return methodNameID == MethodID::kShare || methodNameID == MethodID::kShareByPipeline ||
           methodNameID == MethodID::kSendMessage;
}

std::optional<MethodFit> FitWhen(bool isExact) {
    return isExact ? std::optional(MethodFit::kExact) : std::nullopt;
}

// How a result's methodNameID fits. A core gives friend requests any number, but logins, logouts and queries none of the
// three that are served. It is thought to use no number below 1.
std::optional<MethodFit> FitOfNumber(const Cause& cause, int32_t methodNameID) {
    const bool isOwn = (cause.requests & OwnersOf(methodNameID)) != 0;
    switch (cause.reported) {
    case ReportedID::kServed:
        return FitWhen(isOwn && IsServed(methodNameID));
    case ReportedID::kUnserved:
        return FitWhen(!IsServed(methodNameID));
    case ReportedID::kOwn:
        if (isOwn) {
            return MethodFit::kExact;
        }
        return (cause.requests & kFriendRequests) != 0 ? std::optional(MethodFit::kPossible) : std::nullopt;
    case ReportedID::kMessage:
        return FitWhen(methodNameID == MethodID::kSendMessage);
    case ReportedID::kOwnOfCore:
        if (!isOwn) {
            return std::nullopt;
        }
        return methodNameID > 0 ? MethodFit::kExact : MethodFit::kPossible;
    case ReportedID::kZero:
        return FitWhen(methodNameID == 0);
    case ReportedID::kLastRequest:
        return MethodFit::kPossible;
    case ReportedID::kUnset:
        return FitWhen(methodNameID == kUnsetMethodID);
    }
    return std::nullopt;
}

// Under the name of another request, the friend finder's outcome is possible, but not what one thinks of first.
std::optional<MethodFit> FitOfName(const Cause& cause, Requests request) {
    if ((cause.requests & request) == 0) {
        return std::nullopt;
    }
    const bool isOfFinder = cause.reported == ReportedID::kLastRequest;
    return isOfFinder && request != kAddFriend ? MethodFit::kPossible : MethodFit::kExact;
}

std::optional<MethodFit> FitOf(const Cause& cause, const ParsedQuestion& question) {
    return question.methodNameID ? FitOfNumber(cause, *question.methodNameID) : FitOfName(cause, question.request);
}

bool IsCodePossible(const Cause& cause, const ParsedQuestion& question) {
    return question.code ? cause.codes.Contains(*question.code) : cause.codes.IsEmpty();
}

bool IsThirdCodePossible(const Cause& cause, const ParsedQuestion& question) {
    return !question.thirdCode || cause.thirdCodes.Contains(*question.thirdCode);
}

bool SameLetter(char one, char other) {
    return std::tolower(static_cast<unsigned char>(one)) == std::tolower(static_cast<unsigned char>(other));
}

size_t TextSize(const Cause& cause, std::string_view text) {
    size_t longest = 0;
    for (const std::string_view part : cause.texts) {
        if (!part.empty() && !std::ranges::search(text, part, SameLetter).empty()) {
            longest = std::max(longest, part.size());
        }
    }
    return longest;
}

bool IsMoreLikely(const Candidate& one, const Candidate& other) {
    if (one.textSize != other.textSize) {
        return one.textSize > other.textSize;
    }
    if (one.fit != other.fit) {
        return one.fit < other.fit;
    }
    return one.cause->rank < other.cause->rank;
}

// Leaves out what has another text, when some candidate has the question's.
void NarrowByText(std::vector<Candidate>& candidates) {
    const bool isTelling =
        std::ranges::any_of(candidates, [](const Candidate& candidate) { return candidate.textSize > 0; });
    if (isTelling) {
        std::erase_if(candidates, [](const Candidate& candidate) {
            return candidate.textSize == 0 && !candidate.cause->texts.front().empty();
        });
    }
}

std::vector<const Cause*> InOrder(std::vector<Candidate> candidates) {
    std::ranges::stable_sort(candidates, IsMoreLikely);
    std::vector<const Cause*> causes;
    causes.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
        causes.push_back(candidate.cause);
    }
    return causes;
}

// The causes for which `isWanted` is true, each with how it fits; those of other requests count as possible.
template <class Predicate>
std::vector<Candidate> Candidates(const ParsedQuestion& question, const Predicate& isWanted) {
    std::vector<Candidate> candidates;
    for (const Cause* const cause : AllCauses()) {
        const std::optional<MethodFit> fit = FitOf(*cause, question);
        if (isWanted(*cause, fit.has_value())) {
            candidates.push_back({cause, fit.value_or(MethodFit::kPossible), TextSize(*cause, question.text)});
        }
    }
    return candidates;
}

} // namespace

std::vector<const Cause*> Explain(const ParsedQuestion& question) {
    std::vector<Candidate> candidates = Candidates(question, [&question](const Cause& cause, bool isOfMethod) {
        return isOfMethod && IsCodePossible(cause, question) && IsThirdCodePossible(cause, question);
    });
    NarrowByText(candidates);
    return InOrder(std::move(candidates));
}

std::vector<const Cause*> NearestCauses(const ParsedQuestion& question) {
    std::vector<const Cause*> nearest = InOrder(Candidates(question, [&question](const Cause& cause, bool isOfMethod) {
        return isOfMethod && IsCodePossible(cause, question);
    }));
    if (nearest.empty()) {
        nearest = InOrder(Candidates(question, [&question](const Cause& cause, bool /*isOfMethod*/) {
            return IsCodePossible(cause, question) && IsThirdCodePossible(cause, question);
        }));
        const std::vector<const Cause*> ofMethod = InOrder(Candidates(
            question, [](const Cause& cause, bool isOfMethod) { return isOfMethod && !cause.codes.IsEmpty(); }));
        nearest.insert(nearest.end(), ofMethod.begin(), ofMethod.end());
    }
    nearest.resize(std::min(nearest.size(), kMostNearest));
    return nearest;
}

bool IsTextTelling(const ParsedQuestion& question, const std::vector<const Cause*>& causes) {
    return question.text.empty() ||
           std::ranges::any_of(causes, [&question](const Cause* cause) { return TextSize(*cause, question.text) > 0; });
}

} // namespace Tarvik::Vorn::Simulator::Explaining
