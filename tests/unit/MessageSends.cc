#include "MessageSends.h"

#include <cctype>
#include <cstddef>
#include <string_view>

namespace Tarvik::Vorn::Test {
namespace {

bool IsNameCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

size_t EndOfText(std::string_view source, size_t quote) {
    size_t end = quote + 1;
    while (end < source.size() && source[end] != source[quote]) {
        end += source[end] == '\\' ? 2 : 1;
    }
    return end;
}

// The source without comments and directives; texts and characters are replaced by a digit.
std::string CodeOf(std::string_view source) {
    std::string code;
    for (size_t i = 0; i < source.size(); ++i) {
        const bool beginsDirective = source[i] == '#' && (i == 0 || source[i - 1] == '\n');
        if (beginsDirective || source.substr(i).starts_with("//")) {
            i = source.find('\n', i);
            if (i == std::string_view::npos) {
                break;
            }
            code += '\n';
        } else if (source.substr(i).starts_with("/*")) {
            i = source.find("*/", i) + 1;
        } else if (source[i] == '"' || source[i] == '\'') {
            i = EndOfText(source, i);
            code += '0';
        } else {
            code += source[i];
        }
    }
    return code;
}

// Where the bracket ends that opens at `open`.
size_t EndOfBracket(std::string_view code, size_t open) {
    int depth = 0;
    for (size_t i = open; i < code.size(); ++i) {
        if (code[i] == '[') {
            depth += 1;
        } else if (code[i] == ']') {
            depth -= 1;
            if (depth == 0) {
                return i;
            }
        }
    }
    return code.size();
}

// The text between the brackets, with everything that is nested in brackets of any kind replaced by one character.
std::string Flattened(std::string_view inside) {
    std::string flat;
    int depth = 0;
    for (const char character : inside) {
        const bool opens = character == '(' || character == '[' || character == '{';
        const bool closes = character == ')' || character == ']' || character == '}';
        if (opens && depth == 0) {
            flat += '0';
        }
        depth += opens ? 1 : closes ? -1 : 0;
        if (depth == 0 && !closes) {
            flat += character;
        }
    }
    return flat;
}

// The selector of a send whose text between the brackets is `flat`; empty when it is no send.
std::string SelectorOf(const std::string& flat) {
    std::string keywords;
    std::string lastName;
    bool hasReceiver = false;
    for (size_t i = 0; i < flat.size();) {
        if (!IsNameCharacter(flat[i])) {
            ++i;
            continue;
        }
        size_t end = i;
        while (end < flat.size() && IsNameCharacter(flat[end])) {
            ++end;
        }
        const bool isKeyword = end < flat.size() && flat[end] == ':' && flat.substr(end, 2) != "::" && i > 0 &&
                               flat[i - 1] != ':' && hasReceiver;
        if (isKeyword) {
            keywords += flat.substr(i, end + 1 - i);
        }
        if (hasReceiver) {
            lastName = flat.substr(i, end - i);
        }
        hasReceiver = true;
        i = end;
    }
    return keywords.empty() ? lastName : keywords;
}

// Whether the bracket at `open` begins a send: a subscript stands behind a name, a list behind an at sign.
bool BeginsSend(std::string_view code, size_t open) {
    const char before = open == 0 ? ' ' : code[open - 1];
    return !IsNameCharacter(before) && before != ']' && before != ')' && before != '@';
}

} // namespace

std::vector<std::string> MessageSends(const std::string& source) {
    const std::string code = CodeOf(source);
    std::vector<std::string> sends;
    for (size_t i = 0; i < code.size(); ++i) {
        if (code[i] != '[' || !BeginsSend(code, i)) {
            continue;
        }
        const std::string_view inside = std::string_view(code).substr(i + 1, EndOfBracket(code, i) - i - 1);
        const std::string selector = SelectorOf(Flattened(inside));
        if (!selector.empty()) {
            sends.push_back(selector);
        }
    }
    return sends;
}

} // namespace Tarvik::Vorn::Test
