#include "NearestWord.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace Tarvik::Vorn::Simulator {
namespace {

bool SameLetter(char one, char other) {
    return std::tolower(static_cast<unsigned char>(one)) == std::tolower(static_cast<unsigned char>(other));
}

// How many characters must be added, removed or changed to make one of the other; upper and lower case are the same.
size_t EditDistance(std::string_view from, std::string_view to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t changed = diagonal + (SameLetter(from[i], to[j]) ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({row[j] + 1, row[j + 1] + 1, changed}));
        }
    }
    return row.back();
}

} // namespace

std::string_view NearestWord(std::string_view word, const std::vector<std::string_view>& words) {
    constexpr size_t kLongest = 64; // What is longer is no slip, and comparing takes its square.
    if (word.size() > kLongest) {
        return {};
    }
    std::string_view nearest;
    size_t least = std::max<size_t>(1, word.size() / 3) + 1;
    for (const std::string_view candidate : words) {
        const size_t distance = EditDistance(word, candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string MeantOrOneOf(std::string_view word, const std::vector<std::string_view>& words) {
    const std::string_view nearest = NearestWord(word, words);
    std::string text = nearest.empty() ? "" : "did you mean \"" + std::string(nearest) + "\"? ";
    text += "use one of ";
    for (size_t i = 0; i < words.size(); ++i) {
        text += (i == 0 ? "" : ", ") + std::string(words[i]);
    }
    return text;
}

} // namespace Tarvik::Vorn::Simulator
