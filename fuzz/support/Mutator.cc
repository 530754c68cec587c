#include "Mutator.h"

#include <charconv>
#include <fstream>
#include <string_view>

namespace Tarvik::Vorn::Fuzz {
namespace {

constexpr size_t kMostChanges = 4;
constexpr size_t kLongestPiece = 16;

// What stands between the quotes of a dictionary's line.
std::string Unescaped(std::string_view text) {
    std::string word;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\' || at + 1 == text.size()) {
            word += text[at];
        } else if (text[at + 1] == 'x' && at + 3 < text.size()) {
            unsigned char byte = 0;
            std::from_chars(text.data() + at + 2, text.data() + at + 4, byte, 16);
            word += static_cast<char>(byte);
            at += 3;
        } else {
            word += text[++at];
        }
    }
    return word;
}

} // namespace

std::vector<std::string> ReadDictionary(const std::string& path) {
    std::vector<std::string> words;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        const size_t begin = line.find('"');
        const size_t end = line.rfind('"');
        if (!line.starts_with('#') && begin < end && end != std::string::npos) {
            words.push_back(Unescaped(std::string_view(line).substr(begin + 1, end - begin - 1)));
        }
    }
    return words;
}

std::string Mutator::Next(const std::vector<std::string>& inputs, size_t longest) {
    std::string input = inputs[Below(inputs.size())];
    for (size_t left = 1 + Below(kMostChanges); left > 0; --left) {
        Change(input);
    }
    input.resize(std::min(input.size(), longest));
    return input;
}

void Mutator::Change(std::string& input) {
    const size_t at = Below(input.size() + 1);
    const auto byte = static_cast<char>(Below(256));
    const size_t length = 1 + Below(kLongestPiece);
    const size_t kind = Below(6);
    if (kind == 0 && at < input.size()) {
        input[at] = static_cast<char>(input[at] ^ (1 << Below(8)));
    } else if (kind == 1 && at < input.size()) {
        input[at] = byte;
    } else if (kind == 2) {
        input.erase(at, length);
    } else if (kind == 3) {
        input.insert(at, input.substr(Below(input.size() + 1), length));
    } else if (kind == 4 && !mWords.empty()) {
        input.insert(at, mWords[Below(mWords.size())]);
    } else {
        input.insert(at, 1, byte);
    }
}

} // namespace Tarvik::Vorn::Fuzz
