#include "Answer.h"

#include "report/VisibleText.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace Tarvik::Vorn::Simulator::Explaining {
namespace {

constexpr size_t kColumns = 96;
constexpr size_t kIndent = 3;    // Under a cause's number.
constexpr size_t kLabelled = 10; // Behind "   Check: ".

// `words`, broken into lines. The first line begins with `lead`, the others with `indent` blanks. The texts are ASCII.
std::string Paragraph(std::string lead, size_t indent, std::string_view words) {
    lead.resize(std::max(lead.size(), indent), ' ');
    std::string lines = std::move(lead);
    size_t column = lines.size();
    bool isFirst = true;
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        if (!isFirst && column + 1 + word.size() > kColumns) {
            lines += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (!isFirst) {
            lines += ' ';
            column += 1;
        }
        lines += word;
        column += word.size();
        isFirst = false;
    }
    return lines + "\n";
}

std::string Joined(const std::vector<std::string_view>& names) {
    std::string text;
    for (const std::string_view name : names) {
        text += (text.empty() ? "" : ", ") + std::string(name);
    }
    return text;
}

// "share, retCode 2, thirdCode 0".
std::string Asked(const ParsedQuestion& question) {
    std::string text = question.methodNameID ? "methodNameID " + std::to_string(*question.methodNameID)
                                             : Joined(NamesOf(question.request));
    text += question.code ? ", retCode " + std::to_string(*question.code) : ", and nothing arrives";
    if (question.thirdCode) {
        text += ", thirdCode " + std::to_string(*question.thirdCode);
    }
    return text;
}

std::string Introduction(const Answer& answer) {
    if (!answer.isKnown) {
        return Paragraph("", 0,
                         "The plugin never commits such a result. A core or a game of its own may: look at who builds "
                         "the record. The nearest results that the plugin commits:");
    }
    std::string text = answer.causes.size() == 1
                           ? "There is one possible cause.\n"
                           : std::to_string(answer.causes.size()) + " possible causes, the most likely first.\n";
    if (!answer.isTextTelling) {
        text += Paragraph("", 0,
                          "The text told nothing: neither the plugin nor Facebook's SDK is known to write it here, or "
                          "every cause does.");
    }
    return text;
}

// A near result says which one it is; the question has said it of the others.
std::string Block(const Cause& cause, size_t number, bool isKnown) {
    std::string head = std::string(cause.id) + " (" + Joined(NamesOf(cause.requests));
    if (!isKnown) {
        head += cause.codes.IsEmpty()
                    ? ": nothing arrives"
                    : ": retCode " + CodesInWords(cause.codes) + ", thirdCode " + CodesInWords(cause.thirdCodes);
    }
    std::string block =
        Paragraph(std::to_string(number) + ". ", kIndent, head + ")") + Paragraph("", kIndent, cause.what);
    std::string_view label = "   Check:";
    for (const std::string_view check : cause.checks) {
        if (!check.empty()) {
            block += Paragraph(std::string(label), kLabelled, check);
            label = "";
        }
    }
    block += Paragraph("   See:", kLabelled, "vornsim run " + std::string(cause.world));
    return block + Paragraph("   Read:", kLabelled, cause.page);
}

} // namespace

std::string TextOf(const Answer& answer) {
    std::string text = Asked(answer.question) + "\n";
    if (!answer.question.text.empty()) {
        text += "text: " + VisibleLine(answer.question.text) + "\n";
    }
    text += Introduction(answer);
    for (size_t i = 0; i < answer.causes.size(); ++i) {
        text += "\n" + Block(*answer.causes[i], i + 1, answer.isKnown);
    }
    return text;
}

} // namespace Tarvik::Vorn::Simulator::Explaining
