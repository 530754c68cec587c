// Changes inputs at random, for the runs without libFuzzer. Plain C++.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace Tarvik::Vorn::Fuzz {

// The words in libFuzzer's dictionary file at `path`: one in quotes a line, with \" \\ and \xAB in it, behind an
// optional name. Empty without a path.
std::vector<std::string> ReadDictionary(const std::string& path);

class Mutator {
public:
    // The same seed makes the same inputs.
    Mutator(uint64_t seed, std::vector<std::string> words) : mRandom(seed), mWords(std::move(words)) {}

    // One of `inputs` with a few changes: bytes flipped, overwritten, removed, repeated, words put in. At most
    // `longest` bytes.
    std::string Next(const std::vector<std::string>& inputs, size_t longest);

private:
    size_t Below(size_t bound) { return static_cast<size_t>(mRandom() % bound); }
    void Change(std::string& input);

    std::mt19937_64 mRandom;
    std::vector<std::string> mWords;
};

} // namespace Tarvik::Vorn::Fuzz
