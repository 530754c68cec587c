#include "Answer.h"

#include "Explanation.h"

namespace Tarvik::Vorn::Simulator::Explaining {

Answer AnswerTo(const ParsedQuestion& question) {
    Answer answer;
    answer.question = question;
    answer.causes = Explain(question);
    answer.isKnown = !answer.causes.empty();
    if (!answer.isKnown) {
        answer.causes = NearestCauses(question);
    }
    answer.isTextTelling = IsTextTelling(question, answer.causes);
    return answer;
}

std::string CodesInWords(const Codes& codes) {
    if (codes.IsEmpty()) {
        return "none";
    }
    if (codes == kAnyCode) {
        return "any";
    }
    const std::string first = std::to_string(codes.first);
    return codes.first == codes.last ? first : first + " to " + std::to_string(codes.last);
}

std::vector<std::string_view> NamesOf(Requests requests) {
    std::vector<std::string_view> names;
    for (const NamedRequest& named : kRequestNames) {
        if ((requests & named.request) != 0) {
            names.push_back(named.name);
        }
    }
    return names;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
