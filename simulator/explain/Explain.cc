#include "Explain.h"

#include "Answer.h"
#include "Question.h"

#include <variant>

namespace Tarvik::Vorn::Simulator {

int RunExplain(const ExplainQuestion& question, bool json, std::FILE* out, std::FILE* err) {
    using namespace Explaining;
    const std::variant<ParsedQuestion, std::string> parsed = ParseQuestion(question);
    if (const auto* const problem = std::get_if<std::string>(&parsed)) {
        std::fprintf(err, "vornsim: explain: %s\n", problem->c_str());
        return 2;
    }
    const Answer answer = AnswerTo(std::get<ParsedQuestion>(parsed));
    const std::string printed = json ? JsonOf(answer) : TextOf(answer);
    std::fwrite(printed.data(), 1, printed.size(), out);
    return 0;
}

} // namespace Tarvik::Vorn::Simulator
